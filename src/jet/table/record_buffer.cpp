// table/record_buffer.cpp — see record_buffer.h.
#include "jet/table/record_buffer.h"

namespace jet {
namespace {

// Equal, or both the same kind of "not a number", which no comparison calls equal.
bool same(const Value& a, const Value& b) { return a == b || (!(a == a) && !(b == b)); }

} // namespace

void RecordBuffer::begin(Mode mode, Definition def, std::vector<Value> values) {
    mode_ = mode;
    def_ = std::move(def);
    values_ = std::move(values);
    changed_ = std::make_unique<bool[]>(values_.size());
    copied_.assign(values_.size(), true);
}

void RecordBuffer::beginAdd(Definition def, std::vector<Value> defaults) {
    begin(Mode::Adding, std::move(def), std::move(defaults));
}

void RecordBuffer::beginEdit(Definition def, RowId id, const StoredRow& row) {
    row.values(original_);
    record_ = id;
    begin(Mode::Editing, std::move(def), original_);
}

void RecordBuffer::moveTo(const Definition& now, std::vector<Value> defaults) {
    for (size_t i = 0; i < values_.size(); ++i)
        if (changed_[i] && !now->findField(def_->fields[i].name))
            throw Error(Err::NoSuchItem,
                        "“" + def_->fields[i].name + "” alanı, siz kaydı değiştirirken tablodan kaldırıldı.");
    const size_t count = now->fields.size();
    std::vector<Value> values = std::move(defaults), original(count);
    auto changed = std::make_unique<bool[]>(count);
    std::vector<bool> copied(count, mode_ == Mode::Adding);
    for (size_t i = 0; i < count; ++i) {
        const auto from = def_->findField(now->fields[i].name);
        if (!from) continue;
        values[i] = std::move(values_[*from]);
        if (mode_ == Mode::Editing) original[i] = std::move(original_[*from]);
        changed[i] = changed_[*from];
        copied[i] = copied_[*from];
    }
    def_ = now;
    values_ = std::move(values);
    original_ = std::move(original);
    changed_ = std::move(changed);
    copied_ = std::move(copied);
}

void RecordBuffer::set(size_t field, Value value) {
    values_[field] = std::move(value);
    changed_[field] = true;
}

bool RecordBuffer::matches(const StoredRow& now) const {
    if (now.view().fieldCount() != original_.size()) return false;
    for (size_t field = 0; field < original_.size(); ++field)
        if (copied_[field] && !same(now.value(field), original_[field])) return false;
    return true;
}

} // namespace jet
