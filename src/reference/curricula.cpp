// reference/curricula.cpp — see curricula.h.
#include "reference/curricula.h"

#include "core/values.h"
#include "reference/professions.h"

#include <algorithm>
#include <numeric>

namespace orvan {
namespace {

constexpr auto kJourneyman = "Kalfa";
constexpr auto kMaster = "Usta";
constexpr auto kEquivalence = "Denklik";

} // namespace

QStringList curriculumLevels() {
    return {QLatin1String(kJourneyman), QLatin1String(kMaster), QLatin1String(kEquivalence)};
}

QString curriculumLevelOf(const Session& session) {
    if (session.equivalence || session.level == Level::DenklikKalfa || session.level == Level::DenklikUsta)
        return QLatin1String(kEquivalence);
    return QLatin1String(isMasterLevel(session.level) ? kMaster : kJourneyman);
}

std::vector<Track> tracksOf(const QString& curriculumLevel) {
    const Track primary{QString::fromUtf8(track::primary), QStringLiteral("İLKÖĞRETİM")};
    const Track highSchool{QLatin1String(track::highSchool), QStringLiteral("LİSE ve ÜSTÜ")};
    const Track master{QLatin1String(track::master), QStringLiteral("UST. EĞİTİMİ")};
    const Track finalExam{QLatin1String(track::finalExam), QStringLiteral("BİTİRME")};
    if (curriculumLevel == QLatin1String(kMaster)) return {master, finalExam};
    if (curriculumLevel == QLatin1String(kJourneyman)) return {primary, highSchool, finalExam};
    return {primary, highSchool, master, finalExam};
}

int lastCurriculumYear(jet::SqlSession& level, int version, const QString& professionCode,
                       const QString& track) {
    const auto rows = level.query("Select max(MeslekOgrenimYili) as mx from MeslekDersHavuzu "
                                  "where ID=? and MeslekKodu=? and MeslekOgrenimDurumu=?",
                                  Parameters{version, professionCode, track});
    return rows.empty() ? 0 : toText(rows.at(0, size_t{0})).toInt();
}

int courseHours(jet::SqlSession& level, const QString& professionCode, int year, const QString& courseCode,
                int version) {
    const auto rows = level.query("SELECT MeslekDersSaat, MeslekOgrenimDurumu FROM MeslekDersHavuzu "
                                  "WHERE ID = ? AND MeslekKodu = ? AND MeslekOgrenimYili = ? "
                                  "AND MeslekDersKodu = ?",
                                  Parameters{version, professionCode, year, courseCode});
    int hours = 0;
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        hours = toText(rows.at(i, size_t{0})).toInt();
        if (trimmedText(rows.at(i, 1)) != QLatin1String(track::finalExam)) break;
    }
    return hours;
}

std::vector<size_t> movedOrder(size_t count, const std::vector<size_t>& shown, size_t from, size_t to) {
    std::vector<size_t> moved = shown;
    const auto first = moved.begin() + static_cast<std::ptrdiff_t>(std::min(from, to));
    const auto end = moved.begin() + static_cast<std::ptrdiff_t>(std::max(from, to)) + 1;
    std::rotate(first, from < to ? first + 1 : end - 1, end);
    std::vector<size_t> order(count);
    std::iota(order.begin(), order.end(), size_t{0});
    for (size_t i = 0; i < shown.size(); ++i)
        order[shown[i]] = moved[i];
    return order;
}

} // namespace orvan
