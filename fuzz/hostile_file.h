// fuzz/hostile_file.h — what an input of the file targets is: a database file, and behind it, told by a
// footer, what lies beside it (journal, lock file) and the steps that fuzz_write takes. Opening it in memory.
#pragma once

#include "jet/database.h"
#include "jet/pages/io_memory.h"

#include <cstdint>
#include <ctime>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace fuzz {

using Bytes = std::vector<uint8_t>;

inline constexpr const char* kPath = "/fuzz.mdb";
inline constexpr const char* kPassword = "Şifre12"; // of the seed that has one

struct HostileFile {
    Bytes file, journal, lock, steps;
};

// Input without footer: all of it is the file.
HostileFile split(std::span<const uint8_t> input);
Bytes join(const HostileFile& parts); // no footer when there is only the file

// The parts as files of one folder in memory.
std::shared_ptr<jet::MemoryIo> putInMemory(const HostileFile& parts);
// A small cache, so that pages are evicted and come back also in small files; waits end at once.
jet::OpenOptions openOptions(std::shared_ptr<jet::MemoryIo> io);

// Names of all tables, system tables included; none when the catalog cannot be read.
std::vector<std::string> allTables(jet::Database& database);

// Ends the run as a finding when a promise is broken.
void require(bool promise, const char* text);

// One input takes no more than this: processor time, so that a busy machine does not matter (under the
// sanitizers everything takes some five times as long). A walk that never ends is caught by libFuzzer's own
// clock.
class TimeBound {
  public:
    TimeBound() : start_(std::clock()) {}
    ~TimeBound() {
        require(std::clock() - start_ <= 3 * CLOCKS_PER_SEC, "an input takes three seconds at most");
    }

  private:
    std::clock_t start_;
};

// Runs `action`; what the engine refuses is fine, anything but jet::Error ends the run. True: not refused.
template <class Action> bool refusable(Action action) {
    try {
        action();
        return true;
    } catch (const jet::Error& error) {
        require(error.what()[0] != '\0' && error.code() != 0, "an error says what it is");
        return false;
    }
}

} // namespace fuzz
