// records/workplace_checks.h — what looks wrong in a phone number or an account number. Pure. Such a text is
// saved all the same: the person is warned.
#pragma once

#include <QString>

namespace orvan {

// Why the text looks like no telephone number of the country, as a sentence that begins with `label`; empty
// when it is one or nothing is typed. Blanks and ( ) - / . + between the digits do not count.
enum class Phone { Any, Mobile };
QString phoneWarning(const QString& label, const QString& text, Phone kind);
// The same for an IBAN: TR and 24 digits whose check digits are right.
QString ibanWarning(const QString& text);

} // namespace orvan
