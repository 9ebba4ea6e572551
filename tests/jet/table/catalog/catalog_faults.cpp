// catalog_fixture.h: faultsOf().
#include "catalog_fixture.h"

#include "jet/index/btree.h"

namespace catalog_test {

std::string faultsOf(jet::Database& database) {
    std::string text;
    const jet::ReadScope read(database.pages());
    for (const std::string& name : database.tableNames(jet::TableKinds::All)) {
        const jet::TableDef def = database.tableDef(name);
        const size_t rows = rowsOf(database, name).size();
        for (const jet::IndexDef& index : def.indexes) {
            jet::BTree tree(database.allocator(), index.rootPage, def.page,
                            jet::RowId::fromPacked(index.usageMapPointer));
            size_t entries = 0;
            tree.verify([&](std::span<const uint8_t>, jet::RowId) { ++entries; },
                        [&](jet::PageNo page, const std::string& fault) {
                            text +=
                                name + "." + index.name + " (" + std::to_string(page) + "): " + fault + "\n";
                        });
            if (entries != rows && !index.ignoreNulls)
                text += name + "." + index.name + ": " + std::to_string(entries) + " entries, " +
                        std::to_string(rows) + " rows\n";
        }
    }
    return text;
}

} // namespace catalog_test
