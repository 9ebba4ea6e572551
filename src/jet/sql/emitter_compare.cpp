// jet/sql/emitter_compare.cpp — comparisons as Jet makes them: texts by the file's order, a text that meets a
// number or a date converted to one; see emitter.h.
#include "jet/sql/emitter.h"

#include "jet/sql/date_text.h"

namespace jet::sql {

Emitter::Kind Emitter::kindOf(const Typed& typed) {
    if (!typed.type) return Kind::Unknown;
    switch (*typed.type) {
    case Type::Text:
    case Type::Memo: return Kind::Text;
    case Type::Date: return Kind::Date;
    case Type::Binary:
    case Type::Ole:
    case Type::Guid: return Kind::Other;
    default: return Kind::Number;
    }
}

// Text that comes out of a function has lost its order; parameters never had one.
std::string Emitter::collated(const Typed& typed) const {
    const Kind kind = kindOf(typed);
    if (!typed.collation.empty() || typed.null || (kind != Kind::Text && kind != Kind::Unknown))
        return value(typed);
    return "(" + value(typed) + " COLLATE " + collation_ + ")";
}

// A literal text is converted here, so that an index on the other side stays usable and a wrong one is told
// at once.
bool Emitter::adaptLiteral(Typed& text, Kind other, size_t at) {
    if (!text.literal) return false;
    if (other == Kind::Number) {
        const auto number = parseNumber(text.text);
        if (!number)
            fail(at, "Sayı ile “" + text.text + "” karşılaştırılamaz; türler uyuşmuyor",
                 Err::TypeMismatchInQuery);
        text = {.sql = realLiteral(*number), .type = Type::Double};
    } else {
        const auto date = parseDateText(text.text);
        if (!date)
            fail(at, "Tarih ile “" + text.text + "” karşılaştırılamaz; türler uyuşmuyor",
                 Err::TypeMismatchInQuery);
        text = {.sql = realLiteral(date->days), .type = Type::Date};
    }
    return true;
}

// Makes the two sides comparable.
void Emitter::adapt(Typed& a, Typed& b, size_t at) {
    const auto meets = [&](Typed& one, const Typed& other) {
        const Kind kind = kindOf(one), otherKind = kindOf(other);
        if (one.null || (kind != Kind::Text && kind != Kind::Unknown)) return;
        if (otherKind != Kind::Number && otherKind != Kind::Date) return;
        if (adaptLiteral(one, otherKind, at)) return;
        const bool number = otherKind == Kind::Number;
        const char* convert = number ? "jet_number_if_any(" : "jet_date_if_any(";
        one = {.sql = convert + value(one) + ")", .type = number ? Type::Double : Type::Date};
    };
    meets(a, b);
    meets(b, a);
    // A parameter may be a number; beside a text that is no field (which would convert it) it must become
    // one.
    const auto becomesText = [&](Typed& one, const Typed& other) {
        if (kindOf(one) != Kind::Unknown || one.null || kindOf(other) != Kind::Text || other.plain) return;
        one = {.sql = "CAST(" + one.sql + " AS TEXT)", .type = Type::Text};
    };
    becomesText(a, b);
    becomesText(b, a);
}

Emitter::Typed Emitter::compare(const std::string& op, Typed a, Typed b, size_t at) {
    adapt(a, b, at);
    const bool ordered = !a.collation.empty() || !b.collation.empty();
    // Written on the right side of a field it would hide the field from the index.
    const std::string left = ordered ? value(a) : collated(a);
    return rawBoolean("(" + left + " " + op + " " + value(b) + ")");
}

Emitter::Typed Emitter::between(const Expr& expr, Scope& scope) {
    const Typed subject = expression(*expr.args[0], scope);
    countRepeated(subject.sql, expr.at);
    const Typed from = compare(">=", subject, expression(*expr.args[1], scope), expr.at);
    const Typed to = compare("<=", subject, expression(*expr.args[2], scope), expr.at);
    return rawBoolean((expr.negated ? "(NOT (" : "((") + from.sql + " AND " + to.sql + "))");
}

// One IN when every value fits the subject as it is, else a chain of comparisons.
Emitter::Typed Emitter::inList(const Expr& expr, Scope& scope) {
    const Typed subject = expression(*expr.args[0], scope);
    std::string list, chain;
    bool plainList = true;
    for (size_t i = 1; i < expr.args.size(); ++i) {
        Typed a = subject, b = expression(*expr.args[i], scope);
        chain += (i > 1 ? " OR " : "") + compare("=", a, b, expr.at).sql;
        adapt(a, b, expr.at);
        plainList &= a.sql == subject.sql;
        list += (i > 1 ? "," : "") + value(b);
    }
    const std::string left = subject.collation.empty() ? collated(subject) : value(subject);
    if (plainList) return rawBoolean("(" + left + (expr.negated ? " NOT IN (" : " IN (") + list + "))");
    return rawBoolean((expr.negated ? "(NOT (" : "((") + chain + "))");
}

Emitter::Typed Emitter::inQuery(const Expr& expr, Scope& scope) {
    Typed subject = expression(*expr.args[0], scope);
    const EmittedQuery inner = emitQuery(*expr.query, &scope, false);
    if (inner.columns.size() != 1) fail(expr.at, "IN içindeki alt sorgu tek alan vermeli");
    std::string sql = inner.sql;
    Typed given{.sql = "c0", .type = inner.columns.front().type};
    given.plain = inner.columns.front().plain;
    given.collation = inner.columns.front().collation;
    adapt(subject, given, expr.at);
    if (given.sql != "c0") sql = "SELECT " + given.sql + " FROM (" + sql + ")";
    const std::string left = subject.collation.empty() ? collated(subject) : value(subject);
    return rawBoolean("(" + left + (expr.negated ? " NOT IN (" : " IN (") + sql + "))");
}

Emitter::Typed Emitter::like(const Expr& expr, Scope& scope) {
    const std::string text = asText(expression(*expr.args[0], scope));
    const std::string pattern = asText(expression(*expr.args[1], scope));
    return rawBoolean((expr.negated ? "(NOT jet_like(" : "(jet_like(") + text + "," + pattern + "))");
}

} // namespace jet::sql
