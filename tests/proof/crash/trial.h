// trial.h — one statement, failed at every one of its operations in every way.
#pragma once

#include "faults.h"
#include "judge.h"

namespace proof {

struct Effort {
    size_t seeds = 8;       // ways a power failure may have taken unsynced sectors
    bool everyFault = true; // each operation in all ways; else in one of each family, in turn
    size_t hotJournals = 4; // of each statement: recovered from with a failure at each operation
};

class Trial {
  public:
    // `disk`: as it is before the statement.
    Trial(const Statement& statement, std::shared_ptr<jet::MemoryIo> disk, const Effort& effort,
          Judge& judge);

    // Runs it all and returns the disk after the statement.
    std::shared_ptr<jet::MemoryIo> run();

  private:
    using Disk = std::shared_ptr<jet::MemoryIo>;
    Disk freshDisk() const { return disk_->afterCrash(jet::MemoryIo::Survives::Everything); }
    // Opens what the statement needs; the handle has committed something small before, so that a journal of
    // an earlier commit may be there.
    void start(Workplace& place) const;
    void learn(); // operations and states

    // trial_crash.cpp: the process dies, the power goes
    void crashes();
    void crashBefore(jet::MemoryIo& disk, const jet::MemoryIo::Step* step, size_t n, bool acknowledged);
    void crashed(const Disk& left, const std::string& where, bool acknowledged);
    void othersGoOn();
    void otherGoesOn(size_t n);

    // trial_errors.cpp: the disk refuses
    void errors();
    void refused(Fault fault, size_t n);
    void refused(Fault fault, size_t n, size_t cut, const std::string& where);
    void whileFailing(Workplace& place, Fault fault, const std::string& where);
    Outcome afterHealing(Workplace& place, bool acknowledged, const std::string& where);
    void runAgain(Workplace& place, const std::string& where);
    void learnPart(size_t finished);

    // trial_recovery.cpp: failures while a dead writer's journal is rolled back
    void recoveries();
    void recoveryCrashes(const Disk& hot, const std::string& where);
    void recoveryErrors(const Disk& hot, size_t operations, const std::string& where);

    std::string at(size_t n, const char* what) const;

    const Statement& statement_;
    Disk disk_, after_;
    const Effort& effort_;
    Judge& judge_;
    std::vector<Operation> operations_;
    size_t reads_ = 0;
};

} // namespace proof
