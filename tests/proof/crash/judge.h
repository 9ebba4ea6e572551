// judge.h — decides what a file holds after a failure: the state before the statement, the one after it, that
// of a batch's finished part, or something that must not be. Every file that it has not seen yet is checked
// wholly by the engine's auditor and read by mdbtools.
#pragma once

#include "workload.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <unordered_map>

namespace proof {

enum class Outcome { Old, New, Part, Wrong };

// The dumps that a statement may leave; "" = no database.
struct States {
    std::string before, after;
    std::string compacted;           // as `after`; a small failure may have put the rows into other places
    std::vector<uint8_t> fileBefore; // what is undone is undone to the byte
    std::map<size_t, std::string> parts; // a batch left after so many finished statements
};

struct Figures { // of one statement
    size_t operations = 0, failures = 0, old = 0, fresh = 0, parts = 0, files = 0, recoveries = 0, faults = 0;
};

class Judge {
  public:
    // Every `peerEach`-th new file is read by mdbtools, 0 = none.
    explicit Judge(size_t peerEach) : peerEach_(peerEach) {}

    // Forgets the files of the statement before. `source`: the bytes of kSource, which never change.
    void begin(const Statement& statement, States states, std::vector<uint8_t> source);
    States& states() { return states_; }
    Figures& figures() { return figures_; }

    // What this handle sees.
    Outcome seenBy(jet::Database& database, const std::string& where);
    // What is in the file, which this handle has open; unknown contents are checked wholly.
    Outcome inFile(Workplace& place, const std::string& where);
    Outcome absent(const std::string& where); // there is no database
    void count(Outcome outcome);

    // Opens a fresh handle on the disk, judges, runs the next statement, closes, looks for files left over.
    Outcome afterReopening(const std::shared_ptr<jet::MemoryIo>& disk, const std::string& where);
    void requireNoLeftovers(const jet::MemoryIo& disk, const std::string& where);
    void fault(const std::string& where, const std::string& what);

    // What a compaction left behind goes with the next one.
    void clearUp(const std::shared_ptr<jet::MemoryIo>& disk);

  private:
    Outcome recognise(jet::Database& database, const std::string& where);
    void checkWholly(jet::Database& database, const std::string& where);
    void compareWithPeer(jet::Database& database, const std::vector<uint8_t>& bytes,
                         const std::string& where);

    size_t peerEach_;
    const Statement* statement_ = nullptr;
    std::vector<uint8_t> source_;
    States states_;
    Figures figures_;
    std::unordered_map<size_t, Outcome> known_; // by hash of the file, of this statement
    size_t fileBefore_ = 0;                     // hash
    std::set<size_t> checked_, offered_;        // by hash, of all statements
};

} // namespace proof
