// jet/database.h: the indexes of a table — create, drop, rename.
#include "jet/table/database_impl.h"
#include "jet/table/structure_rules.h"
#include "jet/table/table_change.h"
#include "jet/table/table_storage.h"

#include <algorithm>

namespace jet {

namespace {

// Takes the tree with this number out of the counting.
void forgetTree(TableDef& def, uint32_t realNumber) {
    for (IndexDef& index : def.indexes)
        if (index.realNumber > realNumber) --index.realNumber;
    for (std::vector<uint32_t>* counts : {&def.uniqueEntryCounts, &def.storedRowCounts})
        if (realNumber < counts->size()) counts->erase(counts->begin() + realNumber);
    --def.realIndexCount;
}

void refuseForeign(const IndexDef& index) {
    if (index.foreign)
        throw Error(Err::InvalidArgument, "“" + index.name + "” dizini bir ilişkiye ait; değiştirilemez.");
}

} // namespace

void Database::createIndex(std::string_view table, const IndexDef& wanted) {
    OpenDatabase& db = *impl_;
    statement(db, table, [&] {
        TableChange change(db, table);
        TableDef& def = change.def();
        IndexDef index = wanted;
        checkIndex(def, index);
        index.realNumber = def.realIndexCount++;
        def.uniqueEntryCounts.resize(def.realIndexCount);
        createTree(db, def.page, index);
        fillTree(db, def, index);
        insertIndex(def, std::move(index));
        change.save();
    });
}

void Database::dropIndex(std::string_view table, std::string_view name) {
    OpenDatabase& db = *impl_;
    statement(db, table, [&] {
        TableChange change(db, table);
        TableDef& def = change.def();
        const size_t position = change.indexPosition(name);
        const IndexDef dropped = def.indexes[position];
        refuseForeign(dropped);
        def.indexes.erase(def.indexes.begin() + static_cast<std::ptrdiff_t>(position));
        const auto sharing = std::find_if(def.indexes.begin(), def.indexes.end(), [&](const IndexDef& other) {
            return other.realNumber == dropped.realNumber;
        });
        if (sharing == def.indexes.end()) {
            freeTree(db, def, dropped);
            forgetTree(def, dropped.realNumber);
        } else if (sharing->foreign) {
            throw Error(Err::InvalidArgument, "“" + dropped.name + "” dizini silinemez: “" + sharing->name +
                                                  "” ilişkisi bu dizine dayanıyor.");
        }
        change.save();
    });
}

void Database::renameIndex(std::string_view table, std::string_view from, const std::string& to) {
    OpenDatabase& db = *impl_;
    statement(db, table, [&] {
        TableChange change(db, table);
        TableDef& def = change.def();
        const size_t position = change.indexPosition(from);
        refuseForeign(def.indexes[position]);
        checkName(to);
        if (!sameName(from, to) && def.findIndex(to))
            throw Error(Err::IndexExists, "“" + to + "” adlı bir dizin zaten var.");
        def.indexes[position].name = to;
        std::stable_sort(def.indexes.begin(), def.indexes.end(), [](const IndexDef& a, const IndexDef& b) {
            return foldName(a.name) < foldName(b.name);
        });
        change.save();
    });
}

} // namespace jet
