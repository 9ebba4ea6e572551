// A temporary database and short ways to describe tables, for the tests of rows.
#pragma once

#include "jet/database.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace jet_rows {

using namespace jet;

inline FieldDef field(const std::string& name, Type type, uint16_t size = 0) {
    FieldDef def;
    def.name = name;
    def.type = type;
    def.size = size;
    return def;
}

enum IndexKind { Plain = 0, Unique = 1, Primary = 2, IgnoreNulls = 4, Required = 8 };

inline IndexDef index(const std::string& name, std::vector<IndexField> fields, int kind = Plain) {
    IndexDef def;
    def.name = name;
    def.fields = std::move(fields);
    def.primary = kind & Primary;
    def.unique = kind & (Unique | Primary);
    def.required = kind & (Required | Primary);
    def.ignoreNulls = kind & IgnoreNulls;
    return def;
}

// The error number that `statement` throws; 0 when it throws none.
template <class Statement> int errorOf(Statement&& statement) {
    try {
        statement();
    } catch (const Error& error) {
        return error.code();
    }
    return 0;
}

// Walks the table and all its trees: rows counted right, every tree sound and holding exactly the rows' keys,
// every data page sound and in the maps. Adds a test failure for each contradiction.
void checkTable(Database& database, const std::string& table);

class TableFixture : public ::testing::Test {
  protected:
    TableFixture() {
        std::string pattern = (std::filesystem::temp_directory_path() / "orvan-rows-XXXXXX").string();
        folder = mkdtemp(pattern.data());
        path = folder / "test.mdb";
        db = Database::create(path);
    }
    ~TableFixture() override {
        db.reset();
        std::filesystem::remove_all(folder);
    }

    Table make(const std::string& name, std::vector<FieldDef> fields, std::vector<IndexDef> indexes = {}) {
        db->createTable(name, std::move(fields), std::move(indexes));
        return db->openTable(name);
    }
    // Values of one field over a scan, as text, separated by blanks; "-" for null.
    static std::string list(Scan scan, size_t at) {
        std::string all;
        while (scan.next()) {
            const Value value = scan.value(at);
            all += (all.empty() ? "" : " ") + (value.isNull() ? "-" : value.toText());
        }
        return all;
    }
    std::string list(Table& table, size_t at) {
        const ReadScope scope(db->pages());
        return list(table.scan(), at);
    }
    std::string list(Table& table, const char* index, const KeyRange& range, size_t at) {
        const ReadScope scope(db->pages());
        return list(table.scan(index, range), at);
    }

    std::filesystem::path folder, path;
    std::unique_ptr<Database> db;
};

} // namespace jet_rows
