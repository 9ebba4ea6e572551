// board.h — memory that all processes of the proof share: the sign to stop, what each has been told was
// committed, how long its calls took, how often what happened. It outlives a killed process.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <filesystem>

namespace proof {

inline constexpr int kMostWorkers = 64;

enum class Kind { Read, Write };

// Durations in microseconds, in steps of a quarter of their power of two.
class Histogram {
  public:
    void add(uint64_t micros);
    uint64_t count() const;
    uint64_t longest() const { return longest_; }
    uint64_t percentile(double part) const; // upper edge of the step; 0 when nothing was added

  private:
    static constexpr size_t kSteps = 4 * 40;
    std::array<std::atomic<uint64_t>, kSteps> steps_;
    std::atomic<uint64_t> longest_;
};

enum class Tally {
    Duplicate,     // 3022
    Refused,       // 3260 after the full wait
    RefusedAtOnce, // 3260 of a reader that wanted to write while a commit waited for it
    Changed,       // 3197
    Gone,          // 3021: the record was deleted meanwhile
    TornLooks,     // sums and whole batches that were looked at
    StaleLooks,    // acknowledged commits of others that had to be seen
    SeekLooks,     // index searches compared with a scan
    Contents,      // rows whose whole content was compared with what it must be
    Structure,     // structure changes
    Undone,        // writes left without commit
    Reopened,
    Count_
};

struct Seat {                      // of one worker and its successors after kills; written by it alone
    std::array<Histogram, 2> took; // by Kind
    std::array<std::atomic<uint64_t>, static_cast<size_t>(Tally::Count_)> tallies;
    std::atomic<int32_t> stamp; // highest number whose commit was acknowledged, see schema.h
};

struct Board {
    std::atomic<bool> stop;
    std::atomic<uint32_t> faults;
    std::array<Seat, kMostWorkers> seats;
};

// Makes the file of the board (all zero) or joins the one that is there; lives until the process ends.
Board& mapBoard(const std::filesystem::path& file);

} // namespace proof
