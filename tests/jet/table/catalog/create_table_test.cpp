// New tables: every type, every kind of index, properties, limits; drop and rename of tables.
#include "catalog_fixture.h"

#include "jet/format/layout.h"

namespace catalog_test {
namespace {

using jet::Database;
using jet::FieldDef;
using jet::IndexDef;
using jet::Type;
using jet::Value;

class CreateTable : public Files {
  protected:
    void SetUp() override {
        Files::SetUp();
        database_ = Database::create(file("a.mdb"));
    }
    void reopen() {
        database_.reset();
        database_ = Database::open(file("a.mdb"));
    }
    std::unique_ptr<Database> database_;
};

std::vector<FieldDef> everyType() {
    FieldDef id = field("Id", Type::Long);
    id.autoNumber = true;
    FieldDef amount = field("Ondalık", Type::Numeric);
    amount.precision = 12;
    amount.scale = 3;
    return {id,
            field("Mantıksal", Type::Boolean),
            field("Bayt", Type::Byte),
            field("Tamsayı", Type::Integer),
            field("Para", Type::Currency),
            field("Tek", Type::Single),
            field("Çift", Type::Double),
            field("Tarih", Type::Date),
            field("İkili", Type::Binary, 20),
            field("Ad", Type::Text, 50),
            field("Resim", Type::Ole),
            field("Açıklama", Type::Memo),
            field("Kimlik", Type::Guid),
            amount};
}

TEST_F(CreateTable, EveryTypeIsKept) {
    database_->createTable("Öğrenci Bilgisi", everyType(), {primaryKey(0)});
    jet::Table table = database_->openTable("öğrenci bilgisi");
    const std::string longText(5000, 'x');
    table.insert(std::vector<Value>{Value(), true, 200, -30000, jet::Currency{123456}, 1.5f, -2.25,
                                    jet::Date{39706.5}, jet::Bytes{1, 2, 3}, "Kadın İçi", jet::Bytes(3000, 7),
                                    longText, jet::Guid{}, Value("12.345")});
    reopen();
    const auto& def = database_->tableDef("Öğrenci Bilgisi");
    const auto wanted = everyType();
    ASSERT_EQ(def.fields.size(), wanted.size());
    for (size_t i = 0; i < wanted.size(); ++i) {
        EXPECT_EQ(def.fields[i].name, wanted[i].name);
        EXPECT_EQ(def.fields[i].type, wanted[i].type) << wanted[i].name;
        EXPECT_EQ(def.fields[i].size, wanted[i].size) << wanted[i].name;
        EXPECT_EQ(def.fields[i].autoNumber, wanted[i].autoNumber) << wanted[i].name;
    }
    EXPECT_EQ(def.fields.back().precision, 12);
    EXPECT_EQ(def.fields.back().scale, 3);
    const auto rows = rowsOf(*database_, "Öğrenci Bilgisi");
    ASSERT_EQ(rows.size(), 1u);
    for (const char* part :
         {"Id=1|", "Mantıksal=-1|", "Bayt=200|", "Tamsayı=-30000|", "Para=12.3456|", "Tek=1.5|",
          "Çift=-2.25|", "Tarih=2008-09-15 12:00:00|", "Ad=Kadın İçi|", "Ondalık=12.345|"})
        EXPECT_NE(rows[0].find(part), std::string::npos) << part << " in " << rows[0];
    EXPECT_NE(rows[0].find("Açıklama=" + longText), std::string::npos);
    EXPECT_EQ(faultsOf(*database_), "");
}

TEST_F(CreateTable, OtherToolsSeeTheSameTable) {
    if (!haveMdbtools()) GTEST_SKIP() << "mdbtools is not installed";
    database_->createTable("Her Tür", everyType(), {primaryKey(0)});
    IndexDef both = index("AdTarih", {9, 7});
    both.fields[1].descending = true;
    database_->createIndex("Her Tür", both);
    database_->openTable("Her Tür").insert(
        std::vector<Value>{Value(), true, 200, -30000, jet::Currency{123400}, 1.5f, -2.25, jet::Date{39706.5},
                           jet::Bytes{1}, "İ|ı", Value(), "Not", jet::Guid{}, Value("12.345")});
    database_.reset();
    const std::string path = "'" + file("a.mdb").string() + "'";
    EXPECT_EQ(run("mdb-tables -1 " + path), "Her Tür\n");
    const std::string schema = run("mdb-schema -T 'Her Tür' " + path);
    for (const char* part :
         {"[Id]\t\t\tLong Integer", "[Mantıksal]", "Boolean", "[Bayt]\t\t\tByte", "Integer", "Currency",
          "Single", "Double", "DateTime", "[İkili]\t\t\tBinary", "Text (50)", "OLE (255)",
          "Memo/Hyperlink (255)", "Replication ID", "Numeric (12, 3)"})
        EXPECT_NE(schema.find(part), std::string::npos) << part << "\n" << schema;
    const auto rows = exported(file("a.mdb"), "Her Tür");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].substr(0, rows[0].find("|1.5")), "1|1|200|-30000|12.3400");
    EXPECT_NE(rows[0].find("|İ|ı|"), std::string::npos) << rows[0];
    EXPECT_NE(rows[0].find("2008-09-15 12:00:00"), std::string::npos) << rows[0];
}

