// jet/index/tree_walk.h — how the parts of BTree get at its pages: checked loading, and the way down from the
// root. Changes nothing.
#pragma once

#include "jet/format/usage_map.h"
#include "jet/index/index_page.h"

#include <array>

namespace jet {

// A tree has few levels; more of them means links that run in a circle.
inline constexpr size_t kMaxTreeDepth = 32;

// Everything that identifies a tree; copied freely.
struct TreeRef {
    PageAllocator* allocator;
    PageNo root, owner;
    RowId pageMap;

    PageFile& file() const { return allocator->file(); }
    const Layout& layout() const { return allocator->layout(); }
};

struct LoadedPage {
    PageRef ref;
    IndexPage view;
};

// Which child a node's search led to.
struct TreeStep {
    PageNo page = 0;
    size_t at = 0;     // the child's entry; for the tail: used()
    bool tail = false; // the child is the tail
    bool beyondLast =
        false; // the target is above the last entry of a node without tail; the last child was taken
};

struct TreePath {
    std::array<TreeStep, kMaxTreeDepth> steps;
    size_t depth = 0; // steps in use; the leaf is the last one
};

// Err::Corrupt when the page is no index page of this table.
LoadedPage loadIndexPage(const TreeRef& tree, PageNo page);

// The leaf where `target` stands or would stand; an empty target leads to the first leaf. With `path`, the
// steps are noted, the leaf's own included (its `at` is left 0). Err::Corrupt for cycles and childless nodes.
LoadedPage descend(const TreeRef& tree, std::span<const uint8_t> target, TreePath* path = nullptr);
LoadedPage descendToLast(const TreeRef& tree);

// Whole entry bytes (key, row pointer) on the stack. A key too long for any page gives an entry that equals
// none.
class LeafEntry {
  public:
    LeafEntry(std::span<const uint8_t> key, RowId row);
    std::span<const uint8_t> span() const { return {bytes_.data(), size_}; }

  private:
    std::array<uint8_t, 4096> bytes_;
    size_t size_;
};

// Appends a page number as node entries hold it.
void appendChild(PageNo child, Bytes& entry);

} // namespace jet
