// core/clock.cpp — see clock.h.
#include "core/clock.h"

#include <QStringList>

namespace orvan {

QString dateText(QDate date) {
    if (!date.isValid()) return {};
    return QStringLiteral("%1.%2.%3")
        .arg(date.day(), 2, 10, QLatin1Char('0'))
        .arg(date.month(), 2, 10, QLatin1Char('0'))
        .arg(date.year(), 4, 10, QLatin1Char('0'));
}

std::optional<QDate> dateFromText(const QString& text) {
    QString dotted = text.trimmed();
    dotted.replace(QLatin1Char('/'), QLatin1Char('.')).replace(QLatin1Char('-'), QLatin1Char('.'));
    const QStringList parts = dotted.split(QLatin1Char('.'));
    if (parts.size() != 3 || parts[2].size() != 4) return std::nullopt;
    int numbers[3] = {};
    for (int i = 0; i < 3; ++i) {
        bool isNumber = false;
        numbers[i] = parts[i].toInt(&isNumber);
        if (!isNumber) return std::nullopt;
    }
    const QDate date(numbers[2], numbers[1], numbers[0]);
    if (!date.isValid()) return std::nullopt;
    return date;
}

} // namespace orvan
