// records/workplace_checks.cpp — see workplace_checks.h.
#include "records/workplace_checks.h"

#include <algorithm>

namespace orvan {
namespace {

constexpr int kPhoneDigits = 10; // area code and number
constexpr int kIbanLength = 26;  // TR, two check digits, 22 digits

bool isDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// The number modulo 97 with letters as 10..35, the first four characters behind the others: 1 when it is
// right.
int ibanRemainder(const QString& iban) {
    int remainder = 0;
    for (const QChar c : iban.mid(4) + iban.left(4)) {
        const int value = isDigit(c) ? c.unicode() - '0' : c.unicode() - 'A' + 10;
        remainder = (remainder * (value > 9 ? 100 : 10) + value) % 97;
    }
    return remainder;
}

} // namespace

QString phoneWarning(const QString& label, const QString& text, Phone kind) {
    if (text.trimmed().isEmpty()) return {};
    QString digits;
    for (const QChar c : text)
        if (isDigit(c))
            digits += c;
        else if (!QStringLiteral(" ()-/.+").contains(c))
            return QStringLiteral("%1: “%2” telefon numarasına benzemiyor.").arg(label, text);
    if (digits.size() == kPhoneDigits + 2 && digits.startsWith(QLatin1String("90"))) digits.remove(0, 2);
    if (digits.size() == kPhoneDigits + 1 && digits.startsWith(QLatin1Char('0'))) digits.remove(0, 1);
    if (digits.size() != kPhoneDigits)
        return QStringLiteral("%1: alan koduyla birlikte 10 rakam olmalı, “%2” içinde %3 rakam var.")
            .arg(label, text)
            .arg(digits.size());
    if (kind == Phone::Mobile && !digits.startsWith(QLatin1Char('5')))
        return QStringLiteral("%1: cep telefonu 5 ile başlar, “%2” başlamıyor.").arg(label, text);
    return {};
}

QString ibanWarning(const QString& text) {
    QString iban = text;
    iban.remove(QLatin1Char(' '));
    if (iban.isEmpty()) return {};
    if (!iban.startsWith(QLatin1String("TR")) || !std::all_of(iban.begin() + 2, iban.end(), isDigit))
        return QStringLiteral("IBAN: TR ile başlamalı ve rakamlarla sürmeli.");
    if (iban.size() != kIbanLength)
        return QStringLiteral("IBAN: TR’den sonra 24 rakam olmalı, %1 rakam var.").arg(iban.size() - 2);
    if (ibanRemainder(iban) != 1)
        return QStringLiteral("IBAN: denetim rakamları tutmuyor; bir rakam yanlış yazılmış olabilir.");
    return {};
}

} // namespace orvan
