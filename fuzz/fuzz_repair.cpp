// fuzz/fuzz_repair — a hostile file is repaired, compacted and converted: what comes out is a sound database,
// however little of it was saved, a refused attempt leaves nothing, and the hostile file stays as it was.
#include "hostile_file.h"
#include "jet/check/check.h"
#include "jet/copy/compact.h"
#include "jet/copy/convert.h"
#include "jet/copy/repair.h"

#include <cstdio>

namespace {

constexpr const char* kOut = "/out.mdb";

template <class Make> void make(const fuzz::HostileFile& parts, Make makeOut) {
    const auto io = fuzz::putInMemory(parts);
    const bool made = fuzz::refusable([&] { makeOut(io); });
    fuzz::require(io->contents(fuzz::kPath) == parts.file, "the hostile file is as it was");
    const size_t size = io->contents(kOut).size();
    fuzz::require(made == (size > 0), "a refused attempt leaves nothing");
    if (!made) return;
    fuzz::require(size <= 64 * parts.file.size() + (1u << 20),
                  "the new file holds what the old one held, a shared value several times");
    const auto database = jet::Database::open(kOut, fuzz::openOptions(io));
    const jet::CheckReport report = jet::checkDatabase(*database);
    for (const jet::Fault& fault : report.faults)
        std::fprintf(stderr, "%s, %u: %s\n", fault.table.c_str(), fault.page, fault.text.c_str());
    fuzz::require(report.faultCount == 0, "the new file is sound");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const fuzz::TimeBound bound;
    fuzz::HostileFile parts = fuzz::split({data, size});
    parts.journal.clear(); // would be rolled back first: fuzz_open does that
    make(parts, [](const auto& io) {
        jet::RepairOptions options;
        options.io = io;
        options.password = fuzz::kPassword;
        jet::repairDatabase(fuzz::kPath, kOut, options);
    });
    for (const auto copy : {jet::compactDatabase, jet::convertDatabase})
        make(parts, [copy](const auto& io) {
            jet::CopyOptions options;
            options.io = io;
            options.password = fuzz::kPassword;
            options.pages.lockTimeoutMs = 100;
            copy(fuzz::kPath, kOut, options);
        });
    return 0;
}
