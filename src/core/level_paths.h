// core/level_paths.h — which file is the level database: six paths per data set, chosen by level, flag and
// mode. Pure: literals below the program folder, no disk.
#pragma once

#include "core/session.h"

#include <array>
#include <span>

namespace orvan {

enum class LevelFile { Kalfa, Usta, UstaOgretici, IsyeriAcma, DenklikKalfa, DenklikUsta };

struct LevelTemplate {
    const char* file;     // "\Data\KALFA.MDB"
    const char* original; // "\Mdx\KALFA.MDX"
};
std::span<const LevelTemplate> workingSetTemplates(); // in the order they are copied

class LevelPaths {
  public:
    // Fills the paths of the data set. The archives have no İşyeri Açma file: that entry keeps what it held
    // before (the working file at the beginning).
    void build(DataSetMode mode, const QString& schoolYear);
    QString of(LevelFile file) const { return paths_[static_cast<size_t>(file)]; }
    static LevelFile choose(Level level, bool equivalence);

  private:
    std::array<QString, 6> paths_{{{}, {}, {}, QStringLiteral("\\Data\\ISYERI.MDB"), {}, {}}};
};

// True for a file name that belongs to the level databases or their archives ("KALFA.MDB", "mkal2008.mdb").
bool isLevelFileName(const QString& fileName);

} // namespace orvan
