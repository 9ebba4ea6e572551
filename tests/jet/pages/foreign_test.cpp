// An engine that does not follow our protocol has the file open, known by the locks that it holds on the
// .ldb.
#include "page_fixture.h"

#include "jet/pages/lock_file.h"

#include <fcntl.h>

using namespace jet;
using namespace orvan_test;

namespace {

const std::filesystem::path kLockFile = "/veri/KALFA.ldb";

// The other engine: holds a lock on the .ldb and changes pages as it likes.
class Foreign {
  public:
    Foreign(std::shared_ptr<MemoryIo> io, uint64_t lock) : io_(std::move(io)), lock_(lock) {
        file_ = io_->open(kLockFile, OpenMode::ReadWrite);
        if (!file_->tryLock(lock, 1, LockKind::Exclusive)) throw std::logic_error("held by one of us");
        std::string entry = "OFISPC";
        entry += '\0';
        entry.resize(32, ' ');
        entry += std::string("Admin\0", 6);
        entry.resize(64, ' ');
        const uint64_t slot = lock - ldb::kUserLock;
        if (slot < ldb::kMaxUsers)
            file_->write(slot * 64, {reinterpret_cast<const uint8_t*>(entry.data()), entry.size()});
    }
    void change(PageNo no, uint64_t value) {
        std::vector<uint8_t> page(kPage);
        std::memcpy(page.data(), &value, sizeof value);
        std::memcpy(page.data() + kPage - sizeof value, &value, sizeof value);
        io_->patch(kPath, no * kPage, page);
    }

  private:
    std::shared_ptr<MemoryIo> io_;
    std::unique_ptr<IoFile> file_;
    uint64_t lock_;
};

bool write(PageFile& file, uint64_t value, std::string* message = nullptr) {
    try {
        WriteScope scope(file);
        setValue(file.edit(1), value);
        scope.commit();
        return true;
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), Err::LockedByOther);
        if (message) *message = error.what();
        return false;
    }
}

TEST(ForeignEngine, KeepsUsFromWritingWhereverItsLockLies) {
    for (const uint64_t lock : {ldb::kUserLock + 3, ldb::kUserLock + 254, ldb::kForeignBegin,
                                ldb::kUserLock + 700, uint64_t{0x18000000}, ldb::kForeignEnd - 1}) {
        const auto io = std::make_shared<MemoryIo>();
        auto file = make(io, 4), other = open(io);
        {
            const Foreign access(io, lock);
            EXPECT_FALSE(write(*file, 1)) << std::hex << lock;
            EXPECT_FALSE(write(*open(io), 1)) << "nor one who comes later";
            EXPECT_EQ(valueOf(*file, 1), 101u);
            file->assertState();
        }
        EXPECT_TRUE(write(*file, 2));
        EXPECT_EQ(valueOf(*other, 1), 2u);
    }
}

TEST(ForeignEngine, IsNamedAndItsChangesAreReadAtOnce) {
    const auto io = std::make_shared<MemoryIo>();
    auto file = make(io, 4);
    EXPECT_EQ(valueOf(*file, 2), 102u);
    {
        Foreign access(io, ldb::kUserLock + 1);
        io->sleepMilliseconds(1000); // until the next look
        for (uint64_t value = 5; value < 8; ++value) {
            access.change(2, value);
            EXPECT_EQ(valueOf(*file, 2), value);
        }
        std::string message;
        EXPECT_FALSE(write(*file, 1, &message));
        EXPECT_NE(message.find("OFISPC Admin"), std::string::npos) << message;
        access.change(2, 9);
    }
    EXPECT_EQ(valueOf(*file, 2), 9u) << "also the last change before it left";
}

TEST(ForeignEngine, ThatCameDuringAWriteLetsItFailWhole) {
    const auto io = std::make_shared<MemoryIo>();
    auto file = make(io, 4);
    WriteScope batch(*file);
    setValue(file->edit(1), 1);
    const Foreign access(io, ldb::kUserLock + 1);
    EXPECT_EQ(errorOf([&] { batch.commit(); }), code(Err::LockedByOther));
    EXPECT_EQ(valueOf(*open(io), 1), 101u);
    file->assertState();
}

