// One handle: writes, savepoints, the bounded cache, page encoding, errors.
#include "page_fixture.h"

#include <algorithm>
#include <random>

using namespace jet;
using namespace orvan_test;

namespace {

std::shared_ptr<MemoryIo> memory() { return std::make_shared<MemoryIo>(); }

TEST(PageFile, CommitStaysAndRollbackLeavesNothing) {
    const auto io = memory();
    auto file = make(io, 5);
    const uint64_t generation = file->generation();
    {
        WriteScope write(*file);
        setValue(file->edit(2), 7);
        setValue(file->append(), 8);
        EXPECT_EQ(valueOf(*file, 2), 7u);
        EXPECT_EQ(file->pageCount(), 6u);
    }
    EXPECT_EQ(file->pageCount(), 5u);
    EXPECT_EQ(valueOf(*file, 2), 102u);
    EXPECT_GT(file->generation(), generation);
    {
        WriteScope write(*file);
        setValue(file->edit(2), 9);
        write.commit();
    }
    file->assertState();
    file.reset();
    EXPECT_EQ(valueOf(*open(io), 2), 9u);
    EXPECT_EQ(io->names(), std::vector{kPath}) << "journal, spill and lock file are gone";
}

TEST(PageFile, CreationRolledBackRemovesTheFile) {
    const auto io = memory();
    {
        auto file = PageFile::create(io, kPath, {}, kPage);
        EXPECT_EQ(errorOf([&] { PageFile::create(io, kPath, {.lockTimeoutMs = 20}, kPage); }),
                  code(Err::LockedByOther))
            << "a second creator waits for the end of the first";
        {
            WriteScope write(*file);
            setValue(file->append(), 1);
        }
        EXPECT_FALSE(io->exists(kPath));
        EXPECT_EQ(errorOf([&] { file->beginRead(); }), code(Err::FileNotFound));
    }
    { auto unused = PageFile::create(io, kPath, {}, kPage); }
    EXPECT_TRUE(io->names().empty());
    EXPECT_EQ(errorOf([&] { open(io); }), code(Err::FileNotFound));
}

// A creator who dies leaves an empty file, or a half written one with its journal: the name is free again.
TEST(PageFile, CreationOfADeadProcessIsTakenOver) {
    for (int pages = 0; pages < 2; ++pages) { // written before the death
        const auto io = memory();
        auto dying = PageFile::create(io, kPath, {}, kPage);
        WriteScope write(*dying);
        setValue(dying->append(), 1);
        setValue(dying->append(), 2);
        io->setHook([written = 0, pages, dead = false](const MemoryIo::Step& step) mutable {
            if (step.path == kPath && step.op == MemoryIo::Op::Write) dead = ++written > pages;
            if (step.path == kPath && step.op == MemoryIo::Op::Sync) dead = true;
            if (dead) throw Error(Err::DiskIO, "öldü");
        });
        errorOf([&] { write.commit(); });
        const auto left = io->afterCrash(MemoryIo::Survives::Everything);
        io->setHook({});
        ASSERT_TRUE(left->exists(kPath));
        { make(left, 3); }
        EXPECT_EQ(allValues(*open(left)), (std::vector<uint64_t>{100, 101, 102}));
        EXPECT_EQ(errorOf([&] { make(left, 3); }), code(Err::DatabaseExists));
    }
}

TEST(PageFile, ScopesInsideAWriteUndoOnlyTheirOwn) {
    const auto io = memory();
    auto file = make(io, 4);
    WriteScope batch(*file);
    setValue(file->edit(1), 1);
    {
        WriteScope kept(*file);
        setValue(file->edit(1), 2);
        setValue(file->append(), 50);
        {
            WriteScope undone(*file);
            setValue(file->edit(1), 3);
            setValue(file->edit(2), 3);
            setValue(file->append(), 51);
        }
        EXPECT_EQ(file->pageCount(), 5u);
        kept.commit();
    }
    {
        WriteScope undone(*file);
        setValue(file->edit(4), 4);
        setValue(file->edit(1), 4);
    }
    file->assertState();
    batch.commit();
    EXPECT_EQ(allValues(*open(io)), (std::vector<uint64_t>{100, 2, 102, 103, 50}));
}

TEST(PageFile, EmptySavepointUndoneDoesNotDisturb) {
    auto file = make(memory(), 2);
    WriteScope batch(*file);
    setValue(file->edit(1), 1);
    const uint64_t generation = file->generation(), changes = file->changeCount();
    { const WriteScope undone(*file); }
    EXPECT_EQ(file->generation(), generation);
    EXPECT_EQ(file->changeCount(), changes);
}

TEST(PageFile, PinnedPageKeepsItsPlaceWhileOthersComeAndGo) {
    auto file = make(memory(), 300, {.cacheBytes = 16 * kPage});
    const ReadScope scope(*file);
    std::vector<PageRef> pinned;
    for (PageNo no = 0; no < 40; ++no)
        pinned.push_back(file->read(no)); // more than the bound
    std::vector<const uint8_t*> places;
    for (const PageRef& page : pinned)
        places.push_back(page.data());
    for (PageNo no = 40; no < 300; ++no)
        EXPECT_EQ(valueOf(file->read(no).data()), 100u + no);
    for (PageNo no = 0; no < 40; ++no) {
        EXPECT_EQ(pinned[no].data(), places[no]);
        EXPECT_EQ(valueOf(pinned[no].data()), 100u + no);
    }
    file->assertState();
}

TEST(PageFile, PageOutsideTheFileIsCorruptWithItsPlace) {
    auto file = make(memory(), 3);
    const ReadScope scope(*file);
    try {
        file->read(3);
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), Err::Corrupt);
        EXPECT_EQ(error.page(), 3u);
        EXPECT_EQ(error.path(), kPath.string());
        EXPECT_NE(std::string(error.what()).find("sayfa 3"), std::string::npos);
    }
    file->assertState();
}

