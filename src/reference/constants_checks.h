// reference/constants_checks.h — what may stand in the fields of the school's constants. Pure.
#pragma once

#include "reference/stored_rows.h"

namespace orvan {

// The changed fields alone, then those that belong together (a period's end, a warning below its limit) as
// they would stand after the change. The first fault is the answer.
SaveOutcome checkConstants(const TableDeclaration& table, const FieldTexts& stored,
                           const FieldTexts& changed);

} // namespace orvan
