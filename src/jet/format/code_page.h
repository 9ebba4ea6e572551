// jet/format/code_page.h — the two single-byte character sets of Jet 3 texts: Windows-1252 and Windows-1254
// (Turkish).
#pragma once

#include <cstdint>

namespace jet {

// The UTF-16 unit of one byte. A code page we do not know reads as Windows-1252.
char16_t unitFromCodePage(uint16_t codePage, uint8_t byte);

} // namespace jet
