// The structure upgrade: files of older releases gain what they lack, lose nothing, and a second run does
// nothing.
#include "core/structure_check.h"

#include "core/ini_file.h"
#include "support/declining_dialogs.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

QString stampOf(const TestCentre& centre) {
    return IniFile(centre.path("\\Yapi.sys")).value("YAPIKOTROLU", "VERSIYON");
}

void writeStamp(const TestCentre& centre, const QString& stamp) {
    IniFile ini(centre.path("\\Yapi.sys"));
    ini.setValue("YAPIKOTROLU", "VERSIYON", stamp);
    ini.save();
}

std::unique_ptr<jet::Database> openRaw(const TestCentre& centre, const char* literal) {
    return jet::Database::open(filePath(centre.path(literal)));
}

// A level file as an old release might have left it: few fields, narrow ones, rows in them, a field of its
// own.
void makeOldLevelFile(const TestCentre& centre, const char* literal) {
    const auto database = jet::Database::create(filePath(centre.path(literal)));
    jet::FieldDef number, name, own;
    number.name = "Ogr_Numarasi";
    number.size = 9;
    name.name = "OGR_ADI"; // case differs from the declaration
    name.size = 12;
    own.name = "Eski_Alan";
    own.size = 5;
    database->createTable("OgrenciBilgisi", {number, name, own});
    jet::SqlSession sql(*database);
    sql.execute("INSERT INTO OgrenciBilgisi VALUES ('110100001','Ayşe','x')");
    sql.execute("INSERT INTO OgrenciBilgisi VALUES ('110100001','Çağrı',NULL)");
}

TEST(StructureStamp, IsBuiltFromTheRelease) {
    EXPECT_EQ(structureStamp({3, 2, 117}), "EFE000300020117ADA");
    EXPECT_EQ(releaseText(thisRelease()), "3.2.117");
}

TEST(StructureCheck, StampDecidesAndCheck1Forces) {
    TestCentre centre;
    ScriptedDialogs dialogs;
    centre.databases.connect();
    centre.databases.close();
    struct Case {
        const char* stored;
        const char* argument;
        bool runs;
    };
    for (const Case& c :
         {Case{"", "", true}, Case{"EFE000300020116ADA", "", true}, Case{"EFE000300020117ADA", "", false},
          Case{"EFE000300020117ADA", " Check1 ", true}, Case{"EFE000300020117ADA", "check1", false}}) {
        writeStamp(centre, c.stored);
        const auto changes = checkStructure(centre.folder, centre.session, allTables(), dialogs, c.argument);
        EXPECT_EQ(centre.session.upgradeNeeded, c.runs) << c.stored << " / " << c.argument;
        EXPECT_FALSE(changes.any()) << "fresh files already hold everything";
        EXPECT_EQ(stampOf(centre), "EFE000300020117ADA");
    }
}

TEST(StructureCheck, OldLevelFileGainsEverythingAndLosesNothing) {
    TestCentre centre;
    ScriptedDialogs dialogs;
    centre.folder.createFolder("\\Data");
    makeOldLevelFile(centre, "\\Data\\MKAL2003.MDB");
    const auto changes = checkStructure(centre.folder, centre.session, allTables(), dialogs);
    EXPECT_GT(changes.tables, 5);
    EXPECT_GT(changes.fields, 100);
    EXPECT_EQ(changes.widened, 2);

    const auto database = openRaw(centre, "\\Data\\MKAL2003.MDB");
    for (const TableDeclaration& table : allTables().tables()) {
        if (table.database != DatabaseKind::Level) continue;
        const jet::TableDef& def = database->tableDef(table.name);
        for (const FieldDeclaration& field : table.fields)
            EXPECT_TRUE(def.findField(field.name)) << table.name << '.' << field.name;
        for (const IndexDeclaration& index : table.indexes)
            EXPECT_TRUE(def.findIndex(index.name)) << index.name;
    }
    jet::SqlSession sql(*database);
    const auto rows =
        sql.query("SELECT Ogr_Numarasi, Ogr_Adi, Eski_Alan, Ogr_Soyadi FROM OgrenciBilgisi ORDER BY Ogr_Adi");
    ASSERT_EQ(rows.rowCount(), 2u);
    EXPECT_EQ(rows.at(0, 1), jet::Value("Ayşe"));
    EXPECT_EQ(rows.at(0, 2), jet::Value("x"));
    EXPECT_EQ(rows.at(1, 1), jet::Value("Çağrı"));
    EXPECT_TRUE(rows.at(1, 3).isNull());
    EXPECT_EQ(database->tableDef("OgrenciBilgisi").field("Ogr_Numarasi").size, 15);
}

