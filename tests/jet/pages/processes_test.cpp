// Real processes on a real disk: they increment a common counter under load, and one of them is killed.
#include "page_fixture.h"

#include <csignal>
#include <cstdlib>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

using namespace jet;
using namespace orvan_test;
namespace fs = std::filesystem;

namespace {

constexpr PageNo kCounters = 12; // pages that must always carry the same number

// One increment of all counters; also appends a page now and then. Returns the number it committed.
uint64_t increment(PageFile& file, unsigned dice) {
    WriteScope write(file);
    const uint64_t next = valueOf(file, 0) + 1;
    for (PageNo no = 0; no < kCounters; ++no) {
        if (valueOf(file, no) + 1 != next) _exit(3); // a commit was seen half
        setValue(file.edit(no), next);
    }
    if (dice % 4 == 0) setValue(file.append(), next);
    write.commit();
    return next;
}

// The child's life: increments until told to stop; each acknowledged number goes to the pipe.
[[noreturn]] void child(const fs::path& path, int pipe, int rounds) {
    try {
        std::mt19937 dice(static_cast<unsigned>(::getpid()));
        auto file = open(systemIo(), {.cacheBytes = 1, .lockTimeoutMs = 60'000}, path);
        for (int i = 0; i < rounds; ++i) {
            const uint64_t done = increment(*file, dice());
            if (::write(pipe, &done, sizeof done) != sizeof done) _exit(4);
            if (dice() % 8 == 0) file = nullptr, file = open(systemIo(), {.lockTimeoutMs = 60'000}, path);
        }
        file.reset();
        _exit(0);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "child: %s\n", error.what());
        _exit(5);
    }
}

class Processes : public testing::Test {
  protected:
    void SetUp() override {
        std::string name = (fs::temp_directory_path() / "orvan-processes-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder = name;
        path = folder / "KALFA.MDB";
        auto file = PageFile::create(systemIo(), path, {}, kPage);
        WriteScope write(*file);
        for (PageNo no = 0; no < kCounters; ++no)
            setValue(file->append(), 0);
        write.commit();
        ASSERT_EQ(::pipe(pipe), 0);
    }
    void TearDown() override { fs::remove_all(folder); }

    pid_t start(int rounds) {
        const pid_t id = ::fork();
        if (id != 0) return id;
        ::close(pipe[0]);
        child(path, pipe[1], rounds);
    }
    // All numbers acknowledged until every child has closed its end.
    std::vector<uint64_t> acknowledged() {
        ::close(pipe[1]);
        std::vector<uint64_t> numbers;
        uint64_t number = 0;
        while (::read(pipe[0], &number, sizeof number) == sizeof number)
            numbers.push_back(number);
        ::close(pipe[0]);
        return numbers;
    }
    static int end(pid_t id) {
        int status = 0;
        ::waitpid(id, &status, 0);
        return status;
    }

    fs::path folder, path;
    int pipe[2] = {-1, -1};
};

// Every acknowledged number is there once, and those in between belong to commits whose process died before
// it could tell.
void expectNoLostUpdate(std::vector<uint64_t> numbers, uint64_t last, size_t mayBeUntold) {
    std::sort(numbers.begin(), numbers.end());
    EXPECT_EQ(std::adjacent_find(numbers.begin(), numbers.end()), numbers.end())
        << "two built on the same state";
    ASSERT_FALSE(numbers.empty());
    EXPECT_GE(last, numbers.back());
    EXPECT_LE(last - numbers.size(), mayBeUntold);
}

TEST_F(Processes, FourIncrementTogetherAndNothingIsLost) {
    constexpr int rounds = 60;
    std::vector<pid_t> children;
    for (int i = 0; i < 4; ++i)
        children.push_back(start(rounds));
    const auto numbers = acknowledged();
    for (const pid_t id : children)
        EXPECT_EQ(end(id), 0);
    EXPECT_EQ(numbers.size(), 4u * rounds);
    const auto file = open(systemIo(), {}, path);
    expectNoLostUpdate(numbers, valueOf(*file, 0), 0);
    file->assertState();
}

TEST_F(Processes, KilledInTheMidstTheyLeaveAWholeStateToTheOthers) {
    std::mt19937 dice(5);
    std::vector<pid_t> survivors = {start(120), start(120)};
    size_t killed = 0;
    for (; killed < 12; ++killed) {
        const pid_t victim = start(1'000'000);
        ::usleep(20'000 + dice() % 60'000);
        ::kill(victim, SIGKILL);
        EXPECT_TRUE(WIFSIGNALED(end(victim)));
    }
    const auto numbers = acknowledged();
    for (const pid_t id : survivors)
        EXPECT_EQ(end(id), 0);
    {
        const auto file = open(systemIo(), {}, path);
        const auto values = allValues(*file);
        for (PageNo no = 0; no < kCounters; ++no)
            EXPECT_EQ(values[no], values[0]);
        expectNoLostUpdate(numbers, values[0], killed);
    }
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(folder))
        left.push_back(entry.path().filename().string());
    EXPECT_EQ(left, std::vector<std::string>{"KALFA.MDB"});
}

} // namespace
