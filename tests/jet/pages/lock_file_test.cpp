// The .ldb: entries that come and go, its end, the limit of users, folders that cannot be written.
#include "page_fixture.h"

#include "jet/pages/lock_file.h"

using namespace jet;
using namespace orvan_test;

namespace {

const std::filesystem::path kLockFile = "/veri/KALFA.ldb";

std::string entry(const MemoryIo& io, size_t slot) {
    const auto bytes = io.contents(kLockFile);
    if (bytes.size() < (slot + 1) * 64) return {};
    const auto at = bytes.begin() + static_cast<ptrdiff_t>(slot * 64);
    return std::string(at, at + 64);
}

std::string padded(std::string name) {
    name += '\0';
    name.resize(32, ' ');
    return name;
}

TEST(LockFile, EntriesAreAsOtherProgramsExpectAndSlotsAreReused) {
    const auto io = std::make_shared<MemoryIo>();
    auto a = make(io, 2, {.securityName = "Admin"});
    auto b = open(io, {.securityName = "Müdür"});
    auto c = open(io, {.securityName = "Çok uzun bir kullanıcı adı, otuz ikiden uzun"});
    EXPECT_EQ(entry(*io, 0), padded("BELLEK") + padded("Admin"));
    EXPECT_EQ(entry(*io, 1), padded("BELLEK") + padded("Müdür"));
    const std::string cut = entry(*io, 2).substr(32);
    EXPECT_EQ(cut, padded("Çok uzun bir kullanıcı adı,")) << "cut between characters";
    EXPECT_EQ(a->users().size(), 3u);
    b.reset();
    EXPECT_EQ(c->users(), (std::vector<std::string>{"BELLEK Admin", "BELLEK Çok uzun bir kullanıcı adı,"}));
    b = open(io, {.securityName = "Yeni"});
    EXPECT_EQ(a->users()[1], "BELLEK Yeni") << "the lowest free slot";
    a.reset();
    b.reset();
    EXPECT_TRUE(io->exists(kLockFile));
    c.reset();
    EXPECT_FALSE(io->exists(kLockFile));
}

TEST(LockFile, AtMost255Users) {
    const auto io = std::make_shared<MemoryIo>();
    { make(io, 1); }
    std::vector<std::unique_ptr<PageFile>> users;
    for (int i = 0; i < 255; ++i)
        users.push_back(open(io, {.cacheBytes = 1}));
    EXPECT_EQ(errorOf([&] { open(io); }), code(Err::CannotOpen));
    users.erase(users.begin() + 100);
    EXPECT_EQ(open(io)->users().size(), 255u);
    EXPECT_EQ(users[0]->users().size(), 254u);
}

TEST(LockFile, LeftByADeadUserIsTakenOver) {
    const auto io = std::make_shared<MemoryIo>();
    { make(io, 1); }
    io->put(kLockFile, std::vector<uint8_t>(300, 0xC3)); // nobody holds a lock in it
    auto file = open(io);
    EXPECT_EQ(file->users(), std::vector<std::string>{"BELLEK Admin"});
    file.reset();
    EXPECT_FALSE(io->exists(kLockFile));
}

TEST(LockFile, NamesKeepCopiesBesideTheOriginalApart) {
    const auto io = std::make_shared<MemoryIo>();
    const auto a = make(io, 1, {}, "/veri/KALFA.MDB");
    const auto b =
        make(io, 1, {.lockTimeoutMs = 10}, "/veri/KALFA.tmp"); // as when one is copied into the other
    const auto c = make(io, 1, {}, "/veri/okul.mdb");
    EXPECT_TRUE(io->exists("/veri/KALFA.ldb"));
    EXPECT_TRUE(io->exists("/veri/KALFA.tmp.ldb"));
    EXPECT_TRUE(io->exists("/veri/okul.ldb"));
    const ReadScope reading(*a);
    WriteScope write(*b);
    setValue(b->edit(0), 5);
    write.commit();
}

// While one leaves and deletes the file, another comes in between any two of its steps.
TEST(LockFile, JoiningWhileTheLastOneLeavesEndsInOneCommonFile) {
    for (int n = 0; n < 8; ++n) {
        const auto io = std::make_shared<MemoryIo>();
        auto leaving = make(io, 2);
        std::unique_ptr<PageFile> coming;
        int step = 0, refused = 0;
        bool inside = false;
        io->setHook([&](const MemoryIo::Step&) {
            if (inside || step++ != n) return;
            inside = true;
            refused = errorOf([&] { coming = open(io, {.lockTimeoutMs = 50}); });
            inside = false;
        });
        leaving.reset();
        io->setHook({});
        if (!coming) {
            EXPECT_TRUE(refused == 0 || refused == code(Err::LockFailed)) << "step " << n;
            coming = open(io);
        }
        auto third = open(io, {.lockTimeoutMs = 50});
        EXPECT_EQ(third->users().size(), 2u) << "step " << n;
        const WriteScope write(*coming);
        EXPECT_EQ(errorOf([&] { third->beginWrite(); }), code(Err::LockedByOther)) << "step " << n;
    }
}

// The other way round: the last one leaves between two steps of who is coming.
TEST(LockFile, LastOneLeavingWhileAnotherJoinsDoesNotTakeTheFileAway) {
    for (int n = 0; n < 12; ++n) {
        const auto io = std::make_shared<MemoryIo>();
        auto leaving = make(io, 2);
        int step = 0;
        io->setHook([&](const MemoryIo::Step&) {
            if (step++ == n) leaving.reset();
        });
        auto coming = open(io);
        io->setHook({});
        leaving.reset();
        auto third = open(io, {.lockTimeoutMs = 50});
        EXPECT_EQ(third->users().size(), 2u) << "step " << n;
        const WriteScope write(*coming);
        EXPECT_EQ(errorOf([&] { third->beginWrite(); }), code(Err::LockedByOther)) << "step " << n;
    }
}

class Refusing : public testing::Test {
  protected:
    void SetUp() override { make(io, 3); }
    // Every opening that would write is refused, for the paths whose name ends in one of `endings`.
    void protect(std::vector<std::string> endings, bool readingToo = false) {
        io->setHook([endings, readingToo, this](const MemoryIo::Step& step) {
            if (step.op != MemoryIo::Op::Open || (reading && !readingToo)) return;
            for (const std::string& ending : endings)
                if (step.path.string().ends_with(ending)) throw Error(Err::CannotOpen, "İzin yok.");
        });
    }
    std::shared_ptr<MemoryIo> io = std::make_shared<MemoryIo>();
    bool reading = false;
};

TEST_F(Refusing, WithoutLockFileTheDatabaseOpensReadOnly) {
    protect({".ldb"}, true);
    auto file = open(io);
    EXPECT_TRUE(file->readOnly());
    EXPECT_TRUE(file->users().empty());
    EXPECT_EQ(valueOf(*file, 1), 101u);
    EXPECT_EQ(errorOf([&] { file->beginWrite(); }), code(Err::ReadOnly));
    file->assertState();
}

TEST_F(Refusing, HotJournalThatCannotBeRolledBackIsTold) {
    protect({".ldb"}, true);
    io->put("/veri/KALFA.MDB-journal", {1, 2, 3});
    EXPECT_EQ(errorOf([&] { open(io, {.lockTimeoutMs = 100}); }), code(Err::CannotOpen));
    EXPECT_TRUE(io->exists("/veri/KALFA.MDB-journal"));
}

} // namespace
