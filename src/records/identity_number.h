// records/identity_number.h — the Turkish identity number (T.C. kimlik no): 11 digits, the last two are check
// digits.
#pragma once

#include <QString>

namespace orvan {

inline constexpr int kIdentityNumberLength = 11;

bool isIdentityNumber(const QString& text); // length, first digit not 0, both check digits
// The whole number for its first nine digits. REQUIRES: nine digits, the first not 0.
QString completeIdentityNumber(const QString& firstNine);

} // namespace orvan