// It came, wrote and went between two of our looks: nothing is built on the old pages.
TEST(ForeignEngine, ThatHasGoneLeavesNoStalePageToAWriter) {
    const auto io = std::make_shared<MemoryIo>();
    auto file = make(io, 4);
    EXPECT_EQ(valueOf(*file, 2), 102u);
    Foreign(io, ldb::kUserLock + 1).change(2, 50);
    WriteScope scope(*file);
    EXPECT_EQ(valueOf(*file, 2), 50u);
}

TEST(ForeignEngine, KeepsItsLockFileWhenTheLastOfUsLeaves) {
    const auto io = std::make_shared<MemoryIo>();
    auto file = make(io, 4);
    {
        const Foreign access(io, ldb::kUserLock + 1);
        file.reset();
        EXPECT_TRUE(io->exists(kLockFile));
    }
    { open(io); }
    EXPECT_FALSE(io->exists(kLockFile)) << "a stale one goes with the next of us";
}

TEST(ForeignEngine, WeAreNotForeignToEachOther) {
    const auto io = std::make_shared<MemoryIo>();
    auto file = make(io, 4);
    std::vector<std::unique_ptr<PageFile>> others;
    for (int i = 0; i < 40; ++i)
        others.push_back(open(io, {.readOnly = i % 2 == 0, .cacheBytes = 1}));
    others.erase(others.begin() + 7);
    for (uint64_t i = 0; i < others.size(); ++i)
        EXPECT_TRUE(others[i]->readOnly() || write(*others[i], i));
    EXPECT_TRUE(write(*file, 77));
    EXPECT_EQ(valueOf(*others[0], 1), 77u);
}

// The classic locks of another process, as file servers and emulators take them.
// Over a network each question for a lock is a message.
TEST(ForeignEngine, LookingForItCostsFewQuestions) {
    const auto io = std::make_shared<MemoryIo>();
    auto file = make(io, 4);
    std::vector<std::unique_ptr<PageFile>> others;
    for (int i = 0; i < 9; ++i)
        others.push_back(open(io));
    EXPECT_TRUE(write(*file, 1));
    size_t questions = 0;
    io->setHook([&](const MemoryIo::Step& step) { questions += step.op == MemoryIo::Op::Lock; });
    EXPECT_TRUE(write(*file, 2));
    EXPECT_LT(questions, 100u);
}

#ifndef _WIN32
TEST(ForeignEngine, OfAnotherProcessIsSeen) {
    std::string folder = (std::filesystem::temp_directory_path() / "orvan-foreign-XXXXXX").string();
    ASSERT_NE(::mkdtemp(folder.data()), nullptr);
    const auto path = std::filesystem::path(folder) / "KALFA.MDB";
    auto file = make(systemIo(), 4, {}, path);
    int ready[2], leave[2];
    ASSERT_EQ(::pipe(ready) | ::pipe(leave), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const int fd = ::open((std::filesystem::path(folder) / "KALFA.ldb").c_str(), O_RDWR);
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        lock.l_start = static_cast<off_t>(ldb::kUserLock + 1);
        lock.l_len = 1;
        char word = ::fcntl(fd, F_SETLK, &lock) == 0 ? 'y' : 'n';
        if (::write(ready[1], &word, 1) != 1 || ::read(leave[0], &word, 1) != 1) ::_exit(1);
        ::_exit(0);
    }
    char word = 0;
    ASSERT_EQ(::read(ready[0], &word, 1), 1);
    EXPECT_EQ(word, 'y');
    EXPECT_FALSE(write(*file, 1));
    EXPECT_EQ(valueOf(*file, 1), 101u);
    ASSERT_EQ(::write(leave[1], &word, 1), 1);
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(write(*file, 2));
    for (const int end : {ready[0], ready[1], leave[0], leave[1]})
        ::close(end);
    file.reset();
    std::filesystem::remove_all(folder);
}
#endif

} // namespace
