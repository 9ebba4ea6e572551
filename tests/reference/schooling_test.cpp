// Prior schooling: the older list is rewritten in place with the students that carry its codes; the current
// one is put back whole.
#include "reference/code_lists.h"
#include "reference/maintenance.h"
#include "reference/schooling.h"

#include "core/users.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

struct SchoolingTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    const QString title = QStringLiteral("Öğrenim Durumları");

    void SetUp() override {
        centre.databases.connect();
        centre.session.user = QStringLiteral("müdür");
        auto& constants = centre.databases.constants().database();
        createUser(constants, centre.session.user, "1");
        grantAll(constants, centre.session.user, {true, true});
    }
    void replaceBy(std::initializer_list<std::pair<const char*, const char*>> rows) {
        centre.level().execute("DELETE FROM Parametrik_giris WHERE Ta_Tanim_Grup='ÖğrenimDr'");
        for (const auto& [code, words] : rows)
            add(code, words);
    }
    void add(const char* code, const char* words) {
        centre.level().execute(
            "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama) VALUES (?,?,?)",
            Parameters{"ÖğrenimDr", code, words});
    }
    void addStudent(int serial, const char* schooling) {
        const QString number = QStringLiteral("01010000%1").arg(serial);
        centre.addStudent(number, serial, "0101");
        centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_OgrenimDuzeyi=? WHERE Ogr_Numarasi=?",
                               Parameters{schooling, number});
    }
    QString list() {
        const auto rows = centre.level().query("SELECT Ta_Tanim_Kod, Ta_tanim_aciklama FROM Parametrik_giris "
                                               "WHERE Ta_Tanim_Grup='ÖğrenimDr' ORDER BY Ta_Tanim_Kod");
        QStringList texts;
        for (size_t i = 0; i < rows.rowCount(); ++i)
            texts << toText(rows.at(i, size_t{0})) + u'=' + toText(rows.at(i, 1));
        return texts.join(u'|');
    }
    QString students() {
        const auto rows =
            centre.level().query("SELECT Ogr_OgrenimDuzeyi FROM OgrenciBilgisi ORDER BY Ogr_Kayit_No");
        QStringList texts;
        for (size_t i = 0; i < rows.rowCount(); ++i)
            texts << toText(rows.at(i, size_t{0}));
        return texts.join(u'|');
    }
};

TEST_F(SchoolingTest, EachOlderWordHasOneCurrentLevel) {
    EXPECT_EQ(schoolingLevels().size(), 22u);
    const struct {
        const char* older;
        const char* code;
    } cases[] = {{"İLKOKUL MEZUNU", "02"},        {"Y.OKUL MEZUNU", "50"}, {"MESLEK LİS. 3 TERK", "23"},
                 {"MESLEK LİSESİ 3 TERK", "23"},  {"LİSE 2 TERK", "12"},   {"  LİSANS  MEZUNU ", "60"},
                 {"ORTAOKULA DEVAM EDİYOR", "07"}};
    for (const auto& each : cases) {
        const SchoolingLevel* level = schoolingOfOlder(each.older);
        ASSERT_NE(level, nullptr) << each.older;
        EXPECT_STREQ(level->code, each.code) << each.older;
    }
    for (const char* none : {"İlkokul Mezunu", "ILKOKUL MEZUNU", "", "YABANCI OKUL"})
        EXPECT_EQ(schoolingOfOlder(none), nullptr) << none;
}

TEST_F(SchoolingTest, OlderListIsRewrittenInPlaceAndStudentsFollow) {
    // codes of the older list overlap with those of the current one
    replaceBy(
        {{"10", "İLKOKUL MEZUNU"}, {"02", "LİSE MEZUNU"}, {"3", "Y.OKUL MEZUNU"}, {"99", "Yabancı Okul"}});
    addStudent(1, "10");
    addStudent(2, "02");
    addStudent(3, "3");
    addStudent(4, "99");
    addStudent(5, "");
    const SchoolingRewrite done = rewriteOlderSchooling(centre.databases.level());
    EXPECT_EQ(done.rows, 3);
    EXPECT_EQ(done.students, 3);
    EXPECT_EQ(list(), "02=İlkokul Mezunu|10=Lise Mezunu|50=Yüksekokul Mezunu|99=Yabancı Okul");
    EXPECT_EQ(students(), "02|10|50|99|");
    EXPECT_EQ(rewriteOlderSchooling(centre.databases.level()).rows, 0); // a second time nothing is older
    EXPECT_EQ(students(), "02|10|50|99|");
}

