// table/page_cursor.h — walks the rows of a table in page order, both ways, and stays on its way when rows
// change. REQUIRES: a read or write scope around every call.
#pragma once

#include "jet/table/row_reader.h"
#include "jet/table/table_source.h"

namespace jet {

class PageCursor {
  public:
    PageCursor(TableSource& source, const TableDef& def);

    void beforeFirst();
    void afterLast();
    void place(RowId id); // on this row, whether it still exists or not

    // To the next living row after / before the place; false past the end. Moved rows are met where they were
    // inserted.
    bool next();
    bool previous();

    RowId id() const { return {page_, static_cast<uint8_t>(slot_)}; } // REQUIRES: the last move gave true
    // Its bytes, hold until the next move or write. REQUIRES: the last move gave true and nothing was written
    // since.
    std::span<const uint8_t> bytes() const { return bytes_; }

    void unpin(); // lets go of its pages, keeps its place

  private:
    bool enter(PageNo page); // false: the page is not (any more) a page of the table
    void reload();
    bool stand(int slot); // on this slot, when a row is shown there

    PageFile* file_;
    const Layout* layout_;
    PageNo owner_;
    UsageMap owned_;
    RowReader reader_; // for moved rows
    PageRef pinned_;
    uint64_t stamp_ = 0; // fileStamp() under which the page was read
    PageNo page_ = 0;    // 0 = before the first page
    int slot_ = -1;
    int slots_ = 0; // of the page
    std::span<const uint8_t> bytes_;
    std::vector<PageNo> pages_; // all pages, for walking backwards
    uint64_t pagesStamp_ = 0;
};

} // namespace jet
