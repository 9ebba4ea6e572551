// records/screens/register_print.h — the register of students on A4 paper: a framed block per student, never
// broken over two pages; heading and "Sayfa x / y" on each page.
#pragma once

#include "records/student_register.h"
#include "widgets/user_memory.h"

class QPrinter;
class QWidget;

namespace orvan {

struct RegisterSheet {
    QString title;
    QStringList notes; // lines under the title
    std::vector<RegisterEntry> entries;
};

// Paints all pages, or the printer's page range when one is set; gives the number of pages of the whole
// register. Errors: jet::Error when the printer cannot be opened.
int printRegister(const RegisterSheet& sheet, QPrinter& printer);
void writeRegisterPdf(const RegisterSheet& sheet,
                      const QString& path); // jet::Error when it cannot be written
void previewRegister(const RegisterSheet& sheet, QWidget* parent, UserMemory& memory);

} // namespace orvan
