// tests/jet/index/hex.h — bytes as readable text, so that a failed comparison shows both keys.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace orvan_test {

inline std::string hex(std::span<const uint8_t> bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const uint8_t byte : bytes) {
        if (!text.empty()) text += ' ';
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

} // namespace orvan_test
