// tests/jet/copy/content.h — everything a database holds, as lines of text in an order that does not depend
// on where things lie: two files with the same content give the same lines.
#pragma once

#include "jet/database.h"

#include <string>
#include <vector>

namespace copy_test {

// Everything: for a copy within the format. TablesOnly: names, types, rules, indexes and rows of the users'
// tables, relations and queries, for one into another format.
enum class Of { Everything, TablesOnly };

std::vector<std::string> contentOf(jet::Database& database, Of what = Of::Everything);

// The first line in which they differ, with its number; empty when equal.
std::string difference(const std::vector<std::string>& before, const std::vector<std::string>& after);

std::vector<std::string> rowsOf(jet::Database& database, const std::string& table); // in page order

} // namespace copy_test
