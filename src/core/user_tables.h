// core/user_tables.h — declares the tables of users and their rights (constants database).
#pragma once

#include "core/schema.h"

namespace orvan {

std::vector<TableDeclaration> userTables();

} // namespace orvan
