// jet/format/code_page.h: both sets are Latin-1 with another row at 80..9F; 1254 changes six letters above
// it.
#include "jet/format/code_page.h"

namespace jet {

namespace {

constexpr uint16_t kTurkish = 1254;

// 80..9F of 1252; the five bytes without a character read as control characters, as Windows does.
constexpr char16_t kHighRow[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char16_t turkishLetter(uint8_t byte) {
    switch (byte) {
    case 0x8E: return 0x8E; // not in 1254
    case 0x9E: return 0x9E;
    case 0xD0: return u'Ğ';
    case 0xDD: return u'İ';
    case 0xDE: return u'Ş';
    case 0xF0: return u'ğ';
    case 0xFD: return u'ı';
    case 0xFE: return u'ş';
    default: return 0;
    }
}

} // namespace

char16_t unitFromCodePage(uint16_t codePage, uint8_t byte) {
    if (byte < 0x80) return byte;
    if (codePage == kTurkish)
        if (const char16_t letter = turkishLetter(byte)) return letter;
    return byte < 0xA0 ? kHighRow[byte - 0x80] : byte;
}

} // namespace jet
