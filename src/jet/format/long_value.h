// jet/format/long_value.h — memo and OLE values: inline, on one page, or a chain over many pages.
#pragma once

#include "jet/format/row_codec.h"
#include "jet/format/usage_map.h"

namespace jet {

// Reads the value behind a field's header (`header` = RowView::raw of the field; both Jet 3 and Jet 4).
// Err::Corrupt when the chain is longer or shorter than it says, loops, or leaves the file.
Bytes readLongValue(PageFile& file, const Layout& layout, std::span<const uint8_t> header);

// Memo text in the field's stored form (compressed as text is, up to the limit), or OLE bytes, put where they
// fit: inline up to 64 bytes, else on long-value pages of this column. Returns the header with, for inline
// values, the data.
Bytes writeLongValue(PageAllocator& allocator, const FieldDef& field, std::span<const uint8_t> stored);
void freeLongValue(PageAllocator& allocator, const FieldDef& field, std::span<const uint8_t> header);

// Every page the value lies on, for the checker. Same errors as readLongValue.
void forEachLongValueRow(PageFile& file, const Layout& layout, std::span<const uint8_t> header,
                         const std::function<void(RowId)>& visit);

} // namespace jet
