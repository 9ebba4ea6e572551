// jet/pages/wait.h — a bounded wait for somebody else's lock: short sleeps that grow, up to a limit.
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
        io_.sleepMilliseconds(static_cast<int>(std::min<int64_t>(stepMs_, limitMs_ - passed)));
        stepMs_ = std::min(stepMs_ * 2, kLongestStepMs);
        return true;
    }

  private:
    static constexpr int kLongestStepMs = 32;
    Io& io_;
    int limitMs_;
    int stepMs_ = 1;
    uint64_t start_;
};

} // namespace jet
