// figures.h.
#include "figures.h"

#include <algorithm>
#include <cstdio>

namespace proof {

namespace {

double ms(uint64_t micros) { return static_cast<double>(micros) / 1000.0; }

uint64_t sumOf(const Board& board, int workers, Tally what) {
    uint64_t sum = 0;
    for (int i = 1; i <= workers; ++i)
        sum += board.seats[static_cast<size_t>(i)].tallies[static_cast<size_t>(what)];
    return sum;
}

} // namespace

Progress printFigures(const Board& board, int workers, double seconds) {
    Progress progress{~uint64_t{0}, ~uint64_t{0}};
    uint64_t reads = 0, writes = 0;
    std::printf("process    reads  99.9 %% ms  longest ms    writes  99.9 %% ms  longest ms\n");
    for (int i = 1; i <= workers; ++i) {
        const auto& [read, write] = board.seats[static_cast<size_t>(i)].took;
        std::printf("%7d %8llu %10.1f %11.1f  %8llu %10.1f %11.1f\n", i,
                    static_cast<unsigned long long>(read.count()), ms(read.percentile(0.999)),
                    ms(read.longest()), static_cast<unsigned long long>(write.count()),
                    ms(write.percentile(0.999)), ms(write.longest()));
        reads += read.count();
        writes += write.count();
        progress.fewestReads = std::min(progress.fewestReads, read.count());
        progress.fewestWrites = std::min(progress.fewestWrites, write.count());
    }
    std::printf("calls: %llu reading (%.0f a second), %llu writing (%.0f a second)\n",
                static_cast<unsigned long long>(reads), static_cast<double>(reads) / seconds,
                static_cast<unsigned long long>(writes), static_cast<double>(writes) / seconds);
    static constexpr struct {
        Tally tally;
        const char* text;
    } kTallies[] = {
        {Tally::TornLooks, "sums and batches looked at for torn reads"},
        {Tally::StaleLooks, "acknowledged commits of others looked for"},
        {Tally::SeekLooks, "index searches and walks against a scan"},
        {Tally::Contents, "rows whose whole content was compared"},
        {Tally::Structure, "structure changes"},
        {Tally::Undone, "writes left without commit"},
        {Tally::Reopened, "reopened"},
        {Tally::Duplicate, "3022: another had the key"},
        {Tally::Changed, "3197: another had changed the record"},
        {Tally::Gone, "3021: another had deleted the record"},
        {Tally::RefusedAtOnce, "3260 at once: a reader wanted to write while a commit waited for it"},
        {Tally::Refused, "3260 after the whole lock timeout"},
    };
    for (const auto& [tally, text] : kTallies)
        std::printf("%10llu  %s\n", static_cast<unsigned long long>(sumOf(board, workers, tally)), text);
    return progress;
}

} // namespace proof
