// jet/index/index_page_edit.cpp — changing index pages in place: entry bytes are moved by memmove, the mask
// by words.
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/index/index_page.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>

namespace jet::index_page {
namespace {

// A copy of a page's mask as words, without what may stand past `used`; written back by store().
class Mask {
  public:
    Mask(const Layout& layout, std::span<uint8_t> page, size_t used)
        : at_(page.data() + layout.indexMask), size_(layout.indexMaskSize) {
        assert(size_ <= sizeof words_);
        std::memcpy(words_.data(), at_, std::min(size_, (used / 64 + 1) * sizeof words_[0]));
        words_[used / 64] &= ~uint64_t{0} >> (63 - used % 64);
    }
    void store() { std::memcpy(at_, words_.data(), size_); }
    void set(size_t bit) { words_[bit / 64] |= uint64_t{1} << (bit % 64); }

    // Bits [from, last] move up by `by`; the gap is filled with zeros.
    void moveUp(size_t from, size_t last, size_t by) {
        const size_t first = from / 64, skip = by / 64, rest = by % 64;
        const uint64_t stay = (uint64_t{1} << (from % 64)) - 1; // bits of word `first` below `from`
        const auto moving = [&](size_t i) { return i == first ? words_[i] & ~stay : words_[i]; };
        for (size_t i = (last + by) / 64 + 1; i-- > first;) {
            uint64_t word = 0;
            if (i >= first + skip) word = moving(i - skip) << rest;
            if (rest != 0 && i >= first + skip + 1) word |= moving(i - skip - 1) >> (64 - rest);
            words_[i] = i == first ? (words_[i] & stay) | word : word;
        }
    }

    // Bits [keep, from) are dropped, bits [from, last] move down by `by`. REQUIRES: keep <= from - by.
    void moveDown(size_t keep, size_t from, size_t last, size_t by) {
        const size_t skip = by / 64, rest = by % 64, end = last / 64;
        const uint64_t stay = (uint64_t{1} << (keep % 64)) - 1;
        const auto moving = [&](size_t i) -> uint64_t {
            if (i > end || i < from / 64) return 0;
            return i == from / 64 ? words_[i] & (~uint64_t{0} << (from % 64)) : words_[i];
        };
        for (size_t i = keep / 64; i <= end; ++i) {
            uint64_t word = moving(i + skip) >> rest;
            if (rest != 0) word |= moving(i + skip + 1) << (64 - rest);
            words_[i] = i == keep / 64 ? (words_[i] & stay) | word : word;
        }
    }

