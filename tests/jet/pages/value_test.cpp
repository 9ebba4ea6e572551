// Values: the text forms and roundings that other layers rely on, at their edges.
#include "jet/error.h"
#include "jet/value.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

using namespace jet;

namespace {

TEST(Value, DatesCountForwardAlsoBeforeTheFirstDay) {
    const struct {
        double days;
        const char* iso;
    } cases[] = {
        {0, "1899-12-30 00:00:00"},
        {-0.25, "1899-12-30 06:00:00"},
        {-1.25, "1899-12-29 06:00:00"},
        {39706, "2008-09-15 00:00:00"},
        {39706.999999, "2008-09-16 00:00:00"}, // rounded to the second, over midnight
        {-1.999999, "1899-12-30 00:00:00"},
        {36585, "2000-02-29 00:00:00"},
        {-657434, "0100-01-01 00:00:00"},
        {2958465.5, "9999-12-31 12:00:00"},
        {1e300, "9999-12-31 00:00:00"}, // damaged files hold such things
        {-1e300, "0100-01-01 00:00:00"},
        {std::nan(""), "1899-12-30 00:00:00"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(Date{each.days}.toIso(), each.iso) << each.days;
        const Date back = Date::fromParts(Date{each.days}.parts());
        EXPECT_EQ(back.toIso(), each.iso) << each.days;
    }
    EXPECT_EQ(Date::fromParts({2024, 14, 0, 25, -1, 61}).toIso(), "2025-02-01 01:00:01");
    EXPECT_EQ(Date::fromParts({1899, 12, 28, 18, 0, 0}).days, -2.75);
}

TEST(Value, MoneyIsExactAndRoundsHalfToEven) {
    const struct {
        double amount;
        const char* text;
    } cases[] = {{12.34, "12.3400"}, {-0.5, "-0.5000"},   {0.00025, "0.0002"},
                 {0, "0.0000"},      {0.00075, "0.0008"}, {-922337203685477.5, "-922337203685477.5000"}};
    for (const auto& each : cases)
        EXPECT_EQ(Currency::fromDouble(each.amount).toText(), each.text);
    EXPECT_EQ(Currency{std::numeric_limits<int64_t>::min()}.toText(), "-922337203685477.5808");
    EXPECT_THROW(Currency::fromDouble(1e15), Error);
    EXPECT_THROW(Currency::fromDouble(std::nan("")), Error);
}

TEST(Value, DecimalsOf96BitsAndAnyScale) {
    EXPECT_EQ((Numeric{true, {0, 0, 0, 5}, 3}.toText()), "-0.005");
    EXPECT_EQ((Numeric{false, {0, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF}, 0}.toText()),
              "79228162514264337593543950335");
    EXPECT_EQ((Numeric{false, {0, 0, 1, 0}, 2}.toText()), "42949672.96");
    EXPECT_EQ((Numeric{true, {}, 2}.toText()), "0.00");
}

TEST(Value, IdentifierIsWrittenInItsGroups) {
    Guid guid;
    for (size_t i = 0; i < 16; ++i)
        guid.bytes[i] = static_cast<uint8_t>(i * 0x11);
    EXPECT_EQ(guid.toText(), "{33221100-5544-7766-8899-AABBCCDDEEFF}");
}

TEST(Value, WholeNumbersRoundHalfToEven) {
    const struct {
        Value value;
        int64_t whole;
    } cases[] = {{Value(), 0},
                 {Value(true), -1},
                 {Value(2.5), 2},
                 {Value(3.5), 4},
                 {Value(-2.5), -2},
                 {Value(Currency{25000}), 2},
                 {Value(Currency{35000}), 4},
                 {Value(Currency{-25000}), -2},
                 {Value(Currency{-25001}), -3},
                 {Value(" +12 "), 12},
                 {Value("-1e3"), -1000},
                 {Value(Numeric{true, {0, 0, 0, 1500}, 2}), -15}};
    for (const auto& each : cases)
        EXPECT_EQ(each.value.toInt(), each.whole) << each.value.toText();
    for (const char* text : {"", " ", "abc", "1x", "nan", "inf", "+-1", "1e400"})
        EXPECT_THROW(Value(text).toDouble(), Error) << text;
    EXPECT_THROW(Value(1e19).toInt(), Error);
    EXPECT_THROW(Value(Bytes{1}).toInt(), Error);
}

TEST(Value, TextFormsDependOnNoLocale) {
    const std::pair<Value, const char*> cases[] = {{Value(), ""},
                                                   {Value(true), "-1"},
                                                   {Value(false), "0"},
                                                   {Value(0.1), "0.1"},
                                                   {Value(0.1f), "0.1"},
                                                   {Value(100000.0), "100000"},
                                                   {Value(1e20), "1e+20"},
                                                   {Value(-0.0), "0"},
                                                   {Value(Bytes{0, 0xAB}), "00AB"},
                                                   {Value(Date{1}), "1899-12-31 00:00:00"},
                                                   {Value(Currency{1}), "0.0001"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(value.toText(), text);
}

TEST(Error, TellsThePlaceInnermostFirst) {
    Error error(Err::Corrupt, "Kayıt bozuk.");
    EXPECT_STREQ(error.what(), "Kayıt bozuk.");
    error.onPage(7).inTable("OGRENCI").inTable("dış").inFile("a.mdb").inFile("b.mdb").onPage(9);
    EXPECT_STREQ(error.what(), "Kayıt bozuk. (dosya a.mdb, tablo OGRENCI, sayfa 7)");
    EXPECT_EQ(error.code(), 3049);
}

} // namespace
