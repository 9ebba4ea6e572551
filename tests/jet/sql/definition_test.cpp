// CREATE, ALTER and DROP: what stands in the catalog afterwards.
#include "sql_fixture.h"

using namespace sql_test;

namespace {

class Definitions : public SqlTest {
  protected:
    std::string fields(const std::string& table) {
        std::string text;
        for (const jet::FieldDef& field : database_->tableDef(table).fields) {
            text += field.name + " " + std::to_string(static_cast<int>(field.type)) + "/" +
                    std::to_string(field.size);
            text += std::string(field.autoNumber ? " auto" : "") + (field.required ? " required" : "") + "; ";
        }
        return text;
    }
    std::string indexes(const std::string& table) {
        std::string text;
        const jet::TableDef& def = database_->tableDef(table);
        for (const jet::IndexDef& index : def.indexes) {
            text += index.name + "(";
            for (const jet::IndexField& part : index.fields)
                text += def.fields[part.field].name + (part.descending ? "- " : " ");
            text += std::string(")") + (index.primary ? " primary" : "") + (index.unique ? " unique" : "") +
                    (index.required ? " required" : "") + (index.ignoreNulls ? " ignore" : "") + "; ";
        }
        return text;
    }
};

TEST_F(Definitions, EveryTypeName) {
    execute("CREATE TABLE Turler (a TEXT, b CHAR(5), c VARCHAR(12), d MEMO, e LONGTEXT, f BYTE, g SHORT, h "
            "INTEGER, i LONG, "
            "j COUNTER, l SINGLE, m REAL, n DOUBLE, o FLOAT, p CURRENCY, q MONEY, r DATETIME, s DATE, t BIT, "
            "u YESNO, v LOGICAL, "
            "w OLEOBJECT, x LONGBINARY, y BINARY(8), z VARBINARY, [ç ş] GUID NOT NULL)");
    EXPECT_EQ(
        fields("Turler"),
        "a 10/255; b 10/5; c 10/12; d 12/0; e 12/0; f 2/0; g 3/0; h 4/0; i 4/0; j 4/0 auto; l 6/0; m 6/0; "
        "n 7/0; o 7/0; p 5/0; q 5/0; r 8/0; s 8/0; t 1/0; u 1/0; v 1/0; w 11/0; x 11/0; y 9/8; z 9/510; "
        "ç ş 15/0 required; ");
    execute("CREATE TABLE Sayac (no AUTOINCREMENT CONSTRAINT pk PRIMARY KEY, Ad TEXT(5))");
    EXPECT_EQ(execute("INSERT INTO Sayac (Ad) VALUES ('a')") + execute("INSERT INTO Sayac (Ad) SELECT 'b'"),
              2u);
    EXPECT_EQ(rows("SELECT * FROM Sayac"), "1|a; 2|b");
}

TEST_F(Definitions, KeysAndIndexes) {
    execute("CREATE TABLE T (a LONG NOT NULL, b TEXT(5) UNIQUE, c LONG CONSTRAINT cc UNIQUE, CONSTRAINT "
            "anahtar PRIMARY KEY (a, b))");
    EXPECT_EQ(indexes("T"), "anahtar(a b ) primary unique required; b(b ) unique; cc(c ) unique; ");
    executeAll({"CREATE INDEX i1 ON T (c DESC, a ASC)", "CREATE UNIQUE INDEX i2 ON T (c) WITH DISALLOW NULL",
                "CREATE INDEX i3 ON T (b) WITH IGNORE NULL", "ALTER TABLE T DROP CONSTRAINT anahtar",
                "CREATE INDEX yeni ON T (a) WITH PRIMARY", "DROP INDEX cc ON T",
                "ALTER TABLE T ADD CONSTRAINT dd UNIQUE (a, c)"});
    EXPECT_EQ(indexes("t"),
              "b(b ) unique; dd(a c ) unique; i1(c- a ); i2(c ) unique required; i3(b ) ignore; "
              "yeni(a ) primary unique required; ");
}

TEST_F(Definitions, ChangingATableWithRows) {
    executeAll({"CREATE TABLE T (a LONG, b TEXT(5))", "INSERT INTO T VALUES (1, '12')",
                "INSERT INTO T VALUES (2, NULL)", "ALTER TABLE T ADD COLUMN c CURRENCY, COLUMN d YESNO",
                "UPDATE T SET c=a/4", "ALTER TABLE T ADD e TEXT(3) NOT NULL",
                "ALTER TABLE T ALTER COLUMN b LONG", "ALTER TABLE T DROP COLUMN a"});
    EXPECT_EQ(rows("SELECT * FROM T"), "12|0.2500|0|∅; ∅|0.5000|0|∅");
    EXPECT_EQ(fields("T"), "b 4/0; c 5/0; d 1/0; e 10/3 required; ");
    EXPECT_EQ(errorOf("ALTER TABLE T ADD COLUMN x LONG, b LONG").substr(0, 4),
              "3191"); // b is there: x must not stay
    EXPECT_EQ(fields("T"), "b 4/0; c 5/0; d 1/0; e 10/3 required; ");
    execute("DROP TABLE T");
    EXPECT_FALSE(database_->hasTable("T"));
}

} // namespace
