// Connect on real files: what it creates, which level database it opens, what stays open when it fails.
#include "core/database_set.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <QFileInfo>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

TEST(Connect, FreshInstallationGetsEveryFileFromItsTemplate) {
    TestCentre centre;
    centre.databases.connect();
    for (const char* literal : {"\\Data\\Sabit.mdb", "\\Data\\Isletme.mdb", "\\Data\\Koord.mdb",
                                "\\Data\\KALFA.MDB", "\\Data\\USTA.MDB", "\\Data\\USTAOGR.MDB",
                                "\\Data\\ISYERI.MDB", "\\Data\\DENKLIK_K.MDB", "\\Data\\DENKLIK_U.MDB"})
        EXPECT_TRUE(centre.folder.exists(literal)) << literal;
    EXPECT_EQ(centre.databases.levelFile(), centre.path("\\Data\\KALFA.MDB"));
    EXPECT_TRUE(centre.databases.isNormalLevelFile());
    for (const char* table : {"OgrenciBilgisi", "NOTLAR", "isletme_bilgisi", "Koord_GorevGiris_Cizelgesi",
                              "Kullanici", "Meb_Il_Tablo", "AyKitleme", "Parametrik_giris"})
        EXPECT_NO_THROW(centre.databases.table(table).rowCount()) << table;
    EXPECT_THROW(centre.databases.table("Yok"), jet::Error);
    EXPECT_EQ(centre.databases.table("Meb_Il_Tablo").rowCount(), 81u);
}

TEST(Connect, MissingTemplateLeavesWhatIsOpen) {
    TestCentre centre;
    centre.databases.connect();
    QFile::remove(centre.path("\\Mdx\\Ogrenci.MDX"));
    centre.session.mode = DataSetMode::Graduates;
    centre.session.schoolYear = "2008-2009";
    EXPECT_THROW(centre.databases.connect(), jet::Error);
    ASSERT_TRUE(centre.databases.isOpen());
    EXPECT_EQ(centre.databases.levelFile(), centre.path("\\Data\\KALFA.MDB"));
    EXPECT_NO_THROW(centre.databases.table("OgrenciBilgisi").rowCount());
}

TEST(Connect, ArchiveIsMadeFromTheStudentTemplateAndIsNotTheNormalFile) {
    TestCentre centre;
    centre.session.level = Level::Usta;
    centre.session.equivalence = true;
    centre.session.mode = DataSetMode::Graduates;
    centre.session.schoolYear = "2008-2009";
    centre.databases.connect();
    EXPECT_EQ(QFileInfo(centre.databases.levelFile()).fileName(), "MDENK_U2008.MDB");
    EXPECT_FALSE(centre.databases.isNormalLevelFile());
}

TEST(Connect, ArgumentReplacesTheLevelDatabase) {
    TestCentre centre;
    centre.databases.connect();
    centre.databases.connect("\\data\\usta.mdb");
    EXPECT_EQ(centre.databases.levelFile(), centre.path("\\Data\\USTA.MDB"));
    centre.databases.connect(centre.path("\\Data\\ISYERI.MDB"));
    EXPECT_EQ(centre.databases.levelFile(), centre.path("\\Data\\ISYERI.MDB"));
    EXPECT_THROW(centre.databases.connect("\\Data\\YOK.MDB"), jet::Error);
}

TEST(Connect, ReadsTheSchoolAndKeepsASelectedYear) {
    TestCentre centre;
    centre.databases.connect();
    EXPECT_EQ(centre.session.schoolName, "") << "no row of constants is legal";
    centre.constants().execute(
        "INSERT INTO SabitBilgiler (SB_Okul_Adi,SB_Ders_Yili) VALUES ('  Işık MEM ','2024-2025')");
    centre.databases.connect();
    EXPECT_EQ(centre.session.schoolName, "Işık MEM");
    EXPECT_EQ(centre.session.schoolYear, "2024-2025");
    centre.session.schoolYear = "2008-2009";
    centre.databases.connect();
    EXPECT_EQ(centre.session.schoolYear, "2008-2009");
}

TEST(Connect, MakesTheMessageLogWhenAnOldFileLacksIt) {
    TestCentre centre;
    centre.databases.connect();
    centre.databases.constants().database().dropTable("SMSLog");
    centre.databases.connect();
    EXPECT_TRUE(centre.databases.constants().database().hasTable("SMSLog"));
}

TEST(OpenFile, MissingFileIsToldAndGivesNothing) {
    TestCentre centre;
    centre.databases.connect();
    ScriptedDialogs dialogs;
    const QString missing = centre.path("\\Data\\MKAL1999.MDB");
    dialogs.expectMessage(missing + " Bulunamadı\nDosya Silinmiş İse Dosyayı İlgili Dizine Kopyalayın",
                          "Dosya Bulunamadı");
    EXPECT_EQ(openFile(missing, dialogs), nullptr);
    const auto opened = openFile(centre.path("\\Data\\USTA.MDB"), dialogs);
    ASSERT_NE(opened, nullptr);
    EXPECT_TRUE(opened->database().hasTable("OgrenciBilgisi"));
}

} // namespace
