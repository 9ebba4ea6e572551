// Fields of old files that are of another kind than declared: their values are carried over, none is lost.
#include "core/structure_fields.h"

#include "core/structure_check.h"
#include "core/values.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

using jet::Type;
using jet::Value;

jet::FieldDef field(const char* name, Type type, uint16_t size = 0) {
    jet::FieldDef def;
    def.name = name;
    def.type = type;
    def.size = size;
    return def;
}

TEST(ConvertedValue, TakesTheDeclaredFormOrNone) {
    const auto day = Value(jet::Date::fromParts({2003, 9, 5, 0, 0, 0}));
    const auto text = textField("F", 10, ""), whole = longField("F", ""), real = doubleField("F", ""),
               money = moneyField("F", ""), yesNo = yesNoField("F", ""), date = dateField("F", "");
    const struct {
        Value from;
        const FieldDeclaration& to;
        std::optional<Value> expected;
    } cases[] = {
        {Value(int32_t{85}), text, Value("85")},
        {Value(85.5), text, Value("85,5")},
        {Value(jet::Currency{125000}), text, Value("12,5")},
        {Value(jet::Currency{100000}), text, Value("10")},
        {day, text, Value("05.09.2003")},
        {Value(true), text, Value("-1")},
        {Value("on karakterden uzun"), text, std::nullopt},
        {Value(), whole, Value()},
        {Value("  "), whole, Value()},
        {Value(" 12 "), whole, Value(int32_t{12})},
        {Value("12,5"), whole, std::nullopt},
        {Value("M"), whole, std::nullopt},
        {Value("1.234,5"), real, Value(1234.5)},
        {Value("1.5"), real, Value(1.5)},
        {Value("12,3456"), money, Value(jet::Currency{123456})},
        {Value("1e300"), money, std::nullopt},
        {Value("Evet"), yesNo, Value(true)},
        {Value("0"), yesNo, Value(false)},
        {Value("belki"), yesNo, std::nullopt},
        {Value("5/9/2003"), date, day},
        {Value("31.02.2003"), date, std::nullopt},
        {Value(int32_t{5}), date, std::nullopt},
    };
    for (const auto& c : cases) {
        const auto found = convertedValue(c.from, c.to);
        EXPECT_EQ(found.has_value(), c.expected.has_value()) << c.from.toText();
        if (found && c.expected) {
            EXPECT_EQ(*found, *c.expected) << c.from.toText();
        }
    }
}

struct OldMarks : testing::Test {
    // Marks as an older release kept them: numbers, with an index of its own and a relation-like extra field.
    void makeOld(const std::vector<std::pair<const char*, Value>>& marks, Type type = Type::Double) {
        centre.folder.createFolder("\\Data");
        const auto file = filePath(centre.path("\\Data\\AUST2003.MDB"));
        std::filesystem::remove(file);
        const auto database = jet::Database::create(file);
        jet::IndexDef index;
        index.name = "indSozlu";
        index.fields = {{1, false}};
        database->createTable("Notlar",
                              {field("Ek", Type::Memo), field("Sozlu1", type, type == Type::Text ? 20 : 0),
                               field("N_Ogr_Numarasi", Type::Text, 9)},
                              {index});
        jet::Table table = database->openTable("Notlar");
        for (const auto& [number, mark] : marks)
            table.insert(std::vector<Value>{Value("sahibinin notu"), mark, Value(number)},
                         std::array{true, true, true});
    }
    StructureChanges upgrade() {
        ScriptedDialogs dialogs;
        return checkStructure(centre.folder, centre.session, allTables(), dialogs, "Check1");
    }
    std::unique_ptr<jet::Database> open() {
        return jet::Database::open(filePath(centre.path("\\Data\\AUST2003.MDB")));
    }
    TestCentre centre;
};

