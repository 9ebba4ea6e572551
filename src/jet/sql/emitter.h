// jet/sql/emitter.h — turns a parsed Jet statement into SQLite's SQL over the virtual tables, resolving every
// name and inferring the type of every expression. Emitted names (v1, t2, c3) are ours: no text of the user
// reaches SQLite but as a quoted literal.
#pragma once

#include "jet/sql/ast.h"
#include "jet/sql/table_registry.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet::sql {

// A column that a query gives.
struct OutColumn {
    std::string name, table;  // `table`: of the field, to tell equal names apart
    std::optional<Type> type; // empty: not known before it runs
    uint16_t size = 0;        // of a text field
    int parameter = 0;        // the column is just this parameter (from 1); 0 = it is not
    bool plain = false;       // a field as it stands: has the field's affinity
    std::string collation;    // of a text column
};

struct EmittedQuery {
    std::string sql;
    std::vector<OutColumn> columns; // SQLite may give more: hidden ones for ties
    std::optional<double> top;      // rows or percent to keep, for the session to apply
    bool topPercent = false;
    std::vector<size_t> ties; // positions of the values that make a row tie with the last one kept
};

// Rows to change: one rowid column and, for an update, the values of some fields.
struct ChangeTarget {
    RegisteredTable* table = nullptr;
    size_t rowColumn = 0;
    std::vector<std::pair<size_t, size_t>> fields; // field, column of its new value
};

struct EmittedChange {
    EmittedQuery query;
    std::vector<ChangeTarget> targets;
};

class Emitter {
  public:
    Emitter(TableRegistry& tables, std::string_view sql, const std::vector<ParameterSpec>& parameters,
            SortOrder fileOrder);

    EmittedQuery query(const Query& query);
    EmittedChange update(const UpdateStatement& update);
    EmittedChange remove(const DeleteStatement& statement);
    EmittedChange insert(const InsertStatement& insert); // targets[0].rowColumn has no meaning

    const std::vector<RegisteredTable*>& usedTables() const { return used_; }

  private:
    struct BoundSource {
        std::string name, id; // as the statement calls it; as SQLite does
        std::vector<OutColumn> columns;
        RegisteredTable* table = nullptr; // empty: a sub-query
    };
    struct Scope {
        Scope* parent = nullptr;
        std::vector<BoundSource> sources = {};
        const Select* select = nullptr; // whose aliases may be used
        bool aggregates = false;        // allowed here
        int aliasDepth = 0;
    };
    // An expression in SQLite's words.
    struct Typed {
        std::string sql;
        std::optional<Type> type = {};
        bool raw = false;     // SQLite's 1/0 instead of Jet's -1/0
        bool plain = false;   // a field: brings its affinity
        bool literal = false; // `text` is the value
        bool null = false;    // the word NULL
        int parameter = 0;
        std::string collation = {}; // that a comparison with it finds by itself
        std::string text = {}, name = {}, table = {};
        uint16_t size = 0;
    };
    enum class Kind { Unknown, Text, Number, Date, Other };
    struct OrderKey {
        std::string sql;
        size_t column; // output column it is, or kHidden
        bool descending;
    };
    static constexpr size_t kHidden = static_cast<size_t>(-1);

    // expressions (emitter_expression.cpp)
    Typed expression(const Expr& expr, Scope& scope);
    Typed number(const Expr& expr);
    Typed name(const Expr& expr, Scope& scope);
    std::optional<Typed> column(const Expr& expr, const Scope& scope);
    std::optional<Typed> constant(std::string_view word);
    std::optional<Typed> aliased(const Expr& expr, Scope& scope);
    // For what stands once more than the statement has it: names of names of sums would double without end.
    void countRepeated(const std::string& sql, size_t at);
    Typed parameter(int index);
    Typed negated(const Expr& expr, Scope& scope);
    Typed arithmetic(const Expr& expr, Scope& scope);
    Typed concatenation(const Expr& expr, Scope& scope);
    Typed addition(const Expr& expr, Typed a, Typed b);
    Typed chain(const Expr& expr, Scope& scope, const char* word);
    Typed logic(const Expr& expr, Scope& scope);
    static std::string value(const Typed& typed);     // with Jet's -1/0
    static std::string condition(const Typed& typed); // with SQLite's truth
    static std::string asText(const Typed& typed);    // dates written out
    static std::string asNumber(const Typed& typed);  // texts converted, an error when they are none
    static Typed rawBoolean(std::string sql);
    static Typed exactMoney(Typed typed);

