// Which file is the level database.
#include "core/level_paths.h"

#include <gtest/gtest.h>

using namespace orvan;

namespace {

TEST(LevelPaths, EveryLevelAndDataSet) {
    struct Case {
        Level level;
        bool equivalence;
        DataSetMode mode;
        const char* path;
    };
    const Case cases[] = {
        {Level::Kalfa, false, DataSetMode::Working, "\\Data\\KALFA.MDB"},
        {Level::Usta, false, DataSetMode::Working, "\\Data\\USTA.MDB"},
        {Level::UstaOgretici, false, DataSetMode::Working, "\\Data\\USTAOGR.MDB"},
        {Level::IsyeriAcma, false, DataSetMode::Working, "\\Data\\ISYERI.MDB"},
        {Level::Kalfa, true, DataSetMode::Working, "\\Data\\DENKLIK_K.MDB"},
        {Level::Usta, true, DataSetMode::Working, "\\Data\\DENKLIK_U.MDB"},
        {Level::UstaOgretici, true, DataSetMode::Working, "\\Data\\USTAOGR.MDB"},
        {Level::DenklikKalfa, false, DataSetMode::Working, "\\Data\\DENKLIK_K.MDB"},
        {Level::DenklikUsta, false, DataSetMode::Working, "\\Data\\DENKLIK_U.MDB"},
        {Level::Kalfa, false, DataSetMode::Graduates, "\\Data\\MKAL2008.MDB"},
        {Level::Usta, false, DataSetMode::Graduates, "\\Data\\MUST2008.MDB"},
        {Level::UstaOgretici, false, DataSetMode::Graduates, "\\Data\\MUOG2008.MDB"},
        {Level::Kalfa, true, DataSetMode::Graduates, "\\Data\\MDENK_K2008.MDB"},
        {Level::Usta, true, DataSetMode::Graduates, "\\Data\\MDENK_U2008.MDB"},
        {Level::Kalfa, false, DataSetMode::Leavers, "\\Data\\AKAL2008.MDB"},
        {Level::Usta, false, DataSetMode::Leavers, "\\Data\\AUST2008.MDB"},
        {Level::UstaOgretici, false, DataSetMode::Leavers, "\\Data\\AUOG2008.MDB"},
        {Level::Kalfa, true, DataSetMode::Leavers, "\\Data\\ADENK_K2008.MDB"},
        {Level::Usta, true, DataSetMode::Leavers, "\\Data\\ADENK_U2008.MDB"},
        // The archives have no such file: the entry keeps what it held.
        {Level::IsyeriAcma, false, DataSetMode::Leavers, "\\Data\\ISYERI.MDB"},
    };
    for (const Case& c : cases) {
        LevelPaths paths;
        paths.build(c.mode, "2008-2009");
        EXPECT_EQ(paths.of(LevelPaths::choose(c.level, c.equivalence)).toStdString(), c.path);
    }
}

TEST(LevelPaths, NamesOfLevelFiles) {
    for (const char* name : {"KALFA.MDB", "kalfa.mdb", "Ustaogr.mdb", "MKAL2008.MDB", "AUOG2010.mdb",
                             "DENKLIK_U.MDB", "ADENK_K2008.MDB"})
        EXPECT_TRUE(isLevelFileName(name)) << name;
    for (const char* name : {"Sabit.mdb", "Isletme.mdb", "Koord.mdb", "Ogrenci.Mdb", "KALSNDON.MDB",
                             "USTSNDON.MDB", "UOGSNDON.MDB"})
        EXPECT_FALSE(isLevelFileName(name)) << name;
}

} // namespace
