// table/stored_row.cpp — see stored_row.h.
#include "jet/table/stored_row.h"

#include "jet/format/long_value.h"

namespace jet {

std::string_view StoredRow::text(size_t field, std::string& scratch) const {
    if (view_.def().fields[field].type != Type::Memo) return view_.text(field, scratch);
    const Layout& layout = source_->layout();
    decodeText(layout, codePage_, readLongValue(source_->pages(), layout, view_.raw(field)), scratch);
    return scratch;
}

Value StoredRow::value(size_t field) const {
    const FieldDef& def = view_.def().fields[field];
    if (!def.isLongValue()) return view_.value(field);
    if (view_.isNull(field)) return {};
    if (def.type == Type::Ole) return readLongValue(source_->pages(), source_->layout(), view_.raw(field));
    std::string scratch;
    text(field, scratch);
    return scratch;
}

void StoredRow::values(std::vector<Value>& all) const {
    all.clear();
    for (size_t field = 0; field < view_.fieldCount(); ++field)
        all.push_back(value(field));
}

} // namespace jet
