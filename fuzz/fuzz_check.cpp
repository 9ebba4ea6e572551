// fuzz/fuzz_check — a hostile file under the file's own auditor, which throws nothing once the file is open.
#include "hostile_file.h"
#include "jet/check/check.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const fuzz::TimeBound bound;
    jet::OpenOptions options = fuzz::openOptions(fuzz::putInMemory(fuzz::split({data, size})));
    options.readOnly = true;
    std::unique_ptr<jet::Database> database;
    if (!fuzz::refusable([&] { database = jet::Database::open(fuzz::kPath, options); })) return 0;
    const jet::CheckReport report = jet::checkDatabase(*database);
    fuzz::require(report.faults.size() <= jet::CheckOptions{}.maxFaults, "faults kept are bounded");
    fuzz::require(report.faultCount >= report.faults.size(), "every fault kept is counted");
    return 0;
}
