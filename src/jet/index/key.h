// jet/index/key.h — index keys: the bytes under which a row stands in an index, from the values of its
// fields. Keys compare as byte strings in the order of the values, and no key is the beginning of another
// one.
#pragma once

#include "jet/format/table_def.h"
#include "jet/value.h"

#include <span>

namespace jet {

// Appends one field's part of a key (flag byte, data; complemented when descending). Null is a value like any
// other; a null Boolean counts as false, as it is stored. Err::InvalidArgument for a text with a character
// whose place in the order is not known. REQUIRES: value already converted to the field's type (convertTo),
// index.readOnlyReason empty.
void appendKeyPart(const FieldDef& field, bool descending, const Value& value, Bytes& key);

// The whole key of a row, replacing what was in `key`; `values` runs along index.fields. `allNull` tells that
// every part is null. Same errors.
void makeKey(const TableDef& def, const IndexDef& index, std::span<const Value> values, Bytes& key,
             bool& allNull);

// Why keys of this index cannot be made (unknown sort order, text of a Jet 3 file, Numeric field, …); empty
// when they can. Walking such an index is fine, searching or changing it is not.
std::string keyObstacle(const Layout& layout, const TableDef& def, const IndexDef& index);

} // namespace jet
