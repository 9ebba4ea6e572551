// Several handles on one file, in one process: the locks belong to handles, so this is what processes see,
// too.
#include "page_fixture.h"

using namespace jet;
using namespace orvan_test;

namespace {

class Sharing : public testing::Test {
  protected:
    std::shared_ptr<MemoryIo> io = std::make_shared<MemoryIo>();
    std::unique_ptr<PageFile> writer = make(io, 4, {.lockTimeoutMs = 500, .securityName = "Yazan"});
    std::unique_ptr<PageFile> reader = open(io, {.lockTimeoutMs = 500, .securityName = "Okuyan"});
};

TEST_F(Sharing, ReaderSeesTheOldStateUntilTheCommitAndTheNewAfterIt) {
    const uint64_t generation = reader->generation();
    {
        WriteScope write(*writer);
        setValue(writer->edit(1), 7);
        setValue(writer->append(), 8);
        EXPECT_EQ(allValues(*reader), (std::vector<uint64_t>{100, 101, 102, 103}));
        EXPECT_EQ(reader->generation(), generation);
        write.commit();
    }
    EXPECT_EQ(allValues(*reader), (std::vector<uint64_t>{100, 7, 102, 103, 8}));
    EXPECT_GT(reader->generation(), generation);
    const uint64_t after = reader->generation();
    EXPECT_EQ(valueOf(*reader, 1), 7u);
    EXPECT_EQ(reader->generation(), after) << "nobody wrote: the cache stays";
    reader->assertState();
}

TEST_F(Sharing, CommitWaitsForReadersAndTellsWhoTheyAre) {
    reader->beginRead();
    WriteScope write(*writer);
    setValue(writer->edit(1), 7);
    try {
        write.commit();
        FAIL() << "a reader holds its state";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), Err::LockedByOther);
        EXPECT_NE(error.message().find("BELLEK Okuyan"), std::string::npos) << error.message();
        EXPECT_EQ(error.message().find("Yazan"), std::string::npos) << error.message();
    }
    writer->assertState();
    EXPECT_EQ(valueOf(*writer, 1), 101u) << "undone";
    EXPECT_EQ(valueOf(reader->read(1).data()), 101u);
    reader->endRead();
}

TEST_F(Sharing, CommitGoesOnWhenTheReaderEndsAndNewReadersWaitMeanwhile) {
    auto third = open(io, {.lockTimeoutMs = 20});
    reader->beginRead();
    WriteScope write(*writer);
    setValue(writer->edit(1), 7);
    int sleeps = 0;
    int refused = 0;
    io->setHook([&](const MemoryIo::Step& step) {
        if (step.op != MemoryIo::Op::Sleep) return;
        if (++sleeps == 2) refused = errorOf([&] { third->beginRead(); }); // its own sleeps come here as well
        if (sleeps == 12) reader->endRead();
    });
    write.commit();
    io->setHook({});
    EXPECT_EQ(refused, code(Err::LockedByOther)) << "the waiting commit goes before new readers";
    EXPECT_EQ(valueOf(*third, 1), 7u);
}

TEST_F(Sharing, SecondWriterWaitsAndIsRefused) {
    const WriteScope first(*writer);
    EXPECT_EQ(errorOf([&] { reader->beginWrite(); }), code(Err::LockedByOther));
    EXPECT_GE(io->tickMilliseconds(), 500u);
    reader->assertState();
    EXPECT_FALSE(reader->inWrite());
}

TEST_F(Sharing, WhoHasJustWrittenDoesNotWriteAgainBeforeTheOneWhoWaits) {
    writer->beginWrite();
    setValue(writer->edit(1), 7);
    int sleeps = 0, second = -1;
    io->setHook([&](const MemoryIo::Step& step) {
        if (step.op != MemoryIo::Op::Sleep || ++sleeps != 3) return;
        writer->commitWrite();
        second = errorOf([&] { writer->beginWrite(); });
    });
    reader->beginWrite();
    io->setHook({});
    EXPECT_EQ(second, code(Err::LockedByOther)) << "the other stood in line";
    EXPECT_EQ(valueOf(*reader, 1), 7u);
    reader->rollbackWrite();
    const WriteScope again(*writer);
}

TEST_F(Sharing, WritersBuildOnEachOther) {
    for (uint64_t i = 0; i < 20; ++i) {
        PageFile& file = i % 2 == 0 ? *writer : *reader;
        WriteScope write(file);
        EXPECT_EQ(valueOf(file, 2), i == 0 ? 102 : i - 1);
        setValue(file.edit(2), i);
        EXPECT_EQ(file.append().number(), 4 + i);
        write.commit();
    }
    EXPECT_EQ(writer->pageCount(), 23u) << "as it saw the file last";
    EXPECT_EQ(allValues(*writer).size(), 24u);
}

TEST_F(Sharing, ReaderBecomesWriterUnlessACommitWaitsForIt) {
    reader->beginRead();
    {
        WriteScope upgraded(*reader);
        setValue(reader->edit(1), 5);
        upgraded.commit();
    }
    EXPECT_EQ(valueOf(reader->read(1).data()), 5u);
    reader->assertState();

    WriteScope write(*writer);
    setValue(writer->edit(1), 6);
    int refused = 0;
    io->setHook([&](const MemoryIo::Step& step) {
        if (step.op != MemoryIo::Op::Sleep || refused != 0) return;
        const uint64_t before = io->tickMilliseconds();
        refused = errorOf([&] { reader->beginWrite(); });
        EXPECT_EQ(io->tickMilliseconds(), before) << "waiting could help neither";
        reader->endRead();
    });
    write.commit();
    io->setHook({});
    EXPECT_EQ(refused, code(Err::LockedByOther));
    EXPECT_EQ(valueOf(*reader, 1), 6u);
}

TEST_F(Sharing, ReplacedFileIsNoticedBeforeItIsWritten) {
    io->put(kPath, io->contents(kPath)); // another file under the same name
    EXPECT_EQ(errorOf([&] { writer->beginWrite(); }), code(Err::CannotOpen));
    writer->assertState();
    EXPECT_EQ(valueOf(*open(io), 1), 101u);
}

TEST_F(Sharing, DeletedLockFileIsMadeAgainAndUsersMeetThere) {
    io->remove("/veri/KALFA.ldb");
    EXPECT_EQ(valueOf(*reader, 1), 101u);
    {
        WriteScope write(*writer);
        EXPECT_EQ(errorOf([&] { reader->beginWrite(); }), code(Err::LockedByOther))
            << "both are in the new one";
        setValue(writer->edit(1), 9);
        write.commit();
    }
    EXPECT_EQ(valueOf(*reader, 1), 9u);
    EXPECT_EQ(writer->users().size(), 2u);
    io->remove("/veri/KALFA.ldb");
    {
        WriteScope write(*writer);
        setValue(writer->edit(1), 10);
        write.commit();
    }
    io->sleepMilliseconds(1000);
    EXPECT_EQ(valueOf(*reader, 1), 10u) << "a reader notices soon";
    writer.reset();
    reader.reset();
    EXPECT_EQ(io->names(), std::vector{kPath});
}

} // namespace
