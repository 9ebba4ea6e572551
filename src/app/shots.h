// app/shots.h — pictures of every screen, for the manual and for looking at what has changed.
#pragma once

#include <QString>
#include <QStringList>

namespace orvan {

class MDIFormORVAN;
struct Program;

// Opens every registered screen in `window` and saves each as PNG in `folder` (made when missing), with the
// main window, its menus and the sign-in box. REQUIRES: the databases are open. Returns the file names;
// throws jet::Error(DiskIO).
QStringList takeShots(MDIFormORVAN& window, const Program& program, const QString& folder);

} // namespace orvan
