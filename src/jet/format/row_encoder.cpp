// jet/format/row_codec.h, writing: values into fields' bytes, fields into a row.
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/field_size.h"
#include "jet/format/row_codec.h"

#include <algorithm>
#include <array>

namespace jet {

namespace {

constexpr size_t kMinRow = 4; // a row must be able to turn into a pointer

template <class T> void putNumber(T value, Bytes& bytes) {
    bytes.resize(sizeof value);
    storeLe(bytes.data(), value);
}

[[noreturn]] void tooLong(const FieldDef& field, const char* unit) {
    throw Error(Err::FieldTooLong, "'" + field.name + "' alanına en çok " + std::to_string(field.size) + " " +
                                       unit + " girilebilir.");
}

void encodeTextField(const FieldDef& field, const std::string& text, Bytes& bytes) {
    if (text.size() > field.size && utf16Length(text) > field.size) tooLong(field, "karakter");
    if (!field.fixedLength) {
        encodeText(text, field.compressed, bytes);
        return;
    }
    std::u16string units = utf16FromUtf8(text);
    units.resize(field.size, u' ');
    bytes.clear();
    appendUnits(units, bytes);
}

void encodeBinary(const FieldDef& field, const Bytes& value, Bytes& bytes) {
    if (value.size() > field.size) tooLong(field, "bayt");
    bytes = value;
    if (field.fixedLength) bytes.resize(field.size);
}

void encodeNumeric(const Numeric& value, Bytes& bytes) {
    bytes.assign(storedSize(Type::Numeric), 0);
    bytes[0] = value.negative ? 0x80 : 0;
    for (size_t i = 0; i < 4; ++i)
        put32(bytes, 1 + 4 * i, value.magnitude[i]);
}

// REQUIRES: value is of the field's type and not null.
void encodeConverted(const FieldDef& field, const Value& value, StoredField& out) {
    switch (field.type) {
    case Type::Boolean: out.boolean = *value.get<bool>(); break;
    case Type::Byte: putNumber(static_cast<uint8_t>(*value.get<int32_t>()), out.bytes); break;
    case Type::Integer: putNumber(static_cast<int16_t>(*value.get<int32_t>()), out.bytes); break;
    case Type::Long: putNumber(*value.get<int32_t>(), out.bytes); break;
    case Type::Currency: putNumber(value.get<Currency>()->tenThousandths, out.bytes); break;
    case Type::Single: putNumber(*value.get<float>(), out.bytes); break;
    case Type::Double: putNumber(*value.get<double>(), out.bytes); break;
    case Type::Date: putNumber(value.get<Date>()->days, out.bytes); break;
    case Type::Text: encodeTextField(field, *value.get<std::string>(), out.bytes); break;
    case Type::Guid:
        out.bytes.assign(value.get<Guid>()->bytes.begin(), value.get<Guid>()->bytes.end());
        break;
    case Type::Numeric: encodeNumeric(*value.get<Numeric>(), out.bytes); break;
    default: encodeBinary(field, *value.get<Bytes>(), out.bytes); break;
    }
}

// Is the value already what the field holds, so that no converted copy is needed?
bool matches(const FieldDef& field, const Value& value) {
    switch (field.type) {
    case Type::Boolean: return value.get<bool>();
    case Type::Long: return value.get<int32_t>();
    case Type::Currency: return value.get<Currency>();
    case Type::Single: return value.get<float>();
    case Type::Double: return value.get<double>();
    case Type::Date: return value.get<Date>();
    case Type::Text: return value.get<std::string>();
    default: return false;
    }
}

size_t fixedWidth(const FieldDef& field) {
    if (field.type == Type::Boolean) return 0;
    if (field.type == Type::Text) return 2u * field.size;
    const size_t size = storedSize(field.type);
    return size != 0 ? size : field.size;
}

void putFixed(const TableDef& def, std::span<const StoredField> fields, Bytes& out) {
    size_t end = kJet4.rowCountSize;
    for (const FieldDef& field : def.fields)
        if (field.fixedLength && field.type != Type::Boolean)
            end = std::max(end, kJet4.rowCountSize + field.fixedOffset + fixedWidth(field));
    out.resize(end);
    for (size_t i = 0; i < fields.size(); ++i) {
        const FieldDef& field = def.fields[i];
        if (!field.fixedLength || field.type == Type::Boolean || fields[i].null) continue;
        if (fields[i].bytes.size() != fixedWidth(field))
            throw Error(Err::InvalidArgument, "'" + field.name + "' alanının değeri alanın boyunda değil.");
        std::copy(fields[i].bytes.begin(), fields[i].bytes.end(),
                  out.begin() + static_cast<ptrdiff_t>(kJet4.rowCountSize + field.fixedOffset));
    }
}

// Variable data in the order of their indexes, then the table of offsets, last one first, and its length.
void putVariable(const TableDef& def, std::span<const StoredField> fields, Bytes& out) {
    std::array<const Bytes*, kMaxFields> data;
    std::array<uint16_t, kMaxFields + 1> starts;
    const size_t count = def.variableColumns;
    std::fill_n(data.begin(), count, nullptr);
    for (size_t i = 0; i < fields.size(); ++i) {
        const FieldDef& field = def.fields[i];
        if (field.fixedLength || field.type == Type::Boolean || fields[i].null) continue;
        if (field.variableIndex >= count)
            throw Error(Err::InvalidArgument, "Tablo tanımının alan sırası bozuk.");
        data[field.variableIndex] = &fields[i].bytes;
    }
    for (size_t i = 0; i < count; ++i) {
        starts[i] = static_cast<uint16_t>(std::min<size_t>(out.size(), UINT16_MAX));
        if (data[i]) out.insert(out.end(), data[i]->begin(), data[i]->end());
        if (out.size() > kJet4.maxRowSize)
            throw Error(Err::RecordTooLarge, "Kayıt çok uzun: bir sayfaya sığmıyor.");
    }
    starts[count] = static_cast<uint16_t>(out.size());
    const size_t at = out.size();
    out.resize(at + 2 * count + 4);
    for (size_t i = 0; i <= count; ++i)
        put16(out, at + 2 * i, starts[count - i]);
    put16(out, at + 2 * count + 2, static_cast<uint16_t>(count));
}

void putMask(const TableDef& def, std::span<const StoredField> fields, Bytes& out) {
    const size_t maskSize = (def.maxColumns + 7u) / 8;
    if (out.size() + maskSize < kMinRow)
        out.resize(kMinRow - maskSize); // unused room at the end of the fixed area
    const size_t mask = out.size();
    out.resize(mask + maskSize);
    for (size_t i = 0; i < fields.size(); ++i) {
        const FieldDef& field = def.fields[i];
        const bool set = field.type == Type::Boolean ? fields[i].boolean && !fields[i].null : !fields[i].null;
        if (set) out[mask + field.columnNumber / 8u] |= static_cast<uint8_t>(1u << field.columnNumber % 8u);
    }
}

} // namespace

void encodeField(const Layout&, const FieldDef& field, const Value& value, StoredField& out) {
    out.bytes.clear();
    out.boolean = false;
    out.null = value.isNull() && field.type != Type::Boolean;
    if (value.isNull()) return;
    if (matches(field, value))
        encodeConverted(field, value, out);
    else
        encodeConverted(field, convertTo(field, value), out);
}

void encodeRow(const Layout& layout, const TableDef& def, std::span<const StoredField> fields, Bytes& out) {
    if (layout.version != 4) throw Error(Err::OlderFormat, "Access 97 dosyaları yalnızca okunabilir.");
    if (fields.size() != def.fields.size() || def.maxColumns > kMaxFields ||
        def.variableColumns > def.maxColumns)
        throw Error(Err::InvalidArgument, "Kayıt, tablo tanımına uymuyor.");
    out.clear();
    out.resize(layout.rowCountSize);
    put16(out, 0, def.maxColumns);
    putFixed(def, fields, out);
    if (def.variableColumns > 0) putVariable(def, fields, out);
    putMask(def, fields, out);
    if (out.size() > layout.maxRowSize)
        throw Error(Err::RecordTooLarge, "Kayıt çok uzun: bir sayfaya sığmıyor.");
}

} // namespace jet
