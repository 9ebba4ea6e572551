// jet/index/index_page.h — one page of an index tree: sorted entries behind a common prefix, a bit mask of
// their ends. Works on bytes alone; knows no file, no other page and no fields.
//
// Entries lie one after the other from `indexEntries` on. Offsets here count from there. Bit k of the mask
// says that an entry ends (and the next one begins) at offset k. The first entry is stored whole; its first
// `prefix` bytes belong to every later entry too and are not stored again. An entry is named by the offset
// where it begins. Leaf entry:  key, row pointer (3 bytes page, 1 byte slot, big-endian). Node entry:  the
// same of an upper bound of the child's entries, then the child's page number (4 bytes, big-endian).
#pragma once

#include "jet/format/layout.h"
#include "jet/pages/page_file.h"
#include "jet/value.h"

#include <span>
#include <string>
#include <vector>

namespace jet {

inline constexpr size_t kRowPointerSize = 4, kChildPointerSize = 4;

// Whole entries (prefixes put back), in order; for splitting, merging and building.
class EntryList {
  public:
    void add(std::span<const uint8_t> entry);
    void clear() { bytes_.clear(), ends_.clear(); }
    size_t count() const { return ends_.size(); }
    std::span<const uint8_t> at(size_t i) const;
    size_t bytes(size_t from, size_t to) const; // of entries [from, to) together

  private:
    Bytes bytes_;
    std::vector<size_t> ends_;
};

// Read-only view of a page; the bytes must outlive it. The constructor and every getter throw Err::Corrupt,
// naming the page, instead of leaving the page or the mask.
class IndexPage {
  public:
    IndexPage(const Layout& layout, PageNo number, std::span<const uint8_t> bytes);

    PageNo number() const { return number_; }
    bool leaf() const { return page_[0] == PageType::kIndexLeaf; }
    PageNo owner() const, previous() const, next() const;
    PageNo tail() const; // nodes: the last child, reachable through this field only; 0 = none
    size_t used() const { return used_; }
    size_t prefix() const { return prefix_; }
    bool empty() const { return used_ == 0; }

    // Walking; offsets. begin is 0, end is used().
    size_t end(size_t start) const {
        return boundaryFrom(start + 1);
    } // where the entry ends and the next one begins
    size_t startBefore(size_t at) const { return boundaryUpTo(at - 1); } // REQUIRES: at > 0
    size_t lastStart() const { return startBefore(used_); }              // REQUIRES: not empty

    // First entry that is not below `target` as byte strings; used() when all are below.
    size_t lowerBound(std::span<const uint8_t> target) const;
    bool equals(size_t start, std::span<const uint8_t> entry) const;
    bool hasKey(size_t start, std::span<const uint8_t> key) const; // REQUIRES: leaf()
    // <0, 0, >0 as this page's entry compares with the other's.
    int compare(size_t start, const IndexPage& other, size_t otherStart) const;

    void copyEntry(size_t start, Bytes& entry) const; // replaces `entry`; prefix put back
    RowId row(size_t start) const;                    // REQUIRES: leaf()
    PageNo child(size_t start) const;                 // REQUIRES: not leaf()
    void collect(EntryList& list) const;              // adds all entries
    void collect(EntryList& list, size_t at,
                 std::span<const uint8_t> added) const; // `added` before the one at `at`
    // Entries and mask contradict each other or are out of order; Turkish text, empty when sound. Does not
    // throw.
    std::string contradiction() const;

  private:
    [[noreturn]] void corrupt(const char* what) const;
    size_t boundaryFrom(size_t bit) const; // least boundary >= bit
    size_t boundaryUpTo(size_t bit) const; // greatest boundary <= bit; 0 when there is none
    std::span<const uint8_t> suffix(size_t start) const;
    uint32_t lastFour(size_t start) const;
    uint64_t maskWord(size_t i) const;

    const Layout* layout_;
    const uint8_t* page_;
    PageNo number_;
    size_t used_, prefix_;
};

// Changes to a page's bytes; `view` is a view of the same bytes as they were before the change.
namespace index_page {
size_t capacity(const Layout&); // bytes for entries
size_t maxEntry(const Layout&); // longest entry we store: two always fit on a page, so every split succeeds
void initialise(const Layout&, std::span<uint8_t> page, size_t height, PageNo owner); // height 0: leaf
void setLinks(const Layout&, std::span<uint8_t> page, PageNo previous, PageNo next);
void setPrevious(const Layout&, std::span<uint8_t> page, PageNo previous);
void setNext(const Layout&, std::span<uint8_t> page, PageNo next);
void setTail(const Layout&, std::span<uint8_t> page, PageNo tail);
void setChild(const Layout&, const IndexPage& view, std::span<uint8_t> page, size_t start, PageNo child);

// Puts the entry before the one at offset `at` (used(): behind all), in place. False, nothing changed, when
// it does not fit as the page stands; it may fit after write() with a longer prefix. REQUIRES: `at` is its
// lowerBound.
bool insert(const Layout&, const IndexPage& view, std::span<uint8_t> page, size_t at,
            std::span<const uint8_t> entry);
void erase(const Layout&, const IndexPage& view, std::span<uint8_t> page, size_t at);

// Replaces all entries by [from, to) of the list, with the longest prefix on a leaf and, as far as they fit,
// none on a node. REQUIRES: fits(). Header links stay.
void write(const Layout&, std::span<uint8_t> page, const EntryList& list, size_t from, size_t to);
bool fits(const Layout&, bool leaf, const EntryList& list, size_t from, size_t to);
} // namespace index_page

} // namespace jet
