// jet/format/usage_map.h, one map: a row that holds either the bits themselves (inline form: first page,
// bitmap) or the numbers of bitmap pages (paged form: entry i covers the i-th run of Layout::pagesPerBitmap()
// pages).
#include "jet/format/usage_map.h"

#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/data_page.h"
#include "jet/format/usage_map_bits.h"

#include <algorithm>

namespace jet {

namespace {

using Form = UsageMapForm;

[[noreturn]] void corrupt(PageNo page, const char* why) { throw Error(Err::Corrupt, why).onPage(page); }

// The map's row on its page, checked.
std::span<const uint8_t> rowOf(const Layout& layout, const PageRef& page, RowId at) {
    const Slot slot = data_page::slot(layout, page.bytes(), at.row);
    if (slot.deleted || slot.pointer || slot.length <= Form::kInlineBits)
        corrupt(at.page, "Sayfa haritasının satırı bozuk.");
    const auto row = page.bytes().subspan(slot.start, slot.length);
    if (row[0] != Form::kInline && row[0] != Form::kPaged)
        corrupt(at.page, "Sayfa haritasının biçimi tanınmıyor.");
    return row;
}

std::span<uint8_t> rowOf(const Layout& layout, PageEdit& page, RowId at) {
    const Slot slot = data_page::slot(layout, page.bytes(), at.row);
    return page.bytes().subspan(slot.start, slot.length);
}

size_t entryCount(std::span<const uint8_t> row) { return (row.size() - Form::kPagedPages) / 4; }
size_t entryAt(size_t index) { return Form::kPagedPages + 4 * index; }

PageRef bitmapPage(PageFile& file, PageNo number) {
    PageRef page = file.read(number);
    if (page.data()[0] != PageType::kUsageBitmap)
        corrupt(number, "Sayfa, bir sayfa haritasının parçası değil.");
    return page;
}

PageNo firstOf(std::span<const uint8_t> row) { return get32(row, Form::kInlineFirstPage); }
uint64_t bitsOf(std::span<const uint8_t> row) { return (row.size() - Form::kInlineBits) * uint64_t{8}; }

} // namespace

bool UsageMap::contains(PageNo page) const { return page < file_->pageCount() && next(page) == page; }

std::optional<PageNo> UsageMap::next(PageNo from) const {
    const PageNo end = file_->pageCount();
    if (from >= end) return std::nullopt;
    const PageRef page = file_->read(at_.page);
    const auto row = rowOf(*layout_, page, at_);
    if (row[0] == Form::kInline) {
        const uint64_t first = firstOf(row);
        const uint64_t bit =
            map_bits::findSet(row.subspan(Form::kInlineBits), from > first ? from - first : 0);
        if (bit >= bitsOf(row) || first + bit >= end) return std::nullopt;
        return static_cast<PageNo>(first + bit);
    }
    const size_t run = layout_->pagesPerBitmap();
    for (size_t i = from / run; i < entryCount(row) && i * run < end; ++i) {
        const PageNo number = get32(row, entryAt(i));
        if (number == 0) continue;
        const PageRef bitmap = bitmapPage(*file_, number);
        const size_t base = i * run;
        const uint64_t bit =
            map_bits::findSet(bitmap.bytes().subspan(Form::kBitmapPageBits), from > base ? from - base : 0);
        if (bit >= run) continue;
        if (base + bit >= end) return std::nullopt;
        return static_cast<PageNo>(base + bit);
    }
    return std::nullopt;
}

std::optional<PageNo> UsageMap::last() const {
    const PageNo end = file_->pageCount();
    const PageRef page = file_->read(at_.page);
    const auto row = rowOf(*layout_, page, at_);
    const auto lastIn = [end](std::span<const uint8_t> bits, uint64_t base) -> std::optional<PageNo> {
        if (base >= end) return std::nullopt;
        const uint64_t bit = map_bits::findLastSet(bits, end - base);
        if (bit == map_bits::kNone) return std::nullopt;
        return static_cast<PageNo>(base + bit);
    };
    if (row[0] == Form::kInline) return lastIn(row.subspan(Form::kInlineBits), firstOf(row));
    for (size_t i = entryCount(row); i-- > 0;) {
        const PageNo number = get32(row, entryAt(i));
        if (number == 0 || i * layout_->pagesPerBitmap() >= end) continue;
        const PageRef bitmap = bitmapPage(*file_, number);
        if (const auto found =
                lastIn(bitmap.bytes().subspan(Form::kBitmapPageBits), i * layout_->pagesPerBitmap()))
            return found;
    }
    return std::nullopt;
}

void UsageMap::forEach(const std::function<void(PageNo)>& visit) const {
    for (auto page = next(0); page; page = next(*page + 1))
        visit(*page);
}

size_t UsageMap::count() const {
    size_t pages = 0;
    forEach([&pages](PageNo) { ++pages; });
    return pages;
}

std::vector<PageNo> UsageMap::bitmapPages() const {
    const PageRef page = file_->read(at_.page);
    const auto row = rowOf(*layout_, page, at_);
    std::vector<PageNo> pages;
    if (row[0] == Form::kPaged)
        for (size_t i = 0; i < entryCount(row); ++i)
            if (const PageNo number = get32(row, entryAt(i))) pages.push_back(number);
    return pages;
}

// Moves the range of an inline map so that it takes the page too; false when the pages lie too far apart.
bool UsageMap::addInline(PageNo page) {
    PageNo first = 0;
    std::vector<PageNo> kept;
    {
        const PageRef old = file_->read(at_.page);
        const auto row = rowOf(*layout_, old, at_);
        const auto bits = row.subspan(Form::kInlineBits);
        first = firstOf(row);
        if (page < first || page - first >= bitsOf(row)) {
            for (uint64_t bit = map_bits::findSet(bits, 0); bit < bitsOf(row);
                 bit = map_bits::findSet(bits, bit + 1))
                if (first + bit < file_->pageCount()) kept.push_back(static_cast<PageNo>(first + bit));
            const PageNo lowest = kept.empty() ? page : std::min(page, kept.front());
            const PageNo highest = kept.empty() ? page : std::max(page, kept.back());
            first = lowest & ~PageNo{7};
            if (highest - first >= bitsOf(row)) return false;
            kept.push_back(page);
        }
    }
    PageEdit edit = file_->edit(at_.page);
    const auto row = rowOf(*layout_, edit, at_);
    const auto bits = row.subspan(Form::kInlineBits);
    if (kept.empty()) {
        map_bits::set(bits, page - first);
        return true;
    }
    std::fill(bits.begin(), bits.end(), uint8_t{0});
    put32(row, Form::kInlineFirstPage, first);
    for (const PageNo each : kept)
        map_bits::set(bits, each - first);
    return true;
}

void UsageMap::addPaged(PageNo page, PageAllocator& allocator) {
    const size_t run = layout_->pagesPerBitmap(), index = page / run;
    PageNo number = 0;
    {
        const PageRef old = file_->read(at_.page);
        const auto row = rowOf(*layout_, old, at_);
        if (index >= entryCount(row)) corrupt(at_.page, "Sayfa haritasının satırı dosyanın boyuna yetmiyor.");
        number = get32(row, entryAt(index));
    }
    if (number == 0) {
        PageEdit bitmap = allocator.allocate();
        bitmap.data()[0] = PageType::kUsageBitmap;
        bitmap.data()[1] = 1;
        number = bitmap.number();
        PageEdit edit = file_->edit(at_.page);
        put32(rowOf(*layout_, edit, at_), entryAt(index), number);
    }
    bitmapPage(*file_, number);
    map_bits::set(file_->edit(number).bytes().subspan(Form::kBitmapPageBits), page % run);
}

void UsageMap::turnPaged(PageAllocator& allocator) {
    std::vector<PageNo> pages;
    forEach([&pages](PageNo page) { pages.push_back(page); });
    {
        PageEdit edit = file_->edit(at_.page);
        const auto row = rowOf(*layout_, edit, at_);
        std::fill(row.begin(), row.end(), uint8_t{0});
        row[0] = Form::kPaged;
    }
    for (const PageNo page : pages)
        addPaged(page, allocator);
}

void UsageMap::add(PageNo page, PageAllocator& allocator) {
    if (page >= file_->pageCount()) corrupt(page, "Sayfa haritasına dosyada olmayan bir sayfa eklenemez.");
    const bool paged = [&] {
        const PageRef old = file_->read(at_.page);
        return rowOf(*layout_, old, at_)[0] == Form::kPaged;
    }();
    if (!paged) {
        if (addInline(page)) return;
        turnPaged(allocator);
    }
    addPaged(page, allocator);
}

void UsageMap::remove(PageNo page) {
    PageNo holder = at_.page;
    size_t byte = 0;
    uint64_t bit = 0;
    {
        const PageRef old = file_->read(at_.page);
        const auto row = rowOf(*layout_, old, at_);
        if (row[0] == Form::kInline) {
            const PageNo first = firstOf(row);
            if (page < first || page - first >= bitsOf(row)) return;
            bit = page - first;
            byte = static_cast<size_t>(row.data() - old.data()) + Form::kInlineBits;
        } else {
            const size_t index = page / layout_->pagesPerBitmap();
            holder = index < entryCount(row) ? get32(row, entryAt(index)) : 0;
            if (holder == 0) return;
            bitmapPage(*file_, holder);
            bit = page % layout_->pagesPerBitmap();
            byte = Form::kBitmapPageBits;
        }
    }
    map_bits::reset(file_->edit(holder).bytes().subspan(byte), bit);
}

void UsageMap::clear(PageAllocator& allocator) {
    const std::vector<PageNo> bitmaps = bitmapPages();
    {
        PageEdit edit = file_->edit(at_.page);
        const auto row = rowOf(*layout_, edit, at_);
        std::fill(row.begin(), row.end(), uint8_t{0});
    }
    for (const PageNo page : bitmaps)
        allocator.free(page);
}

} // namespace jet
