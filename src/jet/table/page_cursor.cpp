// table/page_cursor.cpp — see page_cursor.h.
#include "jet/table/page_cursor.h"

#include <algorithm>
#include <limits>

namespace jet {
namespace {

constexpr PageNo kPastLast = std::numeric_limits<PageNo>::max();

} // namespace

PageCursor::PageCursor(TableSource& source, const TableDef& def)
    : file_(&source.pages()), layout_(&source.layout()), owner_(def.page),
      owned_(*file_, *layout_, RowId::fromPacked(def.ownedMapPointer)), reader_(*file_, *layout_, def.page) {}

void PageCursor::beforeFirst() { place({}); }

void PageCursor::afterLast() { place({kPastLast, 0}); }

void PageCursor::place(RowId id) {
    pinned_ = {};
    page_ = id.page;
    slot_ = id.page == 0 ? -1 : id.row;
    slots_ = 0;
}

void PageCursor::unpin() {
    pinned_ = {};
    reader_.unpin();
}

bool PageCursor::enter(PageNo page) {
    pinned_ = file_->read(page);
    stamp_ = fileStamp(*file_);
    page_ = page;
    if (!isDataPageOf(*layout_, pinned_.bytes(), owner_)) return false;
    slots_ = data_page::slotCount(*layout_, pinned_.bytes());
    return true;
}

void PageCursor::reload() {
    if (pinned_ && stamp_ == fileStamp(*file_)) return;
    pinned_ = {};
    slots_ = 0;
    if (page_ == 0 || page_ >= file_->pageCount()) return;
    // The page may have been emptied and given back, and be anything by now.
    if (!enter(page_) || !owned_.contains(page_)) slots_ = 0;
}

bool PageCursor::stand(int number) {
    const auto page = pinned_.bytes();
    const Slot slot = data_page::slot(*layout_, page, static_cast<uint16_t>(number));
    if (slot.deleted || slot.hidden) return false;
    bytes_ = slot.pointer
                 ? reader_.follow(data_page::pointerTarget(*layout_, page, static_cast<uint8_t>(number)))
                 : page.subspan(slot.start, slot.length);
    return true;
}

bool PageCursor::next() {
    reload();
    for (;;) {
        while (++slot_ < slots_)
            if (stand(slot_)) return true;
        if (page_ == kPastLast) return false;
        const auto page = owned_.next(page_ + 1);
        if (!page) {
            afterLast();
            return false;
        }
        if (!enter(*page))
            throw Error(Err::Corrupt, "Tablonun sayfa haritası başka bir sayfayı gösteriyor.").onPage(*page);
        slot_ = -1;
    }
}

bool PageCursor::previous() {
    reload();
    slot_ = std::min(slot_, slots_);
    for (;;) {
        while (--slot_ >= 0)
            if (stand(slot_)) return true;
        if (pages_.empty() || pagesStamp_ != fileStamp(*file_)) {
            pages_.clear();
            owned_.forEach([this](PageNo page) { pages_.push_back(page); });
            pagesStamp_ = fileStamp(*file_);
        }
        const auto found = std::lower_bound(pages_.begin(), pages_.end(), page_);
        if (found == pages_.begin()) {
            beforeFirst();
            return false;
        }
        if (!enter(*(found - 1)))
            throw Error(Err::Corrupt, "Tablonun sayfa haritası başka bir sayfayı gösteriyor.").onPage(page_);
        slot_ = slots_;
    }
}

} // namespace jet
