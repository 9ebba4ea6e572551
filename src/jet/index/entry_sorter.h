// jet/index/entry_sorter.h — puts the entries of an index into order, however many there are: in memory up to
// a bound, beyond it in sorted runs in a temporary file, merged while they are read.
#pragma once

#include "jet/pages/io.h"
#include "jet/value.h"

#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace jet {

struct SortedEntry {
    std::span<const uint8_t> key; // holds until the next call
    RowId row;
    bool hasNull = false; // as given
};

class EntrySorter {
  public:
    // A nameless file that goes with its handle; asked for once, when memory is not enough.
    using MakeFile = std::function<std::unique_ptr<IoFile>()>;

    // Without `makeFile` everything stays in memory.
    explicit EntrySorter(size_t memoryBytes = SIZE_MAX, MakeFile makeFile = {});
    ~EntrySorter();

    void add(std::span<const uint8_t> key, RowId row, bool hasNull = false);
    // To the first entry, by key, then by row. After it nothing may be added. May be called again.
    void start();
    bool next(SortedEntry& entry); // false at the end

  private:
    struct Entry {
        uint64_t head; // first bytes of the key, so that most comparisons need no more
        size_t at;     // of the key in keys_
        uint32_t length;
        RowId row;
        bool hasNull;
    };
    class Run;

    std::span<const uint8_t> keyOf(const Entry& e) const { return {keys_.data() + e.at, e.length}; }
    void sortMemory();
    void writeRun();
    void pushRun(size_t run);
    bool comesLater(size_t a, size_t b) const; // of two readers

    size_t memoryBytes_;
    MakeFile makeFile_;
    Bytes keys_;
    std::vector<Entry> entries_;
    bool sorted_ = false;
    size_t nextEntry_ = 0; // all in memory

    std::unique_ptr<IoFile> file_;
    std::vector<std::pair<uint64_t, uint64_t>> runs_; // begin and end in the file
    uint64_t fileEnd_ = 0;
    std::vector<std::unique_ptr<Run>> readers_;
    std::vector<size_t> heap_; // readers that have an entry, the least one on top
    bool started_ = false;     // the top one was given out
};

} // namespace jet
