// jet/sql/emitter_expression.cpp — names, literals, arithmetic and logic; see emitter.h.
#include "jet/sql/emitter.h"

#include "jet/sql/function_support.h"
#include "jet/sql/lexer.h"

#include <charconv>

namespace jet::sql {

namespace {
constexpr size_t kMostRepeated = 1 << 20; // bytes of one statement
}

std::string quotedText(std::string_view text) {
    std::string quoted = "'";
    for (const char c : text) {
        quoted.push_back(c);
        if (c == '\'') quoted.push_back(c);
    }
    return quoted + "'";
}

std::string realLiteral(double value) {
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    std::string text(buffer, end);
    if (text.find_first_of(".e") == std::string::npos) text += ".0";
    return value < 0 ? "(" + text + ")" : text;
}

Emitter::Emitter(TableRegistry& tables, std::string_view sql, const std::vector<ParameterSpec>& parameters,
                 SortOrder fileOrder)
    : tables_(tables), sql_(sql), parameters_(parameters), collation_(collationName(fileOrder)) {}

void Emitter::fail(size_t at, const std::string& reason, Err number) const {
    throw errorAt(number, sql_, at, reason);
}

Emitter::Typed Emitter::expression(const Expr& expr, Scope& scope) {
    switch (expr.kind) {
    case ExprKind::Null: {
        Typed typed{.sql = "NULL"};
        typed.null = true;
        return typed;
    }
    case ExprKind::Number: return number(expr);
    case ExprKind::Text: {
        Typed typed{.sql = quotedText(expr.text), .type = Type::Text};
        typed.literal = true;
        typed.text = expr.text;
        return typed;
    }
    case ExprKind::DateTime: return {.sql = realLiteral(expr.number), .type = Type::Date};
    case ExprKind::Boolean: return {.sql = expr.number != 0 ? "(-1)" : "0", .type = Type::Boolean};
    case ExprKind::Name: return name(expr, scope);
    case ExprKind::Parameter: return parameter(expr.index);
    case ExprKind::Negate: return negated(expr, scope);
    case ExprKind::Arithmetic: return arithmetic(expr, scope);
    case ExprKind::Compare:
        return compare(expr.text, expression(*expr.args[0], scope), expression(*expr.args[1], scope),
                       expr.at);
    case ExprKind::And: return chain(expr, scope, " AND ");
    case ExprKind::Or: return chain(expr, scope, " OR ");
    case ExprKind::Xor:
    case ExprKind::Eqv:
    case ExprKind::Imp:
    case ExprKind::Not: return logic(expr, scope);
    case ExprKind::Like: return like(expr, scope);
    case ExprKind::Between: return between(expr, scope);
    case ExprKind::InList: return inList(expr, scope);
    case ExprKind::InQuery: return inQuery(expr, scope);
    case ExprKind::IsNull:
        return rawBoolean("(" + value(expression(*expr.args[0], scope)) +
                          (expr.negated ? " IS NOT NULL)" : " IS NULL)"));
    case ExprKind::Exists: return rawBoolean("EXISTS (" + emitQuery(*expr.query, &scope, false).sql + ")");
    case ExprKind::Scalar: {
        const EmittedQuery inner = emitQuery(*expr.query, &scope, false);
        if (inner.columns.size() != 1) fail(expr.at, "Alt sorgu tek alan vermeli");
        return {.sql = "(" + inner.sql + ")", .type = inner.columns.front().type};
    }
    case ExprKind::Call: return call(expr, scope);
    }
    fail(expr.at, "Anlaşılamayan ifade");
}

Emitter::Typed Emitter::rawBoolean(std::string sql) {
    Typed typed{.sql = std::move(sql), .type = Type::Boolean};
    typed.raw = true;
    return typed;
}

Emitter::Typed Emitter::number(const Expr& expr) {
    int64_t whole = 0;
    const char* end = expr.text.data() + expr.text.size();
    const auto result = std::from_chars(expr.text.data(), end, whole);
    if (result.ec == std::errc() && result.ptr == end && whole <= 2147483647) {
        Typed typed{.sql = std::to_string(whole), .type = whole <= 32767 ? Type::Integer : Type::Long};
        if (whole < 0) typed.sql = "(" + typed.sql + ")";
        return typed;
    }
    double value = 0;
    if (std::from_chars(expr.text.data(), end, value).ec != std::errc()) fail(expr.at, "Sayı çok büyük");
    return {.sql = realLiteral(value), .type = Type::Double};
}

// A field of this query or of one around it; else TRUE and the like; else a declared parameter; else an
// alias.
Emitter::Typed Emitter::name(const Expr& expr, Scope& scope) {
    for (const Scope* level = &scope; level; level = level->parent)
        if (auto found = column(expr, *level)) return std::move(*found);
    if (expr.qualifier.empty()) {
        if (auto found = aliased(expr, scope)) return std::move(*found);
        for (size_t i = 0; i < parameters_.size(); ++i)
            if (!parameters_[i].name.empty() && sameName(parameters_[i].name, expr.text))
                return parameter(static_cast<int>(i) + 1);
        if (auto found = constant(expr.text)) return std::move(*found);
    }
    const std::string full = expr.qualifier.empty() ? expr.text : expr.qualifier + "." + expr.text;
    fail(expr.at, "“" + full + "” adında bir alan ya da verilmiş parametre yok", Err::TooFewParameters);
}

std::optional<Emitter::Typed> Emitter::column(const Expr& expr, const Scope& scope) {
    std::optional<Typed> found;
    const std::string folded = foldName(expr.text);
    for (const BoundSource& source : scope.sources) {
        if (!expr.qualifier.empty() && !sameName(source.name, expr.qualifier)) continue;
        size_t position = kHidden;
        if (source.table) {
            const auto known = source.table->fieldByName.find(folded);
            if (known != source.table->fieldByName.end()) position = known->second;
        } else
            for (size_t i = 0; i < source.columns.size() && position == kHidden; ++i)
                if (foldName(source.columns[i].name) == folded) position = i;
        if (position == kHidden) continue;
        if (found)
            fail(expr.at, "“" + expr.text + "” alanı birden çok tabloda var; tablo adıyla yazın",
                 Err::AmbiguousName);
        found = fieldOf(source, position);
    }
    return found;
}

Emitter::Typed Emitter::fieldOf(const BoundSource& source, size_t position) {
    const OutColumn& column = source.columns[position];
    Typed typed{.sql = source.id + ".c" + std::to_string(position), .type = column.type};
    typed.plain = column.plain;
    typed.collation = column.collation;
    typed.name = column.name;
    typed.table = source.name;
    typed.size = column.size;
    return typed;
}

std::optional<Emitter::Typed> Emitter::constant(std::string_view word) {
    for (const std::string_view yes : {"TRUE", "YES", "ON"})
        if (sameKeyword(word, yes)) return Typed{.sql = "(-1)", .type = Type::Boolean};
    for (const std::string_view no : {"FALSE", "NO", "OFF"})
        if (sameKeyword(word, no)) return Typed{.sql = "0", .type = Type::Boolean};
    return {};
}

// An alias of the same select list stands for its expression.
std::optional<Emitter::Typed> Emitter::aliased(const Expr& expr, Scope& scope) {
    if (!scope.select) return {};
    for (const OutputItem& item : scope.select->items) {
        if (!item.value || item.alias.empty() || !sameName(item.alias, expr.text)) continue;
        if (item.value->kind == ExprKind::Name && sameName(item.value->text, expr.text)) continue;
        if (scope.aliasDepth >= 8) fail(expr.at, "Takma ad kendi kendini kullanıyor");
        ++scope.aliasDepth;
        Typed typed = expression(*item.value, scope);
        --scope.aliasDepth;
        countRepeated(typed.sql, expr.at);
        return typed;
    }
    return {};
}

void Emitter::countRepeated(const std::string& sql, size_t at) {
    repeated_ += sql.size();
    if (repeated_ > kMostRepeated) fail(at, "İfade çok uzun ya da çok derin");
}

Emitter::Typed Emitter::parameter(int index) {
    Typed typed{.sql = "?" + std::to_string(index), .type = parameters_[static_cast<size_t>(index - 1)].type};
    typed.parameter = index;
    return typed;
}

std::string Emitter::value(const Typed& typed) { return typed.raw ? "(-" + typed.sql + ")" : typed.sql; }
std::string Emitter::condition(const Typed& typed) { return typed.sql; }

std::string Emitter::asText(const Typed& typed) {
    return typed.type == Type::Date ? "jet_date_text(" + typed.sql + ")" : value(typed);
}

std::string Emitter::asNumber(const Typed& typed) {
    const Kind kind = kindOf(typed);
    return (kind == Kind::Text || (kind == Kind::Unknown && !typed.null)) ? "jet_number(" + typed.sql + ")"
                                                                          : value(typed);
}

// SQLite adds money as doubles: brought back to ten-thousandths, 0.1 + 0.2 is 0.3.
Emitter::Typed Emitter::exactMoney(Typed typed) {
    if (typed.type == Type::Currency) typed.sql = "jet_ccur(" + typed.sql + ")";
    return typed;
}

Emitter::Typed Emitter::negated(const Expr& expr, Scope& scope) {
    const Typed inner = expression(*expr.args[0], scope);
    Typed typed{.sql = "(-" + asNumber(inner) + ")", .type = inner.type};
    if (kindOf(inner) == Kind::Text) typed.type = Type::Double;
    if (inner.type == Type::Boolean || inner.type == Type::Byte) typed.type = Type::Integer;
    return typed;
}

Emitter::Typed Emitter::arithmetic(const Expr& expr, Scope& scope) {
    if (expr.text == "&") return concatenation(expr, scope);
    Typed a = expression(*expr.args[0], scope), b = expression(*expr.args[1], scope);
    if (expr.text == "+") return addition(expr, std::move(a), std::move(b));
    const std::string left = asNumber(a), right = asNumber(b);
    if (expr.text == "/") return {.sql = "jet_divide(" + left + "," + right + ")", .type = Type::Double};
    if (expr.text == "\\") return {.sql = "jet_divide_whole(" + left + "," + right + ")", .type = Type::Long};
    if (expr.text == "MOD") return {.sql = "jet_mod(" + left + "," + right + ")", .type = Type::Long};
    if (expr.text == "^") return {.sql = "jet_power(" + left + "," + right + ")", .type = Type::Double};
    Typed typed{.sql = "(" + left + " " + expr.text + " " + right + ")"};
    const bool aDate = a.type == Type::Date, bDate = b.type == Type::Date;
    if (aDate && bDate)
        typed.type = Type::Double;
    else if ((aDate || bDate) && expr.text == "-")
        typed.type = Type::Date;
    else if (kindOf(a) == Kind::Number && kindOf(b) == Kind::Number)
        typed.type = unify(unify(a.type, b.type), Type::Long); // products of small numbers are not small
    else
        typed.type = Type::Double;
    return exactMoney(std::move(typed));
}

// Two texts are joined, null with anything is null; what may be either is decided when it runs.
Emitter::Typed Emitter::addition(const Expr&, Typed a, Typed b) {
    const Kind ka = kindOf(a), kb = kindOf(b);
    if (ka == Kind::Text && kb == Kind::Text)
        return {.sql = "(" + a.sql + " || " + b.sql + ")", .type = Type::Text};
    const bool open = ka == Kind::Unknown || kb == Kind::Unknown;
    if (open && (ka == Kind::Unknown || ka == Kind::Text) && (kb == Kind::Unknown || kb == Kind::Text))
        return {.sql = "jet_plus(" + a.sql + "," + b.sql + ")",
                .type = ka == Kind::Text || kb == Kind::Text ? std::optional(Type::Text) : std::nullopt};
    Typed typed{.sql = "(" + asNumber(a) + " + " + asNumber(b) + ")"};
    if (ka == Kind::Date || kb == Kind::Date)
        typed.type = Type::Date;
    else if (ka == Kind::Number && kb == Kind::Number)
        typed.type = unify(unify(a.type, b.type), Type::Long);
    else
        typed.type = Type::Double;
    return exactMoney(std::move(typed));
}

// a & b & c in one call.
Emitter::Typed Emitter::concatenation(const Expr& expr, Scope& scope) {
    std::vector<const Expr*> parts;
    const Expr* at = &expr;
    for (; at->kind == ExprKind::Arithmetic && at->text == "&" && parts.size() < 90; at = at->args[0].get())
        parts.push_back(at->args[1].get());
    std::string sql = "jet_concat(" + asText(expression(*at, scope));
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        sql += "," + asText(expression(**part, scope));
    return {.sql = sql + ")", .type = Type::Text};
}

// a AND b AND c without brackets inside: SQLite's parser has little room for them.
Emitter::Typed Emitter::chain(const Expr& expr, Scope& scope, const char* word) {
    std::vector<const Expr*> parts;
    const Expr* at = &expr;
    for (; at->kind == expr.kind; at = at->args[0].get())
        parts.push_back(at->args[1].get());
    std::string sql = "(" + condition(expression(*at, scope));
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        sql += word + condition(expression(**part, scope));
    return rawBoolean(sql + ")");
}

Emitter::Typed Emitter::logic(const Expr& expr, Scope& scope) {
    const std::string a = condition(expression(*expr.args[0], scope));
    if (expr.kind == ExprKind::Not) return rawBoolean("(NOT " + a + ")");
    const std::string b = condition(expression(*expr.args[1], scope));
    if (expr.kind == ExprKind::Imp) return rawBoolean("((NOT " + a + ") OR " + b + ")");
    const char* op = expr.kind == ExprKind::Xor ? " <> " : " = ";
    return rawBoolean("((NOT " + a + ")" + op + "(NOT " + b + "))");
}

} // namespace jet::sql
