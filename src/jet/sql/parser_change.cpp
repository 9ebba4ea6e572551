// jet/sql/parser_change.cpp — INSERT, UPDATE, DELETE; see parser.h.
#include "jet/sql/parser.h"

namespace jet::sql {

InsertStatement Parser::parseInsert() {
    InsertStatement insert;
    expectWord("INTO");
    insert.at = peek().at;
    insert.table = expectName("Tablo adı");
    const bool fieldList = atSymbol("(") && !atWord("SELECT", 1);
    if (fieldList && acceptSymbol("(")) {
        do {
            insert.fieldsAt.push_back(peek().at);
            std::string name = expectAnyWord("Alan adı");
            if (acceptSymbol(".") || acceptSymbol("!")) name = expectAnyWord("Alan adı");
            insert.fields.push_back(std::move(name));
        } while (acceptSymbol(","));
        expectSymbol(")");
    }
    if (atWord("SELECT") || atSymbol("(")) {
        insert.query = parseQuery();
        return insert;
    }
    expectWord("VALUES");
    do {
        std::vector<ExprPtr> row;
        expectSymbol("(");
        do
            row.push_back(parseExpression());
        while (acceptSymbol(","));
        expectSymbol(")");
        insert.rows.push_back(std::move(row));
    } while (acceptSymbol(","));
    return insert;
}

Assignment Parser::parseAssignment() {
    Assignment assignment;
    assignment.at = peek().at;
    assignment.field = expectAnyWord("Alan adı");
    if (acceptSymbol(".") || acceptSymbol("!")) {
        assignment.qualifier = std::move(assignment.field);
        assignment.field = expectAnyWord("Alan adı");
    }
    expectSymbol("=");
    assignment.value = parseExpression();
    return assignment;
}

UpdateStatement Parser::parseUpdate() {
    UpdateStatement update;
    acceptWord("DISTINCTROW");
    update.from = parseSources();
    expectWord("SET");
    do
        update.set.push_back(parseAssignment());
    while (acceptSymbol(","));
    if (acceptWord("WHERE")) update.where = parseExpression();
    return update;
}

DeleteStatement Parser::parseDelete() {
    DeleteStatement statement;
    acceptWord("DISTINCTROW");
    statement.at = peek().at;
    if (!atWord("FROM") && !acceptSymbol("*")) {
        statement.target = expectName("Tablo adı veya *");
        if (acceptSymbol(".") || acceptSymbol("!")) expectSymbol("*");
    }
    expectWord("FROM");
    statement.from = parseSources();
    if (acceptWord("WHERE")) statement.where = parseExpression();
    return statement;
}

} // namespace jet::sql
