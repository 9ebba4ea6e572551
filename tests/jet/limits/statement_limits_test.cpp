// Each limit of the format through SQL: the last value that fits is taken, the next one is refused with its
// number, and a refusal leaves nothing behind.
#include "jet/check/check.h"
#include "jet/database.h"
#include "jet/pages/io_memory.h"
#include "jet/sql/session.h"

#include <gtest/gtest.h>

namespace {

using namespace jet;

// "a, b, c" of `count` items made by `item`.
template <class Item> std::string list(int count, Item item) {
    std::string text;
    for (int i = 1; i <= count; ++i)
        text += (i > 1 ? ", " : "") + item(i);
    return text;
}
std::string longField(int i) { return "A" + std::to_string(i) + " LONG"; }
std::string textField(int i) { return "A" + std::to_string(i) + " TEXT(255)"; }
std::string fieldName(int i) { return "A" + std::to_string(i); }
std::string letters(size_t count) { // two bytes each in UTF-8, and not in the short form of texts
    std::string text;
    for (size_t i = 0; i < count; ++i)
        text += "ş";
    return text;
}

class Limits : public testing::Test {
  protected:
    Limits() {
        CreateOptions options;
        options.io = std::make_shared<MemoryIo>();
        database = Database::create("/sinir.mdb", options);
        session.emplace(*database);
    }
    int errorOf(const std::string& sql, std::vector<Value> parameters = {}) {
        try {
            session->execute(sql, parameters);
            return 0;
        } catch (const Error& error) {
            return error.code();
        }
    }
    std::string faults() {
        std::string text;
        for (const Fault& fault : checkDatabase(*database).faults)
            text += fault.table + ": " + fault.text + "\n";
        return text;
    }
    std::unique_ptr<Database> database;
    std::optional<SqlSession> session;
};

TEST_F(Limits, OfStructureInStatements) {
    const std::string name64 = std::string(62, 'n') + "ıŞ", name65 = name64 + "x";
    const struct {
        const char* what;
        std::vector<std::string> before; // must succeed
        std::string tooMuch;
        int error;
    } cases[] = {
        {"fields of a new table", {}, "CREATE TABLE T (" + list(256, longField) + ")", 3190},
        {"fields added",
         {"CREATE TABLE T (" + list(254, longField) + ")", "ALTER TABLE T ADD COLUMN Son LONG"},
         "ALTER TABLE T ADD COLUMN Fazla YESNO",
         3190},
        {"fields of an index",
         {"CREATE TABLE T (" + list(12, longField) + ")",
          "CREATE INDEX on_alan ON T (" + list(10, fieldName) + ")"},
         "CREATE INDEX onbir_alan ON T (" + list(11, fieldName) + ")",
         3001},
        {"table name",
         {"CREATE TABLE " + name64 + " (A LONG)"},
         "CREATE TABLE " + name65 + " (A LONG)",
         3125},
        {"field name",
         {"CREATE TABLE T (" + name64 + " LONG)"},
         "ALTER TABLE T ADD COLUMN " + name65 + " LONG",
         3125},
        {"index name",
         {"CREATE TABLE T (A LONG)", "CREATE INDEX " + name64 + " ON T (A)"},
         "CREATE INDEX " + name65 + " ON T (A)",
         3125},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        for (const std::string& sql : c.before)
            EXPECT_EQ(errorOf(sql), 0);
        const auto tables = database->tableNames();
        const size_t fields = tables.empty() ? 0 : database->tableDef(tables[0]).fields.size();
        const size_t indexes = tables.empty() ? 0 : database->tableDef(tables[0]).indexes.size();
        EXPECT_EQ(errorOf(c.tooMuch), c.error);
        EXPECT_EQ(database->tableNames(), tables);
        if (!tables.empty()) {
            EXPECT_EQ(database->tableDef(tables[0]).fields.size(), fields);
            EXPECT_EQ(database->tableDef(tables[0]).indexes.size(), indexes);
        }
        EXPECT_EQ(faults(), "");
        for (const std::string& table : tables)
            EXPECT_EQ(errorOf("DROP TABLE " + table), 0);
    }
}

TEST_F(Limits, ThirtyTwoIndexesAreKeptRight) {
    ASSERT_EQ(errorOf("CREATE TABLE T (" + list(16, longField) + ")"), 0);
    for (int i = 0; i < 32; ++i)
        ASSERT_EQ(errorOf("CREATE INDEX i" + std::to_string(i) + " ON T (A" + std::to_string(1 + i % 16) +
                          (i < 16 ? ")" : " DESC)")),
                  0);
    EXPECT_EQ(errorOf("CREATE INDEX fazla ON T (A1, A2)"), 3626);
    for (int32_t row = 0; row < 40; ++row)
        ASSERT_EQ(errorOf("INSERT INTO T (A1, A7, A16) VALUES (?, ?, ?)", {row, row % 5, -row}), 0);
    EXPECT_EQ(errorOf("UPDATE T SET A7 = A7 + 1"), 0);
    EXPECT_EQ(faults(), "");
    EXPECT_EQ(errorOf("DROP INDEX i3 ON T"), 0);
    EXPECT_EQ(errorOf("CREATE INDEX yerine ON T (A1, A2)"), 0) << "there is room for one again";
    EXPECT_EQ(faults(), "");
}

TEST_F(Limits, OfRowsInStatements) {
    ASSERT_EQ(errorOf("CREATE TABLE T (" + list(9, textField) + ", M MEMO, K BINARY(510))"), 0);
    const struct {
        const char* what;
        std::string sql;
        std::vector<Value> values;
        int error;
    } cases[] = {
        {"text to its width", "INSERT INTO T (A1) VALUES (?)", {letters(255)}, 0},
        {"text past its width", "INSERT INTO T (A1) VALUES (?)", {letters(256)}, 3163},
        {"blanks count, too", "INSERT INTO T (A1) VALUES (?)", {std::string(256, ' ')}, 3163},
        {"an update past the width", "UPDATE T SET A1 = A1 & ?", {"x"}, 3163},
        {"bytes to their number", "INSERT INTO T (K) VALUES (?)", {Bytes(510, 7)}, 0},
        {"bytes past their number", "INSERT INTO T (K) VALUES (?)", {Bytes(511, 7)}, 3163},
        {"a row that just fits", "INSERT INTO T (A1, A2, A3, A4, A5, A6, A7) VALUES (?, ?, ?, ?, ?, ?, ?)",
         std::vector<Value>(7, letters(255)), 0},
        {"a row that does not",
         "INSERT INTO T (A1, A2, A3, A4, A5, A6, A7, A8) VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
         std::vector<Value>(8, letters(255)), 3047},
        {"rows that would grow past a page", "UPDATE T SET A8 = ?", {letters(255)}, 3047},
        {"a memo of a million letters", "INSERT INTO T (M) VALUES (?)", {letters(1'000'000)}, 0},
        {"a memo past what a file's header can tell",
         "INSERT INTO T (M) VALUES (?)",
         {letters(9'000'000)},
         3163},
    };
    int32_t rows = 0;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(errorOf(c.sql, c.values), c.error);
        if (c.error == 0) ++rows;
        EXPECT_EQ(session->query("SELECT Count(*) FROM T").at(0, 0).toInt(), rows);
    }
    EXPECT_TRUE(session->query("SELECT A8 FROM T WHERE A8 IS NOT NULL").empty())
        << "no row of a refused statement";
    EXPECT_EQ(session->query("SELECT M FROM T WHERE M IS NOT NULL").at(0, 0).toText(), letters(1'000'000));
    EXPECT_EQ(faults(), "");
}

} // namespace
