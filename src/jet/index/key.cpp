// jet/index/key.cpp — the byte form of every type of field in an index.
#include "jet/index/key.h"

#include "jet/error.h"
#include "jet/format/layout.h"
#include "jet/index/sort_key.h"

#include <algorithm>
#include <bit>
#include <cassert>

namespace jet {
namespace {

constexpr uint8_t kAscendingFlag = 0x7F, kDescendingFlag = 0x80;
constexpr uint8_t kAscendingNull = 0x00, kDescendingNull = 0xFF;
constexpr uint8_t kTrue = 0x00, kFalse = 0xFF;
constexpr size_t kSegment = 8;          // bytes of binary data between two counts
constexpr uint8_t kMoreSegments = 0x09; // in place of the count: another segment follows

template <class Unsigned> void appendBigEndian(Unsigned value, Bytes& key) {
    for (int shift = static_cast<int>(sizeof value) * 8 - 8; shift >= 0; shift -= 8)
        key.push_back(static_cast<uint8_t>(value >> shift));
}

// Two's complement with the sign bit flipped sorts as an unsigned number.
template <class Unsigned> void appendSigned(int64_t value, Bytes& key) {
    constexpr Unsigned kSign = static_cast<Unsigned>(Unsigned{1} << (sizeof(Unsigned) * 8 - 1));
    appendBigEndian(static_cast<Unsigned>(static_cast<Unsigned>(value) ^ kSign), key);
}

// IEEE numbers sort by their bits once the sign bit of positive ones is set and negative ones are
// complemented.
template <class Unsigned, class Real> void appendReal(Real value, Bytes& key) {
    constexpr Unsigned kSign = Unsigned{1} << (sizeof(Unsigned) * 8 - 1);
    const auto bits = std::bit_cast<Unsigned>(value);
    appendBigEndian((bits & kSign) != 0 ? static_cast<Unsigned>(~bits) : static_cast<Unsigned>(bits | kSign),
                    key);
}

// Segments of eight bytes, each followed by 09 or, the last one (padded with zeros), by the count of its
// bytes.
void appendBinary(std::span<const uint8_t> data, Bytes& key) {
    if (data.empty()) return;
    while (data.size() > kSegment) {
        key.insert(key.end(), data.begin(), data.begin() + kSegment);
        key.push_back(kMoreSegments);
        data = data.subspan(kSegment);
    }
    key.insert(key.end(), data.begin(), data.end());
    key.insert(key.end(), kSegment - data.size(), 0);
    key.push_back(static_cast<uint8_t>(data.size()));
}

void appendGuid(const Guid& guid, Bytes& key) {
    constexpr uint8_t kCanonical[16] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    std::array<uint8_t, 16> bytes;
    std::transform(std::begin(kCanonical), std::end(kCanonical), bytes.begin(),
                   [&](uint8_t from) { return guid.bytes[from]; });
    appendBinary(bytes, key);
}

void appendText(const FieldDef& field, const Value& value, Bytes& key) {
    try {
        if (const std::string* text = value.get<std::string>())
            return appendTextKey(*text, field.sortOrder, key);
        appendTextKey(value.toText(), field.sortOrder, key);
    } catch (const Error& error) {
        throw Error(error.number(), "“" + field.name + "” alanı: " + error.message());
    }
}

// Everything behind the flag byte, ascending. Text keys bring their own flag byte and are not made here.
void appendData(const FieldDef& field, const Value& value, Bytes& key) {
    switch (field.type) {
    case Type::Boolean: key.push_back(value.toBool() ? kTrue : kFalse); return;
    case Type::Byte: key.push_back(static_cast<uint8_t>(value.toInt())); return;
    case Type::Integer: appendSigned<uint16_t>(value.toInt(), key); return;
    case Type::Long: appendSigned<uint32_t>(value.toInt(), key); return;
    case Type::Currency: {
        const Currency* amount = value.get<Currency>();
        const Currency exact = amount != nullptr ? *amount : Currency::fromDouble(value.toDouble());
        appendSigned<uint64_t>(exact.tenThousandths, key);
        return;
    }
    case Type::Single: appendReal<uint32_t>(static_cast<float>(value.toDouble()), key); return;
    case Type::Double:
    case Type::Date: appendReal<uint64_t>(value.toDouble(), key); return;
    case Type::Binary:
        if (const Bytes* bytes = value.get<Bytes>()) return appendBinary(*bytes, key);
        break;
    case Type::Guid:
        if (const Guid* guid = value.get<Guid>()) return appendGuid(*guid, key);
        break;
    default: break;
    }
    throw Error(Err::Conversion, "“" + field.name + "” alanının değeri dizin anahtarına çevrilemiyor.");
}

std::string fieldObstacle(const Layout& layout, const FieldDef& field) {
    const std::string name = "“" + field.name + "” alanı";
    switch (field.type) {
    case Type::Text:
    case Type::Memo:
        if (layout.version == 3)
            return name + " Jet 3 biçimli bir metin; bu biçimin dizin anahtarları bilinmiyor.";
        if (knowsSortOrder(field.sortOrder)) return {};
        return name + " tanınmayan bir sıralama düzeni kullanıyor.";
    case Type::Boolean:
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
    case Type::Currency:
    case Type::Single:
    case Type::Double:
    case Type::Date:
    case Type::Binary:
    case Type::Guid: return {};
    case Type::Numeric: return name + " ondalık (Numeric) türde; bu türün dizin anahtarı yazılamıyor.";
    default: return name + " dizinlenemeyen bir türde.";
    }
}

} // namespace

void appendKeyPart(const FieldDef& field, bool descending, const Value& value, Bytes& key) {
    if (value.isNull() && field.type != Type::Boolean) {
        key.push_back(descending ? kDescendingNull : kAscendingNull);
        return;
    }
    const size_t start = key.size();
    if (field.isText()) {
        appendText(field, value, key);
    } else {
        key.push_back(kAscendingFlag);
        appendData(field, value, key);
    }
    if (!descending) return;
    key[start] = kDescendingFlag;
    for (size_t i = start + 1; i < key.size(); ++i)
        key[i] = static_cast<uint8_t>(~key[i]);
    if (field.isText()) key.push_back(0x00);
}

void makeKey(const TableDef& def, const IndexDef& index, std::span<const Value> values, Bytes& key,
             bool& allNull) {
    assert(values.size() == index.fields.size());
    key.clear();
    allNull = true;
    for (size_t i = 0; i < values.size(); ++i) {
        const FieldDef& field = def.fields[index.fields[i].field];
        appendKeyPart(field, index.fields[i].descending, values[i], key);
        allNull = allNull && values[i].isNull() && field.type != Type::Boolean;
    }
}

std::string keyObstacle(const Layout& layout, const TableDef& def, const IndexDef& index) {
    for (const IndexField& part : index.fields) {
        if (part.field >= def.fields.size()) return "Dizin, tabloda bulunmayan bir alanı gösteriyor.";
        if (std::string obstacle = fieldObstacle(layout, def.fields[part.field]); !obstacle.empty())
            return obstacle;
    }
    return {};
}

} // namespace jet
