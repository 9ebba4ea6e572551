// The system's own statements: the shapes in which screens and rules ask, with values filled in, on a small
// centre. They stand in the order of the subsystems; changes build on one another.
#include "sql_fixture.h"

using namespace sql_test;

namespace {

struct Statement {
    const char* sql;
    std::vector<jet::Value> parameters;
    const char* expected;          // rows of a query; rows touched by a change
    const char* check = nullptr;   // after a change: a query …
    const char* checked = nullptr; // … and its rows
};

class OwnStatements : public SqlTest {
  protected:
    // "Table: name type, …", then its rows.
    void table(const std::string& name, const std::string& fields,
               std::initializer_list<const char*> valueLists) {
        execute("CREATE TABLE " + name + " (" + fields + ")");
        for (const char* values : valueLists)
            execute("INSERT INTO " + name + " VALUES (" + values + ")");
    }

    void run(const std::vector<Statement>& statements) {
        for (const Statement& s : statements) {
            std::string got;
            try {
                got = jet::SqlSession::givesRows(s.sql) ? rows(s.sql, s.parameters)
                                                        : std::to_string(execute(s.sql, s.parameters));
                if (s.check && got == s.expected) {
                    EXPECT_EQ(rows(s.check), s.checked) << s.sql;
                }
            } catch (const jet::Error& error) {
                got = error.what();
            }
            EXPECT_EQ(got, s.expected) << s.sql;
        }
    }

    void makeUsers() {
        table("Kullanici", "Kullanici_Adi TEXT(20), KullaniciSifre TEXT(20)",
              {"'admin ', '1'", "'Ayşe', 'x'"});
        table("ProgramHaklari",
              "KullaniciAdi TEXT(20), ProgramAdi TEXT(80), GirisHakki TEXT(1), YazmaHakki TEXT(1)",
              {"'admin', 'Devamsızlık Girişi', '1', '0'",
               "'admin', 'Ders Bazında Devamsızlık Girişi', '1', '1'", "'Ayşe', 'Sınıf Bilgileri', '1', '1'",
               "'admin', 'Ara Sınav Notu Girişi (Ders Bazında)', '0', '0'"});
        table("SabitBilgiler", "SB_OKUL_ADI TEXT(60), SB_ders_yili TEXT(9)",
              {"' Atatürk MEM ', '2008-2009'"});
        table("AsgariUcret", "Yil LONG, Ay LONG, BuyukGunluk CURRENCY, KucukGunluk CURRENCY, YtlVar TEXT(1)",
              {"2008, 7, 21.29, 18.12, 'E'", "2009, 1, 22.2, 18.9, NULL"});
    }

    void makeReference() {
        table("Parametrik_giris",
              "Ta_Tanim_Grup TEXT(15), Ta_Tanim_Kod TEXT(10), Ta_tanim_aciklama TEXT(50), TA_Tanim_Kisaisim "
              "TEXT(10),"
              " ID LONG, YururlulukTarihi TEXT(10)",
              {"'Bölüm', '1010', 'BERBERLİK', 'BRB', 2, '01.07.2005'",
               "'Bölüm', '1020', 'AŞÇILIK', 'AŞÇ', 2, '01.07.2005'",
               "'Bölüm', '1010', 'Berberlik (eski)', 'BRB', 1, '03.07.2002'",
               "'Semt Kodu', '02', 'Şişli', '', NULL, NULL", "'Semt Kodu', '01', 'Çamlıca', '', NULL, NULL",
               "'MeslekOda', '1', 'Berberler', '', NULL, NULL",
               "'ÖğrenimDr', '10', 'İLKOKUL MEZUNU', '', NULL, NULL",
               "'KanunMd.', '16', '16. madde', '', NULL, NULL"});
        execute("CREATE INDEX indGrup ON Parametrik_giris (Ta_Tanim_Grup, Ta_Tanim_Kod)");
        table("DersHavuzu",
              "ID LONG, DersKodu TEXT(10), DersAdi TEXT(40), DersTuru TEXT(1), DersUygulama YESNO",
              {"3, 'PUYG.', 'PRATİK UYGULAMA', 'M', TRUE", "2, 'MAT', 'Matematik', 'K', FALSE",
               "2, 'TÜR', 'Türkçe', 'K', FALSE", "2, 'BER1', 'Berberlik', 'M', TRUE"});
        table("MeslekDersHavuzu",
              "ID LONG, MeslekKodu TEXT(10), MeslekOgrenciTuru TEXT(10), MeslekOgrenimDurumu TEXT(1),"
              " MeslekOgrenimYili LONG, Donem LONG, MeslekDersKodu TEXT(10), MeslekKayitSira LONG",
              {"2, '1010', 'Kalfa', 'İ', 1, 1, 'MAT', 2", "2, '1010', 'Kalfa', 'İ', 3, 1, 'BER1', 1",
               "2, '1010', 'Kalfa', 'İ', 1, 2, 'MAT', 3", "2, '1010', 'Kalfa', 'B', 9, 1, 'MAT', 1"});
        table("Sinif",
              "SinifAdi TEXT(10), SinifOgretmeni TEXT(30), EgtDerslik_1 TEXT(5), EgtBaslangic_1 TEXT(5)",
              {"'9A', 'Can', 'B2', '13:00'", "'9B', 'Ece', 'A1', '08:30'", "'10A', '', '', ''"});
    }

