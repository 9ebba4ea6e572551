// tools/orvanctl/program_tables.h — what the program has, without opening a display: its commands, and
// pictures of its screens taken by the program itself.
#pragma once

#include <QStringList>

namespace orvanctl {

// One line a command, in dispatch order: key, title of its right, window's class, with tabs between; "-"
// where there is none.
QStringList commandTable();

// Starts the program beside this one to save a picture of every screen in `folder`; on the program folder
// `centre`, or on a demo centre made for it when that is empty. Returns the files. Throws std::runtime_error.
QStringList takeShots(const QString& folder, const QString& centre);

} // namespace orvanctl
