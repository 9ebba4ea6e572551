// widgets/list_print.h — a list on A4 paper: title, notes, header row on every page, "Sayfa x / y" below.
// Nothing is cut: a wide list turns the page sideways, then takes a smaller font, then breaks lines inside
// cells.
#pragma once

#include "widgets/list_sheet.h"

class QPrinter;
class QWidget;

namespace orvan {

class UserMemory;

// Turns the page as the list needs; call before preview and before painting.
void choosePage(const ListSheet& sheet, QPrinter& printer);

// Paints all pages, or the printer's page range when one is set. Returns the number of pages the whole list
// has.
int printList(const ListSheet& sheet, QPrinter& printer);

// Writes the pages as a PDF with selectable text. Errors: jet::Error when the file cannot be written.
void writePdf(const ListSheet& sheet, const QString& path);

// Shows the pages and lets the user choose printer and page range; his printer is remembered.
void previewList(const ListSheet& sheet, QWidget* parent, UserMemory& memory);

} // namespace orvan
