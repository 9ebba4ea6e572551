// widgets/printed_pages.h — from laid-out pages to a printer, a PDF file or the preview; for everything that
// is printed.
#pragma once

#include <functional>
#include <memory>
#include <QRectF>
#include <QString>

class QPainter;
class QPrinter;
class QWidget;

namespace orvan {

class UserMemory;

class PrintedPages {
  public:
    virtual ~PrintedPages() = default;
    virtual int count() const = 0;
    virtual void paint(int page) = 0; // from 0
};

struct PrintJob {
    QString title;
    std::function<void(QPrinter&)> turnPage; // the page's direction where it is not upright; may be empty
    // The pages on that part of the paper; the painter outlives them.
    std::function<std::unique_ptr<PrintedPages>(QPainter&, const QRectF& area)> layOut;
};

void choosePaper(const PrintJob& job,
                 QPrinter& printer); // A4, margins, direction; before anything is painted
// Paints all pages, or the printer's page range when one is set; gives the number of all pages. Errors:
// jet::Error when the printer cannot be opened.
int printPages(const PrintJob& job, QPrinter& printer);
// A PDF with selectable text. Errors: jet::Error when the file cannot be written.
void writePdf(const PrintJob& job, const QString& path);
// Shows the pages and lets the user choose printer and page range; his printer is remembered.
void previewPages(const PrintJob& job, QWidget* parent, UserMemory& memory);

} // namespace orvan
