// jet/index/sort_weights.h — what one UTF-16 unit contributes to a text key: the tables behind sort_key.cpp.
// Pure data. Characters from kWeightTableEnd on, and the gaps inside, are unknown: no key can be made of
// them.
#pragma once

#include "jet/value.h"

#include <array>
#include <cstdint>
#include <span>

namespace jet::sort_weights {

enum class Kind : uint8_t {
    Unknown,   // not measured
    Ignored,   // no part in a key
    Weighted,  // `primary`: one or two inline bytes; `second`: diacritic byte, kNoDiacritic when plain
    Mark,      // `second` is added to the diacritic byte before it
    Special,   // no weight; `second`: its code in the special section
    Expansion, // weighs as several letters: see expansion()
};

inline constexpr uint8_t kNoDiacritic = 0x02;
inline constexpr char16_t kWeightTableEnd = 0x2C00;

struct Weight {
    uint16_t primary = 0; // first inline byte in the high half; low half 00: there is no second one
    uint8_t second = 0;
    Kind kind = Kind::Unknown;
};

using Table = std::array<Weight, kWeightTableEnd>;

// REQUIRES: knowsSortOrder(order).
const Table& table(SortOrder order);

struct Sequence {
    uint8_t count;
    std::array<uint8_t, 4> bytes;
    std::span<const uint8_t> span() const { return {bytes.data(), count}; }
};

struct Expansion {
    char16_t unit;
    Sequence general, turkish; // inline bytes in either order
    Sequence diacritics;       // one byte, or one for each letter
};

// REQUIRES: table(order)[unit].kind == Kind::Expansion.
const Expansion& expansion(char16_t unit);

} // namespace jet::sort_weights
