// reference/code_lists.h — lookups in the generic table of coded definitions (Parametrik_giris) of a level
// database. Groups are named exactly, dots included; codes are text ('06' is not '6').
#pragma once

#include "jet/sql/session.h"

#include <QString>
#include <QStringList>
#include <vector>

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

struct Profession {
    QString code;
    int version = 0; // curriculum version, 1..4
    QString name;
};
std::vector<Profession> professions(jet::SqlSession& level); // by name, then version

// "Bu koda ait Meslek yok" / "Bu koda ait AnaMeslek yok" when the code has no row.
QString professionName(jet::SqlSession& level, const QString& code, int version);
QString mainProfessionName(jet::SqlSession& level, const QString& code, int version);
// The code of a description (compared trimmed) in a version; empty when there is none.
QString professionCode(jet::SqlSession& level, const QString& description, int version);
QString mainProfessionCode(jet::SqlSession& level, const QString& description, int version);

} // namespace orvan