TEST(PageFile, OldPagesSizeOpensReadOnly) {
    const auto io = memory();
    io->put(kPath,
            std::vector<uint8_t>(5 * 2048 + 100, 1)); // a part of a page behind the last is not counted
    auto file = PageFile::open(io, kPath, {}, [](std::span<const uint8_t> first) {
        EXPECT_EQ(first.size(), 4096u);
        return size_t{2048};
    });
    EXPECT_EQ(file->pageCount(), 5u);
    EXPECT_TRUE(file->readOnly());
    EXPECT_EQ(errorOf([&] { file->beginWrite(); }), code(Err::ReadOnly));
    const ReadScope scope(*file);
    EXPECT_EQ(file->read(4).bytes().size(), 2048u);
}

TEST(PageFile, PartOfAPageBehindTheLastSurvivesAFailedAppend) {
    const auto io = memory();
    { make(io, 2); }
    std::vector<uint8_t> bytes = io->contents(kPath);
    bytes.insert(bytes.end(), 100, 0xEE);
    io->put(kPath, bytes);
    auto file = open(io);
    WriteScope write(*file);
    setValue(file->append(), 5);
    io->setHook([](const MemoryIo::Step& step) {
        if (step.op == MemoryIo::Op::Sync && step.path == kPath) throw Error(Err::DiskIO, "x");
    });
    EXPECT_EQ(errorOf([&] { write.commit(); }), code(Err::DiskIO));
    EXPECT_EQ(io->names().size(), 3u) << "the disk refused to restore, too: the journal waits";
    io->setHook({});
    EXPECT_EQ(allValues(*file).size(), 2u);
    EXPECT_EQ(io->contents(kPath), bytes);
}

TEST(PageFile, ProbeSeesTheFileAndItsErrorLeavesNoLockFile) {
    const auto io = memory();
    io->put(kPath, {1, 2, 3});
    const auto probe = [](std::span<const uint8_t> first) -> size_t {
        EXPECT_EQ(first.size(), 3u);
        throw Error(Err::NotADatabase, "Bu dosya bir veritabanı değil.");
    };
    EXPECT_EQ(errorOf([&] { PageFile::open(io, kPath, {}, probe); }), code(Err::NotADatabase));
    EXPECT_EQ(io->names(), std::vector{kPath});
}

struct XorCodec final : PageCodec {
    void decode(PageNo no, std::span<uint8_t> page) const override {
        EXPECT_NE(no, 0u);
        for (uint8_t& byte : page)
            byte ^= static_cast<uint8_t>(no * 37 + 5);
    }
    void encode(PageNo no, std::span<uint8_t> page) const override { decode(no, page); }
};

