// jet/copy/salvage_rows.h — every row of one table that can still be read, each slot checked by itself.
//
// What counts as a row of the table:
//  - rows on its pages (by the pages' own marks) that its map lists;
//  - rows on marked pages that the map does not list, unless map and row count agree with each other: then
//  the
//    pages are left over from former days;
//  - rows on marked pages that are called free only where the table's own map cannot be read and its count
//  has
//    room for them all: then it is rather the map of free pages that is damaged;
//  - moved rows through their pointers, each once; and moved rows whose pointer is gone, unless the row count
//    says that nothing is missing.
#pragma once

#include "jet/check/row_set.h"
#include "jet/copy/salvage_definitions.h"
#include "jet/format/row_codec.h"

#include <functional>
#include <string>
#include <vector>

namespace jet {

// Long values may be read by several rows only as far as damaged pointers can explain it: this bounds the
// work and the size of what is written, whatever a file says.
class LongValueReader {
  public:
    explicit LongValueReader(const SalvageSource& source)
        : source_(source), repeatsLeft_(2 * source.pages.longValuePages + 1000) {}
    Bytes read(std::span<const uint8_t> header); // Err::Corrupt

  private:
    const SalvageSource& source_;
    RowSet seen_;
    size_t repeatsLeft_;
};

struct RowLoss {
    RowId row;
    std::string field; // empty: the whole row
    std::string reason;
};

struct TableLosses {
    uint64_t rowsSaved = 0, rowsLost = 0, fieldsLost = 0; // rowsLost: at least
    size_t pagesDamaged = 0;
    std::function<void(RowLoss)> listed; // each one; may be empty
};

// Data pages that carry a table's mark, ascending.
struct MarkedPages {
    std::vector<PageNo> used, free; // free: as the map of free pages says
};

class TableSalvage {
  public:
    // `values`: one per field in display order; null where the value could not be read.
    using RowSink = std::function<void(std::span<const Value> values)>;

    // `def` must outlive it. `countKnown` false: def.rowCount and the owned map mean nothing.
    TableSalvage(const SalvageSource& source, const TableDef& def, MarkedPages pages, bool countKnown,
                 LongValueReader& longValues);

    // `step` is called for each page, twice.
    void read(const RowSink& sink, TableLosses& losses, const std::function<void()>& step);

  private:
    template <class F> void forEachSlot(PageNo page, F visit, TableLosses* losses);
    void decide(const std::function<void()>& step);
    bool isReadable(std::span<const uint8_t> bytes);
    // The bytes of a moved row; Err::Corrupt when its pointer leads nowhere or to a row that was there
    // already.
    std::span<const uint8_t> follow(RowId from, RowSet& taken, PageRef& target) const;
    void give(RowId row, std::span<const uint8_t> bytes, const RowSink& sink, TableLosses& losses);
    Value fieldValue(size_t field);
    void lose(TableLosses& losses, RowId row, const std::string& field, const std::string& reason) const;

    const SalvageSource& source_;
    const TableDef& def_;
    MarkedPages marked_;
    std::vector<PageNo> pages_; // of them, those whose rows are the table's
    bool countKnown_;
    LongValueReader& longValues_;
    RowSet hidden_;
    bool useHidden_ = false;
    RowView view_;
    std::vector<Value> values_;
};

} // namespace jet
