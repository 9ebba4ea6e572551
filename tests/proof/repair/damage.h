// tests/proof/repair/damage.h — ways in which a file is harmed, each from its dice alone.
#pragma once

#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace proof_repair {

struct Damage {
    std::vector<uint8_t> bytes; // of the harmed file
    std::set<uint32_t> pages;   // whose bytes are not what they were, those cut off included
    std::string text;
};

enum class PageHarm { Flips, Zeroes, Noise, TypeByte };

Damage harmPage(const std::vector<uint8_t>& sound, uint32_t page, PageHarm how, unsigned seed);
// `pages` random pages, most of them with some flipped bytes, some zeroed, some noise, some exchanged.
Damage harmAtRandom(const std::vector<uint8_t>& sound, size_t pages, size_t mostFlips, unsigned seed);
Damage cutAt(const std::vector<uint8_t>& sound, size_t bytes);
Damage appendNoise(const std::vector<uint8_t>& sound, size_t bytes, unsigned seed);

} // namespace proof_repair
