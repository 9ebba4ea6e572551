// jet/table/definition_store.h — where a table definition lies: a chain of definition pages, first page
// fixed. Knows the chain only; what the bytes mean is format/table_def.h's business.
#pragma once

#include "jet/format/layout.h"
#include "jet/format/usage_map.h"

#include <span>
#include <vector>

namespace jet {

// The definition's bytes as parseTableDef wants them. Err::NoSuchTable when no definition page is there,
// Err::Corrupt when the chain loops, leaves the file or is longer than any definition can be.
Bytes readDefinition(PageFile& file, const Layout& layout, PageNo first);

// Puts serializeTableDef()'s bytes on the chain that starts at `first`, taking or freeing later pages as
// needed. REQUIRES: inside a write; `first` is the table's definition page or a page just allocated for it.
void writeDefinition(PageAllocator& allocator, PageNo first, std::span<const uint8_t> image);

// Frees every page of the chain. REQUIRES: inside a write.
void freeDefinition(PageAllocator& allocator, PageNo first);

// Zeroes what changes with every row (row count, last autonumber, unique counts), so that images can be
// compared.
void blankCounters(const Layout& layout, Bytes& image);

} // namespace jet
