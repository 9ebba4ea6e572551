// jet/pages/wait.h — a bounded wait for somebody else's lock: very short sleeps at first, for most waits are
// for one commit, then sleeps of one length, so that who waits long looks as often as who just came.
#pragma once

#include "jet/pages/io.h"

#include <algorithm>

namespace jet {

class Wait {
  public:
    Wait(Io& io, int limitMs) : io_(io), limitMs_(limitMs), start_(io.tickMilliseconds()) {}

    // Sleeps a little and returns true; false when the limit is reached.
    bool again() {
        const auto passed = static_cast<int64_t>(io_.tickMilliseconds() - start_);
        if (passed >= limitMs_) return false;
        if (looks_ < kBriskLooks)
            io_.sleepMicroseconds(kBriskStepUs * ++looks_);
        else
            io_.sleepMilliseconds(
                static_cast<int>(std::min<int64_t>(passed < kLongWaitMs ? 1 : 4, limitMs_ - passed)));
        return true;
    }

  private:
    static constexpr int kBriskLooks = 10, kBriskStepUs = 40; // the first two milliseconds
    static constexpr int64_t kLongWaitMs = 500;
    Io& io_;
    int limitMs_;
    int looks_ = 0;
    uint64_t start_;
};

} // namespace jet
