// records/bulk_commands.cpp — the declarations of the bulk edits.
#include "records/bulk_commands.h"

#include "records/bulk_checks.h"
#include "reference/code_lists.h"

#include <cassert>

namespace orvan {
namespace {

// A student's district is stored by its name.
std::vector<FormChoice> districts(DatabaseSet& databases) {
    std::vector<FormChoice> choices;
    for (const QString& text : descriptions(databases.level().sql(), QString::fromUtf8(group::district)))
        if (choices.empty() || choices.back().text != text) choices.push_back({text, text});
    return choices;
}

std::vector<FormChoice> stages(DatabaseSet& databases) {
    std::vector<FormChoice> choices{
        {QString::fromLatin1(kNextStage), QStringLiteral("Herkesi bir sonraki döneme geçir")}};
    for (FormChoice& choice : choicesOf(databases, QStringLiteral("Ogr_Seviye")))
        choices.push_back(std::move(choice));
    return choices;
}

using enum BulkEditor;

std::vector<BulkField> plainFields() {
    return {{"Ogr_Kanun_Maddesi", Choice, nullptr, lawArticleFault},
            {"Ogr_Pratik_EgitimYeri", Choice},
            {"Ogr_Ogrenim_Durumu", Choice},
            {"Ogr_Ayrilis_Nedeni", Choice},
            {"Ogr_GeldigiGunler"},
            {"Ogr_DersYili", Code},
            {"Ogr_Kayit_Tarihi", Date},
            {"Ogr_Isguvenligi_Egitimi", YesNo},
            {"dilekceVerdi", YesNo},
            {"Ogr_Askerlik_Subesi"},
            {"Ogr_Askerlik_YapildiMuaf", Choice},
            {"Ogr_Mezun_Oldugu_okul"},
            {"Ogr_ili"}};
}

std::vector<BulkCommand> declare() {
    constexpr auto kStart = "Ogr_calistigi_ise_giris_tarihi";
    constexpr auto kLeft = "Ogr_calistigi_isden_ayrilis_tarihi";
    constexpr auto kLastPayment = "Ogr_SSK_SonOdeme_Tarihi";
    using enum BulkInput;
    return {
        {"TopluSinifDegistirme", "toplu_sinif_degistirme", EachOwn, {{"Ogr_Sinif", Choice}}},
        {"TopluSSKNoIsleme", "ssk_no_isleme", EachOwn, {{"Ogr_SSK_No", Code}}},
        {"TopluTcKimlikIsleme",
         "tc_kimlik_isleme",
         EachOwn,
         {{"Ogr_Mernis", Code, nullptr, identityFault, identityWarning, nullptr, true},
          {"check_ktr", YesNo}}},
        {"TopluDogumTarihiIsleme",
         "dogum_tarihi_isleme",
         EachOwn,
         {{"Ogr_Dogum_Tarihi", Date, nullptr, birthDateFault},
          {"Ogr_Nufus_Dogum_Tarihi", Date, nullptr, registryBirthDateFault}}},
        {"TopluAdresDuzenleme",
         "toplu_adres_duzenleme",
         EachOwn,
         {{"Ogr_Adresi1"},
          {"Ogr_Adresi2"},
          {"Ogr_Semt", Choice, districts},
          {"Ogr_ili"},
          {"Ogr_Telefon", Code},
          {"Ogr_Cep_Telefon", Code}}},
        {"TopluAyrilisTarihiIsleme",
         "ayrilis_tarihi_isleme",
         OneForAll,
         {{kLeft, Date, nullptr, leavingDateFault}},
         {kStart, kLastPayment}},
        {"TopluSemtKoduIsleme", "semt_kodu_isleme", OneForAll, {{"Ogr_Semt", Choice, districts}}},
        {"TopluDonemIsleme",
         "donem_isleme",
         OneForAll,
         {{"Ogr_Seviye", Choice, stages, nullptr, nullptr, stageOf}}},
        {"TupluKayitDurumuIsleme", "kayit_durumu_isleme", OneForAll, {{"Ogr_Kayit_Durumu", Choice}}},
        {"TopluSigortaTarihiIsleme",
         "sigorta_tarihi_isleme",
         OneForAll,
         {{"Ogr_Sigorta_Giris_Tarihi", Date, nullptr, insuranceStartFault},
          {kLastPayment, Date, nullptr, lastPaymentFault}},
         {"Ogr_Dogum_Tarihi", kLeft}},
        {"SigortaYatmayacakIsleme",
         "sigorta_yatmayacak_isleme",
         OneForAll,
         {{"Ogr_SigortaYok", Choice}, {"SigortaYatirmamaTarihi", Date}}},
        {"MudurYardimcisiIsleme", "mudur_yardimcisi_isleme", OneForAll, {{"Ogr_Sorumlu_MudurYardimcisi"}}},
        {"TopluBilgiDuzenleme",
         "toplu_bilgi_duzenleme",
         OneForAll,
         plainFields(),
         {kStart, "Ogr_calistigi_isyerinin_adi"}},
    };
}

} // namespace

const BulkField* BulkCommand::field(const QString& name) const {
    for (const BulkField& field : fields)
        if (name == QLatin1String(field.name)) return &field;
    return nullptr;
}

const std::vector<BulkCommand>& bulkCommands() {
    static const std::vector<BulkCommand> commands = declare();
    return commands;
}

const BulkCommand& bulkCommand(const QString& key) {
    for (const BulkCommand& command : bulkCommands())
        if (key == QLatin1String(command.key)) return command;
    assert(false);
    return bulkCommands().front();
}

} // namespace orvan
