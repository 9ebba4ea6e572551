// jet/index/btree.h — the tree of one real index: pages of sorted, prefix-compressed entries.
// An entry is (key bytes, row); order is by key bytes, then page, then row. Knows nothing of fields.
#pragma once

#include "jet/format/usage_map.h"
#include "jet/pages/page_file.h"
#include "jet/value.h"

#include <functional>
#include <span>

namespace jet {

// Where a cursor stands. Valid until the file changes (PageFile::changeCount); then BTree::restore finds it
// again.
struct TreePosition {
    PageNo leaf = 0;    // 0 = before the first / past the last entry
    uint16_t entry = 0; // byte offset of the entry on its page
    uint64_t changeCount = 0;
};

class BTree {
  public:
    // `owner` = the table's definition page (stamped on every page); `pages` = the tree's own page map.
    BTree(PageAllocator& allocator, PageNo root, PageNo owner, RowId pageMap);

    // Makes an empty tree: one leaf, entered in `pageMap`; returns its page, the root for ever.
    static PageNo create(PageAllocator& allocator, PageNo owner, RowId pageMap);
    void destroy(); // frees every page; the tree must not be used after

    // REQUIRES for the changing ones: inside a write.
    // An entry that is already there is Err::Corrupt; a key past about 1,800 bytes is Err::RecordTooLarge.
    void insert(std::span<const uint8_t> key, RowId row);
    bool erase(std::span<const uint8_t> key, RowId row); // false: no such entry
    // Fills an empty tree from entries already in order: full pages, no splits. For new indexes and bulk
    // rebuilds. Err::InvalidArgument when the tree is not empty, or an entry is not above the one before it.
    void build(const std::function<bool(Bytes& key, RowId& row)>& nextEntry);

    // First entry whose key is not below `key` (a prefix of stored keys may be given); false past the end.
    bool seek(std::span<const uint8_t> key, TreePosition& at) const;
    // Last entry whose key is below `key`; false before the begin.
    bool seekBefore(std::span<const uint8_t> key, TreePosition& at) const;
    bool first(TreePosition& at) const;
    bool last(TreePosition& at) const;
    bool next(TreePosition& at) const;     // REQUIRES: at is valid
    bool previous(TreePosition& at) const; // REQUIRES: at is valid
    // Finds the entry again after changes: stands on it, or on the first one after it (exact = false).
    bool restore(std::span<const uint8_t> key, RowId row, TreePosition& at, bool& exact) const;

    // The entry at a position. `key` is replaced.
    void read(const TreePosition& at, Bytes& key, RowId& row) const;
    RowId rowAt(const TreePosition& at) const;

    // True when the tree holds an entry with exactly this key (for unique indexes).
    bool containsKey(std::span<const uint8_t> key) const;

    // Walks the whole tree, checks order, links, prefixes, masks, parent keys, page owners and the page map;
    // calls `fault(page, text)` for each contradiction and `entry` for each entry in order. Never throws for
    // damage.
    void verify(const std::function<void(std::span<const uint8_t> key, RowId)>& entry,
                const std::function<void(PageNo, const std::string&)>& fault) const;

  private:
    struct TreeRef self() const;
    PageAllocator* allocator_;
    PageNo root_, owner_;
    RowId pageMap_;
};

} // namespace jet
