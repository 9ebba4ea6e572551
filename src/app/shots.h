// app/shots.h — pictures of every screen, for the manual and for looking at what has changed.
#pragma once

#include <QString>
#include <QStringList>

namespace orvan {

class MDIFormORVAN;
struct Program;

// Opens every registered screen in `window` and saves each as PNG in `folder` (made when missing) under
// "window-key", alone and in the main window, the other pages of a screen with tabs as "window-key-2" and so
// on; with the splash, the sign-in box, the main window and all menus. Nobody signed in: as the first user.
// REQUIRES: the databases are open. Returns the file names; throws jet::Error(DiskIO).
QStringList takeShots(MDIFormORVAN& window, const Program& program, const QString& folder);

} // namespace orvan
