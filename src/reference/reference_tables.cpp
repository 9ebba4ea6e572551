// reference/reference_tables.cpp — the tables of the reference data, with the code lists a new centre begins
// with.
#include "reference/reference_tables.h"

#include "reference/classes.h"
#include "reference/schooling.h"

namespace orvan {
namespace {

std::vector<jet::Value> definition(const char* group, const char* code, const char* description) {
    return {jet::Value(group), jet::Value(code), jet::Value(description)};
}

FirstRows firstDefinitions() {
    FirstRows first;
    first.fields = {"Ta_Tanim_Grup", "Ta_Tanim_Kod", "Ta_tanim_aciklama"};
    first.keyFields = 2;
    for (const SchoolingLevel& level : schoolingLevels())
        first.rows.push_back(definition("ÖğrenimDr", level.code, level.description));
    const char* const states[][2] = {
        {"0", "ADAY ÇIRAK"}, {"1", "1.DÖNEM"}, {"2", "2.DÖNEM"}, {"3", "3.DÖNEM"}, {"4", "4.DÖNEM"},
        {"5", "5.DÖNEM"},    {"6", "6.DÖNEM"}, {"7", "7.DÖNEM"}, {"8", "8.DÖNEM"}, {"10", "BİTİRME"},
        {"11", "DIŞARDAN"},  {"12", "GEÇTİ"},  {"13", "MEZUN"},
    };
    for (const auto& row : states)
        first.rows.push_back(definition("Donem", row[0], row[1]));
    // The two articles that rules know by the text stored with the student.
    first.rows.push_back(definition("KanunMd.", "16", "16.madde"));
    first.rows.push_back(definition("KanunMd.", "29", "29"));
    return first;
}

TableDeclaration definitions() {
    TableDeclaration table{DatabaseKind::Level, "Parametrik_giris", {}, {}, {}};
    table.fields = {
        textField("Ta_Tanim_Grup", 20, "Grup"),
        textField("Ta_Tanim_Kod", 15, "Kod"),
        textField("Ta_tanim_aciklama", 100, "Açıklama"),
        textField("Ta_Tanim_Kisaisim", 30, "Kısa isim"),
        textField("Ta_Tanim_Tescil_No", 30, "Tescil no"),
        textField("Ta_Tanim_Aciklama1", 100, "İkinci açıklama"),
        textField("Ta_Tanim_Egitim_Duzeyi", 30, "Eğitim düzeyi"),
        longField("Ta_Ilkogretim_Sure", "Eğitim süresi (ilköğretim)"),
        longField("Ta_Lise_Sure", "Eğitim süresi (lise)"),
        longField("Ta_Ustalik_Sure", "Eğitim süresi (ustalık)"),
        doubleField("TA_Tanim_prim_cirak_hastalik_sigortasi", "Çırak hastalık sigortası primi"),
        doubleField("TA_Tanim_prim_is_kazalari_hastalik_sigortasi",
                    "İş kazaları ve hastalık sigortası primi"),
        doubleField("TA_Tanim_prim_hastalik_sigortasi", "Hastalık sigortası primi"),
        doubleField("TA_Tanim_prim_malulluk_sigortasi", "Malullük sigortası primi"),
        doubleField("TA_Tanim_prim_Analik_sigortasi", "Analık sigortası primi"),
        textField("TA_Tanim_Tehlike_Sinifi", 10, "Tehlike sınıfı"),
        longField("ID", "Program"),
        textField("YururlulukTarihi", 10, "Yürürlük tarihi"),
    };
    table.indexes = {{"indGrupKod", {"Ta_Tanim_Grup", "Ta_Tanim_Kod", "ID"}, IndexDeclaration::Plain}};
    table.firstRows = {firstDefinitions()};
    table.emptying = {"DELETE FROM Parametrik_giris WHERE Ta_Tanim_Grup = 'Bölüm'",
                      "DELETE FROM Parametrik_giris WHERE Ta_Tanim_Grup = 'AnaMeslek'"};
    return table;
}

// A row without its date gets the day on which its curriculum came into force.
std::vector<std::string> datesInForce(const std::string& table, const std::string& field) {
    std::vector<std::string> statements;
    const char* const dates[] = {"03.07.2002", "01.07.2005", "12.09.2010", "15.09.2017"}; // curricula 1 to 4
    int version = 0;
    for (const char* date : dates)
        statements.push_back("UPDATE " + table + " SET " + field + " = '" + date +
                             "' WHERE ID = " + std::to_string(++version) + " AND (" + field + " IS NULL OR " +
                             field + " = '')");
    return statements;
}

TableDeclaration coursePool() {
    TableDeclaration table{DatabaseKind::Level, "DersHavuzu", {}, {}, {}};
    table.fields = {
        longField("ID", "Program"),
        textField("DersKodu", 10, "Ders kodu"),
        textField("DersAdi", 100, "Ders adı"),
        textField("DersKisaAdi", 20, "Kısa adı"),
        longField("DersHaftalikSaat", "Haftalık saat"),
        longField("DersToplamSaat", "Toplam saat"),
        textField("DersTuru", 1, "Ders türü"),
        yesNoField("DersUygulama", "Uygulama dersi"),
        yesNoField("DersTurkce", "Türkçe dersi"),
        textField("YururlulukTarihi", 10, "Yürürlük tarihi"),
        textField("Bitirme_Sinav_Turu", 10, "Bitirme sınavı türü"),
    };
    table.indexes = {{"indDers", {"ID", "DersKodu"}, IndexDeclaration::Unique},
                     {"indDersKodu", {"DersKodu"}, IndexDeclaration::Plain}};
    FirstRows practice;
    practice.fields = {"ID",           "DersKodu",   "DersAdi",         "DersTuru",
                       "DersUygulama", "DersTurkce", "YururlulukTarihi"};
    practice.keyFields = 2;
    practice.rows = {{jet::Value(3), jet::Value("PUYG."), jet::Value("PRATİK UYGULAMA"), jet::Value("M"),
                      jet::Value(true), jet::Value(false), jet::Value("12.09.2010")}};
    table.firstRows = {practice};
    table.corrections = datesInForce("DersHavuzu", "YururlulukTarihi");
    table.emptying = {"DELETE FROM DersHavuzu WHERE DersKodu <> 'PUYG.'"};
    return table;
}

TableDeclaration curriculum() {
    TableDeclaration table{DatabaseKind::Level, "MeslekDersHavuzu", {}, {}, {}};
    table.fields = {
        longField("ID", "Program"),
        textField("MeslekKodu", 15, "Meslek kodu"),
        textField("MeslekOgrenciTuru", 20, "Düzey"),
        textField("MeslekOgrenimDurumu", 1, "Öğrenim durumu"),
        longField("MeslekOgrenimYili", "Öğrenim yılı"),
        longField("Donem", "Dönem"),
        textField("MeslekDersKodu", 10, "Ders kodu"),
        longField("MeslekDersSaat", "Haftalık saat"),
        longField("MeslekToplamSaat", "Toplam saat"),
        longField("MeslekDersGecmeNotu", "Geçme notu"),
        yesNoField("MeslekUygulama", "Uygulama dersi"),
        yesNoField("MeslekTurkce", "Türkçe dersi"),
        yesNoField("MeslekBitirmeMuaf", "Bitirme sınavından muaf"),
        longField("MeslekKayitSira", "Sıra"),
        textField("MeslekYururlulukTarihi", 10, "Yürürlük tarihi"),
    };
    table.indexes = {{"indMeslek",
                      {"ID", "MeslekKodu", "MeslekOgrenimDurumu", "MeslekOgrenimYili"},
                      IndexDeclaration::Plain}};
    table.corrections = datesInForce("MeslekDersHavuzu", "MeslekYururlulukTarihi");
    table.emptying = {"DELETE FROM MeslekDersHavuzu"};
    return table;
}

TableDeclaration classes() {
    TableDeclaration table{DatabaseKind::Level, "Sinif", {}, {}, {}};
    table.fields = {textField("SinifAdi", 30, "Sınıf adı"),
                    textField("SinifOgretmeni", 60, "Sınıf öğretmeni"), textField("SGKKodu", 20, "SGK kodu")};
    for (int slot = 1; slot <= kTeachingSlots; ++slot) {
        const std::string n = std::to_string(slot);
        table.fields.push_back(textField("EgtGunu_" + n, 15, n + ". ders günü"));
        table.fields.push_back(textField("EgtDerslik_" + n, 30, n + ". derslik"));
        table.fields.push_back(textField("EgtBaslangic_" + n, 5, n + ". başlangıç saati"));
        table.fields.push_back(textField("EgtBitis_" + n, 5, n + ". bitiş saati"));
        table.fields.push_back(textField("EgtOgretmen_" + n, 60, n + ". öğretmen"));
    }
    table.indexes = {{"indSinif", {"SinifAdi"}, IndexDeclaration::Unique}};
    return table;
}

TableDeclaration minimumWages() {
    TableDeclaration table{DatabaseKind::Constants, "AsgariUcret", {}, {}, {}};
    table.fields = {longField("Yil", "Yıl"), longField("Ay", "Ay"),
                    moneyField("BuyukGunluk", "Günlük asgari ücret (16 yaşından büyük)"),
                    moneyField("KucukGunluk", "Günlük asgari ücret (16 yaşından küçük)"),
                    textField("YtlVar", 1, "Yeni lira")};
    table.indexes = {{"indYilAy", {"Yil", "Ay"}, IndexDeclaration::Unique}};
    return table;
}

} // namespace

std::vector<TableDeclaration> referenceTables() {
    return {coursePool(),           curriculum(),    definitions(),   classes(),
            schoolConstantsTable(), provinceTable(), districtTable(), minimumWages()};
}

} // namespace orvan
