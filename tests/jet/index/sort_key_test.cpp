// Text keys against keys that Jet stored, comparison against the keys, upper and lower case.
#include "hex.h"
#include "jet/error.h"
#include "jet/index/sort_key.h"
#include "support/shared_samples.h"
#include "text_key_examples.h"

#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <sstream>

using namespace jet;
using namespace orvan_test;

namespace {

Bytes keyOf(std::string_view text, SortOrder order) {
    Bytes key;
    appendTextKey(text, order, key);
    return key;
}

int sign(int value) { return value < 0 ? -1 : value > 0; }
int compareKeys(const Bytes& a, const Bytes& b) { return a < b ? -1 : b < a; }

std::string utf8Of(uint32_t code) {
    std::string text;
    if (code < 0x80) return {static_cast<char>(code)};
    if (code < 0x800) return {static_cast<char>(0xC0 | code >> 6), static_cast<char>(0x80 | (code & 63))};
    return {static_cast<char>(0xE0 | code >> 12), static_cast<char>(0x80 | (code >> 6 & 63)),
            static_cast<char>(0x80 | (code & 63))};
}

} // namespace

TEST(TextKey, MatchesTheKeysThatJetMakes) {
    for (const auto& example : kTextKeyExamples) {
        EXPECT_EQ(hex(keyOf(example.text, kGeneralSort)), example.general) << example.text;
        EXPECT_EQ(hex(keyOf(example.text, kTurkishSort)), example.turkish ? example.turkish : example.general)
            << example.text;
    }
    for (const auto& stored : kStoredTurkishKeys)
        EXPECT_EQ(hex(keyOf(stored.text, kTurkishSort)), stored.key);
}

TEST(TextKey, RulesThatSingleCharactersDoNotShow) {
    struct Case {
        const char* what;
        std::u16string text;
        const char* key; // under either order
    };
    const Case cases[] = {
        {"trailing spaces go, also before ignored characters", u"a\u20BA  ", "7f 4a 01 00"},
        {"a space before an ignored character stays", u"a \u20BA", "7f 4a 07 01 00"},
        {"spaces only", u"   ", "7f 01 00"},
        {"a mark adds to the diacritic before it", u"\u00E2\u0301", "7f 4a 01 1e 00"},
        {"a mark alone", u"\u0301", "7f 01 0c 00"},
        {"two diacritics of one ligature", u"\u01FD", "7f 4a 51 01 0e 0e 00"},
        {"a ligature counts once for specials behind it", u"\u00E6-", "7f 4a 51 01 01 01 01 80 0b 06 82 00"},
        {"diacritic and special", u"\u00E2-b", "7f 4a 4c 01 12 01 01 01 80 0b 06 82 00"},
    };
    for (const Case& c : cases)
        for (const SortOrder order : {kGeneralSort, kTurkishSort}) {
            Bytes key;
            appendTextKey(c.text, order, key);
            EXPECT_EQ(hex(key), c.key) << c.what;
        }
}

TEST(TextKey, OnlyTheFirst255UnitsCount) {
    const std::string longest(255, 'a');
    EXPECT_EQ(keyOf(longest + "b", kTurkishSort), keyOf(longest, kTurkishSort));
    EXPECT_EQ(keyOf(longest + "\xE6\xBC\xA2", kTurkishSort),
              keyOf(longest, kTurkishSort)); // not even looked at
    EXPECT_NE(keyOf(longest, kTurkishSort), keyOf(longest.substr(1), kTurkishSort));
    EXPECT_EQ(keyOf(std::string(254, 'a') + "  b", kTurkishSort), keyOf(std::string(254, 'a'), kTurkishSort));
}

TEST(TextKey, CharacterWithoutKnownWeightIsRefusedByName) {
    const struct {
        const char* text;
        const char* name;
    } cases[] = {
        {"Ad\u4E2D", "U+4E2D"}, {"\U0001F600", "U+1F600"}, {"a\xED\xA0\x80", "U+D800"}, {"\xFF", "U+FFFD"}};
    for (const auto& c : cases) {
        Bytes key{1, 2, 3};
        EXPECT_FALSE(canMakeTextKey(c.text, kTurkishSort));
        try {
            appendTextKey(c.text, kTurkishSort, key);
            FAIL() << c.name;
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), Err::InvalidArgument);
            EXPECT_NE(error.message().find(c.name), std::string::npos) << error.message();
        }
        EXPECT_EQ(key, (Bytes{1, 2, 3}));
    }
    EXPECT_TRUE(canMakeTextKey("Öğrenci № 5 – “Ağrı”", kTurkishSort));
}

// Every measured character under both orders, and the text before and after it.
TEST(TextKey, MatchesTheMeasuredTableOfCharacters) {
    ORVAN_NEED_SAMPLES();
    std::ifstream file(sharedFolder() / "jet" / "sort-weights.tsv");
    std::string line;
    ASSERT_TRUE(std::getline(file, line));
    size_t rows = 0;
    while (std::getline(file, line)) {
        std::vector<std::string> cells;
        std::stringstream in(line);
        for (std::string cell; std::getline(in, cell, '\t');)
            cells.push_back(cell);
        ASSERT_GE(cells.size(), 12u) << line;
        const auto code = static_cast<uint32_t>(std::stoul(cells[0].substr(2), nullptr, 16));
        const auto plain = [](const Bytes& key) {
            std::string text = hex(key);
            text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
            return text;
        };
        ASSERT_EQ(plain(keyOf(utf8Of(code), kGeneralSort)), code == ' ' ? "7f0100" : cells[7]) << cells[0];
        ASSERT_EQ(plain(keyOf(utf8Of(code), kTurkishSort)), code == ' ' ? "7f0100" : cells[11]) << cells[0];
        ++rows;
    }
    EXPECT_GT(rows, 600u);
}

