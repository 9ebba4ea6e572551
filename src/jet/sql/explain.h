// jet/sql/explain.h — SQLite's query plan in words: which table, by which index.
#pragma once

#include "jet/sql/statement.h"

namespace jet::sql {

// One line a step, inner steps indented, each ended by a line feed. REQUIRES: a read or write scope.
std::string explainStatement(sqlite3* db, FunctionContext& context, const CompiledStatement& statement);

} // namespace jet::sql
