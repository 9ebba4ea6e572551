// insurance/insurance_tables.h — declares the monthly insurance days and the month locks.
#pragma once

#include "core/schema.h"

namespace orvan {

std::vector<TableDeclaration> insuranceTables();

} // namespace orvan
