// jet/check/findings.h — collects what the check finds; knows nothing of files.
#pragma once

#include "jet/check/check.h"
#include "jet/error.h"

#include <string>

namespace jet {

// Thrown when the caller's progress function wants no more.
struct CheckStopped {};

class Findings {
  public:
    explicit Findings(const CheckOptions& options) : options_(options) {}

    void add(const std::string& table, uint32_t page, std::string text);
    void add(const std::string& table, uint32_t page, const Error& error); // the error's own page comes first

    // Runs a part of the check; an error of the engine becomes a finding. True when there was none.
    template <class F> bool guarded(const std::string& table, uint32_t page, F part) {
        try {
            part();
            return true;
        } catch (const Error& error) {
            add(table, page, error);
            return false;
        }
    }

    // One more page was gone through.
    void step();

    CheckReport report;

  private:
    const CheckOptions& options_;
    size_t done_ = 0;
};

} // namespace jet
