// jet/sql/parser_query.cpp — SELECT, FROM, UNION, ORDER BY; see parser.h.
#include "jet/sql/parser.h"

#include <algorithm>
#include <charconv>

namespace jet::sql {
namespace {

constexpr int kMostJoins = 60; // SQLite joins at most 64 tables

} // namespace

QueryPtr Parser::parseQuery() {
    const Nesting nesting(*this);
    auto query = std::make_unique<Query>();
    query->at = peek().at;
    parseUnionPart(*query);
    while (acceptWord("UNION")) {
        query->unionAll.push_back(acceptWord("ALL"));
        parseUnionPart(*query);
    }
    if (query->parts.size() > 400) failAt(query->at, "Çok fazla UNION");
    parseOrderBy(*query);
    return query;
}

// A SELECT, or a query in parentheses; the latter becomes SELECT * FROM (…) when it is more than a plain
// SELECT.
void Parser::parseUnionPart(Query& query) {
    if (!atSymbol("(")) {
        query.parts.push_back(parseSelect());
        return;
    }
    const size_t at = peek().at;
    expectSymbol("(");
    QueryPtr inner = parseQuery();
    expectSymbol(")");
    if (inner->parts.size() == 1 && inner->orderBy.empty()) {
        query.parts.push_back(std::move(inner->parts.front()));
        return;
    }
    Select wrapped;
    wrapped.at = at;
    wrapped.items.emplace_back();
    auto source = std::make_unique<Source>();
    source->at = at;
    source->query = std::move(inner);
    wrapped.from.push_back(std::move(source));
    query.parts.push_back(std::move(wrapped));
}

void Parser::parseOrderBy(Query& query) {
    if (!acceptWord("ORDER")) return;
    expectWord("BY");
    do {
        OrderItem item;
        item.value = parseExpression();
        if (acceptWord("DESC"))
            item.descending = true;
        else
            acceptWord("ASC");
        query.orderBy.push_back(std::move(item));
    } while (acceptSymbol(","));
}

Select Parser::parseSelect() {
    Select select;
    select.at = peek().at;
    expectWord("SELECT");
    if (acceptWord("DISTINCT") || acceptWord("DISTINCTROW"))
        select.distinct = sameKeyword(tokens_[position_ - 1].text, "DISTINCT");
    else if (atWord("ALL") && !atSymbol(",", 1) && !atSymbol(".", 1) && !atWord("FROM", 1))
        ++position_;
    parseTop(select);
    do
        parseOutput(select);
    while (acceptSymbol(","));
    if (acceptWord("INTO")) select.into = expectName("Yeni tablonun adı");
    if (acceptWord("FROM")) select.from = parseSources();
    if (acceptWord("WHERE")) select.where = parseExpression();
    if (acceptWord("GROUP")) {
        expectWord("BY");
        do
            select.groupBy.push_back(parseExpression());
        while (acceptSymbol(","));
    }
    if (acceptWord("HAVING")) select.having = parseExpression();
    return select;
}

void Parser::parseTop(Select& select) {
    if (!atWord("TOP") || peek(1).kind != TokenKind::Number) return;
    ++position_;
    const std::string& text = peek().text;
    double count = 0;
    std::from_chars(text.data(), text.data() + text.size(), count);
    ++position_;
    select.topPercent = acceptWord("PERCENT");
    if (count < 0 || (select.topPercent ? count > 100 : count > 2147483647.0))
        failAt(tokens_[position_ - 1].at, "TOP için geçersiz sayı");
    select.top = count;
}

void Parser::parseOutput(Select& select) {
    OutputItem item;
    item.at = peek().at;
    if (acceptSymbol("*")) {
        select.items.push_back(std::move(item));
        return;
    }
    const bool name = atName();
    if (name && (atSymbol(".", 1) || atSymbol("!", 1)) && atSymbol("*", 2)) {
        item.starOf = peek().text;
        position_ += 3;
        select.items.push_back(std::move(item));
        return;
    }
    item.value = parseExpression();
    item.alias = parseAlias();
    select.items.push_back(std::move(item));
}

std::string Parser::parseAlias() {
    if (acceptWord("AS")) {
        if (peek().kind == TokenKind::Text) return tokens_[position_++].text;
        return expectAnyWord("Takma ad");
    }
    return atName() ? tokens_[position_++].text : std::string();
}

std::vector<SourcePtr> Parser::parseSources() {
    std::vector<SourcePtr> sources;
    do
        sources.push_back(parseJoin());
    while (acceptSymbol(","));
    if (sources.size() > kMostJoins) fail("Çok fazla tablo");
    return sources;
}

SourcePtr Parser::parseJoin() {
    const Nesting nesting(*this);
    SourcePtr left = parseSource();
    while (true) {
        JoinKind kind = JoinKind::Inner;
        if (atWord("LEFT") || atWord("RIGHT")) {
            kind = atWord("LEFT") ? JoinKind::Left : JoinKind::Right;
            ++position_;
            acceptWord("OUTER");
            expectWord("JOIN");
        } else if (acceptWord("INNER"))
            expectWord("JOIN");
        else if (!acceptWord("JOIN"))
            return left;
        auto join = std::make_unique<Source>();
        join->join = kind;
        join->at = peek().at;
        join->left = std::move(left);
        join->right = parseSource();
        expectWord("ON");
        join->on = parseExpression();
        join->depth = std::max(join->left->depth, join->right->depth) + 1;
        if (join->depth > kMostJoins) failAt(join->at, "Çok fazla tablo");
        left = std::move(join);
    }
}

SourcePtr Parser::parseSource() {
    auto source = std::make_unique<Source>();
    source->at = peek().at;
    if (acceptSymbol("(")) {
        if (!atWord("SELECT")) { // a join in parentheses
            source = parseJoin();
            expectSymbol(")");
            return source;
        }
        source->query = parseQuery();
        expectSymbol(")");
    } else
        source->table = expectName("Tablo adı");
    source->alias = parseAlias();
    return source;
}

} // namespace jet::sql
