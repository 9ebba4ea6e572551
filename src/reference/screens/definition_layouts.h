// reference/screens/definition_layouts.h — how each group of definitions is shown: its form and its list.
// Data.
#pragma once

#include "reference/definition_groups.h"
#include "widgets/form.h"
#include "widgets/list_sheet.h"

namespace orvan {

struct DefinitionLayout {
    std::vector<FormField> fields;   // widths come from the declarations, see definitionLayout
    std::vector<ListColumn> columns; // key: the field's name
};

DefinitionLayout definitionLayout(const DefinitionGroup& group, const Schema& schema);

} // namespace orvan
