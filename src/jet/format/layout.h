// jet/format/layout.h — every offset, size and constant of the file, one table per version; nobody else holds a number.
// Offsets are bytes from the start of the page or structure named in the field's comment; sizes are bytes.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jet {

struct PageType {
    static constexpr uint8_t kHeader = 0, kData = 1, kTableDef = 2, kIndexNode = 3, kIndexLeaf = 4, kUsageBitmap = 5;
};

struct Layout {
    int version;     // 3 or 4
    size_t pageSize; // 4: 4096, 3: 2048

    // data page
    size_t dataFree, dataOwner, dataRowCount, dataRowTable; // u16, u32, u16, u16[]
    size_t maxRowSize;                                      // bytes of one row, counts and masks included
    size_t longValueChunk;                                  // data bytes of one chain link

    // table definition (first page)
    size_t tdefFree, tdefNext, tdefLength, tdefBodyOfNextPages; // u16, u32, u32, start of the body on later pages
    size_t tdefRowCount, tdefAutoNumber, tdefType, tdefMaxColumns, tdefVariableColumns, tdefColumns;
    size_t tdefLogicalIndexes, tdefRealIndexes, tdefOwnedMap, tdefFreeMap, tdefStart;
    size_t realIndexCountEntry; // entry of block 1, per real index
    size_t columnEntry;         // descriptor of a column
    size_t realIndexEntry;      // entry of the columns-of-index block
    size_t logicalIndexEntry;

    // index page
    size_t indexFree, indexOwner, indexPrevious, indexNext, indexTail, indexPrefix, indexMask, indexMaskSize, indexEntries;
};

extern const Layout kJet3, kJet4;

inline constexpr size_t kMaxFields = 255, kMaxIndexes = 32, kMaxIndexFields = 10, kMaxName = 64; // name: characters
inline constexpr size_t kMaxTextSize = 255;                                                      // characters
inline constexpr uint64_t kMaxFileSize = 2048ull << 20;

} // namespace jet
