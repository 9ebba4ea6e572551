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
            years("Ta_Ilkogretim_Sure", QStringLiteral("Eğitim süresi, İ.Ö (yıl):")),
            years("Ta_Lise_Sure", QStringLiteral("Eğitim süresi, Lise (yıl):")),
            years("Ta_Ustalik_Sure", QStringLiteral("Eğitim süresi, Usta (yıl):")),
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

} // namespace

DefinitionLayout definitionLayout(const DefinitionGroup& group, const Schema& schema) {
    DefinitionLayout layout{fieldsOf(QLatin1String(group.command)), columnsOf(group)};
    for (FormField& field : layout.fields)
        if (field.maxLength == 0) field.maxLength = schema.width("Parametrik_giris", utf8(field.name));
    return layout;
}

} // namespace orvan
