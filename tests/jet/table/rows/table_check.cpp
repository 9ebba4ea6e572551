#include "jet/format/data_page.h"
#include "jet/index/btree.h"
#include "jet/index/key.h"
#include "table_fixture.h"

#include <algorithm>
#include <set>

namespace jet_rows {
namespace {

using Entry = std::pair<Bytes, RowId>;

std::vector<Entry> expectedEntries(Table& table, const TableDef& def, const IndexDef& index) {
    std::vector<Entry> entries;
    Scan scan = table.scan();
    while (scan.next()) {
        std::vector<Value> values;
        for (const IndexField& part : index.fields)
            values.push_back(scan.value(part.field));
        Entry entry{{}, scan.id()};
        bool allNull = false;
        makeKey(def, index, values, entry.first, allNull);
        if (!(allNull && index.ignoreNulls)) entries.push_back(entry);
    }
    std::sort(entries.begin(), entries.end());
    return entries;
}

void checkIndex(Database& db, Table& table, const TableDef& def, const IndexDef& index) {
    SCOPED_TRACE(index.name);
    BTree tree(db.allocator(), index.rootPage, def.page, RowId::fromPacked(index.usageMapPointer));
    std::vector<Entry> found;
    tree.verify(
        [&](std::span<const uint8_t> key, RowId row) {
            found.push_back({{key.begin(), key.end()}, row});
        },
        [](PageNo page, const std::string& text) { ADD_FAILURE() << "page " << page << ": " << text; });
    const auto expected = expectedEntries(table, def, index);
    ASSERT_EQ(found.size(), expected.size());
    EXPECT_TRUE(found == expected);
    const IndexDef* shown = def.findIndex(index.name);
    ASSERT_NE(shown, nullptr);
    size_t walked = 0;
    Scan scan = table.scan(index.name, {});
    while (scan.next())
        EXPECT_EQ(scan.id(), expected[walked++].second);
    EXPECT_EQ(walked, expected.size());
    KeyRange down;
    down.backwards = true;
    scan.restart(down);
    while (scan.next())
        EXPECT_EQ(scan.id(), expected[--walked].second);
    EXPECT_EQ(walked, 0u);
}

void checkPages(Database& db, const TableDef& def) {
    const Layout& layout = db.layout();
    const UsageMap owned(db.pages(), layout, RowId::fromPacked(def.ownedMapPointer));
    const UsageMap free(db.pages(), layout, RowId::fromPacked(def.freeMapPointer));
    free.forEach([&](PageNo page) { EXPECT_TRUE(owned.contains(page)) << page; });
    owned.forEach([&](PageNo page) {
        const PageRef ref = db.pages().read(page);
        EXPECT_EQ(data_page::owner(layout, ref.bytes()), def.page) << page;
        EXPECT_EQ(data_page::contradiction(layout, ref.bytes()), "") << page;
    });
}

} // namespace

void checkTable(Database& db, const std::string& name) {
    SCOPED_TRACE(name);
    Table table = db.openTable(name);
    const ReadScope scope(db.pages());
    const TableDef def = table.def();
    uint32_t rows = 0;
    Scan scan = table.scan();
    while (scan.next())
        ++rows;
    EXPECT_EQ(table.rowCount(), rows);
    for (const IndexDef& index : def.indexes)
        checkIndex(db, table, def, index);
    checkPages(db, def);
}

} // namespace jet_rows
