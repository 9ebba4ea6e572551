// reference/school_year.h — the text of a school year, "2008-2009".
#pragma once

#include <QDate>
#include <QString>

namespace orvan {

QString schoolYearOf(QDate day); // the school year begins in September
// Empty when the text is a school year; otherwise what it should be.
QString schoolYearProblem(const QString& text);

} // namespace orvan
