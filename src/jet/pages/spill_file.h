// jet/pages/spill_file.h — a temporary file for changed pages that no longer fit into the cache during one
// write. Its name is taken away as soon as it is made, so it ends with the handle on every system;
// that of a process which died before goes with the last who leaves the database.
#pragma once

#include "jet/pages/io.h"

#include <filesystem>
#include <memory>
#include <span>

namespace jet {

class SpillFile {
  public:
    static constexpr uint32_t kNone = 0xFFFFFFFF;

    SpillFile(Io& io, std::filesystem::path path) : io_(io), path_(std::move(path)) {}

    // Saves a page in `slot`, or in a new one for kNone; returns the slot.
    uint32_t put(uint32_t slot, std::span<const uint8_t> page);
    void get(uint32_t slot, std::span<uint8_t> page); // REQUIRES: slot came from put() since the last clear()
    void clear() noexcept;                            // forgets all and gives the room back
    uint32_t slots() const { return slots_; }

  private:
    Io& io_;
    std::filesystem::path path_;
    std::unique_ptr<IoFile> file_;
    uint32_t slots_ = 0;
};

} // namespace jet