TEST_F(CreateTable, PropertiesAndIndexKindsAreKept) {
    FieldDef required = field("Kod", Type::Text, 10);
    required.required = true;
    required.allowZeroLength = false;
    FieldDef withDefault = field("Sayı", Type::Long);
    withDefault.defaultValue = "7";
    IndexDef unique = index("Tek", {1});
    unique.unique = true;
    IndexDef ignore = index("Atla", {1, 0});
    ignore.ignoreNulls = true;
    ignore.fields[1].descending = true;
    IndexDef needed = index("Gerekli", {1});
    needed.required = true;
    database_->createTable("T", {required, withDefault}, {needed, unique, primaryKey(0), ignore});
    reopen();
    const auto& def = database_->tableDef("t");
    EXPECT_TRUE(def.fields[0].required);
    EXPECT_FALSE(def.fields[0].allowZeroLength);
    EXPECT_EQ(def.fields[1].defaultValue, "7");
    EXPECT_FALSE(def.fields[1].required);
    ASSERT_EQ(def.indexes.size(), 4u);
    EXPECT_EQ(def.indexes[0].name, "Atla"); // by name, as Access keeps them
    EXPECT_TRUE(def.findIndex("PRIMARYKEY")->primary);
    EXPECT_TRUE(def.findIndex("PrimaryKey")->unique);
    EXPECT_TRUE(def.findIndex("tek")->unique);
    EXPECT_TRUE(def.findIndex("Atla")->ignoreNulls);
    EXPECT_TRUE(def.findIndex("Atla")->fields[1].descending);
    EXPECT_TRUE(def.findIndex("Gerekli")->required);

    jet::Table table = database_->openTable("T");
    const auto insert = [&](Value code) {
        return errorOf([&] { table.insert(std::vector<Value>{code, Value()}, std::array{true, false}); });
    };
    EXPECT_EQ(insert("a"), 0);
    EXPECT_EQ(insert(Value()), 3314);
    EXPECT_EQ(insert(""), 3315);
    EXPECT_EQ(insert("b"), 3022); // the default stands in a unique index
    EXPECT_EQ(rowsOf(*database_, "T"), std::vector<std::string>{"Kod=a|Sayı=7|"});
}

TEST_F(CreateTable, AWideTableWithLongNamesSpansDefinitionPages) {
    std::vector<FieldDef> fields;
    const std::string longName(60, 'u');
    for (int i = 0; i < 255; ++i)
        fields.push_back(
            field(longName + std::to_string(1000 + i), i % 5 == 0 ? Type::Long : Type::Text, i % 5 ? 20 : 0));
    std::vector<IndexDef> indexes;
    for (uint16_t i = 0; i < 32; ++i)
        indexes.push_back(index("dizin" + longName.substr(6) + std::to_string(i), {i}));
    database_->createTable("Geniş", fields, indexes);
    jet::Table table = database_->openTable("Geniş");
    std::vector<Value> row(255);
    row[0] = 5;
    row[254] = "son";
    table.insert(row);
    reopen();
    EXPECT_EQ(database_->tableDef("Geniş").fields.size(), 255u);
    EXPECT_EQ(database_->tableDef("Geniş").indexes.size(), 32u);
    EXPECT_EQ(errorOf([&] { database_->addField("Geniş", field("fazla", Type::Long)); }), 3190);
    EXPECT_EQ(errorOf([&] { database_->createIndex("Geniş", index("fazla", {40})); }), 3626);
    // A dropped field's number is spent; the rows are then written anew.
    database_->dropField("Geniş", fields[100].name);
    database_->addField("Geniş", field("yeni", Type::Text, 5));
    EXPECT_EQ(database_->tableDef("Geniş").fields.size(), 255u);
    EXPECT_NE(rowsOf(*database_, "Geniş").at(0).find("=son|yeni=(null)|"), std::string::npos);
    if (haveMdbtools()) {
        EXPECT_EQ(exported(file("a.mdb"), "Geniş").size(), 1u);
    }
    database_->dropTable("Geniş");
    EXPECT_EQ(faultsOf(*database_), "");
}

