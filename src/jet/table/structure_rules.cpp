// jet/table/structure_rules.h: limits of names, fields and indexes.
#include "jet/table/structure_rules.h"

#include "jet/error.h"
#include "jet/format/field_size.h"
#include "jet/format/layout.h"
#include "jet/format/row_codec.h"
#include "jet/index/key.h"

#include <algorithm>
#include <string>

namespace jet {

namespace {

constexpr uint16_t kMaxBinarySize = 510;
constexpr uint8_t kMaxPrecision = 28;

std::string inQuotes(std::string_view name) { return "“" + std::string(name) + "”"; }

[[noreturn]] void invalid(const std::string& message) { throw Error(Err::InvalidArgument, message); }

bool isFixed(Type type) {
    return type != Type::Text && type != Type::Binary && type != Type::Memo && type != Type::Ole;
}

} // namespace

void checkName(std::string_view name) {
    if (name.empty()) invalid("Ad boş olamaz.");
    if (utf16Length(name) > kMaxName)
        throw Error(Err::NameTooLong, inQuotes(name) + " adı çok uzun; en çok 64 karakter olabilir.");
    const bool forbidden = std::any_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 ||
               std::string_view(".!`[]").find(c) != std::string_view::npos;
    });
    if (forbidden || name.front() == ' ')
        invalid(inQuotes(name) +
                " geçerli bir ad değil; boşlukla başlayamaz, . ! ` [ ] işaretlerini içeremez.");
}

void completeField(FieldDef& field, SortOrder sortOrder) {
    switch (field.type) {
    case Type::Text:
        if (field.size == 0) field.size = kMaxTextSize;
        if (field.size > kMaxTextSize)
            invalid(inQuotes(field.name) + " metin alanı en çok 255 karakter olabilir.");
        break;
    case Type::Binary:
        if (field.size == 0) field.size = kMaxBinarySize;
        if (field.size > kMaxBinarySize)
            invalid(inQuotes(field.name) + " ikili alanı en çok 510 bayt olabilir.");
        break;
    case Type::Numeric:
        if (field.precision == 0) field.precision = 18;
        if (field.precision > kMaxPrecision || field.scale > field.precision)
            invalid(inQuotes(field.name) + " ondalık alanının basamak sayıları geçersiz.");
        field.size = 0;
        break;
    case Type::Boolean:
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
    case Type::Currency:
    case Type::Single:
    case Type::Double:
    case Type::Date:
    case Type::Ole:
    case Type::Memo:
    case Type::Guid: field.size = 0; break;
    default: invalid(inQuotes(field.name) + " alanının türü bilinmiyor.");
    }
    if (field.autoNumber && field.type != Type::Long)
        invalid(inQuotes(field.name) + " otomatik sayı alanı ancak Uzun Tamsayı türünde olabilir.");
    field.compressed = field.compressed && field.isText();
    field.fixedLength = isFixed(field.type);
    uint8_t kept = 0; // what only other programs set
    if (field.type == Type::Memo) kept = ColumnFlag::kHyperlink;
    if (field.type == Type::Guid) kept = ColumnFlag::kAutoGuid;
    field.flags = static_cast<uint8_t>((field.flags & kept) | ColumnFlag::kNullable);
    if (field.fixedLength) field.flags |= ColumnFlag::kFixed;
    if (field.autoNumber) field.flags |= ColumnFlag::kAutoNumber;
    field.flags2 = field.compressed ? ColumnFlag::kCompressed : 0;
    field.sortOrder = sortOrder;
}

size_t fixedSize(const FieldDef& field) {
    if (!field.fixedLength) return 0;
    if (field.type == Type::Boolean) return 0;
    if (field.type == Type::Text) return size_t{2} * field.size;
    const size_t size = storedSize(field.type);
    return size != 0 ? size : field.size;
}

void placeField(TableDef& def, FieldDef& field) {
    if (def.maxColumns >= kMaxFields)
        throw Error(Err::TooManyFields, "Bir tabloda en çok 255 alan olabilir (silinenler de sayılır).");
    size_t end = 0;
    for (const FieldDef& other : def.fields)
        if (other.fixedLength && other.type != Type::Boolean)
            end = std::max(end, other.fixedOffset + fixedSize(other));
    const size_t fixedPart = end + fixedSize(field);
    const size_t tail =
        2 + 2 + (kMaxFields + 7) / 8 + 2 * (size_t{def.variableColumns} + 2); // counts, mask, offsets
    if (fixedPart + tail > kJet4.maxRowSize)
        throw Error(Err::RecordTooLarge, "Sabit uzunluktaki alanlar bir kayda sığmıyor.");

    field.stored = {};
    field.storedPosition = FieldDef{}.storedPosition;
    field.columnNumber = def.maxColumns++;
    field.variableIndex = def.variableColumns;
    field.fixedOffset = field.fixedLength && field.type != Type::Boolean ? static_cast<uint16_t>(end) : 0;
    if (!field.fixedLength) ++def.variableColumns;
    uint16_t ordinal = 0;
    for (const FieldDef& other : def.fields)
        ordinal = std::max<uint16_t>(ordinal, other.ordinal + 1);
    field.ordinal = ordinal;
}

void checkIndex(const TableDef& def, IndexDef& index) {
    checkName(index.name);
    if (def.findIndex(index.name))
        throw Error(Err::IndexExists, inQuotes(index.name) + " adlı bir dizin zaten var.");
    if (index.primary && def.primaryKey())
        throw Error(Err::PrimaryKeyExists, "Tablonun zaten bir birincil anahtarı var.");
    if (def.indexes.size() >= kMaxIndexes)
        throw Error(Err::TooManyIndexes, "Bir tabloda en çok 32 dizin olabilir.");
    if (index.fields.empty() || index.fields.size() > kMaxIndexFields)
        invalid(inQuotes(index.name) + " dizininde en az 1, en çok 10 alan olabilir.");
    for (size_t i = 0; i < index.fields.size(); ++i) {
        if (index.fields[i].field >= def.fields.size())
            throw Error(Err::NoSuchItem,
                        inQuotes(index.name) + " dizini tabloda olmayan bir alanı gösteriyor.");
        for (size_t k = 0; k < i; ++k)
            if (index.fields[k].field == index.fields[i].field)
                throw Error(Err::FieldDefinedTwice,
                            inQuotes(index.name) + " dizininde aynı alan iki kez geçiyor.");
        const FieldDef& field = def.fields[index.fields[i].field];
        if (field.type == Type::Ole) invalid(inQuotes(field.name) + " alanı bir dizinde yer alamaz.");
    }
    if (index.primary) index.unique = index.required = true;
    index.realFlags = IndexFlag::kAlways;
    if (index.unique) index.realFlags |= IndexFlag::kUnique;
    if (index.ignoreNulls) index.realFlags |= IndexFlag::kIgnoreNulls;
    if (index.required) index.realFlags |= IndexFlag::kRequired;
    if (const std::string obstacle = keyObstacle(kJet4, def, index); !obstacle.empty()) invalid(obstacle);
}

void checkAutoNumbers(const TableDef& def) {
    const auto count =
        std::count_if(def.fields.begin(), def.fields.end(), [](const FieldDef& f) { return f.autoNumber; });
    if (count > 1) invalid("Bir tabloda yalnızca bir otomatik sayı alanı olabilir.");
}

} // namespace jet
