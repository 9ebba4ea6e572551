// jet/index/index_page.cpp — reading index pages: the mask is scanned by 64-bit words, nothing is decoded
// ahead.
#include "jet/index/index_page.h"

#include "jet/error.h"
#include "jet/format/bytes.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace jet {
namespace {

uint32_t bigEndian32(const uint8_t* at) {
    return static_cast<uint32_t>(at[0]) << 24 | static_cast<uint32_t>(at[1]) << 16 |
           static_cast<uint32_t>(at[2]) << 8 | at[3];
}

int compareBytes(std::span<const uint8_t> a, std::span<const uint8_t> b) {
    const int difference = std::memcmp(a.data(), b.data(), std::min(a.size(), b.size()));
    if (difference != 0) return difference;
    return a.size() < b.size() ? -1 : a.size() > b.size();
}

} // namespace

void EntryList::add(std::span<const uint8_t> entry) {
    bytes_.insert(bytes_.end(), entry.begin(), entry.end());
    ends_.push_back(bytes_.size());
}

std::span<const uint8_t> EntryList::at(size_t i) const {
    const size_t start = i == 0 ? 0 : ends_[i - 1];
    return {bytes_.data() + start, ends_[i] - start};
}

size_t EntryList::bytes(size_t from, size_t to) const {
    return from == to ? 0 : ends_[to - 1] - (from == 0 ? 0 : ends_[from - 1]);
}

IndexPage::IndexPage(const Layout& layout, PageNo number, std::span<const uint8_t> bytes)
    : layout_(&layout), page_(bytes.data()), number_(number) {
    const size_t capacity = layout.pageSize - layout.indexEntries;
    if (page_[0] != PageType::kIndexNode && page_[0] != PageType::kIndexLeaf)
        corrupt("Sayfa bir dizin sayfası değil.");
    const size_t free = get16(bytes, layout.indexFree);
    if (free > capacity) corrupt("Dizin sayfasının boş yer alanı sayfaya sığmıyor.");
    used_ = capacity - free;
    prefix_ = get16(bytes, layout.indexPrefix);
    if (prefix_ > used_) corrupt("Dizin sayfasının ortak ön ek uzunluğu yanlış.");
}

void IndexPage::corrupt(const char* what) const { throw Error(Err::Corrupt, what).onPage(number_); }

PageNo IndexPage::owner() const { return loadLe<uint32_t>(page_ + layout_->indexOwner); }
PageNo IndexPage::previous() const { return loadLe<uint32_t>(page_ + layout_->indexPrevious); }
PageNo IndexPage::next() const { return loadLe<uint32_t>(page_ + layout_->indexNext); }
PageNo IndexPage::tail() const { return leaf() ? 0 : loadLe<uint32_t>(page_ + layout_->indexTail); }

// The last word reaches a few bytes past the mask into the entries; callers look at bits up to used() only.
uint64_t IndexPage::maskWord(size_t i) const { return loadLe<uint64_t>(page_ + layout_->indexMask + i * 8); }

size_t IndexPage::boundaryFrom(size_t bit) const {
    const size_t lastWord = used_ / 64;
    size_t i = bit / 64;
    if (i <= lastWord) {
        uint64_t word = maskWord(i) & (~uint64_t{0} << (bit % 64));
        while (word == 0 && ++i <= lastWord)
            word = maskWord(i);
        if (word != 0) {
            const size_t found = i * 64 + static_cast<size_t>(std::countr_zero(word));
            if (found <= used_) return found;
        }
    }
    corrupt("Dizin sayfasının kayıt maskesi kayıtlarla uyuşmuyor.");
}

size_t IndexPage::boundaryUpTo(size_t bit) const {
    size_t i = bit / 64;
    uint64_t word = maskWord(i) & (~uint64_t{0} >> (63 - bit % 64));
    while (word == 0 && i > 0)
        word = maskWord(--i);
    return word == 0 ? 0 : i * 64 + 63 - static_cast<size_t>(std::countl_zero(word));
}

// What is stored of an entry behind the common prefix.
std::span<const uint8_t> IndexPage::suffix(size_t start) const {
    const size_t from = start == 0 ? prefix_ : start, to = end(start);
    if (from > to) corrupt("Dizin sayfasının ortak ön eki ilk kaydından uzun.");
    return {page_ + layout_->indexEntries + from, to - from};
}

