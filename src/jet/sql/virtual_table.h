// jet/sql/virtual_table.h — SQLite's view of one registered table: columns, plans (which index, which bounds)
// and the cursor that walks it. The parts are spread over virtual_table.cpp, virtual_plan.cpp and
// virtual_cursor.cpp.
#pragma once

#include "jet/sql/function_support.h"
#include "jet/sql/table_registry.h"

#include <optional>

namespace jet::sql {

struct VirtualTable : sqlite3_vtab {
    RegisteredTable* source = nullptr;
    FunctionContext* context = nullptr;
    std::vector<std::string> collations; // per field, empty for what is no text
};

// How a walk was decided, packed into SQLite's idxNum.
struct Plan {
    static constexpr int kScan = 0;
    int index = kScan;  // 1 + position in def.indexes
    int equal = 0;      // leading fields fixed by "=" or IS NULL
    unsigned nulls = 0; // bit n: field n is fixed by IS NULL and takes no argument
    bool lower = false, upper = false, lowerInclusive = false, upperInclusive = false;
    bool backwards = false;
    bool lookUp = false; // field `index` - 1 is looked up by equality in memory when that pays; else a scan

    int packed() const;
    static Plan unpack(int number);
};

int chooseBestPlan(sqlite3_vtab* table, sqlite3_index_info* info);

// The module's cursor.
struct VirtualCursor : sqlite3_vtab_cursor {
    std::optional<Scan> scan; // kept from one walk to the next of a join
    int planNumber = -1;      // of `scan`
    bool atEnd = true;
    Lookup* lookup = nullptr; // not empty: rows come from `found`
    std::vector<uint32_t> found;
    size_t next = 0; // in `found`, past the current row
    std::string scratch;
};

int filterCursor(sqlite3_vtab_cursor* cursor, int planNumber, const char*, int count,
                 sqlite3_value** arguments);
int advanceCursor(sqlite3_vtab_cursor* cursor);
int readColumn(sqlite3_vtab_cursor* cursor, sqlite3_context* call, int column);

// Runs a body that may throw for SQLite; the exception waits in the context.
template <class Body> int caught(FunctionContext& context, Body body) {
    try {
        body();
        return SQLITE_OK;
    } catch (...) {
        if (!context.pending) context.pending = std::current_exception();
        return SQLITE_ERROR;
    }
}

void registerModule(sqlite3* db, TableRegistry& registry);

} // namespace jet::sql
