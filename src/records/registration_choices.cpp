// records/registration_choices.cpp — see registration_choices.h.
#include "records/registration_choices.h"

#include "core/turkish_text.h"
#include "core/values.h"
#include "records/student_choices.h"
#include "records/trimmed_rows.h"
#include "reference/code_lists.h"

#include <array>
#include <map>
#include <set>

namespace orvan {
namespace {

constexpr int kSupervisors = 7; // a workplace has at most so many

struct Coded {
    const char* code;
    const char* text;
};
constexpr Coded kSexes[] = {{"E", "Erkek"}, {"K", "Kız"}};
constexpr Coded kMaritalStates[] = {{"E", "Evli"}, {"B", "Bekar"}};
constexpr Coded kBloodGroups[] = {{"0", "(boş)"},   {"1", "A (Rh+)"}, {"2", "A (Rh-)"},
                                  {"3", "B (Rh+)"}, {"4", "B (Rh-)"}, {"5", "AB(Rh+)"},
                                  {"6", "AB(Rh-)"}, {"7", "0 (Rh+)"}, {"8", "0 (Rh-)"}};
constexpr Coded kReligions[] = {
    {"0", "(boş)"}, {"1", "İslam"}, {"2", "Hristiyan"}, {"3", "Musevi"}, {"4", "Diğer"}};
constexpr Coded kNationalities[] = {{"T.C.", "T.C."}, {"Diğer", "Diğer"}};
constexpr Coded kCertificates[] = {{"KB", "Kalfalık Belgesi"}, {"UB", "Ustalık Belgesi"}};

QStringList leavingDocuments() {
    return {QStringLiteral("Kalfalık Belgesi"),   QStringLiteral("Ustalık Belgesi"),
            QStringLiteral("Ayrılma Belgesi"),    QStringLiteral("Öğrenim Belgesi"),
            QStringLiteral("Denklik Belgesi"),    QStringLiteral("Nakil Belgesi"),
            QStringLiteral("İşyeri Açma Belgesi")};
}

// Texts that are stored as they are shown; each once, empty ones not at all.
std::vector<FormChoice> plain(const QStringList& texts) {
    std::vector<FormChoice> choices;
    std::set<QString> seen;
    for (const QString& text : texts)
        if (!text.isEmpty() && seen.insert(text).second) choices.push_back({text, text});
    return choices;
}

std::vector<FormChoice> coded(std::span<const Coded> list) {
    std::vector<FormChoice> choices;
    for (const Coded& entry : list)
        choices.push_back({QString::fromUtf8(entry.code), QString::fromUtf8(entry.text)});
    return choices;
}

// Codes with their descriptions; a description that two codes share carries its code.
std::vector<FormChoice> definitions(const jet::ResultSet& rows) {
    std::vector<FormChoice> choices;
    std::set<QString> codes, texts;
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        const QString code = trimmedText(rows.at(i, size_t{0}));
        QString text = trimmedText(rows.at(i, size_t{1}));
        if (code.isEmpty() || !codes.insert(code).second) continue;
        if (text.isEmpty() || !texts.insert(text).second) text += QStringLiteral(" (%1)").arg(code);
        choices.push_back({code, text});
    }
    return choices;
}

QStringList firstColumn(const jet::ResultSet& rows) {
    QStringList texts;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        texts << trimmedText(rows.at(i, size_t{0}));
    return texts;
}

constexpr auto kByDescription = "SELECT Ta_Tanim_Kod, Ta_tanim_aciklama FROM Parametrik_giris WHERE "
                                "Ta_Tanim_Grup = ? ORDER BY Ta_tanim_aciklama";

QStringList described(DatabaseSet& databases, const char* group) {
    return descriptions(databases.level().sql(), QString::fromUtf8(group));
}

std::vector<FormChoice> stages(DatabaseSet& databases) {
    QStringList texts;
    for (int year = 1; year <= 4; ++year)
        texts << QString::number(year);
    texts << QStringLiteral("BİTİRME") << QStringLiteral("MEZUN") << QStringLiteral("DIŞARDAN");
    return plain(texts + described(databases, group::state));
}

std::vector<FormChoice> coordinators(DatabaseSet& databases) {
    return plain(firstColumn(databases.coordinators().sql().query(
        "SELECT trim(KO_Ogretmen_Adi) & ' ' & trim(KO_Ogretmen_Soyadi) AS Ogretmen FROM KoordinatorBilgisi "
        "ORDER BY KO_Ogretmen_Adi, KO_Ogretmen_Soyadi")));
}

std::vector<FormChoice> workplaceNames(DatabaseSet& databases) {
    return plain(firstColumn(databases.workplaces().sql().query(
        "SELECT K_Adi FROM isletme_Bilgisi WHERE K_isletme_Tipi <> '1' ORDER BY K_Adi")));
}

using Source = std::vector<FormChoice> (*)(DatabaseSet&);
struct Chosen {
    const char* field;
    Source source;
};

std::vector<FormChoice> yesNo(DatabaseSet&) { return plain(yesNoTexts()); }
std::vector<FormChoice> sexes(DatabaseSet&) { return coded(kSexes); }
std::vector<FormChoice> schooling(DatabaseSet& databases) {
    return definitions(databases.level().sql().query(
        "SELECT Ta_Tanim_Kod, Ta_tanim_aciklama FROM Parametrik_giris WHERE Ta_Tanim_Grup = ? ORDER BY "
        "Ta_Tanim_Kod",
        Parameters{group::schooling}));
}

constexpr Chosen kChosen[] = {
    {"Ogr_Cinsiyeti", sexes},
    {"Ogr_Nufus_Cinsiyeti", sexes},
    {"Ogr_Nufus_Medeni_Hali", [](DatabaseSet&) { return coded(kMaritalStates); }},
    {"Ogr_Nufus_KanGrubu", [](DatabaseSet&) { return coded(kBloodGroups); }},
    {"Ogr_Nufus_Dini", [](DatabaseSet&) { return coded(kReligions); }},
    {"Ogr_Nufus_Uyrugu", [](DatabaseSet&) { return coded(kNationalities); }},
    {"Ogr_Belge_Cinsi", [](DatabaseSet&) { return coded(kCertificates); }},
    {"Ogr_Gittigi_Belge_Cinsi", [](DatabaseSet&) { return plain(leavingDocuments()); }},
    {"Ogr_Ayrilis_Nedeni", [](DatabaseSet&) { return plain(leavingReasons()); }},
    {"Ogr_Kayit_Durumu",
     [](DatabaseSet& databases) {
         const Session& session = databases.session();
         return plain(registrationKinds(session.equivalence || session.level == Level::DenklikKalfa ||
                                        session.level == Level::DenklikUsta));
     }},
    {"Ogr_Askerlik_YapildiMuaf", yesNo},
    {"Ogr_Isten_Ayrildi", yesNo},
    {"Ogr_SigortaYok", yesNo},
    {"Ogr_WebIseGirisVar", yesNo},
    {"Ogr_WebIstenCikisVar", yesNo},
    {"Ogr_BitirmeyeGirecek", yesNo},
    {"Ogr_BelgeVerildi", yesNo},
    {"Ogr_OgrenimDuzeyi", schooling},
    {"Ogr_Ogrenim_Durumu", schooling},
    {"Ogr_AnaMeslek_Kod",
     [](DatabaseSet& databases) {
         return definitions(databases.level().sql().query(kByDescription, Parameters{group::mainProfession}));
     }},
    {"Ogr_Sinif",
     [](DatabaseSet& databases) {
         return plain(
             firstColumn(databases.level().sql().query("SELECT SinifAdi FROM Sinif ORDER BY SinifAdi")));
     }},
    {"Ogr_Seviye", stages},
    {"Ogr_Kanun_Maddesi",
     [](DatabaseSet& databases) { return plain(described(databases, group::lawArticle)); }},
    {"Ogr_Pratik_EgitimYeri",
     [](DatabaseSet& databases) { return plain(described(databases, group::practice)); }},
    {"Ogr_Koordinator_Ogretmen", coordinators},
    {"Ogr_calistigi_isyerinin_adi", workplaceNames},
};

} // namespace

