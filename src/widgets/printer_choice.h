// widgets/printer_choice.h — which printer a user printed with last, and on what paper; for everything that
// is printed.
#pragma once

#include "widgets/user_memory.h"

class QPrinter;

namespace orvan {

// The printer, paper size, two-sided and colour choice of last time, as far as that printer is still there.
// The page's direction belongs to what is printed and stays.
void recallPrinter(QPrinter& printer, const UserMemory& memory);
void rememberPrinter(const QPrinter& printer, UserMemory& memory);

} // namespace orvan
