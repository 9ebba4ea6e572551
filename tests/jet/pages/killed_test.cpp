// Processes killed while they hold each of the locks: whoever stays goes on within moments, on a whole state,
// and only the living stand in the .ldb. The victim stops at an operation of its own I/O and says so.
#include "page_fixture.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

using namespace jet;
using namespace orvan_test;
namespace fs = std::filesystem;

namespace {

using OnWrite = std::function<void(const fs::path&)>;

// The system's files, telling of each write after it was done.
class WatchedFile final : public IoFile {
  public:
    WatchedFile(std::unique_ptr<IoFile> file, fs::path path, OnWrite onWrite)
        : file_(std::move(file)), path_(std::move(path)), onWrite_(std::move(onWrite)) {}
    size_t read(uint64_t offset, std::span<uint8_t> into) override { return file_->read(offset, into); }
    void write(uint64_t offset, std::span<const uint8_t> from) override {
        file_->write(offset, from);
        onWrite_(path_);
    }
    uint64_t size() override { return file_->size(); }
    void truncate(uint64_t size) override { file_->truncate(size); }
    void sync() override { file_->sync(); }
    bool tryLock(uint64_t offset, uint64_t length, LockKind kind) override {
        return file_->tryLock(offset, length, kind);
    }
    void unlock(uint64_t offset, uint64_t length) override { file_->unlock(offset, length); }
    bool lockedByOther(uint64_t offset, uint64_t length) override {
        return file_->lockedByOther(offset, length);
    }
    uint64_t changeStamp() override { return file_->changeStamp(); }
    bool isStillAt(const fs::path& path) override { return file_->isStillAt(path); }

  private:
    std::unique_ptr<IoFile> file_;
    fs::path path_;
    OnWrite onWrite_;
};

class WatchedIo final : public Io {
  public:
    explicit WatchedIo(OnWrite onWrite) : onWrite_(std::move(onWrite)) {}
    std::unique_ptr<IoFile> open(const fs::path& path, OpenMode mode) override {
        return std::make_unique<WatchedFile>(io_->open(path, mode), path, onWrite_);
    }
    bool exists(const fs::path& path) override { return io_->exists(path); }
    void remove(const fs::path& path) override { io_->remove(path); }
    void rename(const fs::path& from, const fs::path& to) override { io_->rename(from, to); }
    void syncFolder(const fs::path& folder) override { io_->syncFolder(folder); }
    std::string computerName() override { return io_->computerName(); }
    void sleepMilliseconds(int ms) override { io_->sleepMilliseconds(ms); }
    uint64_t tickMilliseconds() override { return io_->tickMilliseconds(); }

  private:
    std::shared_ptr<Io> io_ = systemIo();
    OnWrite onWrite_;
};

class Killed : public testing::Test {
  protected:
    static constexpr PageNo kPages = 200;
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "orvan-killed-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
        path = folder / "KALFA.MDB";
        make(systemIo(), kPages, {}, path);
    }
    void TearDown() override { fs::remove_all(folder); }

    // A child that calls `life` with what it must call where it is to be stopped. Returns when it got there.
    pid_t childStoppedAt(const std::function<void(const std::function<void()>&)>& life) {
        int pipe[2];
        if (::pipe(pipe) != 0) return -1;
        const pid_t id = ::fork();
        if (id == 0) {
            try {
                life([&] {
                    if (::write(pipe[1], "x", 1) != 1) ::_exit(3);
                    for (;;)
                        ::pause();
                });
            } catch (const std::exception& error) {
                std::fprintf(stderr, "child: %s\n", error.what());
            }
            ::_exit(4); // ended without coming there
        }
        ::close(pipe[1]);
        char sign = 0;
        EXPECT_EQ(::read(pipe[0], &sign, 1), 1) << "the child ended before its place";
        ::close(pipe[0]);
        return id;
    }
    static void kill(pid_t id) {
        ::kill(id, SIGKILL);
        ::waitpid(id, nullptr, 0);
    }
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    fs::path folder, path;
};

