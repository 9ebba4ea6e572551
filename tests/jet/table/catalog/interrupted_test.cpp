// Structure statements that a full disk or a power failure stops anywhere: wholly there, or not at all.
#include "catalog_fixture.h"

#include "jet/pages/io_memory.h"

#include <functional>

namespace catalog_test {
namespace {

using jet::Database;
using jet::MemoryIo;
using jet::Type;
using jet::Value;

const fs::path kPath = "/bellek/a.mdb";

std::unique_ptr<Database> openIn(const std::shared_ptr<MemoryIo>& io) {
    jet::OpenOptions options;
    options.io = io;
    return Database::open(kPath, options);
}

// A small database with rows of every storage kind.
std::vector<uint8_t> startingBytes(uint32_t encodingKey) {
    auto io = std::make_shared<MemoryIo>();
    jet::CreateOptions options;
    options.io = io;
    options.encodingKey = encodingKey;
    auto database = Database::create(kPath, options);
    database->createTable("T",
                          {field("Id", Type::Long), field("Ad", Type::Text, 20), field("Not", Type::Memo)},
                          {primaryKey(0), index("Ad", {1})});
    jet::WriteBatch batch(*database);
    jet::Table table = database->openTable("T");
    for (int i = 0; i < 120; ++i)
        table.insert(
            std::vector<Value>{i, std::to_string(i % 40), std::string(static_cast<size_t>(i * 10), 'n')});
    batch.commit();
    database.reset();
    return io->contents(kPath);
}

// Tables, fields, indexes and rows: all that a statement may change.
std::string stateOf(Database& database) {
    std::string state;
    for (const std::string& name : database.tableNames()) {
        state += name + ":";
        for (const auto& f : database.tableDef(name).fields)
            state += f.name + " " + std::to_string(int(f.type)) + " " + std::to_string(f.size) + ",";
        for (const auto& i : database.tableDef(name).indexes)
            state += i.name + ",";
        for (const std::string& row : rowsOf(database, name))
            state += row + "\n";
    }
    return state;
}

struct Case {
    const char* what;
    std::function<void(Database&)> statement;
};
const Case kCases[] = {
    {"create table", [](Database& d) { d.createTable("Yeni", {field("A", Type::Memo)}, {primaryKey(0)}); }},
    {"drop table", [](Database& d) { d.dropTable("T"); }},
    {"rows written anew", [](Database& d) { d.alterField("T", "Ad", field("", Type::Long)); }},
    {"create index",
     [](Database& d) {
         d.createIndex("T", index("İki", {1, 0}));
     }},
    {"drop memo", [](Database& d) { d.dropField("T", "Not"); }},
    {"rename", [](Database& d) { d.renameTable("T", "Başka"); }},
    {"password",
     [](Database& d) {
         d.changePassword("", "x");
         d.changePassword("x", "");
     }},
};

bool changesTheDisk(MemoryIo::Op op) {
    return op == MemoryIo::Op::Write || op == MemoryIo::Op::Sync || op == MemoryIo::Op::Truncate ||
           op == MemoryIo::Op::Remove || op == MemoryIo::Op::SyncFolder;
}

// Runs the statement; `fails(n)` tells whether the n-th operation that changes the disk fails. Returns how
// many there were.
size_t runStopped(const Case& c, const std::shared_ptr<MemoryIo>& io, Database& database, int& error,
                  std::function<bool(size_t)> fails) {
    size_t count = 0;
    io->setHook([&count, fails](const MemoryIo::Step& step) {
        if (changesTheDisk(step.op) && fails(count++)) throw jet::Error(jet::Err::DiskFull, "Disk dolu.");
    });
    error = errorOf([&] { c.statement(database); });
    io->setHook({});
    return count;
}

class Interrupted : public testing::TestWithParam<uint32_t> {}; // key that encodes the pages

TEST_P(Interrupted, AFullDiskUndoesTheStatement) {
    const auto bytes = startingBytes(GetParam());
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.what);
        size_t total = 1;
        for (size_t stop = 0; stop < total; stop += 1 + total / 12) {
            auto io = std::make_shared<MemoryIo>();
            io->put(kPath, bytes);
            auto database = openIn(io);
            const std::string before = stateOf(*database);
            int error = 0;
            const size_t seen = runStopped(c, io, *database, error, [&](size_t n) { return n == stop; });
            total = std::max(total, seen);
            // An error after the point of no return (the journal's end) may come too late to undo anything.
            const std::string after = stateOf(*database);
            if (error != 0 && std::string(c.what) != "password") {
                EXPECT_TRUE(after == before) << "stopped at " << stop << " of " << total;
            }
            EXPECT_EQ(faultsOf(*database), "") << "stopped at " << stop;
            database.reset();
            database = openIn(io);
            EXPECT_TRUE(stateOf(*database) == after) << "reopened after stop at " << stop;
        }
    }
}

TEST_P(Interrupted, APowerFailureLeavesOldOrNew) {
    const auto bytes = startingBytes(GetParam());
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.what);
        auto clean = std::make_shared<MemoryIo>();
        clean->put(kPath, bytes);
        auto whole = openIn(clean);
        const std::string before = stateOf(*whole);
        int error = 0;
        const size_t total = runStopped(c, clean, *whole, error, [](size_t) { return false; });
        ASSERT_EQ(error, 0);
        const std::string done = stateOf(*whole);
        for (size_t stop = 0; stop < total; stop += 1 + total / 12) {
            auto io = std::make_shared<MemoryIo>();
            io->put(kPath, bytes);
            auto database = openIn(io);
            runStopped(c, io, *database, error, [&](size_t n) { return n >= stop; });
            auto later = io->afterCrash(MemoryIo::Survives::Chance, stop);
            jet::OpenOptions options;
            options.io = later;
            options.ignorePassword = true;
            auto reopened = Database::open(kPath, options);
            const std::string state = stateOf(*reopened);
            EXPECT_TRUE(state == before || state == done) << "stopped at " << stop << " of " << total;
            EXPECT_EQ(faultsOf(*reopened), "") << "stopped at " << stop;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InClearAndEncoded, Interrupted, testing::Values(0u, 0x7B1D03C4u));

} // namespace
} // namespace catalog_test
