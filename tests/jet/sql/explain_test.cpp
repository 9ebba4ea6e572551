// Which index a statement takes, as explain() tells it, on tables big enough to make it matter.
#include "sql_fixture.h"

using namespace sql_test;

namespace {

class Explain : public SqlTest {
  protected:
    void SetUp() override {
        executeAll({"CREATE TABLE OgrenciBilgisi (Ogr_Numarasi TEXT(15) CONSTRAINT indOgrNo PRIMARY KEY, "
                    "Ogr_Sinif TEXT(10),"
                    " Kayit LONG, Tarih DATETIME)",
                    "CREATE INDEX indSinif ON OgrenciBilgisi (Ogr_Sinif, Kayit)",
                    "CREATE INDEX indKayit ON OgrenciBilgisi (Kayit DESC)",
                    "CREATE TABLE Sinif (SinifAdi TEXT(10) CONSTRAINT indSinifAdi PRIMARY KEY, Kat LONG)"});
        jet::WriteBatch batch(*database_);
        for (int i = 0; i < 500; ++i)
            execute("INSERT INTO OgrenciBilgisi VALUES (?,?,?,?)",
                    {std::to_string(1000 + i), std::to_string(i % 20), i, jet::Date{39000.0 + i}});
        for (int i = 0; i < 20; ++i)
            execute("INSERT INTO Sinif VALUES (?,?)", {std::to_string(i), i % 3});
        batch.commit();
    }
};

TEST_F(Explain, NamesTheIndex) {
    const struct {
        const char* sql;
        const char* expected;
    } cases[] = {
        {"SELECT * FROM OgrenciBilgisi WHERE Ogr_Numarasi='1007'",
         "OgrenciBilgisi: indOgrNo ile arama (Ogr_Numarasi=)\n"},
        {"SELECT * FROM OgrenciBilgisi WHERE Ogr_Numarasi=?",
         "OgrenciBilgisi: indOgrNo ile arama (Ogr_Numarasi=)\n"},
        {"SELECT * FROM OgrenciBilgisi WHERE Trim(Ogr_Numarasi)='1007'",
         "OgrenciBilgisi: baştan sona tarama\n"},
        {"SELECT * FROM OgrenciBilgisi WHERE Ogr_Sinif='3' AND Kayit>=5 AND Kayit<90",
         "OgrenciBilgisi: indSinif ile arama (Ogr_Sinif=, Kayit>=, Kayit<)\n"},
        {"SELECT * FROM OgrenciBilgisi WHERE Kayit BETWEEN 5 AND '9'",
         "OgrenciBilgisi: indKayit ile arama (Kayit>=, Kayit<=)\n"},
        {"SELECT * FROM OgrenciBilgisi WHERE Kayit IN (1,5,9)",
         "OgrenciBilgisi: indKayit ile arama (Kayit=)\n"},
        {"SELECT Max(Kayit) FROM OgrenciBilgisi", "OgrenciBilgisi: indKayit sırasıyla tarama\n"},
        {"SELECT * FROM OgrenciBilgisi ORDER BY Ogr_Numarasi DESC",
         "OgrenciBilgisi: indOgrNo sırasıyla tarama\n"},
        {"SELECT * FROM OgrenciBilgisi WHERE Ogr_Numarasi>'1100' ORDER BY Ogr_Numarasi",
         "OgrenciBilgisi: indOgrNo ile arama (Ogr_Numarasi>)\n"},
        {"SELECT * FROM OgrenciBilgisi ORDER BY Tarih",
         "OgrenciBilgisi: baştan sona tarama\nsıralama (ORDER BY) bellekte\n"},
        {"SELECT Ogr_Sinif, Count(*) FROM OgrenciBilgisi GROUP BY Ogr_Sinif",
         "OgrenciBilgisi: indSinif sırasıyla tarama\n"},
        {"SELECT * FROM OgrenciBilgisi o INNER JOIN Sinif s ON o.Ogr_Sinif=s.SinifAdi WHERE s.Kat=1 AND "
         "o.Tarih>#1/1/2000#",
         "Sinif: baştan sona tarama\nOgrenciBilgisi: indSinif ile arama (Ogr_Sinif=)\n"},
        {"SELECT * FROM OgrenciBilgisi WHERE Kayit<3 AND Ogr_Sinif IN (SELECT SinifAdi FROM Sinif WHERE "
         "Kat=1)",
         "OgrenciBilgisi: indSinif ile arama (Ogr_Sinif=, Kayit<)\nbir kez alt sorgu listesi\n  Sinif: "
         "baştan sona tarama\n"},
        {"UPDATE OgrenciBilgisi SET Kayit=1 WHERE Ogr_Numarasi='1007'",
         "OgrenciBilgisi: bulunan satırlar değiştirilir\nOgrenciBilgisi: indOgrNo ile arama "
         "(Ogr_Numarasi=)\n"},
        {"DELETE FROM Sinif", "Sinif: bulunan satırlar silinir\nSinif: baştan sona tarama\n"},
        {"DROP TABLE Sinif", "yapı değişikliği\n"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(session_->explain(c.sql), c.expected) << c.sql;
}

// A character whose place in the order is not known has no key; the search compares instead and finds what is
// there.
TEST_F(Explain, ASearchForATextWithoutAKeyIsNoError) {
    const struct {
        const char* where;
        size_t rows;
    } cases[] = {
        {"Ogr_Numarasi = '中'", 0},
        {"Ogr_Numarasi IN ('中', '1007')", 1},
        {"Ogr_Numarasi > '中'", 0},
        {"Ogr_Numarasi < '中'", 500},
        {"Ogr_Sinif = '3' AND Ogr_Numarasi BETWEEN '1' AND '中'", 25},
        {"Ogr_Sinif = '😀' AND Kayit > 5", 0},
    };
    for (const auto& c : cases) {
        const std::string sql = std::string("SELECT * FROM OgrenciBilgisi WHERE ") + c.where;
        EXPECT_NE(session_->explain(sql).find("ile arama"), std::string::npos) << sql;
        EXPECT_EQ(session_->query(sql).rowCount(), c.rows) << sql;
    }
}

TEST_F(Explain, ASessionOnAGeneralFileComparesByThatOrder) {
    jet::CreateOptions options;
    options.sortOrder = jet::kGeneralSort;
    options.io = std::make_shared<jet::MemoryIo>();
    const auto general = jet::Database::create("/genel.mdb", options);
    jet::SqlSession session(*general);
    session.execute("CREATE TABLE T (Ad TEXT(10) CONSTRAINT k PRIMARY KEY)");
    session.execute("INSERT INTO T VALUES ('ALI')");
    EXPECT_EQ(shown(session.query("SELECT Ad FROM T WHERE Ad='ali'")), "ALI");
    EXPECT_EQ(shown(session.query("SELECT UCase('i'), Ad LIKE 'a*i' FROM T WHERE Trim(Ad)='ali'")), "I|-1");
}

} // namespace