// Halves the range of bytes, not of entries: the mask tells in which entry a byte lies.
size_t IndexPage::lowerBound(std::span<const uint8_t> target) const {
    if (used_ == 0 || target.empty()) return 0;
    const uint8_t* entries = page_ + layout_->indexEntries;
    if (const int order = std::memcmp(target.data(), entries, std::min(prefix_, target.size())); order != 0)
        return order < 0 ? 0 : used_;
    if (target.size() <= prefix_) return 0;
    target = target.subspan(prefix_);

    size_t low = 0, high = used_; // entries before `low` are below the target, those from `high` on are not
    if (!leaf() || next() == 0) { // most rows come in rising order: is it behind the last entry?
        const size_t last = lastStart();
        if (compareBytes(suffix(last), target) < 0) return used_;
        high = last;
    }
    while (low < high) {
        const size_t middle = std::max(low, boundaryUpTo(low + (high - low) / 2));
        if (compareBytes(suffix(middle), target) < 0)
            low = end(middle);
        else
            high = middle;
    }
    return low;
}

bool IndexPage::equals(size_t start, std::span<const uint8_t> entry) const {
    const auto stored = suffix(start);
    return entry.size() == prefix_ + stored.size() &&
           std::memcmp(entry.data(), page_ + layout_->indexEntries, prefix_) == 0 &&
           std::memcmp(entry.data() + prefix_, stored.data(), stored.size()) == 0;
}

bool IndexPage::hasKey(size_t start, std::span<const uint8_t> key) const {
    const auto stored = suffix(start);
    if (key.size() + kRowPointerSize != prefix_ + stored.size()) return false;
    const size_t shared = std::min(prefix_, key.size()); // another program's prefix may reach behind the key
    const auto behind = key.begin() + static_cast<ptrdiff_t>(shared);
    return std::equal(key.begin(), behind, page_ + layout_->indexEntries) &&
           std::equal(behind, key.end(), stored.begin());
}

int IndexPage::compare(size_t start, const IndexPage& other, size_t otherStart) const {
    Bytes mine, theirs;
    copyEntry(start, mine);
    other.copyEntry(otherStart, theirs);
    return compareBytes(mine, theirs);
}

void IndexPage::copyEntry(size_t start, Bytes& entry) const {
    const auto stored = suffix(start);
    const uint8_t* entries = page_ + layout_->indexEntries;
    entry.assign(entries, entries + prefix_);
    entry.insert(entry.end(), stored.begin(), stored.end());
    const size_t pointers = leaf() ? kRowPointerSize : kRowPointerSize + kChildPointerSize;
    if (entry.size() < pointers) corrupt("Dizin kaydı, satır işaretçisinden kısa.");
}

// The end of an entry as a number. Another program's prefix may reach into the pointers.
uint32_t IndexPage::lastFour(size_t start) const {
    const auto stored = suffix(start);
    if (stored.size() >= 4) return bigEndian32(stored.data() + stored.size() - 4);
    Bytes entry;
    copyEntry(start, entry);
    return bigEndian32(entry.data() + entry.size() - 4);
}

RowId IndexPage::row(size_t start) const { return RowId::fromPacked(lastFour(start)); }
PageNo IndexPage::child(size_t start) const { return lastFour(start); }

void IndexPage::collect(EntryList& list) const {
    Bytes entry;
    for (size_t at = 0; at < used_; at = end(at)) {
        copyEntry(at, entry);
        list.add(entry);
    }
}

void IndexPage::collect(EntryList& list, size_t at, std::span<const uint8_t> added) const {
    Bytes entry;
    for (size_t i = 0; i < used_; i = end(i)) {
        if (i == at) list.add(added);
        copyEntry(i, entry);
        list.add(entry);
    }
    if (at == used_) list.add(added);
}

std::string IndexPage::contradiction() const try {
    Bytes entry, previous;
    for (size_t at = 0; at < used_; at = end(at)) {
        copyEntry(at, entry);
        if (at > 0 && compareBytes(previous, entry) >= 0) return "Dizin sayfasındaki kayıtlar sıralı değil.";
        previous.swap(entry);
    }
    const size_t maskBits = layout_->pageSize - layout_->indexEntries;
    for (size_t bit = used_ + 1; bit <= maskBits; ++bit)
        if ((page_[layout_->indexMask + bit / 8] >> (bit % 8) & 1) != 0)
            return "Dizin sayfasının maskesi kayıtların bittiği yerden sonrasını gösteriyor.";
    return {};
} catch (const Error& error) {
    return error.message();
}

} // namespace jet