// Runs `work` and returns how long it took.
template <class F> double seconds(F&& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void writeAll(PageFile& file, PageNo pages, uint64_t value) {
    for (PageNo no = 0; no < pages; ++no)
        setValue(file.edit(no), value);
}

TEST_F(Killed, WhereverItStoodTheOthersGoOnWithinMoments) {
    struct Case {
        const char* holding;
        const char* stopsWriting;             // name of the file; nullptr: stops by itself inside the scope
        bool writes, othersRead, othersWrite; // while it still lives
    };
    const Case cases[] = {
        {"the writer lock", nullptr, true, true, false},
        {"EXCLUSIVE, the journal not whole", "KALFA.MDB-journal", true, false, false},
        {"EXCLUSIVE in the midst of the pages", "KALFA.MDB", true, false, false},
        {"SHARED", nullptr, false, true, false},
        {"the mutex of the .ldb", "KALFA.ldb", false, true, true},
    };
    auto ours = open(systemIo(), {.lockTimeoutMs = 200, .securityName = "Kalan"}, path);
    const std::string host = systemIo()->computerName();
    uint64_t value = 1000;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.holding);
        {
            WriteScope write(*ours);
            writeAll(*ours, kPages, ++value);
            write.commit();
        }
        const pid_t victim = childStoppedAt([&](const std::function<void()>& stop) {
            const auto io = std::make_shared<WatchedIo>([&](const fs::path& written) {
                if (c.stopsWriting && written.filename() == c.stopsWriting) stop();
            });
            auto file = open(io, {.lockTimeoutMs = 200, .securityName = "Giden"}, path);
            if (c.writes) {
                WriteScope write(*file);
                writeAll(*file, kPages, 1);
                if (!c.stopsWriting) stop();
                write.commit();
            } else {
                const ReadScope read(*file);
                stop();
            }
        });
        const auto tryWrite = [&](uint64_t to) {
            return errorOf([&] {
                WriteScope write(*ours);
                writeAll(*ours, kPages, to);
                write.commit();
            });
        };
        EXPECT_EQ(errorOf([&] { EXPECT_EQ(valueOf(*ours, 7), value); }),
                  c.othersRead ? 0 : code(Err::LockedByOther));
        EXPECT_EQ(tryWrite(c.othersWrite ? ++value : 1), c.othersWrite ? 0 : code(Err::LockedByOther));
        EXPECT_EQ(ours->users(), (std::vector<std::string>{host + " Kalan", host + " Giden"}));
        kill(victim);
        EXPECT_LT(seconds([&] { EXPECT_EQ(allValues(*ours), std::vector<uint64_t>(kPages, value)); }), 1.0);
        EXPECT_LT(seconds([&] { EXPECT_EQ(tryWrite(++value), 0); }), 1.0);
        EXPECT_EQ(ours->users(), std::vector<std::string>{host + " Kalan"});
        const auto another = open(systemIo(), {.securityName = "Yeni"}, path);
        EXPECT_EQ(another->users(), (std::vector<std::string>{host + " Kalan", host + " Yeni"}))
            << "the slot is free";
        ours->assertState();
    }
    ours.reset();
    EXPECT_EQ(files(), std::vector<std::string>{"KALFA.MDB"});
}

TEST_F(Killed, NobodyLeftToCleanUpButTheNextOne) {
    const pid_t victim = childStoppedAt([&](const std::function<void()>& stop) {
        size_t writes = 0;
        const auto io = std::make_shared<WatchedIo>([&](const fs::path& written) {
            if (written == path && ++writes == 2) stop();
        });
        auto file = open(io, {}, path);
        WriteScope write(*file);
        writeAll(*file, kPages, 1); // more pages than go into one write
        write.commit();
    });
    kill(victim);
    EXPECT_EQ(files(), (std::vector<std::string>{"KALFA.MDB", "KALFA.MDB-journal", "KALFA.ldb"}));
    {
        auto next = open(systemIo(), {.securityName = "Sonraki"}, path);
        EXPECT_EQ(next->users(), std::vector<std::string>{systemIo()->computerName() + " Sonraki"});
        EXPECT_EQ(valueOf(*next, kPages - 1), 100u + kPages - 1);
        EXPECT_EQ(valueOf(*next, 0), 100u);
    }
    EXPECT_EQ(files(), std::vector<std::string>{"KALFA.MDB"});
}

// The reader keeps its state over another process's whole commit, which waits for it.
TEST_F(Killed, AnOpenReadKeepsItsStateWhileAnotherProcessWantsToCommit) {
    auto ours = open(systemIo(), {.lockTimeoutMs = 10'000}, path);
    ours->beginRead();
    EXPECT_EQ(valueOf(ours->read(3).data()), 103u);
    const pid_t writer = ::fork();
    if (writer == 0) {
        const bool well = errorOf([&] {
                              auto file = open(systemIo(), {.lockTimeoutMs = 20'000}, path);
                              WriteScope write(*file);
                              writeAll(*file, kPages, 9);
                              write.commit();
                          }) == 0;
        ::_exit(well ? 0 : 1);
    }
    for (int look = 0; look < 20; ++look) {
        ::usleep(20'000);
        for (PageNo no = 0; no < kPages; no += 13)
            EXPECT_EQ(valueOf(ours->read(no).data()), 100u + no);
    }
    EXPECT_EQ(::waitpid(writer, nullptr, WNOHANG), 0) << "it waits for the reader";
    ours->endRead();
    int status = -1;
    EXPECT_LT(seconds([&] { ::waitpid(writer, &status, 0); }), 2.0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(allValues(*ours), std::vector<uint64_t>(kPages, 9));
}

} // namespace