  private:
    uint8_t* at_;
    size_t size_;
    std::array<uint64_t, 58> words_{};
};

void setUsed(const Layout& layout, std::span<uint8_t> page, size_t used) {
    put16(page, layout.indexFree, static_cast<uint16_t>(capacity(layout) - used));
}

void setPrefix(const Layout& layout, std::span<uint8_t> page, size_t prefix) {
    put16(page, layout.indexPrefix, static_cast<uint16_t>(prefix));
}

// Longest common beginning of the sorted entries [from, to) that leaves their pointers alone.
size_t commonPrefix(bool leaf, const EntryList& list, size_t from, size_t to) {
    if (to - from < 2) return 0;
    const auto first = list.at(from), last = list.at(to - 1);
    const size_t pointers = leaf ? kRowPointerSize : kRowPointerSize + kChildPointerSize;
    const size_t limit = std::min(first.size(), last.size()) - pointers;
    return static_cast<size_t>(
        std::mismatch(first.begin(), first.begin() + static_cast<ptrdiff_t>(limit), last.begin()).first -
        first.begin());
}

size_t storedSize(const EntryList& list, size_t from, size_t to, size_t prefix) {
    return from == to ? 0 : list.bytes(from, to) - prefix * (to - from - 1);
}

// Jet leaves the entries of nodes whole; only a page that another program filled closer needs more.
size_t prefixToUse(const Layout& layout, bool leaf, const EntryList& list, size_t from, size_t to) {
    if (!leaf && storedSize(list, from, to, 0) <= capacity(layout)) return 0;
    return commonPrefix(leaf, list, from, to);
}

} // namespace

size_t capacity(const Layout& layout) { return layout.pageSize - layout.indexEntries; }
size_t maxEntry(const Layout& layout) { return capacity(layout) / 2; }

void initialise(const Layout& layout, std::span<uint8_t> page, size_t height, PageNo owner) {
    std::fill(page.begin(), page.end(), uint8_t{0});
    page[0] = height == 0 ? PageType::kIndexLeaf : PageType::kIndexNode;
    page[1] = 0x01;
    put32(page, layout.indexOwner, owner);
    page[layout.indexMask - 1] = static_cast<uint8_t>(height); // the byte between prefix length and mask
    setUsed(layout, page, 0);
}

void setPrevious(const Layout& layout, std::span<uint8_t> page, PageNo previous) {
    put32(page, layout.indexPrevious, previous);
}
void setNext(const Layout& layout, std::span<uint8_t> page, PageNo next) {
    put32(page, layout.indexNext, next);
}
void setLinks(const Layout& layout, std::span<uint8_t> page, PageNo previous, PageNo next) {
    setPrevious(layout, page, previous);
    setNext(layout, page, next);
}
void setTail(const Layout& layout, std::span<uint8_t> page, PageNo tail) {
    put32(page, layout.indexTail, tail);
}

void setChild(const Layout& layout, const IndexPage& view, std::span<uint8_t> page, size_t start,
              PageNo child) {
    const size_t from = start == 0 ? view.prefix() : start, to = view.end(start);
    if (to < from + kChildPointerSize)
        throw Error(Err::Corrupt, "Dizin düğümünün kaydı çok kısa.").onPage(view.number());
    uint8_t* at = page.data() + layout.indexEntries + to - kChildPointerSize;
    for (int shift = 24; shift >= 0; shift -= 8)
        *at++ = static_cast<uint8_t>(child >> shift);
}

bool insert(const Layout& layout, const IndexPage& view, std::span<uint8_t> page, size_t at,
            std::span<const uint8_t> entry) {
    const size_t used = view.used(), prefix = used == 0 ? 0 : view.prefix();
    uint8_t* entries = page.data() + layout.indexEntries;
    if (entry.size() < prefix || std::memcmp(entry.data(), entries, prefix) != 0) return false;
    const size_t added = entry.size() - prefix;
    if (used + added > capacity(layout)) return false;

    // A new first entry shares the prefix bytes that stand there already: the old first one becomes a suffix.
    uint8_t* hole = entries + (at == 0 ? prefix : at);
    std::memmove(hole + added, hole, static_cast<size_t>(entries + used - hole));
    std::memcpy(hole, entry.data() + prefix, added);
    Mask mask(layout, page, used);
    if (at < used) mask.moveUp(at + 1, used, added);
    mask.set(at == 0 ? entry.size() : at + added);
    mask.store();
    if (used == 0) setPrefix(layout, page, 0);
    setUsed(layout, page, used + added);
    return true;
}

void erase(const Layout& layout, const IndexPage& view, std::span<uint8_t> page, size_t at) {
    const size_t used = view.used(), end = view.end(at);
    uint8_t* entries = page.data() + layout.indexEntries;
    const bool only = at == 0 && end == used;
    const size_t from = at == 0 && !only ? view.prefix() : at; // the next entry takes over the prefix bytes
    const size_t removed = end - from;
    std::memmove(entries + from, entries + end, used - end);
    std::memset(entries + used - removed, 0, removed);
    Mask mask(layout, page, used);
    mask.moveDown(at + 1, end + 1, used, removed);
    mask.store();
    if (only) setPrefix(layout, page, 0);
    setUsed(layout, page, used - removed);
}

bool fits(const Layout& layout, bool leaf, const EntryList& list, size_t from, size_t to) {
    return storedSize(list, from, to, prefixToUse(layout, leaf, list, from, to)) <= capacity(layout);
}

void write(const Layout& layout, std::span<uint8_t> page, const EntryList& list, size_t from, size_t to) {
    const size_t prefix = prefixToUse(layout, page[0] == PageType::kIndexLeaf, list, from, to);
    assert(storedSize(list, from, to, prefix) <= capacity(layout));
    std::fill(page.begin() + static_cast<ptrdiff_t>(layout.indexMask), page.end(), uint8_t{0});
    Mask mask(layout, page, 0);
    uint8_t* entries = page.data() + layout.indexEntries;
    size_t used = 0;
    for (size_t i = from; i < to; ++i) {
        const auto stored = list.at(i).subspan(i == from ? 0 : prefix);
        std::memcpy(entries + used, stored.data(), stored.size());
        used += stored.size();
        mask.set(used);
    }
    mask.store();
    setPrefix(layout, page, prefix);
    setUsed(layout, page, used);
}

} // namespace jet::index_page