TEST(StructureCheck, SecondRunChangesNothing) {
    TestCentre centre;
    ScriptedDialogs dialogs;
    centre.folder.createFolder("\\Data");
    makeOldLevelFile(centre, "\\Data\\KALFA.MDB");
    EXPECT_TRUE(checkStructure(centre.folder, centre.session, allTables(), dialogs).any());
    EXPECT_FALSE(checkStructure(centre.folder, centre.session, allTables(), dialogs, "Check1").any());
}

TEST(StructureCheck, DoublesUnderAUniqueIndexGetAPlainOne) {
    TestCentre centre;
    ScriptedDialogs dialogs;
    centre.databases.connect();
    auto& constants = centre.databases.constants().database();
    constants.dropIndex("Kullanici", "indKullanici");
    centre.constants().execute("INSERT INTO Kullanici VALUES ('ali','1')");
    centre.constants().execute("INSERT INTO Kullanici VALUES ('Ali','2')");
    centre.databases.close();
    checkStructure(centre.folder, centre.session, allTables(), dialogs);
    const auto database = openRaw(centre, "\\Data\\Sabit.mdb");
    const jet::IndexDef* index = database->tableDef("Kullanici").findIndex("indKullanici");
    ASSERT_NE(index, nullptr);
    EXPECT_FALSE(index->unique);
    EXPECT_EQ(database->openTable("Kullanici").rowCount(), 2u);
}

TEST(StructureCheck, SharedRowsThatAreMissingAreAddedAgainOthersLeftAlone) {
    TestCentre centre;
    ScriptedDialogs dialogs;
    centre.databases.connect();
    centre.constants().execute("DELETE FROM Meb_Il_Tablo WHERE Il_Kodu = '06'");
    centre.constants().execute("UPDATE Meb_Il_Tablo SET Il_Adi = 'AFYON' WHERE Il_Kodu = '03'");
    centre.level().execute("DELETE FROM Parametrik_giris WHERE Ta_Tanim_Kod = '51'");
    centre.databases.close();
    EXPECT_EQ(checkStructure(centre.folder, centre.session, allTables(), dialogs).rows, 1);
    centre.databases.connect();
    EXPECT_EQ(centre.databases.table("Meb_Il_Tablo").rowCount(), 81u);
    EXPECT_EQ(centre.constants().query("SELECT Il_Adi FROM Meb_Il_Tablo WHERE Il_Kodu='03'").at(0, size_t{0}),
              jet::Value("AFYON"));
    EXPECT_TRUE(centre.level().query("SELECT * FROM Parametrik_giris WHERE Ta_Tanim_Kod = '51'").empty())
        << "a code that the centre removed stays removed";
}

TEST(StructureCheck, FileThatCannotBeUpgradedIsNamedAndTheStampWaits) {
    TestCentre centre;
    centre.databases.connect();
    centre.databases.close();
    QFile damaged(centre.path("\\Data\\AKAL2004.MDB"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("bozuk");
    damaged.close();
    makeOldLevelFile(centre, "\\Data\\MUST2004.MDB");
    struct Listener final : orvan_test::DecliningDialogs {
        QString told;
        void message(const QString& text, const QString&, Icon) override { told = text; }
    } dialogs;
    checkStructure(centre.folder, centre.session, allTables(), dialogs);
    EXPECT_TRUE(dialogs.told.contains("AKAL2004.MDB")) << dialogs.told.toStdString();
    EXPECT_EQ(stampOf(centre), "");
    EXPECT_TRUE(openRaw(centre, "\\Data\\MUST2004.MDB")->hasTable("Notlar"))
        << "the others are brought up to date";
}

} // namespace
