// reference/curricula.h — MeslekDersHavuzu: which courses a profession has in each year of training. Words of
// the data model, and lookups; the rule behind the window is profession_curriculum.h.
#pragma once

#include "core/session.h"
#include "jet/sql/session.h"

#include <QStringList>
#include <vector>

namespace orvan {

namespace track {
inline constexpr auto primary = "İ";
inline constexpr auto highSchool = "L";
inline constexpr auto master = "U";
inline constexpr auto finalExam = "B";
} // namespace track

struct Track {
    QString code, name; // "L", "LİSE ve ÜSTÜ"
};

// What one list of courses belongs to.
struct CurriculumKey {
    QString level;      // "Kalfa", "Usta", "Denklik"
    QString profession; // code
    int version = 0;    // 1..4
    QString track;      // code
    bool operator==(const CurriculumKey&) const = default;
};

inline constexpr auto kCurriculumTable = "MeslekDersHavuzu";

QStringList curriculumLevels();                    // values of MeslekOgrenciTuru
QString curriculumLevelOf(const Session& session); // that the session's level database holds
std::vector<Track> tracksOf(const QString& curriculumLevel);

// The highest year of training that has courses; 0 when there are none.
int lastCurriculumYear(jet::SqlSession& level, int version, const QString& professionCode,
                       const QString& track);
// Weekly hours of a course in that year; 0 when the profession does not have it. Final-exam rows count only
// where nothing else has the course.
int courseHours(jet::SqlSession& level, const QString& professionCode, int year, const QString& courseCode,
                int version);

// The order of `count` rows after the shown one at `from` has been put at `to` (both places among `shown`,
// which are places in the whole list, ascending): rows that are not shown keep their places.
std::vector<size_t> movedOrder(size_t count, const std::vector<size_t>& shown, size_t from, size_t to);

} // namespace orvan
