// trial.h: an operation fails with an error, and the process lives on.
#include "trial.h"

#include "dump.h"

namespace proof {

using jet::MemoryIo;

namespace {

// The fault makes a difference at this operation; else it is the same as at the next.
bool matters(Fault fault, const Operation& operation) {
    using Op = MemoryIo::Op;
    switch (fault) {
    case Fault::FullLasting: return operation.grows;
    case Fault::NoWrite: return operation.grows || operation.op == Op::Write;
    case Fault::HalfOnce:
    case Fault::HalfLasting:
        return operation.grows || operation.op == Op::Write || operation.op == Op::Remove;
    default: return true;
    }
}

} // namespace

void Trial::errors() {
    constexpr size_t kinds = std::size(kAllFaults) - 1; // ReadOnce counts other operations
    for (size_t n = 0; n < operations_.size(); ++n) {
        if (effort_.everyFault) {
            for (size_t kind = 0; kind < kinds; ++kind)
                if (matters(kAllFaults[kind], operations_[n])) refused(kAllFaults[kind], n);
            continue;
        }
        size_t kind = n % kinds;
        while (!matters(kAllFaults[kind], operations_[n]))
            kind = (kind + 1) % kinds;
        refused(kAllFaults[kind], n);
    }
    for (size_t n = 0; n < reads_; n += effort_.everyFault ? 1 : 1 + reads_ / 4)
        refused(Fault::ReadOnce, n);
}

void Trial::refused(Fault fault, size_t n) {
    if (fault == Fault::ReadOnce)
        return refused(fault, n, 0, "read " + std::to_string(n) + ", " + nameOf(fault));
    if (fault != Fault::HalfOnce && fault != Fault::HalfLasting)
        return refused(fault, n, 0, at(n, nameOf(fault)));
    for (const size_t cut : cutsOf(operations_[n], n))
        refused(fault, n, cut, at(n, nameOf(fault)) + " after " + std::to_string(cut) + " bytes");
}

void Trial::refused(Fault fault, size_t n, size_t cut, const std::string& where) {
    const Disk disk = freshDisk();
    Workplace place(disk, statement_.cachePages);
    start(place);
    const FaultHook hook(*disk, fault, n, cut);
    disk->setHook(hook);
    bool acknowledged = false;
    try {
        statement_.run(place);
        acknowledged = !statement_.silent;
    } catch (const jet::Error& error) {
        if (error.number() != numberOf(fault))
            judge_.fault(where, "told as " + std::to_string(error.code()) + " " + error.what());
    }
    if (!hook.struck()) judge_.fault(where, "never struck");
    if (place.isOpen()) place.database().pages().assertState();
    learnPart(place.finished());
    if (lasts(fault)) whileFailing(place, fault, where);
    disk->setHook({});
    try {
        const Outcome outcome = afterHealing(place, acknowledged, where);
        judge_.count(outcome);
        if (outcome == Outcome::Old) runAgain(place, where);
    } catch (const jet::Error& error) {
        judge_.fault(where, "healed: " + std::to_string(error.code()) + " " + error.what());
    }
    place.close();
    judge_.clearUp(disk);
    judge_.requireNoLeftovers(*disk, where);
}

// A batch that an error left keeps what was finished.
void Trial::learnPart(size_t finished) {
    auto& parts = judge_.states().parts;
    if (finished == 0 || parts.contains(finished)) return;
    const Disk disk = freshDisk();
    Workplace place(disk, statement_.cachePages);
    start(place);
    place.stopAfter(finished);
    try {
        statement_.run(place);
    } catch (const Workplace::StopHere&) {
        // the batch ended here
    }
    parts[finished] = dumpOf(place.database());
}

// While the disk refuses, a read may be refused with the same number, but never shows what is not so. On a
// full disk people must be able to read.
void Trial::whileFailing(Workplace& place, Fault fault, const std::string& where) {
    const auto look = [&](Workplace& by, const char* who) {
        try {
            if (!by.isOpen()) by.open();
            judge_.seenBy(by.database(), where + ", while it lasts, " + who);
        } catch (const jet::Error& error) {
            const bool none = judge_.states().before.empty() && (error.number() == jet::Err::FileNotFound ||
                                                                 error.number() == jet::Err::NotADatabase);
            // Nobody has it open: then a lock file has to be made first.
            const bool mustRead = fault == Fault::FullLasting && place.isOpen();
            if (!none && (error.number() != numberOf(fault) || mustRead))
                judge_.fault(where + ", while it lasts, " + who,
                             std::to_string(error.code()) + " " + error.what());
        }
    };
    if (place.isOpen()) look(place, "same handle");
    Workplace other(place.io());
    look(other, "other handle");
}

Outcome Trial::afterHealing(Workplace& place, bool acknowledged, const std::string& where) {
    if (!place.isOpen() && acknowledged) place.open(); // closed by itself
    if (!place.isOpen() && !statement_.makesFile()) place.open();
    if (!place.isOpen()) { // the creation failed
        try {
            Workplace(place.io()).open();
            judge_.fault(where, "not created, but there");
        } catch (const jet::Error& error) {
            if (error.number() != jet::Err::FileNotFound && error.number() != jet::Err::NotADatabase) throw;
        }
        return judge_.absent(where);
    }
    const Outcome same = judge_.seenBy(place.database(), where + ", same handle");
    Workplace other(place.io());
    other.open();
    const Outcome fresh = judge_.inFile(other, where + ", fresh handle");
    if (same != fresh) judge_.fault(where, "the handle sees another state than the file has");
    if (acknowledged && fresh != Outcome::New) judge_.fault(where, "acknowledged, but not there");
    if (!acknowledged && fresh == Outcome::New && !statement_.silent)
        judge_.fault(where, "refused, but there");
    return fresh;
}

// The same handle runs the same statement again, and that lasts through a power failure.
void Trial::runAgain(Workplace& place, const std::string& where) {
    const std::string again = where + ", run again";
    if (statement_.kind == Statement::Kind::Replaces) place.close();
    statement_.run(place);
    if (!place.isOpen()) place.open();
    if (judge_.seenBy(place.database(), again) != Outcome::New) judge_.fault(again, "not there");
    const Disk left = place.io()->afterCrash(MemoryIo::Survives::Synced);
    if (judge_.afterReopening(left, again + ", power lost") != Outcome::New)
        judge_.fault(again, "acknowledged, but not there after a power failure");
}

} // namespace proof
