// jet/sql/ast.h — what a Jet SQL statement says, as the parser understood it. Pure data; names are not
// resolved yet.
#pragma once

#include "jet/value.h"

#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace jet::sql {

struct Expr;
struct Query;
using ExprPtr = std::unique_ptr<Expr>;
using QueryPtr = std::unique_ptr<Query>;

enum class ExprKind {
    Null,
    Number,     // `text`: digits
    Text,       // `text`
    DateTime,   // `number`: day count
    Boolean,    // `number`: -1 or 0
    Name,       // [qualifier.]text
    Parameter,  // `index`, counted from 1
    Negate,     // -a
    Arithmetic, // `text`: + - * / \ ^ MOD &
    Compare,    // `text`: = <> < > <= >=
    And,
    Or,
    Xor,
    Eqv,
    Imp,
    Not,
    Like,    // a LIKE b
    Between, // a BETWEEN b AND c
    InList,  // a IN (b, c, …)
    InQuery, // a IN (query)
    IsNull,  // a IS NULL
    Exists,  // EXISTS (query)
    Scalar,  // (query)
    Call,    // text(args); `star` for Count(*)
};

struct Expr {
    ExprKind kind = ExprKind::Null;
    std::string text, qualifier;
    double number = 0;
    int index = 0;
    bool negated = false; // NOT IN, NOT LIKE, NOT BETWEEN, IS NOT NULL
    bool star = false;
    std::vector<ExprPtr> args;
    QueryPtr query;
    size_t at = 0; // byte offset in the SQL text
    int depth = 1; // of the tree; the parser bounds it, so walks over it may recurse
};

struct OutputItem {     // one entry of a select list
    ExprPtr value;      // empty: a star
    std::string starOf; // table of "t.*"; empty: all
    std::string alias;
    size_t at = 0;
};

enum class JoinKind { Inner, Left, Right };

struct Source { // table, sub-query or join
    std::string table, alias;
    QueryPtr query;
    std::unique_ptr<Source> left, right;
    JoinKind join = JoinKind::Inner;
    ExprPtr on;
    size_t at = 0;
    int depth = 1;
};
using SourcePtr = std::unique_ptr<Source>;

struct OrderItem {
    ExprPtr value;
    bool descending = false;
};

struct Select {
    bool distinct = false;
    std::optional<double> top; // rows, or percent
    bool topPercent = false;
    std::vector<OutputItem> items;
    std::string into;            // SELECT … INTO
    std::vector<SourcePtr> from; // joined by commas
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
    size_t at = 0;
};

struct Query { // one SELECT, or several joined by UNION
    std::vector<Select> parts;
    std::vector<bool> unionAll; // one fewer than parts
    std::vector<OrderItem> orderBy;
    size_t at = 0;
};

struct Assignment {
    std::string field, qualifier;
    ExprPtr value;
    size_t at = 0;
};

struct InsertStatement {
    std::string table;
    std::vector<std::string> fields; // empty: all, in order
    std::vector<std::vector<ExprPtr>> rows;
    QueryPtr query;
    size_t at = 0;
    std::vector<size_t> fieldsAt;
};

struct UpdateStatement {
    std::vector<SourcePtr> from;
    std::vector<Assignment> set;
    ExprPtr where;
};

struct DeleteStatement {
    std::string target; // DELETE t.* FROM …; empty: the only table
    std::vector<SourcePtr> from;
    ExprPtr where;
    size_t at = 0;
};

// --- structure
struct ColumnSpec {
    std::string name;
    Type type = Type::Text;
    uint16_t size = 0;
    bool autoNumber = false, required = false;
    std::string defaultValue;
    size_t at = 0;
};

struct IndexSpec {
    std::string name;                                 // empty: the engine chooses
    std::vector<std::pair<std::string, bool>> fields; // name, descending
    bool primary = false, unique = false, required = false, ignoreNulls = false;
    size_t at = 0;
};

struct CreateTable {
    std::string table;
    std::vector<ColumnSpec> columns;
    std::vector<IndexSpec> indexes;
};
struct CreateIndex {
    std::string table;
    IndexSpec index;
};
struct AlterTable {
    std::string table;
    std::vector<ColumnSpec> add, alter;
    std::vector<std::string> drop;
    std::vector<IndexSpec> addIndexes;
    std::string dropConstraint;
};
struct DropTable {
    std::string table;
};
struct DropIndex {
    std::string index, table;
};

struct ParameterSpec {
    std::string name;         // empty: "?"
    std::optional<Type> type; // from a PARAMETERS clause
};

struct Statement {
    std::vector<ParameterSpec> parameters;
    std::variant<QueryPtr, InsertStatement, UpdateStatement, DeleteStatement, CreateTable, CreateIndex,
                 AlterTable, DropTable, DropIndex>
        body;
};

} // namespace jet::sql