TEST(CompareText, AgreesWithTheKeys) {
    // Short texts of few characters: equal weights, diacritics, marks, specials, ligatures and spaces meet
    // often.
    const std::u32string alphabet = U"aAbIıİiçÇcğGâ' -.1æÆsßS\u0301\u20BA_ö";
    std::mt19937 random(7);
    const auto text = [&] {
        std::string made;
        for (size_t n = random() % 6; n > 0; --n)
            made += utf8Of(alphabet[random() % alphabet.size()]);
        return made;
    };
    for (int i = 0; i < 60'000; ++i) {
        const std::string a = text(), b = text();
        for (const SortOrder order : {kGeneralSort, kTurkishSort})
            ASSERT_EQ(sign(compareText(a, b, order)), compareKeys(keyOf(a, order), keyOf(b, order)))
                << '[' << a << "] [" << b << ']';
    }
}

TEST(CompareText, TurkishAlphabetInOrder) {
    const char* words[] = {"",      "0", "9",   "a",     "b",      "c",   "ç",      "d",
                           "e",     "f", "Gül", "ğ",     "hız",    "hiz", "ILGIN",  "ilgin",
                           "J",     "k", "o",   "ONeil", "O'Neil", "ö",   "Öğret",  "Sukru",
                           "ŞÜKRÜ", "T", "ulu", "üç",    "v",      "z",   "\u4E2D", "\u4E2E"};
    for (size_t i = 0; i < std::size(words); ++i)
        for (size_t j = 0; j < std::size(words); ++j)
            EXPECT_EQ(sign(compareText(words[i], words[j], kTurkishSort)),
                      sign(static_cast<int>(i) - static_cast<int>(j)))
                << words[i] << " / " << words[j];
    EXPECT_EQ(compareText("ALİ ", "ali", kTurkishSort), 0);
    EXPECT_NE(compareText("ALI", "ali", kTurkishSort), 0);
    EXPECT_EQ(compareText("ALI", "ali", kGeneralSort), 0);
}

TEST(CompareText, TakesAnyBytesAndWholeMemos) {
    EXPECT_NO_THROW(compareText("\xFF\xC3", "\xE2\x82", kTurkishSort));
    EXPECT_LT(compareText("a", "\xFF", SortOrder{0x0411, 0}), 0);
    const std::string memo(400, 'x');
    EXPECT_LT(compareText(memo + "a", memo + "b", kTurkishSort), 0);
}

TEST(LetterCase, TurkishAndGeneral) {
    const struct {
        const char *lower, *upper;
        SortOrder order;
    } pairs[] = {{"ıilâçğöşü ÿž", "IİLÂÇĞÖŞÜ ŸŽ", kTurkishSort},
                 {"iğdır-9 æøåñ", "İĞDIR-9 ÆØÅÑ", kTurkishSort},
                 {"title ăąćčďđēęěłńňőřśšţťůűźż", "TITLE ĂĄĆČĎĐĒĘĚŁŃŇŐŘŚŠŢŤŮŰŹŻ", kGeneralSort},
                 {"αβγώ жёя ạẹ", "ΑΒΓΏ ЖЁЯ ẠẸ", kTurkishSort}};
    for (const auto& pair : pairs) {
        EXPECT_EQ(upperText(pair.lower, pair.order), pair.upper);
        EXPECT_EQ(lowerText(pair.upper, pair.order), pair.lower);
        EXPECT_EQ(upperText(pair.upper, pair.order), pair.upper);
        EXPECT_EQ(lowerText(pair.lower, pair.order), pair.lower);
    }
    for (const char* same : {"ß÷×ĸ \u4E2D \U0001F600", "\xFF\xC3(\xE2\x82"}) {
        EXPECT_EQ(upperText(same, kTurkishSort), same);
        EXPECT_EQ(lowerText(same, kTurkishSort), same);
    }
    EXPECT_EQ(upperText("ıi", kGeneralSort), "ıI");
    EXPECT_EQ(lowerText("İI", kGeneralSort), "İi");
}

// Case never changes a key, but for pairs to which Jet itself gives different weights.
TEST(LetterCase, KeepsTheKey) {
    const std::set<uint32_t> different = {0x130, 0x131, 0x132, 0x133, 0x462, 0x463, 0x4B6, 0x4B7};
    for (uint32_t code = 1; code < 0x2C00; ++code) {
        const std::string text = utf8Of(code);
        if (different.count(code) != 0 || !canMakeTextKey(text, kTurkishSort)) continue;
        for (const SortOrder order : {kGeneralSort, kTurkishSort}) {
            EXPECT_EQ(hex(keyOf(upperText(text, order), order)), hex(keyOf(text, order))) << std::hex << code;
            EXPECT_EQ(hex(keyOf(lowerText(text, order), order)), hex(keyOf(text, order))) << std::hex << code;
        }
    }
}
