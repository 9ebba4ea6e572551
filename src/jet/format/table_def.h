// jet/format/table_def.h — what a table is: fields, indexes, maps; in memory and as the definition pages hold
// it. parse/serialize know the byte layout of every version; where the bytes lie (page chain) is table/'s
// business.
#pragma once

#include "jet/pages/page_file.h"
#include "jet/value.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace jet {

struct Layout; // format/layout.h: every offset and constant of one file version

struct FieldDef {
    std::string name; // up to 64 characters; compared without regard to case
    Type type = Type::Text;
    uint16_t size = 0;           // Text: characters (1..255); Binary: bytes (1..510); 0 for the other types
    bool required = false;       // property of LvProp; null is refused with RequiredNull
    bool allowZeroLength = true; // property of LvProp; "" is refused with ZeroLength when false
    bool autoNumber = false;     // Long only
    bool compressed = true;      // text and memo: store in the short form when it is shorter
    std::string defaultValue;    // property of LvProp: a Jet expression as text, empty = none
    uint8_t precision = 0, scale = 0; // Numeric only

    // Where it lies in a row; set by the engine.
    uint16_t columnNumber = 0;                // never reused; position in the null mask
    uint16_t variableIndex = 0;               // variable-length fields
    uint16_t fixedOffset = 0;                 // fixed-length fields
    uint16_t ordinal = 0;                     // display order
    bool fixedLength = false;                 // as the column's flag says (a Text column may be fixed too)
    uint8_t flags = 0, flags2 = 0;            // as stored
    SortOrder sortOrder;                      // text and memo
    PageNo ownedMapPage = 0, freeMapPage = 0; // long values: map pointers, page part
    uint8_t ownedMapRow = 0, freeMapRow = 0;
    uint16_t storedPosition = 0xFFFF; // among the descriptors; new fields come last
    std::array<uint8_t, 25> stored{}; // the descriptor as read: bytes nobody knows are written back

    bool isLongValue() const { return type == Type::Memo || type == Type::Ole; }
    bool isText() const { return type == Type::Text || type == Type::Memo; }
};

struct IndexField {
    uint16_t field = 0; // position in TableDef::fields
    bool descending = false;
};

// A logical index together with the real index (tree) it stands on. Several logical indexes may share one
// tree.
struct IndexDef {
    std::string name;
    std::vector<IndexField> fields; // 1..10
    bool primary = false, unique = false, required = false, ignoreNulls = false;
    bool foreign = false; // index of a relation; kept as it is
    std::string
        readOnlyReason; // not empty: keys of this index cannot be made by us, so the table is read only

    // As stored; set by the engine.
    uint32_t number = 0;     // logical number
    uint32_t realNumber = 0; // position among the real indexes
    PageNo rootPage = 0;
    uint64_t usageMapPointer = 0; // packed row pointer of the tree's page map
    uint8_t realFlags = 0, type = 0, relType = 0, cascadeUpdate = 0, cascadeDelete = 0;
    int32_t relatedIndex = -1;
    uint32_t relatedTable = 0;
    std::array<uint8_t, 52> storedReal{}; // both entries as read, as FieldDef::stored; all zero = new
    std::array<uint8_t, 28> storedLogical{};
};

struct TableDef {
    std::string name;
    PageNo page = 0; // first definition page = catalog id
    bool system = false, hidden = false;
    std::vector<FieldDef> fields;  // in display order
    std::vector<IndexDef> indexes; // logical indexes, by name as stored

    // As stored; set by the engine.
    uint32_t rowCount = 0, lastAutoNumber = 0;
    uint8_t tableType = 0x4E;                     // 4E user, 53 system
    uint16_t maxColumns = 0, variableColumns = 0; // ever
    uint32_t realIndexCount = 0;
    std::vector<uint32_t> uniqueEntryCounts;          // per real index, a hint
    std::vector<uint32_t> storedRowCounts;            // beside them; 0 or the number of rows
    uint64_t ownedMapPointer = 0, freeMapPointer = 0; // packed row pointers
    Bytes stored;                                     // fixed part as read, as FieldDef::stored
    std::string unsupported; // not empty: we can read the table but not keep its definition; why

    std::optional<size_t> findField(std::string_view name) const; // without regard to case
    const FieldDef& field(std::string_view name) const;           // Err::NoSuchItem
    const IndexDef* findIndex(std::string_view name) const;       // nullptr when there is none
    const IndexDef* primaryKey() const;
    std::string
    readOnlyReason() const; // `unsupported` or the first of the indexes' reasons; empty = writable
};

// `image`: the definition's bytes, header of the first page included, page headers of the later ones left
// out. Names, columns and indexes only: name of the table and LvProp properties come from the catalog.
// `codePage`: of the names in Jet 3 files. Err::Corrupt with the reason when anything does not fit.
TableDef parseTableDef(const Layout& layout, PageNo page, std::span<const uint8_t> image,
                       uint16_t codePage = 1254);
// Does the page look like the first one of a definition, whatever its type byte says? Jet 4 only.
bool hasDefinitionMark(const Layout& layout, std::span<const uint8_t> page);
// For repair, Jet 4 only: an image from which parseTableDef() gets the fields of a definition whose image it
// refuses. The indexes are left out, descriptors that cannot be are dropped, names that cannot be read are
// made up. Empty when there are no fields to be had.
Bytes fieldsOnlyImage(const Layout& layout, std::span<const uint8_t> image);
// Jet 4 only. The result is what parseTableDef reads; its length field and free-space field are set for the
// whole image; the caller cuts it into pages.
Bytes serializeTableDef(const Layout& layout, const TableDef& def);

// Names of fields, tables and indexes are compared this way (without regard to case; i, I, ı and İ are one
// letter).
bool sameName(std::string_view a, std::string_view b);
std::string foldName(std::string_view name); // the form under which sameName() names are equal, for maps

} // namespace jet
