// reference/maintenance.h — what the reference data need after each sign-in: constants that readers count on,
// the mark of new lira, the older prior-schooling list after a structure upgrade. Safe to repeat.
#pragma once

#include "core/clock.h"
#include "core/database_set.h"

namespace orvan {

// Fills the constants that are missing in the row; an empty table stays empty (each reader has defaults).
// Returns how many were filled.
int supplyConstants(Connection& constants, const Clock& clock);
// Wages after 2008 are in new lira. Returns how many rows were marked.
int markNewLira(Connection& constants);

// All of it. What cannot be written now (another station has the file, it is read only) is left to the next
// sign-in; level files whose prior-schooling list could not be rewritten are named.
void maintainReference(DatabaseSet& databases, Dialogs& dialogs, const Clock& clock);

} // namespace orvan
