// table/index_cursor.cpp — bounds become one half-open interval of key bytes: a prefix that is included at
// the upper end, or left out at the lower, is raised to the first key that no longer begins with it.
#include "jet/table/index_cursor.h"

#include "jet/index/key.h"
#include "jet/index/sort_key.h"

#include <algorithm>
#include <cstring>

namespace jet {
namespace {

// A tree cannot hold more entries than this for every page of the file; a walk that meets more goes in
// circles.
constexpr size_t kMaxEntriesPerPage = 4096;

int compare(const Bytes& a, const Bytes& b) {
    const size_t common = std::min(a.size(), b.size());
    const int order =
        common == 0 ? 0 : std::memcmp(a.data(), b.data(), common); // an empty one may have no bytes
    return order != 0 ? order : (a.size() < b.size() ? -1 : a.size() > b.size());
}

// The first key past all that begin with `key`; false when there is none.
bool raise(Bytes& key) {
    while (!key.empty() && key.back() == 0xFF)
        key.pop_back();
    if (key.empty()) return false;
    ++key.back();
    return true;
}

} // namespace

IndexCursor::IndexCursor(TableSource& source, const TableDef& def, const IndexDef& index)
    : file_(&source.pages()), def_(&def), index_(&index),
      tree_(source.allocator(), index.rootPage, def.page, RowId::fromPacked(index.usageMapPointer)) {}

void IndexCursor::requireKeys() const {
    if (!index_->readOnlyReason.empty()) throw Error(Err::ReadOnly, index_->readOnlyReason);
}

void IndexCursor::appendPrefix(std::span<const Value> values, Bytes& key, std::vector<size_t>* ends) const {
    if (values.size() > index_->fields.size())
        throw Error(Err::InvalidArgument,
                    "“" + index_->name + "” dizininin alan sayısından çok değer verildi.");
    if (!values.empty()) requireKeys();
    for (size_t i = 0; i < values.size(); ++i) {
        const IndexField& part = index_->fields[i];
        const FieldDef& field = def_->fields[part.field];
        appendKeyPart(field, part.descending, convertTo(field, values[i]), key);
        if (ends) ends->push_back(key.size());
    }
}

bool IndexCursor::storable(std::span<const Value> keys) const {
    for (size_t i = 0; i < std::min(keys.size(), index_->fields.size()); ++i) {
        const FieldDef& field = def_->fields[index_->fields[i].field];
        const std::string* text = keys[i].get<std::string>();
        if (text && field.isText() && !canMakeTextKey(*text, field.sortOrder)) return false;
    }
    return true;
}

void IndexCursor::rowKey(std::span<const Value> values, Bytes& key) const {
    key.clear();
    appendPrefix(values, key);
}

void IndexCursor::clearBounds() {
    from_.clear();
    to_.clear();
    toEnd_ = true;
    nothing_ = false;
}

// Is the first field in which from_ and to_ differ a descending one? REQUIRES: partEnds_ of the longer bound.
bool IndexCursor::differOnDescendingField() const {
    const size_t common = std::min(from_.size(), to_.size());
    const size_t same = static_cast<size_t>(
        std::mismatch(from_.begin(), from_.begin() + static_cast<std::ptrdiff_t>(common), to_.begin()).first -
        from_.begin());
    size_t part = 0;
    while (part < partEnds_.size() && partEnds_[part] <= same)
        ++part;
    return part < index_->fields.size() && index_->fields[part].descending;
}

void IndexCursor::setBounds(const KeyRange& range) {
    clearBounds();
    at_ = {};
    partEnds_.clear();
    const bool lowerIsLonger = range.lower.size() > range.upper.size();
    appendPrefix(range.lower, from_, lowerIsLonger ? &partEnds_ : nullptr);
    appendPrefix(range.upper, to_, lowerIsLonger ? nullptr : &partEnds_);
    const bool turned = differOnDescendingField();
    bool fromIncluded = range.lowerInclusive, toIncluded = range.upperInclusive;
    bool hasFrom = !range.lower.empty(), hasTo = !range.upper.empty();
    if (turned) {
        from_.swap(to_);
        std::swap(fromIncluded, toIncluded);
        std::swap(hasFrom, hasTo);
    }
    if (hasFrom && !fromIncluded) nothing_ = !raise(from_);
    toEnd_ = !hasTo || (toIncluded && !raise(to_));
    if (!toEnd_ && compare(from_, to_) >= 0) nothing_ = true;
}

void IndexCursor::countSteps() {
    if (++steps_ > (static_cast<size_t>(file_->pageCount()) + 1) * kMaxEntriesPerPage)
        throw Error(Err::Corrupt, "“" + index_->name + "” dizini kendi içine dönüyor.").onPage(at_.leaf);
}

bool IndexCursor::take(bool found) {
    between_ = false;
    if (!found) return false;
    tree_.read(at_, key_, row_);
    generation_ = file_->generation();
    countSteps();
    return compare(key_, from_) >= 0 && (toEnd_ || compare(key_, to_) < 0);
}

bool IndexCursor::first() {
    steps_ = 0;
    if (nothing_) return false;
    return take(from_.empty() ? tree_.first(at_) : tree_.seek(from_, at_));
}

bool IndexCursor::last() {
    steps_ = 0;
    if (nothing_) return false;
    return take(toEnd_ ? tree_.last(at_) : tree_.seekBefore(to_, at_));
}

// Stands on the entry again after changes; true while there is an entry at or after the place.
bool IndexCursor::restore(bool& exact) {
    exact = true;
    if (at_.leaf != 0 && !between_ && at_.changeCount == file_->changeCount() &&
        generation_ == file_->generation())
        return true;
    return tree_.restore(key_, row_, at_, exact);
}

bool IndexCursor::next() {
    bool exact = false;
    if (!restore(exact)) return false;
    return take(exact ? tree_.next(at_) : true);
}

bool IndexCursor::previous() {
    bool exact = false;
    if (!restore(exact)) return take(tree_.last(at_));
    return take(tree_.previous(at_));
}

bool IndexCursor::seek(SeekOp op, std::span<const Value> keys) {
    if (keys.empty()) throw Error(Err::InvalidArgument, "Aramak için en az bir değer gerekir.");
    clearBounds();
    steps_ = 0;
    scratch_.clear();
    requireKeys();
    if (op == SeekOp::Equal && !storable(keys)) return false;
    appendPrefix(keys, scratch_);
    const bool past = op == SeekOp::Greater || op == SeekOp::LessOrEqual;
    const Bytes wanted = scratch_;
    const bool reachable = !past || raise(scratch_);
    switch (op) {
    case SeekOp::Equal:
        return take(tree_.seek(scratch_, at_)) && key_.size() >= wanted.size() &&
               std::equal(wanted.begin(), wanted.end(), key_.begin());
    case SeekOp::Greater:
    case SeekOp::GreaterOrEqual: return reachable && take(tree_.seek(scratch_, at_));
    case SeekOp::Less:
    case SeekOp::LessOrEqual: return take(reachable ? tree_.seekBefore(scratch_, at_) : tree_.last(at_));
    }
    return false;
}

void IndexCursor::place(const Bytes& key, RowId row) {
    key_ = key;
    row_ = row;
    at_ = {};
    between_ = true;
    steps_ = 0;
}

} // namespace jet
