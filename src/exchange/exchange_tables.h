// exchange/exchange_tables.h — declares the log of sent text messages.
#pragma once

#include "core/schema.h"

namespace orvan {

std::vector<TableDeclaration> exchangeTables();

} // namespace orvan
