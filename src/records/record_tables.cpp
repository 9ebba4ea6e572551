// records/record_tables.cpp — workplaces, a student's workplace history, coordinator teachers and their
// duties.
#include "records/record_tables.h"

namespace orvan {
namespace {

TableDeclaration workplaceHistory() {
    TableDeclaration table{DatabaseKind::Level, "Ogrenci_Isyerleri", {}, {}, {}};
    table.fields = {
        textField("Ogr_No", 15, "Kütük No"),
        textField("Ogr_Adi", 30, "Adı"),
        textField("Ogr_Soyadi", 30, "Soyadı"),
        longField("Ogr_sira", "Sıra"),
        textField("Ogr_isyerinin_adi", 100, "İşyeri"),
        textField("Ogr_Isyeri_Adresi1", 60, "İşyeri adresi"),
        textField("Ogr_Isyeri_Adresi2", 60, "İşyeri adresi (devamı)"),
        textField("Ogr_Ise_Giris_Tarihi", 10, "İşe giriş tarihi"),
        textField("Ogr_Isden_Ayrilis_Tarihi", 10, "İşten çıkış tarihi"),
        textField("Ogr_Isletme1_Yil", 3, "Yıl"),
        textField("Ogr_Isletme1_Ay", 3, "Ay"),
        textField("Ogr_Isletme1_Gun", 3, "Gün"),
        textField("Ogr_AyrilisNedeni", 40, "Ayrılış nedeni"),
        textField("Ogr_SSK_SonOdeme_Tarihi", 10, "SSK en son ödeme tarihi"),
    };
    table.indexes = {{"indOgrenci", {"Ogr_No", "Ogr_sira"}, IndexDeclaration::Plain},
                     {"indIsyeri", {"Ogr_isyerinin_adi"}, IndexDeclaration::Plain}};
    return table;
}

void addSupervisors(std::vector<FieldDeclaration>& fields) {
    const char* const names[] = {"K_egitim_Sorumlusu",  "K_egitim_sorumlusu2", "K_egitim_sorumlusu3",
                                 "K_egitim_sorumlusu4", "K_egitim_sorumlusu5", "K_egitim_sorumlusu6",
                                 "K_Egitim_Sorumlusu7"};
    for (int i = 1; i <= 7; ++i) {
        const std::string n = std::to_string(i), suffix = i == 1 ? "" : n;
        fields.push_back(textField(names[i - 1], 60, n + ". eğitim sorumlusu"));
        fields.push_back(
            textField("K_EgitimSorumlusu" + n + "_Cep", 20, n + ". eğitim sorumlusunun cep telefonu"));
        fields.push_back(longField("K_Kiz_Ogrenci_sayisi" + suffix, n + ". sorumlunun kız öğrenci sayısı"));
        fields.push_back(
            longField("K_Erkek_Ogrenci_Sayisi" + suffix, n + ". sorumlunun erkek öğrenci sayısı"));
        fields.push_back(longField("K_Toplam_Ogrenci_Sayisi" + suffix, n + ". sorumlunun öğrenci sayısı"));
    }
    fields.push_back(textField("K_EgitimSorumlusu1_TC", 11, "1. eğitim sorumlusunun T.C. kimlik no"));
}

TableDeclaration workplaces() {
    TableDeclaration table{DatabaseKind::Workplaces, "isletme_Bilgisi", {}, {}, {}};
    table.fields = {
        textField("K_Adi", 100, "İşletme adı"),
        textField("K_isletme_Tipi", 1, "İşletme tipi"),
        textField("K_Adresi1", 60, "Adres"),
        textField("K_Adresi2", 60, "Adres (devamı)"),
        textField("K_Semt_Kodu", 15, "Semt kodu"),
        textField("K_Semt_Adi", 100, "Semt"),
        textField("K_Telefon", 20, "Telefon"),
        textField("K_Cep_Telefonu", 20, "Cep telefonu"),
        textField("K_FAX", 20, "Faks"),
        textField("K_MeslekOdasi", 100, "Meslek odası"),
        textField("K_Oda_Sicil_No", 20, "Oda sicil no"),
        textField("K_uretim_alani", 60, "Üretim alanı"),
        longField("K_Personel_Sayisi", "Personel sayısı"),
        textField("K_SGKSicilNo", 26, "SGK sicil no"),
        textField("K_VergiSicilNo", 15, "Vergi sicil no"),
        textField("K_BANKA", 60, "Banka"),
        textField("K_IBANNo", 34, "IBAN"),
        textField("K_isletmeKatkiIstemiyor", 5, "Devlet katkısı istemiyor"),
        textField("K_Isveren_Vekili", 60, "İşveren vekili"),
        textField("K_isveren_vekil_adresi1", 60, "İşveren vekilinin adresi"),
        textField("K_isveren_vekil_adresi2", 60, "İşveren vekilinin adresi (devamı)"),
        textField("K_isveren_vekil_dogum_tarihi", 10, "İşveren vekilinin doğum tarihi"),
        textField("K_isveren_vekil_dogum_yeri", 30, "İşveren vekilinin doğum yeri"),
    };
    table.fields[0].required = true;
    table.fields[1].defaultValue = "\"0\"";
    addSupervisors(table.fields);
    table.fields.push_back(memoField("K_Dusunceler", "Düşünceler"));
    table.indexes = {{"indAdi", {"K_Adi"}, IndexDeclaration::Unique}};
    return table;
}

TableDeclaration banks() {
    TableDeclaration table{DatabaseKind::Workplaces, "Bankalar", {}, {}, {}};
    table.fields = {textField("BankaAdi", 60, "Banka"), textField("sube", 60, "Şube")};
    table.indexes = {{"indBanka", {"BankaAdi"}, IndexDeclaration::Plain}};
    return table;
}

TableDeclaration coordinators() {
    TableDeclaration table{DatabaseKind::Coordinators, "KoordinatorBilgisi", {}, {}, {}};
    table.fields = {
        textField("KO_Ogretmen_Adi", 30, "Adı"),           textField("KO_Ogretmen_Soyadi", 30, "Soyadı"),
        textField("KO_ogretmen_bolum_adi", 100, "Bölümü"), textField("KO_ogretmen_semt_kodu", 15, "Semt"),
        textField("KO_EvTel", 20, "Ev telefonu"),          textField("KO_CepTel", 20, "Cep telefonu"),
        longField("ko_toplam_ogrenci", "Öğrenci sayısı")};
    table.indexes = {{"indAdSoyad", {"KO_Ogretmen_Adi", "KO_Ogretmen_Soyadi"}, IndexDeclaration::Unique}};
    return table;
}

TableDeclaration duties(const char* name) {
    TableDeclaration table{DatabaseKind::Coordinators, name, {}, {}, {}};
    table.fields = {
        textField("KG_Adi", 30, "Öğretmen adı"),     textField("KG_Soyadi", 30, "Öğretmen soyadı"),
        textField("KG_Isletme_Adi", 100, "İşletme"), textField("KG_Program_Saati", 30, "Program saati"),
        longField("KG_ToplamSaat", "Toplam saat"),   textField("BarkodNo", 20, "Barkod no"),
        yesNoField("BarkodOnay", "Barkod onaylandı")};
    table.indexes = {{"indOgretmen", {"KG_Adi", "KG_Soyadi"}, IndexDeclaration::Plain}};
    return table;
}

TableDeclaration weeklyHours() {
    TableDeclaration table{DatabaseKind::Coordinators, "OgretmenHaftalikZaman", {}, {}, {}};
    table.fields = {textField("Ogretmen_Adi", 30, "Öğretmen adı"),
                    textField("Ogretmen_Soyadi", 30, "Öğretmen soyadı"),
                    textField("Program_Saati", 30, "Program saati")};
    table.indexes = {{"indOgretmen", {"Ogretmen_Adi", "Ogretmen_Soyadi"}, IndexDeclaration::Plain}};
    return table;
}

} // namespace

std::vector<TableDeclaration> recordTables() {
    return {studentTable(),
            workplaceHistory(),
            workplaces(),
            banks(),
            coordinators(),
            duties("Koord_GorevGiris_Cizelgesi"),
            duties("OGRETMEN_HAFTALIK"),
            weeklyHours()};
}

} // namespace orvan
