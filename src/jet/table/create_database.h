// jet/table/create_database.h — the content of a new Jet 4 database: header, free map, system tables and
// their rows.
#pragma once

#include "jet/table/open_database.h"

namespace jet {

// When every new file says it was made. The stored security ids (owners, permissions) are masked by a stream
// that goes with this moment, and the stream is known for this one only: another moment would make the ids
// those of strangers.
inline constexpr double kSecurityDate = 38143.546523784724; // day count

// Fills an empty file. REQUIRES: inside a write; the header of `db` is the one the file shall have.
void writeNewDatabase(OpenDatabase& db);

} // namespace jet
