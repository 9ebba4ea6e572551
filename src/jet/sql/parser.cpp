// jet/sql/parser.cpp — token handling and the choice of statement; see parser.h.
#include "jet/sql/parser.h"

#include "jet/format/table_def.h"

#include <array>

namespace jet::sql {
namespace {

constexpr int kDeepestNesting = 100; // of parentheses, sub-queries and prefix operators

constexpr std::array<std::string_view, 36> kReserved = {
    "SELECT",  "FROM", "WHERE",    "GROUP",       "ORDER", "HAVING", "UNION",  "INNER",  "LEFT",
    "RIGHT",   "JOIN", "ON",       "AS",          "AND",   "OR",     "NOT",    "IN",     "LIKE",
    "BETWEEN", "IS",   "NULL",     "EXISTS",      "INTO",  "VALUES", "SET",    "XOR",    "EQV",
    "IMP",     "MOD",  "DISTINCT", "DISTINCTROW", "BY",    "INSERT", "UPDATE", "DELETE", "OUTER"};

bool isReserved(std::string_view word) {
    for (const auto keyword : kReserved)
        if (sameKeyword(word, keyword)) return true;
    return false;
}

} // namespace

Statement parseStatement(std::string_view sql) { return Parser(sql).run(); }

Parser::Nesting::Nesting(Parser& parser) : parser_(parser) {
    if (parser_.nesting_ >= kDeepestNesting) parser_.fail("Cümle çok derin iç içe");
    ++parser_.nesting_;
}

Statement Parser::run() {
    Statement statement;
    if (acceptWord("PARAMETERS")) parseParameterClause();
    if (atWord("SELECT") || atSymbol("("))
        statement.body = parseQuery();
    else if (acceptWord("INSERT"))
        statement.body = parseInsert();
    else if (acceptWord("UPDATE"))
        statement.body = parseUpdate();
    else if (acceptWord("DELETE"))
        statement.body = parseDelete();
    else if (acceptWord("CREATE"))
        parseCreate(statement);
    else if (acceptWord("ALTER"))
        statement.body = parseAlterTable();
    else if (acceptWord("DROP"))
        parseDrop(statement);
    else
        fail("SELECT, INSERT, UPDATE, DELETE, CREATE, ALTER veya DROP bekleniyordu");
    while (acceptSymbol(";")) {
    }
    if (peek().kind != TokenKind::End) fail("Cümlenin sonu bekleniyordu");
    statement.parameters = std::move(parameters_);
    return statement;
}

const Token& Parser::peek(size_t ahead) const {
    return tokens_[std::min(position_ + ahead, tokens_.size() - 1)];
}

bool Parser::atWord(std::string_view keyword, size_t ahead) const {
    const Token& token = peek(ahead);
    return token.kind == TokenKind::Word && sameKeyword(token.text, keyword);
}

bool Parser::atSymbol(std::string_view symbol, size_t ahead) const {
    const Token& token = peek(ahead);
    return token.kind == TokenKind::Symbol && token.text == symbol;
}

bool Parser::atName() const {
    return peek().kind == TokenKind::Name || (peek().kind == TokenKind::Word && !isReserved(peek().text));
}

bool Parser::acceptWord(std::string_view keyword) {
    if (!atWord(keyword)) return false;
    ++position_;
    return true;
}

bool Parser::acceptSymbol(std::string_view symbol) {
    if (!atSymbol(symbol)) return false;
    ++position_;
    return true;
}

void Parser::expectWord(std::string_view keyword) {
    if (!acceptWord(keyword)) fail(std::string(keyword) + " bekleniyordu");
}

void Parser::expectSymbol(std::string_view symbol) {
    if (!acceptSymbol(symbol)) fail("“" + std::string(symbol) + "” bekleniyordu");
}

std::string Parser::expectName(const char* what) {
    if (!atName()) fail(std::string(what) + " bekleniyordu");
    return tokens_[position_++].text;
}

std::string Parser::expectAnyWord(const char* what) {
    if (peek().kind != TokenKind::Name && peek().kind != TokenKind::Word)
        fail(std::string(what) + " bekleniyordu");
    return tokens_[position_++].text;
}

void Parser::fail(const std::string& reason) const { failAt(peek().at, reason); }
void Parser::failAt(size_t at, const std::string& reason) const {
    throw errorAt(Err::Syntax, sql_, at, reason);
}

int Parser::parameter(const std::string& name) {
    if (!name.empty())
        for (size_t i = 0; i < parameters_.size(); ++i)
            if (sameName(parameters_[i].name, name)) return static_cast<int>(i) + 1;
    parameters_.push_back({name, {}});
    return static_cast<int>(parameters_.size());
}

// PARAMETERS [Öğrenci no] Text(15), yil Long;
void Parser::parseParameterClause() {
    do {
        ParameterSpec spec;
        spec.name = expectName("Parametre adı");
        ColumnSpec column;
        spec.type = parseType(column);
        parameters_.push_back(std::move(spec));
    } while (acceptSymbol(","));
    expectSymbol(";");
}

} // namespace jet::sql
