// faults.h — what can go wrong with a disk, as hooks of MemoryIo that strike at the n-th operation.
#pragma once

#include "jet/error.h"
#include "jet/pages/io_memory.h"

#include <functional>
#include <string>
#include <vector>

namespace proof {

inline const std::filesystem::path kDatabase = "/veri/KALFA.MDB";

// Operations after which the disk may be another one. Opening counts: it may make a file.
bool changesTheDisk(const jet::MemoryIo::Step& step);
std::string textOf(const jet::MemoryIo::Step& step); // "write KALFA.MDB-journal"

// One operation of a statement as it runs without faults.
struct Operation {
    std::string text;
    jet::MemoryIo::Op op;
    std::filesystem::path path;
    bool grows = false; // takes space on the disk: a file made or extended
    size_t size = 0;    // of a write, bytes
};
// After how many bytes a write may end half done: many places in the small records of journal and lock file,
// one in the pages.
std::vector<size_t> cutsOf(const Operation& operation, size_t n);
Operation operationOf(const jet::MemoryIo& io, const jet::MemoryIo::Step& step);
// What `run` does on the disk.
struct Course {
    std::vector<Operation> changes;
    size_t reads = 0;
};
Course courseOf(jet::MemoryIo& io, const std::function<void()>& run);

enum class Fault {
    IoOnce,      // one operation fails, nothing of it done; the disk is healthy again at once
    IoLasting,   // and so does every one after it
    FullOnce,    // as IoOnce, for want of space
    FullLasting, // from here on nothing can be made or extended; what is there can be overwritten
    NoWrite,     // from here on nothing can be written at all for want of space; removing works
    HalfOnce,    // a write that fails with a part done, a removal or creation that was done and still fails
    HalfLasting, // the same, and every operation after it fails
    ReadOnce,    // one reading operation fails
};
inline constexpr Fault kAllFaults[] = {Fault::IoOnce,      Fault::IoLasting, Fault::FullOnce,
                                       Fault::FullLasting, Fault::NoWrite,   Fault::HalfOnce,
                                       Fault::HalfLasting, Fault::ReadOnce};
const char* nameOf(Fault fault);
jet::Err numberOf(Fault fault); // that the engine must hand on
bool lasts(Fault fault);

// Strikes at operation n (from 0; of the reading ones for ReadOnce). Tells by `struck` whether it did.
class FaultHook {
  public:
    // `cut`: bytes of a half-done write.
    FaultHook(jet::MemoryIo& io, Fault fault, size_t n, size_t cut = 0);
    bool struck() const { return *struck_; }
    void operator()(const jet::MemoryIo::Step& step) const;

  private:
    bool counts(const jet::MemoryIo::Step& step) const;
    bool fails(const jet::MemoryIo::Step& step, size_t now) const;
    void doHalf(const jet::MemoryIo::Step& step) const;

    jet::MemoryIo* io_;
    Fault fault_;
    size_t n_, cut_;
    std::shared_ptr<size_t> seen_ = std::make_shared<size_t>(0);
    std::shared_ptr<bool> struck_ = std::make_shared<bool>(false);
};

// From operation n on nothing works any more for who runs under it: its process is dead.
jet::MemoryIo::Hook diesAt(size_t n);

} // namespace proof
