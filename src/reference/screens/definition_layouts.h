// reference/screens/definition_layouts.h — how each group of definitions, and the course pool, is shown: its
// form and its list. Data.
#pragma once

#include "reference/definition_groups.h"
#include "widgets/choice_list.h"
#include "widgets/form.h"
#include "widgets/list_sheet.h"

namespace orvan {

struct DefinitionLayout {
    std::vector<FormField> fields;   // widths come from the declarations, see definitionLayout
    std::vector<ListColumn> columns; // key: the field's name
};

DefinitionLayout definitionLayout(const DefinitionGroup& group, const Schema& schema);
DefinitionLayout coursePoolLayout(const Schema& schema);
// The lengths of training are those of the four-year programme, by class.
DefinitionLayout professionByClassLayout(const Schema& schema);

std::vector<Choice> versionChoices();    // "4. program (15.09.2017)"
std::vector<Choice> courseKindChoices(); // "K", "M"

} // namespace orvan
