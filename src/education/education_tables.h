// education/education_tables.h — declares marks, term averages, final exams and absences.
#pragma once

#include "core/schema.h"

namespace orvan {

std::vector<TableDeclaration> educationTables();

} // namespace orvan
