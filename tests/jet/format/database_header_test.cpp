// Page 0: what a new file gets, passwords, and which files are turned away with which words.
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/database_header.h"

#include <gtest/gtest.h>

namespace {

using namespace jet;

Bytes newHeader(const std::string& password = {}) {
    Bytes page(4096);
    DatabaseHeader header;
    header.creationDate = 40179.25;
    header.password = password;
    initialiseHeader(page, header);
    return page;
}

TEST(DatabaseHeader, NewFileReadsBackWithItsPassword) {
    for (const std::string password : {"", "Şifre12", "12345678901234567890"}) {
        const Bytes page = newHeader(password);
        EXPECT_EQ(probePageSize(page), 4096u);
        const DatabaseHeader header = readHeader(page);
        EXPECT_EQ(header.layout, &kJet4);
        EXPECT_EQ(header.codePage, 1254);
        EXPECT_EQ(header.sortOrder, kTurkishSort);
        EXPECT_EQ(header.encodingKey, 0u);
        EXPECT_EQ(header.creationDate, 40179.25);
        EXPECT_EQ(header.password, password);
    }
}

TEST(DatabaseHeader, PasswordChangesItsFortyBytesOnly) {
    const Bytes before = newHeader("eski");
    Bytes page = before;
    writePassword(page, "yeni parola");
    EXPECT_EQ(readHeader(page).password, "yeni parola");
    for (size_t i = 0; i < page.size(); ++i) {
        const bool ofPassword = i >= 0x42 && i < 0x6A;
        EXPECT_TRUE(ofPassword || page[i] == before[i]) << i;
    }
    writePassword(page, "");
    EXPECT_EQ(page, newHeader());
    EXPECT_THROW(writePassword(page, "123456789012345678901"), Error);
}

TEST(DatabaseHeader, PageCodecUndoesItself) {
    EXPECT_EQ(makePageCodec(0), nullptr);
    const auto codec = makePageCodec(0x12345678);
    Bytes clear(4096, 0x41), page = clear;
    codec->encode(7, page);
    EXPECT_NE(page, clear);
    Bytes other = clear;
    codec->encode(8, other);
    EXPECT_NE(page, other) << "every page has its own key";
    codec->decode(7, page);
    EXPECT_EQ(page, clear);
}

Bytes startingWith(std::string_view text, size_t size) {
    Bytes bytes(size);
    std::copy(text.begin(), text.end(), bytes.begin() + 4);
    return bytes;
}

TEST(DatabaseHeader, OtherFilesAreTurnedAway) {
    Bytes newer = newHeader();
    newer[0x14] = 2;
    Bytes cut = newHeader();
    cut.resize(3000);
    struct Case {
        Bytes bytes;
        Err expected;
    };
    const std::vector<Case> cases = {
        {{}, Err::NotADatabase},
        {{0, 1, 0, 0}, Err::NotADatabase},
        {Bytes(4096, 'x'), Err::NotADatabase},
        {Bytes(4096, 0), Err::NotADatabase},
        {startingWith("Standard ACE DB", 4096), Err::NewerFormat},
        {newer, Err::NewerFormat},
        {cut, Err::Corrupt},
    };
    for (const Case& c : cases) {
        try {
            probePageSize(c.bytes);
            ADD_FAILURE() << "accepted " << c.bytes.size() << " bytes";
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), c.expected) << error.what();
        }
    }
    EXPECT_EQ(probePageSize(startingWith("Standard Jet DB", 2048)), 2048u); // Jet 3
}

} // namespace
