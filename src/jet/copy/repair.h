// jet/copy/repair.h — makes a sound new file of what can be read in a damaged one. The damaged file is opened
// for reading alone and nothing is put beside it; the new one gets its name when it is complete.
#pragma once

#include "jet/pages/io.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace jet {

struct RepairOptions {
    std::string password;   // asked for when the file has one that can be read
    size_t maxLosses = 200; // listed one by one; more are only counted
    // Pages done of all that will be looked at; false stops, and nothing is left behind.
    std::function<bool(size_t done, size_t total)> progress;
    std::shared_ptr<Io> io; // empty = systemIo()
};

struct RepairedTable {
    std::string name;
    uint64_t rowsSaved = 0;
    uint64_t rowsLost = 0;   // at least
    uint64_t fieldsLost = 0; // single values of saved rows, now null
    size_t pagesDamaged = 0;
    std::vector<std::string> notes; // Turkish sentences

    bool whole() const { return rowsLost == 0 && fieldsLost == 0 && pagesDamaged == 0 && notes.empty(); }
};

struct RepairLoss {
    std::string table, field; // field empty: the whole row
    uint32_t page = 0;
    unsigned row = 0;
    std::string reason; // Turkish sentence
};

struct RepairReport {
    bool stopped = false;              // by `progress`: there is no new file
    std::vector<RepairedTable> tables; // users' tables, and those of the system that lost something
    std::vector<std::string> notes;    // Turkish sentences about the whole file
    std::vector<RepairLoss> losses;    // the first ones
    size_t lossCount = 0;
    size_t pages = 0, pagesDamaged = 0; // of the damaged file

    RepairedTable sum() const; // of all tables; without name and notes
};

// Errors: DatabaseExists (`out` is there), FileNotFound, InvalidPassword, NotADatabase (nothing in it could
// be saved), ReadOnly and NewerFormat (not of this format), those of the disk.
RepairReport repairDatabase(const std::filesystem::path& in, const std::filesystem::path& out,
                            const RepairOptions& options = {});

} // namespace jet
