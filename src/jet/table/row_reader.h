// table/row_reader.h — finds the bytes of a table's rows by their RowId, through overflow pointers.
// Keeps the pages it used last pinned, so neighbours cost nothing. Reads only.
#pragma once

#include "jet/format/data_page.h"
#include "jet/pages/page_file.h"

namespace jet {

// Changes whenever pages may have changed or been dropped: what was read before must then be read again.
inline uint64_t fileStamp(const PageFile& file) { return file.changeCount() + file.generation(); }

// Is this page a data page of the table whose definition starts on `owner`?
bool isDataPageOf(const Layout& layout, std::span<const uint8_t> page, PageNo owner);

class RowReader {
  public:
    static constexpr size_t kMaxHops = 8; // pointers in a row; more is damage

    // Where a row's bytes lie: `body` is its own slot, or the last target when it moved.
    struct Place {
        RowId body;
        std::vector<RowId>
            between; // pointer rows between the row's slot and its body; empty in files we wrote
    };

    RowReader(PageFile& file, const Layout& layout, PageNo owner)
        : file_(&file), layout_(&layout), owner_(owner) {}

    // False when no row of this table is there: deleted, never was, or the moved part of another row.
    // The bytes hold until the next call or write. Err::Corrupt when a pointer leads nowhere.
    bool find(RowId id, std::span<const uint8_t>& bytes, Place* place = nullptr);
    // The bytes behind a pointer slot whose target is `target`.
    std::span<const uint8_t> follow(RowId target, Place* place = nullptr);

    void unpin(); // lets go of its pages; the bytes it gave hold no longer

  private:
    std::span<const uint8_t> page(PageRef& pinned, PageNo number);

    PageFile* file_;
    const Layout* layout_;
    PageNo owner_;
    PageRef home_, body_;
    uint64_t stamp_ = 0; // fileStamp() under which the pinned pages were read
};

} // namespace jet
