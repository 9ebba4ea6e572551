// table/record_cursor.cpp — see record_cursor.h.
#include "jet/table/record_cursor.h"

#include <utility>

namespace jet {

void RecordCursor::attach(std::shared_ptr<const TableDef> def) {
    def_ = std::move(def);
    pages_.emplace(*source_, *def_);
    reader_.emplace(source_->pages(), source_->layout(), def_->page);
    row_.emplace(*source_);
    index_.reset();
    if (!indexName_.empty()) {
        const IndexDef* index = def_->findIndex(indexName_);
        if (!index) { // dropped meanwhile: told once, from then on it goes in page order
            const std::string dropped = std::exchange(indexName_, {});
            throw Error(Err::NoSuchItem, "“" + dropped + "” adında bir dizin yok.");
        }
        index_.emplace(*source_, *def_, *index);
    }
    if (where_ == Where::Record || where_ == Where::Removed) placeOnRow();
}

void RecordCursor::setIndex(std::string_view name) {
    const IndexDef* index = name.empty() ? nullptr : def_->findIndex(name);
    if (!index && !name.empty())
        throw Error(Err::NoSuchItem, "“" + std::string(name) + "” adında bir dizin yok.");
    indexName_ = name;
    index_.reset();
    if (index) index_.emplace(*source_, *def_, *index);
    where_ = Where::Unset;
}

bool RecordCursor::arrive(bool found, Where otherwise) {
    where_ = found ? Where::Record : otherwise;
    id_ = !found ? RowId{} : index_ ? index_->row() : pages_->id();
    return found;
}

bool RecordCursor::first() {
    if (!index_) pages_->beforeFirst();
    empty_ = !arrive(index_ ? index_->first() : pages_->next(), Where::End);
    return !empty_;
}

bool RecordCursor::last() {
    if (!index_) pages_->afterLast();
    empty_ = !arrive(index_ ? index_->last() : pages_->previous(), Where::Begin);
    return !empty_;
}

void RecordCursor::settle() {
    if (where_ == Where::Unset) first();
}

void RecordCursor::requirePlace() const {
    if (where_ == Where::NoMatch) throw Error(Err::NoCurrentRecord, "Geçerli kayıt yok.");
}

bool RecordCursor::next() {
    settle();
    requirePlace();
    if (where_ == Where::Begin) return first();
    if (where_ == Where::End) return false;
    return arrive(index_ ? index_->next() : pages_->next(), Where::End);
}

bool RecordCursor::previous() {
    settle();
    requirePlace();
    if (where_ == Where::End) return last();
    if (where_ == Where::Begin) return false;
    return arrive(index_ ? index_->previous() : pages_->previous(), Where::Begin);
}

bool RecordCursor::seek(SeekOp op, std::span<const Value> keys) {
    if (!index_) throw Error(Err::InvalidArgument, "Aramak için önce bir dizin seçilmelidir.");
    where_ = Where::NoMatch;
    return arrive(index_->seek(op, keys), Where::NoMatch);
}

bool RecordCursor::atEnd() {
    settle();
    return where_ == Where::End || (where_ == Where::Begin && empty_);
}

bool RecordCursor::atBegin() {
    settle();
    return where_ == Where::Begin || (where_ == Where::End && empty_);
}

RowId RecordCursor::id() {
    settle();
    if (where_ != Where::Record) throw Error(Err::NoCurrentRecord, "Geçerli kayıt yok.");
    return id_;
}

const StoredRow& RecordCursor::row() {
    std::span<const uint8_t> bytes;
    if (!reader_->find(id(), bytes)) throw Error(Err::NoCurrentRecord, "Kayıt artık yok; silinmiş olabilir.");
    row_->attach(*def_, bytes);
    return *row_;
}

void RecordCursor::unpin() {
    if (pages_) pages_->unpin();
    if (reader_) reader_->unpin();
}

void RecordCursor::goTo(RowId id) {
    std::span<const uint8_t> bytes;
    if (!reader_->find(id, bytes)) throw Error(Err::NoCurrentRecord, "Yer işaretinin gösterdiği kayıt yok.");
    where_ = Where::Record;
    id_ = id;
    placeOnRow();
}

void RecordCursor::placeOnRow() {
    if (!index_) {
        pages_->place(id_);
        return;
    }
    std::span<const uint8_t> bytes;
    Bytes key;
    if (reader_->find(id_, bytes)) {
        row_->attach(*def_, bytes);
        std::vector<Value> values;
        for (const IndexField& part : index_->index().fields)
            values.push_back(row_->value(part.field));
        index_->rowKey(values, key);
    }
    index_->place(key, id_);
}

void RecordCursor::rowChanged(RowId id) {
    if (where_ == Where::Record && id == id_) placeOnRow();
}

void RecordCursor::rowRemoved(RowId id) {
    if (where_ == Where::Record && id == id_) where_ = Where::Removed;
}

} // namespace jet
