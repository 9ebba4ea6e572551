// jet/format/decimal_text.h — numbers and dates as people write them into a text that goes to a field of
// another type.
#pragma once

#include "jet/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace jet {

// A decimal number, exact: digits without leading zeros ("" = 0), `scale` of them behind the point.
struct Decimal {
    bool negative = false;
    std::string digits;
    size_t scale = 0;

    // The same number with exactly `wanted` digits behind the point, rounded half to even.
    Decimal withScale(size_t wanted) const;
    std::string invariantText() const; // "-1234.5"
};

// Blanks around it, a sign, '.' or ',' before the decimals. Groups of three are understood when two kinds of
// separators or a repeated one make them certain ("1.234,56", "1.234.567"). nullopt for anything else.
std::optional<Decimal> parseDecimal(std::string_view text);

// "yyyy-MM-dd", "dd.MM.yyyy" or "dd/MM/yyyy", each with an optional time "HH:mm[:ss]"; or a time alone.
std::optional<Date> parseDate(std::string_view text);

} // namespace jet
