// reference/field_texts.cpp — see field_texts.h.
#include "reference/field_texts.h"

#include "core/clock.h"
#include "core/values.h"

namespace orvan {
namespace {

constexpr int kMoneyDecimals = 10000; // parts of one lira

bool isNumber(jet::Type type) {
    return type == jet::Type::Long || type == jet::Type::Integer || type == jet::Type::Byte ||
           type == jet::Type::Double || type == jet::Type::Single || type == jet::Type::Currency;
}
bool isWhole(jet::Type type) { return isNumber(type) && type <= jet::Type::Long; }

// Digit by digit: "1234.5" is exactly 12.345.000 ten-thousandths.
jet::Currency money(const QString& text) {
    const qsizetype point = text.indexOf(QLatin1Char('.'));
    const QString fraction =
        (point < 0 ? QString() : text.mid(point + 1)).leftJustified(4, QLatin1Char('0'), true);
    const int64_t whole = (point < 0 ? text : text.left(point)).toLongLong() * kMoneyDecimals;
    const bool negative = text.startsWith(QLatin1Char('-'));
    return {negative ? whole - fraction.toLongLong() : whole + fraction.toLongLong()};
}

} // namespace

QString fieldText(const jet::Value& value) {
    if (const bool* yes = value.get<bool>()) return *yes ? QStringLiteral("1") : QStringLiteral("0");
    if (const jet::Date* date = value.get<jet::Date>()) {
        const auto parts = date->parts();
        return dateText({parts.year, parts.month, parts.day});
    }
    return trimmedText(value);
}

jet::Value fieldValue(const FieldDeclaration& field, const QString& text) {
    if (field.type == jet::Type::Boolean) return jet::Value(text == QLatin1String("1"));
    if (text.isEmpty()) return {};
    if (field.type == jet::Type::Currency) return jet::Value(money(text));
    if (isWhole(field.type)) return jet::Value(static_cast<int32_t>(text.toLong()));
    if (isNumber(field.type)) return jet::Value(text.toDouble());
    if (field.type == jet::Type::Date) {
        const auto date = dateFromText(text);
        jet::Date::Parts parts{date->year(), date->month(), date->day(), 0, 0, 0};
        return jet::Value(jet::Date::fromParts(parts));
    }
    return textValue(text);
}

QString fieldProblem(const FieldDeclaration& field, const QString& text) {
    const QString label = fromUtf8(field.label);
    if (field.width > 0 && text.size() > field.width)
        return QStringLiteral("%1 en çok %2 karakter olabilir; yazılan %3 karakter.")
            .arg(label)
            .arg(field.width)
            .arg(text.size());
    if (text.isEmpty()) return {};
    bool fits = true;
    if (isWhole(field.type))
        text.toInt(&fits);
    else if (isNumber(field.type))
        text.toDouble(&fits);
    if (!fits) return QStringLiteral("%1 bir sayı olmalı; “%2” sayı değil.").arg(label, text);
    if (field.type == jet::Type::Date && !dateFromText(text))
        return QStringLiteral("%1 bir tarih olmalı; “%2” tarih değil.").arg(label, text);
    return {};
}

} // namespace orvan
