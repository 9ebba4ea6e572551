// records/lock_status.h — who has the databases of \Data open, by the lock file (.ldb) beside each, and the
// removal of lock files that a crash or a broken network left behind. Students are not locked one by one: a
// lock ends with the program that held it; only its file may stay.
#pragma once

#include "core/database_set.h"

#include <vector>

namespace orvan {

struct LockStatus {
    QString file;          // whole path of the database
    bool lockFile = false; // a .ldb lies beside it
    bool journal = false;  // a journal lies beside it: a write was cut short; the next opening undoes it
    bool own = false;      // this program has it open itself
    QStringList others;    // computers that have it open besides this program, as often as they do
    bool foreign = false;  // another database program has it open
    QString fault;         // why the lock file could not be looked at; empty when it could

    bool inUse() const { return own || foreign || !others.empty(); }
    bool leftBehind() const { return lockFile && !inUse() && fault.isEmpty(); }
    QString words() const; // one Turkish sentence about its state
};

// Every "*.mdb" of \Data, by name. Looks only: opens no database and changes nothing.
std::vector<LockStatus> lockStatus(DatabaseSet& databases);

// Removes what was left behind beside the databases that nobody has open, by opening and closing each: an
// interrupted write is undone by that, and who comes in between loses nothing. Returns a sentence for each
// file that was dealt with, or why it was not.
QStringList removeLeftLocks(DatabaseSet& databases);

} // namespace orvan