    void makeStudents() {
        table(
            "OgrenciBilgisi",
            "Ogr_Numarasi TEXT(15), Ogr_MeslekKod TEXT(10), Ogr_Kayit_No LONG, Ogr_Adi TEXT(30), Ogr_Soyadi "
            "TEXT(30),"
            " Ogr_Mernis TEXT(11), Ogr_Sifre TEXT(4), Ogr_Seviye TEXT(10), Ogr_Sinif TEXT(10), DersID LONG,"
            " Ogr_Cinsiyeti TEXT(1), Ogr_Usta_Ogreticisi TEXT(30), Ogr_Koordinator_Ogretmen TEXT(50),"
            " Ogr_calistigi_isyerinin_adi TEXT(50), Ogr_calistigi_isyeri_adresi1 TEXT(50),"
            " Ogr_calistigi_isyeri_adresi2 TEXT(50), Ogr_calistigi_isden_ayrilis_tarihi TEXT(10),"
            " Ogr_Ayrilis_Nedeni TEXT(30), Ogr_Kayit_Tarihi TEXT(10), CONSTRAINT indOgrNo PRIMARY KEY "
            "(Ogr_Numarasi)",
            {"'101000098', '1010', 5, 'Ali', 'Yılmaz', '12345678901', '1234', '1', '9A', 2, 'E', 'Usta Bir',"
             " 'Can Ak', 'Berber Veli', 'a1', 'a2', '', '', '15.09.2008'",
             "'101000099', '1010', 7, 'İnci ', 'Demir', '', '1111', '2', '9B', 2, 'K', 'Usta Bir', '',"
             " 'Berber Veli ', 'a1', 'a2', '', '', '16.09.2008'",
             "'10200001', '1020', 6, 'Cem', 'Kaya', NULL, '', 'MEZUN', 'YOK', 1, 'E', NULL, NULL,"
             " 'Lokanta', NULL, NULL, NULL, NULL, '01-06-2004'",
             "'101000100', '1010', 4, 'Ece', 'O''Neil', NULL, NULL, 'BİTİRME', NULL, NULL, 'K', '', 'Can Ak',"
             " '', '', '', '01.01.2009', 'terk', NULL"});
        table("BitirmeSinavlari", "B_Ogr_Numarasi TEXT(15), B_Ogr_Adi TEXT(30), B_Ogr_Soyadi TEXT(30)",
              {"'101000098 ', 'Ali', 'Yılmaz'"});
        table("Devam",
              "D_Ogr_Numarasi TEXT(15), D_Ogr_Adi TEXT(30), D_Ogr_Soyadi TEXT(30), D_Donem LONG, D_Ozursuz "
              "LONG,"
              " D_Izin LONG",
              {"'101000098', 'Ali', 'Yılmaz', 1, 3, 0", "'101000098', 'Ali', 'Yılmaz', 2, 0, 0",
               "'101000099', 'İnci', 'Demir', 1, 0, 2"});
        table("Notlar",
              "N_Ogr_Numarasi TEXT(15), N_Ogr_Adi TEXT(30), N_Ogr_Soyadi TEXT(30), Ortalama TEXT(6)",
              {"'101000098', 'Ali', 'Yılmaz', '85'", "' 101000098', 'ali', 'YILMAZ', 'M'"});
        table("NotOrtalama", "OgrNo TEXT(15), OgrAd TEXT(30), OgrSoyAd TEXT(30), OgrDonem LONG, Kilit YESNO",
              {"'101000098', 'Ali', 'Yılmaz', 1, FALSE"});
        table("Ogrenci_Isyerleri",
              "Ogr_No TEXT(15), Ogr_Adi TEXT(30), Ogr_Soyadi TEXT(30), Ogr_Sira LONG, Ogr_isyerinin_adi "
              "TEXT(50),"
              " Ogr_isyeri_adresi1 TEXT(50), Ogr_isyeri_adresi2 TEXT(50)",
              {"'101000098', 'Ali', 'Yılmaz', 2, 'Berber Veli', 'a1', 'a2'",
               "'101000098', 'Ali', 'Yılmaz', 1, 'Lokanta', '', ''"});
        table("Sigorta_Devamsizlik",
              "D_OgrNo TEXT(15), D_Ogr_Adi TEXT(30), D_Ogr_Soyadi TEXT(30), D_Yil LONG, D_Ay_Kod TEXT(2)",
              {"'101000098', 'Ali', 'Yılmaz', 2008, '9'", "'101000098', 'Ali', 'Yılmaz', 2008, '10'"});
    }
};

TEST_F(OwnStatements, UsersRightsAndConstants) {
    makeUsers();
    run({
        {"SELECT * FROM SabitBilgiler;", {}, " Atatürk MEM |2008-2009"},
        {"Select * From Kullanici", {}, "admin |1; Ayşe|x"},
        {"Select YazmaHakki , GirisHakki From ProgramHaklari Where KullaniciAdi = 'Ayşe' And ProgramAdi = "
         "'Sınıf Bilgileri'",
         {},
         "1|1"},
        {"Select YazmaHakki , GirisHakki From ProgramHaklari Where KullaniciAdi = ? And ProgramAdi = ?",
         {"AYŞE", "sınıf bilgileri"},
         "1|1"},
        {"Select YazmaHakki, GirisHakki From ProgramHaklari Where KullaniciAdi = 'admin' And ProgramAdi in "
         "('Devamsızlık Girişi','Ders Bazında Devamsızlık Girişi','Sınıf ve Öğrenci Bazında Devamsızlık "
         "Girişi') "
         "group by YazmaHakki,GirisHakki order by YazmaHakki desc;",
         {},
         "1|1; 0|1"},
        {"Select YazmaHakki , GirisHakki From ProgramHaklari Where KullaniciAdi = 'admin' And ProgramAdi in "
         "('Devamsızlık Girişi','Ders Bazında Devamsızlık Girişi') group by YazmaHakki order by YazmaHakki "
         "desc;",
         {},
         "1|1; 0|1"},
        {"UPDATE ProgramHaklari SET ProgramAdi='Ara Sınav Notu Girişi (Meslek - Ders)' "
         "WHERE ProgramAdi='Ara Sınav Notu Girişi (Ders Bazında)'",
         {},
         "1",
         "SELECT Count(*) FROM ProgramHaklari WHERE ProgramAdi LIKE '*(Meslek - Ders)'",
         "1"},
        {"Delete * from programhaklari where kullaniciadi = 'ADMİN'",
         {},
         "3",
         "SELECT KullaniciAdi FROM ProgramHaklari",
         "Ayşe"},
        {"SELECT * FROM AsgariUcret WHERE Yil = 2008 AND Ay = 7;", {}, "2008|7|21.2900|18.1200|E"},
        {"SELECT * FROM AsgariUcret WHERE Yil = ? AND Ay = ?;", {2009, 1}, "2009|1|22.2000|18.9000|∅"},
        {"UPDATE AsgariUcret set YtlVar='E' WHERE Yil>2008",
         {},
         "1",
         "SELECT Yil FROM AsgariUcret WHERE YtlVar='e'",
         "2008; 2009"},
    });
}

TEST_F(OwnStatements, DefinitionsCoursesAndClasses) {
    makeReference();
    makeStudents();
    run({
        {"SELECT * FROM parametrik_giris WHERE TA_tanim_GRUP= 'Bölüm' AND TA_tanim_Kod= '1010' AND ID=2",
         {},
         "Bölüm|1010|BERBERLİK|BRB|2|01.07.2005"},
        {"SELECT ta_tanim_aciklama FROM parametrik_giris WHERE TA_tanim_GRUP= ? AND TA_tanim_Kod= ? AND ID=?",
         {"BÖLÜM", "1010", 1},
         "Berberlik (eski)"},
        {"SELECT Ta_Tanim_Kod FROM Parametrik_giris WHERE Ta_tanim_aciklama = 'berberlik' AND Ta_Tanim_Grup "
         "= 'Bölüm' AND ID=2",
         {},
         "1010"},
        {"SELECT Ta_Tanim_Kod FROM Parametrik_giris WHERE UCase(Ta_tanim_aciklama) like 'AŞÇ*' AND "
         "Ta_Tanim_Grup = 'Bölüm'",
         {},
         "1020"},
        {"SELECT ta_tanim_kod FROM Parametrik_giris WHERE ta_tanim_grup='KanunMd' AND "
         "trim(ta_tanim_aciklama)='16. madde'",
         {},
         ""},
        {"SELECT Ta_Tanim_Kod FROM Parametrik_giris WHERE Ta_Tanim_Grup='Bölüm' and ID=2 ORDER BY "
         "Ta_Tanim_Kod;",
         {},
         "1010; 1020"},
        {"SELECT Ta_tanim_aciklama FROM parametrik_giris WHERE TA_tanim_GRUP= 'Semt Kodu' ORDER BY "
         "TA_tanim_aciklama",
         {},
         "Çamlıca; Şişli"},
        {"SELECT Ta_tanim_aciklama FROM Parametrik_Giris  WHERE ta_tanim_grup='MeslekOda' ORDER BY "
         "ta_tanim_aciklama",
         {},
         "Berberler"},
        {"DELETE * FROM Parametrik_giris WHERE Ta_Tanim_Grup='ÖğrenimDr'", {}, "1"},
        {"INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_tanim_aciklama,Ta_Tanim_Kod) VALUES "
         "('ÖğrenimDr','Lisans Mezunu', '60')",
         {},
         "1",
         "SELECT Ta_Tanim_Kod FROM Parametrik_giris WHERE Ta_Tanim_Grup='öğrenimdr'",
         "60"},
        {"Select max(MeslekOgrenimYili) as mx from MeslekDersHavuzu where ID=2 and MeslekKodu='1010' and "
         "MeslekOgrenimDurumu='İ'",
         {},
         "3"},
        {"Select max(MeslekOgrenimYili) as mx from MeslekDersHavuzu where ID=? and MeslekKodu=? and "
         "MeslekOgrenimDurumu=?",
         {2, "9999", "İ"},
         "∅"},
        {"SELECT DersAdi FROM DersHavuzu where id=3 and DersKodu='PUYG.'", {}, "PRATİK UYGULAMA"},
        {"SELECT DersTuru, DersUygulama FROM DersHavuzu WHERE DersKodu='mat'", {}, "K|0"},
        {"SELECT DersKodu FROM DersHavuzu WHERE ID=2 order by DersTuru,DersAdi", {}, "MAT; TÜR; BER1"},
        {"SELECT MeslekDersKodu, Donem FROM MeslekDersHavuzu WHERE MeslekOgrenimDurumu<>'B' ORDER BY "
         "MeslekKayitSira,MeslekOgrenimYili;",
         {},
         "BER1|1; MAT|1; MAT|2"},
        {"SELECT MeslekDersKodu FROM MeslekDersHavuzu WHERE MeslekOgrenimDurumu<>'B' "
         "ORDER BY Donem,MeslekOgrenimYili,MeslekKayitSira;",
         {},
         "MAT; BER1; MAT"},
        {"select MeslekDersKodu from MeslekDersHavuzu where MeslekOgrenciTuru='Kalfa' and MeslekKodu='1010' "
         "and ID = 2 "
         "group by MeslekDersKodu",
         {},
         "BER1; MAT"},
        {"UPDATE MeslekDersHavuzu SET MeslekKayitSira=9 WHERE MeslekDersKodu='BER1'", {}, "1"},
        {"DELETE FROM Dershavuzu WHERE DersKodu='TÜR'", {}, "1", "SELECT Count(*) FROM DersHavuzu", "3"},
        {"SELECT SinifAdi FROM Sinif ORDER BY SinifAdi;", {}, "10A; 9A; 9B"},
        {"SELECT Ogr_Sinif FROM OgrenciBilgisi where Ogr_Sinif not in (SELECT SinifAdi FROM Sinif ORDER BY "
         "SinifAdi) "
         "GROUP BY Ogr_Sinif",
         {},
         "YOK"},
        {"SELECT COUNT(Ogr_Sinif) AS OgrSay FROM OgrenciBilgisi WHERE Ogr_Sinif='9a'", {}, "1"},
        {"select SinifAdi from sinif where egtderslik_1<>'' order by egtbaslangic_1", {}, "9B; 9A"},
        {"Select Ogr_Numarasi,Ogr_Adi,Ogr_Soyadi, s.* from OgrenciBilgisi as O, sinif as S where "
         "Ogr_Sinif=SinifAdi and ogr_sinif in "
         "(select SinifAdi from sinif where egtderslik_1<>'' group by SinifAdi) order by "
         "Ogr_Sinif,Ogr_Numarasi",
         {},
         "101000098|Ali|Yılmaz|9A|Can|B2|13:00; 101000099|İnci |Demir|9B|Ece|A1|08:30"},
        {"SELECT DISTINCT PG.ID, PG.Ta_Tanim_Kod, PG.Ta_tanim_aciklama,PG.YururlulukTarihi FROM "
         "Parametrik_giris PG, OgrenciBilgisi OB "
         "WHERE PG.Ta_Tanim_Grup = 'Bölüm' AND PG.Ta_Tanim_Kod = OB.Ogr_MeslekKod AND PG.ID = OB.DersID "
         "ORDER BY PG.ID, PG.Ta_tanim_aciklama;",
         {},
         "2|1010|BERBERLİK|01.07.2005"},
        {"SELECT DISTINCT Ogr_Seviye FROM OgrenciBilgisi WHERE Ogr_Seviye <> '' ORDER BY Ogr_Seviye;",
         {},
         "1; 2; BİTİRME; MEZUN"},
        {" SELECT Ogr_Numarasi FROM ogrencibilgisi WHERE TRIM(Ogr_MeslekKod)='1010' AND DersID=2 AND "
         "Ogr_Seviye IN ('1','2')  "
         "AND Ogr_Sinif IN ('9B','9A')  ORDER BY ogr_numarasi;",
         {},
         "101000098; 101000099"},
        {"UPDATE OgrenciBilgisi SET Ogr_Sinif='9C' WHERE Ogr_Sinif='9A'", {}, "1"},
        {"UPDATE Sinif SET SinifAdi='9C', SinifOgretmeni='Naz' WHERE SinifAdi='9A'",
         {},
         "1",
         "SELECT SinifOgretmeni FROM Sinif WHERE SinifAdi='9c'",
         "Naz"},
        {"UPDATE OgrenciBilgisi SET Ogr_Sinif='' WHERE Ogr_Sinif='9B'", {}, "1"},
        {"DELETE * FROM sinif WHERE sinifadi='9B'", {}, "1", "SELECT SinifAdi FROM Sinif", "9C; 10A"},
    });
}

TEST_F(OwnStatements, StudentsAndNumbers) {
    makeStudents();
    run({
        {"Select Ogr_Adi from ogrencibilgisi where dersID=1", {}, "Cem"},
        {"Select Ogr_Adi From OgrenciBilgisi Where TRIM(Ogr_Mernis)='12345678901'", {}, "Ali"},
        {"SELECT Ogr_Adi FROM OgrenciBilgisi WHERE Ogr_Mernis = ?", {"12345678901"}, "Ali"},
        {"SELECT MAX(Ogr_Kayit_No) AS Buyuk FROM OgrenciBilgisi;", {}, "7"},
        {"SELECT MID(TRIM(Ogr_Numarasi), 5) AS KarakterNumara, VAL(MID(TRIM(Ogr_Numarasi) ,5)) AS "
         "SayisalNumara FROM OgrenciBilgisi "
         "WHERE Ogr_MeslekKod = '1010' ORDER BY VAL(TRIM(Ogr_Numarasi)) DESC, Ogr_Numarasi DESC;",
         {},
         "00100|100; 00099|99; 00098|98"},
        {" Select Ogr_Numarasi From OgrenciBilgisi Where trim(ogr_meslekkod)='1020'", {}, "10200001"},
        {"Select Ogr_Numarasi from OgrenciBilgisi where Ogr_numarasi <'101000099' order by ogr_numarasi "
         "DESC;",
         {},
         "101000098"},
        {"Select Ogr_Numarasi from OgrenciBilgisi where Ogr_numarasi >? order by ogr_numarasi asc",
         {"101000099"},
         "101000100; 10200001"},
        {"SELECT COUNT(*) AS Kac_Tane FROM OgrenciBilgisi WHERE Ogr_Sifre = '1111' AND trim(Ogr_Numarasi) <> "
         "'101000098'",
         {},
         "1"},
        {"SELECT Ogr_Numarasi FROM OgrenciBilgisi WHERE (trim(ogr_numarasi)='10200001' and dersID=1) "
         "OR (trim(Ogr_Adi) & ' ' & trim(Ogr_Soyadi))='inci DEMİR'",
         {},
         "101000099; 10200001"},
        {"SELECT Ogr_Numarasi FROM OgrenciBilgisi WHERE (trim(ogr_numarasi)=? and dersID=?) "
         "OR (trim(Ogr_Adi) & ' ' & trim(Ogr_Soyadi))=?",
         {"x", 2, "Ece O'Neil"},
         "101000100"},
        {"UPDATE BitirmeSinavlari SET B_Ogr_Numarasi = '10109' where trim(B_Ogr_Numarasi) = '101000098'",
         {},
         "1"},
        {"UPDATE Devam SET D_Ogr_Numarasi = '10109' where trim(D_Ogr_Numarasi) = '101000098'", {}, "2"},
        {"UPDATE Notlar SET N_Ogr_Numarasi = '10109' where trim(N_Ogr_Numarasi) = '101000098'", {}, "2"},
        {"UPDATE NotOrtalama SET OgrNo = '10109' where trim(OgrNo) = '101000098'", {}, "1"},
        {"UPDATE Ogrenci_Isyerleri SET Ogr_No = '10109' where trim(Ogr_No) = '101000098'", {}, "2"},
        {"UPDATE OgrenciBilgisi SET Ogr_Numarasi = '10109', Ogr_MeslekKod = '1011' where trim(Ogr_Numarasi) "
         "= '101000098' "
         "and trim(Ogr_MeslekKod) = '1010'",
         {},
         "1"},
        {"UPDATE OgrenciBilgisi SET Ogr_Kayit_No = '55' where trim(Ogr_Kayit_No) = '5'",
         {},
         "1",
         "SELECT Ogr_Kayit_No FROM OgrenciBilgisi WHERE Ogr_Numarasi='10109'",
         "55"},
        {"UPDATE OgrenciBilgisi SET Ogr_Numarasi = ?, Ogr_Kayit_No = ?, Ogr_MeslekKod = ?  where "
         "trim(Ogr_Numarasi) = ? and "
         "trim(Ogr_Kayit_No) = ? and trim(Ogr_MeslekKod) = ?",
         {"101000098", "5", "1010", "10109", "55", "1011"},
         "1",
         "SELECT Ogr_Adi FROM OgrenciBilgisi WHERE Ogr_Kayit_No=5",
         "Ali"},
        {"UPDATE Sigorta_Devamsizlik SET D_Ogr_Adi = 'Alp', D_Ogr_Soyadi = 'Er' where trim(D_OgrNo) = "
         "'101000098' "
         "and trim(D_Ogr_Adi) = 'ALİ' and trim(D_Ogr_Soyadi) = 'yılmaz'",
         {},
         "2"},
        {"UPDATE Notlar SET N_Ogr_Adi = 'Alp', N_Ogr_Soyadi = 'Er' where trim(N_Ogr_Numarasi) = '10109' and "
         "trim(N_Ogr_Adi) = 'Ali' "
         "and trim(N_Ogr_Soyadi) = 'Yılmaz'",
         {},
         "2"},
        {"DELETE FROM devam WHERE trim(d_ogr_numarasi)='10109' AND d_donem=1", {}, "1"},
        {"UPDATE OgrenciBilgisi set Ogr_Ayrilis_Nedeni='', Ogr_calistigi_isden_ayrilis_tarihi='' where "
         "trim(Ogr_Numarasi)='101000100' "
         "and trim(Ogr_Adi)='Ece' and trim(Ogr_Soyadi)='O''Neil'",
         {},
         "1"},
        {"DELETE * FROM Notlar where trim(N_Ogr_Numarasi)='10109' and trim(N_Ogr_Adi)='Alp' and "
         "trim(N_Ogr_Soyadi)='Er'",
         {},
         "2"},
        {"delete from Sigorta_Devamsizlik where trim(D_OgrNo)='101000098' and trim(D_Yil)='2008' and "
         "trim(D_Ay_Kod)='9' "
         "and trim(D_Ogr_Adi)='Alp' and trim(D_Ogr_Soyadi)='Er'",
         {},
         "1",
         "SELECT D_Ay_Kod FROM Sigorta_Devamsizlik",
         "10"},
        {"SELECT D_Ogr_Numarasi, Sum(D_Ozursuz + D_Izin) AS Toplam FROM Devam WHERE D_Ozursuz > 0 OR D_Izin "
         "> 0 "
         "GROUP BY D_Ogr_Numarasi",
         {},
         "101000099|2"},
        {"DELETE * FROM OgrenciBilgisi WHERE trim(Ogr_Numarasi)='10200001' AND trim(Ogr_Adi)='Cem' AND "
         "trim(Ogr_Soyadi)='Kaya'",
         {},
         "1",
         "SELECT Count(*) FROM OgrenciBilgisi",
         "3"},
    });
}

TEST_F(OwnStatements, WorkplacesAndCoordinators) {
    makeStudents();
    table("isletme_Bilgisi",
          "K_Adi TEXT(50), K_isletme_Tipi TEXT(1), K_uretim_alani TEXT(30), K_MeslekOdasi TEXT(30), "
          "K_isletmeKatkiIstemiyor TEXT(1)",
          {"'Lokanta', '0', '\"', 'Aşçılar', ''", "'Berber Veli', '0', 'Saç', 'Berberler', ''",
           "'Çınar', '1', 'Saç', 'Berberler', ''", "'Ilgaz', NULL, 'Ağda', 'Berberler', ''"});
    table("KoordinatorBilgisi",
          "KO_Ogretmen_adi TEXT(30), Ko_ogretmen_soyadi TEXT(30), KO_ogretmen_bolum_adi TEXT(30)",
          {"'Can', 'Ak', 'Berber'", "'Ece ', 'Su', 'Aşçı'", "'Naz', 'Er', 'BERBER'"});
    table("Koord_GorevGiris_Cizelgesi", "KG_Adi TEXT(30), KG_Soyadi TEXT(30), KG_Isletme_Adi TEXT(50)",
          {"'Can', 'Ak', 'Lokanta'", "'Can', 'Ak', 'Berber Veli'", "'Naz', 'Er', 'Lokanta'"});
    table("OGRETMEN_HAFTALIK", "KG_Adi TEXT(30), KG_Isletme_Adi TEXT(50)", {"'Can', 'x'", "'Can', 'a'"});
    table("OgretmenHaftalikZaman", "Ogretmen_Adi TEXT(30), Ogretmen_Soyadi TEXT(30)", {"'Can', 'Ak'"});
    run({
        {" SELECT k_adi FROM isletme_bilgisi Where k_isletme_tipi <>'1' ORDER BY k_adi",
         {},
         "Berber Veli; Lokanta"},
        {"SELECT distinct K_uretim_alani FROM isletme_Bilgisi WHERE K_MeslekOdasi= 'Berberler' and "
         "trim(K_uretim_alani) <> '\"' "
         "order by K_uretim_alani asc",
         {},
         "Ağda; Saç"},
        {"SELECT K_adi FROM isletme_bilgisi WHERE trim(K_adi) = 'BERBER VELİ'", {}, "Berber Veli"},
        {"SELECT sum (iif(Ogr_Cinsiyeti='E',1,0)) as Esay, sum (iif(Ogr_Cinsiyeti='K',1,0)) as Ksay FROM "
         "ogrencibilgisi "
         "WHERE Trim(ogr_calistigi_isyerinin_adi)='Berber Veli' AND Ogr_Usta_Ogreticisi='Usta Bir'",
         {},
         "1|1"},
        {"update Ogrenci_Isyerleri set Ogr_isyeri_adresi1='y1', Ogr_isyeri_adresi2='y2', "
         "Ogr_isyerinin_adi='Kuaför Veli' where "
         "trim(Ogr_isyerinin_adi) = 'Berber Veli'",
         {},
         "1"},
        {"update OgrenciBilgisi set Ogr_calistigi_isyeri_adresi1='y1', Ogr_calistigi_isyeri_adresi2='y2', "
         "Ogr_calistigi_isyerinin_adi='Kuaför Veli' where trim(Ogr_calistigi_isyerinin_adi) = 'Berber Veli'",
         {},
         "2",
         "SELECT Count(*) FROM OgrenciBilgisi WHERE Ogr_calistigi_isyeri_adresi2='Y2'",
         "2"},
        {"UPDATE Ogrencibilgisi SET Ogr_calistigi_isyerinin_adi='Berber Veli'  WHERE "
         "Ogr_calistigi_isyerinin_adi='Kuaför Veli'",
         {},
         "2"},
        {"UPDATE isletme_bilgisi SET K_isletmeKatkiIstemiyor='E' Where K_adi='Lokanta'", {}, "1"},
        {"delete from isletme_Bilgisi where K_Adi='Çınar'", {}, "1"},
        {" Select Ogr_isyerinin_adi  From Ogrenci_Isyerleri  Where  trim(Ogr_no)='101000098'  And "
         "trim(Ogr_adi)='Ali'  "
         "And trim(Ogr_soyadi)='Yılmaz'  Order by ogr_sira",
         {},
         "Lokanta; Kuaför Veli"},
        {"SELECT KO_Ogretmen_adi,Ko_ogretmen_soyadi FROM koordinatorbilgisi WHERE trim(Ko_ogretmen_adi) = "
         "'Ece' "
         "And Trim(KO_ogretmen_soyadi) = 'Su'",
         {},
         "Ece |Su"},
        {"SELECT DISTINCT KO_ogretmen_bolum_adi FROM KoordinatorBilgisi ORDER BY KO_ogretmen_bolum_adi;",
         {},
         "Aşçı; Berber"},
        {" Select distinct ogr_calistigi_isyerinin_adi From ogrencibilgisi Where "
         "trim(ogr_koordinator_ogretmen)='Can Ak'",
         {},
         "; Berber Veli"},
        {"SELECT DISTINCT ogrencibilgisi.Ogr_calistigi_isyerinin_adi FROM ogrencibilgisi WHERE "
         "Trim([ogr_koordinator_ogretmen])='Can Ak' "
         "AND Trim(ogrencibilgisi.Ogr_calistigi_isyerinin_adi)<>''",
         {},
         "Berber Veli"},
        {" Select count(ogr_numarasi) as sayi From ogrencibilgisi Where trim(ogr_koordinator_ogretmen)='Can "
         "Ak' "
         "And ogr_calistigi_isyerinin_adi='Berber Veli' And trim(ogr_calistigi_isden_ayrilis_tarihi)=''",
         {},
         "1"},
        // Nothing is equal to Null: the row without a coordinator stays as it is.
        {"UPDATE OgrenciBilgisi SET Ogr_Koordinator_Ogretmen = '' WHERE Ogr_Koordinator_Ogretmen = Null;",
         {},
         "0"},
        {"UPDATE OgrenciBilgisi SET DersID = 2 WHERE DersID = Null;",
         {},
         "0",
         "SELECT Count(*) FROM OgrenciBilgisi WHERE DersID IS NULL",
         "1"},
        {"UPDATE OgrenciBilgisi SET DersID = 2 WHERE DersID = 0;", {}, "0"},
        {"SELECT Ogr_MeslekKod, DersID, COUNT(*) AS KacKisi FROM OgrenciBilgisi WHERE "
         "Ogr_calistigi_isden_ayrilis_tarihi = '' "
         "AND Ogr_Ayrilis_Nedeni = '' AND ISNUMERIC(Left(Ogr_Seviye, 1)) GROUP BY Ogr_MeslekKod, DersID ",
         {},
         "1010|2|2"},
        {"SELECT Ogr_calistigi_isyerinin_adi, Ogr_MeslekKod, DersID, COUNT(*) AS KacKisi FROM OgrenciBilgisi "
         "WHERE ISNUMERIC(Left(Ogr_Seviye, 1)) GROUP BY Ogr_calistigi_isyerinin_adi, Ogr_MeslekKod, DersID "
         "ORDER BY Ogr_calistigi_isyerinin_adi, Ogr_MeslekKod, DersID;",
         {},
         "Berber Veli|1010|2|2"},
        {"UPDATE OgrenciBilgisi SET Ogr_Koordinator_Ogretmen = 'Naz Er' WHERE Ogr_MeslekKod='1010' AND "
         "DersID=2 "
         "AND Ogr_calistigi_isden_ayrilis_tarihi = '' AND Ogr_Ayrilis_Nedeni = '' AND "
         "ISNUMERIC(Left(Ogr_Seviye, 1)) "
         "AND TRIM(Ogr_Koordinator_Ogretmen) = '' ",
         {},
         "1",
         "SELECT Ogr_Adi FROM OgrenciBilgisi WHERE Ogr_Koordinator_Ogretmen='Naz Er'",
         "İnci "},
        {"UPDATE OgrenciBilgisi SET Ogr_Koordinator_Ogretmen = '' WHERE TRIM(Ogr_Koordinator_Ogretmen) = "
         "'naz er'",
         {},
         "1"},
        {"SELECT KG_Isletme_Adi FROM OGRETMEN_HAFTALIK ORDER BY KG_Isletme_Adi", {}, "a; x"},
        {"SELECT KG_Isletme_Adi FROM Koord_GorevGiris_Cizelgesi WHERE KG_Adi='Naz' AND KG_Soyadi='Er'",
         {},
         "Lokanta"},
        {"DELETE * FROM Koord_GorevGiris_Cizelgesi WHERE KG_Adi = 'Can' AND KG_Soyadi = 'Ak'", {}, "2"},
        {"DELETE * FROM OgretmenHaftalikZaman WHERE Ogretmen_Adi='Can' AND Ogretmen_Soyadi='Ak'", {}, "1"},
        {"DELETE * FROM OGRETMEN_HAFTALIK", {}, "2"},
    });
}

TEST_F(OwnStatements, MarksAndAbsences) {
    const char* bands[] = {"5, '0', '44.99', '1'", "4, '45', '59.99', '2'", "1, '85', '100', '5'"};
    for (const char* name : {"PuanNotTablo", "PuanNotTablo2", "PuanNotTablo4"})
        table(name, "Sira LONG, Baslama TEXT(6), Bitis TEXT(6), PuanNot TEXT(3)",
              {bands[0], bands[1], bands[2]});
    run({
        {"SELECT * FROM PuanNotTablo ORDER BY Sira;", {}, "1|85|100|5; 4|45|59.99|2; 5|0|44.99|1"},
        {"SELECT PuanNot FROM PuanNotTablo2 ORDER BY Sira;", {}, "5; 2; 1"},
        {"SELECT PuanNot FROM PuanNotTablo4 WHERE Val(Baslama)<=59.5 AND Val(Bitis)>=59.5 ORDER BY Sira;",
         {},
         "2"},
        {"CREATE TABLE OkulDevamsizlik (OgrNo TEXT(15),tarih TEXT(10),tip TEXT(1),donem TEXT(15))", {}, "0"},
        {"CREATE TABLE IsletmeDevamsizliklari (OgrNo TEXT(15),isyeriAdi TEXT(50),tarih TEXT(10),devamsizlik "
         "TEXT(2))",
         {},
         "0"},
        {"CREATE TABLE DevamsizlikFormu (OgrNo TEXT(15),Ocak TEXT(2),Subat TEXT(2),Mart TEXT(2),Nisan "
         "TEXT(2), Mayis TEXT(2), "
         "Haziran TEXT(2), Temmuz TEXT(2), Agustos TEXT(2), Eylul TEXT(2), Ekim TEXT(2), Kasim TEXT(2), "
         "Aralik TEXT(2))",
         {},
         "0"},
        {"ALTER TABLE OkulDevamsizlik ADD COLUMN Ders_Yili TEXT(9)", {}, "0"},
        {"INSERT INTO OkulDevamsizlik VALUES ('101000098','15.09.2008','D','1.DÖNEM','2008-2009')", {}, "1"},
        {"INSERT INTO OkulDevamsizlik (OgrNo,tarih,tip,Ders_Yili) VALUES (?,?,?,?)",
         {"101000098 ", "16.10.2008", "Y", "2008-2009"},
         "1"},
        {"Select tip From OkulDevamsizlik Where OgrNo='101000098' And Ders_Yili='2008-2009'", {}, "D; Y"},
        {"SELECT Sum(Switch(tip='D',1,tip='Y',0.5,tip='G',0.1,True,0)) FROM OkulDevamsizlik WHERE "
         "trim(OgrNo)='101000098' "
         "AND Ders_Yili='2008-2009'",
         {},
         "1.5"},
        {"SELECT tarih FROM OkulDevamsizlik WHERE Mid(tarih,4,2)='10' AND DateValue(tarih)>#9/30/2008#",
         {},
         "16.10.2008"},
        {"SELECT * FROM DevamsizlikFormu", {}, ""},
    });
}

} // namespace
