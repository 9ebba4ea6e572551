// core/archives.cpp — see archives.h.
#include "core/archives.h"

#include "core/level_paths.h"

#include <functional>
#include <map>
#include <QFileInfo>

namespace orvan {
namespace {

struct ArchivedLevel {
    LevelFile file;
    const char* words;
};
// İşyeri Açma has no archive.
constexpr ArchivedLevel kLevels[] = {
    {LevelFile::Kalfa, "Kalfa"},
    {LevelFile::Usta, "Usta"},
    {LevelFile::UstaOgretici, "Usta Öğretici"},
    {LevelFile::DenklikKalfa, "Kalfa Denklik"},
    {LevelFile::DenklikUsta, "Usta Denklik"},
};

// "MKAL": the file's name before the year.
QString prefixOf(LevelFile file, DataSetMode mode) {
    LevelPaths paths;
    paths.build(mode, {});
    return paths.of(file).section(QLatin1Char('\\'), -1).section(QLatin1Char('.'), 0, 0);
}

// 2008 of "mkal2008.mdb", when the name is `prefix` and exactly four digits.
std::optional<int> yearOf(const QString& baseName, const QString& prefix) {
    if (baseName.size() != prefix.size() + 4 || !baseName.startsWith(prefix, Qt::CaseInsensitive))
        return std::nullopt;
    int year = 0;
    for (const QChar digit : baseName.mid(prefix.size())) {
        if (digit < QLatin1Char('0') || digit > QLatin1Char('9')) return std::nullopt;
        year = year * 10 + digit.digitValue();
    }
    return year;
}

} // namespace

std::vector<ArchiveYear> archiveYears(const ProgramFolder& folder, DataSetMode mode) {
    const QStringList files = folder.files(QStringLiteral("\\Data"), QStringLiteral("MDB"));
    std::map<int, QStringList, std::greater<>> levelsByYear;
    for (const ArchivedLevel& level : kLevels) {
        const QString prefix = prefixOf(level.file, mode);
        for (const QString& file : files)
            if (const auto year = yearOf(QFileInfo(file).completeBaseName(), prefix))
                levelsByYear[*year] << QString::fromUtf8(level.words);
    }
    std::vector<ArchiveYear> years;
    for (const auto& [year, levels] : levelsByYear)
        years.push_back({QStringLiteral("%1-%2")
                             .arg(year, 4, 10, QLatin1Char('0'))
                             .arg(year + 1, 4, 10, QLatin1Char('0')),
                         levels});
    return years;
}

std::optional<QString> chooseArchiveYear(const ProgramFolder& folder, DataSetMode mode, Dialogs& dialogs) {
    const auto years = archiveYears(folder, mode);
    const QString title = dataSetCaption(mode);
    if (years.empty()) {
        dialogs.message(QStringLiteral("%1 için kaydedilmiş bir öğretim yılı bulunamadı.\n"
                                       "Çalışılan bilgilerde kalınıyor.")
                            .arg(title),
                        title);
        return std::nullopt;
    }
    QStringList choices;
    for (const ArchiveYear& year : years)
        choices << QStringLiteral("%1  (%2)").arg(year.schoolYear, year.levels.join(QStringLiteral(", ")));
    const auto chosen = dialogs.choose(QStringLiteral("Hangi öğretim yılı açılsın?"), title, choices);
    if (!chosen) return std::nullopt;
    return years[*chosen].schoolYear;
}

} // namespace orvan
