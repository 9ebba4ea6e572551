// jet/index/key.h — index keys: the bytes under which a row stands in an index, from the values of its fields.
#pragma once

#include "jet/format/table_def.h"
#include "jet/value.h"

namespace jet {

// Appends one field's part of a key (flag byte, data; complemented when descending). Null is a value like any other.
// REQUIRES: value already converted to the field's type (convertTo), index.readOnlyReason empty.
void appendKeyPart(const FieldDef& field, bool descending, const Value& value, Bytes& key);

// The whole key of a row; `values` runs along index.fields. `allNull` tells that every part is null.
void makeKey(const TableDef& def, const IndexDef& index, std::span<const Value> values, Bytes& key, bool& allNull);

// Why keys of this index cannot be made (unknown sort order, Numeric field, …); empty when they can.
std::string keyObstacle(const TableDef& def, const IndexDef& index);

} // namespace jet
