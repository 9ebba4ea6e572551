// jet/format/data_page.h: rows grow from the end of the page down, the slot table from its head up. Row i
// ends where row i-1 begins, so changing one row's length moves every row behind it.
#include "jet/format/data_page.h"

#include "jet/error.h"
#include "jet/format/bytes.h"

#include <algorithm>
#include <cassert>

namespace jet::data_page {

namespace {

constexpr uint16_t kHidden = 0x8000, kPointer = 0x4000, kDead = 0xC000, kStartMask = 0x1FFF;
constexpr size_t kPointerSize = 4;

[[noreturn]] void corrupt(const char* why) { throw Error(Err::Corrupt, why); }

size_t slotAt(const Layout& layout, size_t number) { return layout.dataRowTable + 2 * number; }

uint16_t word(const Layout& layout, std::span<const uint8_t> page, size_t number) {
    return get16(page, slotAt(layout, number));
}

size_t startOf(const Layout& layout, std::span<const uint8_t> page, size_t number) {
    return word(layout, page, number) & kStartMask;
}

// Where row `number` ends, and so the next one may begin.
size_t endOf(const Layout& layout, std::span<const uint8_t> page, size_t number) {
    return number == 0 ? layout.pageSize : startOf(layout, page, number - 1);
}

// Bytes between the slot table and the lowest row.
size_t gap(const Layout& layout, std::span<const uint8_t> page, size_t count) {
    const size_t lowest = endOf(layout, page, count);
    const size_t table = slotAt(layout, count);
    if (lowest < table || lowest > layout.pageSize)
        corrupt("Veri sayfasında satırlar satır tablosuna taşıyor.");
    return lowest - table;
}

void setFree(const Layout& layout, std::span<uint8_t> page, size_t count) {
    put16(page, layout.dataFree, static_cast<uint16_t>(gap(layout, page, count)));
}

// Gives a slot another length, its bytes keep their begin; the rows behind it move. REQUIRES: it fits.
void resize(const Layout& layout, std::span<uint8_t> page, uint16_t number, size_t length) {
    const uint16_t count = slotCount(layout, page);
    const Slot old = slot(layout, page, number);
    if (length != old.length) {
        const size_t lowest = endOf(layout, page, count);
        for (size_t i = number; i < count; ++i)
            if (startOf(layout, page, i) > endOf(layout, page, i))
                corrupt("Veri sayfasının satır konumları sırasız.");
        const size_t moved = old.start - lowest;
        const ptrdiff_t delta = static_cast<ptrdiff_t>(old.length) - static_cast<ptrdiff_t>(length);
        std::memmove(page.data() + lowest + delta, page.data() + lowest,
                     moved + std::min(old.length, length)); // with the head of the row itself
        for (size_t i = number; i < count; ++i) {
            const uint16_t was = word(layout, page, i);
            put16(page, slotAt(layout, i),
                  static_cast<uint16_t>((was & ~kStartMask) | ((was & kStartMask) + delta)));
        }
    }
    setFree(layout, page, count);
}

void setFlags(const Layout& layout, std::span<uint8_t> page, uint16_t number, uint16_t flags) {
    const size_t at = slotAt(layout, number);
    put16(page, at, static_cast<uint16_t>((get16(page, at) & kStartMask) | flags));
}

bool isDead(uint16_t word) { return (word & kDead) == kDead; }

// A dead slot that can take `length` bytes; the slot count when there is none.
uint16_t findDead(const Layout& layout, std::span<const uint8_t> page, uint16_t count, size_t length) {
    const size_t room = gap(layout, page, count);
    for (uint16_t i = 0; i < std::min<uint16_t>(count, kMaxRowsPerPage); ++i)
        if (isDead(word(layout, page, i)) && slot(layout, page, i).length + room >= length) return i;
    return count;
}

bool canAppend(const Layout& layout, std::span<const uint8_t> page, uint16_t count, size_t length) {
    return count < kMaxRowsPerPage && gap(layout, page, count) >= length + 2;
}

} // namespace

void initialise(const Layout& layout, std::span<uint8_t> page, uint32_t owner) {
    std::fill(page.begin(), page.end(), uint8_t{0});
    page[0] = PageType::kData;
    page[1] = 1;
    put32(page, layout.dataOwner, owner);
    setFree(layout, page, 0);
}

uint32_t owner(const Layout& layout, std::span<const uint8_t> page) { return get32(page, layout.dataOwner); }

uint16_t slotCount(const Layout& layout, std::span<const uint8_t> page) {
    if (page[0] != PageType::kData) corrupt("Sayfa bir veri sayfası değil.");
    const uint16_t count = get16(page, layout.dataRowCount);
    if (count > kMaxRowsPerPage + 1 || slotAt(layout, count) > layout.pageSize)
        corrupt("Veri sayfasının satır sayısı sayfaya sığmıyor.");
    return count;
}

Slot slot(const Layout& layout, std::span<const uint8_t> page, uint16_t number) {
    const uint16_t count = slotCount(layout, page);
    if (number >= count) corrupt("Sayfada böyle bir satır yok.");
    const uint16_t flags = word(layout, page, number);
    const size_t start = flags & kStartMask, end = endOf(layout, page, number);
    if (start > end || end > layout.pageSize || start < slotAt(layout, count))
        corrupt("Veri sayfasının satır konumu bozuk.");
    Slot found{.start = start, .length = end - start};
    found.deleted = isDead(flags) || found.length == 0;
    found.hidden = !found.deleted && (flags & kHidden);
    found.pointer = !found.deleted && (flags & kPointer);
    return found;
}

size_t freeBytes(const Layout& layout, std::span<const uint8_t> page) { return get16(page, layout.dataFree); }

bool fits(const Layout& layout, std::span<const uint8_t> page, size_t length) {
    const uint16_t count = slotCount(layout, page);
    return canAppend(layout, page, count, length) || findDead(layout, page, count, length) < count;
}

uint8_t insert(const Layout& layout, std::span<uint8_t> page, std::span<const uint8_t> row, bool hidden) {
    uint16_t count = slotCount(layout, page);
    uint16_t number = count;
    if (canAppend(layout, page, count, row.size())) {
        const size_t end = endOf(layout, page, count);
        put16(page, slotAt(layout, count), static_cast<uint16_t>(end));
        put16(page, layout.dataRowCount, ++count);
    } else {
        number = findDead(layout, page, count, row.size());
        assert(number < count && "insert() without fits()");
    }
    resize(layout, page, number, row.size());
    std::copy(row.begin(), row.end(), page.begin() + static_cast<ptrdiff_t>(startOf(layout, page, number)));
    setFlags(layout, page, number, hidden ? kHidden : 0);
    return static_cast<uint8_t>(number);
}

bool replace(const Layout& layout, std::span<uint8_t> page, uint8_t number, std::span<const uint8_t> row) {
    const Slot old = slot(layout, page, number);
    if (old.length + gap(layout, page, slotCount(layout, page)) < row.size()) return false;
    resize(layout, page, number, row.size());
    std::copy(row.begin(), row.end(), page.begin() + static_cast<ptrdiff_t>(startOf(layout, page, number)));
    setFlags(layout, page, number, old.hidden ? kHidden : 0);
    return true;
}

// The bytes behind the pointer stay as slack: the row keeps its length, as in the files of the original
// engine.
void makePointer(const Layout& layout, std::span<uint8_t> page, uint8_t number, RowId target) {
    const Slot old = slot(layout, page, number);
    if (old.length < kPointerSize) {
        if (old.length + gap(layout, page, slotCount(layout, page)) < kPointerSize)
            corrupt("Satır, taşındığı yeri gösteremeyecek kadar kısa.");
        resize(layout, page, number, kPointerSize);
    }
    put32(page, startOf(layout, page, number), static_cast<uint32_t>(target.packed()));
    setFlags(layout, page, number, static_cast<uint16_t>(kPointer | (old.hidden ? kHidden : 0)));
}

void erase(const Layout& layout, std::span<uint8_t> page, uint8_t number) {
    resize(layout, page, number, 0);
    setFlags(layout, page, number, kDead);
}

bool empty(const Layout& layout, std::span<const uint8_t> page) {
    const uint16_t count = slotCount(layout, page);
    for (uint16_t i = 0; i < count; ++i)
        if (!slot(layout, page, i).deleted) return false;
    return true;
}

RowId pointerTarget(const Layout& layout, std::span<const uint8_t> page, uint8_t number) {
    const Slot at = slot(layout, page, number);
    if (!at.pointer || at.length < kPointerSize) corrupt("Taşınmış satırın göstergesi bozuk.");
    return RowId::fromPacked(get32(page, at.start));
}

std::string contradiction(const Layout& layout, std::span<const uint8_t> page) {
    try {
        const uint16_t count = slotCount(layout, page);
        for (uint16_t i = 0; i < count; ++i) {
            const Slot at = slot(layout, page, i);
            const uint16_t flags = word(layout, page, i);
            if (at.length == 0 && !isDead(flags))
                return std::to_string(i) + ". satır boş ama silinmiş değil.";
            if (at.pointer && at.length < kPointerSize)
                return std::to_string(i) + ". satırın göstergesi bozuk.";
            if (flags & ~(kDead | kStartMask)) return std::to_string(i) + ". satırın işareti tanınmıyor.";
        }
        const size_t room = gap(layout, page, count);
        if (room != freeBytes(layout, page))
            return "Boş yer alanı " + std::to_string(freeBytes(layout, page)) + " bayt diyor, gerçekte " +
                   std::to_string(room) + " bayt var.";
        return {};
    } catch (const Error& error) {
        return error.message();
    }
}

} // namespace jet::data_page
