// catalog/all_tables.h — the one list of every table, gathered from the subsystems that own them.
#pragma once

#include "core/schema.h"

namespace orvan {

const Schema& allTables(); // made once, never changes

} // namespace orvan
