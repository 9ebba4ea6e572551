// records/screens/registration_pages.cpp — see registration_pages.h.
#include "records/screens/registration_pages.h"

#include "core/values.h"
#include "records/registration_choices.h"
#include "records/student_record.h"

#include <algorithm>

namespace orvan {
namespace {

constexpr int kWide = 18, kChoice = 17;
constexpr int kRoom = 10; // more of them on a page with room // characters
constexpr double kLargestNumber = 99999;

struct Spot {
    const char* field;
    int width = 0;               // characters shown; 0: as the field needs, up to kWide
    const char* label = nullptr; // nullptr: the declared one
};
struct Block {
    const char* group;
    std::vector<Spot> spots;
};
struct Placed {
    int column;
    const Block* block;
};

const Block kEntry{"Kayıt",
                   {{"Ogr_Numarasi", 14},
                    {"Ogr_Kayit_No", 8},
                    {"Ogr_Kayit_Tarihi"},
                    {"Ogr_Adi", 0, "&Adı"},
                    {"Ogr_Soyadi"},
                    {"Ogr_Ilk_Soyadi"},
                    {"Ogr_Mernis", 12},
                    {"Ogr_Cinsiyeti", 8},
                    {"Ogr_Dogum_Tarihi"},
                    {"Ogr_Yasi", 4},
                    {"Ogr_Sifre", 6},
                    {"Ogr_VergiNo", 12},
                    {"Ogr_Sira", 6}}};
const Block kProgramme{"Eğitim",
                       {{"Ogr_Bolum", 0, "Meslek"},
                        {"Ogr_MeslekKod", 8, "Meslek kodu"},
                        {"DersID", 3, "Müfredat"},
                        {"Ogr_AnaMeslek_Kod", 19},
                        {"Ogr_Sinif", 12},
                        {"Ogr_DersYili", 10},
                        {"Ogr_Seviye", 12},
                        {"Ogr_Durum", 3},
                        {"Ogr_Kayit_Durumu"},
                        {"Ogr_Kanun_Maddesi", 14},
                        {"Ogr_Pratik_EgitimYeri"},
                        {"Ogr_GeldigiGunler"},
                        {"Ogr_Sorumlu_MudurYardimcisi", 0, "Müdür yrd."}}};
const Block kAddress{"Adres",
                     {{"Ogr_Adresi1"},
                      {"Ogr_Adresi2", 0, "(devamı)"},
                      {"Ogr_Semt"},
                      {"Ogr_ili"},
                      {"Ogr_Telefon", 14},
                      {"Ogr_Cep_Telefon", 14}}};
const Block kSchooling{
    "Önceki öğrenim", {{"Ogr_OgrenimDuzeyi"}, {"Ogr_Ogrenim_Durumu"}, {"Ogr_Mezun_Oldugu_okul", 0, "Okulu"}}};
const Block kRemark{"", {{"Ogr_Aciklama"}}};
const Block kBirth{"Aile ve doğum",
                   {{"Ogr_Nufus_Baba_Adi"},
                    {"Ogr_Nufus_Ana_Adi"},
                    {"Ogr_Nufus_Dogum_Yeri"},
                    {"Ogr_Nufus_Dogum_Tarihi", 0, "Doğum tarihi"},
                    {"Ogr_Nufus_Cinsiyeti", 8, "Cinsiyeti"},
                    {"Ogr_Nufus_Medeni_Hali", 8},
                    {"Ogr_Nufus_KanGrubu", 9},
                    {"Ogr_Nufus_Dini", 9},
                    {"Ogr_Nufus_Uyrugu", 9}}};
const Block kRegistryPlace{"Nüfusa kayıtlı olduğu yer",
                           {{"Ogr_Nufus_Ili", 0, "İl"},
                            {"Ogr_Nufus_Ilcesi", 0, "İlçe"},
                            {"Ogr_Nufus_Mahalle_Koy"},
                            {"Ogr_Nufus_Cilt_No", 8},
                            {"Ogr_Nufus_Hane", 8},
                            {"Ogr_Nufus_Sayfa", 8},
                            {"Ogr_Nufus_Kayit_No", 8, "Kayıt no"}}};
const Block kIdentityCard{"Nüfus cüzdanı",
                          {{"Ogr_Nufus_CuzdanSeri_No", 14, "Seri no"},
                           {"Ogr_Nufus_Verildigi_Nufus", 0, "Verildiği yer"},
                           {"Ogr_Nufus_Verilis_Nedeni"},
                           {"Ogr_Nufus_Verilis_Tarihi"}}};
const Block kMilitary{
    "Askerlik", {{"Ogr_Askerlik_Subesi", 0, "Şubesi"}, {"Ogr_Askerlik_YapildiMuaf", 9, "Yapıldı / muaf"}}};
const Block kGuardian{"Veli",
                      {{"Ogr_Veli_Adi", 0, "Adı"},
                       {"Ogr_Veli_Soyadi", 0, "Soyadı"},
                       {"veli_tc", 12, "T.C. kimlik no"},
                       {"Ogr_Veli_Yakinlik"},
                       {"Ogr_Veli_Meslegi", 0, "Mesleği"},
                       {"Ogr_veli_Dogum_Tarihi", 0, "Doğum tarihi"},
                       {"Ogr_veli_Dogum_Yeri", 0, "Doğum yeri"}}};
const Block kGuardianHome{"Velinin ev adresi",
                          {{"Ogr_Veli_Adresi1", 0, "Adresi"},
                           {"Ogr_Veli_Adresi2", 0, "(devamı)"},
                           {"Ogr_Veli_semt", 0, "Semt"},
                           {"Ogr_Veli_il", 0, "İl"},
                           {"Ogr_Veli_Ev_Tel", 14, "Ev telefonu"},
                           {"Ogr_Veli_Cep_Tel", 14, "Cep telefonu"}}};
const Block kGuardianWork{"Velinin iş adresi",
                          {{"Ogr_veli_is_adres1", 0, "Adresi"},
                           {"Ogr_veli_is_adres2", 0, "(devamı)"},
                           {"Ogr_veli_is_semt", 0, "Semt"},
                           {"Ogr_veli_is_il", 0, "İl"},
                           {"Ogr_Veli_is_Tel", 14, "İş telefonu"}}};
const Block kWorkplace{"Çalıştığı işyeri",
                       {{"Ogr_calistigi_isyerinin_adi", 20, "İşyeri"},
                        {"Ogr_calistigi_isyeri_adresi1", 22, "Adresi"},
                        {"Ogr_calistigi_isyeri_adresi2", 22, "(devamı)"},
                        {"Ogr_Usta_Ogreticisi", 18},
                        {"ustaOgreticiCep", 14, "Cep telefonu"},
                        {"Ogr_Koordinator_Ogretmen", 18, "Koordinatör"}}};
const Block kWorkDates{"İşe giriş ve çıkış",
                       {{"Ogr_calistigi_ise_giris_tarihi"},
                        {"Ogr_calistigi_isden_ayrilis_tarihi"},
                        {"Ogr_Ise_Giris_Tarihi", 0, "Sözleşme başı"},
                        {"Ogr_Isden_Ayrilis_Tarihi", 0, "Sözleşme sonu"},
                        {"Ogr_ise_baslama_durumu", 12, "Başlama durumu"},
                        {"Ogr_Isten_Ayrildi", 9},
                        {"Ogr_Isguvenligi_Egitimi", 0, "İş güvenliği eğitimi"}}};
const Block kEarlierTime{
    "Önceki işyerlerinde geçen süre",
    {{"Ogr_Isletme1_Yil", 4, "Yıl"}, {"Ogr_Isletme1_Ay", 4, "Ay"}, {"Ogr_Isletme1_Gun", 4, "Gün"}}};
const Block kInsurance{"Sigorta",
                       {{"Ogr_SSK_No", 16},
                        {"Ogr_Sigorta_Giris_Tarihi", 0, "Giriş tarihi"},
                        {"Ogr_SSK_SonOdeme_Tarihi", 0, "SSK son ödeme"},
                        {"Ogr_SigortaYok", 9, "Yatırılmıyor"},
                        {"SigortaYatirmamaTarihi", 0, "Yatırılmama"}}};
const Block kNotices{"İnternetten yapılan bildirimler",
                     {{"Ogr_WebIseGirisVar", 9},
                      {"Ogr_WebIseGirisTarihi", 0, "Bildirim tarihi"},
                      {"Ogr_WebIstenCikisVar", 9},
                      {"Ogr_WebIstenCikisTarihi", 0, "Bildirim tarihi"}}};
const Block kFinalExam{
    "Bitirme sınavı",
    {{"Ogr_BitirmeyeGirecek", 9, "Sınava girecek"}, {"Ogr_Bitirme", 8}, {"Ogr_Sinav_Tarihi"}}};
const Block kCertificate{
    "Kazandığı belge",
    {{"Ogr_Belge_Cinsi"}, {"Ogr_Belge_Sayisi", 14}, {"Ogr_Belge_Tarihi"}, {"Ogr_BelgeVerildi", 9}}};
const Block kLeaving{"Ayrılış",
                     {{"Ogr_Ayrilis_Nedeni"},
                      {"Ogr_AyrilisNedeni"},
                      {"Ogr_Gittigi_Belge_Cinsi", 0, "Verilen belge"},
                      {"Ogr_Gittigi_Belge_Sayisi", 14, "Belge sayısı"},
                      {"Ogr_Gittigi_Belge_SeriNo", 14, "Belge seri no"},
                      {"Ogr_Gittigi_Belge_Tarihi", 0, "Belge tarihi"}}};
const Block kJourneyman{
    "Kalfalık dönemi",
    {{"Ogr_Kalfa_Ayrilis_sebebi", 0, "Ayrılış sebebi"}, {"Ogr_Kalfa_zorunlu_calisma", 0, "Zorunlu çalışma"}}};
const Block kMarks{"Dosya", {{"dilekceVerdi"}, {"check_ktr"}, {"Ogr_Arsiv_Kodu", 10}, {"Ogr_Bolumu"}}};

bool isOneOf(const char* field, std::initializer_list<const char*> names) {
    return std::any_of(names.begin(), names.end(), [field](std::string_view name) { return name == field; });
}

// What the program gives out or copies is shown, not typed.
FieldKind kindOf(const FieldDeclaration& field) {
    const QString name = fromUtf8(field.name);
    if (isOneOf(field.name.c_str(),
                {"Ogr_Kayit_No", "Ogr_MeslekKod", "Ogr_Bolum", "Ogr_Bolumu", "Ogr_Arsiv_Kodu"}))
        return FieldKind::Display;
    if (field.type == jet::Type::Boolean) return FieldKind::Check;
    if (field.type == jet::Type::Memo) return FieldKind::Memo;
    if (field.type == jet::Type::Long) return FieldKind::Number;
    if (isDateField(name)) return FieldKind::Date;
    if (chosenFields().contains(name) || name == QLatin1String("Ogr_Usta_Ogreticisi"))
        return FieldKind::Choice;
    const bool isCode =
        isOneOf(field.name.c_str(), {"Ogr_Numarasi", "Ogr_Mernis", "veli_tc", "Ogr_Sifre", "Ogr_SSK_No"});
    return isCode ? FieldKind::Code : FieldKind::Text;
}

FormField fieldOf(const Schema& schema, const Spot& spot, int column, const QString& group) {
    const FieldDeclaration* declared = schema.table(kStudentTable).field(spot.field);
    FormField field;
    field.name = QString::fromLatin1(spot.field);
    field.label = (spot.label ? QString::fromUtf8(spot.label) : fromUtf8(declared->label)) + QLatin1Char(':');
    field.kind = kindOf(*declared);
    field.maxLength = declared->width;
    field.width = spot.width > 0                    ? spot.width
                  : field.kind == FieldKind::Choice ? kChoice
                  : declared->width > 0             ? std::min<int>(declared->width, kWide)
                                                    : kWide;
    field.column = column;
    field.group = group;
    field.lines = 3;
    if (field.kind == FieldKind::Number) {
        field.limits = {0, kLargestNumber, 0};
        field.maxLength = 0;
    }
    return field;
}

FormPage pageOf(const Schema& schema, const char* name, const char* title, const std::vector<Placed>& blocks,
                int room = 0) {
    FormPage page{QString::fromLatin1(name), QString::fromUtf8(title), {}};
    for (const Placed& placed : blocks)
        for (const Spot& spot : placed.block->spots) {
            page.fields.push_back(
                fieldOf(schema, spot, placed.column, QString::fromUtf8(placed.block->group)));
            FormField& field = page.fields.back();
            if (field.width >= kChoice) field.width += room;
        }
    return page;
}

} // namespace

std::vector<FormPage> tabbedPages(const Schema& schema) {
    return {
        pageOf(schema, "kimlik", "Kimlik",
               {{0, &kEntry}, {1, &kProgramme}, {2, &kAddress}, {2, &kSchooling}, {2, &kRemark}}),
        pageOf(schema, "nufus", "Nüfus",
               {{0, &kBirth}, {1, &kRegistryPlace}, {2, &kIdentityCard}, {2, &kMilitary}}),
        pageOf(schema, "veli", "Veli", {{0, &kGuardian}, {1, &kGuardianHome}, {2, &kGuardianWork}},
               kRoom / 3),
        pageOf(schema, "isyeri", "İşyeri", {{0, &kWorkplace}, {0, &kEarlierTime}, {1, &kWorkDates}}, kRoom),
        pageOf(schema, "sigorta", "Sigorta", {{0, &kInsurance}, {1, &kNotices}}),
        pageOf(schema, "sinav", "Sınav ve Ayrılış",
               {{0, &kFinalExam}, {0, &kCertificate}, {1, &kLeaving}, {1, &kJourneyman}, {2, &kMarks}}),
    };
}

std::vector<FormPage> twoPages(const Schema& schema) {
    return {
        pageOf(schema, "ogrenci", "Öğrenci ve İşyeri",
               {{0, &kEntry},
                {0, &kEarlierTime},
                {1, &kProgramme},
                {1, &kInsurance},
                {2, &kWorkplace},
                {2, &kWorkDates},
                {2, &kAddress}}),
        pageOf(schema, "digerBilgiler", "Nüfus, Veli ve Ayrılış",
               {{0, &kBirth},
                {0, &kRegistryPlace},
                {0, &kIdentityCard},
                {0, &kMilitary},
                {1, &kGuardian},
                {1, &kGuardianHome},
                {1, &kGuardianWork},
                {1, &kSchooling},
                {2, &kFinalExam},
                {2, &kCertificate},
                {2, &kLeaving},
                {2, &kJourneyman},
                {2, &kNotices},
                {2, &kMarks},
                {2, &kRemark}}),
    };
}

} // namespace orvan
