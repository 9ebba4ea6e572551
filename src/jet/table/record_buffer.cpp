// table/record_buffer.cpp — see record_buffer.h.
#include "jet/table/record_buffer.h"

namespace jet {
namespace {

// Equal, or both the same kind of "not a number", which no comparison calls equal.
bool same(const Value& a, const Value& b) { return a == b || (!(a == a) && !(b == b)); }

} // namespace

void RecordBuffer::begin(Mode mode, std::vector<Value> values) {
    mode_ = mode;
    values_ = std::move(values);
    changed_ = std::make_unique<bool[]>(values_.size());
}

void RecordBuffer::beginAdd(std::vector<Value> defaults) { begin(Mode::Adding, std::move(defaults)); }

void RecordBuffer::beginEdit(RowId id, const StoredRow& row) {
    row.values(original_);
    record_ = id;
    begin(Mode::Editing, original_);
}

void RecordBuffer::set(size_t field, Value value) {
    values_[field] = std::move(value);
    changed_[field] = true;
}

bool RecordBuffer::matches(const StoredRow& now) const {
    if (now.view().fieldCount() != original_.size()) return false;
    for (size_t field = 0; field < original_.size(); ++field)
        if (!same(now.value(field), original_[field])) return false;
    return true;
}

} // namespace jet
