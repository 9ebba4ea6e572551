// jet/table/table_storage.h: fillTree(), the entries of a new index from the rows that are there, sorted in
// memory.
#include "jet/index/btree.h"
#include "jet/index/key.h"
#include "jet/table/table.h"
#include "jet/table/table_storage.h"

#include <algorithm>
#include <cstring>

namespace jet {

namespace {

// One entry; its key lies in the arena that all entries share.
struct Entry {
    size_t at;
    uint32_t length;
    bool hasNull;
    RowId row;
};

class Entries {
  public:
    void collect(OpenDatabase& db, const TableDef& def, const IndexDef& index);
    void sort();
    // Refuses equal keys; a key with a null in it may stand beside others like it.
    void requireUnique(const IndexDef& index) const;
    uint32_t distinct() const;
    void build(BTree& tree) const;

  private:
    std::span<const uint8_t> keyOf(const Entry& e) const { return {keys_.data() + e.at, e.length}; }
    int compare(const Entry& a, const Entry& b) const {
        const int order = std::memcmp(keys_.data() + a.at, keys_.data() + b.at, std::min(a.length, b.length));
        return order != 0 ? order : (a.length > b.length) - (a.length < b.length);
    }

    Bytes keys_;
    std::vector<Entry> entries_;
};

void Entries::collect(OpenDatabase& db, const TableDef& def, const IndexDef& index) {
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
        if (allNull && index.ignoreNulls) continue;
        entries_.push_back({keys_.size(), static_cast<uint32_t>(key.size()), hasNull, scan.id()});
        keys_.insert(keys_.end(), key.begin(), key.end());
    }
}

void Entries::sort() {
    std::sort(entries_.begin(), entries_.end(), [this](const Entry& a, const Entry& b) {
        const int order = compare(a, b);
        return order != 0 ? order < 0 : a.row < b.row;
    });
}

void Entries::requireUnique(const IndexDef& index) const {
    for (size_t i = 1; i < entries_.size(); ++i)
        if (!entries_[i].hasNull && compare(entries_[i - 1], entries_[i]) == 0)
            throw Error(Err::DuplicateKey,
                        "“" + index.name + "” dizini oluşturulamadı: aynı değeri taşıyan kayıtlar var.");
}

uint32_t Entries::distinct() const {
    uint32_t count = entries_.empty() ? 0 : 1;
    for (size_t i = 1; i < entries_.size(); ++i)
        count += compare(entries_[i - 1], entries_[i]) != 0;
    return count;
}

void Entries::build(BTree& tree) const {
    size_t next = 0;
    tree.build([&](Bytes& bytes, RowId& row) {
        if (next == entries_.size()) return false;
        const auto from = keyOf(entries_[next]);
        bytes.assign(from.begin(), from.end());
        row = entries_[next++].row;
        return true;
    });
}

} // namespace

void fillTree(OpenDatabase& db, TableDef& def, const IndexDef& index) {
    Entries entries;
    entries.collect(db, def, index);
    entries.sort();
    if (index.unique) entries.requireUnique(index);
    BTree tree(db.allocator(), index.rootPage, def.page, RowId::fromPacked(index.usageMapPointer));
    entries.build(tree);
    if (index.realNumber < def.uniqueEntryCounts.size())
        def.uniqueEntryCounts[index.realNumber] = entries.distinct();
}

} // namespace jet