TEST(PageFile, EncodedPagesAreEncodedOnlyInTheFile) {
    const auto io = memory();
    {
        auto file = PageFile::create(io, kPath, {.cacheBytes = 1}, kPage);
        WriteScope write(*file);
        setValue(file->append(), 0);
        file->setCodec(std::make_unique<XorCodec>()); // in the midst of the first write
        for (uint64_t i = 1; i < 100; ++i)
            setValue(file->append(), i); // many go through the spill file
        write.commit();
        EXPECT_EQ(allValues(*file)[99], 99u);
        WriteScope second(*file);
        setValue(file->edit(3), 33);
        second.commit();
    }
    EXPECT_EQ(io->contents(kPath)[3 * kPage + 8], 3 * 37 + 5);
    auto file = open(io);
    file->setCodec(std::make_unique<XorCodec>());
    EXPECT_EQ(valueOf(*file, 3), 33u);
    EXPECT_EQ(valueOf(*file, 0), 0u);
}

TEST(PageFile, FullDiskForTheSpillFileStopsTheWriteButNotTheHandle) {
    const auto io = memory();
    auto file = make(io, 4, {.cacheBytes = 1});
    io->setHook([](const MemoryIo::Step& step) {
        const bool spill = step.path.string().find("-spill") != std::string::npos;
        if (spill && step.op == MemoryIo::Op::Write) throw Error(Err::DiskFull, "dolu");
    });
    {
        WriteScope write(*file);
        const auto appendMany = [&] {
            for (int i = 0; i < 100; ++i)
                setValue(file->append(), 1);
        };
        EXPECT_EQ(errorOf(appendMany), code(Err::DiskFull));
        file->assertState();
    }
    io->setHook({});
    EXPECT_EQ(allValues(*file), (std::vector<uint64_t>{100, 101, 102, 103}));
}

// The model: the numbers of all pages, copied at each savepoint. The file has a cache of 16 pages only.
class RandomWrites : public testing::TestWithParam<int> {};

TEST_P(RandomWrites, AgreeWithAModelWhateverTheOrder) {
    std::mt19937 dice(static_cast<unsigned>(GetParam()));
    const auto below = [&dice](size_t n) { return static_cast<size_t>(dice() % n); };
    const auto io = memory();
    auto file = make(io, 60, {.cacheBytes = 1});
    std::vector<uint64_t> committed(60);
    for (size_t i = 0; i < committed.size(); ++i)
        committed[i] = 100 + i;
    uint64_t next = 1000;
    for (int round = 0; round < 12; ++round) {
        std::vector<uint64_t> now = committed;
        std::vector<std::vector<uint64_t>> saved;
        file->beginWrite();
        for (int step = 0; step < 150; ++step) {
            const size_t what = below(100);
            if (what < 45) {
                const size_t no = below(now.size());
                setValue(file->edit(static_cast<PageNo>(no)), now[no] = ++next);
            } else if (what < 60) {
                setValue(file->append(), ++next);
                now.push_back(next);
            } else if (what < 75) {
                const size_t no = below(now.size());
                ASSERT_EQ(valueOf(file->read(static_cast<PageNo>(no)).data()), now[no]);
            } else if (what < 86 && saved.size() < 6) {
                saved.push_back(now);
                ASSERT_EQ(file->savepoint(), saved.size());
            } else if (what < 93 && !saved.empty()) {
                const size_t depth = 1 + below(saved.size());
                file->releaseSavepoint(depth);
                saved.resize(depth - 1);
            } else if (!saved.empty()) {
                const size_t depth = 1 + below(saved.size());
                file->rollbackToSavepoint(depth);
                now = saved[depth - 1];
                saved.resize(depth - 1);
            }
            file->assertState();
            ASSERT_EQ(file->pageCount(), now.size());
        }
        if (below(3) == 0) {
            file->rollbackWrite();
        } else {
            file->commitWrite();
            committed = now;
        }
        ASSERT_EQ(allValues(*file), committed);
        ASSERT_EQ(allValues(*open(io)), committed);
    }
    EXPECT_LE(committed.size() * kPage, io->contents(kPath).size());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomWrites, testing::Range(1, 9));

} // namespace
