// Statements of Jet's dialect on a small centre: four classes, some students, their marks.
#include "sql_fixture.h"

using namespace sql_test;

namespace {

class Dialect : public SqlTest {
  protected:
    void SetUp() override {
        executeAll({
            "CREATE TABLE Sinif (SinifAdi TEXT(10) CONSTRAINT indSinif PRIMARY KEY, Ogretmen TEXT(20))",
            "INSERT INTO Sinif VALUES ('9A', 'Ayşe')",
            "INSERT INTO Sinif VALUES ('9B', 'Can')",
            "INSERT INTO Sinif VALUES ('10A', NULL)",
            "CREATE TABLE Ogrenci ([No] LONG NOT NULL CONSTRAINT birincil PRIMARY KEY, Ad TEXT(20), [Soy Ad] "
            "TEXT(20),"
            " Sinif TEXT(10), Dogum DATETIME, Ucret CURRENCY, Aktif YESNO, Puan DOUBLE, Notu MEMO)",
            "CREATE INDEX indAd ON Ogrenci (Ad)",
            "CREATE INDEX indSinifAd ON Ogrenci (Sinif, Ad DESC)",
            "INSERT INTO Ogrenci VALUES (1, 'Ali', 'Yılmaz', '9A', #9/15/1992#, 10.5, TRUE, 70, 'ilk')",
            "INSERT INTO Ogrenci VALUES (2, 'İnci', 'Ak', '9A', #1/2/1993#, 20, FALSE, 85.5, NULL)",
            "INSERT INTO Ogrenci VALUES (3, 'Işık', 'Demir', '9B', #12/31/1991#, 0.0001, TRUE, 85.5, '')",
            "INSERT INTO Ogrenci VALUES (4, 'çağla', 'O''Neil', 'YOK', NULL, NULL, TRUE, NULL, 'son')",
            "INSERT INTO Ogrenci VALUES (5, NULL, NULL, NULL, #1/2/1993#, 5, FALSE, 40, NULL)",
            "CREATE TABLE Notlar (OgrNo LONG, Ders TEXT(10), Puan LONG)",
            "INSERT INTO Notlar VALUES (1, 'MAT', 50)",
            "INSERT INTO Notlar VALUES (1, 'TÜR', 90)",
            "INSERT INTO Notlar VALUES (2, 'MAT', 70)",
            "INSERT INTO Notlar VALUES (9, 'MAT', 10)",
        });
    }
};

struct Case {
    const char* sql;
    const char* expected;
};

TEST_F(Dialect, Queries) {
    const Case cases[] = {
        // names, texts, aliases
        {"SELECT [No], [Soy Ad] FROM Ogrenci WHERE [Soy Ad]=\"O'Neil\"", "4|O'Neil"},
        {"SELECT o.[no] FROM [OGRENCI] o WHERE O.AD = 'ali';", "1"},
        {"SELECT Ogrenci.No AS N FROM Ogrenci WHERE Ogrenci!No=1", "1"},
        {"SELECT No*2 AS iki, iki+1 AS uc FROM Ogrenci WHERE No=3", "6|7"},
        {"SELECT \"a\"\"b\" & 'c''d'", "a\"bc'd"},
        // Turkish comparisons
        {"SELECT No FROM Ogrenci WHERE Ad='ALİ'", "1"},
        {"SELECT No FROM Ogrenci WHERE Ad='ALI'", ""},
        {"SELECT No FROM Ogrenci WHERE Ad='IŞIK'", "3"},
        {"SELECT No FROM Ogrenci WHERE Trim(Ad)='inci'", "2"},
        {"SELECT No FROM Ogrenci WHERE 'ÇAĞLA'=LCase(Ad)", "4"},
        {"SELECT No FROM Ogrenci WHERE Left(Ad,1) IN ('a','Ç')", "1; 4"},
        {"SELECT 'ALİ'='ali', 'ALI'='ali'", "-1|0"},
        {"SELECT No FROM Ogrenci WHERE Ad > 'b' ORDER BY Ad", "4; 3; 2"}, // ç, ı, i
        {"SELECT DISTINCT UCase(Sinif) FROM Ogrenci WHERE Sinif<>'' ORDER BY UCase(Sinif) DESC",
         "YOK; 9B; 9A"},
        {"SELECT LCase(Sinif), Count(*) FROM Ogrenci GROUP BY LCase(Sinif)", "∅|1; 9a|2; 9b|1; yok|1"},
        // nulls
        {"SELECT No FROM Ogrenci WHERE Ad = Null", ""},
        {"SELECT No FROM Ogrenci WHERE Ad <> Null", ""},
        {"SELECT No FROM Ogrenci WHERE Ad IS NULL", "5"},
        {"SELECT Count(*) FROM Ogrenci WHERE NOT Ad IS NULL", "4"},
        {"SELECT No FROM Ogrenci WHERE Sinif<>'9A'", "3; 4"},
        {"SELECT No FROM Ogrenci WHERE (Notu & '') = ''", "2; 3; 5"},
        {"SELECT No FROM Ogrenci WHERE Sinif IS NULL AND Ad IS NULL", "5"},
        // numbers, dates, booleans
        {"SELECT No FROM Ogrenci WHERE Aktif", "1; 3; 4"},
        {"SELECT No FROM Ogrenci WHERE Aktif = False", "2; 5"},
        {"SELECT No FROM Ogrenci WHERE Aktif = Yes AND NOT No = 1", "3; 4"},
        {"SELECT No FROM Ogrenci WHERE Ucret = 10.5", "1"},
        {"SELECT No FROM Ogrenci WHERE Ucret < 1", "3"},
        {"SELECT No FROM Ogrenci WHERE No = '2'", "2"},
        {"SELECT No FROM Ogrenci WHERE Sinif = 9", ""},
        {"SELECT No FROM Ogrenci WHERE Dogum = #1/2/1993#", "2; 5"},
        {"SELECT No FROM Ogrenci WHERE Dogum < #1/1/1993# ORDER BY Dogum", "3; 1"},
        {"SELECT No FROM Ogrenci WHERE Dogum = '02.01.1993' AND Aktif = 0", "2; 5"},
        {"SELECT No FROM Ogrenci WHERE No BETWEEN 2 AND 3.5", "2; 3"},
        {"SELECT No FROM Ogrenci WHERE No NOT BETWEEN 2 AND 4", "1; 5"},
        {"SELECT No FROM Ogrenci WHERE No > 1.5 AND No < 3", "2"},
        // lists
        {"SELECT No FROM Ogrenci WHERE No IN (1, 4, 99)", "1; 4"},
        {"SELECT No FROM Ogrenci WHERE No IN ('1', 4)", "1; 4"},
        {"SELECT No FROM Ogrenci WHERE Ad NOT IN ('ali', 'İNCİ')", "3; 4"},
        {"SELECT No FROM Ogrenci WHERE Sinif NOT IN (SELECT SinifAdi FROM Sinif ORDER BY SinifAdi)", "4"},
        {"SELECT SinifAdi FROM Sinif WHERE SinifAdi IN (SELECT Trim(Sinif) FROM Ogrenci)", "9A; 9B"},
        {"SELECT SinifAdi FROM Sinif s WHERE NOT EXISTS (SELECT * FROM Ogrenci WHERE Sinif=s.SinifAdi)",
         "10A"},
        {"SELECT No FROM Ogrenci o WHERE Puan=(SELECT Max(Puan) FROM Ogrenci WHERE Sinif=o.Sinif)", "2; 3"},
        // like
        {"SELECT No FROM Ogrenci WHERE Ad LIKE 'I*'", "3"},
        {"SELECT No FROM Ogrenci WHERE Ad LIKE 'i*'", "2"},
        {"SELECT No FROM Ogrenci WHERE [Soy Ad] LIKE '?k'", "2"},
        {"SELECT No FROM Ogrenci WHERE Ad LIKE '[a-c]*'", "1"},
        {"SELECT No FROM Ogrenci WHERE Ad NOT LIKE '[!ai]*'", "1; 2"},
        {"SELECT SinifAdi FROM Sinif WHERE SinifAdi LIKE '#[AB]'", "9A; 9B"},
        {"SELECT SinifAdi FROM Sinif WHERE SinifAdi LIKE '*0*'", "10A"},
        {"SELECT 'a*b' LIKE 'a[*]b', 'axb' LIKE 'a[*]b', 'a%b' LIKE 'a%b'", "-1|0|-1"},
        // joins
        {"SELECT o.No, s.Ogretmen FROM Ogrenci o, Sinif s WHERE o.Sinif=s.SinifAdi ORDER BY o.No",
         "1|Ayşe; 2|Ayşe; 3|Can"},
        {"SELECT No, Ogretmen FROM Ogrenci INNER JOIN Sinif ON Ogrenci.Sinif=Sinif.SinifAdi ORDER BY No DESC",
         "3|Can; 2|Ayşe; 1|Ayşe"},
        {"SELECT No, Ogretmen FROM Ogrenci LEFT JOIN Sinif ON Ogrenci.Sinif=Sinif.SinifAdi ORDER BY No",
         "1|Ayşe; 2|Ayşe; 3|Can; 4|∅; 5|∅"},
        {"SELECT SinifAdi, No FROM Ogrenci RIGHT OUTER JOIN Sinif ON Ogrenci.Sinif=Sinif.SinifAdi ORDER BY "
         "SinifAdi, No",
         "10A|∅; 9A|1; 9A|2; 9B|3"},
        {"SELECT o.No, n.Puan, s.Ogretmen FROM (Ogrenci o INNER JOIN Notlar n ON o.No=n.OgrNo) "
         "LEFT JOIN Sinif s ON o.Sinif=s.SinifAdi ORDER BY n.Puan",
         "1|50|Ayşe; 2|70|Ayşe; 1|90|Ayşe"},
        {"SELECT s.SinifAdi, o.No, n.Puan FROM Sinif s LEFT JOIN (Ogrenci o INNER JOIN Notlar n ON "
         "o.No=n.OgrNo) "
         "ON s.SinifAdi=o.Sinif WHERE Trim(s.SinifAdi) IN ('9a','9b') ORDER BY s.SinifAdi, n.Puan",
         "9A|1|50; 9A|2|70; 9A|1|90; 9B|∅|∅"},
        {"SELECT n.OgrNo, o.Ad FROM Ogrenci o RIGHT JOIN Notlar n ON (o.No=n.OgrNo) WHERE o.No IS NULL",
         "9|∅"},
        {"SELECT a.No, b.No FROM Ogrenci a, Ogrenci b WHERE a.Dogum=b.Dogum AND a.No<b.No", "2|5"},
        {"SELECT o.* FROM Ogrenci o, Sinif s WHERE o.Sinif=s.SinifAdi AND s.Ogretmen='CAN'",
         "3|Işık|Demir|9B|1991-12-31 00:00:00|0.0001|-1|85.5|"},
        // groups
        {"SELECT Sinif, Count(*) AS Kac, Max(Puan) FROM Ogrenci GROUP BY Sinif HAVING Count(*)>1",
         "9A|2|85.5"},
        {"SELECT OgrNo, Sum(Puan) FROM Notlar GROUP BY OgrNo ORDER BY Sum(Puan) DESC", "1|140; 2|70; 9|10"},
        {"SELECT Ders, Avg(Puan) AS Ort FROM Notlar WHERE OgrNo<9 GROUP BY Ders ORDER BY 2 DESC",
         "TÜR|90; MAT|60"},
        {"SELECT Count(*) FROM Notlar HAVING Count(*) > 10", ""},
        {"SELECT Sum(Puan)/Count(*) FROM Notlar", "55"},
        // distinct, top
        {"SELECT DISTINCT Sinif FROM Ogrenci ORDER BY Sinif DESC", "YOK; 9B; 9A; ∅"},
        {"SELECT TOP 2 No FROM Ogrenci ORDER BY No DESC", "5; 4"},
        {"SELECT TOP 1 No, Puan FROM Ogrenci ORDER BY Puan DESC", "2|85.5; 3|85.5"}, // a tie stays in
        {"SELECT TOP 1 Ad FROM Ogrenci ORDER BY Puan DESC, No", "İnci"},
        {"SELECT TOP 40 PERCENT No FROM Ogrenci ORDER BY No", "1; 2"},
        {"SELECT TOP 2 No FROM Ogrenci", "1; 2"},
        {"SELECT No FROM Ogrenci WHERE No IN (SELECT TOP 1 No FROM Ogrenci ORDER BY Puan DESC) ORDER BY No",
         "2; 3"},
        {"SELECT Count(*) FROM (SELECT TOP 50 PERCENT * FROM Ogrenci ORDER BY No)", "3"},
        {"SELECT DISTINCT TOP 1 Puan FROM Ogrenci ORDER BY Puan DESC", "85.5"},
        // sub-queries in FROM, unions
        {"SELECT x.Kac FROM (SELECT Sinif AS S, Count(*) AS Kac FROM Ogrenci GROUP BY Sinif) AS x WHERE "
         "x.S='9a'",
         "2"},
        {"SELECT t FROM (SELECT Trim(Ad) AS t FROM Ogrenci) WHERE t='ALİ'", "Ali"},
        {"SELECT Sinif FROM Ogrenci UNION SELECT SinifAdi FROM Sinif ORDER BY Sinif", "∅; 10A; 9A; 9B; YOK"},
        {"SELECT UCase(Sinif) AS k FROM Ogrenci WHERE No<4 UNION SELECT UCase(SinifAdi) FROM Sinif ORDER BY "
         "1 DESC",
         "9B; 9A; 10A"},
        {"SELECT No FROM Ogrenci WHERE No<3 UNION ALL SELECT OgrNo FROM Notlar ORDER BY No",
         "1; 1; 1; 2; 2; 9"},
        {"(SELECT No FROM Ogrenci WHERE No=1) UNION (SELECT TOP 1 No FROM Ogrenci ORDER BY No DESC)", "1; 5"},
        {"SELECT * FROM Sinif ORDER BY 2, SinifAdi DESC", "10A|∅; 9A|Ayşe; 9B|Can"},
        {"PARAMETERS [Hangi No] Long; SELECT Ad FROM Ogrenci WHERE No=[hangi no]", ""},
    };
    for (const Case& c : cases) {
        std::string got;
        try {
            got = rows(c.sql, {jet::Value(77)});
        } catch (const jet::Error& error) {
            got = error.what();
        }
        EXPECT_EQ(got, c.expected) << c.sql;
    }
}

TEST_F(Dialect, ChangesTouchTheRowsTheyName) {
    const struct {
        const char* change;
        size_t touched;
        const char* query;
        const char* expected;
    } cases[] = {
        {"UPDATE Ogrenci SET Sinif='9C', Puan=Puan+1 WHERE Sinif='9a'", 2,
         "SELECT Sinif, Puan FROM Ogrenci WHERE No<3", "9C|71; 9C|86.5"},
        {"UPDATE Ogrenci SET Ad='' WHERE Ad = Null", 0, "SELECT Count(*) FROM Ogrenci WHERE Ad=''", "0"},
        {"UPDATE Ogrenci SET Ad='' WHERE Ad IS NULL", 1, "SELECT No FROM Ogrenci WHERE Ad=''", "5"},
        {"UPDATE Ogrenci INNER JOIN Notlar ON Ogrenci.No=Notlar.OgrNo SET Ogrenci.Puan=Notlar.Puan, "
         "Notlar.Puan=0 "
         "WHERE Ders='MAT'",
         2, "SELECT o.Puan, n.Puan FROM Ogrenci o, Notlar n WHERE o.No=n.OgrNo AND Ders='mat'", "50|0; 70|0"},
        {"UPDATE Ogrenci AS o LEFT JOIN Sinif AS s ON o.Sinif=s.SinifAdi SET o.Notu=s.Ogretmen WHERE o.No>2",
         3, "SELECT Notu FROM Ogrenci ORDER BY No", "ilk; ∅; Can; ∅; ∅"},
        {"DELETE * FROM Notlar WHERE OgrNo NOT IN (SELECT No FROM Ogrenci WHERE No<>2)", 2,
         "SELECT OgrNo, Ders FROM Notlar", "1|MAT; 1|TÜR"},
        {"DELETE n.* FROM Notlar n INNER JOIN Ogrenci o ON n.OgrNo=o.No WHERE n.Ders='tür'", 1,
         "SELECT OgrNo, Ders FROM Notlar", "1|MAT"},
        {"INSERT INTO Notlar (Puan, OgrNo) SELECT Puan, No FROM Ogrenci WHERE No<4", 3,
         "SELECT OgrNo, Ders, Puan FROM Notlar WHERE Ders IS NULL ORDER BY OgrNo", "1|∅|50; 2|∅|70; 3|∅|86"},
        {"INSERT INTO Notlar SELECT * FROM Notlar WHERE OgrNo=2", 1,
         "SELECT Count(*) FROM Notlar WHERE OgrNo=2", "2"},
        {"INSERT INTO Notlar VALUES (7, 'O''K', 1)", 1, "SELECT Ders FROM Notlar WHERE OgrNo=7", "O'K"},
        {"SELECT Sinif, Count(*) AS Kac, Max(Dogum) AS Son, Sum(Ucret) AS Tutar INTO Ozet FROM Ogrenci GROUP "
         "BY Sinif",
         4, "SELECT Kac, Son, Tutar FROM Ozet WHERE Sinif='9c'", "2|1993-01-02 00:00:00|30.5000"},
        {"DELETE FROM Notlar", 6, "SELECT Count(*) FROM Notlar", "0"},
        {"UPDATE Ogrenci SET No=No+1", 5, "SELECT No FROM Ogrenci ORDER BY No", "2; 3; 4; 5; 6"},
    };
    for (const auto& c : cases) {
        size_t touched = 0;
        try {
            touched = execute(c.change);
        } catch (const jet::Error& error) {
            ADD_FAILURE() << c.change << "\n" << error.what();
        }
        EXPECT_EQ(touched, c.touched) << c.change;
        EXPECT_EQ(rows(c.query), c.expected) << c.change << "\n" << c.query;
    }
    EXPECT_EQ(database_->tableDef("Ozet").field("Tutar").type, jet::Type::Currency);
    EXPECT_EQ(database_->tableDef("Ozet").field("Sinif").size, 10);
}

TEST_F(Dialect, AStatementThatFailsInTheMiddleChangesNothing) {
    const std::string before = rows("SELECT * FROM Ogrenci");
    EXPECT_EQ(errorOf("UPDATE Ogrenci SET No=7").substr(0, 4), "3022");
    EXPECT_EQ(errorOf("INSERT INTO Ogrenci (No) SELECT OgrNo+2 FROM Notlar ORDER BY OgrNo DESC").substr(0, 4),
              "3022");
    EXPECT_EQ(errorOf("UPDATE Ogrenci SET Ad=String(30,'x') WHERE No>1").substr(0, 4), "3163");
    EXPECT_EQ(errorOf("UPDATE Ogrenci SET No=Null WHERE No=5").substr(0, 4), "3314");
    EXPECT_EQ(rows("SELECT * FROM Ogrenci"), before);
    jet::WriteBatch batch(*database_);
    execute("DELETE FROM Notlar WHERE OgrNo=9");
    EXPECT_NE(errorOf("UPDATE Ogrenci SET No=7"), "");
    batch.commit();
    EXPECT_EQ(rows("SELECT Count(*) FROM Notlar"), "3");
    EXPECT_EQ(rows("SELECT * FROM Ogrenci"), before);
}

TEST_F(Dialect, ResultColumnsHaveNamesAndTypes) {
    const auto result =
        session_->query("SELECT o.No, n.*, Ucret, Ucret*2 AS iki, Max(Dogum) AS son, Aktif, No=1, "
                        "Nz(Ucret,0) AS u, IIf(True,Dogum,Null) AS d, Ad & '' AS a, o.Puan "
                        "FROM Ogrenci o, Notlar n WHERE o.No=n.OgrNo AND o.No=1 GROUP BY No");
    std::string names;
    for (const auto& column : result.columns())
        names += column.name + ":" + std::to_string(static_cast<int>(column.type)) + " ";
    EXPECT_EQ(names,
              "No:4 OgrNo:4 Ders:10 n.Puan:4 Ucret:5 iki:5 son:8 Aktif:1 Expr1008:1 u:5 d:8 a:10 o.Puan:7 ");
    EXPECT_EQ(result.at(0, "UCRET"), jet::Value(jet::Currency{105000}));
    EXPECT_EQ(result.at(0, "iki"), jet::Value(jet::Currency{210000}));
    EXPECT_EQ(result.at(0, "aktif"), jet::Value(true));
    EXPECT_EQ(result.at(0, "son"), jet::Value(jet::Date::fromParts({1992, 9, 15, 0, 0, 0})));
    EXPECT_THROW(result.at(0, "yok"), jet::Error);
}

TEST_F(Dialect, ParametersAreDataWhateverTheyHold) {
    using jet::Value;
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE [Soy Ad]=?", {Value("O'Neil")}), "4");
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE Trim([Soy Ad])=:soyad AND Ad=:ad",
                   {Value("o'neil"), Value("ÇAĞLA")}),
              "4");
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE Ad=@a OR Trim(Ad)=@a", {Value("ali")}), "1");
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE No=?", {Value("3")}), "3");
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE No=?", {Value("x'; DROP TABLE Ogrenci")}), "");
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE No<?", {Value(2.5)}), "1; 2");
    EXPECT_EQ(
        rows("SELECT No FROM Ogrenci WHERE Dogum=?", {Value(jet::Date::fromParts({1992, 9, 15, 0, 0, 0}))}),
        "1");
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE Dogum=?", {Value("15.09.1992")}), "1");
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE Aktif=?", {Value(true)}), "1; 3; 4");
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE Ucret=?", {Value(jet::Currency{1})}), "3");
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE Trim(No)=?", {Value(4)}), "4");
    EXPECT_EQ(rows("SELECT No FROM Ogrenci WHERE Ad=?", {Value()}), "");
    EXPECT_EQ(rows("SELECT ? AS x, ?", {Value(jet::Currency{12345}), Value("a")}), "1.2345|a");
    EXPECT_EQ(rows("PARAMETERS n Long, [tarih] DateTime; SELECT No FROM Ogrenci WHERE No=n AND Dogum=tarih",
                   {Value("1"), Value("15.09.1992")}),
              "1");
    EXPECT_EQ(execute("INSERT INTO Ogrenci (No, [Soy Ad], Ucret, Dogum, Aktif) VALUES (?, ?, ?, ?, ?)",
                      {Value(50), Value("D'or \"x\" ]"), Value(jet::Currency{922337203685477580}),
                       Value(jet::Date{39706.4375}), Value(true)}),
              1u);
    const auto row = session_->query("SELECT [Soy Ad], Ucret, Dogum, Aktif FROM Ogrenci WHERE No=50");
    EXPECT_EQ(row.at(0, 0), Value("D'or \"x\" ]"));
    EXPECT_EQ(row.at(0, 2), Value(jet::Date{39706.4375}));
    EXPECT_EQ(database_->openTable("Ogrenci").rowCount(), 6u);
}

