// records/bulk_commands.cpp — the declarations of the bulk edits.
#include "records/bulk_commands.h"

#include "core/values.h"
#include "records/bulk_checks.h"
#include "records/student_choices.h"
#include "reference/code_lists.h"

#include <algorithm>
#include <cassert>

namespace orvan {
namespace {

using Choices = std::vector<BulkChoice>;

Choices choicesOf(const QStringList& texts) {
    Choices choices;
    for (const QString& text : texts)
        if (!text.isEmpty() && std::none_of(choices.begin(), choices.end(),
                                            [&](const BulkChoice& c) { return c.value == text; }))
            choices.push_back({text, text});
    return choices;
}

QStringList firstColumn(const jet::ResultSet& rows) {
    QStringList texts;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        texts << trimmedText(rows.at(i, size_t{0}));
    return texts;
}

Choices definitions(DatabaseSet& databases, const char* group) {
    return choicesOf(descriptions(databases.level().sql(), QString::fromUtf8(group)));
}

Choices classes(DatabaseSet& databases) {
    return choicesOf(
        firstColumn(databases.level().sql().query("SELECT SinifAdi FROM Sinif ORDER BY SinifAdi;")));
}

Choices districts(DatabaseSet& databases) { return definitions(databases, group::district); }
Choices lawArticles(DatabaseSet& databases) { return definitions(databases, group::lawArticle); }
Choices practicePlaces(DatabaseSet& databases) { return definitions(databases, group::practice); }
Choices kinds(DatabaseSet& databases) {
    return choicesOf(registrationKinds(databases.session().equivalence));
}
Choices reasons(DatabaseSet&) { return choicesOf(leavingReasons()); }
Choices yesOrNo(DatabaseSet&) { return choicesOf(yesNoTexts()); }

// The next stage of each, the stages that students have, and those that every student passes.
Choices stages(DatabaseSet& databases) {
    Choices choices{{QString::fromLatin1(kNextStage), QStringLiteral("Herkesi bir sonraki döneme geçir")}};
    QStringList texts{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4")};
    texts += firstColumn(databases.level().sql().query(
        "SELECT DISTINCT Ogr_Seviye FROM OgrenciBilgisi WHERE Ogr_Seviye <> '' ORDER BY Ogr_Seviye;"));
    texts += {QStringLiteral("BİTİRME"), QStringLiteral("DIŞARDAN"), QStringLiteral("MEZUN")};
    for (BulkChoice& choice : choicesOf(texts))
        choices.push_back(std::move(choice));
    return choices;
}

Choices schoolingLevelsOf(DatabaseSet& databases) {
    const auto rows = databases.level().sql().query(
        "SELECT Ta_Tanim_Kod, Ta_tanim_aciklama FROM Parametrik_giris WHERE Ta_Tanim_Grup = ? "
        "ORDER BY Ta_Tanim_Kod",
        Parameters{group::schooling});
    Choices choices;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        choices.push_back({trimmedText(rows.at(i, size_t{0})), trimmedText(rows.at(i, 1))});
    return choices;
}

using enum BulkEditor;

std::vector<BulkField> plainFields() {
    return {{"Ogr_Kanun_Maddesi", Choice, lawArticles, lawArticleFault},
            {"Ogr_Pratik_EgitimYeri", Choice, practicePlaces},
            {"Ogr_Ogrenim_Durumu", Choice, schoolingLevelsOf},
            {"Ogr_Ayrilis_Nedeni", Choice, reasons},
            {"Ogr_GeldigiGunler"},
            {"Ogr_DersYili", Code},
            {"Ogr_Kayit_Tarihi", Date},
            {"Ogr_Isguvenligi_Egitimi", YesNo},
            {"dilekceVerdi", YesNo},
            {"Ogr_Askerlik_Subesi"},
            {"Ogr_Askerlik_YapildiMuaf", Choice, yesOrNo},
            {"Ogr_Mezun_Oldugu_okul"},
            {"Ogr_ili"}};
}

std::vector<BulkCommand> declare() {
    constexpr auto kStart = "Ogr_calistigi_ise_giris_tarihi";
    constexpr auto kLeft = "Ogr_calistigi_isden_ayrilis_tarihi";
    constexpr auto kLastPayment = "Ogr_SSK_SonOdeme_Tarihi";
    using enum BulkInput;
    return {
        {"TopluSinifDegistirme", "toplu_sinif_degistirme", EachOwn, {{"Ogr_Sinif", Choice, classes}}},
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
        {"TupluKayitDurumuIsleme", "kayit_durumu_isleme", OneForAll, {{"Ogr_Kayit_Durumu", Choice, kinds}}},
        {"TopluSigortaTarihiIsleme",
         "sigorta_tarihi_isleme",
         OneForAll,
         {{"Ogr_Sigorta_Giris_Tarihi", Date, nullptr, insuranceStartFault},
          {kLastPayment, Date, nullptr, lastPaymentFault}},
         {"Ogr_Dogum_Tarihi", kLeft}},
        {"SigortaYatmayacakIsleme",
         "sigorta_yatmayacak_isleme",
         OneForAll,
         {{"Ogr_SigortaYok", Choice, yesOrNo}, {"SigortaYatirmamaTarihi", Date}}},
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
