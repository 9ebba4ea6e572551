// widgets/list_sheet.h — a list as plain data: columns and cells in the order they are shown.
// The grid makes one; print, spreadsheet and csv export read it. Knows no window and no file.
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <vector>

namespace orvan {

// How a column is compared, aligned and exported.
enum class ListKind {
    Text,   // Turkish order, left
    Number, // by value, right
    Money,  // by value, right, two decimals
    Date,   // QDate or text dd.MM.yyyy; by day
};

struct ListColumn {
    QString key;   // stable name: settings, tests, other columns' order
    QString title; // shown in the header
    ListKind kind = ListKind::Text;
    int width = 12;    // characters of usual content; the user may change it
    bool shown = true; // at first; the user may change it
};

// One row, a cell per column. An invalid QVariant is an empty cell.
using ListRow = std::vector<QVariant>;

struct ListSheet {
    QString title;
    QStringList notes; // lines under the title: school, filter in force, date
    std::vector<ListColumn> columns;
    std::vector<ListRow> rows;
};

// What a person reads in the cell: decimal comma, dd.MM.yyyy; empty for an empty cell.
QString cellText(const QVariant& cell, ListKind kind);

// The day of a Date cell; an invalid QDate when the cell is empty or no date.
QDate cellDate(const QVariant& cell);

// The number of a Number or Money cell; `ok` false when the cell is empty or no number.
double cellNumber(const QVariant& cell, bool& ok);

} // namespace orvan
