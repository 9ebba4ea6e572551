// table/scan.cpp — a Scan is a cursor (of pages or of an index) and the row it stands on.
#include "jet/table/scan_impl.h"

namespace jet {

Scan::Impl::Impl(TableSource& source, std::shared_ptr<const TableDef> definition)
    : def(std::move(definition)), file(&source.pages()), pageCursor(std::in_place, source, *def),
      row(source) {}

Scan::Impl::Impl(TableSource& source, std::shared_ptr<const TableDef> definition, const IndexDef& index)
    : def(std::move(definition)), file(&source.pages()), indexCursor(std::in_place, source, *def, index),
      reader(std::in_place, *file, source.layout(), def->page), row(source) {}

bool Scan::Impl::step() {
    if (pageCursor) return pageCursor->next();
    if (started) return backwards ? indexCursor->previous() : indexCursor->next();
    started = true;
    return backwards ? indexCursor->last() : indexCursor->first();
}

bool Scan::Impl::next() {
    if (ended) return false;
    if (!step()) {
        ended = true;
        return false;
    }
    if (pageCursor) {
        id = pageCursor->id();
        row.attach(*def, pageCursor->bytes());
        return true;
    }
    id = indexCursor->row();
    std::span<const uint8_t> bytes;
    if (!reader->find(id, bytes))
        throw Error(Err::Corrupt, "“" + indexCursor->index().name + "” dizini olmayan bir kaydı gösteriyor.");
    row.attach(*def, bytes);
    return true;
}

Scan::Scan() = default;
Scan::Scan(Scan&&) noexcept = default;
Scan& Scan::operator=(Scan&&) noexcept = default;
Scan::~Scan() = default;

bool Scan::next() {
    try {
        return impl_->next();
    } catch (Error& error) {
        error.onPage(impl_->id.page).inTable(impl_->def->name);
        throw;
    }
}

void Scan::restart(const KeyRange& range) {
    impl_->started = impl_->ended = false;
    impl_->id = {};
    if (impl_->pageCursor) {
        impl_->pageCursor->beforeFirst();
    } else {
        impl_->backwards = range.backwards;
        impl_->indexCursor->setBounds(range);
    }
}

const RowView& Scan::row() const { return impl_->row.view(); }
RowId Scan::id() const { return impl_->id; }
Value Scan::value(size_t field) const { return impl_->row.value(field); }
std::string_view Scan::text(size_t field, std::string& scratch) const {
    return impl_->row.text(field, scratch);
}

} // namespace jet