TEST_F(Dialect, AnIndexGivesTheSameRowsAsAScan) {
    execute("CREATE TABLE Cok (Sira LONG, Kod TEXT(8), Yil LONG, Oran SINGLE, Tutar CURRENCY, Gun DATETIME)");
    const char* codes[] = {"ali", "ALİ", "ALI", "ılgaz", "İlgaz", "çam", "Cam", "", "z-9", "z9"};
    for (int i = 0; i < 400; ++i) {
        const jet::Value code = i % 11 == 10 ? jet::Value() : jet::Value(codes[i % 11]);
        const jet::Value year = i % 7 == 0 ? jet::Value() : jet::Value(i % 13 - 6);
        execute("INSERT INTO Cok VALUES (?,?,?,?,?,?)",
                {jet::Value(i), code, year, jet::Value(static_cast<float>(i % 9) / 10),
                 jet::Value(jet::Currency{i % 17 * 3333 - 20000}), jet::Value(jet::Date{-3.75 + i % 8})});
    }
    execute("SELECT * INTO Duz FROM Cok");
    for (const char* index : {"CREATE INDEX a ON Cok (Kod, Yil DESC)", "CREATE INDEX b ON Cok (Yil, Kod)",
                              "CREATE INDEX c ON Cok (Oran)", "CREATE INDEX d ON Cok (Tutar DESC)",
                              "CREATE INDEX e ON Cok (Gun) WITH IGNORE NULL"})
        execute(index);
    const char* tests[] = {
        "Kod='ali'",
        "Kod='ALI'",
        "Kod='z9'",
        "Kod=''",
        "Kod IS NULL",
        "Kod>'c' AND Kod<='İ'",
        "Kod='ali' AND Yil>2",
        "Kod='ali' AND Yil<=2",
        "Kod='ali' AND Yil IS NULL",
        "Yil=-6",
        "Yil IN (1,2,'3')",
        "Yil>2.5 AND Yil<4.5",
        "Yil<-99999999999",
        "Yil>-99999999999",
        "Yil BETWEEN -1 AND 1 AND Kod>='ç'",
        "Yil IS NULL AND Kod='Cam'",
        "Oran=0.5",
        "Oran>0.3",
        "Oran<=0.3",
        "Oran>=0.1 AND Oran<0.2",
        "Tutar=-1.0001",
        "Tutar>=0.3332",
        "Tutar<0",
        "Tutar<=-2",
        "Gun=-3.75",
        "Gun<0",
        "Gun>=#12/29/1899 06:00#",
        "Kod IN ('ali','çam',Null)",
        "Yil=Null",
        "Yil<>1",
        "Kod='ali' OR Yil=3",
        "Yil=2.5",
        "Kod LIKE 'A*' AND Yil=1",
        "Yil>=0 AND Tutar<=0 AND Kod<='m'",
    };
    const auto all = [this](const std::string& table, const char* test) {
        return rows("SELECT x.Sira FROM (SELECT Sira FROM " + table + " WHERE " + test +
                    ") AS x ORDER BY x.Sira");
    };
    for (const char* test : tests) {
        EXPECT_EQ(all("Cok", test), all("Duz", test)) << test;
        for (const char* order : {"UCase(Kod), Yil|Kod, Yil DESC", "UCase(Kod), Yil|Kod DESC, Yil",
                                  "Yil, UCase(Kod)|Yil, Kod", "Tutar|Tutar", "Tutar|Tutar DESC", "Gun|Gun"}) {
            const std::string_view both = order;
            const auto bar = both.find('|');
            const auto run = [&](const char* table) {
                return rows("SELECT " + std::string(both.substr(0, bar)) + " FROM " + table + " WHERE " +
                            test + " ORDER BY " + std::string(both.substr(bar + 1)));
            };
            EXPECT_EQ(run("Cok"), run("Duz")) << test << " " << order;
        }
    }
    // Joins and sub-queries: by index on one table, by a lookup made in memory on the other.
    for (const char* sql : {
             "SELECT Count(*), Sum(a.Sira*b.Sira) FROM # a, # b WHERE a.Kod=b.Kod AND a.Yil=b.Yil",
             "SELECT Count(*), Sum(a.Sira-b.Sira) FROM # a INNER JOIN # b ON a.Oran=b.Oran WHERE "
             "a.Tutar=b.Tutar",
             "SELECT a.Sira, b.Sira FROM # a LEFT JOIN # b ON a.Yil=b.Sira-100 AND a.Kod=b.Kod ORDER BY 1, 2",
             "SELECT Sira FROM # a WHERE Tutar=(SELECT Max(Tutar) FROM # b WHERE b.Kod=a.Kod) ORDER BY Sira",
             "SELECT Sira FROM # a WHERE NOT EXISTS (SELECT * FROM # b WHERE b.Gun=a.Gun AND b.Sira>a.Sira) "
             "ORDER BY Sira",
             "SELECT Count(*), Max(b.Kod) FROM # a, # b WHERE Trim(a.Kod)=b.Kod AND b.Yil=Val(a.Yil)",
         }) {
        const auto run = [&](const std::string& table) {
            std::string text = sql;
            for (size_t at; (at = text.find('#')) != std::string::npos;)
                text.replace(at, 1, table);
            return rows(text);
        };
        const std::string expected = run("Cok");
        EXPECT_EQ(run("Duz"), expected) << sql;
        EXPECT_GT(expected.size(), 3u) << sql;
    }
}

TEST_F(Dialect, StatementsFollowAChangedStructure) {
    const char* sql = "SELECT * FROM Sinif WHERE SinifAdi='9A'";
    EXPECT_EQ(rows(sql), "9A|Ayşe");
    execute("ALTER TABLE Sinif ADD COLUMN Kat LONG");
    execute("UPDATE Sinif SET Kat=2 WHERE SinifAdi='9A'");
    EXPECT_EQ(rows(sql), "9A|Ayşe|2");
    database_->renameField("Sinif", "Ogretmen", "Hoca");
    EXPECT_EQ(session_->query(sql).columns()[1].name, "Hoca");
    database_->dropIndex("Sinif", "indSinif");
    EXPECT_EQ(rows(sql), "9A|Ayşe|2");
    database_->renameTable("Sinif", "Siniflar");
    EXPECT_EQ(errorOf(sql).substr(0, 4), "3078");
    execute("CREATE TABLE Sinif (SinifAdi TEXT(3))");
    EXPECT_EQ(rows(sql), "");
}

} // namespace
