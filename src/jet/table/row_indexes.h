// table/row_indexes.h — keeps the index trees of a table right when rows come, change and go: first prepare…
// makes the keys and refuses what the indexes refuse, before anything is written; then apply() changes the
// trees. Each tree is kept once, however many logical indexes stand on it.
#pragma once

#include "jet/index/btree.h"
#include "jet/table/stored_row.h"

namespace jet {

class RowIndexes {
  public:
    RowIndexes(TableSource& source, const TableDef& def);

    // `row` has one pointer per field, values in the fields' own types or convertible to them.
    // Err::DuplicateKey, IndexNullKey: the text names the index; nothing is changed.
    void prepareInsert(std::span<const Value* const> row);
    // A null pointer in `row` = the field stays as it is in `old`.
    void prepareUpdate(const StoredRow& old, std::span<const Value* const> row);
    void prepareRemove(const StoredRow& old);

    // REQUIRES: inside a write, one prepare… before. Err::Corrupt when an old entry is not in its tree.
    void apply(RowId id);
    // Would countInto() change something for the prepared row?
    bool changesCounts() const;
    // Brings the entry counts that the definition page keeps for unique trees up to date.
    void countInto(std::span<uint8_t> definitionPage) const;

  private:
    struct Tree {
        const IndexDef* index; // one of those that stand on the tree; its name is told in errors
        BTree tree;
        bool unique = false, noNulls = false, ignoreNulls = false;
        Bytes oldKey, newKey;
        bool oldEntry = false, newEntry = false, anyNull = false, allNull = false;
    };

    void addTree(const IndexDef& index);
    static bool touches(const Tree& tree, std::span<const Value* const> row);
    void makeNewKey(Tree& tree, const StoredRow* old, std::span<const Value* const> row);
    void makeOldKey(Tree& tree, const StoredRow& old);
    void refuse(const Tree& tree) const;

    TableSource* source_;
    const TableDef* def_;
    std::vector<Tree> trees_;
};

} // namespace jet
