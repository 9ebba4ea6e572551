// widgets/number_edit.cpp — reading, showing and typing numbers.
#include "widgets/number_edit.h"

#include <algorithm>
#include <cmath>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLocale>

namespace orvan {

namespace {

constexpr int kMoneyDecimals = 4; // of the value
constexpr int kShownMoneyDecimals = 2;
constexpr int kGroup = 3; // digits between the dots of thousands

bool allDigits(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// "1.234" with its dots in their places, without them; nothing when a dot stands elsewhere.
std::optional<QString> withoutThousands(const QString& whole) {
    const QStringList groups = whole.split(u'.');
    for (qsizetype i = 1; i < groups.size(); ++i)
        if (groups[i].size() != kGroup) return std::nullopt;
    if (groups.size() > 1 && (groups[0].isEmpty() || groups[0].size() > kGroup)) return std::nullopt;
    return groups.join(QString());
}

QString withThousands(QString whole) {
    for (qsizetype at = whole.size() - kGroup; at > 0; at -= kGroup)
        whole.insert(at, u'.');
    return whole;
}

// Sign, digits before and after the decimal sign.
struct Digits {
    bool negative = false;
    QString whole, fraction;
};

std::optional<Digits> digitsOf(QString text, NumberKind kind) {
    Digits digits;
    text = text.trimmed();
    digits.negative = text.startsWith(u'-');
    if (digits.negative) text.remove(0, 1);
    if (kind == NumberKind::Decimal && !text.contains(u',') && text.count(u'.') == 1)
        text.replace(u'.', u',');
    if (text.count(u',') > (kind == NumberKind::Whole ? 0 : 1)) return std::nullopt;
    const auto whole = withoutThousands(text.section(u',', 0, 0));
    if (!whole) return std::nullopt;
    digits.whole = *whole;
    digits.fraction = text.section(u',', 1, 1);
    if (digits.whole.isEmpty() && digits.fraction.isEmpty()) return std::nullopt;
    if (!allDigits(digits.whole) || !allDigits(digits.fraction)) return std::nullopt;
    while (digits.whole.size() > 1 && digits.whole.startsWith(u'0'))
        digits.whole.remove(0, 1);
    if (digits.whole.isEmpty()) digits.whole = u'0';
    while (digits.fraction.endsWith(u'0'))
        digits.fraction.chop(1);
    return digits;
}

QString joined(const Digits& digits, QChar sign) {
    QString text = digits.whole;
    if (!digits.fraction.isEmpty()) text += sign + digits.fraction;
    const bool isZero =
        digits.whole == QStringLiteral("0") && digits.fraction.count(u'0') == digits.fraction.size();
    return digits.negative && !isZero ? u'-' + text : text;
}

int allowedDecimals(NumberKind kind, int decimals) {
    if (kind == NumberKind::Whole) return 0;
    return kind == NumberKind::Money ? std::min(decimals, kMoneyDecimals) : decimals;
}

QString limitText(double limit, NumberKind kind) {
    return shownNumber(QString::number(limit, 'f', QLocale::FloatingPointShortest), kind);
}

int neededLength(NumberKind kind, const NumberLimits& limits) {
    const auto digitsBefore = [](double limit) { return limitText(limit, NumberKind::Money).size(); };
    const int decimals = allowedDecimals(kind, limits.decimals);
    return static_cast<int>(std::max(digitsBefore(limits.least), digitsBefore(limits.most))) + decimals + 1;
}

} // namespace

std::optional<QString> typedNumber(const QString& text, NumberKind kind, int decimals) {
    if (text.trimmed().isEmpty()) return QString();
    auto digits = digitsOf(text, kind);
    if (!digits || digits->fraction.size() > allowedDecimals(kind, decimals)) return std::nullopt;
    if (kind == NumberKind::Money) digits->fraction = digits->fraction.leftJustified(kMoneyDecimals, u'0');
    return joined(*digits, u'.');
}

QString shownNumber(const QString& invariant, NumberKind kind) {
    const QString trimmed = invariant.trimmed();
    if (trimmed.count(u'.') > 1 || trimmed.contains(u',')) return invariant;
    auto digits = digitsOf(trimmed, NumberKind::Decimal); // its dot is the decimal sign
    if (!digits) return invariant;
    if (kind == NumberKind::Money) {
        digits->fraction = digits->fraction.leftJustified(kShownMoneyDecimals, u'0');
        digits->whole = withThousands(digits->whole);
    }
    return joined(*digits, u',');
}

QString numberProblem(const QString& text, NumberKind kind, const NumberLimits& limits) {
    if (text.trimmed().isEmpty()) return {};
    const auto digits = digitsOf(text, kind);
    if (!digits) {
        if (kind == NumberKind::Whole) return QStringLiteral("Tam sayı olmalıdır; örneğin 25.");
        if (kind == NumberKind::Money && text.contains(u'.'))
            return QStringLiteral("Tutar okunamadı. Ondalık için virgül kullanınız; örneğin 1.250,75.");
        return QStringLiteral("Sayı olmalıdır; örneğin 12,5.");
    }
    const int decimals = allowedDecimals(kind, limits.decimals);
    if (digits->fraction.size() > decimals)
        return decimals == 0 ? QStringLiteral("Virgülden sonra basamak yazılamaz.")
                             : QStringLiteral("Virgülden sonra en çok %1 basamak yazılabilir.").arg(decimals);
    const double number = joined(*digits, u'.').toDouble();
    if (number >= limits.least && number <= limits.most) return {};
    return QStringLiteral("%1 ile %2 arasında olmalıdır.")
        .arg(limitText(limits.least, kind), limitText(limits.most, kind));
}

NumberEdit::NumberEdit(NumberKind kind, NumberLimits limits, int maxLength, int width, QWidget* parent)
    : TextEdit(TextEntry::Code, maxLength > 0 ? maxLength : neededLength(kind, limits), width, parent),
      kind_(kind), limits_(limits) {
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
}

QString NumberEdit::value() const {
    if (text() == shownNumber(loaded_, kind_)) return loaded_;
    return typedNumber(text(), kind_, limits_.decimals).value_or(text());
}

void NumberEdit::setValue(const QString& value) {
    loaded_ = value;
    if (kind_ == NumberKind::Money && shownNumber(value, kind_) != value) // a number: in its one form
        loaded_ = typedNumber(shownNumber(value, kind_), kind_, kMoneyDecimals).value_or(value);
    putWhole(shownNumber(loaded_, kind_));
}

QString NumberEdit::problem() const {
    if (text() == shownNumber(loaded_, kind_)) return {};
    return numberProblem(text(), kind_, limits_);
}

void NumberEdit::settle() {
    if (text().isEmpty() || text() == shownNumber(loaded_, kind_) || !problem().isEmpty()) return;
    retype(shownNumber(value(), kind_));
}

void NumberEdit::keyPressEvent(QKeyEvent* event) {
    const QString typed = event->text();
    if (!typesText(*event) || isReadOnly()) {
        TextEdit::keyPressEvent(event);
        return;
    }
    const bool isDot = typed[0] == u'.' && event->modifiers().testFlag(Qt::KeypadModifier);
    const QChar letter = isDot ? u',' : typed[0];
    const bool isDecimalSign = letter == u',' || letter == u'.';
    const bool fits = letter.isDigit() || (letter == u'-' && limits_.least < 0) ||
                      (isDecimalSign && kind_ != NumberKind::Whole);
    if (!fits) {
        emit refused(QStringLiteral("Bu alana yalnızca sayı yazılır."));
        return;
    }
    QKeyEvent sign(event->type(), isDot ? Qt::Key_Comma : event->key(), event->modifiers(), QString(letter),
                   event->isAutoRepeat());
    TextEdit::keyPressEvent(&sign);
}

void NumberEdit::focusOutEvent(QFocusEvent* event) {
    if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::ActiveWindowFocusReason) settle();
    TextEdit::focusOutEvent(event);
}

} // namespace orvan
