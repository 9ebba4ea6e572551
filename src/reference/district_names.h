// reference/district_names.h — the districts of the 81 provinces as data.
#pragma once

#include <array>

namespace orvan {

// One text per province in the order of the plate codes: its districts, upper case, separated by commas. The
// central district comes first where the province has one.
extern const std::array<const char*, 81> kDistrictNames;

} // namespace orvan