TEST_F(CreateTable, LimitsGiveTheirNumbers) {
    const std::string tooLong(65, 'a');
    database_->createTable("Var", {field("A", Type::Long)});
    FieldDef counter = field("S", Type::Long), counter2 = field("S2", Type::Long),
             textCounter = field("S", Type::Text, 5);
    counter.autoNumber = counter2.autoNumber = textCounter.autoNumber = true;
    const FieldDef a = field("A", Type::Long), b = field("B", Type::Text, 10), ole = field("O", Type::Ole);
    std::vector<FieldDef> wide, fixed;
    for (int i = 0; i < 256; ++i)
        wide.push_back(field("f" + std::to_string(i), Type::Byte));
    for (int i = 0; i < 255; ++i)
        fixed.push_back(field("g" + std::to_string(i), Type::Guid));
    IndexDef eleven = index("X", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    const std::vector<FieldDef> twelve(wide.begin(), wide.begin() + 12);
    IndexDef secondKey = primaryKey(1);
    secondKey.name = "Baska";
    struct Case {
        const char* what;
        std::string table;
        std::vector<FieldDef> fields;
        std::vector<IndexDef> indexes;
        int number;
    };
    const Case cases[] = {
        {"table exists", "VAR", {a}, {}, 3010},
        {"system table exists", "msysobjects", {a}, {}, 3010},
        {"no name", "", {a}, {}, 3001},
        {"long table name", tooLong, {a}, {}, 3125},
        {"long field name", "T", {field(tooLong, Type::Long)}, {}, 3125},
        {"forbidden sign", "T.x", {a}, {}, 3001},
        {"leading blank", "T", {field(" A", Type::Long)}, {}, 3001},
        {"no fields", "T", {}, {}, 3001},
        {"field twice", "T", {a, b, field("a", Type::Long)}, {}, 3191},
        {"256 fields", "T", wide, {}, 3190},
        {"fixed part too long", "T", fixed, {}, 3047},
        {"text of 256", "T", {field("A", Type::Text, 256)}, {}, 3001},
        {"two autonumbers", "T", {counter, counter2}, {}, 3001},
        {"autonumber of text", "T", {textCounter}, {}, 3001},
        {"two primary keys", "T", {a, b}, {primaryKey(0), secondKey}, 3283},
        {"index twice", "T", {a, b}, {index("X", {0}), index("x", {1})}, 3284},
        {"index over nothing", "T", {a}, {index("X", {})}, 3001},
        {"index over an unknown field", "T", {a}, {index("X", {1})}, 3265},
        {"field twice in index", "T", {a, b}, {index("X", {0, 1, 0})}, 3191},
        {"index of eleven fields", "T", twelve, {eleven}, 3001},
        {"index over OLE", "T", {ole}, {index("X", {0})}, 3001},
        {"long index name", "T", {a}, {index(tooLong, {0})}, 3125},
    };
    database_.reset();
    const std::string before = bytesOf(file("a.mdb"));
    reopen();
    for (const Case& c : cases)
        EXPECT_EQ(errorOf([&] { database_->createTable(c.table, c.fields, c.indexes); }), c.number) << c.what;
    EXPECT_EQ(database_->tableNames(), std::vector<std::string>{"Var"});
    database_.reset();
    EXPECT_TRUE(bytesOf(file("a.mdb")) == before);
}

TEST_F(CreateTable, DroppedTablesGiveTheirPagesBack) {
    const auto build = [&] {
        database_->createTable("T", everyType(), {primaryKey(0), index("Ad", {9})});
        jet::WriteBatch batch(*database_);
        jet::Table table = database_->openTable("T");
        std::vector<Value> row(14);
        for (int i = 0; i < 500; ++i) {
            row[9] = "Ad " + std::to_string(i);
            row[10] = jet::Bytes(static_cast<size_t>(i * 20), 3);
            row[11] = std::string(static_cast<size_t>(i), 'm');
            table.insert(row);
        }
    };
    build();
    database_->dropTable("T");
    EXPECT_FALSE(database_->hasTable("T"));
    const auto size = fs::file_size(file("a.mdb"));
    for (int i = 0; i < 3; ++i) {
        build();
        database_->dropTable("t");
    }
    EXPECT_LE(fs::file_size(file("a.mdb")), size + 8 * 4096);
    EXPECT_EQ(errorOf([&] { database_->dropTable("T"); }), 3078);
    EXPECT_EQ(errorOf([&] { database_->tableDef("T"); }), 3078);
    EXPECT_EQ(errorOf([&] { database_->openTable("T"); }), 3078);
    EXPECT_EQ(errorOf([&] { database_->dropTable("MSysObjects"); }), 3001);
    EXPECT_EQ(faultsOf(*database_), "");
}

TEST_F(CreateTable, RenamingKeepsRowsAndRefusesTakenNames) {
    database_->createTable("Eski", {field("A", Type::Long)});
    database_->createTable("Diğer", {field("A", Type::Long)});
    database_->openTable("Eski").insert(std::vector<Value>{1});
    EXPECT_EQ(errorOf([&] { database_->renameTable("Eski", "DİĞER"); }), 3010);
    EXPECT_EQ(errorOf([&] { database_->renameTable("Yok", "X"); }), 3078);
    database_->renameTable("eski", "ESKİ"); // case only
    EXPECT_EQ(database_->tableDef("eski").name, "ESKİ");
    database_->renameTable("eski", "Yeni Ad");
    EXPECT_FALSE(database_->hasTable("Eski"));
    EXPECT_EQ(database_->tableDef("yeni ad").name, "Yeni Ad");
    reopen();
    EXPECT_EQ(database_->tableNames(), (std::vector<std::string>{"Diğer", "Yeni Ad"}));
    EXPECT_EQ(rowsOf(*database_, "Yeni Ad"), std::vector<std::string>{"A=1|"});
    EXPECT_EQ(faultsOf(*database_), "");
}

} // namespace
} // namespace catalog_test
