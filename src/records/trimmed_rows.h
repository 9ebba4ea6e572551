// records/trimmed_rows.h — rows by a text field as people compare it: without the blanks at both ends,
// without regard to case. Goes by the index of that field: each spelling with leading blanks that the field
// has room for is one seek (blanks at the end do not count in an index).
#pragma once

#include "core/values.h"

namespace orvan {

// In the order of their places in the file; each once. Reads the whole table only where no usable index
// begins with the field. Err::NoSuchTable, Err::NoSuchItem.
std::vector<jet::RowId> rowsByText(jet::Database& database, const std::string& table,
                                   const std::string& field, const QString& text);
// The same for a whole-number field.
std::vector<jet::RowId> rowsByNumber(jet::Database& database, const std::string& table,
                                     const std::string& field, int number);

// The texts of some fields of one row, without blanks at both ends; a field that the table lacks reads as
// empty. Err::NoCurrentRecord when the row is gone.
std::vector<QString> trimmedTexts(jet::Table& table, jet::RowId row, const std::vector<std::string>& fields);

// Sets fields of one row; the others stay.
struct NewValue {
    std::string field;
    jet::Value value;
};
void changeRow(jet::Table& table, jet::RowId row, const std::vector<NewValue>& values);

} // namespace orvan
