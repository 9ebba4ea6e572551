// jet/index/tree_editor.h — inserting and erasing entries: splits, merges, freed pages, links and the page
// map. Lives for one change. Everything happens inside the caller's write; after an error the caller's scope
// undoes it.
#pragma once

#include "jet/index/tree_walk.h"

namespace jet {

class TreeEditor {
  public:
    explicit TreeEditor(const TreeRef& tree) : tree_(tree), layout_(tree.layout()) {}

    static PageNo createRoot(PageAllocator& allocator, PageNo owner, RowId pageMap);
    void destroy();

    void insert(std::span<const uint8_t> entry); // Err::Corrupt when it is there already
    bool erase(std::span<const uint8_t> entry);  // false: no such entry

    PageEdit newPage(size_t height); // an empty page of the tree, in its map; height 0: leaf
    void freePage(PageNo page);      // takes it out of the map; the caller has removed every link to it

  private:
    PageEdit edit(PageNo page); // checked as loadIndexPage does
    IndexPage view(const PageEdit& page) const { return {layout_, page.number(), page.bytes()}; }
    UsageMap map() const { return {tree_.file(), layout_, tree_.pageMap}; }

    void raiseBounds(const TreePath& path, std::span<const uint8_t> entry);
    void insertAt(const TreePath& path, size_t level, size_t at, std::span<const uint8_t> entry);
    void split(const TreePath& path, size_t level, const EntryList& list, size_t leftCount);
    void splitRoot(const TreePath& path, const EntryList& list, size_t leftCount);
    size_t chooseSplit(const IndexPage& page, const EntryList& list, size_t added) const;

    void removePage(const TreePath& path, size_t level);
    void dropChild(const TreePath& path, size_t level);
    void settle(const TreePath& path, size_t level);
    void mergeIfSparse(const TreePath& path, size_t level);
    bool mergePair(const TreePath& path, size_t level, size_t leftAt, PageNo left, PageNo right);
    void collapseRoot();
    void unlink(PageNo page);

    TreeRef tree_;
    const Layout& layout_;
};

} // namespace jet
