// tools/jetdb/schema.h — a table's structure as the SQL that would make it.
#pragma once

#include "jet/format/table_def.h"

#include <string>

namespace jetdb {

// CREATE TABLE and one CREATE INDEX per index, each ended with ";" and a line break; names in brackets.
std::string schemaText(const jet::TableDef& def);

} // namespace jetdb
