// jet/sql/lookup.cpp — see lookup.h.
#include "jet/sql/lookup.h"

#include "jet/format/row_codec.h"
#include "jet/index/sort_key.h"

#include <cstring>

namespace jet::sql {
namespace {

// Texts that compare as equal have the same sort key.
std::string textKey(std::string_view text, SortOrder order) {
    Bytes key;
    appendTextKey(utf16FromUtf8(text), order, key);
    return {key.begin(), key.end()};
}

std::string numberKey(double number) {
    if (number == 0) number = 0; // -0 is 0
    std::string key(sizeof number, '\0');
    std::memcpy(key.data(), &number, sizeof number);
    return key;
}

double numberOf(const RowView& row, const FieldDef& field, size_t at) {
    switch (field.type) {
    case Type::Boolean: return row.boolean(at) ? -1 : 0;
    case Type::Byte:
    case Type::Integer:
    case Type::Long: return row.integer(at);
    case Type::Currency: return row.currency(at).toDouble();
    default: return row.real(at);
    }
}

} // namespace

bool canLookUp(const FieldDef& field) {
    switch (field.type) {
    case Type::Text: return knowsSortOrder(field.sortOrder);
    case Type::Boolean:
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
    case Type::Currency:
    case Type::Single:
    case Type::Double:
    case Type::Date: return true;
    default: return false;
    }
}

Lookup::Lookup(Table& table, const TableDef& def, size_t field) : table_(table), field_(def.fields[field]) {
    std::string scratch;
    Scan scan = table.scan();
    while (scan.next()) {
        const RowView& row = scan.row();
        if (row.isNull(field)) continue;
        const bool text = field_.type == Type::Text;
        std::string key = text ? textKey(row.text(field, scratch), field_.sortOrder)
                               : numberKey(numberOf(row, field_, field));
        rows_.emplace(std::move(key), static_cast<uint32_t>(ids_.size()));
        ids_.push_back(scan.id());
    }
    values_.resize(ids_.size());
}

std::optional<std::vector<uint32_t>> Lookup::find(sqlite3_value* value) const {
    std::vector<uint32_t> found;
    std::string key;
    const int type = sqlite3_value_type(value);
    if (type == SQLITE_NULL) return found;
    if (field_.type == Type::Text && type == SQLITE_TEXT)
        key = textKey({reinterpret_cast<const char*>(sqlite3_value_text(value)),
                       static_cast<size_t>(sqlite3_value_bytes(value))},
                      field_.sortOrder);
    else if (field_.type != Type::Text && (type == SQLITE_INTEGER || type == SQLITE_FLOAT))
        key = numberKey(sqlite3_value_double(value));
    else
        return {};
    const auto [begin, end] = rows_.equal_range(key);
    for (auto at = begin; at != end; ++at)
        found.push_back(at->second);
    return found;
}

const std::vector<Value>& Lookup::row(uint32_t row) {
    std::vector<Value>& values = values_[row];
    if (values.empty()) values = table_.read(ids_[row]);
    return values;
}

} // namespace jet::sql
