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

// Page 0 of a new Jet 4 database, as Access 2000-2003 writes it. creationDate must be set.
void initialiseHeader(std::span<uint8_t> page0, const DatabaseHeader& header);

// Rewrites the 40 password bytes only. Err::InvalidArgument past 20 UTF-16 units. Empty = none.
void writePassword(std::span<uint8_t> page0, std::string_view password);

// nullptr when the key is 0.
std::unique_ptr<PageCodec> makePageCodec(uint32_t encodingKey);

} // namespace jet
