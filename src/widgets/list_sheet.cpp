// widgets/list_sheet.cpp — how the cells of a list are read and written for people.
#include "widgets/list_sheet.h"

#include <QDate>
#include <QLocale>

namespace orvan {

namespace {

const QLocale& turkish() {
    static const QLocale locale(QLocale::Turkish, QLocale::Turkey);
    return locale;
}

bool isNumber(const QVariant& cell) {
    switch (cell.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float: return true;
    default: return false;
    }
}

} // namespace

QString cellText(const QVariant& cell, ListKind kind) {
    if (!cell.isValid() || cell.isNull()) return {};
    if (cell.typeId() == QMetaType::QDate) return cell.toDate().toString(QStringLiteral("dd.MM.yyyy"));
    if (!isNumber(cell)) return cell.toString();
    if (kind == ListKind::Money) return turkish().toString(cell.toDouble(), 'f', 2);
    if (cell.typeId() != QMetaType::Double && cell.typeId() != QMetaType::Float) return cell.toString();
    QString text = QString::number(cell.toDouble(), 'f', 4);
    while (text.endsWith(u'0'))
        text.chop(1);
    if (text.endsWith(u'.')) text.chop(1);
    return text.replace(u'.', u',');
}

QDate cellDate(const QVariant& cell) {
    if (cell.typeId() == QMetaType::QDate) return cell.toDate();
    return QDate::fromString(cell.toString().trimmed(), QStringLiteral("dd.MM.yyyy"));
}

double cellNumber(const QVariant& cell, bool& ok) {
    if (isNumber(cell)) return cell.toDouble(&ok);
    QString text = cell.toString().trimmed();
    if (text.contains(u',')) text.remove(u'.').replace(u',', u'.');
    return text.toDouble(&ok);
}

} // namespace orvan
