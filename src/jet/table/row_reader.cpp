// table/row_reader.cpp — see row_reader.h.
#include "jet/table/row_reader.h"

namespace jet {

bool isDataPageOf(const Layout& layout, std::span<const uint8_t> page, PageNo owner) {
    return page[0] == PageType::kData && data_page::owner(layout, page) == owner;
}

void RowReader::unpin() {
    home_ = {};
    body_ = {};
}

std::span<const uint8_t> RowReader::page(PageRef& pinned, PageNo number) {
    if (const uint64_t now = fileStamp(*file_); now != stamp_) {
        unpin();
        stamp_ = now;
    }
    if (!pinned || pinned.number() != number) pinned = file_->read(number);
    return pinned.bytes();
}

bool RowReader::find(RowId id, std::span<const uint8_t>& bytes, Place* place) {
    if (!id || id.page >= file_->pageCount()) return false;
    const auto home = page(home_, id.page);
    if (!isDataPageOf(*layout_, home, owner_) || id.row >= data_page::slotCount(*layout_, home)) return false;
    const Slot slot = data_page::slot(*layout_, home, id.row);
    if (slot.deleted || slot.hidden) return false;
    if (slot.pointer) {
        bytes = follow(data_page::pointerTarget(*layout_, home, id.row), place);
    } else {
        if (place) *place = {id, {}};
        bytes = home.subspan(slot.start, slot.length);
    }
    return true;
}

std::span<const uint8_t> RowReader::follow(RowId target, Place* place) {
    if (place) place->between.clear();
    for (size_t hop = 0; hop < kMaxHops; ++hop) {
        if (!target || target.page >= file_->pageCount()) break;
        const auto bytes = page(body_, target.page);
        if (!isDataPageOf(*layout_, bytes, owner_) || target.row >= data_page::slotCount(*layout_, bytes))
            break;
        const Slot slot = data_page::slot(*layout_, bytes, target.row);
        if (slot.deleted) break;
        if (!slot.pointer) {
            if (place) place->body = target;
            return bytes.subspan(slot.start, slot.length);
        }
        if (place) place->between.push_back(target);
        target = data_page::pointerTarget(*layout_, bytes, target.row);
    }
    throw Error(Err::Corrupt, "Taşınmış bir kaydın yeni yeri bulunamadı.").onPage(target.page);
}

} // namespace jet
