// jet/format/usage_map.h — sets of page numbers as the file keeps them (owned pages, pages with room, free
// pages), and the allocator that hands out pages from the file's global free map.
#pragma once

#include "jet/format/layout.h"
#include "jet/pages/page_file.h"
#include "jet/value.h"

#include <functional>
#include <optional>
#include <vector>

namespace jet {

// One usage map, lying in the row that `pointer` names. Reads the pages on every call: holds no state.
class UsageMap {
  public:
    UsageMap(PageFile& file, const Layout& layout, RowId pointer)
        : file_(&file), layout_(&layout), at_(pointer) {}

    bool contains(PageNo page) const;
    std::optional<PageNo> next(PageNo from) const; // lowest page >= from; nothing past the end of the file
    std::optional<PageNo> last() const;
    void
    forEach(const std::function<void(PageNo)>& visit) const; // ascending; pages past the end are left out
    size_t count() const;

    // REQUIRES: inside a write. An inline map whose range is too small is moved or turned into the paged
    // form, taking bitmap pages from the allocator.
    void add(PageNo page, class PageAllocator& allocator);
    void remove(PageNo page);
    void clear(class PageAllocator& allocator); // empties it and frees its bitmap pages

    RowId pointer() const { return at_; }
    std::vector<PageNo> bitmapPages() const; // of the paged form; for the checker

  private:
    bool addInline(PageNo page);
    void addPaged(PageNo page, class PageAllocator& allocator);
    void turnPaged(class PageAllocator& allocator);
    PageFile* file_;
    const Layout* layout_;
    RowId at_;
};

// Takes pages from the global free map of page 1 or, when it has none, from the end of the file.
class PageAllocator {
  public:
    PageAllocator(PageFile& file, const Layout& layout) : file_(&file), layout_(&layout) {}
    PageEdit allocate();    // zeroed page, marked used
    void free(PageNo page); // back to the global map; the caller has removed every reference to it
    // A new empty inline map as a row on a usage-map page; returns its pointer.
    RowId createMap();
    void deleteMap(RowId map); // empties it and frees its row slot

    PageFile& file() { return *file_; }
    const Layout& layout() const { return *layout_; }

  private:
    void refresh(); // forgets the hints when others may have changed the file
    PageNo appendGlobalBitmap(size_t index);
    void turnGlobalMapPaged();
    void coverInGlobalMap(PageNo page);

    PageFile* file_;
    const Layout* layout_;
    // Hints, true as long as the file's generation stays: no free page lies before searchFrom_, and mapPage_
    // (0 = unknown) is where the newest map lies.
    uint64_t generation_ = UINT64_MAX;
    PageNo searchFrom_ = 0, mapPage_ = 0;
};

} // namespace jet
