// jet/format/row_codec.h, reading: attach() checks every offset of a row once, so that the getters only have
// to look. A row, from its begin: column count, fixed area, variable data; from its end: null mask, number of
// variable fields, their offsets (the first one nearest to the count), end of the data. Jet 3 has 8-bit
// counts and offsets, and rows of more than 256 bytes a jump table between count and offsets: field numbers
// from which 256 more is to be added.
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/field_size.h"
#include "jet/format/row_codec.h"

#include <algorithm>

namespace jet {

namespace {

[[noreturn]] void corrupt(const char* why) { throw Error(Err::Corrupt, why); }

size_t fixedWidth(const Layout& layout, const FieldDef& field) {
    if (const size_t size = storedSize(field.type)) return size;
    if (field.type == Type::Text) return layout.version == 3 ? field.size : 2u * field.size;
    return field.type == Type::Boolean || field.isLongValue() ? 0 : field.size;
}

// A number as stored; fields of fixed type that lie among the variable ones may be shorter in a damaged file.
template <class T> T number(std::span<const uint8_t> raw) {
    if (raw.size() < sizeof(T)) corrupt("Alanın değeri türünün gerektirdiğinden kısa.");
    return loadLe<T>(raw.data());
}

Numeric numeric(std::span<const uint8_t> raw, uint8_t scale) {
    if (raw.size() < 17) corrupt("Ondalık sayı alanı gerekenden kısa.");
    Numeric value{.negative = (raw[0] & 0x80) != 0, .magnitude = {}, .scale = scale};
    for (size_t i = 0; i < 4; ++i)
        value.magnitude[i] = get32(raw, 1 + 4 * i);
    return value;
}

Guid guid(std::span<const uint8_t> raw) {
    if (raw.size() < 16) corrupt("GUID alanı gerekenden kısa.");
    Guid value;
    std::copy_n(raw.begin(), 16, value.bytes.begin());
    return value;
}

} // namespace

void RowView::attach(const Layout& layout, const TableDef& def, std::span<const uint8_t> bytes,
                     uint16_t codePage) {
    layout_ = &layout;
    def_ = &def;
    bytes_ = bytes;
    codePage_ = codePage;
    variableCount_ = 0;
    jumps_ = 0;
    if (bytes.size() <= layout.rowCountSize || bytes.size() > layout.pageSize)
        corrupt("Satırın boyu yanlış.");
    columnCount_ = layout.rowCountSize == 2 ? get16(bytes, 0) : bytes[0];
    const size_t maskSize = (columnCount_ + 7u) / 8;
    if (columnCount_ == 0 || columnCount_ > kMaxFields || layout.rowCountSize + maskSize > bytes.size())
        corrupt("Satırın alan sayısı yanlış.");
    maskAt_ = bytes.size() - maskSize;
    variableTableAt_ = maskAt_;
    // Written before the table got its first variable field: such a row has no table of offsets.
    bool hasVariable = def.variableColumns > 0;
    if (hasVariable && columnCount_ < def.maxColumns)
        for (const FieldDef& field : def.fields)
            if (!field.fixedLength && field.variableIndex == 0 && field.columnNumber >= columnCount_)
                hasVariable = false;
    if (!hasVariable)
        checkFixedFields(maskAt_);
    else if (layout.rowCountSize == 2)
        attachJet4();
    else
        attachJet3();
}

void RowView::attachJet4() {
    if (maskAt_ < 2 + 2 + 2) corrupt("Satır, alan tablosuna sığmayacak kadar kısa.");
    variableCount_ = get16(bytes_, maskAt_ - 2);
    if (variableCount_ > kMaxFields || 2 + 4 + 2u * variableCount_ > maskAt_)
        corrupt("Satırın değişken boylu alan sayısı yanlış.");
    variableTableAt_ = maskAt_ - 4;
    checkOffsets(variableTableAt_ - 2u * variableCount_);
}

void RowView::attachJet3() {
    if (maskAt_ < 1 + 1 + 1) corrupt("Satır, alan tablosuna sığmayacak kadar kısa.");
    variableCount_ = bytes_[maskAt_ - 1];
    const size_t jumps = (bytes_.size() - 1) / 256;
    if (1 + 2 + jumps + variableCount_ > maskAt_) corrupt("Satırın değişken boylu alan sayısı yanlış.");
    variableTableAt_ = maskAt_ - jumps - 2;
    const size_t limit = variableTableAt_ - variableCount_; // where the offset of the end lies
    // The last entry means nothing when the data end before the length it stands for.
    jumps_ = static_cast<uint8_t>(limit / 256 < jumps ? jumps - 1 : jumps);
    checkOffsets(limit);
}

void RowView::checkOffsets(size_t limit) const {
    size_t before = variableStart(0);
    checkFixedFields(before);
    for (size_t i = 1; i <= variableCount_; ++i) {
        const size_t start = variableStart(i);
        if (start < before) corrupt("Satırın alan konumları sırasız.");
        before = start;
    }
    if (before > limit) corrupt("Satırın alan konumları satırın dışında.");
}

void RowView::checkFixedFields(size_t end) const {
    if (end < layout_->rowCountSize) corrupt("Satırın alan konumları satırın dışında.");
    for (size_t i = 0; i < def_->fields.size(); ++i) {
        const FieldDef& field = def_->fields[i];
        if (field.fixedLength && field.type != Type::Boolean && !isNull(i) &&
            layout_->rowCountSize + field.fixedOffset + fixedWidth(*layout_, field) > end)
            corrupt("Satırın sabit boylu alanları satıra sığmıyor.");
    }
}

size_t RowView::variableStart(size_t index) const {
    if (layout_->rowCountSize == 2) return get16(bytes_, variableTableAt_ - 2 * index);
    return bytes_[variableTableAt_ - index] + jump(index);
}

size_t RowView::jump(size_t index) const {
    size_t passed = 0;
    while (passed < jumps_ && bytes_[maskAt_ - 2 - passed] <= index)
        ++passed;
    return passed * 256;
}

bool RowView::isNull(size_t index) const {
    const FieldDef& field = def_->fields[index];
    if (field.type == Type::Boolean) return false;
    const uint16_t column = field.columnNumber;
    if (column >= columnCount_ || !(bytes_[maskAt_ + column / 8] >> (column % 8) & 1)) return true;
    return !field.fixedLength && field.variableIndex >= variableCount_;
}

std::span<const uint8_t> RowView::raw(size_t index) const {
    const FieldDef& field = def_->fields[index];
    if (field.type == Type::Boolean || isNull(index)) return {};
    if (field.fixedLength)
        return bytes_.subspan(layout_->rowCountSize + field.fixedOffset, fixedWidth(*layout_, field));
    const size_t start = variableStart(field.variableIndex);
    return bytes_.subspan(start, variableStart(field.variableIndex + 1u) - start);
}

bool RowView::boolean(size_t index) const {
    const uint16_t column = def_->fields[index].columnNumber;
    return column < columnCount_ && (bytes_[maskAt_ + column / 8] >> (column % 8) & 1);
}

int32_t RowView::integer(size_t index) const {
    const auto bytes = raw(index);
    switch (def_->fields[index].type) {
    case Type::Byte: return number<uint8_t>(bytes);
    case Type::Integer: return number<int16_t>(bytes);
    default: return number<int32_t>(bytes);
    }
}

Currency RowView::currency(size_t index) const { return {number<int64_t>(raw(index))}; }

double RowView::real(size_t index) const {
    return def_->fields[index].type == Type::Single ? number<float>(raw(index)) : number<double>(raw(index));
}

std::string_view RowView::text(size_t index, std::string& scratch) const {
    decodeText(*layout_, codePage_, raw(index), scratch);
    return scratch;
}

Value RowView::value(size_t index) const {
    const FieldDef& field = def_->fields[index];
    if (field.type == Type::Boolean) return boolean(index);
    if (isNull(index)) return {};
    switch (field.type) {
    case Type::Byte:
    case Type::Integer:
    case Type::Long: return integer(index);
    case Type::Currency: return currency(index);
    case Type::Single: return number<float>(raw(index));
    case Type::Double: return number<double>(raw(index));
    case Type::Date: return Date{number<double>(raw(index))};
    case Type::Guid: return guid(raw(index));
    case Type::Numeric: return numeric(raw(index), field.scale);
    case Type::Text: {
        std::string utf8;
        text(index, utf8);
        return utf8;
    }
    default: {
        const auto bytes = raw(index);
        return Bytes(bytes.begin(), bytes.end());
    }
    }
}

} // namespace jet
