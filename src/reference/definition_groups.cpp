// reference/definition_groups.cpp — see definition_groups.h.
#include "reference/definition_groups.h"

#include "reference/code_lists.h"

#include <cassert>

namespace orvan {
namespace {

using Use = DefinitionUse;
constexpr DatabaseKind kLevel = DatabaseKind::Level;

constexpr Use kStateUses[] = {{kLevel, "OgrenciBilgisi", "Ogr_Seviye", Use::Description, nullptr, "öğrenci"}};
constexpr const char* kFixedStates[] = {"ADAY ÇIRAK", "BİTİRME", "DIŞARDAN", "GEÇTİ", "MEZUN"};

constexpr Use kArticleUses[] = {
    {kLevel, "OgrenciBilgisi", "Ogr_Kanun_Maddesi", Use::Either, nullptr, "öğrenci"}};
constexpr const char* kFixedArticles[] = {"16.madde", "29"};

constexpr Use kPracticeUses[] = {
    {kLevel, "OgrenciBilgisi", "Ogr_Pratik_EgitimYeri", Use::Either, nullptr, "öğrenci"}};

constexpr Use kSchoolingUses[] = {
    {kLevel, "OgrenciBilgisi", "Ogr_OgrenimDuzeyi", Use::Code, nullptr, "öğrenci (öğrenim düzeyi)"},
    {kLevel, "OgrenciBilgisi", "Ogr_Ogrenim_Durumu", Use::Code, nullptr, "öğrenci (öğrenim durumu)"}};

constexpr Use kChamberUses[] = {
    {DatabaseKind::Workplaces, "isletme_Bilgisi", "K_MeslekOdasi", Use::Either, nullptr, "işletme"}};
constexpr const char* kChamberFields[] = {"Ta_Tanim_Kisaisim", "Ta_Tanim_Tescil_No"};

constexpr Use kDistrictUses[] = {
    {DatabaseKind::Workplaces, "isletme_Bilgisi", "K_Semt_Kodu", Use::Code, nullptr, "işletme"},
    {DatabaseKind::Coordinators, "KoordinatorBilgisi", "KO_ogretmen_semt_kodu", Use::Code, nullptr,
     "koordinatör öğretmen"}};

constexpr Use kMainProfessionUses[] = {
    {kLevel, "OgrenciBilgisi", "Ogr_AnaMeslek_Kod", Use::Code, "DersID", "öğrenci"}};
constexpr const char* kMainProfessionFields[] = {"Ta_Tanim_Kisaisim", kVersionField, kInForceField};

constexpr Use kProfessionUses[] = {
    {kLevel, "OgrenciBilgisi", "Ogr_MeslekKod", Use::Code, "DersID", "öğrenci"},
    {kLevel, "MeslekDersHavuzu", "MeslekKodu", Use::Code, "ID", "mesleğe ait ders"}};
constexpr const char* kProfessionFields[] = {"Ta_Tanim_Kisaisim",
                                             "Ta_Tanim_Aciklama1",
                                             "Ta_Tanim_Tescil_No",
                                             "Ta_Tanim_Egitim_Duzeyi",
                                             "Ta_Ilkogretim_Sure",
                                             "Ta_Lise_Sure",
                                             "Ta_Ustalik_Sure",
                                             "TA_Tanim_prim_cirak_hastalik_sigortasi",
                                             "TA_Tanim_prim_is_kazalari_hastalik_sigortasi",
                                             "TA_Tanim_prim_hastalik_sigortasi",
                                             "TA_Tanim_prim_malulluk_sigortasi",
                                             "TA_Tanim_prim_Analik_sigortasi",
                                             "TA_Tanim_Tehlike_Sinifi",
                                             kVersionField,
                                             kInForceField};

constexpr const char* kShortName[] = {"Ta_Tanim_Kisaisim"};

constexpr DefinitionGroup kGroups[] = {
    {"DonemBilgileri", group::state, "dönem", Versions::None, kShortName, kStateUses, kFixedStates},
    {"KanunMaddeleri", group::lawArticle, "kanun maddesi", Versions::None, {}, kArticleUses, kFixedArticles},
    {"PratikEgitim", group::practice, "pratik eğitim yeri", Versions::None, {}, kPracticeUses},
    {"OgrenimDurum", group::schooling, "öğrenim durumu", Versions::None, {}, kSchoolingUses},
    {"MeslekOdalari", group::chamber, "meslek odası", Versions::None, kChamberFields, kChamberUses},
    {"IsletmeSemt", group::district, "semt", Versions::None, {}, kDistrictUses},
    {"AnaMeslek", group::mainProfession, "ana meslek", Versions::Curriculum, kMainProfessionFields,
     kMainProfessionUses},
    {"Meslekler", group::profession, "meslek", Versions::Curriculum, kProfessionFields, kProfessionUses},
};

constexpr const char* kInForceFrom[] = {"03.07.2002", "01.07.2005", "12.09.2010", "15.09.2017"};

} // namespace

std::span<const DefinitionGroup> definitionGroups() { return kGroups; }

const DefinitionGroup& definitionGroup(const QString& command) {
    for (const DefinitionGroup& candidate : kGroups)
        if (command == QLatin1String(candidate.command)) return candidate;
    assert(false);
    return kGroups[0];
}

QString versionInForceFrom(int version) {
    if (version < kFirstVersion || version > kLastVersion) return {};
    return QLatin1String(kInForceFrom[version - kFirstVersion]);
}

} // namespace orvan
