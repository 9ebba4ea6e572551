// jet/format/bytes.h — little-endian numbers in a page's bytes. No checks: the caller knows that the offset
// fits.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>
#include <vector>

namespace jet {

static_assert(std::endian::native == std::endian::little, "the file's numbers are copied as they stand");

template <class T> T loadLe(const uint8_t* at) {
    T value;
    std::memcpy(&value, at, sizeof value);
    return value;
}
template <class T> void storeLe(uint8_t* at, T value) { std::memcpy(at, &value, sizeof value); }

inline uint16_t get16(std::span<const uint8_t> b, size_t at) { return loadLe<uint16_t>(b.data() + at); }
inline uint32_t get32(std::span<const uint8_t> b, size_t at) { return loadLe<uint32_t>(b.data() + at); }
inline uint32_t get24(std::span<const uint8_t> b, size_t at) {
    return static_cast<uint32_t>(b[at] | b[at + 1] << 8 | b[at + 2] << 16);
}
inline void put16(std::span<uint8_t> b, size_t at, uint16_t value) { storeLe(b.data() + at, value); }
inline void put32(std::span<uint8_t> b, size_t at, uint32_t value) { storeLe(b.data() + at, value); }

// Appends UTF-16 units as the file stores them.
inline void appendUnits(std::u16string_view units, std::vector<uint8_t>& bytes) {
    const auto* begin = reinterpret_cast<const uint8_t*>(units.data());
    bytes.insert(bytes.end(), begin, begin + 2 * units.size());
}

} // namespace jet
