// jet/index/letter_case.cpp — upper and lower case from own small rules, the same on every system and in
// every locale.
#include "jet/index/sort_key.h"

namespace jet {
namespace {

constexpr char32_t kCapitalDottedI = 0x130, kSmallDotlessI = 0x131;

// Letters in pairs, ASCII left out. step 1: capitals [first, last] stand `distance` before their small
// letters. step 2: capital and small letter alternate, `first` is a capital.
struct CaseRange {
    char32_t first, last; // both included
    int step;
    int distance;
};

constexpr CaseRange kCaseRanges[] = {
    {0x00C0, 0x00D6, 1, 32}, // Latin
    {0x00D8, 0x00DE, 1, 32}, {0x0100, 0x012F, 2, 1},  {0x0132, 0x0137, 2, 1},
    {0x0139, 0x0148, 2, 1},  {0x014A, 0x0177, 2, 1},  {0x0178, 0x0178, 1, -121}, // Y with diaeresis
    {0x0179, 0x017E, 2, 1},  {0x01CD, 0x01DC, 2, 1},  {0x01DE, 0x01EF, 2, 1},
    {0x01F8, 0x021F, 2, 1},  {0x0222, 0x0233, 2, 1},  {0x1E00, 0x1E95, 2, 1},
    {0x1EA0, 0x1EFF, 2, 1},  {0x0386, 0x0386, 1, 38}, // Greek
    {0x0388, 0x038A, 1, 37}, {0x038C, 0x038C, 1, 64}, {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32}, {0x03A3, 0x03AB, 1, 32}, {0x0400, 0x040F, 1, 80}, // Cyrillic
    {0x0410, 0x042F, 1, 32}, {0x0460, 0x0481, 2, 1},  {0x048A, 0x04BF, 2, 1},
};

char32_t smallLetter(char32_t code) {
    if (code < 0x80) return code >= U'A' && code <= U'Z' ? code + 32 : code;
    for (const CaseRange& range : kCaseRanges) {
        if (code < range.first || code > range.last) continue;
        if (range.step == 1) return code + static_cast<char32_t>(range.distance);
        return (code - range.first) % 2 == 0 ? code + 1 : code;
    }
    return code;
}

char32_t capitalLetter(char32_t code) {
    if (code < 0x80) return code >= U'a' && code <= U'z' ? code - 32 : code;
    for (const CaseRange& range : kCaseRanges) {
        const char32_t shift = range.step == 1 ? static_cast<char32_t>(range.distance) : 0;
        if (code < range.first + shift || code > range.last + shift) continue;
        if (range.step == 1) return code - shift;
        return (code - range.first) % 2 == 1 ? code - 1 : code;
    }
    return code;
}

char32_t toUpper(char32_t code, bool turkish) {
    if (code == U'i') return turkish ? kCapitalDottedI : U'I';
    if (code == kSmallDotlessI) return turkish ? U'I' : code;
    return capitalLetter(code);
}

char32_t toLower(char32_t code, bool turkish) {
    if (code == U'I') return turkish ? kSmallDotlessI : U'i';
    if (code == kCapitalDottedI) return turkish ? U'i' : code;
    return smallLetter(code);
}

void appendCode(char32_t code, std::string& out) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | code >> 6);
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | code >> 12);
        out += static_cast<char>(0x80 | (code >> 6 & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

// Every letter with two cases is a sequence of at most three bytes; all other bytes pass through untouched.
template <class Convert> std::string converted(std::string_view text, Convert convert) {
    std::string out;
    out.reserve(text.size() + 8);
    const auto bits = [&](size_t i) { return static_cast<char32_t>(static_cast<uint8_t>(text[i]) & 0x3F); };
    const auto continues = [&](size_t i) { return i < text.size() && (text[i] & 0xC0) == 0x80; };
    for (size_t i = 0; i < text.size();) {
        const auto lead = static_cast<uint8_t>(text[i]);
        if (lead < 0x80) {
            appendCode(convert(lead), out);
            i += 1;
        } else if (lead >= 0xC2 && lead < 0xE0 && continues(i + 1)) {
            appendCode(convert((lead & 0x1Fu) << 6 | bits(i + 1)), out);
            i += 2;
        } else if (lead > 0xE0 && lead < 0xF0 && continues(i + 1) && continues(i + 2)) {
            appendCode(convert((lead & 0x0Fu) << 12 | bits(i + 1) << 6 | bits(i + 2)), out);
            i += 3;
        } else {
            out += text[i++];
        }
    }
    return out;
}

} // namespace

std::string upperText(std::string_view utf8, SortOrder order) {
    const bool turkish = order.lcid == kTurkishSort.lcid;
    return converted(utf8, [turkish](char32_t code) { return toUpper(code, turkish); });
}

std::string lowerText(std::string_view utf8, SortOrder order) {
    const bool turkish = order.lcid == kTurkishSort.lcid;
    return converted(utf8, [turkish](char32_t code) { return toLower(code, turkish); });
}

} // namespace jet
