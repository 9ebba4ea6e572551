// jet/sql/table_registry.h — the tables that statements of one session use, each shown to SQLite as a virtual
// table "vN" with the columns c0, c1, … in the order of the definition. Reading only: changes go through
// Table directly.
#pragma once

#include "jet/database.h"
#include "jet/sql/lookup.h"

#include <memory>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace jet::sql {

struct FunctionContext;

// One table as statements were compiled against it.
struct RegisteredTable {
    RegisteredTable(Database& database, std::string_view name);

    Table table;
    TableDef def; // a copy: the structure may change under a compiled statement
    std::string virtualName;
    std::unordered_map<std::string, size_t> fieldByName; // foldName → position
    std::unordered_map<size_t, LookupUse> lookups;       // by field; of the statement that runs now

    // False when the table has gone, was renamed or has other fields or indexes than `def`. Cheap when
    // nothing was written since the last call. REQUIRES: a read or write scope.
    bool stillFits(const PageFile& file);

  private:
    uint64_t checkedChanges_ = 0, checkedGeneration_ = 0;
    bool checked_ = false;
};

class TableRegistry {
  public:
    TableRegistry(Database& database, sqlite3* db, FunctionContext& context);
    // Err::NoSuchTable. The reference holds until clear().
    RegisteredTable& use(std::string_view name);
    bool allFit(); // every table still has the structure it was registered with
    // REQUIRES: no statement on them is left.
    void clear();
    Database& database() { return database_; }

    RegisteredTable* byVirtualName(std::string_view name) const; // nullptr when there is none
    FunctionContext& context() { return context_; }

  private:
    void registerCollations(const TableDef& def);

    Database& database_;
    sqlite3* db_;
    FunctionContext& context_;
    std::unordered_map<std::string, std::unique_ptr<RegisteredTable>> tables_; // by foldName
    std::vector<SortOrder> collations_;
    int lastNumber_ = 0;
};

} // namespace jet::sql
