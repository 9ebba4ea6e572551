// jet/format/table_def.h, bytes: the blocks of a definition in the order they lie. Whatever is not understood
// is kept in the `stored` members and written back, so an unchanged definition serializes to the very bytes
// it was read from.
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/field_size.h"
#include "jet/format/row_codec.h"
#include "jet/format/table_def.h"

#include <algorithm>
#include <numeric>

namespace jet {

namespace {

constexpr uint32_t kBlockMark = 1625, kRealIndexMark = 1923; // stamped on every entry by the original engine
constexpr uint16_t kNoColumn = 0xFFFF;
constexpr uint8_t kNoCascade = 4; // both cascade bytes of an index that belongs to no relation
constexpr size_t kMaxBlocks = 1000;

[[noreturn]] void corrupt(const std::string& why) { throw Error(Err::Corrupt, "Tablo tanımı bozuk: " + why); }

// Walks the image; no read can leave it.
class Reader {
  public:
    Reader(std::span<const uint8_t> image, size_t at) : image_(image), at_(at) {}
    std::span<const uint8_t> take(size_t bytes) {
        if (bytes > image_.size() - at_) corrupt("beklenenden kısa.");
        const auto part = image_.subspan(at_, bytes);
        at_ += bytes;
        return part;
    }
    bool has(size_t bytes) const { return bytes <= image_.size() - at_; }
    std::string name(const Layout& layout, uint16_t codePage) {
        const size_t length = layout.nameLengthSize == 1 ? take(1)[0] : get16(take(2), 0);
        if (length > 4 * kMaxName) corrupt("bir ad çok uzun.");
        std::string text;
        decodeText(layout, codePage, take(length), text);
        return text;
    }

