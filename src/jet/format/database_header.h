// jet/format/database_header.h — page 0: version, code page, sort order, password, page encoding key.
#pragma once

#include "jet/format/layout.h"
#include "jet/pages/page_file.h"
#include "jet/value.h"

#include <memory>
#include <string>

namespace jet {

struct DatabaseHeader {
    const Layout* layout = nullptr;
    uint16_t codePage = 1254;
    SortOrder sortOrder = kTurkishSort;
    uint32_t encodingKey = 0; // 0 = pages in clear
    double creationDate = 0;  // day count; part of the password mask
    std::string password;     // UTF-8; empty = none
};

// Size of a page, from the first bytes of the file. Err::NotADatabase (too short, or no Jet file),
// Err::NewerFormat (ACE and later). Fits PageFile::open's probe.
size_t probePageSize(std::span<const uint8_t> firstBytes);

// REQUIRES: bytes of page 0, probePageSize() accepted them.
DatabaseHeader readHeader(std::span<const uint8_t> page0);

// What of a Jet 4 header can be believed, for repair: readHeader() takes the bytes as they stand.
struct HeaderTrust {
    bool format = false;   // signature, version and the constants that every file has
    bool settings = false; // code page, encoding key, sort order
    bool password = false; // what readHeader() gives, "none" included
};
// REQUIRES: bytes of a whole page 0, of whatever file.
HeaderTrust judgeHeader(std::span<const uint8_t> page0);

// The signature of Access 2007 and later, whose pages look like those of Jet 4.
bool hasNewerSignature(std::span<const uint8_t> page0);

// Page 0 of a new Jet 4 database, as Access 2000-2003 writes it. creationDate must be set.
void initialiseHeader(std::span<uint8_t> page0, const DatabaseHeader& header);

// The marks of those who had the file open, as in a new file. REQUIRES: page 0 of a Jet 4 file.
void clearUserMarks(std::span<uint8_t> page0);

// Rewrites the 40 password bytes only. Err::InvalidArgument past 20 UTF-16 units. Empty = none.
void writePassword(std::span<uint8_t> page0, std::string_view password);

// nullptr when the key is 0.
std::unique_ptr<PageCodec> makePageCodec(uint32_t encodingKey);

} // namespace jet
