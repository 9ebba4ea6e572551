// jet/sql/lookup.h — an index in memory, made while a statement runs, for a table that a join or a sub-query
// searches again and again by a field that has no index of its own. Dropped when the statement ends.
#pragma once

#include "jet/database.h"

#include <optional>
#include <sqlite3.h>
#include <string>
#include <unordered_map>
#include <vector>

namespace jet::sql {

// Can values of this field be looked up by equality as SQLite compares them?
bool canLookUp(const FieldDef& field);

class Lookup {
  public:
    // Reads the whole table. REQUIRES: canLookUp(field); a scope that outlives the lookup.
    Lookup(Table& table, const TableDef& def, size_t field);

    // The rows that hold this value; nullopt when the value is of another kind and the table must be scanned.
    std::optional<std::vector<uint32_t>> find(sqlite3_value* value) const;
    RowId id(uint32_t row) const { return ids_[row]; }
    const std::vector<Value>& row(uint32_t row); // read once, kept

  private:
    Table& table_;
    const FieldDef& field_;
    std::unordered_multimap<std::string, uint32_t> rows_;
    std::vector<RowId> ids_;
    std::vector<std::vector<Value>> values_;
};

// How often a field was searched in this run, and the lookup once that paid.
struct LookupUse {
    size_t searches = 0;
    std::unique_ptr<Lookup> lookup;
};

} // namespace jet::sql
