// Which records the checks find, and which they leave alone.
#include "records/record_checks.h"

#include "records/class_counts.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

using Fields = std::vector<std::pair<const char*, const char*>>;

struct RecordChecksTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    FixedClock clock{QDate(2010, 3, 1)};

    void SetUp() override {
        centre.databases.connect();
        centre.addProfession("1101", "Otomotiv Mekanikerliği");
        centre.level().execute("INSERT INTO Sinif (SinifAdi) VALUES ('11-A')");
        centre.databases.workplaces().sql().execute(
            "INSERT INTO isletme_Bilgisi (K_Adi) VALUES ('Işık Oto')");
    }
    // A student without fault, but for `fields`.
    void add(const QString& number, int registrationNo, const Fields& fields = {}) {
        centre.addStudent(number, registrationNo, "1101", "Ad" + number, "Soyad");
        set(number, {{"Ogr_Mernis", ""},
                     {"Ogr_Cinsiyeti", "E"},
                     {"Ogr_Sinif", "11-a"},
                     {"Ogr_Dogum_Tarihi", "05.09.1994"},
                     {"Ogr_Kayit_Tarihi", "15.09.2009"},
                     {"Ogr_calistigi_isyerinin_adi", "IŞIK OTO"},
                     {"Ogr_calistigi_ise_giris_tarihi", "16.09.2009"},
                     {"Ogr_Cep_Telefon", "0 (532) 111 22 33"}});
        set(number, fields);
    }
    void set(const QString& number, const Fields& fields) {
        for (const auto& [field, value] : fields)
            centre.level().execute("UPDATE OgrenciBilgisi SET " + std::string(field) +
                                       " = ? WHERE Ogr_Numarasi = ?",
                                   Parameters{QString(value), number});
    }
    QString found(const QStringList& keys) {
        QStringList lines;
        for (const RecordFinding& each : checkRecords(centre.databases, keys, clock, dialogs).list)
            lines << each.number + ": " + each.text;
        return lines.join('\n');
    }
    static QStringList allKeys() {
        QStringList keys;
        for (const RecordCheck& check : recordChecks())
            keys << check.key;
        keys.removeOne("kimlikYok");
        return keys;
    }
};

TEST_F(RecordChecksTest, ARecordWithoutFaultIsLeftAlone) {
    add("110100001", 1, {{"Ogr_Mernis", "10000000146"}});
    add("110100002", 2, {{"Ogr_Mernis", "10000000078"}, {"Ogr_Sifre", "a1b2"}});
    EXPECT_EQ(found(allKeys()), "");
    EXPECT_EQ(found({"kimlikYok"}), "");
}

TEST_F(RecordChecksTest, FaultsOfOneStudent) {
    struct Case {
        const char* check;
        Fields fields;
        const char* text; // after "110100001: "
    };
    const Case cases[] = {
        {"numara", {{"Ogr_MeslekKod", "1202"}}, "Kütük No 110100001, meslek koduyla (1202) başlamıyor."},
        {"kayitNo", {{"Ogr_Kayit_No", "0"}}, "Kayıt No yok."},
        {"adSoyad", {{"Ogr_Soyadi", "  "}}, "Soyadı boş."},
        {"kimlikYok", {}, "T.C. kimlik numarası boş."},
        {"kimlikHatali",
         {{"Ogr_Mernis", "10000000147"}},
         "10000000147 geçerli bir T.C. kimlik numarası değil."},
        {"kimlikHatali", {{"Ogr_Mernis", "1000000014"}}, "1000000014: 11 rakam olmalı."},
        {"sifre", {{"Ogr_Sifre", "a1b"}}, "Öğrenci şifresi dört karakter değil: a1b"},
        {"cinsiyet", {{"Ogr_Cinsiyeti", ""}}, "Cinsiyeti boş."},
        {"dogum", {{"Ogr_Dogum_Tarihi", "02.03.2010"}}, "Doğum tarihi ileride: 02.03.2010"},
        {"dogum", {{"Ogr_Nufus_Dogum_Tarihi", "06.09.1994"}}, "Doğum tarihi 05.09.1994, nüfusta 06.09.1994."},
        {"dogum", {{"Ogr_Dogum_Tarihi", ""}}, "Doğum tarihi boş."},
        {"dogum",
         {{"Ogr_Kayit_Tarihi", "05.09.1994"}},
         "Kayıt tarihi (05.09.1994) doğum tarihinden (05.09.1994) önce."},
        {"tarih",
         {{"Ogr_Sigorta_Giris_Tarihi", "31.02.2010"}},
         "31.02.2010 bir tarih değil (Sigorta giriş tarihi)"},
        {"tarih", {{"Ogr_Belge_Tarihi", "01.01.0209"}}, "01.01.0209 yılı olamaz (Belge tarihi)"},
        {"meslek", {{"Ogr_MeslekKod", "O'1"}}, "O'1 kodlu meslek (4. program) tanımlı değil."},
        {"meslek", {{"Ogr_MeslekKod", ""}}, "Mesleği boş."},
        {"anaMeslek", {{"Ogr_AnaMeslek_Kod", "99"}}, "99 kodlu ana meslek tanımlı değil."},
        {"sinif", {{"Ogr_Sinif", "12-Ç"}}, "“12-Ç” sınıfı tanımlı değil."},
        {"isyeri", {{"Ogr_calistigi_isyerinin_adi", "Yok"}}, "“Yok” işletmeler arasında yok."},
        {"isyersiz", {{"Ogr_calistigi_isyerinin_adi", ""}}, "İşe giriş tarihi (16.09.2009) var, işyeri yok."},
        {"girissiz",
         {{"Ogr_calistigi_ise_giris_tarihi", ""}},
         "İşyeri (IŞIK OTO) var, işe giriş tarihi yok."},
        {"madde16",
         {{"Ogr_Kanun_Maddesi", "16.madde"}, {"Ogr_calistigi_ise_giris_tarihi", "31.02.2010"}},
         "16. madde ile kayıtlı, geçerli bir işe giriş tarihi yok."},
        {"cikis",
         {{"Ogr_calistigi_ise_giris_tarihi", ""}, {"Ogr_calistigi_isden_ayrilis_tarihi", "01.02.2010"}},
         "İşten çıkış tarihi (01.02.2010) var, işe giriş tarihi yok."},
        {"tarihSirasi",
         {{"Ogr_calistigi_isden_ayrilis_tarihi", "15.09.2009"}},
         "Çıkış tarihi (15.09.2009) giriş tarihinden (16.09.2009) önce."},
        {"sonOdeme",
         {{"Ogr_SSK_SonOdeme_Tarihi", "01.02.2010"}},
         "SSK en son ödeme tarihi (01.02.2010) var, işten çıkış tarihi yok."},
        {"cepTelefonu", {{"Ogr_Cep_Telefon", "532 111"}}, "Cep telefonu hatalı: 532 111"},
    };
    for (const Case& c : cases) {
        centre.level().execute("DELETE FROM OgrenciBilgisi");
        add("110100001", 1, c.fields);
        EXPECT_EQ(found({c.check}), QString("110100001: ") + c.text) << c.check;
    }
    centre.level().execute("DELETE FROM OgrenciBilgisi");
    add("110", 1);
    add("1101A", 2);
    EXPECT_EQ(found({"numara"}), "110: Kütük No beş karakterden kısa: 110\n"
                                 "1101A: Kütük No sırasında harf var: 1101A");
}

