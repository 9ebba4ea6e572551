// dump.h — all that a database holds, as one text: password, structure, and every row of every table, those
// of the system too (but for the moments at which they were made).
#pragma once

#include "jet/database.h"

#include <string>

namespace proof {

std::string dumpOf(jet::Database& database);
// The same without the places of rows and the system's tables, which tell the places of tables.
std::string contentOf(jet::Database& database);
// The first line in which two dumps differ, for people.
std::string firstDifference(const std::string& expected, const std::string& found);

} // namespace proof