const QStringList& chosenFields() {
    static const QStringList fields = [] {
        QStringList names;
        for (const Chosen& chosen : kChosen)
            names << QString::fromLatin1(chosen.field);
        return names;
    }();
    return fields;
}

std::vector<FormChoice> choicesOf(DatabaseSet& databases, const QString& field) {
    for (const Chosen& chosen : kChosen)
        if (field == QLatin1String(chosen.field)) return chosen.source(databases);
    return {};
}

std::vector<FormChoice> professionChoices(DatabaseSet& databases) {
    const auto all = professions(databases.level().sql());
    std::map<QString, int> curricula; // how many a code has
    for (const Profession& profession : all)
        ++curricula[profession.code];
    std::vector<FormChoice> choices;
    for (const Profession& profession : all) {
        QString text = QStringLiteral("%1 (%2)").arg(profession.name, profession.code);
        if (curricula[profession.code] > 1) text += QStringLiteral(" - %1. müfredat").arg(profession.version);
        choices.push_back({QStringLiteral("%1/%2").arg(profession.code).arg(profession.version), text});
    }
    return choices;
}

QString listCode(const QString& field, const QString& stored) {
    const bool isLetter = field == QLatin1String("Ogr_Cinsiyeti") ||
                          field == QLatin1String("Ogr_Nufus_Cinsiyeti") ||
                          field == QLatin1String("Ogr_Nufus_Medeni_Hali");
    return isLetter ? upperTurkish(stored) : stored;
}

std::optional<WorkplaceFacts> workplaceFacts(DatabaseSet& databases, const QString& name) {
    if (trimBlanks(name).isEmpty()) return std::nullopt;
    jet::Database& workplaces = databases.workplaces().database();
    const auto rows = rowsByText(workplaces, "isletme_Bilgisi", "K_Adi", name);
    if (rows.empty()) return std::nullopt;
    jet::Table table = workplaces.openTable("isletme_Bilgisi");
    const auto address = trimmedTexts(table, rows.front(), {"K_Adresi1", "K_Adresi2"});
    WorkplaceFacts facts{address[0], address[1], {}};
    for (int i = 1; i <= kSupervisors; ++i) {
        const std::string n = std::to_string(i);
        const auto texts = trimmedTexts(
            table, rows.front(),
            {"K_egitim_Sorumlusu" + (i == 1 ? std::string() : n), "K_EgitimSorumlusu" + n + "_Cep"});
        if (!texts[0].isEmpty()) facts.supervisors.push_back({texts[0], texts[1]});
    }
    return facts;
}

} // namespace orvan
