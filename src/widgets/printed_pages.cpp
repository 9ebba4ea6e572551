// widgets/printed_pages.cpp — see printed_pages.h.
#include "widgets/printed_pages.h"

#include "jet/error.h"
#include "widgets/list_export.h"
#include "widgets/printer_choice.h"

#include <algorithm>
#include <QPainter>
#include <QPrinter>
#include <QPrintPreviewDialog>

namespace orvan {

void choosePaper(const PrintJob& job, QPrinter& printer) {
    constexpr double kMarginMm = 12;
    printer.setDocName(job.title);
    printer.setPageSize(QPageSize(QPageSize::A4));
    printer.setPageMargins(QMarginsF(kMarginMm, kMarginMm, kMarginMm, kMarginMm), QPageLayout::Millimeter);
    printer.setPageOrientation(QPageLayout::Portrait);
    if (job.turnPage) job.turnPage(printer);
}

int printPages(const PrintJob& job, QPrinter& printer) {
    QPainter painter;
    if (!painter.begin(&printer))
        throw jet::Error(jet::Err::DiskIO, "Yazıcı açılamadı. Yazıcının bağlı ve açık olduğuna bakınız.");
    const auto pages =
        job.layOut(painter, QRectF(QPointF(0, 0), printer.pageRect(QPrinter::DevicePixel).size()));
    const int first = std::max(printer.fromPage(), 1);
    const int last = printer.toPage() > 0 ? std::min(printer.toPage(), pages->count()) : pages->count();
    for (int page = first; page <= last; ++page) {
        if (page > first) printer.newPage();
        pages->paint(page - 1);
    }
    return pages->count();
}

void writePdf(const PrintJob& job, const QString& path) {
    needWritableFolder(path);
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(path);
    choosePaper(job, printer);
    printPages(job, printer);
}

void previewPages(const PrintJob& job, QWidget* parent, UserMemory& memory) {
    QPrinter printer(QPrinter::HighResolution);
    recallPrinter(printer, memory);
    choosePaper(job, printer);
    QPrintPreviewDialog preview(&printer, parent);
    preview.setObjectName(QStringLiteral("baskiOnizleme"));
    preview.setWindowTitle(QStringLiteral("Baskı Önizleme - %1").arg(job.title));
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview,
                     [&](QPrinter* target) { printPages(job, *target); });
    QObject::connect(&preview, &QDialog::accepted, &preview, [&] { rememberPrinter(printer, memory); });
    preview.resize(1000, 700);
    preview.exec();
}

} // namespace orvan
