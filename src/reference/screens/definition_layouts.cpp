// reference/screens/definition_layouts.cpp — see definition_layouts.h.
#include "reference/screens/definition_layouts.h"

#include "core/values.h"

namespace orvan {
namespace {

const QString kCode = QString::fromLatin1(kCodeField);
const QString kDescription = QString::fromLatin1(kDescriptionField);
const QString kVersion = QString::fromLatin1(kVersionField);
const QString kInForce = QString::fromLatin1(kInForceField);
const QString kShortName = QStringLiteral("Ta_Tanim_Kisaisim");
const QString kRegistration = QStringLiteral("Ta_Tanim_Tescil_No");

constexpr auto kFirstYears = "Ta_Ilkogretim_Sure"; // the two others stand below it
constexpr int kNameWidth = 36, kShortWidth = 20;

FormField code() { return {kCode, QStringLiteral("&Kod:"), FieldKind::Code, 0, 10}; }

FormField described(const QString& label) { return {kDescription, label, FieldKind::Text, 0, kNameWidth}; }

FormField shortName() { return {kShortName, QStringLiteral("Kısa isim:"), FieldKind::Text, 0, kShortWidth}; }

FormField version() { return {kVersion, QStringLiteral("Program:"), FieldKind::Choice, 0, 24}; }

FormField years(const char* name, const QString& label) {
    FormField field{QString::fromLatin1(name), label, FieldKind::Number, 1, 8, 1};
    field.limits = {0, 9, 0};
    return field;
}

FormField rate(const char* name, const QString& label) {
    FormField field{QString::fromLatin1(name), label, FieldKind::Decimal, 0, 8, 1};
    field.limits = {0, 100, 5};
    return field;
}

std::vector<FormField> professionFields() {
    return {code(),
            described(QStringLiteral("&Meslek adı:")),
            shortName(),
            version(),
            {QStringLiteral("Ta_Tanim_Aciklama1"), QStringLiteral("İkinci açıklama:"), FieldKind::Text, 0,
             kNameWidth},
            {QStringLiteral("Ta_Tanim_Egitim_Duzeyi"), QStringLiteral("Eğitim düzeyi:"), FieldKind::Text, 0,
             kShortWidth},
            {kRegistration, QStringLiteral("İşyeri tescil &no:"), FieldKind::Code, 0, 26},
            {QStringLiteral("TA_Tanim_Tehlike_Sinifi"), QStringLiteral("Te&hlike sınıfı:"), FieldKind::Code,
             0, 10},
            years(kFirstYears, QStringLiteral("Eğitim Süresi İ.Ö - Lise - Usta:")),
            years("Ta_Lise_Sure", QStringLiteral("Lise (yıl):")),
            years("Ta_Ustalik_Sure", QStringLiteral("Usta (yıl):")),
            rate("TA_Tanim_prim_cirak_hastalik_sigortasi", QStringLiteral("Çırak hastalık primi (%):")),
            rate("TA_Tanim_prim_is_kazalari_hastalik_sigortasi",
                 QStringLiteral("İş kazası ve meslek hast. primi (%):")),
            rate("TA_Tanim_prim_hastalik_sigortasi", QStringLiteral("Hastalık primi (%):")),
            rate("TA_Tanim_prim_malulluk_sigortasi", QStringLiteral("Malullük primi (%):")),
            rate("TA_Tanim_prim_Analik_sigortasi", QStringLiteral("Analık primi (%):"))};
}

std::vector<FormField> fieldsOf(const QString& command) {
    if (command == QLatin1String("DonemBilgileri"))
        return {code(), described(QStringLiteral("Açıkla&ma:")), shortName()};
    if (command == QLatin1String("MeslekOdalari"))
        return {code(),
                described(QStringLiteral("Oda&nın adı:")),
                shortName(),
                {kRegistration, QStringLiteral("Si&cil no:"), FieldKind::Code, 0, 26}};
    if (command == QLatin1String("IsletmeSemt")) return {code(), described(QStringLiteral("Se&mt adı:"))};
    if (command == QLatin1String("PratikEgitim")) return {code(), described(QStringLiteral("Eğiti&m yeri:"))};
    if (command == QLatin1String("AnaMeslek"))
        return {code(), described(QStringLiteral("Ana &meslek adı:")), shortName(), version()};
    if (command == QLatin1String("Meslekler")) return professionFields();
    return {code(), described(QStringLiteral("Açıkla&ma:"))};
}

std::vector<ListColumn> columnsOf(const DefinitionGroup& group) {
    const QString command = QLatin1String(group.command);
    std::vector<ListColumn> columns{{kCode, QStringLiteral("Kod"), ListKind::Text, 8},
                                    {kDescription, QStringLiteral("Açıklama"), ListKind::Text, 36}};
    for (const char* extra : group.extraFields) {
        const QString name = QString::fromLatin1(extra);
        if (name == kShortName)
            columns.push_back({name, QStringLiteral("Kısa isim"), ListKind::Text, 14});
        else if (name == kRegistration)
            columns.push_back({name,
                               command == QLatin1String("MeslekOdalari") ? QStringLiteral("Sicil no")
                                                                         : QStringLiteral("İşyeri tescil no"),
                               ListKind::Text, 16});
        else if (name == kVersion)
            columns.push_back({name, QStringLiteral("Program"), ListKind::Number, 8});
        else if (name == kInForce)
            columns.push_back({name, QStringLiteral("Yürürlük"), ListKind::Date, 10});
        else if (name == QLatin1String("TA_Tanim_Tehlike_Sinifi"))
            columns.push_back({name, QStringLiteral("Tehlike sınıfı"), ListKind::Text, 12, false});
    }
    return columns;
}

std::vector<FormField> courseFields() {
    const auto hours = [](const char* name, const QString& label, int most) {
        FormField field{QString::fromLatin1(name), label, FieldKind::Number, 0, 8, 1};
        field.limits = {0, static_cast<double>(most), 0};
        return field;
    };
    return {{QStringLiteral("DersKodu"), QStringLiteral("&Kod:"), FieldKind::Code, 0, 12},
            {QStringLiteral("DersAdi"), QStringLiteral("Ders adı:"), FieldKind::Text, 0, kNameWidth},
            {QStringLiteral("DersKisaAdi"), QStringLiteral("Kısa adı:"), FieldKind::Text, 0, kShortWidth},
            {QStringLiteral("DersTuru"), QStringLiteral("Ders türü:"), FieldKind::Choice, 0, 18},
            {kVersion, QStringLiteral("Dersin programı:"), FieldKind::Choice, 0, 24},
            hours("DersHaftalikSaat", QStringLiteral("&Haftalık saat:"), 99),
            hours("DersToplamSaat", QStringLiteral("Toplam saat:"), 9999),
            {QStringLiteral("Bitirme_Sinav_Turu"), QStringLiteral("Bitirme sınavı türü:"), FieldKind::Text, 0,
             12, 1},
            {QStringLiteral("DersUygulama"), QStringLiteral("&Uygulama dersi"), FieldKind::Check, 0, 0, 1},
            {QStringLiteral("DersTurkce"), QStringLiteral("Türkçe dersi"), FieldKind::Check, 0, 0, 1}};
}

std::vector<ListColumn> courseColumns() {
    return {{QStringLiteral("DersKodu"), QStringLiteral("Kod"), ListKind::Text, 10},
            {QStringLiteral("DersAdi"), QStringLiteral("Ders adı"), ListKind::Text, 36},
            {QStringLiteral("DersKisaAdi"), QStringLiteral("Kısa adı"), ListKind::Text, 14},
            {QStringLiteral("DersTuru"), QStringLiteral("Tür"), ListKind::Text, 5},
            {QStringLiteral("DersHaftalikSaat"), QStringLiteral("Haftalık"), ListKind::Number, 8},
            {QStringLiteral("DersToplamSaat"), QStringLiteral("Toplam"), ListKind::Number, 8},
            {QStringLiteral("Bitirme_Sinav_Turu"), QStringLiteral("Bitirme türü"), ListKind::Text, 12, false},
            {QStringLiteral("YururlulukTarihi"), QStringLiteral("Yürürlük"), ListKind::Date, 10}};
}

DefinitionLayout withWidths(DefinitionLayout layout, const Schema& schema, const char* table) {
    for (FormField& field : layout.fields)
        if (field.maxLength == 0) field.maxLength = schema.width(table, utf8(field.name));
    return layout;
}

} // namespace

DefinitionLayout definitionLayout(const DefinitionGroup& group, const Schema& schema) {
    return withWidths({fieldsOf(QLatin1String(group.command)), columnsOf(group)}, schema, "Parametrik_giris");
}

DefinitionLayout coursePoolLayout(const Schema& schema) {
    return withWidths({courseFields(), courseColumns()}, schema, "DersHavuzu");
}

DefinitionLayout professionByClassLayout(const Schema& schema) {
    DefinitionLayout layout = definitionLayout(definitionGroup(QStringLiteral("Meslekler")), schema);
    for (FormField& field : layout.fields)
        if (field.name == QLatin1String(kFirstYears)) {
            field.label = QStringLiteral("Eğitim Süresi (9-10-11-12):");
            field.tip = QStringLiteral("Örnek: 4-4-4-4");
        }
    return layout;
}

std::vector<Choice> versionChoices() {
    std::vector<Choice> choices;
    for (int version = kFirstVersion; version <= kLastVersion; ++version)
        choices.push_back({QString::number(version),
                           QStringLiteral("%1. program (%2)").arg(version).arg(versionInForceFrom(version))});
    return choices;
}

std::vector<Choice> courseKindChoices() {
    return {{QStringLiteral("K"), QStringLiteral("Kültür")}, {QStringLiteral("M"), QStringLiteral("Meslek")}};
}

} // namespace orvan
