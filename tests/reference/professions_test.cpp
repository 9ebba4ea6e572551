// Lookups of professions and main professions: names, codes, years of training by level and track.
#include "reference/professions.h"

#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::TestCentre;

namespace {

struct ProfessionsTest : testing::Test {
    TestCentre centre;
    void SetUp() override {
        centre.databases.connect();
        centre.addProfession("1101", "Oto Tamirciliği", 3);
        add("Bölüm", "1101", "Otomotiv Mekanikerliği", 4, "OTO", 4, 2, 1);
        add("Bölüm", "110", "İğne Oyası 'El İşi'", 4, "İĞNE", 3, 0, 1);
        add("Bölüm", "11015", "Işıkçılık", 4, "", 3, 1, 2);
        add("AnaMeslek", "1100", "Motorlu Araçlar Teknolojisi", 4, "", 0, 0, 0);
    }
    void add(const char* group, const char* code, const char* name, int version, const char* shortName,
             int primary, int highSchool, int master) {
        centre.level().execute(
            "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama,"
            "Ta_Tanim_Kisaisim,Ta_Ilkogretim_Sure,Ta_Lise_Sure,Ta_Ustalik_Sure,ID) "
            "VALUES (?,?,?,?,?,?,?,?)",
            Parameters{group, code, name, shortName, primary, highSchool, master, version});
    }
};

TEST_F(ProfessionsTest, NamesByCodeAndVersion) {
    const struct {
        const char* code;
        int version;
        const char *name, *shortName;
    } cases[] = {
        {"1101", 4, "Otomotiv Mekanikerliği", "OTO"},
        {"110", 4, "İğne Oyası 'El İşi'", "İĞNE"},
        {"11015", 4, "Işıkçılık", ""},
        {"1101", 2, "Bu koda ait Meslek yok", "Bu koda ait Meslek yok"},
        {"", 4, "Bu koda ait Meslek yok", "Bu koda ait Meslek yok"},
        {"1100", 4, "Bu koda ait Meslek yok", "Bu koda ait Meslek yok"}, // a main profession
        {"' OR '1'='1", 4, "Bu koda ait Meslek yok", "Bu koda ait Meslek yok"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(professionName(centre.level(), c.code, c.version), c.name) << c.code;
        EXPECT_EQ(professionShortName(centre.level(), c.code, c.version), c.shortName) << c.code;
    }
    EXPECT_EQ(mainProfessionName(centre.level(), "1100", 4), "Motorlu Araçlar Teknolojisi");
    EXPECT_EQ(mainProfessionName(centre.level(), "1100", 3), "Bu koda ait AnaMeslek yok");
    EXPECT_EQ(mainProfessionCode(centre.level(), " Motorlu Araçlar Teknolojisi ", 4), "1100");
    EXPECT_EQ(professionCode(centre.level(), "İğne Oyası 'El İşi'", 4), "110");
    EXPECT_EQ(professions(centre.level(), 4).size(), 3u);
    EXPECT_EQ(professions(centre.level(), 4).front().code, "11015") << "Işıkçılık stands before İğne";
    EXPECT_EQ(mainProfessions(centre.level(), 3).size(), 0u);
    add("Bölüm", "1101", "Otomotiv Mekanikerliği", 1, "OTO", 4, 2, 1);
    int newest = 0;
    for (const auto& each : professions(centre.level()))
        if (newest == 0 && each.name == "Otomotiv Mekanikerliği") newest = each.version;
    EXPECT_EQ(newest, 4) << "a typed name means the version in force";
}

TEST_F(ProfessionsTest, SearchGoesByTurkishCaseAndPattern) {
    const struct {
        QString text;
        NameMatch match;
        const char* code;
    } cases[] = {
        {"otomotiv mekanikerliği", NameMatch::Equal, "1101"},
        {"IŞIKÇILIK", NameMatch::Equal, "11015"},
        {"ışıkçılık", NameMatch::Equal, "11015"},
        {"işıkçılık", NameMatch::Equal, ""}, // i is İ, not I
        {"otomotiv", NameMatch::Equal, ""},
        {"otomotiv", NameMatch::Like, ""},
        {"otomotiv*", NameMatch::Like, "1101"},
        {"*el işi*", NameMatch::Like, "110"},
        {"?şıkçılık", NameMatch::Like, "11015"},
        {"*", NameMatch::Like, "11015"}, // the first by name
        {"", NameMatch::Like, ""},
        {QString("*a").repeated(150), NameMatch::Like, ""}, // a hostile paste ends at once
    };
    for (const auto& c : cases)
        EXPECT_EQ(searchProfessionCode(centre.level(), c.text, 4, c.match), c.code) << c.text.toStdString();
}

TEST_F(ProfessionsTest, YearsOfTrainingGoByLevelThenTrack) {
    const struct {
        Level level;
        const char *code, *track;
        int years;
    } cases[] = {
        {Level::Kalfa, "1101", "İ", 4},         {Level::Kalfa, "1101", "L", 2},
        {Level::Kalfa, "1101", "B", 4},         {Level::Kalfa, "1101", "", 4},
        {Level::Usta, "1101", "İ", 1},          {Level::Usta, "1101", "L", 1},
        {Level::UstaOgretici, "1101", "U", 1},  {Level::DenklikUsta, "11015", "L", 2},
        {Level::DenklikKalfa, "11015", "L", 1}, {Level::Kalfa, "110", "L", 0},
        {Level::Kalfa, "9999", "İ", 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(trainingYears(centre.level(), c.level, c.code, 4, c.track), c.years) << c.code << c.track;
    EXPECT_EQ(trainingYears(centre.level(), Level::Kalfa, "1101", 3, "İ"), 0) << "no length given";
}

} // namespace
