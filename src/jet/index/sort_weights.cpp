// jet/index/sort_weights.cpp — unfolds the weight runs into one table per sort order, at compile time.
#include "jet/index/sort_weights.h"

#include <algorithm>

namespace jet::sort_weights {
namespace {

constexpr Kind W = Kind::Weighted, M = Kind::Mark, S = Kind::Special; // as the runs are written

struct Run {
    char16_t first;
    uint8_t count, step;
    Kind kind;
    uint16_t primary;
    int16_t primaryStep;
    uint8_t second;
    int8_t secondStep;
};

struct Range {
    char16_t first, last; // both included
};

struct TurkishLetter {
    char16_t unit;
    uint16_t primary;
};

#include "jet/index/sort_weights.inc"

constexpr Table generalTable() {
    Table table{};
    for (const Run& run : kRuns)
        for (int i = 0; i < run.count; ++i)
            table[run.first + i * run.step] = {static_cast<uint16_t>(run.primary + i * run.primaryStep),
                                               static_cast<uint8_t>(run.second + i * run.secondStep),
                                               run.kind};
    for (const Range& range : kIgnored)
        for (int unit = range.first; unit <= range.last; ++unit)
            table[unit] = {0, 0, Kind::Ignored};
    for (const Expansion& expansion : kExpansions)
        table[expansion.unit] = {0, 0, Kind::Expansion};
    return table;
}

constexpr Table turkishTable(Table table) {
    for (const TurkishLetter& letter : kTurkishLetters)
        table[letter.unit] = {letter.primary, kNoDiacritic, Kind::Weighted};
    return table;
}

constexpr Table kGeneral = generalTable();
constexpr Table kTurkish = turkishTable(kGeneral);

// Comparing primaries as numbers is comparing their bytes only while no one-byte weight begins a two-byte one
// and every weight is above 01, the end of the inline bytes.
constexpr bool primariesCompareAsNumbers(const Table& table) {
    std::array<int, 256> lengths{};
    for (const Weight& weight : table) {
        if (weight.kind != Kind::Weighted) continue;
        const int length = (weight.primary & 0xFF) == 0 ? 1 : 2;
        int& seen = lengths[weight.primary >> 8];
        if (weight.primary < 0x0200 || (seen != 0 && seen != length)) return false;
        seen = length;
    }
    return true;
}
static_assert(primariesCompareAsNumbers(kGeneral) && primariesCompareAsNumbers(kTurkish));

} // namespace

const Table& table(SortOrder order) { return order == kTurkishSort ? kTurkish : kGeneral; }

const Expansion& expansion(char16_t unit) {
    return *std::lower_bound(std::begin(kExpansions), std::end(kExpansions), unit,
                             [](const Expansion& e, char16_t u) { return e.unit < u; });
}

} // namespace jet::sort_weights
