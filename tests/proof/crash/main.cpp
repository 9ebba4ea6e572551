// proof_crash — every statement that changes a database is stopped before, inside and after each of its
// operations on the disk, in every way a disk, a process or the power can fail; what is found afterwards must
// be the state before or the state after, whole. Exit status 1 when a single outcome is anything else.
//   proof_crash [--statement N] [--seeds N] [--short]
#include "peer/peer.h"
#include "trial.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

struct Options {
    int statement = -1; // all
    bool isShort = false;
    proof::Effort effort;
    proof::Scale scale;
};

bool parse(int count, char** words, Options& options) {
    size_t seeds = 0;
    for (int i = 1; i < count; ++i) {
        const bool more = i + 1 < count;
        if (std::strcmp(words[i], "--short") == 0)
            options.isShort = true;
        else if (std::strcmp(words[i], "--statement") == 0 && more)
            options.statement = std::atoi(words[++i]);
        else if (std::strcmp(words[i], "--seeds") == 0 && more)
            seeds = static_cast<size_t>(std::atoi(words[++i]));
        else
            return false;
    }
    if (options.isShort) {
        options.effort = {.seeds = 1, .everyFault = false, .hotJournals = 1};
        options.scale = {.rows = 60, .batchRows = 120, .copyBytes = 300 << 10};
    }
    if (seeds != 0) options.effort.seeds = seeds;
    return true;
}

void add(proof::Figures& sum, const proof::Figures& one) {
    sum.operations += one.operations;
    sum.failures += one.failures;
    sum.old += one.old;
    sum.fresh += one.fresh;
    sum.parts += one.parts;
    sum.files += one.files;
    sum.recoveries += one.recoveries;
    sum.faults += one.faults;
}

void print(size_t number, const std::string& name, const proof::Figures& f, double seconds) {
    std::printf("%3zu %-46s %6zu %8zu %8zu %8zu %6zu %8zu %6zu %6zu %6.1f\n", number, name.c_str(),
                f.operations, f.failures, f.old, f.fresh, f.parts, f.recoveries, f.files, f.faults, seconds);
    std::fflush(stdout);
}

} // namespace

int main(int count, char** words) {
    Options options;
    if (!parse(count, words, options)) {
        std::fprintf(stderr, "proof_crash [--statement N] [--seeds N] [--short]\n");
        return 2;
    }
    const bool peer = peer::haveMdbTools();
    if (!peer) std::printf("mdb-export is not here: files are not read by another program\n");
    const auto now = [] { return std::chrono::steady_clock::now(); };
    const auto begin = now();
    const auto since = [&](auto start) { return std::chrono::duration<double>(now() - start).count(); };

    proof::Workload workload = proof::makeWorkload(options.scale);
    proof::Judge judge(!peer ? 0 : options.isShort ? 6 : 1);
    proof::Figures sum;
    std::printf(
        "disk of %zu pages; each operation fails with: process died (before, inside), power lost (synced, "
        "%zu dice), %zu kinds of errors\n",
        static_cast<size_t>(workload.disk->sizeOf(proof::kDatabase) / 4096), options.effort.seeds,
        std::size(proof::kAllFaults));
    std::printf("%3s %-46s %6s %8s %8s %8s %6s %8s %6s %6s %6s\n", "", "statement", "oper.", "failures",
                "old", "new", "parts", "recov.", "files", "faults", "s");
    for (size_t i = 0; i < workload.statements.size(); ++i) {
        const proof::Statement& statement = workload.statements[i];
        const auto start = now();
        auto disk = workload.disk;
        if (statement.makesFile()) {
            disk = std::make_shared<jet::MemoryIo>();
            if (statement.compacts()) disk->put(proof::kSource, workload.disk->contents(proof::kDatabase));
        }
        if (options.statement >= 0 && options.statement != static_cast<int>(i)) {
            if (statement.makesFile()) continue;
            proof::Workplace place(workload.disk, statement.cachePages);
            if (statement.kind == proof::Statement::Kind::Changes) place.open();
            statement.run(place);
            continue;
        }
        const auto after = proof::Trial(statement, disk, options.effort, judge).run();
        if (!statement.makesFile()) workload.disk = after;
        add(sum, judge.figures());
        print(i, statement.name, judge.figures(), since(start));
    }
    print(workload.statements.size(), "together", sum, since(begin));
    return sum.faults == 0 ? 0 : 1;
}
