// records/display_value.cpp — the table of coded fields.
#include "records/display_value.h"

#include "core/clock.h"
#include "core/turkish_text.h"
#include "core/values.h"
#include "reference/code_lists.h"

#include <array>

namespace orvan {
namespace {

constexpr std::array<const char*, 9> kBloodGroups = {"",        "A (Rh+)", "A (Rh-)", "B (Rh+)", "B (Rh-)",
                                                     "AB(Rh+)", "AB(Rh-)", "0 (Rh+)", "0 (Rh-)"};
constexpr std::array<const char*, 5> kReligions = {"", "İSLAM", "HRİSTİYAN", "MUSEVİ", "DİĞER"};

enum class Shown {
    AsStored,
    Sex,
    MaritalStatus,
    BloodGroup,
    Religion,
    Schooling,
    Profession,
    MainProfession,
    Date
};

struct CodedField {
    const char* name;
    Shown shown;
};
constexpr CodedField kFields[] = {
    {"Ogr_Cinsiyeti", Shown::Sex},
    {"Ogr_Nufus_Cinsiyeti", Shown::Sex},
    {"Ogr_Nufus_Medeni_Hali", Shown::MaritalStatus},
    {"Ogr_Nufus_KanGrubu", Shown::BloodGroup},
    {"Ogr_Nufus_Dini", Shown::Religion},
    {"Ogr_OgrenimDuzeyi", Shown::Schooling},
    {"Ogr_Ogrenim_Durumu", Shown::Schooling},
    {"Ogr_MeslekKod", Shown::Profession},
    {"Ogr_AnaMeslek_Kod", Shown::MainProfession},
    {"Ogr_Kayit_Tarihi", Shown::Date},
    {"Ogr_calistigi_ise_giris_tarihi", Shown::Date},
    {"Ogr_calistigi_isden_ayrilis_tarihi", Shown::Date},
    {"Ogr_Dogum_Tarihi", Shown::Date},
    {"Ogr_Nufus_Dogum_Tarihi", Shown::Date},
    {"Ogr_Nufus_Verilis_Tarihi", Shown::Date},
    {"Ogr_SSK_SonOdeme_Tarihi", Shown::Date},
    {"Ogr_Sigorta_Giris_Tarihi", Shown::Date},
};

Shown shownAs(const QString& field) {
    for (const CodedField& coded : kFields)
        if (field.compare(QLatin1String(coded.name), Qt::CaseInsensitive) == 0) return coded.shown;
    return Shown::AsStored;
}

template <size_t N> QString entry(const std::array<const char*, N>& texts, const QString& stored) {
    bool isNumber = false;
    const uint index = stored.toUInt(&isNumber);
    return isNumber && index < N ? QString::fromUtf8(texts[index]) : stored;
}

QString definition(jet::SqlSession& level, const char* group, const QString& code, const char* missing) {
    if (code.isEmpty()) return {};
    const QString text = descriptionOf(level, QString::fromUtf8(group), code);
    return text.isEmpty() ? QString::fromUtf8(missing) : text;
}

QString date(const QString& stored) {
    const auto day = dateFromText(stored);
    return day ? dateText(*day) : stored;
}

} // namespace

QString displayValue(jet::SqlSession& level, const QString& field, const jet::Value& stored) {
    const QString text = trimmedText(stored);
    switch (shownAs(field)) {
    case Shown::AsStored: return text;
    case Shown::Sex:
        return upperTurkish(text) == QLatin1String("E") ? QStringLiteral("ERKEK") : QStringLiteral("KIZ");
    case Shown::MaritalStatus:
        return upperTurkish(text) == QLatin1String("B") ? QStringLiteral("BEKAR") : QStringLiteral("EVLİ");
    case Shown::BloodGroup: return entry(kBloodGroups, text);
    case Shown::Religion: return entry(kReligions, text);
    case Shown::Schooling: return definition(level, group::schooling, text, "");
    case Shown::Profession: return definition(level, group::profession, text, "Bu koda ait Meslek yok");
    case Shown::MainProfession:
        return definition(level, group::mainProfession, text, "Bu koda ait AnaMeslek yok");
    case Shown::Date: return date(text);
    }
    return text;
}

} // namespace orvan
