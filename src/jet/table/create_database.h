// jet/table/create_database.h — the content of a new Jet 4 database: header, free map, system tables and
// their rows.
#pragma once

#include "jet/table/open_database.h"
#include "jet/table/permissions.h"

namespace jet {

// When every new file says it was made. The stored security ids (owners, permissions) are masked by a stream
// that goes with this moment, and the stream is known for this one only: another moment would make the ids
// those of strangers.
inline constexpr double kSecurityDate = 38143.546523784724; // day count

// Fills an empty file. REQUIRES: inside a write; the header of `db` is the one the file shall have.
void writeNewDatabase(OpenDatabase& db);

// The parts of it, for a file whose content comes from another one.
// Pages 0 to 5: header (`page0` as it stands, or made from the header of `db`), free map, and room for the
// definitions of the system tables. REQUIRES: inside a write, the file is empty.
void writeFirstPages(OpenDatabase& db, std::span<const uint8_t> page0 = {});
// REQUIRES: systemTableName(page) is not empty. No maps, no trees.
TableDef systemTableDefinition(PageNo page, SortOrder sortOrder);
// Rows of MSysObjects and MSysACEs that a new file has.
std::vector<Catalog::NewObject> newDatabaseObjects();
std::vector<Permission> newDatabasePermissions();

} // namespace jet
