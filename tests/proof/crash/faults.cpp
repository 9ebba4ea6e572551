#include "faults.h"

#include <algorithm>

namespace proof {

using jet::MemoryIo;
using Op = MemoryIo::Op;

bool changesTheDisk(const MemoryIo::Step& step) {
    switch (step.op) {
    case Op::Open:
    case Op::Write:
    case Op::Truncate:
    case Op::Sync:
    case Op::Remove:
    case Op::Rename:
    case Op::SyncFolder: return true;
    default: return false;
    }
}

std::string textOf(const MemoryIo::Step& step) {
    static constexpr const char* kNames[] = {"open", "exists", "read",   "write",       "truncate", "sync",
                                             "lock", "remove", "rename", "sync folder", "sleep"};
    return std::string(kNames[static_cast<size_t>(step.op)]) + " " + step.path.filename().string();
}

namespace {
// A file that is not there and is opened is being made, or the opening fails anyway.
bool takesSpace(const MemoryIo& io, const MemoryIo::Step& step) {
    if (step.op == Op::Write) return step.offset + step.data.size() > io.sizeOf(step.path);
    return step.op == Op::Open && !io.contains(step.path);
}
} // namespace

Operation operationOf(const MemoryIo& io, const MemoryIo::Step& step) {
    return {textOf(step), step.op, step.path, takesSpace(io, step), step.data.size()};
}

Course courseOf(MemoryIo& io, const std::function<void()>& run) {
    Course found;
    io.setHook([&](const MemoryIo::Step& step) {
        if (step.op == Op::Read) ++found.reads;
        if (changesTheDisk(step)) found.changes.push_back(operationOf(io, step));
    });
    run();
    io.setHook({});
    return found;
}

std::vector<size_t> cutsOf(const Operation& operation, size_t n) {
    if (operation.op != Op::Write) return {0};
    if (operation.path == kDatabase) return {(n * 1237 + 3) % (operation.size + 1)};
    std::vector<size_t> cuts;
    for (const size_t cut : {size_t{3}, size_t{8}, size_t{24}, size_t{60}, size_t{600}, operation.size / 2})
        if (cut < operation.size && (cuts.empty() || cut > cuts.back())) cuts.push_back(cut);
    cuts.push_back(operation.size);
    return cuts;
}

const char* nameOf(Fault fault) {
    static constexpr const char* kNames[] = {
        "I/O error once",   "I/O error lasting", "disk full once",        "disk full lasting",
        "no write lasting", "half-done failure", "half-done and lasting", "read error once"};
    return kNames[static_cast<size_t>(fault)];
}

jet::Err numberOf(Fault fault) {
    const bool full = fault == Fault::FullOnce || fault == Fault::FullLasting || fault == Fault::NoWrite;
    return full ? jet::Err::DiskFull : jet::Err::DiskIO;
}

bool lasts(Fault fault) {
    return fault == Fault::IoLasting || fault == Fault::FullLasting || fault == Fault::NoWrite ||
           fault == Fault::HalfLasting;
}

FaultHook::FaultHook(MemoryIo& io, Fault fault, size_t n, size_t cut)
    : io_(&io), fault_(fault), n_(n), cut_(cut) {}

bool FaultHook::counts(const MemoryIo::Step& step) const {
    return fault_ == Fault::ReadOnce ? step.op == Op::Read : changesTheDisk(step);
}

bool FaultHook::fails(const MemoryIo::Step& step, size_t now) const {
    if (now < n_ || (now > n_ && !lasts(fault_))) return false;
    if (fault_ == Fault::FullLasting) return takesSpace(*io_, step);
    if (fault_ == Fault::NoWrite) return step.op == Op::Write || takesSpace(*io_, step);
    return true;
}

void FaultHook::operator()(const MemoryIo::Step& step) const {
    if (!counts(step)) return;
    const size_t now = (*seen_)++;
    if (!fails(step, now)) return;
    *struck_ = true;
    if (now == n_ && (fault_ == Fault::HalfOnce || fault_ == Fault::HalfLasting)) doHalf(step);
    throw jet::Error(numberOf(fault_), "Deneme hatası.");
}

void FaultHook::doHalf(const MemoryIo::Step& step) const {
    if (step.op == Op::Open) {
        if (!io_->contains(step.path)) io_->put(step.path, {});
    } else if (step.op == Op::Remove) {
        io_->erase(step.path);
    } else if (step.op == Op::Write && io_->contains(step.path)) {
        io_->patch(step.path, step.offset, step.data.first(std::min(cut_, step.data.size())));
    }
}

MemoryIo::Hook diesAt(size_t n) {
    return [n, seen = std::make_shared<size_t>(0),
            dead = std::make_shared<bool>(false)](const MemoryIo::Step& step) {
        if (changesTheDisk(step) && (*seen)++ >= n) *dead = true;
        if (*dead) throw jet::Error(jet::Err::DiskIO, "Süreç öldü.");
    };
}

} // namespace proof
