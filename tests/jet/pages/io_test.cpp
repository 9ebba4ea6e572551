// The real file system: error numbers, locks between handles, links, read-only folders.
#include "page_fixture.h"

#include <cstdlib>
#include <fstream>
#include <unistd.h>

using namespace jet;
using namespace orvan_test;
namespace fs = std::filesystem;

namespace {

class SystemIo : public testing::Test {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "orvan-pages-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
    }
    void TearDown() override {
        fs::permissions(folder, fs::perms::owner_all);
        fs::remove_all(folder);
    }
    fs::path folder;
    std::shared_ptr<Io> io = systemIo();
};

TEST_F(SystemIo, FailuresHaveTheirNumbersAndThePath) {
    std::ofstream(folder / "dosya") << "x";
    fs::create_directory(folder / "klasör");
    const struct {
        fs::path path;
        OpenMode mode;
        Err number;
    } cases[] = {
        {folder / "yok.mdb", OpenMode::ReadWrite, Err::FileNotFound},
        {folder / "yok" / "a.mdb", OpenMode::ReadWrite, Err::PathNotValid},
        {folder / "yok" / "a.mdb", OpenMode::CreateNew, Err::PathNotValid},
        {folder / "dosya" / "a.mdb", OpenMode::ReadOnly, Err::PathNotValid},
        {folder / "klasör", OpenMode::ReadOnly, Err::CannotOpen},
        {folder / "klasör", OpenMode::ReadWrite, Err::CannotOpen},
        {folder / "dosya", OpenMode::CreateNew, Err::DatabaseExists},
#ifndef _WIN32
        {"/dev/null", OpenMode::ReadOnly, Err::CannotOpen},
#endif
    };
    for (const auto& each : cases) {
        try {
            io->open(each.path, each.mode);
            ADD_FAILURE() << each.path;
        } catch (const Error& error) {
            EXPECT_EQ(error.code(), code(each.number)) << each.path << error.what();
            EXPECT_EQ(error.path(), each.path.string());
        }
    }
    auto full = std::ofstream(folder / "x");
    const auto file = io->open(folder / "dosya", OpenMode::ReadOnly);
#ifdef _WIN32 // it says that the handle may not, not that the disk failed
    constexpr Err refused = Err::CannotOpen;
#else
    constexpr Err refused = Err::DiskIO;
#endif
    EXPECT_EQ(errorOf([&] { file->write(0, std::vector<uint8_t>(3)); }), code(refused));
}

TEST_F(SystemIo, LocksStandBetweenHandlesOfOneProcess) {
    const auto a = io->open(folder / "k", OpenMode::CreateNew);
    const auto b = io->open(folder / "k", OpenMode::ReadWrite);
    EXPECT_TRUE(a->tryLock(0x20000000, 1, LockKind::Shared));
    EXPECT_TRUE(b->tryLock(0x20000000, 1, LockKind::Shared));
    EXPECT_TRUE(a->tryLock(0x20000001, 1, LockKind::Exclusive));
    EXPECT_FALSE(b->tryLock(0x20000001, 1, LockKind::Shared));
    EXPECT_TRUE(b->lockedByOther(0x20000001, 1));
    b->unlock(0x20000000, 1);
    EXPECT_TRUE(b->lockedByOther(0x20000000, 1));
    a->unlock(0x20000000, 1);
    EXPECT_FALSE(b->lockedByOther(0x20000000, 1));
}

TEST_F(SystemIo, FileStaysItselfUntilReplaced) {
    auto file = io->open(folder / "a", OpenMode::CreateNew);
    file->write(10, std::vector<uint8_t>{1, 2, 3});
    EXPECT_EQ(file->size(), 13u);
    std::vector<uint8_t> into(8, 9);
    EXPECT_EQ(file->read(9, into), 4u);
    EXPECT_EQ(into, (std::vector<uint8_t>{0, 1, 2, 3, 9, 9, 9, 9}));
    EXPECT_TRUE(file->isStillAt(folder / "a"));
    io->open(folder / "b", OpenMode::CreateNew);
#ifdef _WIN32 // there a name stays with the open file that has it, unless that is deleted
    EXPECT_EQ(errorOf([&] { io->rename(folder / "b", folder / "a"); }), code(Err::CannotOpen));
    EXPECT_TRUE(file->isStillAt(folder / "a"));
#else
    io->rename(folder / "b", folder / "a");
    EXPECT_FALSE(file->isStillAt(folder / "a"));
#endif
    io->remove(folder / "a");
    io->remove(folder / "a"); // not an error
    file.reset();             // not every system takes the name away from an open file
    EXPECT_FALSE(io->exists(folder / "a"));
    io->syncFolder(folder);
}

