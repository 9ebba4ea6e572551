// jet/check/catalog_checker.h — the system tables: which tables the catalog names and whether their
// definitions are there, properties of the objects, and the rows of the relations.
#pragma once

#include "jet/check/check_context.h"
#include "jet/format/table_def.h"

#include <functional>
#include <string>
#include <vector>

namespace jet {

struct ListedTable {
    TableDef def;
    std::vector<PageNo> pages; // of the definition
};

// Tables of the catalog whose definition can be read; the others are reported. The catalog itself is always
// tried.
std::vector<ListedTable> listTables(CheckContext& context);

// Every relation must name tables and fields that exist.
void checkRelations(CheckContext& context, const std::vector<const TableDef*>& tables);

} // namespace jet
