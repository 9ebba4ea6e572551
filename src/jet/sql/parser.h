// jet/sql/parser.h — recursive descent over Jet's SQL: text in, Statement out. Looks at no database.
// Every refusal is Err::Syntax with the place; depth of nesting is limited, so no text can exhaust the stack.
#pragma once

#include "jet/sql/ast.h"
#include "jet/sql/lexer.h"

namespace jet::sql {

Statement parseStatement(std::string_view sql);

// The grammar, one function a rule; spread over parser_*.cpp by subject.
class Parser {
  public:
    explicit Parser(std::string_view sql) : sql_(sql), tokens_(tokenize(sql)) {}
    Statement run();

  private:
    // tokens (parser.cpp)
    const Token& peek(size_t ahead = 0) const;
    bool atWord(std::string_view keyword, size_t ahead = 0) const;
    bool atSymbol(std::string_view symbol, size_t ahead = 0) const;
    bool atName() const; // a name, or a word that is not reserved
    bool acceptWord(std::string_view keyword);
    bool acceptSymbol(std::string_view symbol);
    void expectWord(std::string_view keyword);
    void expectSymbol(std::string_view symbol);
    std::string expectName(const char* what);
    std::string expectAnyWord(const char* what); // after a point: reserved words are names too
    [[noreturn]] void fail(const std::string& reason) const;
    [[noreturn]] void failAt(size_t at, const std::string& reason) const;
    int parameter(const std::string& name);
    void parseParameterClause();

    // expressions (parser_expression.cpp)
    ExprPtr parseExpression(int minimum = 0);
    ExprPtr parsePrefix();
    ExprPtr parsePrimary();
    ExprPtr parseParenthesised();
    ExprPtr parseNameOrCall();
    ExprPtr parseCall(std::string name, size_t at);
    ExprPtr parsePredicate(ExprPtr left); // IS, IN, LIKE, BETWEEN; empty when none follows
    ExprPtr parseInfix(ExprPtr left, int minimum, bool& more);
    ExprPtr make(ExprKind kind, size_t at, std::string text = {}) const;
    ExprPtr makeOf(ExprKind kind, size_t at, std::string text, ExprPtr a, ExprPtr b = {},
                   ExprPtr c = {}) const;
    void measure(Expr& expr) const;

    // queries (parser_query.cpp)
    QueryPtr parseQuery();
    Select parseSelect();
    void parseUnionPart(Query& query);
    void parseOrderBy(Query& query);
    void parseTop(Select& select);
    void parseOutput(Select& select);
    std::vector<SourcePtr> parseSources();
    SourcePtr parseJoin();
    SourcePtr parseSource();
    std::string parseAlias();

    // rows (parser_change.cpp)
    InsertStatement parseInsert();
    UpdateStatement parseUpdate();
    DeleteStatement parseDelete();
    Assignment parseAssignment();

    // structure (parser_definition.cpp)
    void parseCreate(Statement& statement);
    CreateTable parseCreateTable();
    CreateIndex parseCreateIndex(bool unique);
    AlterTable parseAlterTable();
    void parseDrop(Statement& statement);
    ColumnSpec parseColumn(std::vector<IndexSpec>& indexes);
    Type parseType(ColumnSpec& column);
    uint16_t parseSize(unsigned limit);
    std::string parseDefault();
    IndexSpec parseConstraint();
    std::vector<std::pair<std::string, bool>> parseFieldList(bool withOrder);

    class Nesting; // counts open levels of recursion
    std::string_view sql_;
    std::vector<Token> tokens_;
    std::vector<ParameterSpec> parameters_;
    size_t position_ = 0;
    int nesting_ = 0;
    friend class Nesting;
};

class Parser::Nesting {
  public:
    explicit Nesting(Parser& parser);
    ~Nesting() { --parser_.nesting_; }

  private:
    Parser& parser_;
};

} // namespace jet::sql
