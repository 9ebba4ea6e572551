// Every index of the sample files: the check is clean, and each stored key is the key we make of its row.
#include "hex.h"
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/data_page.h"
#include "jet/format/database_header.h"
#include "jet/format/long_value.h"
#include "jet/format/row_codec.h"
#include "jet/index/btree.h"
#include "jet/index/key.h"
#include "support/shared_samples.h"

#include <gtest/gtest.h>
#include <map>

using namespace jet;
using namespace orvan_test;

namespace {

// Only what is needed to get from a row to the values of an index; the database itself is not under test
// here.
class Sample {
  public:
    explicit Sample(const std::filesystem::path& path) {
        file_ = PageFile::open(systemIo(), path, {.readOnly = true}, probePageSize);
        read_.emplace(*file_);
        {
            const PageRef first = file_->read(0);
            header_ = readHeader(first.bytes());
        }
        if (header_.encodingKey != 0) {
            read_.reset();
            file_->setCodec(makePageCodec(header_.encodingKey));
            read_.emplace(*file_);
        }
        allocator_.emplace(*file_, layout());
    }

    const Layout& layout() const { return *header_.layout; }
    PageFile& file() { return *file_; }
    BTree tree(const TableDef& def, const IndexDef& index) {
        return {*allocator_, index.rootPage, def.page, RowId::fromPacked(index.usageMapPointer)};
    }

    // Definitions of all tables that the catalog lists.
    std::vector<TableDef> tables() {
        constexpr PageNo kCatalog = 2;
        constexpr int kTable = 1;
        const TableDef catalog = parseTableDef(layout(), kCatalog, image(kCatalog));
        const size_t id = *catalog.findField("Id"), type = *catalog.findField("Type");
        std::vector<TableDef> found;
        UsageMap(*file_, layout(), RowId::fromPacked(catalog.ownedMapPointer)).forEach([&](PageNo no) {
            const PageRef page = file_->read(no);
            for (uint16_t i = 0; i < data_page::slotCount(layout(), page.bytes()); ++i) {
                const Slot slot = data_page::slot(layout(), page.bytes(), i);
                const RowId row{no, static_cast<uint8_t>(i)};
                if (slot.deleted || slot.hidden || value(catalog, type, row).toInt() != kTable) continue;
                const auto table = static_cast<PageNo>(value(catalog, id, row).toInt());
                found.push_back(parseTableDef(layout(), table, image(table)));
            }
        });
        return found;
    }

    Value value(const TableDef& def, size_t field, RowId row) {
        PageRef page = file_->read(row.page);
        Slot slot = data_page::slot(layout(), page.bytes(), row.row);
        if (slot.pointer) {
            row = data_page::pointerTarget(layout(), page.bytes(), row.row);
            page = file_->read(row.page);
            slot = data_page::slot(layout(), page.bytes(), row.row);
        }
        RowView view;
        view.attach(layout(), def, page.bytes().subspan(slot.start, slot.length), header_.codePage);
        if (def.fields[field].type != Type::Memo || view.isNull(field)) return view.value(field);
        std::string text;
        decodeText(layout(), header_.codePage, readLongValue(*file_, layout(), view.raw(field)), text);
        return text;
    }

  private:
    Bytes image(PageNo no) {
        Bytes bytes;
        for (size_t pages = 0; no != 0 && pages < 100; ++pages) {
            const PageRef page = file_->read(no);
            const auto part = page.bytes().subspan(pages == 0 ? 0 : layout().tdefBodyOfNextPages);
            bytes.insert(bytes.end(), part.begin(), part.end());
            no = get32(page.bytes(), layout().tdefNext);
        }
        return bytes;
    }

    std::unique_ptr<PageFile> file_;
    std::optional<ReadScope> read_;
    DatabaseHeader header_;
    std::optional<PageAllocator> allocator_;
};

struct Counts {
    size_t trees = 0, entries = 0, compared = 0;
};

void checkIndex(Sample& sample, const TableDef& def, const IndexDef& index, Counts& counts) {
    const bool comparable = keyObstacle(sample.layout(), def, index).empty();
    ++counts.trees;
    sample.tree(def, index)
        .verify(
            [&](std::span<const uint8_t> stored, RowId row) {
                ++counts.entries;
                if (!comparable) return;
                std::vector<Value> values;
                for (const IndexField& part : index.fields)
                    values.push_back(sample.value(def, part.field, row));
                Bytes key;
                bool allNull = false;
                makeKey(def, index, values, key, allNull);
                EXPECT_EQ(hex(key), hex(stored))
                    << index.name << " page " << row.page << " row " << int(row.row);
                ++counts.compared;
            },
            [&](PageNo page, const std::string& text) {
                ADD_FAILURE() << index.name << " page " << page << ": " << text;
            });
}

// A copy, so that no lock file appears beside the sample.
std::filesystem::path copyOf(const std::filesystem::path& sample) {
    const auto path = std::filesystem::path(::testing::TempDir()) / sample.filename();
    std::filesystem::copy_file(sample, path, std::filesystem::copy_options::overwrite_existing);
    std::filesystem::permissions(path, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
    return path;
}

} // namespace

TEST(StoredIndexes, TreesAreSoundAndKeysAreTheOnesWeMake) {
    ORVAN_NEED_SAMPLES();
    Counts all;
    for (const auto& path : samples()) {
        SCOPED_TRACE(path.filename().string());
        const auto copy = copyOf(path);
        Counts counts;
        {
            Sample sample(copy);
            for (const TableDef& def : sample.tables()) {
                SCOPED_TRACE("definition on page " + std::to_string(def.page));
                std::set<PageNo> seen; // several logical indexes may share a tree
                for (const IndexDef& index : def.indexes)
                    if (seen.insert(index.rootPage).second) checkIndex(sample, def, index, counts);
            }
        }
        std::filesystem::remove(copy);
        EXPECT_GT(counts.trees, 5u);
        all.trees += counts.trees, all.entries += counts.entries, all.compared += counts.compared;
    }
    std::printf("%zu trees, %zu entries, %zu keys compared\n", all.trees, all.entries, all.compared);
    EXPECT_GT(all.compared, 30'000u);
}

// Searching finds each stored entry, in trees that other programs made.
TEST(StoredIndexes, EveryEntryIsFoundByItsKey) {
    ORVAN_NEED_SAMPLES();
    for (const auto& path : samples()) {
        SCOPED_TRACE(path.filename().string());
        const auto copy = copyOf(path);
        {
            Sample sample(copy);
            for (const TableDef& def : sample.tables())
                for (const IndexDef& index : def.indexes) {
                    const BTree tree = sample.tree(def, index);
                    TreePosition at, found;
                    Bytes key;
                    RowId row;
                    bool exact = false;
                    for (bool more = tree.first(at); more; more = tree.next(at)) {
                        tree.read(at, key, row);
                        ASSERT_TRUE(tree.restore(key, row, found, exact) && exact) << index.name;
                        ASSERT_EQ(found.leaf, at.leaf);
                        ASSERT_EQ(found.entry, at.entry);
                        ASSERT_TRUE(tree.containsKey(key));
                    }
                }
        }
        std::filesystem::remove(copy);
    }
}
