// records/identity_number.cpp — see identity_number.h.
#include "records/identity_number.h"

#include <algorithm>
#include <cassert>

namespace orvan {

QString completeIdentityNumber(const QString& firstNine) {
    assert(firstNine.size() == 9);
    int odd = 0, even = 0; // digits at places 1, 3, 5, 7, 9 and 2, 4, 6, 8
    for (int i = 0; i < 9; ++i)
        (i % 2 == 0 ? odd : even) += firstNine[i].digitValue();
    const int tenth = ((odd * 7 - even) % 10 + 10) % 10;
    const int eleventh = (odd + even + tenth) % 10;
    return firstNine + QString::number(tenth) + QString::number(eleventh);
}

bool isIdentityNumber(const QString& text) {
    const auto isDigit = [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); };
    if (text.size() != kIdentityNumberLength || text[0] == QLatin1Char('0')) return false;
    return std::all_of(text.begin(), text.end(), isDigit) && completeIdentityNumber(text.left(9)) == text;
}

} // namespace orvan
