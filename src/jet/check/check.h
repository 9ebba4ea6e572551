// jet/check/check.h — walks a whole file and names every contradiction: page ownership, usage maps, rows,
// indexes in order and complete, row counts, long values. Changes nothing.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace jet {

class Database;

struct Fault {
    std::string table; // empty: the file itself
    uint32_t page = 0; // 0: not one page
    std::string text;  // Turkish sentence
};

struct CheckReport {
    std::vector<Fault> faults; // at most CheckOptions::maxFaults; more are only counted
    size_t faultCount = 0;
    size_t pages = 0, tables = 0, rows = 0, indexEntries = 0, longValues = 0;
};

struct CheckOptions {
    size_t maxFaults = 200;
    std::function<bool(size_t done, size_t total)> progress; // pages; false stops the walk
};

// Never throws for damage of the file; what it cannot read is a fault.
CheckReport checkDatabase(Database& database, const CheckOptions& options = {});

} // namespace jet
