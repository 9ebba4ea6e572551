// reference/reference_tables.h — declares code lists, course pool, curricula, classes, school constants and
// the shared reference tables.
#pragma once

#include "core/schema.h"

namespace orvan {

std::vector<TableDeclaration> referenceTables();
TableDeclaration schoolConstantsTable(); // SabitBilgiler: one row
TableDeclaration provinceTable();        // Meb_Il_Tablo with the 81 provinces
TableDeclaration districtTable();        // Meb_Ilce_Tablo with their districts

} // namespace orvan
