// widgets/list_export.cpp — writes a list as .xlsx, .csv and tab-separated text.
#include "widgets/list_export.h"

#include "jet/error.h"

#include <algorithm>
#include <memory>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <xlsxwriter.h>

namespace orvan {

namespace {

// Closes the workbook on every way out; close() reports what the library could not do.
class Workbook {
  public:
    explicit Workbook(const QString& path) : book_(workbook_new(QFile::encodeName(path).constData())) {}
    ~Workbook() {
        if (book_) workbook_close(book_);
    }
    Workbook(const Workbook&) = delete;
    Workbook& operator=(const Workbook&) = delete;

    lxw_workbook* get() const { return book_; }
    lxw_error close() { return workbook_close(std::exchange(book_, nullptr)); }

  private:
    lxw_workbook* book_;
};

struct Formats {
    lxw_format *title, *header, *money, *date, *text;

    explicit Formats(lxw_workbook* book)
        : title(workbook_add_format(book)), header(workbook_add_format(book)),
          money(workbook_add_format(book)), date(workbook_add_format(book)), text(workbook_add_format(book)) {
        format_set_bold(title);
        format_set_font_size(title, 14);
        format_set_bold(header);
        format_set_bottom(header, LXW_BORDER_THIN);
        format_set_num_format(money, "#,##0.00");
        format_set_num_format(date, "dd.mm.yyyy");
        format_set_align(date, LXW_ALIGN_LEFT);
        format_set_num_format(text, "@");
    }
};

void writeCell(lxw_worksheet* page, lxw_row_t row, lxw_col_t column, const QVariant& cell, ListKind kind,
               const Formats& formats) {
    const QString shown = cellText(cell, kind);
    if (shown.isEmpty()) return;
    if (kind == ListKind::Date) {
        if (const QDate day = cellDate(cell); day.isValid() && day.year() >= 1900) {
            lxw_datetime when{day.year(), day.month(), day.day(), 0, 0, 0};
            worksheet_write_datetime(page, row, column, &when, formats.date);
            return;
        }
    } else if (kind != ListKind::Text) {
        bool isNumber = false;
        const double number = cellNumber(cell, isNumber);
        if (isNumber) {
            worksheet_write_number(page, row, column, number,
                                   kind == ListKind::Money ? formats.money : nullptr);
            return;
        }
    }
    worksheet_write_string(page, row, column, shown.toUtf8().constData(), formats.text);
}

QString csvCell(const QString& text) {
    const bool quote =
        text.contains(u';') || text.contains(u'"') || text.contains(u'\n') || text.contains(u'\r');
    if (!quote) return text;
    QString escaped = text;
    return u'"' + escaped.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

} // namespace

void cannotWrite(const QString& path, const QString& reason) {
    const QString text =
        QStringLiteral("\"%1\" dosyası yazılamadı: %2").arg(QDir::toNativeSeparators(path), reason);
    throw jet::Error(jet::Err::DiskIO, text.toStdString());
}

void needWritableFolder(const QString& path) {
    const QFileInfo target(path);
    if (!QFileInfo(target.absolutePath()).isWritable())
        cannotWrite(path, QStringLiteral("klasör yok ya da yazmaya kapalı."));
    if (target.exists() && !target.isWritable()) cannotWrite(path, QStringLiteral("dosya yazmaya kapalı."));
}

void writeXlsx(const ListSheet& sheet, const QString& path) {
    needWritableFolder(path);
    const QString draft =
        path + QStringLiteral(".yeni"); // beside the target, so that the last step is a rename
    Workbook book(draft);
    if (!book.get()) cannotWrite(path, QStringLiteral("bellek yetmedi."));
    const Formats formats(book.get());
    lxw_worksheet* page = workbook_add_worksheet(book.get(), "Liste");
    lxw_row_t row = 0;
    worksheet_write_string(page, row++, 0, sheet.title.toUtf8().constData(), formats.title);
    for (const QString& note : sheet.notes)
        worksheet_write_string(page, row++, 0, note.toUtf8().constData(), nullptr);
    const lxw_row_t headerRow = row++;
    const auto columnCount = static_cast<lxw_col_t>(sheet.columns.size());
    for (lxw_col_t column = 0; column < columnCount; ++column) {
        worksheet_set_column(page, column, column, sheet.columns[column].width + 2, nullptr);
        worksheet_write_string(page, headerRow, column, sheet.columns[column].title.toUtf8().constData(),
                               formats.header);
    }
    for (const ListRow& cells : sheet.rows) {
        for (lxw_col_t column = 0; column < columnCount; ++column)
            writeCell(page, row, column, cells[column], sheet.columns[column].kind, formats);
        ++row;
    }
    worksheet_freeze_panes(page, headerRow + 1, 0);
    if (!sheet.rows.empty())
        worksheet_autofilter(page, headerRow, 0, row - 1, static_cast<lxw_col_t>(columnCount - 1));
    worksheet_set_landscape(page);
    worksheet_set_paper(page, 9); // A4
    worksheet_repeat_rows(page, headerRow, headerRow);
    if (book.close() != LXW_NO_ERROR) {
        QFile::remove(draft);
        cannotWrite(path, QStringLiteral("disk dolu ya da klasör yazmaya kapalı."));
    }
    if ((QFile::exists(path) && !QFile::remove(path)) || !QFile::rename(draft, path)) {
        QFile::remove(draft);
        cannotWrite(path, QStringLiteral("dosya başka bir programda açık olabilir."));
    }
}

void writeCsv(const ListSheet& sheet, const QString& path) {
    QString text(QChar(0xFEFF));
    QStringList cells;
    for (const ListColumn& column : sheet.columns)
        cells << csvCell(column.title);
    text += cells.join(u';') + QStringLiteral("\r\n");
    for (const ListRow& row : sheet.rows) {
        cells.clear();
        for (size_t column = 0; column < sheet.columns.size(); ++column)
            cells << csvCell(cellText(row[column], sheet.columns[column].kind));
        text += cells.join(u';') + QStringLiteral("\r\n");
    }
    needWritableFolder(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) cannotWrite(path, file.errorString());
    file.write(text.toUtf8());
    if (!file.commit()) cannotWrite(path, file.errorString());
}

QString tabSeparated(const std::vector<QStringList>& rows) {
    QString text;
    for (QStringList cells : rows) {
        for (QString& cell : cells)
            cell.replace(u'\t', u' ')
                .replace(QStringLiteral("\r\n"), QStringLiteral(" "))
                .replace(u'\n', u' ');
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

} // namespace orvan
