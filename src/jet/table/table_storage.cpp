// jet/table/table_storage.h: maps, data pages, long values, trees.
#include "jet/table/table_storage.h"

#include "jet/format/bytes.h"
#include "jet/format/data_page.h"
#include "jet/index/btree.h"

#include <algorithm>

namespace jet {

namespace {

// Frees the pages of a map that are data pages of this owner, then the map itself.
void freeDataPages(OpenDatabase& db, RowId mapPointer, uint32_t owner) {
    PageFile& file = db.pages();
    std::vector<PageNo> pages;
    UsageMap(file, db.layout(), mapPointer).forEach([&](PageNo page) {
        const PageRef ref = file.read(page);
        if (ref.bytes()[0] == PageType::kData && data_page::owner(db.layout(), ref.bytes()) == owner)
            pages.push_back(page);
    });
    db.allocator().deleteMap(mapPointer);
    for (const PageNo page : pages)
        db.allocator().free(page);
}

} // namespace

void createLongValueMaps(OpenDatabase& db, FieldDef& field) {
    const RowId owned = db.allocator().createMap(), free = db.allocator().createMap();
    field.ownedMapPage = owned.page;
    field.ownedMapRow = owned.row;
    field.freeMapPage = free.page;
    field.freeMapRow = free.row;
}

void createStorage(OpenDatabase& db, TableDef& def) {
    def.ownedMapPointer = db.allocator().createMap().packed();
    def.freeMapPointer = db.allocator().createMap().packed();
    for (FieldDef& field : def.fields)
        if (field.isLongValue()) createLongValueMaps(db, field);
}

void createTree(OpenDatabase& db, PageNo owner, IndexDef& index) {
    const RowId map = db.allocator().createMap();
    index.usageMapPointer = map.packed();
    index.rootPage = BTree::create(db.allocator(), owner, map);
}

void freeRows(OpenDatabase& db, const TableDef& def) {
    freeDataPages(db, RowId::fromPacked(def.ownedMapPointer), def.page);
    db.allocator().deleteMap(RowId::fromPacked(def.freeMapPointer));
}

void freeLongValues(OpenDatabase& db, const FieldDef& field) {
    freeDataPages(db, {field.ownedMapPage, field.ownedMapRow}, kOwnerLongValues);
    db.allocator().deleteMap({field.freeMapPage, field.freeMapRow});
}

void freeTree(OpenDatabase& db, const TableDef& def, const IndexDef& index) {
    const RowId map = RowId::fromPacked(index.usageMapPointer);
    BTree(db.allocator(), index.rootPage, def.page, map).destroy();
    db.allocator().deleteMap(map);
}

void changeOwner(OpenDatabase& db, const TableDef& def, PageNo owner) {
    std::vector<PageNo> pages;
    UsageMap(db.pages(), db.layout(), RowId::fromPacked(def.ownedMapPointer)).forEach([&](PageNo page) {
        pages.push_back(page);
    });
    for (const PageNo page : pages)
        put32(db.pages().edit(page).bytes(), db.layout().dataOwner, owner);
}

std::vector<size_t> treesOf(const TableDef& def) {
    std::vector<size_t> found;
    for (size_t i = 0; i < def.indexes.size(); ++i) {
        const bool known = std::any_of(found.begin(), found.end(), [&](size_t k) {
            return def.indexes[k].realNumber == def.indexes[i].realNumber;
        });
        if (!known) found.push_back(i);
    }
    std::sort(found.begin(), found.end(),
              [&](size_t a, size_t b) { return def.indexes[a].realNumber < def.indexes[b].realNumber; });
    return found;
}

} // namespace jet