#ifdef _WIN32
TEST_F(SystemIo, NamesAreResolvedInTheSpellingOfTheDisk) {
    fs::create_directory(folder / "Çıraklık İşi");
    std::ofstream(folder / "Çıraklık İşi" / "Kalfa.MDB") << "x";
    const fs::path asked = folder / "Çıraklık İşi" / "KALFA.mdb";
    EXPECT_EQ(io->resolve(asked).filename(), "Kalfa.MDB") << "its .ldb is everybody's";
    EXPECT_TRUE(fs::equivalent(io->resolve(asked), asked));
    EXPECT_EQ(io->resolve(folder / "yeni.mdb").filename(), "yeni.mdb");
    EXPECT_TRUE(io->resolve("yeni.mdb").is_absolute());
}

TEST_F(SystemIo, FileMarkedReadOnlyOpensForReadingAlone) { // as copied from a disc
    { make(io, 2, {}, folder / "a.mdb"); }
    fs::permissions(folder / "a.mdb", fs::perms(0444)); // the attribute, on this system
    try {
        io->open(folder / "a.mdb", OpenMode::ReadWrite);
        fs::permissions(folder / "a.mdb", fs::perms(0666));
        GTEST_SKIP() << "the administrator may write everywhere";
    } catch (const Error&) {
    }
    {
        const auto file = open(io, {}, folder / "a.mdb");
        EXPECT_TRUE(file->readOnly());
        EXPECT_EQ(valueOf(*file, 1), 101u);
    }
    fs::permissions(folder / "a.mdb", fs::perms(0666));
    EXPECT_FALSE(open(io, {}, folder / "a.mdb")->readOnly());
}
#else // links and permission bits
TEST_F(SystemIo, DatabaseReachedThroughALinkHasTheSameLocksAndJournal) {
    fs::create_directories(folder / "asıl");
    { make(io, 2, {}, folder / "asıl" / "KALFA.MDB"); }
    fs::create_symlink(folder / "asıl" / "KALFA.MDB", folder / "bağ.mdb");
    const auto direct = open(io, {}, folder / "asıl" / "KALFA.MDB");
    const auto linked = open(io, {.lockTimeoutMs = 30}, folder / "bağ.mdb");
    EXPECT_EQ(linked->users().size(), 2u);
    const WriteScope write(*direct);
    EXPECT_EQ(errorOf([&] { linked->beginWrite(); }), code(Err::LockedByOther));
}

TEST_F(SystemIo, FilesBesideTheDatabaseAreAsOpenAsTheDatabase) {
    { make(io, 2, {}, folder / "a.mdb"); }
    fs::permissions(folder / "a.mdb", fs::perms(0666));
    const auto file = open(io, {}, folder / "a.mdb");
    EXPECT_EQ(fs::status(folder / "a.ldb").permissions(), fs::perms(0666));
}

TEST_F(SystemIo, ReadOnlyFolderAndFile) {
    if (::geteuid() == 0) GTEST_SKIP() << "the administrator may write everywhere";
    { make(io, 2, {}, folder / "a.mdb"); }
    fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
    {
        const auto file = open(io, {}, folder / "a.mdb");
        EXPECT_TRUE(file->readOnly()) << "without a journal nothing may be written";
        EXPECT_EQ(valueOf(*file, 1), 101u);
    }
    fs::permissions(folder, fs::perms::owner_all);
    fs::permissions(folder / "a.mdb", fs::perms::owner_read);
    const auto file = open(io, {}, folder / "a.mdb");
    EXPECT_TRUE(file->readOnly());
    EXPECT_EQ(file->users().size(), 1u);
}
#endif

} // namespace
