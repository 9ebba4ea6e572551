// reference/code_lists.h — lookups in the generic table of coded definitions (Parametrik_giris) of a level
// database. Groups are named exactly, dots included; codes are text ('06' is not '6'). Professions, which go
// by curriculum version too: professions.h.
#pragma once

#include "jet/sql/session.h"
#include "reference/professions.h"

#include <QStringList>

namespace orvan {

namespace group {
inline constexpr auto profession = "Bölüm";
inline constexpr auto mainProfession = "AnaMeslek";
inline constexpr auto state = "Donem";
inline constexpr auto lawArticle = "KanunMd.";
inline constexpr auto district = "Semt Kodu";
inline constexpr auto schooling = "ÖğrenimDr";
inline constexpr auto chamber = "MeslekOda";
inline constexpr auto practice = "Pr.Eğitim";
} // namespace group

// The description of a code, the code of a description; empty when there is none.
QString descriptionOf(jet::SqlSession& level, const QString& group, const QString& code);
QString codeOf(jet::SqlSession& level, const QString& group, const QString& description);
QStringList descriptions(jet::SqlSession& level, const QString& group); // in order of description

} // namespace orvan
