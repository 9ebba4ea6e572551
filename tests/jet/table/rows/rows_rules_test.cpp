// What a field or an index refuses, what fills in by itself, and that a refused statement leaves no trace.
#include "table_fixture.h"

#include <cmath>

namespace jet_rows {
namespace {

class RowRules : public TableFixture {};

TEST_F(RowRules, UniqueAndNullsByKindOfIndex) {
    const struct {
        const char* name;
        int kind;
        std::vector<std::vector<Value>> rows; // (A, B)
        std::vector<int> errors;              // one per row
        size_t entries;                       // in the index at the end
    } cases[] = {
        {"Plain", Plain, {{1, 1}, {1, 1}, {Value(), Value()}, {Value(), 1}}, {0, 0, 0, 0}, 4},
        {"Unique", Unique, {{1, 1}, {1, 2}, {1, 1}}, {0, 0, 3022}, 2},
        {"UniqueNulls",
         Unique,
         {{Value(), Value()}, {Value(), Value()}, {1, Value()}, {1, Value()}},
         {0, 0, 0, 0},
         4},
        {"UniqueIgnore",
         Unique | IgnoreNulls,
         {{Value(), Value()}, {Value(), Value()}, {1, Value()}, {1, 1}, {1, 1}},
         {0, 0, 0, 0, 3022},
         2},
        {"Ignore", IgnoreNulls, {{Value(), Value()}, {1, Value()}, {1, Value()}}, {0, 0, 0}, 2},
        {"Primary",
         Primary,
         {{1, 1}, {1, Value()}, {Value(), 1}, {1, 1}, {1, 2}},
         {0, 3058, 3058, 3022, 0},
         2},
        {"Required", Required, {{1, 1}, {1, Value()}, {1, 1}}, {0, 3058, 0}, 2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Table table = make(c.name, {field("A", Type::Long), field("B", Type::Long)},
                           {index("Dizin", {{0, false}, {1, true}}, c.kind)});
        for (size_t i = 0; i < c.rows.size(); ++i) {
            SCOPED_TRACE(i);
            EXPECT_EQ(errorOf([&] { table.insert(c.rows[i]); }), c.errors[i]);
        }
        checkTable(*db, c.name);
        const std::string entries = list(table, "Dizin", {}, 0);
        EXPECT_EQ(static_cast<size_t>(std::count(entries.begin(), entries.end(), ' ')) + 1, c.entries);
    }
}

TEST_F(RowRules, DuplicateKeyNamesIndexAndTableAndUpdateMayKeepItsOwnKey) {
    Table table =
        make("Öğrenci", {field("No", Type::Long), field("Ad", Type::Text, 20)},
             {index("BirincilAnahtar", {{0, false}}, Primary), index("AdTek", {{1, false}}, Unique)});
    const RowId one = table.insert(std::vector<Value>{1, "Işık"});
    const RowId two = table.insert(std::vector<Value>{2, "Işıl"});
    const bool both[] = {true, true};
    try {
        table.update(two, std::vector<Value>{2, "IŞIK"}, both);
        FAIL() << "text keys do not tell case";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), Err::DuplicateKey);
        EXPECT_NE(error.message().find("AdTek"), std::string::npos) << error.message();
        EXPECT_EQ(error.table(), "Öğrenci");
    }
    EXPECT_EQ(errorOf([&] { table.update(one, std::vector<Value>{2, "x"}, both); }), 3022);
    EXPECT_EQ(errorOf([&] { table.update(one, std::vector<Value>{1, "IŞIK"}, both); }), 0);
    EXPECT_EQ(table.read(one)[1].toText(), "IŞIK");
    checkTable(*db, "Öğrenci");
}

TEST_F(RowRules, FieldsRefuseNullEmptyWideAndForeignValues) {
    auto required = field("Zorunlu", Type::Text, 5);
    required.required = true;
    required.allowZeroLength = false;
    Table table = make("T", {required, field("Sayı", Type::Integer), field("Gün", Type::Date)});
    const struct {
        std::vector<Value> row;
        int error;
    } cases[] = {
        {{Value(), 1, Value()}, 3314},  {{"", 1, Value()}, 3315},     {{"ğüşiöç", 1, Value()}, 3163},
        {{"a", 40'000, Value()}, 3421}, {{"a", "on", Value()}, 3421}, {{"a", Value(), "dün"}, 3421},
        {{"ğüşiö", "12", Date{3}}, 0},  {{7, 1.0, Value()}, 0},       {{"a", 1}, 3001},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.row[0].toText());
        EXPECT_EQ(errorOf([&] { table.insert(c.row); }), c.error);
    }
    EXPECT_EQ(table.rowCount(), 2u);
    const bool first[] = {true, false, false};
    const RowId id = table.bookmark();
    EXPECT_EQ(errorOf([&] { table.update(id, std::vector<Value>(3), first); }), 3314);
    const bool second[] = {false, true, false};
    EXPECT_EQ(errorOf([&] { table.update(id, std::vector<Value>(3), second); }), 0);
    EXPECT_EQ(table.read(id), (std::vector<Value>{"ğüşiö", Value(), Date{3}}));
}

TEST_F(RowRules, DefaultsFillFieldsThatAreNotGiven) {
    const struct {
        Type type;
        const char* expression;
        Value expected;
    } cases[] = {
        {Type::Text, "\"Ankara\"", "Ankara"},
        {Type::Text, "=\"a\"\"b\"", "a\"b"},
        {Type::Text, "\"\"", ""},
        {Type::Text, "7", "7"},
        {Type::Text, "Upper(\"x\")", Value()},
        {Type::Text, "\"açık", Value()},
        {Type::Long, " 42 ", 42},
        {Type::Long, "-3", -3},
        {Type::Long, "\"x\"", Value()},
        {Type::Integer, "99999", Value()},
        {Type::Double, "1.5", 1.5},
        {Type::Currency, "0", Currency{0}},
        {Type::Boolean, "Yes", true},
        {Type::Boolean, "=True", true},
        {Type::Boolean, "No", false},
        {Type::Boolean, "", false},
        {Type::Memo, "\"uzun\"", "uzun"},
        {Type::Long, "Now()", Value()},
    };
    std::vector<FieldDef> fields;
    for (const auto& c : cases) {
        fields.push_back(field("F" + std::to_string(fields.size()), c.type, c.type == Type::Text ? 50 : 0));
        fields.back().defaultValue = c.expression;
    }
    fields.push_back(field("Bugün", Type::Date));
    fields.back().defaultValue = "Date()";
    fields.push_back(field("Şimdi", Type::Date));
    fields.back().defaultValue = "=Now( )";
    Table table = make("T", fields);
    const std::vector<Value> nothing(fields.size());
    const auto none = std::make_unique<bool[]>(fields.size());
    const auto row = table.read(table.insert(nothing, {none.get(), fields.size()}));
    for (size_t i = 0; i < std::size(cases); ++i)
        EXPECT_TRUE(row[i] == cases[i].expected) << cases[i].expression;
    const double today = row[std::size(cases)].toDouble(), now = row[std::size(cases) + 1].toDouble();
    EXPECT_EQ(today, std::floor(now));
    EXPECT_GT(today, 45'000);
    const auto explicitNulls = table.read(table.insert(nothing));
    EXPECT_TRUE(explicitNulls[0].isNull()) << "a null that is given stays null";
}

TEST_F(RowRules, AutoNumberCountsOnAcceptsHigherAndRefusesNull) {
    auto number = field("Id", Type::Long);
    number.autoNumber = true;
    Table table =
        make("T", {number, field("Ad", Type::Text, 10)}, {index("PrimaryKey", {{0, false}}, Primary)});
    const auto insert = [&](Value id) {
        return table.read(table.insert(std::vector<Value>{id, "a"}))[0].toInt();
    };
    EXPECT_EQ(insert({}), 1);
    EXPECT_EQ(insert({}), 2);
    EXPECT_EQ(insert(10), 10);
    EXPECT_EQ(insert({}), 11);
    EXPECT_EQ(insert(5), 5);
    EXPECT_EQ(insert(-4), -4);
    EXPECT_EQ(insert({}), 12);
    EXPECT_EQ(errorOf([&] { insert(12); }), 3022);
    EXPECT_EQ(insert({}), 13) << "a refused row uses no number";
    const bool first[] = {true, false};
    EXPECT_EQ(errorOf([&] { table.update(table.bookmark(), std::vector<Value>(2), first); }), 3314);
    db.reset();
    db = Database::open(path);
    Table again = db->openTable("T");
    EXPECT_EQ(again.read(again.insert(std::vector<Value>{Value(), "b"}))[0].toInt(), 14);
    checkTable(*db, "T");
}

TEST_F(RowRules, ErrorInABatchKeepsEarlierRowsAndUndoesItsOwnStatement) {
    std::vector<FieldDef> fields{field("Id", Type::Long), field("Not", Type::Memo)};
    for (int i = 0; i < 12; ++i)
        fields.push_back(field("T" + std::to_string(i), Type::Text, 255));
    Table table = make("T", fields, {index("PrimaryKey", {{0, false}}, Primary)});
    std::vector<Value> row(fields.size());
    try {
        WriteBatch batch(*db);
        for (int i = 0; i < 50; ++i) {
            row[0] = i;
            table.insert(row);
        }
        // Past the row limit: found only after its long value was written, so pages must be taken back.
        std::vector<Value> wide(fields.size(), std::string(255 * 2, '\xC4'));
        std::string turkish;
        for (int i = 0; i < 255; ++i)
            turkish += "ğ";
        for (size_t i = 2; i < wide.size(); ++i)
            wide[i] = turkish;
        wide[0] = 77;
        wide[1] = std::string(100'000, 'x');
        EXPECT_EQ(errorOf([&] { table.insert(wide); }), 3047);
        row[0] = 50;
        table.insert(row);
        row[0] = 3;
        table.insert(row);
        FAIL() << "a duplicate key must be refused";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), Err::DuplicateKey);
    }
    db.reset();
    db = Database::open(path);
    Table again = db->openTable("T");
    EXPECT_EQ(again.rowCount(), 51u);
    checkTable(*db, "T");
}

TEST_F(RowRules, ReadOnlyDatabaseRefusesEveryChangeWithItsReason) {
    Table(make("T", {field("A", Type::Long)})).insert(std::vector<Value>{1});
    db.reset();
    OpenOptions options;
    options.readOnly = true;
    db = Database::open(path, options);
    Table table = db->openTable("T");
    const bool changed[] = {true};
    const RowId id = table.bookmark();
    EXPECT_EQ(errorOf([&] { table.insert(std::vector<Value>{2}); }), 3027);
    EXPECT_EQ(errorOf([&] { table.update(id, std::vector<Value>{2}, changed); }), 3027);
    EXPECT_EQ(errorOf([&] { table.remove(id); }), 3027);
    EXPECT_EQ(errorOf([&] { table.edit(); }), 3027);
    EXPECT_EQ(list(table, 0), "1");
}

} // namespace
} // namespace jet_rows
