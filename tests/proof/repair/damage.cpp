#include "proof/repair/damage.h"

#include <algorithm>
#include <cstddef>

namespace proof_repair {

namespace {

constexpr size_t kPage = 4096;
constexpr size_t kPageFlips = 16;

using Dice = std::mt19937;

size_t pick(Dice& dice, size_t below) { return dice() % below; }

void harm(std::vector<uint8_t>& bytes, size_t page, PageHarm how, size_t flips, Dice& dice) {
    uint8_t* const at = bytes.data() + page * kPage;
    switch (how) {
    case PageHarm::Flips:
        for (size_t i = 0; i < flips; ++i)
            at[pick(dice, kPage)] ^= static_cast<uint8_t>(1 + pick(dice, 255));
        break;
    case PageHarm::Zeroes: std::fill_n(at, kPage, uint8_t{0}); break;
    case PageHarm::Noise: std::generate_n(at, kPage, [&] { return static_cast<uint8_t>(dice()); }); break;
    case PageHarm::TypeByte: at[0] = static_cast<uint8_t>(at[0] + 1 + pick(dice, 255)); break;
    }
}

void exchange(std::vector<uint8_t>& bytes, size_t page, size_t other) {
    if (page == other) return;
    const auto at = [&](size_t number) {
        return bytes.begin() + static_cast<std::ptrdiff_t>(number * kPage);
    };
    std::swap_ranges(at(page), at(page + 1), at(other));
}

void findHarmed(const std::vector<uint8_t>& sound, Damage& damage) {
    for (size_t at = 0; at < sound.size(); at += kPage) {
        const size_t end = std::min(at + kPage, sound.size());
        if (end > damage.bytes.size() || !std::equal(sound.begin() + static_cast<std::ptrdiff_t>(at),
                                                     sound.begin() + static_cast<std::ptrdiff_t>(end),
                                                     damage.bytes.begin() + static_cast<std::ptrdiff_t>(at)))
            damage.pages.insert(static_cast<uint32_t>(at / kPage));
    }
}

} // namespace

Damage harmPage(const std::vector<uint8_t>& sound, uint32_t page, PageHarm how, unsigned seed) {
    static const char* const names[] = {"flips", "zeroes", "noise", "type byte"};
    Damage damage{sound, {}, std::string(names[static_cast<int>(how)]) + " on page " + std::to_string(page)};
    Dice dice(seed);
    harm(damage.bytes, page, how, kPageFlips, dice);
    findHarmed(sound, damage);
    return damage;
}

Damage harmAtRandom(const std::vector<uint8_t>& sound, size_t pages, size_t mostFlips, unsigned seed) {
    Damage damage{sound, {}, "seed " + std::to_string(seed)};
    Dice dice(seed);
    const size_t count = sound.size() / kPage;
    for (size_t i = 0; i < pages; ++i) {
        const size_t page = pick(dice, count), kind = pick(dice, 20);
        if (kind < 13)
            harm(damage.bytes, page, PageHarm::Flips, 1 + pick(dice, mostFlips), dice);
        else if (kind < 16)
            harm(damage.bytes, page, PageHarm::Zeroes, 0, dice);
        else if (kind < 19)
            harm(damage.bytes, page, PageHarm::Noise, 0, dice);
        else
            exchange(damage.bytes, page, pick(dice, count));
    }
    findHarmed(sound, damage);
    return damage;
}

Damage cutAt(const std::vector<uint8_t>& sound, size_t bytes) {
    Damage damage{{sound.begin(), sound.begin() + static_cast<std::ptrdiff_t>(bytes)},
                  {},
                  "cut at byte " + std::to_string(bytes)};
    findHarmed(sound, damage);
    return damage;
}

Damage appendNoise(const std::vector<uint8_t>& sound, size_t bytes, unsigned seed) {
    Damage damage{sound, {}, std::to_string(bytes) + " bytes of noise appended"};
    Dice dice(seed);
    for (size_t i = 0; i < bytes; ++i)
        damage.bytes.push_back(static_cast<uint8_t>(dice()));
    return damage;
}

} // namespace proof_repair
