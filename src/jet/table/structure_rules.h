// jet/table/structure_rules.h — what a name, a field, an index may look like, and where a new field lies in
// the row. Pure: no file. Errors carry DAO's numbers.
#pragma once

#include "jet/format/table_def.h"

#include <string_view>

namespace jet {

// Err::NameTooLong past 64 characters; Err::InvalidArgument when empty, with a leading blank, a control
// character or one of . ! ` [ ].
void checkName(std::string_view name);

// Type and size of a field as a person gives them: Err::InvalidArgument. Fills in the size of Text and Binary
// when 0, and the flags that follow from the type.
void completeField(FieldDef& field, SortOrder sortOrder);

// Gives the field the next column number, and its place among the fixed or variable fields; counts it in
// `def`. It is not added to def.fields. Err::TooManyFields past 255 numbers ever, Err::RecordTooLarge when
// the fixed part of a row would not fit a page.
void placeField(TableDef& def, FieldDef& field);
size_t
fixedSize(const FieldDef& field); // bytes in the fixed part of a row; 0 for Boolean and variable fields

// Name, number of fields, positions, a field twice, a second primary key, 32 indexes, types without order.
// `def.indexes` are the ones already there. Sets the flags of the tree from primary, unique, required,
// ignoreNulls.
void checkIndex(const TableDef& def, IndexDef& index);

// At most one AutoNumber, of type Long. Err::InvalidArgument.
void checkAutoNumbers(const TableDef& def);

} // namespace jet
