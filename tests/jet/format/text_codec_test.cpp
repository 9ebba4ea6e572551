// Texts between UTF-8 and their stored forms.
#include "jet/format/row_codec.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace jet;
using namespace std::string_literals;

std::string decoded(const Bytes& stored) {
    std::string utf8 = "before";
    decodeText(kJet4, 1254, stored, utf8);
    return utf8;
}

Bytes encoded(std::string_view utf8, bool compress = true) {
    Bytes stored;
    encodeText(utf8, compress, stored);
    return stored;
}

struct Case {
    std::string utf8;
    Bytes stored;
};

TEST(TextCodec, StoresAsTheOriginalEngineDoes) {
    const std::vector<Case> cases = {
        {"", {}},
        {"a", {0x61, 0}}, // one or two characters stay plain
        {"ab", {0x61, 0, 0x62, 0}},
        {"abc", {0xFF, 0xFE, 0x61, 0x62, 0x63}},
        {"Kadın",
         {0xFF, 0xFE, 0x4B, 0x61, 0x64, 0x00, 0x31, 0x01, 0x00, 0x6E}}, // as long as plain: compressed
        {"ığ", {0x31, 1, 0x1F, 1}},
        {"ığş", {0x31, 1, 0x1F, 1, 0x5F, 1}}, // compressed would be longer
        {"üzüm", {0xFF, 0xFE, 0xFC, 0x7A, 0xFC, 0x6D}},
        {"abcĀ", {0x61, 0, 0x62, 0, 0x63, 0, 0, 1}}, // a unit with low byte 00 stands against compression
    };
    for (const Case& c : cases) {
        EXPECT_EQ(encoded(c.utf8), c.stored) << c.utf8;
        EXPECT_EQ(decoded(c.stored), c.utf8);
    }
    EXPECT_EQ(encoded("abc", false), (Bytes{0x61, 0, 0x62, 0, 0x63, 0}));
}

TEST(TextCodec, TextsOfMoreThan1024CharactersStayPlain) {
    EXPECT_EQ(encoded(std::string(1024, 'x')).size(), 1026u);
    EXPECT_EQ(encoded(std::string(1025, 'x')).size(), 2050u);
}

TEST(TextCodec, LeadingByteOrderMarkIsNotTakenForCompression) {
    for (const bool compress : {true, false})
        for (const std::string text : {"\uFEFF", "\uFEFFx", "\uFEFFKadın"})
            EXPECT_EQ(decoded(encoded(text, compress)), text);
    EXPECT_EQ(decoded(encoded("\uFEFF\uFEFFaĀ")), "aĀ"); // no stored form could hold the mark
}

TEST(TextCodec, SurrogatesSurviveTheRoundTrip) {
    const std::vector<std::u16string> texts = {
        {0xD83D, 0xDE00},      {0xD83D}, {0xDE00}, {u'a', 0xDE00, 0xD83D}, {0xD83D, 0xD83D, 0xDE00},
        {0xD83D, u'x', 0xDE00}};
    for (const auto& units : texts) {
        std::string utf8;
        appendUtf8(units, utf8);
        EXPECT_EQ(utf16FromUtf8(utf8), units);
        EXPECT_EQ(utf16Length(utf8), units.size());
        EXPECT_EQ(decoded(encoded(utf8)), utf8);
    }
}

TEST(TextCodec, WrongUtf8ReadsAsReplacementCharacters) {
    for (const std::string& wrong :
         {"\x80"s, "\xC3"s, "\xC0\xAF"s, "\xE0\x80\x80"s, "\xF8"s, "\xF4\x90\x80\x80"s, "a\xE2\x82"s})
        EXPECT_NE(utf16FromUtf8(wrong).find(u'\xFFFD'), std::u16string::npos);
}

TEST(TextCodec, RandomUnitsRoundTrip) {
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::u16string units(random() % 40, u' ');
        for (char16_t& unit : units) {
            constexpr char16_t limits[] = {0x80, 0x100, 0x180, 0xFFFF};
            unit = static_cast<char16_t>(1 + random() % limits[random() % 4]);
        }
        if (!units.empty() && units[0] == 0xFEFF) continue;
        std::string utf8;
        appendUtf8(units, utf8);
        ASSERT_EQ(decoded(encoded(utf8, round % 2)), utf8);
        ASSERT_EQ(utf16FromUtf8(utf8), units);
    }
}

TEST(TextCodec, AnyBytesDecodeToSomeText) {
    std::mt19937 random(11);
    for (int round = 0; round < 3000; ++round) {
        Bytes bytes(random() % 30);
        for (uint8_t& byte : bytes)
            byte = static_cast<uint8_t>(random() % (round % 3 ? 3 : 256));
        if (round % 2 && bytes.size() > 1) bytes[0] = 0xFF, bytes[1] = 0xFE;
        const std::string utf8 = decoded(bytes);
        EXPECT_LE(utf8.size(), 3 * bytes.size());
    }
}

TEST(TextCodec, Jet3TextsAreInTheFilesCodePage) {
    const Bytes letters = {0xD0, 0xDD, 0xDE, 0xF0, 0xFD, 0xFE, 0xC7, 0x80, 0x41};
    std::string utf8;
    decodeText(kJet3, 1254, letters, utf8);
    EXPECT_EQ(utf8, "ĞİŞğışÇ€A");
    decodeText(kJet3, 1252, letters, utf8);
    EXPECT_EQ(utf8, "ÐÝÞðýþÇ€A");
}

} // namespace
