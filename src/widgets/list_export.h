// widgets/list_export.h — a list into files other programs read: .xlsx, .csv, and tab-separated text for the
// clipboard. What is shown is what is written: same columns, order, filter. Errors: jet::Error with a Turkish
// text; an existing file is left as it was when the new one cannot be written.
#pragma once

#include "widgets/list_sheet.h"

namespace orvan {

// Numbers and dates become numbers and dates of the spreadsheet; codes and student numbers stay text.
void writeXlsx(const ListSheet& sheet, const QString& path);

// UTF-8 with a byte order mark, ";" between cells, as Turkish spreadsheets open it.
void writeCsv(const ListSheet& sheet, const QString& path);

// Rows on lines, tabs between cells; tabs and line ends inside a cell become blanks.
QString tabSeparated(const std::vector<QStringList>& rows);

// The one wording of a file that cannot be written: throws jet::Error(DiskIO).
[[noreturn]] void cannotWrite(const QString& path, const QString& reason);
void needWritableFolder(const QString& path); // throws when the folder or the old file cannot be written

} // namespace orvan