TEST_F(OldMarks, BecomeTexts) {
    makeOld({{"1", Value(85.0)}, {"2", Value()}, {"3", Value(70.5)}});
    EXPECT_EQ(upgrade().converted, 1);
    {
        const auto database = open();
        const jet::TableDef& def = database->tableDef("Notlar");
        EXPECT_EQ(def.field("Sozlu1").type, Type::Text);
        EXPECT_FALSE(def.findField("Sozlu1X"));
        EXPECT_EQ(def.fields[0].name, "N_Ogr_Numarasi") << "declared fields first, in their order";
        EXPECT_EQ(def.fields.back().name, "Ek");
        jet::SqlSession sql(*database);
        const auto rows = sql.query("SELECT Sozlu1, Ek FROM Notlar ORDER BY N_Ogr_Numarasi");
        EXPECT_EQ(rows.at(0, size_t{0}), Value("85"));
        EXPECT_TRUE(rows.at(1, size_t{0}).isNull());
        EXPECT_EQ(rows.at(2, size_t{0}), Value("70,5"));
        EXPECT_EQ(rows.at(2, 1), Value("sahibinin notu"));
    }
    EXPECT_FALSE(upgrade().any()) << "safe to repeat";
}

// A value without a form in the new field stays readable in the old one, however often the upgrade runs.
TEST_F(OldMarks, ThatHaveNoNewFormKeepTheirField) {
    makeOld({{"1", Value("85")}, {"2", Value("çok uzun bir not")}}, Type::Text);
    {
        const auto database = open();
        database->dropIndex("Notlar", "indSozlu");
        database->renameField("Notlar", "Sozlu1", "KayitSira"); // declared as a number
    }
    EXPECT_EQ(upgrade().converted, 1);
    for (int run = 0; run < 2; ++run) {
        const auto database = open();
        jet::SqlSession sql(*database);
        const auto rows = sql.query("SELECT KayitSira, KayitSiraX FROM Notlar ORDER BY N_Ogr_Numarasi");
        EXPECT_EQ(rows.at(0, size_t{0}), Value(int32_t{85 + run}));
        EXPECT_EQ(rows.at(1, 1), Value("çok uzun bir not"));
        sql.execute("UPDATE Notlar SET KayitSira = 86 WHERE N_Ogr_Numarasi = '1'"); // used since
        EXPECT_FALSE(run == 0 && upgrade().any());
    }
}

// A field of the centre's own that only looks like a left-over is not touched.
TEST_F(OldMarks, AFieldOfTheSameKindNamedLikeALeftOverStays) {
    makeOld({{"1", Value("85")}}, Type::Text);
    {
        const auto database = open();
        database->addField("Notlar", field("Sozlu1X", Type::Text, 30));
        jet::SqlSession(*database).execute("UPDATE Notlar SET Sozlu1X = 'benim'");
    }
    upgrade();
    const auto database = open();
    EXPECT_EQ(jet::SqlSession(*database).query("SELECT Sozlu1X FROM Notlar").at(0, size_t{0}),
              Value("benim"));
}

TEST(StructureUpgrade, AThirdOfTheFieldsMissingAndForeignTablesLeftAlone) {
    TestCentre centre;
    ScriptedDialogs dialogs;
    centre.databases.connect();
    centre.addStudent("010100001", 1, "0101");
    centre.databases.close();
    size_t dropped = 0;
    {
        const auto database = jet::Database::open(filePath(centre.path("\\Data\\KALFA.MDB")));
        jet::WriteBatch batch(*database);
        for (const TableDeclaration& table : allTables().tables()) {
            if (table.database != DatabaseKind::Level) continue;
            for (const IndexDeclaration& index : table.indexes)
                database->dropIndex(table.name, index.name);
            for (size_t i = 2; i < table.fields.size(); i += 3, ++dropped)
                database->dropField(table.name, table.fields[i].name);
        }
        database->createTable("Ozel", {field("Ad", Type::Text, 20)});
        jet::SqlSession(*database).execute("INSERT INTO Ozel VALUES ('Çay ocağı')");
        batch.commit();
    }
    const auto changes = checkStructure(centre.folder, centre.session, allTables(), dialogs);
    EXPECT_EQ(static_cast<size_t>(changes.fields), dropped);
    EXPECT_FALSE(checkStructure(centre.folder, centre.session, allTables(), dialogs, "Check1").any());
    const auto database = jet::Database::open(filePath(centre.path("\\Data\\KALFA.MDB")));
    jet::SqlSession sql(*database);
    EXPECT_EQ(sql.query("SELECT Ad FROM Ozel").at(0, size_t{0}), Value("Çay ocağı"));
    const auto rows = sql.query("SELECT Ogr_Numarasi, Ogr_Durum FROM OgrenciBilgisi");
    EXPECT_EQ(rows.at(0, size_t{0}), Value("010100001"));
    EXPECT_EQ(rows.at(0, 1), Value(int32_t{0})) << "a new field with a default is filled in old rows";
}

} // namespace
