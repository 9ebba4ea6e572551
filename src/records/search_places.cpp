// records/search_places.cpp — see search_places.h.
#include "records/search_places.h"

#include "core/archives.h"
#include "core/level_paths.h"
#include "core/turkish_text.h"

#include <QFileInfo>
#include <span>

namespace orvan {
namespace {

struct Place {
    const char* code;
    const char* label;
    LevelFile file;
    DataSetMode mode;
};
constexpr auto kWorking = DataSetMode::Working;
constexpr auto kGraduates = DataSetMode::Graduates;
constexpr auto kLeavers = DataSetMode::Leavers;
constexpr Place kPlaces[] = {
    {"USTAOGR", "*Usta öğretici ", LevelFile::UstaOgretici, kWorking},
    {"MUOG", "*Usta öğretici mezun arşivi ", LevelFile::UstaOgretici, kGraduates},
    {"AUOG", "*Usta öğretici ayrılma arşivi ", LevelFile::UstaOgretici, kLeavers},
    {"KALFA", "*Kalfa", LevelFile::Kalfa, kWorking},
    {"USTA", "*Usta", LevelFile::Usta, kWorking},
    {"MKAL", "*Kalfa mezun arşivi ", LevelFile::Kalfa, kGraduates},
    {"MUST", "*Usta mezun arşivi ", LevelFile::Usta, kGraduates},
    {"AKAL", "*Kalfa ayrılma arşivi ", LevelFile::Kalfa, kLeavers},
    {"AUST", "*Usta ayrılma arşivi ", LevelFile::Usta, kLeavers},
    {"DENKLIK", "*Denklik", LevelFile::DenklikKalfa, kWorking},
    {"DENKLIK", "*Denklik", LevelFile::DenklikUsta, kWorking},
    {"DENKLIK", "*Denklik", LevelFile::DenklikKalfa, kGraduates},
    {"DENKLIK", "*Denklik", LevelFile::DenklikUsta, kGraduates},
    {"DENKLIK", "*Denklik", LevelFile::DenklikKalfa, kLeavers},
    {"DENKLIK", "*Denklik", LevelFile::DenklikUsta, kLeavers},
};
constexpr Place kOpening{"ISYERI", "*İşyeri açma", LevelFile::IsyeriAcma, kWorking};

void addFile(const ProgramFolder& folder, const Place& place, const QString& schoolYear,
             std::vector<SearchPlace>& places) {
    LevelPaths paths;
    paths.build(place.mode, schoolYear);
    const QString file = folder.resolve(paths.of(place.file));
    if (QFileInfo::exists(file))
        places.push_back({QString::fromUtf8(place.code), QString::fromUtf8(place.label), schoolYear, file});
}

} // namespace

QString SearchPlace::words() const {
    QString text = trimBlanks(label);
    text.remove(0, 1); // the star
    return schoolYear.isEmpty() ? text : text + QLatin1Char(' ') + schoolYear;
}

std::vector<SearchPlace> searchPlaces(const ProgramFolder& folder) {
    const auto graduates = archiveYears(folder, kGraduates), leavers = archiveYears(folder, kLeavers);
    std::vector<SearchPlace> places;
    for (const Place& place : kPlaces) {
        if (place.mode == kWorking) {
            addFile(folder, place, {}, places);
            continue;
        }
        for (const ArchiveYear& year : place.mode == kGraduates ? graduates : leavers)
            addFile(folder, place, year.schoolYear, places);
    }
    return places;
}

std::vector<SearchPlace> allSearchPlaces(const ProgramFolder& folder) {
    std::vector<SearchPlace> places = searchPlaces(folder);
    addFile(folder, kOpening, {}, places);
    return places;
}

} // namespace orvan
