// core/level_paths.cpp — the table of level database files.
#include "core/level_paths.h"

namespace orvan {
namespace {

constexpr LevelTemplate kWorkingSet[] = {
    {"\\Data\\KALFA.MDB", "\\Mdx\\KALFA.MDX"},     {"\\Data\\USTA.MDB", "\\Mdx\\USTA.MDX"},
    {"\\Data\\USTAOGR.MDB", "\\Mdx\\USTA.MDX"}, // the master template on purpose
    {"\\Data\\ISYERI.MDB", "\\Mdx\\ISYERI.MDX"},   {"\\Data\\DENKLIK_K.MDB", "\\Mdx\\KALFA.MDX"},
    {"\\Data\\DENKLIK_U.MDB", "\\Mdx\\KALFA.MDX"},
};

// Beginnings of the archive files' names, in the order of LevelFile; İşyeri Açma has no archive.
constexpr const char* kGraduates[] = {"MKAL", "MUST", "MUOG", nullptr, "MDENK_K", "MDENK_U"};
constexpr const char* kLeavers[] = {"AKAL", "AUST", "AUOG", nullptr, "ADENK_K", "ADENK_U"};

constexpr const char* kNamePrefixes[] = {"KALF", "USTA",   "ISYERI", "DENKLIK_", "MKAL", "MUST",
                                         "MUOG", "MDENK_", "AKAL",   "AUST",     "AUOG", "ADENK_"};

} // namespace

std::span<const LevelTemplate> workingSetTemplates() { return kWorkingSet; }

void LevelPaths::build(DataSetMode mode, const QString& schoolYear) {
    if (mode == DataSetMode::Working) {
        for (size_t i = 0; i < paths_.size(); ++i)
            paths_[i] = QLatin1String(kWorkingSet[i].file);
        return;
    }
    const auto& prefixes = mode == DataSetMode::Graduates ? kGraduates : kLeavers;
    for (size_t i = 0; i < paths_.size(); ++i) {
        if (!prefixes[i]) continue;
        paths_[i] = QStringLiteral("\\Data\\%1%2.MDB").arg(QLatin1String(prefixes[i]), schoolYear.left(4));
    }
}

LevelFile LevelPaths::choose(Level level, bool equivalence) {
    switch (level) {
    case Level::Kalfa: return equivalence ? LevelFile::DenklikKalfa : LevelFile::Kalfa;
    case Level::Usta: return equivalence ? LevelFile::DenklikUsta : LevelFile::Usta;
    case Level::UstaOgretici: return LevelFile::UstaOgretici;
    case Level::IsyeriAcma: return LevelFile::IsyeriAcma;
    case Level::DenklikKalfa: return LevelFile::DenklikKalfa;
    case Level::DenklikUsta: return LevelFile::DenklikUsta;
    }
    return LevelFile::Kalfa;
}

bool isLevelFileName(const QString& fileName) {
    for (const char* prefix : kNamePrefixes)
        if (fileName.startsWith(QLatin1String(prefix), Qt::CaseInsensitive)) return true;
    return false;
}

} // namespace orvan
