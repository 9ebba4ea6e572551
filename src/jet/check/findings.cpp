// jet/check/findings.h
#include "jet/check/findings.h"

#include <algorithm>
#include <utility>

namespace jet {

void Findings::add(const std::string& table, uint32_t page, std::string text) {
    ++report.faultCount;
    if (report.faults.size() < options_.maxFaults) report.faults.push_back({table, page, std::move(text)});
}

void Findings::add(const std::string& table, uint32_t page, const Error& error) {
    add(table, error.page() != 0 ? error.page() : page, error.message());
}

void Findings::step() {
    ++done_;
    if (options_.progress && !options_.progress(std::min(done_, report.pages), report.pages))
        throw CheckStopped{};
}

} // namespace jet
