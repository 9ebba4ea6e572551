// jet/format/layout.h — every offset, size and constant of the file, one table per version; nobody else holds
// a number. Offsets are bytes from the start of the page or structure named in the field's comment; sizes are
// bytes.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jet {

struct PageType {
    static constexpr uint8_t kHeader = 0, kData = 1, kTableDef = 2, kIndexNode = 3, kIndexLeaf = 4,
                             kUsageBitmap = 5;
};

inline constexpr size_t kAbsent = SIZE_MAX; // an offset that this version does not have

// One column descriptor of a table definition.
struct ColumnLayout {
    size_t number, variableIndex, ordinal; // u16 each
    size_t locale, sortVersion, precision,
        scale; // u16, u8, u8, u8; numeric columns: precision and scale instead
    size_t flags, flags2, fixedOffset, length; // u8, u8, u16, u16
};
// One entry of the block of real indexes.
struct RealIndexLayout {
    size_t columns, usageMap, root, flags; // kMaxIndexFields x (u16, u8); u32, u32, u8
};
// One entry of the block of logical indexes.
struct LogicalIndexLayout {
    size_t number, realNumber, relType, relatedIndex, relatedTable, cascadeUpdate, cascadeDelete, type;
};

struct Layout {
    int version;     // 3 or 4
    size_t pageSize; // 4: 4096, 3: 2048

    // data page
    size_t dataFree, dataOwner, dataRowCount, dataRowTable; // u16, u32, u16, u16[]
    size_t maxRowSize;                                      // bytes of one row, counts and masks included
    size_t longValueChunk;                                  // data bytes of one chain link
    size_t
        rowCountSize; // width of the counts in a row: 4: u16, 3: u8 (variable offsets then have a jump table)

    // table definition (first page)
    size_t tdefFree, tdefNext, tdefLength,
        tdefBodyOfNextPages; // u16, u32, u32, start of the body on later pages
    size_t tdefRowCount, tdefAutoNumber, tdefType, tdefMaxColumns, tdefVariableColumns, tdefColumns;
    size_t tdefLogicalIndexes, tdefRealIndexes, tdefOwnedMap, tdefFreeMap, tdefStart;
    size_t tdefMark, tdefMarkByte; // u32 and u8 that the original engine stamps; 3: absent
    size_t tdefTrailer;            // zero bytes after the last block; not counted by tdefLength
    size_t nameLengthSize;         // width of the length before a name
    size_t
        realIndexCountEntry; // entry of block 1, per real index: u32 row count or 0, u32 distinct entries, …
    size_t columnEntry;      // descriptor of a column
    size_t realIndexEntry;   // entry of the columns-of-index block
    size_t logicalIndexEntry;
    ColumnLayout column;
    RealIndexLayout realIndex;
    LogicalIndexLayout logicalIndex;

    // index page
    size_t indexFree, indexOwner, indexPrevious, indexNext, indexTail, indexPrefix, indexMask, indexMaskSize,
        indexEntries;

    // Pages whose bits one bitmap page of a usage map holds.
    size_t pagesPerBitmap() const { return (pageSize - 4) * 8; }
};

extern const Layout kJet3, kJet4;

// Owner field of data pages that belong to no table.
inline constexpr uint32_t kOwnerUsageMaps = 0;           // rows are usage maps
inline constexpr uint32_t kOwnerGlobalMap = 1;           // page 1
inline constexpr uint32_t kOwnerLongValues = 0x4C41564C; // "LVAL"

// Well-known pages.
inline constexpr uint32_t kGlobalMapPage = 1; // row 0: free pages
inline constexpr uint32_t kCatalogPage = 2;   // definition of MSysObjects

// Bits of FieldDef::flags and flags2.
struct ColumnFlag {
    static constexpr uint8_t kFixed = 0x01, kNullable = 0x02, kAutoNumber = 0x04, kAutoGuid = 0x40,
                             kHyperlink = 0x80;
    static constexpr uint8_t kCompressed = 0x01; // flags2
};
// Bits of IndexDef::realFlags and values of IndexDef::type.
struct IndexFlag {
    static constexpr uint8_t kUnique = 0x01, kIgnoreNulls = 0x02, kRequired = 0x08, kAlways = 0x80;
    static constexpr uint8_t kTypePlain = 0, kTypePrimary = 1, kTypeForeign = 2;
};
// First byte of a usage map's row; a bitmap page has its bits behind a 4-byte header.
struct UsageMapForm {
    static constexpr uint8_t kInline = 0, kPaged = 1;
    static constexpr size_t kInlineFirstPage = 1, kInlineBits = 5, kPagedPages = 1, kBitmapPageBits = 4;
    static constexpr size_t kRowSize = 69; // of a map we make
};

inline constexpr size_t kMaxFields = 255, kMaxIndexes = 32, kMaxIndexFields = 10,
                        kMaxName = 64;      // name: characters
inline constexpr size_t kMaxTextSize = 255; // characters
inline constexpr size_t kMaxRowsPerPage = 255;
inline constexpr uint64_t kMaxFileSize = 2048ull << 20;

} // namespace jet
