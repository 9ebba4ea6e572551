// table/index_cursor.h — walks one index of a table in its order, both ways, inside bounds; finds its place
// again when the tree changes under it. Turns values into key bytes; never reads rows. REQUIRES: a read or
// write scope around every call.
#pragma once

#include "jet/index/btree.h"
#include "jet/table/table.h"
#include "jet/table/table_source.h"

namespace jet {

class IndexCursor {
  public:
    IndexCursor(TableSource& source, const TableDef& def, const IndexDef& index);

    // Sets the bounds and forgets the place. Err::Conversion, InvalidArgument (more values than fields),
    // ReadOnly when keys of this index cannot be made.
    void setBounds(const KeyRange& range);
    void clearBounds();

    // First / last entry inside the bounds.
    bool first();
    bool last();
    // From the place where it stands to the neighbour inside the bounds. REQUIRES: it stands on an entry, or
    // place()d.
    bool next();
    bool previous();

    // As DAO's Seek, bounds left aside: Equal and Greater* look forwards, Less* backwards.
    bool seek(SeekOp op, std::span<const Value> keys);
    // On the entry of this row; `key` from rowKey(). When there is none next() and previous() go to its
    // neighbours.
    void place(const Bytes& key, RowId row);
    // The key of a row, from its values in index order.
    void rowKey(std::span<const Value> values, Bytes& key) const;

    const IndexDef& index() const { return *index_; }
    RowId row() const { return row_; }

  private:
    void appendPrefix(std::span<const Value> values, Bytes& key, std::vector<size_t>* ends = nullptr) const;
    bool differOnDescendingField() const;
    void requireKeys() const;
    // False for a text with a character of unknown place: no row of this index can hold it.
    bool storable(std::span<const Value> keys) const;
    bool take(bool found); // reads the entry at at_ and holds it against the bounds
    bool restore(bool& exact);
    void countSteps();

    PageFile* file_;
    const TableDef* def_;
    const IndexDef* index_;
    BTree tree_;
    TreePosition at_;
    uint64_t generation_ = 0; // of the file when at_ was found
    Bytes key_;               // of the entry where it stands
    RowId row_;
    bool between_ = false; // the place is between two entries: the one that would be there is gone
    Bytes from_, to_;      // entries with from_ <= key < to_
    bool toEnd_ = true;    // no to_
    bool nothing_ = false; // the bounds exclude every entry
    Bytes scratch_;
    std::vector<size_t> partEnds_; // where the fields of the longer bound end in its key
    size_t steps_ = 0;
};

} // namespace jet
