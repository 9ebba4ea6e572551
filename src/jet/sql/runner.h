// jet/sql/runner.h — runs a compiled statement: binds parameters, reads rows into values, applies changes to
// tables.
#pragma once

#include "jet/sql/function_support.h"
#include "jet/sql/statement.h"

#include <span>

namespace jet::sql {

// One run; ends it (and with it every open walk over tables) when destroyed. REQUIRES: a read or write scope
// that outlives it; `parameters` outlive it, too.
class Runner {
  public:
    // Err::TooFewParameters.
    Runner(sqlite3* db, FunctionContext& context, CompiledStatement& statement,
           std::span<const Value> parameters);
    ~Runner();
    Runner(const Runner&) = delete;
    Runner& operator=(const Runner&) = delete;

    bool next(); // the next row
    Value value(size_t column) const;
    uint64_t rowId(size_t column) const; // 0 where an outer join found none
    // All rows that TOP leaves, row after row.
    std::vector<Value> allRows();

  private:
    void bind(int index, const Value& value);
    std::vector<Value> tieValues() const;
    bool ties(const std::vector<Value>& a, const std::vector<Value>& b) const;

    sqlite3* db_;
    FunctionContext& context_;
    CompiledStatement& statement_;
    std::span<const Value> parameters_;
    std::vector<Value> converted_; // parameters turned to their declared types
};

// Inserts, updates or deletes what the statement tells. REQUIRES: a write scope.
size_t applyChange(Runner& runner, CompiledStatement& statement);
// SELECT … INTO: creates the table and fills it.
size_t selectInto(Database& database, Runner& runner, CompiledStatement& statement);
// CREATE, ALTER, DROP.
void runDefinition(Database& database, const Statement& statement);

} // namespace jet::sql
