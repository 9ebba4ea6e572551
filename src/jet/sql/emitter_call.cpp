// jet/sql/emitter_call.cpp — function calls: those of the list, aggregates, and IIf and its kin; see
// emitter.h.
#include "jet/sql/emitter.h"

#include "jet/sql/function_list.h"
#include "jet/sql/lexer.h"

#include <algorithm>

namespace jet::sql {
namespace {

enum class Total { Argument, Sum, Average, Count, Real };

struct AggregateInfo {
    std::string_view name;
    const char* sqlName;
    Total gives;
    bool ordered; // compares its values
};

constexpr AggregateInfo kAggregates[] = {
    {"COUNT", "count", Total::Count, false},      {"SUM", "sum", Total::Sum, false},
    {"AVG", "avg", Total::Average, false},        {"MIN", "min", Total::Argument, true},
    {"MAX", "max", Total::Argument, true},        {"FIRST", "jet_first", Total::Argument, false},
    {"LAST", "jet_last", Total::Argument, false}, {"STDEV", "jet_stdev", Total::Real, false},
    {"STDEVP", "jet_stdevp", Total::Real, false}, {"VAR", "jet_var", Total::Real, false},
    {"VARP", "jet_varp", Total::Real, false},
};

constexpr size_t kMostArguments = 90; // SQLite takes 127

Type typeOf(Gives gives) {
    switch (gives) {
    case Gives::Text: return Type::Text;
    case Gives::Long: return Type::Long;
    case Gives::Integer: return Type::Integer;
    case Gives::Byte: return Type::Byte;
    case Gives::Single: return Type::Single;
    case Gives::Currency: return Type::Currency;
    case Gives::Date: return Type::Date;
    case Gives::Boolean: return Type::Boolean;
    default: return Type::Double;
    }
}

int rankOf(Type type) {
    switch (type) {
    case Type::Boolean: return 0;
    case Type::Byte: return 1;
    case Type::Integer: return 2;
    case Type::Long: return 3;
    case Type::Single: return 4;
    case Type::Double: return 6;
    case Type::Currency: return 5;
    case Type::Numeric: return 7;
    case Type::Date: return 8;
    case Type::Text: return 9;
    case Type::Memo: return 10;
    default: return 11;
    }
}

} // namespace

// The type that can hold both.
std::optional<Type> Emitter::unify(std::optional<Type> a, std::optional<Type> b) {
    if (!a || !b) return a ? a : b;
    if (a == b) return a;
    const bool single = a == Type::Single || b == Type::Single;
    const Type wider = rankOf(*a) > rankOf(*b) ? *a : *b;
    return single && rankOf(wider) == 4 && (a == Type::Long || b == Type::Long) ? Type::Double : wider;
}

void Emitter::requireArguments(const Expr& expr, size_t least, size_t most) const {
    if (expr.args.size() < least || expr.args.size() > most || expr.star)
        fail(expr.at, expr.text + " işlevine verilen değer sayısı yanlış");
}

Emitter::Typed Emitter::call(const Expr& expr, Scope& scope) {
    if (auto found = aggregate(expr, scope)) return std::move(*found);
    if (auto found = branching(expr, scope)) return std::move(*found);
    const FunctionInfo* info = findFunction(expr.text);
    if (!info) fail(expr.at, "“" + expr.text + "” adında bir işlev yok", Err::NoSuchFunction);
    requireArguments(expr, static_cast<size_t>(info->least), static_cast<size_t>(info->most));
    std::string sql = std::string(info->sqlName) + "(";
    std::optional<Type> first;
    const size_t passed = info->tellDate ? std::min<size_t>(expr.args.size(), 2) : expr.args.size();
    for (size_t i = 0; i < passed; ++i) {
        const Typed argument = expression(*expr.args[i], scope);
        if (i == 0) first = argument.type;
        const bool text = (info->textArguments >> i & 1) != 0;
        sql += (i ? "," : "") + (text ? asText(argument) : value(argument));
    }
    if (info->tellDate) {
        if (expr.args.size() == 1 && info->most > 1) sql += ",NULL";
        sql += first == Type::Date ? ",1" : ",0";
    }
    Typed typed{.sql = sql + ")", .type = typeOf(info->gives)};
    if (info->gives == Gives::Argument) {
        const Kind kind = first ? kindOf(Typed{.sql = {}, .type = first}) : Kind::Unknown;
        typed.type = kind == Kind::Number || kind == Kind::Date ? first : Type::Double;
        if (typed.type == Type::Boolean) typed.type = Type::Integer;
    }
    return typed;
}

std::optional<Emitter::Typed> Emitter::aggregate(const Expr& expr, Scope& scope) {
    const auto* info =
        std::find_if(std::begin(kAggregates), std::end(kAggregates),
                     [&](const AggregateInfo& known) { return sameKeyword(expr.text, known.name); });
    if (info == std::end(kAggregates)) return {};
    if (!scope.aggregates) fail(expr.at, expr.text + " toplam işlevi burada kullanılamaz");
    if (expr.star) {
        if (info->gives != Total::Count) fail(expr.at, expr.text + "(*) olmaz");
        return Typed{.sql = "count(*)", .type = Type::Long};
    }
    requireArguments(expr, 1, 1);
    scope.aggregates = false; // not inside one another
    const Typed argument = expression(*expr.args[0], scope);
    scope.aggregates = true;
    const bool numeric =
        info->gives == Total::Sum || info->gives == Total::Average || info->gives == Total::Real;
    const std::string inner = info->ordered ? collated(argument)
                              : numeric     ? asNumber(argument)
                                            : value(argument);
    Typed typed{.sql = std::string(info->sqlName) + "(" + inner + ")"};
    const bool narrow = argument.type && rankOf(*argument.type) <= rankOf(Type::Integer);
    switch (info->gives) {
    case Total::Count: typed.type = Type::Long; break;
    case Total::Argument: typed.type = argument.type; break;
    case Total::Real: typed.type = Type::Double; break;
    case Total::Sum: typed.type = narrow ? Type::Long : Type::Double; break;
    case Total::Average: typed.type = Type::Double; break;
    }
    if (numeric && info->gives != Total::Real && argument.type == Type::Currency) typed.type = Type::Currency;
    typed.size = argument.size;
    return numeric ? exactMoney(std::move(typed)) : typed;
}

// CASE … END over the branches; a date meeting texts is written out.
Emitter::Typed Emitter::branches(const std::string& head,
                                 const std::vector<std::pair<std::string, const Expr*>>& cases,
                                 const Expr* otherwise, Scope& scope) {
    std::vector<Typed> results;
    std::optional<Type> type;
    for (const auto& [when, then] : cases) {
        results.push_back(expression(*then, scope));
        type = unify(type, results.back().type);
    }
    if (otherwise) {
        results.push_back(expression(*otherwise, scope));
        type = unify(type, results.back().type);
    }
    const bool texts = type == Type::Text || type == Type::Memo;
    std::string sql = "(CASE" + head;
    for (size_t i = 0; i < results.size(); ++i) {
        sql += i < cases.size() ? " WHEN " + cases[i].first + " THEN " : " ELSE ";
        sql += texts ? asText(results[i]) : value(results[i]);
    }
    Typed typed{.sql = sql + " END)", .type = type};
    for (const Typed& result : results)
        typed.size = std::max(typed.size, result.size);
    return typed;
}

std::optional<Emitter::Typed> Emitter::branching(const Expr& expr, Scope& scope) {
    const auto is = [&](std::string_view name) { return sameKeyword(expr.text, name); };
    std::vector<std::pair<std::string, const Expr*>> cases;
    if (is("IIF")) {
        requireArguments(expr, 3, 3);
        cases.emplace_back(condition(expression(*expr.args[0], scope)), expr.args[1].get());
        return branches({}, cases, expr.args[2].get(), scope);
    }
    if (is("ISNULL")) {
        requireArguments(expr, 1, 1);
        return rawBoolean("(" + value(expression(*expr.args[0], scope)) + " IS NULL)");
    }
    if (is("NZ")) {
        requireArguments(expr, 1, 2);
        const Typed subject = expression(*expr.args[0], scope);
        if (expr.args.size() == 2) {
            cases.emplace_back("(" + value(subject) + " IS NOT NULL)", expr.args[0].get());
            return branches({}, cases, expr.args[1].get(), scope);
        }
        const bool number = kindOf(subject) == Kind::Number || kindOf(subject) == Kind::Date;
        Typed typed{.sql = "coalesce(" + value(subject) + (number ? ",0)" : ",'')"), .type = subject.type};
        if (!typed.type) typed.type = Type::Text;
        return typed;
    }
    if (is("CHOOSE")) {
        requireArguments(expr, 2, kMostArguments);
        for (size_t i = 1; i < expr.args.size(); ++i)
            cases.emplace_back(std::to_string(i), expr.args[i].get());
        return branches(" jet_int(" + value(expression(*expr.args[0], scope)) + ")", cases, nullptr, scope);
    }
    if (is("SWITCH")) {
        requireArguments(expr, 2, kMostArguments);
        if (expr.args.size() % 2 != 0) fail(expr.at, "Switch işlevine koşul ve değerler çift çift verilmeli");
        for (size_t i = 0; i < expr.args.size(); i += 2)
            cases.emplace_back(condition(expression(*expr.args[i], scope)), expr.args[i + 1].get());
        return branches({}, cases, nullptr, scope);
    }
    return {};
}

} // namespace jet::sql
