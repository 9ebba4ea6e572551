// The writer of new files by itself: what it does with rows that stand against the indexes, with rows that
// cannot be, and with a catalog that is given in part.
#include "jet/check/check.h"
#include "jet/copy/content.h"
#include "jet/copy/database_writer.h"
#include "jet/copy/messy_database.h"
#include "jet/error.h"
#include "jet/index/entry_sorter.h"
#include "jet/table/catalog.h"

#include <gtest/gtest.h>
#include <random>

namespace copy_test {
namespace {

using namespace jet;

TableDef tableDef(const char* name, std::vector<FieldDef> fields, std::vector<IndexDef> indexes,
                  PageNo oldId = 0) {
    TableDef def;
    def.name = name;
    def.page = oldId;
    def.fields = std::move(fields);
    def.indexes = std::move(indexes);
    for (size_t i = 0; i < def.indexes.size(); ++i) {
        def.indexes[i].number = static_cast<uint32_t>(i);
        def.indexes[i].realNumber = static_cast<uint32_t>(2 * i); // with gaps, as after dropped indexes
    }
    for (FieldDef& each : def.fields) {
        each.sortOrder = kTurkishSort;
        each.fixedLength = each.type == Type::Long || each.type == Type::Numeric;
    }
    return def;
}

class Writer : public testing::Test {
  protected:
    void start(bool lenient) {
        writer_.emplace(kOut, NewDatabase{}, WriterOptions{.io = io_, .lenient = lenient});
    }
    void expectSound() {
        EXPECT_EQ(io_->names(), std::vector<std::filesystem::path>{kOut});
        database_ = openIn(io_, kOut);
        const CheckReport report = checkDatabase(*database_);
        EXPECT_EQ(report.faultCount, 0u) << report.faults.front().text;
    }
    std::shared_ptr<MemoryIo> io_ = std::make_shared<MemoryIo>();
    std::optional<DatabaseWriter> writer_;
    std::unique_ptr<Database> database_;
};

TEST_F(Writer, rowsThatStandAgainstAnIndexTakeItsRuleAwayOrStopTheWriter) {
    struct Case {
        const char* what;
        IndexDef index;
        std::vector<std::vector<Value>> rows; // number, text
        IndexFate fate;
        Err refused;
    } cases[] = {
        {"equal keys",
         index("Tek", {{1}}, true),
         {{1, "a"}, {2, "A"}, {3, "b"}},
         IndexFate::NotUnique,
         Err::DuplicateKey},
        {"equal primary keys",
         index("PrimaryKey", {{0}}, true, true),
         {{1, "a"}, {1, "b"}},
         IndexFate::NotUnique,
         Err::DuplicateKey},
        {"null in a primary key",
         index("PrimaryKey", {{0}}, true, true),
         {{{}, "a"}, {2, "b"}},
         IndexFate::NotUnique,
         Err::IndexNullKey},
        {"unknown letter",
         index("Ad", {{1}}),
         {{1, "\xE6\xBC\xA2"}},
         IndexFate::Dropped,
         Err::InvalidArgument},
        {"several nulls in a unique index",
         index("Tek", {{0}}, true),
         {{{}, "a"}, {{}, "b"}},
         IndexFate::Built,
         Err::InvalidArgument},
    };
    for (const Case& c : cases) {
        for (const bool lenient : {true, false}) {
            SCOPED_TRACE(std::string(c.what) + (lenient ? ", lenient" : ""));
            io_ = std::make_shared<MemoryIo>();
            start(lenient);
            writer_->beginTable(
                {.def = tableDef("T", {field("No", Type::Long), field("Ad", Type::Text, 20)},
                                 {index("Önce", {{0}}), c.index, index("Sonra", {{0, true}})})});
            for (const auto& row : c.rows)
                writer_->addRow(row);
            if (!lenient && c.fate != IndexFate::Built) {
                try {
                    writer_->endTable();
                    ADD_FAILURE();
                } catch (const Error& error) {
                    EXPECT_EQ(error.number(), c.refused);
                }
                writer_.reset();
                EXPECT_TRUE(io_->names().empty());
                continue;
            }
            const auto outcomes = writer_->endTable();
            ASSERT_EQ(outcomes.size(), 3u);
            EXPECT_EQ(outcomes[0].fate, IndexFate::Built);
            EXPECT_EQ(outcomes[1].fate, c.fate);
            EXPECT_EQ(outcomes[1].reason.empty(), c.fate == IndexFate::Built);
            EXPECT_EQ(outcomes[2].fate, IndexFate::Built);
            writer_->finish();
            expectSound();
            EXPECT_EQ(rowsOf(*database_, "T").size(), c.rows.size());
            EXPECT_EQ(database_->tableDef("T").indexes.size(), c.fate == IndexFate::Dropped ? 2u : 3u);
        }
    }
}

TEST_F(Writer, aRowThatIsRefusedLeavesNothing) {
    start(false);
    std::vector<FieldDef> fields{field("No", Type::Long), field("Not", Type::Memo)};
    for (int i = 0; i < 20; ++i)
        fields.push_back(field(("Metin" + std::to_string(i)).c_str(), Type::Text, 255));
    writer_->beginTable({.def = tableDef("T", fields, {})});
    std::vector<Value> row(fields.size());
    row[1] = std::string(9000, 'u'); // on pages of its own
    EXPECT_NO_THROW(writer_->addRow(row));
    struct Refusal {
        size_t field;
        Value value;
        Err number;
    } refusals[] = {{0, "beş", Err::Conversion}, {2, std::string(256, 'x'), Err::FieldTooLong}};
    for (const Refusal& refusal : refusals) {
        auto bad = row;
        bad[refusal.field] = refusal.value;
        try {
            writer_->addRow(bad);
            ADD_FAILURE();
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), refusal.number);
        }
    }
    auto wide = row;
    for (size_t i = 2; i < wide.size(); ++i)
        wide[i] = std::string(255, 'y');
    EXPECT_THROW(writer_->addRow(wide), Error); // no page takes it
    writer_->endTable();
    writer_->finish();
    expectSound();
    EXPECT_EQ(rowsOf(*database_, "T").size(), 1u);
}

