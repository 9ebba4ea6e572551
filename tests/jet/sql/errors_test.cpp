// What the language refuses: DAO's number and a text that shows the place. And that no text at all brings it
// down.
#include "sql_fixture.h"

#include <random>

using namespace sql_test;

namespace {

class Errors : public SqlTest {
  protected:
    void SetUp() override {
        executeAll(
            {"CREATE TABLE Sinif (SinifAdi TEXT(5) CONSTRAINT k PRIMARY KEY, Mevcut LONG, Gun DATETIME)",
             "CREATE TABLE Diger (SinifAdi TEXT(5))", "INSERT INTO Sinif VALUES ('9A', 5, NULL)"});
    }
};

TEST_F(Errors, NumberAndPlace) {
    const struct {
        const char* sql;
        const char* number;
        const char* shown;
    } cases[] = {
        {"SELECT * FROM Sinif WHERE ORDER BY SinifAdi", "3075",
         "Sinif WHERE ⟶ORDER BY SinifAdi (27. karakter)"},
        {"SELECT * FROM Sinif WHERE SinifAdi='9A", "3075", "⟶'9A (36. karakter)"},
        {"SELECT Çınar FROM Sinif WHERE (Mevcut=1", "3075", "“)” bekleniyordu"},
        {"SELECT FROM Sinif", "3075", "⟶FROM"},
        {"SELECT * Sinif", "3075", "Cümlenin sonu"},
        {"SELECT [Ad FROM Sinif", "3075", "köşeli ayracı eksik"},
        {"SELECT #13/45/2008#", "3075", "Geçersiz tarih: SELECT ⟶#13/45/2008#"},
        {"SELECT 12abc", "3075", "bitişik harf"},
        {"SELECT * FROM Sinif; DELETE FROM Sinif", "3075", "⟶DELETE"},
        {"", "3075", "SELECT, INSERT"},
        {"TRANSFORM Sum(x) SELECT y FROM z PIVOT q", "3075", "⟶TRANSFORM"},
        {"SELECT TOP 101 PERCENT * FROM Sinif", "3075", "TOP"},
        {"SELECT * FROM Yok", "3078", "“Yok” adında bir tablo yok: SELECT * FROM ⟶Yok (15. karakter)"},
        {"DELETE FROM Yok", "3078", "Yok"},
        {"INSERT INTO Yok VALUES (1)", "3078", "⟶Yok"},
        {"SELECT Mevcud FROM Sinif", "3061", "“Mevcud” adında bir alan"},
        {"SELECT s.Yok FROM Sinif s", "3061", "“s.Yok”"},
        {"SELECT x.* FROM Sinif", "3075", "“x” adında bir tablo yok"},
        {"UPDATE Sinif SET Yok=1", "3061", "“Yok”"},
        {"INSERT INTO Sinif (Yok) VALUES (1)", "3265", "“Sinif” tablosunda “Yok” alanı yok"},
        {"INSERT INTO Sinif (SinifAdi) VALUES (1, 2)", "3075", "(2) alanların sayısını (1)"},
        {"SELECT SinifAdi FROM Sinif, Diger", "3079", "birden çok tabloda"},
        {"SELECT * FROM Sinif, Sinif", "3075", "iki kez"},
        {"SELECT Foo(1)", "3085", "“Foo” adında bir işlev yok: SELECT ⟶Foo(1)"},
        {"SELECT Left('a')", "3075", "değer sayısı yanlış"},
        {"SELECT * FROM Sinif WHERE Count(*)>1", "3075", "Count toplam işlevi"},
        {"SELECT Sum(Max(Mevcut)) FROM Sinif", "3075", "Max toplam işlevi"},
        {"SELECT * FROM Sinif WHERE Mevcut='çok'", "3464", "“çok” karşılaştırılamaz"},
        {"SELECT * FROM Sinif WHERE Gun='dün'", "3464", "Tarih ile “dün”"},
        {"SELECT * FROM Sinif ORDER BY 4", "3075", "sıra numarası"},
        {"SELECT DISTINCT SinifAdi FROM Sinif ORDER BY Mevcut", "3075", "DISTINCT"},
        {"SELECT SinifAdi FROM Sinif UNION SELECT * FROM Sinif", "3075", "aynı sayıda alan"},
        {"SELECT * FROM Sinif WHERE SinifAdi IN (SELECT * FROM Sinif)", "3075", "tek alan"},
        {"SELECT * FROM Sinif WHERE Mevcut=?", "3061", "1 parametre bekliyor, 0 verildi"},
        {"SELECT :ad", "3061", "“ad” eksik"},
        {"SELECT 1/Mevcut FROM Sinif WHERE 1/(Mevcut-5)>0", "11", "Sıfıra bölme"},
        {"SELECT CInt(Mevcut*10000) FROM Sinif", "6", "Taşma"},
        {"INSERT INTO Sinif VALUES ('9A', 1, NULL)", "3022", "“k” "},
        {"INSERT INTO Sinif VALUES ('123456', 1, NULL)", "3163", "SinifAdi"},
        {"INSERT INTO Sinif VALUES ('x', 'on', NULL)", "3421", "Mevcut"},
        {"CREATE TABLE Sinif (a LONG)", "3010", "Sinif"},
        {"CREATE TABLE t (a DECIMAL(5,2))", "3075", "DECIMAL"},
        {"CREATE TABLE t (a TEXT(300))", "3075", "1 ile 255"},
        {"CREATE TABLE t (a SAYI)", "3075", "Bilinmeyen alan türü"},
        {"CREATE TABLE t (a LONG REFERENCES b)", "3075", "ilişki"},
        {"CREATE INDEX i ON Sinif (yok)", "3265", "yok"},
        {"CREATE INDEX i ON Sinif (Mevcut) WITH PRIMARY", "3283", "birincil"},
        {"ALTER TABLE Sinif DROP COLUMN Yok", "3265", "Yok"},
        {"DROP TABLE Yok", "3078", "Yok"},
        {"DROP INDEX yok ON Sinif", "3265", "yok"},
    };
    for (const auto& c : cases) {
        std::string got;
        try {
            got = errorOf(c.sql);
        } catch (const jet::Error& error) { // already while telling a query from a change
            got = std::to_string(error.code()) + ": " + error.what();
        }
        EXPECT_EQ(got.substr(0, got.find(':')), c.number) << c.sql << "\n" << got;
        EXPECT_NE(got.find(c.shown), std::string::npos) << c.sql << "\n" << got;
    }
    EXPECT_EQ(rows("SELECT * FROM Sinif"), "9A|5|∅");
    EXPECT_THROW(session_->execute("SELECT 1"), jet::Error);
    EXPECT_THROW(session_->query("DELETE FROM Sinif"), jet::Error);
    EXPECT_EQ(rows("SELECT Count(*) FROM Sinif"), "1");
}

TEST_F(Errors, DeepOrLongStatementsAreAnsweredOrRefused) {
    const auto repeated = [](const std::string& part, int times) {
        std::string text;
        for (int i = 0; i < times; ++i)
            text += part;
        return text;
    };
    const auto outcome = [this](const std::string& sql) {
        try {
            return rows(sql);
        } catch (const jet::Error& error) {
            return std::to_string(error.code());
        }
    };
    EXPECT_EQ(outcome("SELECT " + repeated("(", 40) + "1" + repeated(")", 40)), "1");
    EXPECT_EQ(outcome("SELECT " + repeated("(1+", 25) + "1" + repeated(")", 25)), "26");
    EXPECT_EQ(outcome("SELECT Count(*) FROM Sinif WHERE " + repeated("Mevcut=1 OR ", 300) + "Mevcut=5"), "1");
    EXPECT_EQ(outcome("SELECT Len('a'" + repeated(" & 'b'", 300) + ")"), "301");
    EXPECT_EQ(outcome("SELECT Count(*) FROM Sinif WHERE Mevcut IN (" + repeated("1,", 5000) + "5)"), "1");
    EXPECT_EQ(outcome("SELECT " + repeated("(", 100000) + "1"), "3075");
    EXPECT_EQ(outcome("SELECT " + repeated("NOT ", 100000) + "1"), "3075");
    EXPECT_EQ(outcome("SELECT " + repeated("-", 100000) + "1"), "3075");
    EXPECT_EQ(outcome("SELECT 1" + repeated("+1", 100000)), "3075");
    EXPECT_EQ(outcome("SELECT " + repeated("(SELECT ", 10000) + "1"), "3075");
    EXPECT_EQ(outcome("SELECT * FROM " + repeated("(", 10000) + "Sinif"), "3075");
    EXPECT_EQ(outcome("SELECT 1" + repeated(" UNION SELECT 1", 5000)), "3075");
    EXPECT_EQ(outcome("SELECT Iif(1," + repeated("Iif(1,", 2000) + "1"), "3075");
    EXPECT_EQ(outcome(repeated(" ", 5 << 20) + "SELECT 1"), "3075");
}

// What a statement says once and SQLite must be told several times doubles with each level.
TEST_F(Errors, MemoryOfAStatementIsBounded) {
    const auto outcome = [this](const std::string& sql) {
        try {
            return rows(sql);
        } catch (const jet::Error& error) {
            return std::to_string(error.code());
        }
    };
    std::string between = "1";
    for (int level = 0; level < 60; ++level)
        between = "(" + between + " BETWEEN -1 AND 1)";
    std::string aliases = "SELECT 1 AS a0";
    for (int level = 1; level <= 7; ++level) {
        const std::string below = "a" + std::to_string(level - 1);
        aliases += ", " + below;
        for (int i = 0; i < 30; ++i)
            aliases += "+" + below;
        aliases += " AS a" + std::to_string(level);
    }
    const std::string texts = "String(60000000, 'a')";
    const struct {
        std::string sql, expected;
    } cases[] = {
        {"SELECT ((1 BETWEEN 0 AND 2) BETWEEN -1 AND 0) BETWEEN -1 AND 0", "-1"},
        {"SELECT " + between, "3075"},
        {"SELECT 2 AS a, a+a AS b, b+b AS c", "2|4|8"},
        {aliases, "3075"},
        {"SELECT Len(" + texts + " & " + texts + " & " + texts + ")", "3047"},
        {"SELECT Len(Replace(String(1000000, 'x'), 'x', String(900, 'y')))", "6"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(outcome(c.sql), c.expected) << c.sql.substr(0, 200);
}

// Pieces of the language in any order: refused or run, nothing else.
TEST_F(Errors, AnyTextIsRefusedOrRuns) {
    const char* pieces[] = {"SELECT ",
                            "* ",
                            "FROM ",
                            "Sinif ",
                            "s ",
                            "WHERE ",
                            "Mevcut",
                            "=",
                            "1 ",
                            "'a' ",
                            "\"b\" ",
                            "( ",
                            ") ",
                            ", ",
                            "AND ",
                            "NOT ",
                            "LIKE ",
                            "IN ",
                            "BETWEEN ",
                            "IS NULL ",
                            "GROUP BY ",
                            "ORDER BY ",
                            "DESC ",
                            "TOP 2 ",
                            "UNION ",
                            "INNER JOIN ",
                            "ON ",
                            "#1/1/2008# ",
                            "[",
                            "]",
                            "? ",
                            ":x ",
                            "-",
                            "& ",
                            "\\ ",
                            "MOD ",
                            "Count(*) ",
                            "Max(",
                            "Trim(",
                            "IIf(",
                            "INSERT INTO ",
                            "VALUES ",
                            "UPDATE ",
                            "SET ",
                            "DELETE ",
                            "; ",
                            ".",
                            "!",
                            "É",
                            "\xFF",
                            "DISTINCT ",
                            "HAVING ",
                            "EXISTS ",
                            "NULL ",
                            "AS ",
                            "1e400 ",
                            "99999999999 ",
                            "&HFFFFFFFFF ",
                            "Format(",
                            "'*[' "};
    std::mt19937 random(20080915);
    const std::vector<jet::Value> parameters(40, jet::Value("x"));
    size_t ran = 0;
    for (int i = 0; i < 6000; ++i) {
        std::string sql = i % 3 ? "SELECT " : "";
        const size_t count = 1 + random() % 14;
        for (size_t k = 0; k < count; ++k)
            sql += pieces[random() % std::size(pieces)];
        try {
            session_->query(sql, parameters);
            ++ran;
        } catch (const jet::Error& error) {
            EXPECT_NE(error.message(), "") << sql;
        }
    }
    EXPECT_GT(ran, 20u);
}

} // namespace