TEST_F(RecordChecksTest, WhatTwoMayNotShare) {
    add("110100001", 1, {{"Ogr_Mernis", "10000000146"}, {"Ogr_Sifre", "abcd"}});
    add("110100002", 1, {{"Ogr_Mernis", "10000000146"}, {"Ogr_Sifre", "ABCD"}});
    add("110100003", 3);
    add("110100004", 4);
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Adi = 'ayşe' WHERE Ogr_Kayit_No >= 3");
    EXPECT_EQ(found({"ayniKayitNo"}), "110100001: 1: 110100002 Ad110100002 Soyad\n"
                                      "110100002: 1: 110100001 Ad110100001 Soyad");
    for (const char* key : {"ayniKimlik", "ayniSifre"})
        EXPECT_EQ(found({key}).count('\n'), 1) << key << ": empty ones are not compared";
    EXPECT_EQ(found({"ayniKisi"}), "110100003: ayşe Soyad  05.09.1994: 110100004 ayşe Soyad\n"
                                   "110100004: ayşe Soyad  05.09.1994: 110100003 ayşe Soyad");
    EXPECT_EQ(found({"ayniNumara"}), "");
}

TEST_F(RecordChecksTest, AStopIsReported) {
    add("110100001", 1);
    dialogs.cancelProgressAfter(2);
    const RecordFindings findings = checkRecords(centre.databases, allKeys(), clock, dialogs);
    EXPECT_TRUE(findings.stopped);
    EXPECT_EQ(findings.students, 1u);
}

TEST_F(RecordChecksTest, ClassesAreCountedBySexAndStage) {
    add("110100001", 1);
    add("110100002", 2, {{"Ogr_Cinsiyeti", "Kız"}, {"Ogr_Seviye", "2"}});
    add("110100003", 3, {{"Ogr_Cinsiyeti", ""}, {"Ogr_Seviye", "bitirme"}});
    add("110100004", 4, {{"Ogr_Cinsiyeti", "e"}, {"Ogr_Sinif", ""}, {"Ogr_Seviye", "MEZUN"}});
    centre.level().execute("INSERT INTO Sinif (SinifAdi) VALUES ('9-Ç')");
    const auto all = classCounts(centre.level(), CountedStudents::All);
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].className, "");
    EXPECT_EQ(all[0].stages[5], 1);
    EXPECT_EQ(all[1].className, "11-A");
    EXPECT_EQ(all[1].professions, "Otomotiv Mekanikerliği");
    EXPECT_EQ((std::array{all[1].girls, all[1].boys, all[1].unknown, all[1].total()}),
              (std::array{1, 1, 1, 3}));
    EXPECT_EQ((std::array{all[1].stages[0], all[1].stages[1], all[1].stages[4]}), (std::array{1, 1, 1}));
    EXPECT_EQ(all[2].total(), 0) << "a defined class without students is listed";
    EXPECT_EQ(sumOf(all).boys, 2);
    EXPECT_EQ(sumOf(classCounts(centre.level(), CountedStudents::InTraining)).total(), 2);
}

} // namespace
