// table/record_cursor.h — the current record of a Table handle: where it stands in page order or in an index,
// and how it moves. Opens no scope and writes nothing. REQUIRES: a read or write scope around every call.
#pragma once

#include "jet/table/index_cursor.h"
#include "jet/table/page_cursor.h"
#include "jet/table/stored_row.h"

#include <optional>

namespace jet {

class RecordCursor {
  public:
    explicit RecordCursor(TableSource& source) : source_(&source) {}

    // The definition to go by from now on; an index or place set before is kept.
    void attach(std::shared_ptr<const TableDef> def);
    void setIndex(std::string_view name); // Err::NoSuchItem; "" = page order

    bool first();
    bool last();
    bool next();
    bool previous();
    bool seek(SeekOp op, std::span<const Value> keys);
    void goTo(RowId id);

    // Past the last / before the first record; an empty table is both at once.
    bool atEnd();
    bool atBegin();
    // The current record, Err::NoCurrentRecord when there is none. The row holds until the next call or
    // write.
    RowId id();
    const StoredRow& row();

    void rowChanged(RowId id); // the row was updated: its place in the index may be another
    void rowRemoved(RowId id);

    void unpin(); // lets go of its pages, keeps its place

  private:
    // Unset: stands on the first record as soon as somebody asks.
    enum class Where { Unset, Begin, Record, Removed, NoMatch, End };

    void settle(); // turns Unset into a real place
    bool arrive(bool found, Where otherwise);
    void placeOnRow();
    void requirePlace() const;

    TableSource* source_;
    std::shared_ptr<const TableDef> def_;
    std::string indexName_;
    std::optional<PageCursor> pages_; // the one in use: pages_ when indexName_ is empty
    std::optional<IndexCursor> index_;
    std::optional<RowReader> reader_;
    std::optional<StoredRow> row_;
    Where where_ = Where::Unset;
    bool empty_ = false; // there was no record at all when it went to an end
    RowId id_;
};

} // namespace jet
