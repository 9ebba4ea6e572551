// jet/format/usage_map_bits.h — sets of bits in a span of bytes, lowest bit of the first byte first.
#pragma once

#include "jet/format/bytes.h"

#include <bit>
#include <span>

namespace jet::map_bits {

inline constexpr uint64_t kNone = UINT64_MAX;

inline void set(std::span<uint8_t> bits, uint64_t bit) {
    bits[bit / 8] |= static_cast<uint8_t>(1u << bit % 8);
}
inline void reset(std::span<uint8_t> bits, uint64_t bit) {
    bits[bit / 8] &= static_cast<uint8_t>(~(1u << bit % 8));
}

// Lowest set bit >= from, or kNone.
inline uint64_t findSet(std::span<const uint8_t> bits, uint64_t from) {
    size_t byte = from / 8;
    if (byte >= bits.size()) return kNone;
    if (const uint8_t rest = bits[byte] >> from % 8)
        return from + static_cast<uint64_t>(std::countr_zero(rest));
    for (++byte; byte + 8 <= bits.size(); byte += 8)
        if (const auto eight = loadLe<uint64_t>(bits.data() + byte))
            return byte * 8 + static_cast<uint64_t>(std::countr_zero(eight));
    for (; byte < bits.size(); ++byte)
        if (bits[byte]) return byte * 8 + static_cast<uint64_t>(std::countr_zero(bits[byte]));
    return kNone;
}

// Highest set bit < end, or kNone.
inline uint64_t findLastSet(std::span<const uint8_t> bits, uint64_t end) {
    end = end < bits.size() * 8 ? end : bits.size() * 8;
    while (end > 0) {
        const uint64_t byte = (end - 1) / 8;
        const auto masked = static_cast<uint8_t>(bits[byte] & (0xFF >> (7 - (end - 1) % 8)));
        if (masked) return byte * 8 + static_cast<uint64_t>(std::bit_width(masked)) - 1;
        end = byte * 8;
    }
    return kNone;
}

} // namespace jet::map_bits
