// records/record_tables.h — declares the tables of students, their workplaces, the workplace register and the
// coordinator teachers.
#pragma once

#include "core/schema.h"

namespace orvan {

std::vector<TableDeclaration> recordTables();
TableDeclaration studentTable(); // OgrenciBilgisi

} // namespace orvan
