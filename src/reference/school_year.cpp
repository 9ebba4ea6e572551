// reference/school_year.cpp — see school_year.h.
#include "reference/school_year.h"

namespace orvan {

QString schoolYearOf(QDate day) {
    constexpr int kFirstMonth = 9;
    const int first = day.month() >= kFirstMonth ? day.year() : day.year() - 1;
    return QStringLiteral("%1-%2").arg(first).arg(first + 1);
}

QString schoolYearProblem(const QString& text) {
    const int first = text.left(4).toInt();
    const bool whole = first >= 1900 && text == QStringLiteral("%1-%2").arg(first).arg(first + 1);
    return whole ? QString() : QStringLiteral("2008-2009 gibi art arda iki yıl olmalı.");
}

} // namespace orvan
