// jet/format/usage_map.h, the allocator. In the global map a set bit is a free page; the bits of pages past
// the end of the file are set too, and so are, by convention, the ones past the end of the map. The map is
// therefore widened before a page outside it comes into use: an inline map turns into the paged form.
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/data_page.h"
#include "jet/format/usage_map.h"
#include "jet/format/usage_map_bits.h"

#include <algorithm>

namespace jet {

namespace {

using Form = UsageMapForm;

constexpr RowId kGlobalMap{kGlobalMapPage, 0};
constexpr PageNo kFirstAllocatable = 6; // header, global map and the four system definitions lie before it

// Sets the bits of every page from `from` on in a bitmap that begins with page `base`.
void setFrom(std::span<uint8_t> bits, uint64_t base, uint64_t from) {
    for (uint64_t bit = from > base ? from - base : 0; bit < bits.size() * 8; ++bit)
        map_bits::set(bits, bit);
}

std::span<uint8_t> globalRow(const Layout& layout, PageEdit& page) {
    const Slot slot = data_page::slot(layout, page.bytes(), kGlobalMap.row);
    if (slot.deleted || slot.length < Form::kRowSize)
        throw Error(Err::Corrupt, "Boş sayfalar haritası bozuk.").onPage(kGlobalMapPage);
    return page.bytes().subspan(slot.start, slot.length);
}

bool isMapPageWithRoom(PageFile& file, const Layout& layout, PageNo number) {
    if (number < kFirstAllocatable || number >= file.pageCount()) return false;
    const PageRef page = file.read(number);
    return page.data()[0] == PageType::kData && data_page::owner(layout, page.bytes()) == kOwnerUsageMaps &&
           data_page::fits(layout, page.bytes(), Form::kRowSize);
}

} // namespace

void PageAllocator::refresh() {
    if (generation_ == file_->generation()) return;
    generation_ = file_->generation();
    searchFrom_ = kFirstAllocatable;
    mapPage_ = 0;
}

// A fresh bitmap page at the end of the file for entry `index`; every page past the end of the file is free
// in it.
PageNo PageAllocator::appendGlobalBitmap(size_t index) {
    PageEdit bitmap = file_->append();
    bitmap.data()[0] = PageType::kUsageBitmap;
    bitmap.data()[1] = 1;
    setFrom(bitmap.bytes().subspan(Form::kBitmapPageBits), index * uint64_t{layout_->pagesPerBitmap()},
            file_->pageCount());
    return bitmap.number();
}

void PageAllocator::turnGlobalMapPaged() {
    const UsageMap map(*file_, *layout_, kGlobalMap);
    std::vector<PageNo> free;
    map.forEach([&free](PageNo page) { free.push_back(page); });
    const size_t run = layout_->pagesPerBitmap();
    const size_t entries = (file_->pageCount() + run - 1) / run;
    std::vector<PageNo> bitmaps;
    for (size_t i = 0; i < entries; ++i)
        bitmaps.push_back(appendGlobalBitmap(i));
    for (const PageNo bitmap : bitmaps) // the first ones were made before the later ones lay in the file
        if (bitmap / run < entries)
            map_bits::reset(file_->edit(bitmaps[bitmap / run]).bytes().subspan(Form::kBitmapPageBits),
                            bitmap % run);
    for (const PageNo page : free)
        map_bits::set(file_->edit(bitmaps[page / run]).bytes().subspan(Form::kBitmapPageBits), page % run);
    PageEdit edit = file_->edit(kGlobalMapPage);
    const auto row = globalRow(*layout_, edit);
    std::fill(row.begin(), row.end(), uint8_t{0});
    row[0] = Form::kPaged;
    for (size_t i = 0; i < entries; ++i)
        put32(row, Form::kPagedPages + 4 * i, bitmaps[i]);
}

// After it the global map has a bit for `page`.
void PageAllocator::coverInGlobalMap(PageNo page) {
    {
        PageEdit edit = file_->edit(kGlobalMapPage);
        const auto row = globalRow(*layout_, edit);
        if (row[0] == Form::kInline) {
            const uint64_t first = get32(row, Form::kInlineFirstPage);
            if (page >= first && page - first < (row.size() - Form::kInlineBits) * uint64_t{8}) return;
        }
        if (row[0] == Form::kPaged) {
            const size_t index = page / layout_->pagesPerBitmap(), at = Form::kPagedPages + 4 * index;
            if (at + 4 > row.size())
                throw Error(Err::Corrupt, "Boş sayfalar haritası dosyanın boyuna yetmiyor.");
            if (get32(row, at) == 0) put32(row, at, appendGlobalBitmap(index));
            return;
        }
    }
    turnGlobalMapPaged();
}

PageEdit PageAllocator::allocate() {
    refresh();
    UsageMap map(*file_, *layout_, kGlobalMap);
    if (const auto found = map.next(searchFrom_)) {
        map.remove(*found);
        searchFrom_ = *found + 1;
        PageEdit page = file_->edit(*found);
        std::fill(page.bytes().begin(), page.bytes().end(), uint8_t{0});
        return page;
    }
    PageEdit page = file_->append();
    coverInGlobalMap(page.number());
    map.remove(page.number());
    searchFrom_ = file_->pageCount();
    return page;
}

void PageAllocator::free(PageNo page) {
    refresh();
    UsageMap map(*file_, *layout_, kGlobalMap);
    if (page < kFirstAllocatable || page >= file_->pageCount() || map.contains(page))
        throw Error(Err::Corrupt, "Boş ya da sistemin olan bir sayfa yeniden boşaltılamaz.").onPage(page);
    {
        PageEdit edit = file_->edit(page);
        std::fill(edit.bytes().begin(), edit.bytes().end(), uint8_t{0});
    }
    coverInGlobalMap(page);
    map.add(page, *this);
    searchFrom_ = std::min(searchFrom_, page);
}

// Maps share pages: first the page of the newest map, then the one where the catalog's own maps lie, then a
// new one.
RowId PageAllocator::createMap() {
    refresh();
    if (!isMapPageWithRoom(*file_, *layout_, mapPage_)) {
        mapPage_ = 0;
        if (kCatalogPage < file_->pageCount()) {
            const PageRef catalog = file_->read(kCatalogPage);
            if (catalog.data()[0] == PageType::kTableDef)
                mapPage_ = RowId::fromPacked(get32(catalog.bytes(), layout_->tdefOwnedMap)).page;
        }
    }
    if (!isMapPageWithRoom(*file_, *layout_, mapPage_)) {
        PageEdit page = allocate();
        data_page::initialise(*layout_, page.bytes(), kOwnerUsageMaps);
        mapPage_ = page.number();
    }
    const std::array<uint8_t, Form::kRowSize> row{};
    PageEdit page = file_->edit(mapPage_);
    return {mapPage_, data_page::insert(*layout_, page.bytes(), row)};
}

void PageAllocator::deleteMap(RowId map) {
    UsageMap(*file_, *layout_, map).clear(*this);
    bool unused = false;
    {
        PageEdit page = file_->edit(map.page);
        data_page::erase(*layout_, page.bytes(), map.row);
        unused = data_page::empty(*layout_, page.bytes());
    }
    if (unused && map.page >= kFirstAllocatable) free(map.page);
}

} // namespace jet
