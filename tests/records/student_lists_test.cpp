// The printed lists of students: who is in them, in which words, and their counts.
#include "records/student_list.h"
#include "records/student_register.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::TestCentre;

namespace {

struct StudentListsTest : testing::Test {
    TestCentre centre;

    void SetUp() override {
        centre.databases.connect();
        centre.addProfession("1101", "Otomotiv Mekanikerliği", 3);
        centre.addProfession("1101", "Otomotiv Mekanikerliği (yeni)", 4);
        centre.addStudent("110100002", 2, "1101", "Şule", "İnci");
        centre.addStudent("110100001", 1, "1101", "Ayşe", "O'Hara");
        centre.addStudent("990100001", 3, "9901", "Çağrı", "Öz");
        set("110100001", {{"Ogr_Sinif", "1-A"},
                          {"Ogr_Cinsiyeti", "k"},
                          {"Ogr_Ogrenim_Durumu", "03"},
                          {"Ogr_Nufus_Ili", "Muğla"},
                          {"Ogr_Nufus_Ilcesi", "Ula"},
                          {"Ogr_calistigi_isyerinin_adi", " Işık Oto "},
                          {"Ogr_Usta_Ogreticisi", "Ali Usta"},
                          {"Ogr_calistigi_ise_giris_tarihi", "01.09.2008"}});
        set("110100002", {{"Ogr_Sinif", "1-A"}, {"Ogr_Cinsiyeti", "E"}, {"Ogr_Ogrenim_Durumu", "77"}});
    }
    void set(const char* number, const std::vector<std::pair<std::string, QString>>& values) {
        for (const auto& [field, value] : values)
            centre.level().execute("UPDATE OgrenciBilgisi SET " + field + " = ? WHERE Ogr_Numarasi = ?",
                                   Parameters{value, number});
    }
    static QString text(const RegisterEntry& entry, const QString& label) {
        for (const auto& column : entry.columns)
            for (const RegisterLine& line : column)
                if (line.label == label) return line.text;
        return QStringLiteral("(yok)");
    }
};

TEST_F(StudentListsTest, RowsCarryWorkplaceAndSex) {
    const auto rows = studentList(centre.level(), StudentOrder::ByNumber);
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].workplace, "Işık Oto");
    EXPECT_EQ(rows[0].master, "Ali Usta");
    EXPECT_EQ(rows[0].workStart, "01.09.2008");
    std::vector<QString> sexes;
    for (const StudentListRow& row : rows)
        sexes.push_back(row.sex);
    EXPECT_EQ(studentCounts(sexes), "3 öğrenci: 1 kız, 1 erkek"); // whose sex is unknown is only counted
    EXPECT_EQ(studentCounts({}), "0 öğrenci: 0 kız, 0 erkek");
}

TEST_F(StudentListsTest, RegisterIsInOrderAndInWordsThatPeopleRead) {
    const auto entries = studentRegister(centre.level(), {});
    ASSERT_EQ(entries.size(), 3u);
    const RegisterEntry& first = entries[0];
    EXPECT_EQ(first.number, "110100001");
    EXPECT_EQ(first.name, "Ayşe O'Hara");
    const struct {
        size_t entry;
        const char *label, *text;
    } cases[] = {
        {0, "Kayıt No", "1"},
        {0, "Cinsiyeti", "KIZ"},
        {0, "Nüfus ili, ilçesi", "Muğla Ula"},
        {0, "Öğrenim durumu", "Ortaokul Mezunu"},
        {0, "Meslek", "Otomotiv Mekanikerliği (yeni)"}, // of his curriculum version
        {0, "İşyeri", "Işık Oto"},
        {0, "İşten çıkış", "(yok)"}, // empty fields take no line
        {1, "Cinsiyeti", "ERKEK"},
        {1, "Öğrenim durumu", "77"}, // a code without a name is shown as it is
        {2, "Meslek", "9901"},
        {2, "Cinsiyeti", "(yok)"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(text(entries[c.entry], c.label), c.text) << c.label;
}

TEST_F(StudentListsTest, RegisterKeepsToTheSelection) {
    set("110100002", {{"Ogr_Seviye", "2"}});
    const struct {
        BulkSelection selection;
        QStringList wanted;
    } cases[] = {
        {{"1101", 4, {}, {}}, {"110100001", "110100002"}},
        {{"1101", 3, {}, {}}, {}},
        {{{}, 0, "2", {}}, {"110100002"}},
        {{{}, 0, {}, "1-A"}, {"110100001", "110100002"}},
        {{"9901", 0, "1", {}}, {"990100001"}},
        {{{}, 0, {}, "1-A' OR '1'='1"}, {}},
    };
    for (const auto& c : cases) {
        QStringList found;
        for (const RegisterEntry& entry : studentRegister(centre.level(), c.selection))
            found << entry.number;
        EXPECT_EQ(found, c.wanted) << c.selection.className.toStdString();
    }
}

} // namespace
