// reference/field_texts.h — a declared field's value to and from the text of its entry field: dates
// "dd.MM.yyyy", money "1234.5000", rates "0.00759", yes/no "1" / "0", empty for null.
#pragma once

#include "core/schema.h"

namespace orvan {

QString fieldText(const jet::Value& value); // trimmed
// What the field takes from a text; the empty text gives null (no for yes/no).
// REQUIRES: fieldProblem is empty.
jet::Value fieldValue(const FieldDeclaration& field, const QString& text);
// Why the field cannot hold the text: too long, no number. Empty when it can.
QString fieldProblem(const FieldDeclaration& field, const QString& text);

} // namespace orvan
