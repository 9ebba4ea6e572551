// trial.h: the opener who finds a dead writer's journal fails in turn, at every operation, and the next one
// still brings the old state back.
#include "trial.h"

namespace proof {

using jet::MemoryIo;
using Survives = MemoryIo::Survives;

void Trial::recoveries() {
    std::vector<size_t> hot; // operations before which the database file is half changed
    bool begun = false;
    for (size_t n = 0; n < operations_.size(); ++n) {
        if (begun) hot.push_back(n);
        const Operation& operation = operations_[n];
        if (operation.op != MemoryIo::Op::Write && operation.op != MemoryIo::Op::Remove) continue;
        if (operation.path == kDatabase)
            begun = true;
        else // the journal is retired or removed: the commit point
            begun = false;
    }
    if (hot.empty()) return judge_.fault("recovery", "no operation leaves a hot journal");
    const size_t count = std::min(effort_.hotJournals, hot.size());
    for (size_t i = 0; i < count; ++i) { // the last one has changed most
        const size_t n = hot[hot.size() - 1 - i * hot.size() / count];
        const Disk disk = freshDisk();
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
        recoveryCrashes(disk->afterCrash(Survives::Everything), at(n, "process died"));
    }
}

void Trial::recoveryCrashes(const Disk& hot, const std::string& where) {
    const auto crashed = [&](const Disk& left, const std::string& place) {
        ++judge_.figures().recoveries;
        if (judge_.afterReopening(left, place) != Outcome::Old) judge_.fault(place, "not rolled back");
    };
    const Disk disk = hot->afterCrash(Survives::Everything);
    size_t m = 0;
    disk->setHook([&](const MemoryIo::Step& step) {
        if (!changesTheDisk(step)) return;
        const std::string place =
            where + ", recovery dies at " + std::to_string(m) + " (" + textOf(step) + ")";
        crashed(disk->afterCrash(Survives::Everything), place);
        if (step.op == MemoryIo::Op::Write) disk->patch(step.path, step.offset, step.data);
        for (size_t seed = 0; seed < (effort_.seeds + 3) / 4; ++seed)
            crashed(disk->afterCrash(Survives::Chance, seed * 1000 + m), place + ", power lost");
        ++m;
    });
    Workplace place(disk);
    try {
        place.open();
    } catch (const jet::Error& error) {
        if (!statement_.makesFile() || error.number() != jet::Err::NotADatabase)
            judge_.fault(where, "recovery: " + std::to_string(error.code()) + " " + error.what());
    }
    disk->setHook({});
    place.close();
    recoveryErrors(hot, m, where);
}

void Trial::recoveryErrors(const Disk& hot, size_t operations, const std::string& where) {
    for (size_t m = 0; m < operations; ++m) {
        const Fault fault = m % 2 == 0 ? Fault::IoOnce : Fault::HalfLasting;
        const std::string place = where + ", recovery refused at " + std::to_string(m) + ", " + nameOf(fault);
        const Disk disk = hot->afterCrash(Survives::Everything);
        disk->setHook(FaultHook(*disk, fault, m));
        try {
            Workplace refused(disk);
            refused.open();
        } catch (const jet::Error& error) {
            const bool none = statement_.makesFile() && error.number() == jet::Err::NotADatabase;
            if (!none && error.number() != numberOf(fault))
                judge_.fault(place, "told as " + std::to_string(error.code()) + " " + error.what());
        }
        disk->setHook({});
        ++judge_.figures().recoveries;
        if (judge_.afterReopening(disk, place) != Outcome::Old) judge_.fault(place, "not rolled back");
    }
}

} // namespace proof