  private:
    std::span<const uint8_t> image_;
    size_t at_;
};

template <size_t N> void keep(std::span<const uint8_t> from, std::array<uint8_t, N>& stored) {
    std::copy(from.begin(), from.end(), stored.begin());
}

FieldDef readField(const Layout& layout, std::span<const uint8_t> entry, size_t position) {
    const ColumnLayout& at = layout.column;
    FieldDef field;
    keep(entry, field.stored);
    field.storedPosition = static_cast<uint16_t>(position);
    field.type = static_cast<Type>(entry[0]);
    field.columnNumber = get16(entry, at.number);
    field.variableIndex = get16(entry, at.variableIndex);
    field.ordinal = get16(entry, at.ordinal);
    field.flags = entry[at.flags];
    field.flags2 = at.flags2 == kAbsent ? 0 : entry[at.flags2];
    field.fixedOffset = get16(entry, at.fixedOffset);
    field.fixedLength = (field.flags & ColumnFlag::kFixed) != 0;
    field.autoNumber = field.type == Type::Long && (field.flags & ColumnFlag::kAutoNumber);
    field.compressed = field.isText() && (field.flags2 & ColumnFlag::kCompressed);
    if (field.type == Type::Numeric) {
        field.precision = entry[at.precision];
        field.scale = entry[at.scale];
    } else {
        field.sortOrder.lcid = get16(entry, at.locale);
        field.sortOrder.version = at.sortVersion == kAbsent ? 0 : entry[at.sortVersion];
    }
    const uint16_t length = get16(entry, at.length);
    if (field.type == Type::Text)
        field.size = layout.version == 3 ? length : length / 2;
    else if (field.type == Type::Binary || !knownType(field.type))
        field.size = length;
    if (field.columnNumber >= kMaxFields) corrupt("alan numarası sınırın üstünde.");
    return field;
}

void checkColumnNumbers(const TableDef& def) {
    std::array<bool, kMaxFields> seen{};
    for (const FieldDef& field : def.fields) {
        if (seen[field.columnNumber]) corrupt("iki alan aynı numarayı taşıyor.");
        seen[field.columnNumber] = true;
    }
}

// The part of an index that its tree has: columns, root, map, flags.
struct RealIndex {
    std::array<uint8_t, 52> stored{};
    std::vector<std::pair<uint16_t, bool>> columns; // number, descending
};

RealIndex readRealIndex(const Layout& layout, std::span<const uint8_t> entry) {
    RealIndex real;
    keep(entry, real.stored);
    for (size_t i = 0; i < kMaxIndexFields; ++i) {
        const size_t at = layout.realIndex.columns + 3 * i;
        const uint16_t column = get16(entry, at);
        if (column != kNoColumn) real.columns.emplace_back(column, entry[at + 2] != 1);
    }
    return real;
}

IndexDef readIndex(const Layout& layout, std::span<const uint8_t> entry, const TableDef& def,
                   const std::vector<RealIndex>& reals) {
    const LogicalIndexLayout& at = layout.logicalIndex;
    IndexDef index;
    keep(entry, index.storedLogical);
    index.number = get32(entry, at.number);
    index.realNumber = get32(entry, at.realNumber);
    index.relType = entry[at.relType];
    index.relatedIndex = static_cast<int32_t>(get32(entry, at.relatedIndex));
    index.relatedTable = get32(entry, at.relatedTable);
    index.cascadeUpdate = entry[at.cascadeUpdate];
    index.cascadeDelete = entry[at.cascadeDelete];
    index.type = entry[at.type];
    index.primary = index.type == IndexFlag::kTypePrimary;
    index.foreign = index.type == IndexFlag::kTypeForeign;
    if (index.realNumber >= reals.size()) corrupt("bir dizinin ağacı yok.");

    const RealIndex& real = reals[index.realNumber];
    index.storedReal = real.stored;
    index.rootPage = get32(real.stored, layout.realIndex.root);
    index.usageMapPointer = get32(real.stored, layout.realIndex.usageMap);
    index.realFlags = real.stored[layout.realIndex.flags];
    index.unique = (index.realFlags & IndexFlag::kUnique) != 0;
    index.ignoreNulls = (index.realFlags & IndexFlag::kIgnoreNulls) != 0;
    index.required = (index.realFlags & IndexFlag::kRequired) != 0;
    for (const auto& [number, descending] : real.columns) {
        const auto field = std::find_if(def.fields.begin(), def.fields.end(),
                                        [n = number](const FieldDef& f) { return f.columnNumber == n; });
        if (field == def.fields.end()) corrupt("bir dizinin alanı tabloda yok.");
        index.fields.push_back({static_cast<uint16_t>(field - def.fields.begin()), descending});
    }
    if (index.fields.empty()) corrupt("bir dizinin alanı yok.");
    return index;
}

void readLongValueMaps(Reader& reader, TableDef& def) {
    for (size_t i = 0; i <= kMaxFields && reader.has(2); ++i) {
        const uint16_t number = get16(reader.take(2), 0);
        if (number == kNoColumn) return;
        const auto owned = RowId::fromPacked(get32(reader.take(4), 0));
        const auto free = RowId::fromPacked(get32(reader.take(4), 0));
        for (FieldDef& field : def.fields) {
            if (field.columnNumber != number || !field.isLongValue()) continue;
            field.ownedMapPage = owned.page;
            field.ownedMapRow = owned.row;
            field.freeMapPage = free.page;
            field.freeMapRow = free.row;
        }
    }
}

// Columns as they lie in the definition, then put into display order.
void readFields(const Layout& layout, uint16_t codePage, Reader& reader, size_t count, TableDef& def) {
    for (size_t i = 0; i < count; ++i)
        def.fields.push_back(readField(layout, reader.take(layout.columnEntry), i));
    for (FieldDef& field : def.fields)
        field.name = reader.name(layout, codePage);
    checkColumnNumbers(def);
    std::stable_sort(def.fields.begin(), def.fields.end(), [](const FieldDef& a, const FieldDef& b) {
        return std::pair(a.ordinal, a.columnNumber) < std::pair(b.ordinal, b.columnNumber);
    });
}

void readIndexes(const Layout& layout, uint16_t codePage, Reader& reader, size_t logicalCount,
                 TableDef& def) {
    std::vector<RealIndex> reals;
    for (size_t i = 0; i < def.realIndexCount; ++i)
        reals.push_back(readRealIndex(layout, reader.take(layout.realIndexEntry)));
    std::vector<bool> used(reals.size());
    for (size_t i = 0; i < logicalCount; ++i) {
        def.indexes.push_back(readIndex(layout, reader.take(layout.logicalIndexEntry), def, reals));
        used[def.indexes.back().realNumber] = true;
    }
    for (IndexDef& index : def.indexes)
        index.name = reader.name(layout, codePage);
    if (std::find(used.begin(), used.end(), false) != used.end())
        def.unsupported = "Tabloda adı olmayan bir dizin var; bu tablo yalnızca okunabilir.";
}

uint16_t storedLength(const FieldDef& field) {
    const uint16_t asRead = get16(field.stored, kJet4.column.length);
    if (field.isLongValue()) return 0;
    if (field.type == Type::Text) return static_cast<uint16_t>(2 * field.size);
    if (field.type == Type::Binary || !knownType(field.type)) return field.size;
    if (field.type == Type::Boolean) return 1;
    // Some tables of the original engine have shorter numerics; keep what was there.
    if (field.type == Type::Numeric && field.stored[0] == static_cast<uint8_t>(field.type) && asRead != 0)
        return asRead;
    return static_cast<uint16_t>(storedSize(field.type));
}

uint8_t withBits(uint8_t value, uint8_t bits, bool on) {
    return static_cast<uint8_t>(on ? value | bits : value & ~bits);
}

void appendField(const FieldDef& field, Bytes& out) {
    const ColumnLayout& at = kJet4.column;
    std::array<uint8_t, 25> entry = field.stored;
    entry[0] = static_cast<uint8_t>(field.type);
    put32(entry, 1, kBlockMark);
    put16(entry, at.number, field.columnNumber);
    put16(entry, at.variableIndex, field.variableIndex);
    put16(entry, at.ordinal, field.ordinal);
    if (field.type == Type::Numeric) {
        entry[at.precision] = field.precision;
        entry[at.scale] = field.scale;
        entry[at.scale + 1] = 0;
        entry[at.sortVersion] = 0;
    } else {
        put16(entry, at.locale, field.sortOrder.lcid);
        entry[at.sortVersion] = field.sortOrder.version;
    }
    uint8_t flags = field.flags == 0 ? ColumnFlag::kNullable : field.flags;
    flags = withBits(flags, ColumnFlag::kFixed, field.fixedLength);
    if (field.type == Type::Long) flags = withBits(flags, ColumnFlag::kAutoNumber, field.autoNumber);
    entry[at.flags] = flags;
    entry[at.flags2] =
        field.isText() ? withBits(field.flags2, ColumnFlag::kCompressed, field.compressed) : field.flags2;
    put16(entry, at.fixedOffset, field.fixedOffset);
    put16(entry, at.length, storedLength(field));
    out.insert(out.end(), entry.begin(), entry.end());
}

void appendName(const std::string& name, Bytes& out) {
    const std::u16string units = utf16FromUtf8(name);
    if (units.empty() || units.size() > kMaxName)
        throw Error(Err::NameTooLong, "'" + name + "' adı boş ya da 64 karakterden uzun.");
    const size_t at = out.size();
    out.resize(at + 2);
    put16(out, at, static_cast<uint16_t>(2 * units.size()));
    appendUnits(units, out);
}

void appendRealIndex(const TableDef& def, const IndexDef& index, Bytes& out) {
    const RealIndexLayout& at = kJet4.realIndex;
    std::array<uint8_t, 52> entry = index.storedReal;
    put32(entry, 0, kRealIndexMark);
    for (size_t i = 0; i < kMaxIndexFields; ++i) {
        const size_t slot = at.columns + 3 * i;
        if (i < index.fields.size()) {
            put16(entry, slot, def.fields.at(index.fields[i].field).columnNumber);
            entry[slot + 2] = index.fields[i].descending ? 0 : 1;
        } else {
            put16(entry, slot, kNoColumn); // the byte behind it is whatever was there
        }
    }
    put32(entry, at.usageMap, static_cast<uint32_t>(index.usageMapPointer));
    put32(entry, at.root, index.rootPage);
    const bool newPrimary = index.primary && index.realFlags == 0; // the system's own keys are not `required`
    uint8_t flags = index.realFlags | IndexFlag::kAlways;
    flags = withBits(flags, IndexFlag::kUnique, index.unique || newPrimary);
    flags = withBits(flags, IndexFlag::kIgnoreNulls, index.ignoreNulls);
    flags = withBits(flags, IndexFlag::kRequired, index.required || newPrimary);
    entry[at.flags] = flags;
    out.insert(out.end(), entry.begin(), entry.end());
}

void appendLogicalIndex(const IndexDef& index, Bytes& out) {
    const LogicalIndexLayout& at = kJet4.logicalIndex;
    std::array<uint8_t, 28> entry = index.storedLogical;
    const bool isNew = get32(entry, 0) == 0;
    put32(entry, 0, kBlockMark);
    put32(entry, at.number, index.number);
    put32(entry, at.realNumber, index.realNumber);
    entry[at.relType] = index.relType;
    put32(entry, at.relatedIndex, static_cast<uint32_t>(index.relatedIndex));
    put32(entry, at.relatedTable, index.relatedTable);
    const bool plain = isNew && !index.foreign && index.relatedTable == 0;
    entry[at.cascadeUpdate] = plain ? kNoCascade : index.cascadeUpdate;
    entry[at.cascadeDelete] = plain ? kNoCascade : index.cascadeDelete;
    entry[at.type] = index.primary   ? IndexFlag::kTypePrimary
                     : index.foreign ? IndexFlag::kTypeForeign
                                     : IndexFlag::kTypePlain;
    out.insert(out.end(), entry.begin(), entry.end());
}

void appendLongValueMaps(const std::vector<const FieldDef*>& fields, Bytes& out) {
    for (const FieldDef* field : fields) {
        if (!field->isLongValue()) continue;
        const size_t at = out.size();
        out.resize(at + 10);
        put16(out, at, field->columnNumber);
        put32(out, at + 2, static_cast<uint32_t>(RowId{field->ownedMapPage, field->ownedMapRow}.packed()));
        put32(out, at + 6, static_cast<uint32_t>(RowId{field->freeMapPage, field->freeMapRow}.packed()));
    }
    out.push_back(kNoColumn & 0xFF);
    out.push_back(kNoColumn >> 8);
}

void appendIndexes(const TableDef& def, Bytes& out) {
    for (uint32_t real = 0; real < def.realIndexCount; ++real) {
        const auto index = std::find_if(def.indexes.begin(), def.indexes.end(),
                                        [real](const IndexDef& i) { return i.realNumber == real; });
        if (index == def.indexes.end())
            throw Error(Err::InvalidArgument, "Tablo tanımında adsız bir dizin var.");
        appendRealIndex(def, *index, out);
    }
    for (const IndexDef& index : def.indexes)
        appendLogicalIndex(index, out);
    for (const IndexDef& index : def.indexes)
        appendName(index.name, out);
}

// The fixed part up to the first block, counts included.
void appendHeader(const TableDef& def, Bytes& out) {
    const Layout& at = kJet4;
    out = def.stored;
    out.resize(at.tdefStart);
    out[0] = PageType::kTableDef;
    out[1] = 1;
    put32(out, at.tdefNext, 0);
    put32(out, at.tdefMark, kBlockMark);
    put32(out, at.tdefRowCount, def.rowCount);
    put32(out, at.tdefAutoNumber, def.lastAutoNumber);
    out[at.tdefMarkByte] = 1;
    out[at.tdefType] = def.tableType;
    put16(out, at.tdefMaxColumns, def.maxColumns);
    put16(out, at.tdefVariableColumns, def.variableColumns);
    put16(out, at.tdefColumns, static_cast<uint16_t>(def.fields.size()));
    put32(out, at.tdefLogicalIndexes, static_cast<uint32_t>(def.indexes.size()));
    put32(out, at.tdefRealIndexes, def.realIndexCount);
    put32(out, at.tdefOwnedMap, static_cast<uint32_t>(def.ownedMapPointer));
    put32(out, at.tdefFreeMap, static_cast<uint32_t>(def.freeMapPointer));
    for (uint32_t i = 0; i < def.realIndexCount; ++i) {
        const size_t entry = out.size();
        out.resize(entry + at.realIndexCountEntry);
        if (i < def.storedRowCounts.size()) put32(out, entry, def.storedRowCounts[i]);
        if (i < def.uniqueEntryCounts.size()) put32(out, entry + 4, def.uniqueEntryCounts[i]);
    }
}

} // namespace

bool hasDefinitionMark(const Layout& layout, std::span<const uint8_t> page) {
    return page.size() >= layout.tdefStart && get32(page, layout.tdefMark) == kBlockMark;
}

TableDef parseTableDef(const Layout& layout, PageNo page, std::span<const uint8_t> image, uint16_t codePage) {
    if (image.size() < layout.tdefStart || image[0] != PageType::kTableDef)
        corrupt("sayfa bir tanım sayfası değil.");
    const size_t length = get32(image, layout.tdefLength);
    if (length < layout.tdefStart || length > image.size()) corrupt("uzunluğu yanlış.");

    TableDef def;
    def.page = page;
    def.stored.assign(image.begin(), image.begin() + static_cast<ptrdiff_t>(layout.tdefStart));
    def.rowCount = get32(image, layout.tdefRowCount);
    def.lastAutoNumber = get32(image, layout.tdefAutoNumber);
    def.tableType = image[layout.tdefType];
    def.system = def.tableType == 0x53;
    def.maxColumns = get16(image, layout.tdefMaxColumns);
    def.variableColumns = get16(image, layout.tdefVariableColumns);
    const size_t columns = get16(image, layout.tdefColumns);
    const size_t logical = get32(image, layout.tdefLogicalIndexes);
    def.realIndexCount = get32(image, layout.tdefRealIndexes);
    def.ownedMapPointer = get32(image, layout.tdefOwnedMap);
    def.freeMapPointer = get32(image, layout.tdefFreeMap);
    if (columns > kMaxFields || def.maxColumns > kMaxFields || columns > def.maxColumns)
        corrupt("alan sayısı yanlış.");
    if (def.variableColumns > def.maxColumns) corrupt("değişken boylu alan sayısı yanlış.");
    if (logical > kMaxBlocks || def.realIndexCount > kMaxBlocks) corrupt("dizin sayısı yanlış.");

    Reader reader(image, layout.tdefStart);
    for (size_t i = 0; i < def.realIndexCount; ++i) {
        const auto entry = reader.take(layout.realIndexCountEntry);
        def.storedRowCounts.push_back(get32(entry, 0));
        def.uniqueEntryCounts.push_back(get32(entry, 4));
    }
    readFields(layout, codePage, reader, columns, def);
    readIndexes(layout, codePage, reader, logical, def);
    readLongValueMaps(reader, def);
    return def;
}

Bytes serializeTableDef(const Layout& layout, const TableDef& def) {
    if (layout.version != 4) throw Error(Err::OlderFormat, "Access 97 dosyaları yalnızca okunabilir.");
    if (!def.unsupported.empty()) throw Error(Err::ReadOnly, def.unsupported);
    std::vector<const FieldDef*> fields;
    for (const FieldDef& field : def.fields)
        fields.push_back(&field);
    std::stable_sort(fields.begin(), fields.end(), [](const FieldDef* a, const FieldDef* b) {
        return a->storedPosition < b->storedPosition;
    });
    Bytes out;
    appendHeader(def, out);
    for (const FieldDef* field : fields)
        appendField(*field, out);
    for (const FieldDef* field : fields)
        appendName(field->name, out);
    appendIndexes(def, out);
    appendLongValueMaps(fields, out);
    put32(out, layout.tdefLength, static_cast<uint32_t>(out.size()));
    out.resize(out.size() + layout.tdefTrailer);
    put16(out, layout.tdefFree,
          out.size() < layout.pageSize ? static_cast<uint16_t>(layout.pageSize - out.size()) : 0);
    return out;
}

} // namespace jet
