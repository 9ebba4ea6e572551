// records/screens/registration_pages.h — where the fields of a student stand in the two registration forms.
// Both show every declared field; widths and labels come from the declaration where nothing shorter is given.
#pragma once

#include "core/schema.h"
#include "widgets/form_pages.h"

namespace orvan {

// Identity, civil registry, guardian, workplace, insurance, final exam and leaving: a tab each.
std::vector<FormPage> tabbedPages(const Schema& schema);
// The same on two pages: student with workplace, and the rest.
std::vector<FormPage> twoPages(const Schema& schema);

} // namespace orvan
