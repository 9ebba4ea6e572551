// core/passwords.h — the password policy of the database files: this release works without passwords, the
// routines to take them off (and to put the legacy one back) are here. Errors of single files are passed
// over.
#pragma once

#include "core/program_folder.h"
#include "core/session.h"

namespace orvan {

enum class SweepPolicy { Remove, Protect };

QString legacyPassword();
bool isProtected(const QString& file);      // true exactly when the engine says "not a valid password"
bool removePassword(const QString& file);   // legacy → none; false when nothing was changed
bool setPassword(const QString& file);      // none → legacy
bool clearAnyPassword(const QString& file); // first of none, legacy, 16-character that opens → none

// Start-up sweep over "*.Mdb" of \Data\, "*.Mdx" of \Mdx\, "*.Mdb" of the program folder; sets the session's
// password.
void sweepPasswords(const ProgramFolder& folder, Session& session, SweepPolicy policy = SweepPolicy::Remove);
// After the login: current password becomes empty, every file of the same three places loses any known
// password.
void clearAllPasswords(const ProgramFolder& folder, Session& session);

} // namespace orvan
