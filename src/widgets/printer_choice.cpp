// widgets/printer_choice.cpp — the printer's settings in the user's memory.
#include "widgets/printer_choice.h"

#include <QPrinter>
#include <QPrinterInfo>

namespace orvan {

namespace {

const QString kName = QStringLiteral("Yazici/Ad");
const QString kPaper = QStringLiteral("Yazici/Kagit"); // QPageSize::key
const QString kDuplex = QStringLiteral("Yazici/CiftYuz");
const QString kColor = QStringLiteral("Yazici/Renk");

QPageSize pageSizeOf(const QString& key) {
    for (int id = 0; id <= QPageSize::LastPageSize; ++id)
        if (QPageSize::key(static_cast<QPageSize::PageSizeId>(id)) == key)
            return QPageSize(static_cast<QPageSize::PageSizeId>(id));
    return QPageSize();
}

} // namespace

void recallPrinter(QPrinter& printer, const UserMemory& memory) {
    const QString name = memory.value(kName).toString();
    if (name.isEmpty() || !QPrinterInfo::availablePrinterNames().contains(name)) return;
    const QPageLayout layout = printer.pageLayout();
    printer.setPrinterName(name);
    printer.setPageLayout(layout); // a printer brings its own page
    const QPageSize paper = pageSizeOf(memory.value(kPaper).toString());
    if (paper.isValid()) printer.setPageSize(paper);
    printer.setDuplex(static_cast<QPrinter::DuplexMode>(memory.value(kDuplex, printer.duplex()).toInt()));
    printer.setColorMode(static_cast<QPrinter::ColorMode>(memory.value(kColor, printer.colorMode()).toInt()));
}

void rememberPrinter(const QPrinter& printer, UserMemory& memory) {
    if (printer.printerName().isEmpty() || printer.outputFormat() != QPrinter::NativeFormat) return;
    memory.setValue(kName, printer.printerName());
    memory.setValue(kPaper, printer.pageLayout().pageSize().key());
    memory.setValue(kDuplex, printer.duplex());
    memory.setValue(kColor, printer.colorMode());
}

} // namespace orvan