// Two tables that name each other by their old ids, and one whose other side is not there.
TEST_F(Writer, relationsAreSettledByTheOldIds) {
    const auto related = [](IndexDef index, uint32_t table, int32_t theirs) {
        index.foreign = true;
        index.relatedTable = table;
        index.relatedIndex = theirs;
        return index;
    };
    start(true);
    TableDef parent =
        tableDef("Ana", {field("No", Type::Long)},
                 {index("PrimaryKey", {{0}}, true, true), related(index(".rB", {{0}}, true), 900, 1),
                  related(index(".rC", {{0}}, true), 777, 0)},
                 800);
    parent.indexes[1].realNumber = parent.indexes[2].realNumber = 0; // on the primary key's tree
    TableDef child = tableDef("Çocuk", {field("AnaNo", Type::Long)},
                              {index("Kendi", {{0}}), related(index("AnaÇocuk", {{0}}), 800, 1),
                               related(index("Yitik", {{0}}), 777, 0)},
                              900);
    for (const TableDef& def : {child, parent}) {
        writer_->beginTable({.def = def});
        writer_->addRow(std::vector<Value>{1});
        writer_->endTable();
    }
    EXPECT_EQ(writer_->finish().size(), 2u);
    expectSound();
    const TableDef ana = database_->tableDef("Ana"), cocuk = database_->tableDef("Çocuk");
    ASSERT_EQ(ana.indexes.size(), 2u); // the lost one stood on a tree that has another name
    EXPECT_EQ(ana.findIndex(".rB")->relatedTable, cocuk.page);
    EXPECT_EQ(cocuk.findIndex("AnaÇocuk")->relatedTable, ana.page);
    EXPECT_TRUE(cocuk.findIndex("AnaÇocuk")->foreign);
    EXPECT_FALSE(cocuk.findIndex("Yitik")->foreign);
}

// A catalog of which only some rows were saved.
TEST_F(Writer, theCatalogIsCompleted) {
    start(true);
    const int32_t first = writer_->beginTable({.def = tableDef("Bir", {field("No", Type::Long)}, {}, 50)});
    writer_->endTable();
    writer_->beginTable(
        {.def = tableDef("İki", {field("No", Type::Long)}, {}, 60), .flags = ObjectFlag::kHidden});
    writer_->endTable();
    EXPECT_EQ(writer_->newId(50), first);
    EXPECT_EQ(writer_->newId(70), 70);
    writer_->beginSystemTable(SystemPage::kObjects);
    const auto give = [&](int32_t id, int32_t parent, int type, const char* name) {
        std::vector<Value> row(writer_->def().fields.size());
        row[*writer_->def().findField("Id")] = id;
        row[*writer_->def().findField("ParentId")] = parent;
        row[*writer_->def().findField("Type")] = type;
        row[*writer_->def().findField("Name")] = name;
        writer_->addRow(row);
    };
    give(first, ObjectId::kTables, ObjectType::kTable, "Bir");
    give(INT32_MIN, ObjectId::kTables, ObjectType::kQuery,
         "Sorgu"); // the id that a new file gives a container
    writer_->endTable();
    writer_->finish();
    expectSound();
    EXPECT_EQ(database_->tableNames(), (std::vector<std::string>{"Bir", "İki"}));
    EXPECT_TRUE(database_->tableDef("İki").hidden);
    EXPECT_EQ(rowsOf(*database_, "MSysObjects").size(), 16u + 3u);
    EXPECT_GT(rowsOf(*database_, "MSysACEs").size(), 30u);
    database_ = openIn(io_, kOut, {}, false);
    EXPECT_NO_THROW(database_->createTable("Üç", {field("No", Type::Long)}));
}

TEST(EntrySorter, givesTheSameOrderFromRunsAsFromMemory) {
    std::mt19937 random(7);
    std::vector<std::pair<std::string, uint32_t>> wanted;
    EntrySorter inMemory, inRuns(2000, [io = std::make_shared<MemoryIo>()] {
        return io->open("/bellek/sıra", OpenMode::CreateNew);
    });
    for (uint32_t i = 1; i <= 3000; ++i) {
        Bytes key(random() % 20);
        for (uint8_t& byte : key)
            byte = static_cast<uint8_t>(random() % 3); // many equal ones, and ones that begin others
        if (i == 1500) key.assign(70'000, 1);          // longer than a buffer
        wanted.emplace_back(std::string(key.begin(), key.end()), i);
        for (EntrySorter* sorter : {&inMemory, &inRuns})
            sorter->add(key, {i, static_cast<uint8_t>(i)}, i % 2 == 0);
    }
    std::sort(wanted.begin(), wanted.end());
    for (EntrySorter* sorter : {&inMemory, &inRuns, &inRuns}) { // may be read twice
        size_t at = 0;
        SortedEntry entry;
        for (sorter->start(); sorter->next(entry); ++at) {
            ASSERT_LT(at, wanted.size());
            ASSERT_EQ(std::string(entry.key.begin(), entry.key.end()), wanted[at].first);
            ASSERT_EQ(entry.row.page, wanted[at].second);
            ASSERT_EQ(entry.hasNull, entry.row.page % 2 == 0);
        }
        EXPECT_EQ(at, wanted.size());
    }
}

} // namespace
} // namespace copy_test
