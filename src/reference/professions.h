// reference/professions.h — professions and main professions: names, codes and years of training by
// curriculum version. Both are coded definitions of a level database (code_lists.h).
#pragma once

#include "core/session.h"
#include "jet/sql/session.h"

#include <QString>
#include <vector>

namespace orvan {

struct Profession {
    QString code;
    int version = 0; // curriculum version, 1..4
    QString name;
};
std::vector<Profession> professions(jet::SqlSession& level);              // by name, the newest version first
std::vector<Profession> professions(jet::SqlSession& level, int version); // of one version, by name
std::vector<Profession> mainProfessions(jet::SqlSession& level, int version); // of one version, by name

// "Bu koda ait Meslek yok" / "Bu koda ait AnaMeslek yok" when the code has no row in the version.
QString professionName(jet::SqlSession& level, const QString& code, int version);
QString professionShortName(jet::SqlSession& level, const QString& code, int version);
QString mainProfessionName(jet::SqlSession& level, const QString& code, int version);

// The code of a description (compared trimmed) in a version; empty when there is none.
QString professionCode(jet::SqlSession& level, const QString& description, int version);
QString mainProfessionCode(jet::SqlSession& level, const QString& description, int version);

// The same for a text that a person types, in any case by Turkish rules. Like: the text may hold '*' (any
// letters) and '?' (one letter). The first one by name when several match.
enum class NameMatch { Equal, Like };
QString searchProfessionCode(jet::SqlSession& level, const QString& text, int version, NameMatch match);

// Years of training: of the master level whatever the track; else of the high-school track for 'L' and of the
// primary track for every other one. 0 when the profession has no row or no such length.
int trainingYears(jet::SqlSession& level, Level of, const QString& code, int version, const QString& track);

bool isMasterLevel(Level level); // Usta, Usta Öğretici, Denklik Usta

} // namespace orvan
