// jet/sql/statement.h — one compiled statement: parsed, resolved, prepared in SQLite; may run many times.
#pragma once

#include "jet/sql/ast.h"
#include "jet/sql/emitter.h"

#include <memory>
#include <sqlite3.h>

namespace jet::sql {

struct StatementCloser {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using PreparedStatement = std::unique_ptr<sqlite3_stmt, StatementCloser>;

struct CompiledStatement {
    enum class Kind { Query, SelectInto, Insert, Update, Delete, Definition };

    std::string text;
    Statement parsed; // its body is used up unless the kind is Definition
    Kind kind = Kind::Query;
    std::string into; // SELECT … INTO
    EmittedQuery query;
    std::vector<ChangeTarget> targets;
    std::vector<RegisteredTable*> tables; // it was compiled against
    PreparedStatement prepared;
};

// Resolves and prepares what the parser understood. Err as in session.h. REQUIRES: a read or write scope.
std::unique_ptr<CompiledStatement> compile(sqlite3* db, TableRegistry& tables, std::string_view text,
                                           Statement parsed);
PreparedStatement prepare(sqlite3* db, FunctionContext& context, const std::string& sql);

// Throws what a function or the walk of a table left in the context, else an error for SQLite's own code.
[[noreturn]] void throwSqliteError(sqlite3* db, FunctionContext& context, int result);

} // namespace jet::sql
