// jet/sql/number_mask.h — number masks of Format: 0 # . , % E+ literals and sections
// "positive;negative;zero".
#pragma once

#include <string>
#include <string_view>

namespace jet::sql {

// Rounds half away from zero at the last place of the mask; decimal comma, points between thousands.
// An empty mask: up to 15 digits.
std::string formatNumber(double value, std::string_view mask);

} // namespace jet::sql
