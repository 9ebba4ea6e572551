// fuzz/small_databases.h — sound databases of a few pages, made by the engine itself: what the targets begin
// with.
#pragma once

#include "hostile_file.h"

#include <string>
#include <utility>
#include <vector>

namespace fuzz {

// Three tables with rows of every type, for SQL.
Bytes sqlDatabase();

// Seeds of the file targets, by name: long values, moved rows, trees of several levels, relations' worth of
// indexes, wide tables, an encoded file, a password, a journal to roll back, the header of the older format.
std::vector<std::pair<std::string, Bytes>> seedFiles();

} // namespace fuzz