    // comparisons (emitter_compare.cpp)
    Typed compare(const std::string& op, Typed a, Typed b, size_t at);
    void adapt(Typed& a, Typed& b, size_t at);
    bool adaptLiteral(Typed& text, Kind other, size_t at);
    Typed between(const Expr& expr, Scope& scope);
    Typed inList(const Expr& expr, Scope& scope);
    Typed inQuery(const Expr& expr, Scope& scope);
    Typed like(const Expr& expr, Scope& scope);
    static Kind kindOf(const Typed& typed);
    std::string collated(const Typed& typed) const; // with a collation when it has none of its own

    // calls (emitter_call.cpp)
    Typed call(const Expr& expr, Scope& scope);
    std::optional<Typed> aggregate(const Expr& expr, Scope& scope);
    std::optional<Typed> branching(const Expr& expr, Scope& scope); // IIf, Choose, Switch, Nz, IsNull
    Typed branches(const std::string& head, const std::vector<std::pair<std::string, const Expr*>>& cases,
                   const Expr* otherwise, Scope& scope);
    void requireArguments(const Expr& expr, size_t least, size_t most) const;
    static std::optional<Type> unify(std::optional<Type> a, std::optional<Type> b);

    // queries (emitter_query.cpp)
    EmittedQuery emitQuery(const Query& query, Scope* parent, bool outermost);
    std::string emitSelect(const Select& select, const std::vector<OrderItem>& orderBy, Scope* parent,
                           bool outermost, EmittedQuery& result);
    std::string emitUnion(const Query& query, Scope* parent, bool outermost, EmittedQuery& result);
    std::vector<std::string> emitItems(const Select& select, Scope& scope, std::vector<OutColumn>& columns);
    void addOutput(const Typed& typed, const std::string& alias, std::vector<std::string>& items,
                   std::vector<OutColumn>& columns);
    std::vector<OrderKey> orderKeys(const std::vector<OrderItem>& orderBy, Scope& scope,
                                    const std::vector<std::string>& items,
                                    const std::vector<OutColumn>& columns);
    std::string ranked(const Select& select, const std::string& inner, const std::vector<OrderKey>& keys,
                       const std::vector<OutColumn>& columns) const;
    void nameColumns(std::vector<OutColumn>& columns) const;
    std::string bindSources(const std::vector<SourcePtr>& from, Scope& scope);
    std::string bindSource(const Source& source, Scope& scope);
    std::string bindTable(const Source& source, Scope& scope);
    RegisteredTable& useTable(const std::string& name, size_t at);
    void addSource(BoundSource source, size_t at, Scope& scope);
    static Typed fieldOf(const BoundSource& source, size_t column);
    std::string whereClause(const ExprPtr& where, Scope& scope);
    BoundSource* changedTable(const std::string& name, size_t at, Scope& scope);

    [[noreturn]] void fail(size_t at, const std::string& reason, Err number = Err::Syntax) const;

    TableRegistry& tables_;
    std::string_view sql_;
    const std::vector<ParameterSpec>& parameters_;
    std::string collation_; // of the file
    std::vector<RegisteredTable*> used_;
    int lastSource_ = 0;
    size_t repeated_ = 0; // bytes
};

std::string quotedText(std::string_view text); // as an SQLite literal
std::string realLiteral(double value);

} // namespace jet::sql
