// table/row_store.cpp — the free map holds pages worth looking at: a page leaves it when a row did not fit
// and little room is left, and comes back when a row on it is deleted or shrinks. A bulk insert stays on the
// page it used last.
#include "jet/table/row_store.h"

namespace jet {
namespace {

// A page with less room than this (a part of the page) leaves the free map when a row does not fit on it.
constexpr size_t kWorthKeepingPart = 8;
// So many pages with some but too little room are looked at before a new page is taken.
constexpr int kMaxLooks = 4;

} // namespace

RowStore::RowStore(TableSource& source, const TableDef& def)
    : file_(&source.pages()), allocator_(&source.allocator()), layout_(&source.layout()), owner_(def.page),
      owned_(*file_, *layout_, RowId::fromPacked(def.ownedMapPointer)),
      free_(*file_, *layout_, RowId::fromPacked(def.freeMapPointer)), reader_(*file_, *layout_, def.page) {}

RowId RowStore::insert(std::span<const uint8_t> row) { return place(row, false); }

RowId RowStore::place(std::span<const uint8_t> row, bool hidden) {
    const PageNo page = pageWithRoom(row.size());
    last_ = page;
    return {page, data_page::insert(*layout_, file_->edit(page).bytes(), row, hidden)};
}

bool RowStore::hasRoom(PageNo page, size_t length) {
    return data_page::fits(*layout_, file_->read(page).bytes(), length);
}

PageNo RowStore::pageWithRoom(size_t length) {
    // After an undone statement the page may not be the table's any more, whatever its bytes say.
    if (lastGeneration_ != file_->generation()) last_ = 0;
    lastGeneration_ = file_->generation();
    if (last_ != 0) {
        const PageRef page = file_->read(last_);
        // Another handle may have given the page back meanwhile: then it names no owner, or another one.
        if (isDataPageOf(*layout_, page.bytes(), owner_) && data_page::fits(*layout_, page.bytes(), length))
            return last_;
    }
    int looks = 0;
    for (auto page = free_.next(0); page && looks < kMaxLooks; page = free_.next(*page + 1)) {
        size_t room = 0;
        {
            const PageRef bytes = file_->read(*page);
            if (!isDataPageOf(*layout_, bytes.bytes(), owner_))
                throw Error(Err::Corrupt, "Tablonun boş yer haritası başka bir sayfayı gösteriyor.")
                    .onPage(*page);
            if (data_page::fits(*layout_, bytes.bytes(), length)) return *page;
            room = data_page::freeBytes(*layout_, bytes.bytes());
        }
        if (room < layout_->pageSize / kWorthKeepingPart) {
            free_.remove(*page);
        } else {
            ++looks;
        }
    }
    return newPage();
}

PageNo RowStore::newPage() {
    PageNo number = 0;
    {
        PageEdit page = allocator_->allocate();
        data_page::initialise(*layout_, page.bytes(), owner_);
        number = page.number();
    }
    owned_.add(number, *allocator_);
    free_.add(number, *allocator_);
    return number;
}

bool RowStore::replace(RowId at, std::span<const uint8_t> row) {
    PageEdit page = file_->edit(at.page);
    return data_page::replace(*layout_, page.bytes(), at.row, row);
}

void RowStore::update(RowId id, std::span<const uint8_t> row) {
    std::span<const uint8_t> old;
    reader_.find(id, old, &place_);
    const bool shrinks = row.size() < old.size();
    const bool moved = place_.body != id;
    if (replace(id, row)) { // in place, or a moved row comes home
        if (moved) eraseSlot(place_.body);
    } else if (moved && replace(place_.body, row)) {
        if (shrinks) roomGained(place_.body.page);
        return;
    } else {
        if (moved) eraseSlot(place_.body);
        const RowId target = place(row, true);
        data_page::makePointer(*layout_, file_->edit(id.page).bytes(), id.row, target);
    }
    for (const RowId between : place_.between)
        eraseSlot(between);
    if (shrinks) roomGained(id.page);
}

void RowStore::erase(RowId id) {
    std::span<const uint8_t> old;
    reader_.find(id, old, &place_);
    if (place_.body != id) eraseSlot(place_.body);
    for (const RowId between : place_.between)
        eraseSlot(between);
    eraseSlot(id);
}

void RowStore::eraseSlot(RowId at) {
    bool empty = false;
    {
        PageEdit page = file_->edit(at.page);
        data_page::erase(*layout_, page.bytes(), at.row);
        empty = data_page::empty(*layout_, page.bytes());
    }
    if (empty && at.page != last_) { // the page of the last insert stays: the next insert wants it
        release(at.page);
    } else if (!free_.contains(at.page)) {
        free_.add(at.page, *allocator_);
    }
}

void RowStore::roomGained(PageNo page) {
    const size_t room = data_page::freeBytes(*layout_, file_->read(page).bytes());
    if (room >= layout_->pageSize / kWorthKeepingPart && !free_.contains(page)) free_.add(page, *allocator_);
}

void RowStore::release(PageNo page) {
    // Handles that still remember the page see by the owner that it is no longer the table's.
    data_page::initialise(*layout_, file_->edit(page).bytes(), 0);
    free_.remove(page);
    owned_.remove(page);
    allocator_->free(page);
}

} // namespace jet
