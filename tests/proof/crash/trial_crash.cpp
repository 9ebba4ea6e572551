// trial.h: the statement runs once, and before each of its operations the disk is taken as a crash would
// leave it.
#include "trial.h"

#include "dump.h"

namespace proof {

using jet::MemoryIo;
using Survives = MemoryIo::Survives;

void Trial::crashes() {
    const Disk disk = freshDisk();
    Workplace place(disk, statement_.cachePages);
    start(place);
    size_t n = 0;
    disk->setHook([&](const MemoryIo::Step& step) {
        if (changesTheDisk(step)) crashBefore(*disk, &step, n++, false);
    });
    statement_.run(place);
    disk->setHook({});
    crashBefore(*disk, nullptr, n, true);
}

// `step` is under way; nullptr: the statement was acknowledged.
void Trial::crashBefore(MemoryIo& disk, const MemoryIo::Step* step, size_t n, bool acknowledged) {
    const bool writes = step && step->op == MemoryIo::Op::Write && disk.contains(step->path);
    crashed(disk.afterCrash(Survives::Everything), at(n, "process died"), acknowledged);
    crashed(disk.afterCrash(Survives::Synced), at(n, "power lost, only what was synced is there"),
            acknowledged);
    if (writes) {
        for (const size_t cut : cutsOf(operationOf(disk, *step), n)) {
            const auto half = disk.afterCrash(Survives::Everything);
            half->patch(step->path, step->offset, step->data.first(cut));
            crashed(half->afterCrash(Survives::Everything),
                    at(n, "process died inside the write after bytes ") + std::to_string(cut), acknowledged);
        }
        disk.patch(step->path, step->offset, step->data); // under way: the dice decide on it too
    }
    for (size_t seed = 0; seed < effort_.seeds; ++seed)
        crashed(disk.afterCrash(Survives::Chance, seed * 1000 + n),
                at(n, "power lost, dice ") + std::to_string(seed), acknowledged);
}

void Trial::crashed(const Disk& left, const std::string& where, bool acknowledged) {
    const Outcome outcome = judge_.afterReopening(left, where);
    judge_.count(outcome);
    if (acknowledged && outcome != Outcome::New) judge_.fault(where, "acknowledged, but not there");
    if (outcome == Outcome::Part) judge_.fault(where, "a part of the batch is there");
}

// Somebody else had the file open, with everything in its cache, when the writer died.
void Trial::othersGoOn() {
    const size_t step = effort_.everyFault ? 1 : 3;
    for (size_t n = 0; n < operations_.size(); n += step)
        otherGoesOn(n);
}

void Trial::otherGoesOn(size_t n) {
    const std::string where = at(n, "process died, another had the file open");
    const Disk disk = freshDisk();
    try {
        Workplace other(disk);
        other.open();
        dumpOf(other.database());
        {
            Workplace dying(disk, statement_.cachePages);
            start(dying);
            disk->setHook(diesAt(n));
            try {
                statement_.run(dying);
            } catch (const jet::Error&) {
                // dead: nobody hears of it
            }
        }
        disk->setHook({});
        judge_.count(judge_.seenBy(other.database(), where));
        judge_.inFile(other, where);
        insertProbe(other);
        Workplace third(disk);
        third.open();
        if (!probeIsThere(third)) judge_.fault(where, "the next statement left no row");
    } catch (const jet::Error& error) {
        disk->setHook({});
        judge_.fault(where, std::to_string(error.code()) + " " + error.what());
    }
    judge_.requireNoLeftovers(*disk, where);
}

} // namespace proof
