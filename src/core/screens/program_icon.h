// core/screens/program_icon.h — the program's icon, drawn in the sizes that windows ask for.
#pragma once

#include <QIcon>

namespace orvan {

QIcon programIcon();

} // namespace orvan
