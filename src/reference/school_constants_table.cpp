// reference/school_constants_table.cpp — SabitBilgiler, the one row of the school's constants, by family.
#include "reference/reference_tables.h"

namespace orvan {
namespace {

using Fields = std::vector<FieldDeclaration>;

void addSchool(Fields& fields) {
    fields.insert(fields.end(), {textField("SB_Okul_Adi", 100, "Okul adı"),
                                 textField("SB_Okul_Kodu", 15, "Okul kodu"),
                                 textField("SB_Kurum_Numarasi", 20, "Kurum numarası"),
                                 textField("SB_Okul_Adres1", 60, "Adres"),
                                 textField("SB_Okul_Adres2", 60, "Adres (devamı)"),
                                 textField("SB_Semt", 30, "Semt"),
                                 textField("SB_PostaKodu", 5, "Posta kodu"),
                                 textField("SB_Telefon", 20, "Telefon"),
                                 textField("SB_EPosta", 60, "E-posta"),
                                 textField("SB_VergiNo", 15, "Vergi no"),
                                 textField("SB_TCKimlikNo", 11, "T.C. kimlik no"),
                                 textField("SB_il_adi", 30, "İl"),
                                 textField("SB_il_kodu", 3, "İl kodu"),
                                 textField("SB_ilce_adi", 40, "İlçe"),
                                 textField("SB_ilce_kodu", 6, "İlçe kodu"),
                                 textField("ULKE_Kodu", 5, "Ülke kodu"),
                                 textField("SB_Ders_Yili", 9, "Ders yılı"),
                                 textField("SB_Donem", 15, "Dönem"),
                                 textField("SB_Donem_Baslama_Tarihi", 10, "Dönem başlama tarihi"),
                                 textField("SB_Donem_Bitis_Tarihi", 10, "Dönem bitiş tarihi"),
                                 longField("KutukHane", "Kütük numarası hane sayısı")});
}

void addSignatures(Fields& fields) {
    fields.push_back(textField("SB_Mudur_Adi", 60, "Müdürün adı"));
    fields.push_back(textField("SB_Baslik", 100, "Başlık"));
    for (int i = 1; i <= 4; ++i)
        fields.push_back(textField("SB_Baslik" + std::to_string(i), 100, std::to_string(i) + ". başlık"));
    for (int i = 1; i <= 5; ++i)
        fields.push_back(textField("SB_Onay" + std::to_string(i), 60, std::to_string(i) + ". onay"));
    for (int i = 1; i <= 5; ++i) {
        const std::string n = std::to_string(i);
        fields.push_back(textField("SB_Program" + n, 60, n + ". program"));
        fields.push_back(textField("SB_Program" + n + "_yer", 60, n + ". program yeri"));
    }
    fields.push_back(textField("SB_Karma_yer", 60, "Karma yeri"));
    for (int i = 2; i <= 5; ++i)
        fields.push_back(
            textField("SB_Karma_yer" + std::to_string(i), 60, std::to_string(i) + ". karma yeri"));
}

void addAbsencesAndMarks(Fields& fields) {
    for (const std::string suffix : {"", "4"}) {
        const std::string kind = suffix.empty() ? "" : " (gün)";
        fields.push_back(
            doubleField("SB_KalfaDevamsizKalmaSiniri" + suffix, "Kalfa devamsızlıktan kalma sınırı" + kind));
        fields.push_back(
            doubleField("SB_UstaDevamsizKalmaSiniri" + suffix, "Usta devamsızlıktan kalma sınırı" + kind));
        fields.push_back(
            doubleField("SB_KalfaDevamsizUyariSiniri" + suffix, "Kalfa devamsızlık uyarı sınırı" + kind));
        fields.push_back(
            doubleField("SB_UstaDevamsizUyariSiniri" + suffix, "Usta devamsızlık uyarı sınırı" + kind));
    }
    fields.push_back(textField("SB_NotDuzeni", 10, "Not düzeni"));
    fields.push_back(textField("SB_NotTarihi", 10, "Not tarihi"));
    const char* const words[][2] = {{"Sifir", "Sıfır"}, {"Bir", "Bir"},   {"Iki", "İki"},
                                    {"Uc", "Üç"},       {"Dort", "Dört"}, {"Bes", "Beş"},
                                    {"Alti", "Altı"},   {"Yedi", "Yedi"}, {"Sekiz", "Sekiz"},
                                    {"Dokuz", "Dokuz"}, {"On", "On"}};
    for (const auto& word : words)
        fields.push_back(textField(std::string("SB_Not") + word[0], 20,
                                   std::string(word[1]) + " notunun yazıyla karşılığı"));
}

void addInsurance(Fields& fields) {
    fields.insert(
        fields.end(),
        {longField("SB_PrimHesaplamaTipi", "Prim hesaplama tipi"),
         textField("SB_YasHesaplamaUclu", 1, "16 yaşın dolduğu ayın hesabı"),
         textField("SB_YasHesaplamaTipi", 1, "Yaş hesaplama tipi"),
         longField("SB_AyHesap", "Ay hesabı"),
         yesNoField("SB_IzinSigortadanDusulsun", "İzin günleri sigortadan düşülsün"),
         yesNoField("SB_RaporSigortadanDusulsun", "Rapor günleri sigortadan düşülsün"),
         textField("SB_ORAN", 5, "Oran"),
         textField("SB_SSK_SURE", 10, "Sigorta süresi"),
         textField("SB_Yuvarlama", 1, "Yuvarlama"),
         textField("SB_Yuvarlama_Katsayisi", 10, "Yuvarlama katsayısı"),
         doubleField("SB_DamgaVergisi", "Damga vergisi"),
         yesNoField("SB_DamgaVergisiYazilsin", "Damga vergisi yazılsın"),
         doubleField("SB_ozel_is_vergisi", "Özel işlem vergisi"),
         doubleField("SB_Egitime_Katki_Payi", "Eğitime katkı payı"),
         moneyField("SB_Asgari_ucret1", "Asgari ücret (birinci dönem)"),
         moneyField("SB_Asgari_ucret2", "Asgari ücret (ikinci dönem)"),
         moneyField("SB_Asgari_Ucret_Sonuc1", "Günlük tutar (birinci dönem)"),
         moneyField("SB_Asgari_Ucret_Sonuc2", "Günlük tutar (ikinci dönem)"),
         doubleField("SB_prim_cirak_hastalik_sigortasi", "Çırak hastalık sigortası primi"),
         doubleField("SB_prim_is_kazalari_hastalik_sigortasi", "İş kazaları ve hastalık sigortası primi"),
         doubleField("SB_prim_hastalik_sigortasi", "Hastalık sigortası primi"),
         doubleField("SB_prim_malulluk_sigortasi", "Malullük sigortası primi"),
         doubleField("SB_prim_Analik_sigortasi", "Analık sigortası primi"),
         textField("SB_Prime_Esas_Toplam", 1, "Prime esas toplam yuvarlaması"),
         textField("SB_Prime_Esas_Detay", 1, "Prime esas kazanç yuvarlaması"),
         textField("SB_Prim_Kesintileri_Toplam", 1, "Prim kesintileri toplam yuvarlaması"),
         textField("SB_Prim_Kesintileri_Detay", 1, "Prim kesintisi yuvarlaması"),
         textField("SB_IzinRapor_Toplam", 1, "İzin ve rapor toplam yuvarlaması"),
         textField("SB_IzinRapor_Detay", 1, "İzin ve rapor yuvarlaması")});
}

void addMessages(Fields& fields) {
    fields.insert(fields.end(),
                  {textField("SMS_user", 30, "SMS kullanıcı adı"),
                   textField("SMS_password", 30, "SMS şifresi"), textField("GSM_number", 15, "GSM numarası"),
                   textField("GSM_prefix", 10, "GSM ön eki"), textField("SMS_paket", 20, "SMS paketi")});
}

} // namespace

TableDeclaration schoolConstantsTable() {
    TableDeclaration table{DatabaseKind::Constants, "SabitBilgiler", {}, {}, {}};
    addSchool(table.fields);
    addSignatures(table.fields);
    addAbsencesAndMarks(table.fields);
    addInsurance(table.fields);
    addMessages(table.fields);
    return table;
}

} // namespace orvan
