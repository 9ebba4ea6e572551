// replay.h — what must be in the file at the end, by what the processes wrote down, against what is in it.
#pragma once

#include "records.h"

#include <filesystem>
#include <string>
#include <vector>

namespace proof {

struct Replay {
    std::vector<std::string> faults;
    size_t changes = 0;              // acknowledged
    size_t unknown = 0;              // of killed processes: may have happened or not
    size_t records = 0, batches = 0; // there at the end
};

// Compares diaries and file, checks the file, and compares mdb-export's view of it where that is installed.
Replay replayAndCompare(const std::filesystem::path& folder, const std::filesystem::path& database,
                        int workers);

} // namespace proof
