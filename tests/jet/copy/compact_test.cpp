// Compacting files of our own: what is kept, what goes, and what a full disk, a power failure or another user
// can do to it.
#include "jet/check/check.h"
#include "jet/copy/compact.h"
#include "jet/copy/content.h"
#include "jet/copy/messy_database.h"
#include "jet/index/btree.h"
#include "jet/table/definition_store.h"

#include <gtest/gtest.h>
#include <random>

namespace copy_test {
namespace {

using jet::Database;
using jet::Err;
using jet::MemoryIo;

size_t faultsOf(Database& database) { return jet::checkDatabase(database).faultCount; }

// The number of the error that the body throws; 0 when it throws none.
template <class F> int errorOf(F body) {
    try {
        body();
    } catch (const jet::Error& error) {
        return error.code();
    }
    return 0;
}

TEST(Compact, keepsTheContentAndLeavesTheHolesBehind) {
    struct Case {
        const char* what;
        jet::CreateOptions create;
    } cases[] = {{"Turkish, in clear", {}},
                 {"General, 1252", {.sortOrder = jet::kGeneralSort, .codePage = 1252}},
                 {"with a password", {.password = "Şifre12"}},
                 {"encoded", {.encodingKey = 0x5AC31F07}},
                 {"encoded, with a password", {.password = "gizli", .encodingKey = 0x00000001}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const auto io = messyDatabase(300, c.create);
        const auto bytes = io->contents(kIn);
        const auto report = jet::compactDatabase(kIn, kOut, {.password = c.create.password, .io = io});
        EXPECT_EQ(io->contents(kIn), bytes);
        EXPECT_EQ(report.tables, 2u);
        EXPECT_EQ(report.rows, 200u);
        EXPECT_EQ(report.bytesBefore, bytes.size());
        EXPECT_EQ(report.bytesAfter, io->sizeOf(kOut));
        EXPECT_LT(report.bytesAfter, report.bytesBefore * 3 / 4);

        const auto before = openIn(io, kIn, c.create.password);
        const auto after = openIn(io, kOut, c.create.password, false);
        EXPECT_EQ(difference(contentOf(*before), contentOf(*after)), "");
        EXPECT_EQ(faultsOf(*after), 0u);
        EXPECT_EQ(after->header().encodingKey, c.create.encodingKey);
        const jet::TableDef& def = after->tableDef("Öğrenci");
        EXPECT_EQ(def.maxColumns, def.fields.size());
        EXPECT_EQ(rowsOf(*after, "Öğrenci"), [&] { // page order is that of the primary key
            auto rows = rowsOf(*after, "Öğrenci");
            std::sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
                return std::stoi(a.substr(1)) < std::stoi(b.substr(1));
            });
            return rows;
        }());
        // The new file goes on where the old one stopped: 300 was given to a row that is gone.
        jet::Table table = after->openTable("Öğrenci");
        table.addNew();
        table.set("No", 1000);
        table.set("Ad", "Yeni");
        table.update();
        table.goTo(table.lastModified());
        EXPECT_EQ(table.value("Sıra"), jet::Value(301));
        EXPECT_EQ(table.value("Tutar"), jet::Value(jet::Currency{120000}));
        EXPECT_EQ(faultsOf(*after), 0u);
    }
}

TEST(Compact, aCompactedFileCannotBeMadeSmaller) {
    const auto io = messyDatabase();
    jet::compactDatabase(kIn, kOut, {.io = io});
    const auto again = jet::compactDatabase(kOut, "/bellek/üçüncü.mdb", {.io = io});
    EXPECT_EQ(again.bytesAfter, again.bytesBefore);
}

// Far more than fits into the memory it may use: pages go to the disk, keys are sorted in runs.
TEST(Compact, littleMemoryIsEnough) {
    const auto io = messyDatabase(6000);
    size_t opened = 0;
    io->setHook([&](const MemoryIo::Step& step) {
        opened += step.op == MemoryIo::Op::Open && step.path.string().ends_with("-sort");
    });
    jet::compactDatabase(kIn, kOut, {.io = io, .memoryBytes = 200'000});
    io->setHook({});
    EXPECT_GE(opened, 2u); // temporary files of sorted runs
    const auto before = openIn(io, kIn), after = openIn(io, kOut);
    EXPECT_EQ(difference(contentOf(*before), contentOf(*after)), "");
    EXPECT_EQ(faultsOf(*after), 0u);
}

// An order whose keys nobody here can make: the entries are taken over as they are.
TEST(Compact, anIndexWhoseKeysCannotBeMadeKeepsTheKeysItHad) {
    const auto io = messyDatabase();
    {
        const auto database = openIn(io, kIn, {}, false);
        jet::TableDef def = database->tableDef("Öğrenci");
        def.lastAutoNumber = 300;
        def.rowCount = database->openTable("Öğrenci").rowCount();
        for (jet::FieldDef& each : def.fields)
            each.sortOrder = {0x0411, 0};
        jet::WriteScope write(database->pages());
        jet::writeDefinition(database->allocator(), def.page, jet::serializeTableDef(jet::kJet4, def));
        write.commit();
    }
    jet::compactDatabase(kIn, kOut, {.io = io});
    const auto before = openIn(io, kIn), after = openIn(io, kOut);
    EXPECT_EQ(difference(contentOf(*before), contentOf(*after)), "");
    EXPECT_EQ(faultsOf(*after), 0u);
    const auto alongIndex = [](Database& database) {
        const jet::ReadScope read(database.pages());
        jet::Table table = database.openTable("Öğrenci");
        EXPECT_FALSE(table.def().findIndex("indAd")->readOnlyReason.empty());
        std::vector<std::string> names;
        for (jet::Scan scan = table.scan("indAd", {}); scan.next();)
            names.push_back(scan.value(1).toText());
        return names;
    };
    EXPECT_EQ(alongIndex(*before), alongIndex(*after));
}

// Permissions of a table dropped by a program that leaves them behind: the id may be a new table's.
TEST(Compact, permissionsOfWhatIsGoneAreNotGivenToAnother) {
    const auto io = messyDatabase();
    {
        const auto database = openIn(io, kIn, {}, false);
        jet::Table aces = database->openTable("MSysACEs");
        for (int32_t id = 6; id < 60; ++id) {
            if (id == int32_t(database->tableDef("Öğrenci").page) ||
                id == int32_t(database->tableDef("Boş").page))
                continue;
            aces.addNew();
            aces.set("ObjectId", id);
            aces.set("SID", jet::Bytes{1, 2});
            aces.set("ACM", 77);
            aces.update();
        }
    }
    jet::compactDatabase(kIn, kOut, {.io = io});
    for (const std::string& row : rowsOf(*openIn(io, kOut), "MSysACEs"))
        EXPECT_EQ(row.find("'77'"), std::string::npos) << row;
}

// The walk along the primary key must not be believed alone.
TEST(Compact, aRowThatItsIndexHasLostIsCarriedOver) {
    const auto io = messyDatabase();
    {
        const auto database = openIn(io, kIn, {}, false);
        const jet::TableDef def = database->tableDef("Öğrenci");
        const jet::IndexDef& key = *def.primaryKey();
        jet::WriteScope write(database->pages());
        jet::BTree tree(database->allocator(), key.rootPage, def.page,
                        jet::RowId::fromPacked(key.usageMapPointer));
        jet::TreePosition at;
        jet::Bytes bytes;
        jet::RowId row;
        ASSERT_TRUE(tree.first(at));
        tree.read(at, bytes, row);
        ASSERT_TRUE(tree.erase(bytes, row));
        write.commit();
        ASSERT_GT(faultsOf(*database), 0u);
    }
    jet::compactDatabase(kIn, kOut, {.io = io});
    const auto before = openIn(io, kIn), after = openIn(io, kOut);
    EXPECT_EQ(difference(contentOf(*before), contentOf(*after)), "");
    EXPECT_EQ(faultsOf(*after), 0u);
}

TEST(Compact, refusesWhatItCannotDoAndLeavesEverythingAsItWas) {
    const auto io = messyDatabase(30, {.password = "gizli"});
    const auto names = io->names();
    const auto bytes = io->contents(kIn);
    const jet::CopyOptions options{.password = "gizli", .io = io};
    EXPECT_EQ(errorOf([&] { jet::compactDatabase(kIn, kIn, options); }), int(Err::DatabaseExists));
    EXPECT_EQ(errorOf([&] { jet::compactDatabase(kIn, kOut, {.password = "yanlış", .io = io}); }),
              int(Err::InvalidPassword));
    EXPECT_EQ(errorOf([&] { jet::compactDatabase("/bellek/yok.mdb", kOut, options); }),
              int(Err::FileNotFound));
    bool asked = false;
    jet::CopyOptions stopping = options;
    stopping.progress = [&](size_t done, size_t total) {
        asked = true;
        EXPECT_LE(done, total);
        return false;
    };
    const auto large = messyDatabase(400);
    stopping.io = large;
    EXPECT_TRUE(jet::compactDatabase(kIn, kOut, stopping).stopped && asked);
    EXPECT_TRUE(jet::compactInPlace(kIn, stopping).stopped);
    EXPECT_EQ(large->names(), names);
    io->put(kOut, {1, 2, 3});
    EXPECT_EQ(errorOf([&] { jet::compactDatabase(kIn, kOut, options); }), int(Err::DatabaseExists));
    EXPECT_EQ(io->contents(kOut), (std::vector<uint8_t>{1, 2, 3}));
    io->erase(kOut);
    EXPECT_EQ(io->contents(kIn), bytes);
    EXPECT_EQ(io->names(), names);
}

TEST(Compact, inPlaceIsRefusedWhileAnybodyElseHasTheFileOpen) {
    const auto io = messyDatabase(30);
    const auto bytes = io->contents(kIn);
    {
        const auto other = openIn(io, kIn, {}, false);
        EXPECT_EQ(errorOf([&] { jet::compactInPlace(kIn, {.io = io}); }), int(Err::FileInUse));
    }
    { // one that comes while it is being done
        std::unique_ptr<Database> other;
        const auto large = messyDatabase(400);
        jet::CopyOptions options{.io = large};
        options.progress = [&](size_t, size_t) {
            if (!other) other = openIn(large, kIn);
            return true;
        };
        const auto before = large->contents(kIn);
        EXPECT_EQ(errorOf([&] { jet::compactInPlace(kIn, options); }), int(Err::FileInUse));
        EXPECT_EQ(large->contents(kIn), before);
    }
    EXPECT_EQ(io->contents(kIn), bytes);
    jet::compactInPlace(kIn, {.io = io});
    EXPECT_LT(io->sizeOf(kIn), bytes.size());
    EXPECT_EQ(faultsOf(*openIn(io, kIn)), 0u);
    EXPECT_EQ(io->names(), std::vector<std::filesystem::path>{kIn});
}

// A disk that fails at any operation of a compaction.
TEST(Compact, aFailureAnywhereLeavesTheOldFileAndNothingElse) {
    const std::vector<uint8_t> start = messyDatabase(40)->contents(kIn);
    for (const bool inPlace : {false, true}) {
        size_t failures = 0;
        for (size_t failAt = 1;; failAt += 1 + failAt / 60) {
            const auto io = std::make_shared<MemoryIo>();
            io->put(kIn, start);
            size_t count = 0;
            bool failed = false;
            io->setHook([&](const MemoryIo::Step& step) {
                const bool counts = step.op == MemoryIo::Op::Write || step.op == MemoryIo::Op::Sync ||
                                    step.op == MemoryIo::Op::Rename || step.op == MemoryIo::Op::Open ||
                                    step.op == MemoryIo::Op::SyncFolder || step.op == MemoryIo::Op::Read;
                if (!counts || ++count != failAt) return;
                failed = true;
                throw jet::Error(Err::DiskFull, "Disk dolu.");
            });
            const int error = errorOf([&] {
                if (inPlace)
                    jet::compactInPlace(kIn, {.io = io, .memoryBytes = 300'000});
                else
                    jet::compactDatabase(kIn, kOut, {.io = io, .memoryBytes = 300'000});
            });
            io->setHook({});
            if (!failed) break;
            SCOPED_TRACE("operation " + std::to_string(failAt) + (inPlace ? ", in place" : ""));
            ++failures;
            if (error == 0) continue; // it was not needed
            EXPECT_EQ(io->contents(kIn), start);
            EXPECT_EQ(faultsOf(*openIn(io, kIn)), 0u);
            EXPECT_EQ(io->names(), std::vector<std::filesystem::path>{kIn});
        }
        EXPECT_GT(failures, 40u);
    }
}

// The power goes at any operation: whoever comes next finds the old file or the new one.
TEST(Compact, inPlaceSurvivesAPowerFailureAtAnyMoment) {
    const std::shared_ptr<MemoryIo> source = messyDatabase(40);
    const auto wanted = contentOf(*openIn(source, kIn));
    const std::vector<uint8_t> start = source->contents(kIn);
    size_t old = 0, changed = 0;
    for (size_t failAt = 1;; failAt += 1 + failAt / 40) {
        const auto io = std::make_shared<MemoryIo>();
        io->put(kIn, start);
        struct PowerFailure {};
        size_t count = 0;
        std::vector<std::shared_ptr<MemoryIo>> found;
        io->setHook([&](const MemoryIo::Step& step) {
            if (step.op == MemoryIo::Op::Read || step.op == MemoryIo::Op::Lock || ++count != failAt) return;
            for (const auto how : {MemoryIo::Survives::Everything, MemoryIo::Survives::Synced})
                found.push_back(io->afterCrash(how));
            for (uint64_t seed = 0; seed < 3; ++seed)
                found.push_back(io->afterCrash(MemoryIo::Survives::Chance, failAt * 3 + seed));
        });
        jet::compactInPlace(kIn, {.io = io, .memoryBytes = 300'000});
        io->setHook({});
        if (found.empty()) break;
        for (const auto& disk : found) {
            SCOPED_TRACE("operation " + std::to_string(failAt));
            (disk->contents(kIn) == start ? old : changed)++;
            {
                const auto database = openIn(disk, kIn, {}, false);
                ASSERT_EQ(difference(wanted, contentOf(*database)), "");
                ASSERT_EQ(faultsOf(*database), 0u);
            }
            jet::compactInPlace(kIn, {.io = disk}); // what was left beside it is not in the way
            EXPECT_EQ(disk->names(), std::vector<std::filesystem::path>{kIn});
        }
    }
    EXPECT_GT(old, 0u);
    EXPECT_GT(changed, 0u);
}

} // namespace
} // namespace copy_test