TEST_F(SchoolingTest, AMixedListLosesItsOlderDoubles) {
    replaceBy({{"02", "İlkokul Mezunu"},
               {"2", "İLKOKUL MEZUNU"},
               {"7", "MESLEK LİS. 1 TERK"},
               {"8", "MESLEK LİSESİ 1 TERK"}});
    addStudent(1, "2");
    addStudent(2, "8");
    rewriteOlderSchooling(centre.databases.level());
    EXPECT_EQ(list(), "02=İlkokul Mezunu|21=Meslek Lisesi 1 Terk");
    EXPECT_EQ(students(), "02|21");
}

TEST_F(SchoolingTest, ADefinitionOfTheCentresOwnIsNotRunOver) {
    replaceBy({{"2", "İLKOKUL MEZUNU"}, {"02", "Köy Enstitüsü"}});
    EXPECT_EQ(rewriteOlderSchooling(centre.databases.level()).obstacle, "02 - Köy Enstitüsü");
    EXPECT_EQ(list(), "02=Köy Enstitüsü|2=İLKOKUL MEZUNU");
    dialogs
        .expectYesNo(
            QStringLiteral("Listede eski sürümden kalma 1 öğrenim durumu var.\nBunlar yerinde güncel "
                           "adlarına ve kodlarına çevrilecek; öğrencilerin kodları da birlikte "
                           "değişecek.\n\nDevam edilsin mi?"),
            Answer::Yes)
        .expectMessage(QStringLiteral("“02 - Köy Enstitüsü” tanımının kodu güncel listede başka bir öğrenim "
                                      "durumuna ait.\nÖnce bu tanımın kodunu değiştiriniz."));
    EXPECT_FALSE(renewSchooling(centre.databases, dialogs, title));
}

TEST_F(SchoolingTest, TheButtonPutsTheListBackAfterAQuestion) {
    centre.level().execute("UPDATE Parametrik_giris SET Ta_tanim_aciklama='Bozuk' WHERE "
                           "Ta_Tanim_Grup='ÖğrenimDr' AND Ta_Tanim_Kod='60'");
    const QString question = QStringLiteral("Öğrenim durumu listesi silinip güncel 22 satır yazılacak.\n\n"
                                            "Listeden çıkacak 1 tanım:\n60 - Bozuk\n\nDevam edilsin mi?");
    dialogs.expectYesNo(question, Answer::No).expectYesNo(question, Answer::Yes);
    EXPECT_FALSE(renewSchooling(centre.databases, dialogs, title));
    EXPECT_EQ(descriptionOf(centre.level(), "ÖğrenimDr", "60"), "Bozuk");
    EXPECT_TRUE(renewSchooling(centre.databases, dialogs, title));
    EXPECT_EQ(descriptions(centre.level(), "ÖğrenimDr").size(), 22);
    EXPECT_EQ(descriptionOf(centre.level(), "ÖğrenimDr", "60"), "Lisans Mezunu");
    EXPECT_FALSE(codeOf(centre.level(), "Donem", "MEZUN").isEmpty()); // other groups stay
}

TEST_F(SchoolingTest, AnUpgradeRewritesEveryLevelFile) {
    replaceBy({{"2", "İLKOKUL MEZUNU"}});
    FixedClock clock{QDate(2009, 1, 1)};
    maintainReference(centre.databases, dialogs, clock);
    EXPECT_EQ(list(), "2=İLKOKUL MEZUNU"); // without an upgrade nobody looks
    centre.session.level = Level::Usta;
    centre.databases.connect();
    centre.session.upgradeNeeded = true;
    maintainReference(centre.databases, dialogs, clock);
    centre.session.level = Level::Kalfa;
    centre.databases.connect();
    EXPECT_EQ(list(), "02=İlkokul Mezunu");
}

} // namespace
