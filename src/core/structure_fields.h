// core/structure_fields.h — one field of an old file that is not of the declared kind. Within a kind (texts,
// whole numbers) it is only widened. A field of another kind ("Sozlu1" as a number where marks are text) is
// renamed with "X" appended ("Sozlu1X"), a new one takes its name and its values, and the X field goes when
// every value has been carried over; a value that the new kind cannot hold keeps it.
#pragma once

#include "core/schema.h"

namespace orvan {

// REQUIRES: the table has a field of this name. Safe to repeat, also after a run that was cut short.
void bringFieldUpToDate(jet::Database& database, const std::string& table, const FieldDeclaration& field,
                        StructureChanges& changes);

// The engine's form of a declared field.
jet::FieldDef fieldDef(const FieldDeclaration& field);

// The value as the declared field holds it: numbers as texts with a decimal comma, dates as dd.MM.yyyy, and
// back. Null stays null, and a blank text is null for anything but a text. Nothing when it has no such form.
std::optional<jet::Value> convertedValue(const jet::Value& value, const FieldDeclaration& field);

} // namespace orvan
