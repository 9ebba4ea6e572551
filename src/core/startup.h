// core/startup.h — the fixed order of the program's start: steps before the main window, and steps after the
// login.
#pragma once

#include "core/database_set.h"

namespace orvan {

// Before the main window: level "Kalfa", \Data folder, password sweep.
void prepareStart(const ProgramFolder& folder, Session& session);

// After a successful login: passwords cleared, Connect, structure check, names of stored rights.
// Throws jet::Error (show the general error); the set is closed then.
void openAfterSignIn(DatabaseSet& databases, Dialogs& dialogs);

} // namespace orvan
