// jet/sql/parser_definition.cpp — CREATE, ALTER and DROP, with Jet's type names; see parser.h.
#include "jet/sql/parser.h"

#include <charconv>

namespace jet::sql {
namespace {

struct TypeName {
    std::string_view name;
    Type type;
};

constexpr TypeName kTypes[] = {
    {"TEXT", Type::Text},
    {"CHAR", Type::Text},
    {"VARCHAR", Type::Text},
    {"STRING", Type::Text},
    {"ALPHANUMERIC", Type::Text},
    {"CHARACTER", Type::Text},
    {"NCHAR", Type::Text},
    {"NVARCHAR", Type::Text},
    {"MEMO", Type::Memo},
    {"LONGTEXT", Type::Memo},
    {"LONGCHAR", Type::Memo},
    {"NOTE", Type::Memo},
    {"BYTE", Type::Byte},
    {"TINYINT", Type::Byte},
    {"INTEGER1", Type::Byte},
    {"SHORT", Type::Integer},
    {"SMALLINT", Type::Integer},
    {"INTEGER2", Type::Integer},
    {"INTEGER", Type::Long},
    {"INT", Type::Long},
    {"LONG", Type::Long},
    {"INTEGER4", Type::Long},
    {"COUNTER", Type::Long},
    {"AUTOINCREMENT", Type::Long},
    {"SINGLE", Type::Single},
    {"REAL", Type::Single},
    {"FLOAT4", Type::Single},
    {"IEEESINGLE", Type::Single},
    {"DOUBLE", Type::Double},
    {"FLOAT", Type::Double},
    {"FLOAT8", Type::Double},
    {"IEEEDOUBLE", Type::Double},
    {"NUMBER", Type::Double},
    {"NUMERIC", Type::Double},
    {"CURRENCY", Type::Currency},
    {"MONEY", Type::Currency},
    {"DATETIME", Type::Date},
    {"DATE", Type::Date},
    {"TIME", Type::Date},
    {"TIMESTAMP", Type::Date},
    {"BIT", Type::Boolean},
    {"YESNO", Type::Boolean},
    {"LOGICAL", Type::Boolean},
    {"LOGICAL1", Type::Boolean},
    {"BOOLEAN", Type::Boolean},
    {"OLEOBJECT", Type::Ole},
    {"LONGBINARY", Type::Ole},
    {"GENERAL", Type::Ole},
    {"IMAGE", Type::Ole},
    {"BINARY", Type::Binary},
    {"VARBINARY", Type::Binary},
    {"GUID", Type::Guid},
    {"UNIQUEIDENTIFIER", Type::Guid},
};

constexpr unsigned kWidestText = 255, kWidestBinary = 510;

} // namespace

Type Parser::parseType(ColumnSpec& column) {
    const size_t at = peek().at;
    const std::string name = expectAnyWord("Alan türü");
    if (sameKeyword(name, "DECIMAL") || sameKeyword(name, "DEC"))
        failAt(at, "DECIMAL türü desteklenmiyor; CURRENCY veya DOUBLE kullanın");
    for (const auto& known : kTypes) {
        if (!sameKeyword(name, known.name)) continue;
        column.type = known.type;
        column.autoNumber = sameKeyword(name, "COUNTER") || sameKeyword(name, "AUTOINCREMENT");
        const unsigned widest = known.type == Type::Text     ? kWidestText
                                : known.type == Type::Binary ? kWidestBinary
                                                             : 0;
        column.size = static_cast<uint16_t>(widest);
        if (acceptSymbol("(")) {
            const uint16_t size = parseSize(widest ? widest : 65535);
            if (widest) column.size = size;
            if (acceptSymbol(",")) parseSize(65535); // step of COUNTER(start, step)
            expectSymbol(")");
        }
        return column.type;
    }
    failAt(at, "Bilinmeyen alan türü");
}

uint16_t Parser::parseSize(unsigned limit) {
    unsigned size = 0;
    const Token& token = peek();
    const auto [end, error] = std::from_chars(token.text.data(), token.text.data() + token.text.size(), size);
    if (token.kind != TokenKind::Number || error != std::errc() ||
        end != token.text.data() + token.text.size() || size < 1 || size > limit)
        fail("1 ile " + std::to_string(limit) + " arasında bir uzunluk bekleniyordu");
    ++position_;
    return static_cast<uint16_t>(size);
}

std::string Parser::parseDefault() {
    const size_t from = peek().at;
    parseExpression(); // only its extent is of interest: a default is kept as text
    const size_t to = tokens_[position_ - 1].end;
    return std::string(sql_.substr(from, to - from));
}

ColumnSpec Parser::parseColumn(std::vector<IndexSpec>& indexes) {
    ColumnSpec column;
    column.at = peek().at;
    column.name = expectAnyWord("Alan adı");
    parseType(column);
    while (true) {
        const size_t at = peek().at;
        if (acceptWord("NOT")) {
            expectWord("NULL");
            column.required = true;
            continue;
        }
        if (acceptWord("NULL")) continue;
        if (acceptWord("DEFAULT")) {
            column.defaultValue = parseDefault();
            continue;
        }
        IndexSpec index;
        index.at = at;
        const bool named = acceptWord("CONSTRAINT");
        if (named) index.name = expectName("Kısıtlama adı");
        if (acceptWord("PRIMARY")) {
            expectWord("KEY");
            index.primary = index.unique = true;
        } else if (acceptWord("UNIQUE"))
            index.unique = true;
        else if (atWord("REFERENCES"))
            fail("Tablolar arası ilişki SQL ile kurulamaz");
        else if (named)
            fail("PRIMARY KEY veya UNIQUE bekleniyordu");
        else
            return column;
        index.fields.emplace_back(column.name, false);
        indexes.push_back(std::move(index));
    }
}

std::vector<std::pair<std::string, bool>> Parser::parseFieldList(bool withOrder) {
    std::vector<std::pair<std::string, bool>> fields;
    expectSymbol("(");
    do {
        std::string name = expectAnyWord("Alan adı");
        bool descending = false;
        if (withOrder && !acceptWord("ASC")) descending = acceptWord("DESC");
        fields.emplace_back(std::move(name), descending);
    } while (acceptSymbol(","));
    expectSymbol(")");
    return fields;
}

// [CONSTRAINT name] PRIMARY KEY (…) | UNIQUE (…)
IndexSpec Parser::parseConstraint() {
    IndexSpec index;
    index.at = peek().at;
    if (acceptWord("CONSTRAINT")) index.name = expectName("Kısıtlama adı");
    if (acceptWord("PRIMARY")) {
        expectWord("KEY");
        index.primary = index.unique = true;
    } else if (acceptWord("UNIQUE"))
        index.unique = true;
    else if (atWord("FOREIGN"))
        fail("Tablolar arası ilişki SQL ile kurulamaz");
    else
        fail("PRIMARY KEY veya UNIQUE bekleniyordu");
    index.fields = parseFieldList(false);
    return index;
}

void Parser::parseCreate(Statement& statement) {
    if (acceptWord("TABLE"))
        statement.body = parseCreateTable();
    else if (acceptWord("INDEX"))
        statement.body = parseCreateIndex(false);
    else if (acceptWord("UNIQUE")) {
        expectWord("INDEX");
        statement.body = parseCreateIndex(true);
    } else
        fail("TABLE veya INDEX bekleniyordu");
}

CreateTable Parser::parseCreateTable() {
    CreateTable create;
    create.table = expectName("Tablo adı");
    expectSymbol("(");
    do {
        const bool tableConstraint = atWord("CONSTRAINT") || (atWord("PRIMARY") && atWord("KEY", 1)) ||
                                     (atWord("UNIQUE") && atSymbol("(", 1)) ||
                                     (atWord("FOREIGN") && atWord("KEY", 1));
        if (tableConstraint)
            create.indexes.push_back(parseConstraint());
        else
            create.columns.push_back(parseColumn(create.indexes));
    } while (acceptSymbol(","));
    expectSymbol(")");
    return create;
}

CreateIndex Parser::parseCreateIndex(bool unique) {
    CreateIndex create;
    create.index.at = peek().at;
    create.index.unique = unique;
    create.index.name = expectName("İndeks adı");
    expectWord("ON");
    create.table = expectName("Tablo adı");
    create.index.fields = parseFieldList(true);
    if (!acceptWord("WITH")) return create;
    do {
        if (acceptWord("PRIMARY"))
            create.index.primary = create.index.unique = true;
        else if (acceptWord("DISALLOW")) {
            expectWord("NULL");
            create.index.required = true;
        } else if (acceptWord("IGNORE")) {
            expectWord("NULL");
            create.index.ignoreNulls = true;
        } else
            fail("PRIMARY, DISALLOW NULL veya IGNORE NULL bekleniyordu");
    } while (acceptSymbol(",") || atWord("PRIMARY") || atWord("DISALLOW") || atWord("IGNORE"));
    return create;
}

AlterTable Parser::parseAlterTable() {
    AlterTable alter;
    expectWord("TABLE");
    alter.table = expectName("Tablo adı");
    if (acceptWord("ADD")) {
        if (atWord("CONSTRAINT")) {
            alter.addIndexes.push_back(parseConstraint());
            return alter;
        }
        acceptWord("COLUMN");
        do {
            acceptWord("COLUMN");
            alter.add.push_back(parseColumn(alter.addIndexes));
        } while (acceptSymbol(","));
    } else if (acceptWord("ALTER")) {
        acceptWord("COLUMN");
        std::vector<IndexSpec> none;
        alter.alter.push_back(parseColumn(none));
        if (!none.empty())
            failAt(none.front().at, "ALTER COLUMN anahtar tanımlayamaz; ADD CONSTRAINT kullanın");
    } else if (acceptWord("DROP")) {
        if (acceptWord("CONSTRAINT"))
            alter.dropConstraint = expectName("Kısıtlama adı");
        else {
            acceptWord("COLUMN");
            do
                alter.drop.push_back(expectAnyWord("Alan adı"));
            while (acceptSymbol(","));
        }
    } else
        fail("ADD, ALTER veya DROP bekleniyordu");
    return alter;
}

void Parser::parseDrop(Statement& statement) {
    if (acceptWord("TABLE")) {
        statement.body = DropTable{expectName("Tablo adı")};
    } else if (acceptWord("INDEX")) {
        DropIndex drop;
        drop.index = expectName("İndeks adı");
        expectWord("ON");
        drop.table = expectName("Tablo adı");
        statement.body = std::move(drop);
    } else
        fail("TABLE veya INDEX bekleniyordu");
}

} // namespace jet::sql
