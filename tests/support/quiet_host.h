// tests/support/quiet_host.h — a start without windows: every step is allowed to go on.
#pragma once

#include "core/startup.h"

namespace orvan_test {

class QuietHost : public orvan::StartHost {
  public:
    void stepBegins(orvan::StartStep, const QString&) override {}
    bool claimFolder() override { return true; }
    void makeSplash() override {}
    void setRegionalFormats() override {}
    void showSplash() override {}
    void showMainWindow() override {}
    void maintain() override {}
};

} // namespace orvan_test
