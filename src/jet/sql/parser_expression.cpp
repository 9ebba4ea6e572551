// jet/sql/parser_expression.cpp — expressions by operator precedence; see parser.h.
#include "jet/sql/parser.h"

#include "jet/sql/date_text.h"

#include <algorithm>

namespace jet::sql {
namespace {

constexpr int kDeepestTree = 500; // long chains of AND, OR, + and & count too

// From loosest to tightest.
enum Precedence {
    kImp = 1,
    kEqv,
    kXor,
    kOr,
    kAnd,
    kNot,
    kCompare,
    kConcat,
    kAdd,
    kMod,
    kIntegerDivide,
    kMultiply,
    kNegate,
    kPower
};

struct InfixOperator {
    std::string_view text;
    int precedence;
    ExprKind kind;
};

constexpr InfixOperator kWords[] = {
    {"IMP", kImp, ExprKind::Imp}, {"EQV", kEqv, ExprKind::Eqv}, {"XOR", kXor, ExprKind::Xor},
    {"OR", kOr, ExprKind::Or},    {"AND", kAnd, ExprKind::And}, {"MOD", kMod, ExprKind::Arithmetic},
};

constexpr InfixOperator kSymbols[] = {
    {"=", kCompare, ExprKind::Compare},     {"<>", kCompare, ExprKind::Compare},
    {"<", kCompare, ExprKind::Compare},     {">", kCompare, ExprKind::Compare},
    {"<=", kCompare, ExprKind::Compare},    {">=", kCompare, ExprKind::Compare},
    {"&", kConcat, ExprKind::Arithmetic},   {"+", kAdd, ExprKind::Arithmetic},
    {"-", kAdd, ExprKind::Arithmetic},      {"\\", kIntegerDivide, ExprKind::Arithmetic},
    {"*", kMultiply, ExprKind::Arithmetic}, {"/", kMultiply, ExprKind::Arithmetic},
    {"^", kPower, ExprKind::Arithmetic},
};

const InfixOperator* infixOperator(const Token& token) {
    if (token.kind == TokenKind::Word) {
        for (const auto& known : kWords)
            if (sameKeyword(token.text, known.text)) return &known;
    } else if (token.kind == TokenKind::Symbol) {
        for (const auto& known : kSymbols)
            if (token.text == known.text) return &known;
    }
    return nullptr;
}

} // namespace

ExprPtr Parser::make(ExprKind kind, size_t at, std::string text) const {
    auto expr = std::make_unique<Expr>();
    expr->kind = kind;
    expr->at = at;
    expr->text = std::move(text);
    return expr;
}

ExprPtr Parser::makeOf(ExprKind kind, size_t at, std::string text, ExprPtr a, ExprPtr b, ExprPtr c) const {
    ExprPtr expr = make(kind, at, std::move(text));
    for (ExprPtr* part : {&a, &b, &c})
        if (*part) expr->args.push_back(std::move(*part));
    measure(*expr);
    return expr;
}

void Parser::measure(Expr& expr) const {
    for (const auto& part : expr.args)
        expr.depth = std::max(expr.depth, part->depth + 1);
    if (expr.depth > kDeepestTree) failAt(expr.at, "İfade çok uzun ya da çok derin");
}

ExprPtr Parser::parseExpression(int minimum) {
    const Nesting nesting(*this);
    ExprPtr left = parsePrefix();
    for (bool more = true; more;) {
        more = false;
        left = parseInfix(std::move(left), minimum, more);
    }
    return left;
}

ExprPtr Parser::parseInfix(ExprPtr left, int minimum, bool& more) {
    if (minimum <= kCompare) {
        const size_t before = position_;
        left = parsePredicate(std::move(left));
        if (position_ != before) {
            more = true;
            return left;
        }
    }
    const InfixOperator* found = infixOperator(peek());
    if (!found || found->precedence < minimum) return left;
    const size_t at = peek().at;
    ++position_;
    ExprPtr right = parseExpression(found->precedence + 1);
    more = true;
    return makeOf(found->kind, at, std::string(found->text), std::move(left), std::move(right));
}

ExprPtr Parser::parsePrefix() {
    const size_t at = peek().at;
    if (acceptWord("NOT")) return makeOf(ExprKind::Not, at, {}, parseExpression(kNot));
    if (acceptSymbol("-")) return makeOf(ExprKind::Negate, at, {}, parseExpression(kNegate));
    if (acceptSymbol("+")) return parseExpression(kNegate);
    return parsePrimary();
}

ExprPtr Parser::parsePredicate(ExprPtr left) {
    const size_t at = peek().at;
    if (acceptWord("IS")) {
        const bool negated = acceptWord("NOT");
        expectWord("NULL");
        ExprPtr expr = makeOf(ExprKind::IsNull, at, {}, std::move(left));
        expr->negated = negated;
        return expr;
    }
    const bool negated = atWord("NOT") && (atWord("IN", 1) || atWord("LIKE", 1) || atWord("BETWEEN", 1));
    if (negated) ++position_;
    ExprPtr expr;
    if (acceptWord("LIKE")) {
        ExprPtr pattern = parseExpression(kConcat);
        expr = makeOf(ExprKind::Like, at, {}, std::move(left), std::move(pattern));
    } else if (acceptWord("BETWEEN")) {
        ExprPtr low = parseExpression(kConcat);
        expectWord("AND");
        ExprPtr high = parseExpression(kConcat);
        expr = makeOf(ExprKind::Between, at, {}, std::move(left), std::move(low), std::move(high));
    } else if (acceptWord("IN")) {
        expectSymbol("(");
        if (atWord("SELECT")) {
            expr = makeOf(ExprKind::InQuery, at, {}, std::move(left));
            expr->query = parseQuery();
        } else {
            expr = makeOf(ExprKind::InList, at, {}, std::move(left));
            do
                expr->args.push_back(parseExpression());
            while (acceptSymbol(","));
            measure(*expr);
        }
        expectSymbol(")");
    } else
        return left;
    expr->negated = negated;
    return expr;
}

ExprPtr Parser::parsePrimary() {
    const Token& token = peek();
    const size_t at = token.at;
    switch (token.kind) {
    case TokenKind::Number: ++position_; return make(ExprKind::Number, at, token.text);
    case TokenKind::Text: ++position_; return make(ExprKind::Text, at, token.text);
    case TokenKind::DateText: {
        const auto date = parseDateLiteral(token.text);
        if (!date) fail("Geçersiz tarih");
        ++position_;
        ExprPtr expr = make(ExprKind::DateTime, at);
        expr->number = date->days;
        return expr;
    }
    case TokenKind::Parameter: {
        ++position_;
        ExprPtr expr = make(ExprKind::Parameter, at, token.text);
        expr->index = parameter(token.text);
        return expr;
    }
    case TokenKind::Symbol:
        if (token.text == "(") return parseParenthesised();
        break;
    case TokenKind::Name:
    case TokenKind::Word: return parseNameOrCall();
    case TokenKind::End: fail("Cümle yarım kaldı; bir değer bekleniyordu");
    }
    fail("Bir değer bekleniyordu");
}

ExprPtr Parser::parseParenthesised() {
    const size_t at = peek().at;
    expectSymbol("(");
    ExprPtr inner;
    if (atWord("SELECT")) {
        inner = make(ExprKind::Scalar, at);
        inner->query = parseQuery();
    } else
        inner = parseExpression();
    expectSymbol(")");
    return inner;
}

ExprPtr Parser::parseNameOrCall() {
    const size_t at = peek().at;
    const bool bare = peek().kind == TokenKind::Word;
    if (acceptWord("EXISTS")) {
        expectSymbol("(");
        ExprPtr expr = make(ExprKind::Exists, at);
        expr->query = parseQuery();
        expectSymbol(")");
        return expr;
    }
    if (acceptWord("NULL")) return make(ExprKind::Null, at);
    const bool leftOrRight = atWord("LEFT") || atWord("RIGHT");
    if (bare && atSymbol("(", 1) && (leftOrRight || atName())) {
        std::string name = tokens_[position_].text;
        position_ += 2;
        return parseCall(std::move(name), at);
    }
    if (atWord("ON")) { // the constant; in every other place ON has been taken before
        ++position_;
        return make(ExprKind::Name, at, "ON");
    }
    ExprPtr expr = make(ExprKind::Name, at, expectName("Bir değer"));
    if (acceptSymbol(".") || acceptSymbol("!")) {
        expr->qualifier = std::move(expr->text);
        expr->text = expectAnyWord("Alan adı");
    }
    return expr;
}

ExprPtr Parser::parseCall(std::string name, size_t at) {
    ExprPtr expr = make(ExprKind::Call, at, std::move(name));
    if (acceptSymbol(")")) return expr;
    if (atSymbol("*") && atSymbol(")", 1)) {
        position_ += 2;
        expr->star = true;
        return expr;
    }
    do
        expr->args.push_back(parseExpression());
    while (acceptSymbol(","));
    expectSymbol(")");
    measure(*expr);
    return expr;
}

} // namespace jet::sql
