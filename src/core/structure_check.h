// core/structure_check.h — after a program update: brings every database file up to the declarations and
// stamps the folder.
#pragma once

#include "core/dialogs.h"
#include "core/program_folder.h"
#include "core/schema.h"
#include "core/session.h"

namespace orvan {

struct Release {
    int major = 3, minor = 2, revision = 117;
};
QString structureStamp(const Release& release); // "EFE000300020117ADA"
Release thisRelease();
QString releaseText(const Release& release); // "3.2.117"

// True when the stamp in \Yapi.sys differs from the release's or `argument` is "Check1".
bool needsStructureCheck(const ProgramFolder& folder, const QString& argument = {},
                         const Release& release = thisRelease());

// Runs the upgrade when the stamp in \Yapi.sys differs from the release's or `argument` is "Check1", then
// writes the stamp. Sets session.upgradeNeeded to whether it ran. Safe to repeat. A file that cannot be
// brought up to date (damaged, locked by another station) is passed over; the person is told which, and the
// stamp is left so that the next start tries again. REQUIRES: no connection of this process is open on the
// files.
StructureChanges checkStructure(const ProgramFolder& folder, Session& session, const Schema& schema,
                                Dialogs& dialogs, const QString& argument = {},
                                const Release& release = thisRelease());

} // namespace orvan
