// jet/table/table_storage.h: the entries of a new index, from the rows that are there or from elsewhere.
#include "jet/index/btree.h"
#include "jet/index/key.h"
#include "jet/table/table.h"
#include "jet/table/table_storage.h"

#include <algorithm>

namespace jet {

namespace {

void collect(OpenDatabase& db, const TableDef& def, const IndexDef& index, EntrySorter& entries,
             const std::function<void()>& step) {
    Table table(db, def.page);
    Scan scan = table.scan();
    std::vector<Value> values(index.fields.size());
    Bytes key;
    while (scan.next()) {
        bool hasNull = false, allNull = false;
        for (size_t i = 0; i < values.size(); ++i) {
            values[i] = scan.value(index.fields[i].field);
            hasNull = hasNull || values[i].isNull();
        }
        if (hasNull && (index.required || index.primary))
            throw Error(Err::IndexNullKey, "“" + index.name + "” dizininin alanları bazı kayıtlarda boş.");
        key.clear();
        makeKey(def, index, values, key, allNull);
        if (step) step();
        if (allNull && index.ignoreNulls) continue;
        entries.add(key, scan.id(), hasNull);
    }
}

// How many different keys there are. Refuses equal ones where `unique`; one with a null in it may stand
// beside others like it.
uint32_t countKeys(EntrySorter& entries, const IndexDef& index) {
    Bytes last;
    uint32_t count = 0;
    SortedEntry entry;
    for (entries.start(); entries.next(entry);) {
        const bool same =
            count > 0 && std::equal(entry.key.begin(), entry.key.end(), last.begin(), last.end());
        if (same && index.unique && !entry.hasNull)
            throw Error(Err::DuplicateKey,
                        "“" + index.name + "” dizini oluşturulamadı: aynı değeri taşıyan kayıtlar var.");
        if (same) continue;
        ++count;
        last.assign(entry.key.begin(), entry.key.end());
    }
    return count;
}

} // namespace

void buildTree(OpenDatabase& db, TableDef& def, const IndexDef& index, EntrySorter& entries) {
    const uint32_t keys = countKeys(entries, index);
    BTree tree(db.allocator(), index.rootPage, def.page, RowId::fromPacked(index.usageMapPointer));
    entries.start();
    tree.build([&](Bytes& bytes, RowId& row) {
        SortedEntry entry;
        if (!entries.next(entry)) return false;
        bytes.assign(entry.key.begin(), entry.key.end());
        row = entry.row;
        return true;
    });
    if (index.realNumber < def.uniqueEntryCounts.size()) def.uniqueEntryCounts[index.realNumber] = keys;
}

void fillTree(OpenDatabase& db, TableDef& def, const IndexDef& index, const FillOptions& options) {
    EntrySorter entries(options.memoryBytes, options.makeFile);
    collect(db, def, index, entries, options.step);
    buildTree(db, def, index, entries);
}

} // namespace jet
