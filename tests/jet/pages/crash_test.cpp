// The promise "wholly or not at all": a commit is stopped before every single operation in turn.
#include "page_fixture.h"

using namespace jet;
using namespace orvan_test;

namespace {

const std::filesystem::path kJournal = "/veri/KALFA.MDB-journal";

bool changesTheDisk(MemoryIo::Op op) {
    using Op = MemoryIo::Op;
    return op == Op::Open || op == Op::Write || op == Op::Truncate || op == Op::Sync || op == Op::Remove ||
           op == Op::Rename || op == Op::SyncFolder;
}

// Throws at operation `n` (from 0) that changes the disk; `dead`: and at every one after it.
struct FailAt {
    std::shared_ptr<size_t> seen = std::make_shared<size_t>(0);
    size_t n;
    bool dead;
    Err number = Err::DiskIO;
    void operator()(const MemoryIo::Step& step) const {
        if (!changesTheDisk(step.op)) return;
        const size_t now = (*seen)++;
        if (now == n || (dead && now > n)) throw Error(number, "Deneme hatası.");
    }
};

// The disk is dead once the first run of pages is in the database file: a journal that counts, a file half
// changed.
MemoryIo::Hook diesAfterFirstPage() {
    return [written = std::make_shared<int>(0)](const MemoryIo::Step& step) {
        const bool page = step.op == MemoryIo::Op::Write && step.path == kPath;
        if (changesTheDisk(step.op) && (*written > 0 || (page && ++*written > 1)))
            throw Error(Err::DiskIO, "öldü");
    };
}

std::vector<uint64_t> oldValues() { return {100, 101, 102, 103, 104, 105, 106, 107}; }
std::vector<uint64_t> newValues() { return {100, 1, 2, 103, 104, 5, 106, 107, 200, 201, 202}; }

void change(PageFile& file) {
    setValue(file.edit(1), 1);
    setValue(file.edit(2), 2);
    setValue(file.edit(5), 5);
    for (uint64_t value = 200; value < 203; ++value)
        setValue(file.append(), value);
}

// A journal is there that is not retired.
bool journalWaits(const MemoryIo& io) {
    const auto bytes = io.contents(kJournal);
    const std::string_view retired = "ORVENDED";
    const auto names = io.names();
    return std::find(names.begin(), names.end(), kJournal) != names.end() &&
           !(bytes.size() >= retired.size() && std::equal(retired.begin(), retired.end(), bytes.begin()));
}

// Commits with a failure at operation n. Returns true when there was no such operation.
bool commitFailing(PageFile& file, MemoryIo& io, size_t n, bool dead, bool& acknowledged) {
    WriteScope write(file);
    change(file);
    FailAt fail{.n = n, .dead = dead};
    io.setHook(fail);
    acknowledged = errorOf([&] { write.commit(); }) == 0;
    return *fail.seen <= n;
}

void expectOldOrNew(const std::shared_ptr<MemoryIo>& io, bool mustBeNew, const std::string& where) {
    SCOPED_TRACE(where);
    auto file = open(io);
    const auto values = allValues(*file);
    if (mustBeNew)
        EXPECT_EQ(values, newValues());
    else
        EXPECT_TRUE(values == oldValues() || values == newValues()) << testing::PrintToString(values);
    EXPECT_FALSE(journalWaits(*io));
    {
        WriteScope write(*file); // and it can be written again
        setValue(file->edit(0), 77);
        write.commit();
    }
    EXPECT_EQ(valueOf(*open(io), 0), 77u);
    file.reset();
    EXPECT_EQ(io->names(), std::vector{kPath}) << "the last who leaves takes all with him";
}

TEST(Crash, AtEveryOperationTheNextOpenerFindsOldOrNew) {
    size_t n = 0;
    for (;; ++n) {
        const auto io = std::make_shared<MemoryIo>();
        { make(io, 8); }
        io->syncFolder(kPath.parent_path());
        auto file = open(io);
        bool acknowledged = false;
        const bool finished = commitFailing(*file, *io, n, true, acknowledged);
        const std::string where = "operation " + std::to_string(n);
        expectOldOrNew(io->afterCrash(MemoryIo::Survives::Everything), acknowledged,
                       where + ", process died");
        expectOldOrNew(io->afterCrash(MemoryIo::Survives::Synced), acknowledged && finished,
                       where + ", synced only");
        for (uint64_t seed = 0; seed < 40; ++seed)
            expectOldOrNew(io->afterCrash(MemoryIo::Survives::Chance, seed), acknowledged && finished,
                           where + ", power lost, dice " + std::to_string(seed));
        io->setHook({});
        if (finished) break;
    }
    EXPECT_GT(n, 10u) << "the commit has fewer steps than it needs";
}

TEST(Crash, AtEveryOperationOfTheRecoveryTheNextOneStillSucceeds) {
    const auto io = std::make_shared<MemoryIo>();
    { make(io, 8); }
    io->syncFolder(kPath.parent_path());
    auto file = open(io);
    {
        WriteScope write(*file);
        change(*file);
        io->setHook(diesAfterFirstPage());
        EXPECT_NE(errorOf([&] { write.commit(); }), 0);
    }
    const auto dead = io->afterCrash(MemoryIo::Survives::Everything);
    ASSERT_TRUE(dead->exists(kJournal));
    for (size_t n = 0;; ++n) {
        const auto again = dead->afterCrash(MemoryIo::Survives::Everything);
        FailAt fail{.n = n, .dead = true};
        again->setHook(fail);
        errorOf([&] { open(again); });
        for (uint64_t seed = 0; seed < 20; ++seed) {
            const auto left = again->afterCrash(MemoryIo::Survives::Chance, seed);
            EXPECT_EQ(allValues(*open(left)), oldValues()) << "operation " << n << ", dice " << seed;
        }
        again->setHook({});
        if (*fail.seen <= n) break;
    }
}

// One operation fails, the disk lives on: the commit throws that error, the file is as before, all goes on.
TEST(Crash, AFailedCommitIsUndoneAndTheHandleGoesOn) {
    for (const Err number : {Err::DiskFull, Err::DiskIO}) {
        for (size_t n = 0;; ++n) {
            const auto io = std::make_shared<MemoryIo>();
            { make(io, 8); }
            auto file = open(io);
            auto reader = open(io);
            WriteScope write(*file);
            change(*file);
            FailAt fail{.n = n, .dead = false, .number = number};
            io->setHook(fail);
            const int error = errorOf([&] { write.commit(); });
            io->setHook({});
            const bool finished = *fail.seen <= n;
            EXPECT_TRUE(error == code(number) || error == 0) << error;
            file->assertState();
            EXPECT_EQ(allValues(*reader), error == 0 ? newValues() : oldValues()) << "operation " << n;
            EXPECT_EQ(allValues(*file), error == 0 ? newValues() : oldValues()) << "operation " << n;
            EXPECT_FALSE(journalWaits(*io));
            if (finished) {
                EXPECT_EQ(error, 0);
                break;
            }
        }
    }
}

// Both write over a journal that is there: a retired one by the next commit, a hot one by its retirement.
TEST(Crash, AWriteOverAJournalThatEndsAnywhereBringsNoOlderStateBack) {
    for (const bool dies : {true, false}) {
        for (size_t cut = 0; cut <= 80; ++cut) {
            for (size_t n = 0; n < 2; ++n) { // the journal's new content, its retirement
                const auto io = std::make_shared<MemoryIo>();
                auto file = make(io, 8);
                {
                    WriteScope write(*file);
                    setValue(file->edit(3), 33);
                    write.commit();
                }
                size_t seen = 0;
                io->setHook([&](const MemoryIo::Step& step) {
                    const bool strikes =
                        step.op == MemoryIo::Op::Write && step.path == kJournal && seen++ == n;
                    if (strikes)
                        io->patch(kJournal, step.offset, step.data.first(std::min(cut, step.data.size())));
                    if (strikes || (dies && seen > n)) throw Error(Err::DiskIO, "Deneme hatası.");
                });
                WriteScope write(*file);
                change(*file);
                const int error = errorOf([&] { write.commit(); });
                io->setHook({});
                auto before = oldValues(), after = newValues();
                before[3] = after[3] = 33;
                const auto found = allValues(*open(io->afterCrash(MemoryIo::Survives::Everything)));
                const std::string where = (dies ? "dies, write " : "fails, write ") + std::to_string(n) +
                                          " after " + std::to_string(cut) + " bytes";
                EXPECT_TRUE(found == before || (n == 1 && found == after)) << where;
                if (dies) continue;
                EXPECT_EQ(found, error == 0 ? after : before) << where;
                EXPECT_EQ(allValues(*file), found) << where;
            }
        }
    }
}

TEST(Crash, OthersWhoHaveTheFileOpenRollBackTheDeadWriter) {
    const auto io = std::make_shared<MemoryIo>();
    auto dying = make(io, 8);
    auto reader = open(io);
    auto writer = open(io);
    EXPECT_EQ(valueOf(*reader, 1), 101u);
    for (PageFile* next : {reader.get(), writer.get()}) {
        {
            WriteScope write(*dying);
            change(*dying);
            io->setHook(diesAfterFirstPage());
            EXPECT_NE(errorOf([&] { write.commit(); }), 0);
            io->setHook({});
        }
        ASSERT_TRUE(io->exists(kJournal));
        const bool writes = next == writer.get();
        if (writes)
            next->beginWrite();
        else
            next->beginRead();
        EXPECT_FALSE(io->exists(kJournal));
        EXPECT_EQ(valueOf(next->read(1).data()), 101u);
        EXPECT_EQ(next->pageCount(), 8u);
        if (writes)
            next->rollbackWrite();
        else
            next->endRead();
        next->assertState();
    }
}

TEST(Crash, SpillFileOfADeadWriterGoesWithTheLastWhoLeaves) {
    const auto io = std::make_shared<MemoryIo>();
    { make(io, 200); }
    auto other = open(io);
    for (size_t n = 0; n < 3; ++n) { // remove, make, remove
        {
            auto dying = open(io, {.cacheBytes = 8 * kPage});
            WriteScope write(*dying);
            io->setHook(FailAt{.n = n, .dead = true});
            EXPECT_NE(errorOf([&] {
                          for (PageNo no = 0; no < 200; ++no)
                              setValue(dying->edit(no), 1);
                      }),
                      0);
        }
        io->setHook({});
    }
    EXPECT_TRUE(io->contains("/veri/KALFA.MDB-spill1"));
    other.reset();
    EXPECT_EQ(io->names(), std::vector<std::filesystem::path>{kPath});
}

TEST(Crash, TwoWhoFindTheSameJournalRollItBackOnce) {
    for (int n = 0; n < 14; ++n) { // the second comes before the n-th step of the first
        const auto io = std::make_shared<MemoryIo>();
        auto dying = make(io, 8);
        auto first = open(io), second = open(io, {.lockTimeoutMs = 20});
        {
            WriteScope write(*dying);
            change(*dying);
            io->setHook(diesAfterFirstPage());
            EXPECT_NE(errorOf([&] { write.commit(); }), 0);
        }
        int step = 0, refused = 0;
        io->setHook([&](const MemoryIo::Step&) {
            if (step++ == n) refused = errorOf([&] { EXPECT_EQ(allValues(*second), oldValues()); });
        });
        EXPECT_EQ(allValues(*first), oldValues()) << "step " << n;
        io->setHook({});
        EXPECT_TRUE(refused == 0 || refused == code(Err::LockedByOther)) << "step " << n << ": " << refused;
        EXPECT_EQ(allValues(*second), oldValues()) << "step " << n;
    }
}

TEST(Crash, WholeJournalIsRolledBackByTheNextWriterEvenWithoutAMovedCounter) {
    const auto io = std::make_shared<MemoryIo>();
    auto file = make(io, 8);
    std::vector<uint8_t> journal;
    {
        WriteScope write(*file);
        change(*file);
        io->setHook([&](const MemoryIo::Step& step) {
            if (step.path == kPath && step.op == MemoryIo::Op::Sync) journal = io->contents(kJournal);
        });
        write.commit();
        io->setHook({});
    }
    io->put(kJournal, journal);
    const WriteScope write(*file);
    EXPECT_EQ(allValues(*file), oldValues());
}

TEST(Crash, DamagedJournalsAreRemovedAndTouchNothing) {
    const auto io = std::make_shared<MemoryIo>();
    auto file = make(io, 8);
    std::vector<uint8_t> journal;
    {
        WriteScope write(*file);
        change(*file);
        io->setHook([&](const MemoryIo::Step& step) {
            const bool page = step.path == kPath && step.op == MemoryIo::Op::Write;
            if (page && journal.empty()) journal = io->contents(kJournal);
        });
        write.commit();
        io->setHook({});
        file.reset();
    }
    constexpr size_t header = 64, recordHead = 16;
    ASSERT_EQ(journal.size(), header + 3 * (recordHead + kPage));
    for (const size_t cut :
         {size_t{0}, size_t{5}, header - 1, header, header + recordHead + kPage, journal.size() - 1}) {
        io->put(kJournal, {journal.begin(), journal.begin() + static_cast<ptrdiff_t>(cut)});
        EXPECT_EQ(allValues(*open(io)), newValues()) << "cut at " << cut;
        EXPECT_FALSE(io->exists(kJournal));
    }
    for (size_t at = 0; at < journal.size(); at += at < 100 ? 1 : 499) {
        if (at >= header + 4 && at < header + 8) continue; // an unused word of the record
        auto damaged = journal;
        damaged[at] ^= 0x40;
        io->put(kJournal, damaged);
        EXPECT_EQ(allValues(*open(io)), newValues()) << "byte " << at;
    }
    io->put(kJournal, journal); // undamaged it counts
    EXPECT_EQ(allValues(*open(io)), oldValues());
}

TEST(Crash, DatabaseThatSomebodyCutIsNotFilledUpByItsJournal) {
    const auto io = std::make_shared<MemoryIo>();
    auto file = make(io, 8);
    WriteScope write(*file);
    change(*file);
    io->setHook(diesAfterFirstPage());
    EXPECT_NE(errorOf([&] { write.commit(); }), 0);
    const auto disk = io->afterCrash(MemoryIo::Survives::Everything);
    auto bytes = disk->contents(kPath);
    bytes.resize(3 * kPage); // pages 3 to 7 are gone, one of them is in the journal
    disk->put(kPath, bytes);
    EXPECT_EQ(allValues(*open(disk)), (std::vector<uint64_t>{100, 101, 102}));
    EXPECT_EQ(disk->contents(kPath).size(), bytes.size());
}

// What a commit asks of the disk. A journal whose name may not be durable is never relied on.
TEST(Crash, FlushesOfACommit) {
    const auto io = std::make_shared<MemoryIo>();
    { make(io, 600); }
    auto file = open(io);
    size_t flushes = 0, folders = 0;
    io->setHook([&](const MemoryIo::Step& step) {
        if (step.op == MemoryIo::Op::Sync) ++flushes;
        if (step.op == MemoryIo::Op::SyncFolder) ++folders;
    });
    const struct {
        const char* what;
        bool putUnfinished; // a journal that another left while he made it
        PageNo pages;
        size_t flushes, folders;
    } cases[] = {
        {"the first makes the journal", false, 1, 3, 1},
        {"the next takes the retired one", false, 3, 3, 0},
        {"a long journal is removed", false, 400, 2, 1},
        {"and is made anew", false, 1, 3, 1},
        {"an unfinished one is removed and made anew", true, 1, 3, 2},
    };
    for (const auto& c : cases) {
        if (c.putUnfinished) io->patch(kJournal, 0, std::vector<uint8_t>(8));
        flushes = folders = 0;
        WriteScope write(*file);
        for (PageNo no = 0; no < c.pages; ++no)
            setValue(file->edit(no), 5);
        write.commit();
        EXPECT_EQ(flushes, c.flushes) << c.what;
        EXPECT_EQ(folders, c.folders) << c.what;
    }
}

TEST(Crash, StaleJournalIsNotRolledBackIntoANewDatabase) {
    const auto io = std::make_shared<MemoryIo>();
    io->put(kJournal, std::vector<uint8_t>(9000, 1));
    auto file = make(io, 3);
    EXPECT_EQ(allValues(*file), (std::vector<uint64_t>{100, 101, 102}));
    EXPECT_FALSE(journalWaits(*io));
}

} // namespace
