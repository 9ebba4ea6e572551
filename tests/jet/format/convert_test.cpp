// What becomes of a value that is put into a field of another type, and of one that is too wide.
#include "jet/error.h"
#include "jet/format/row_codec.h"

#include <gtest/gtest.h>

namespace {

using namespace jet;

FieldDef field(Type type, uint16_t size = 0) {
    FieldDef f;
    f.name = "Ogr_Adi";
    f.type = type;
    f.size = size;
    return f;
}

Date day(int year, int month, int d, int hour = 0, int minute = 0, int second = 0) {
    return Date::fromParts({year, month, d, hour, minute, second});
}

struct Good {
    Type type;
    Value from, to;
};

TEST(Convert, ValuesBecomeTheFieldsType) {
    const std::vector<Good> cases = {
        {Type::Boolean, 1, true},
        {Type::Boolean, 0.0, false},
        {Type::Boolean, "-1", true},
        {Type::Boolean, "Hayır", false},
        {Type::Boolean, "EVET", true},
        {Type::Byte, 255, 255},
        {Type::Byte, true, 255},
        {Type::Byte, "12", 12},
        {Type::Integer, true, -1},
        {Type::Integer, 2.5, 2}, // half to even
        {Type::Integer, "3,5", 4},
        {Type::Long, "1.234.567", 1234567},
        {Type::Long, " -7 ", -7},
        {Type::Long, "1e3", 1000},
        {Type::Long, Currency{25000}, 2},
        {Type::Currency, "1.234,56", Currency{12345600}},
        {Type::Currency, "1,234.56", Currency{12345600}},
        {Type::Currency, "0,00005", Currency{0}},
        {Type::Currency, "0,00015", Currency{2}},
        {Type::Currency, "-922337203685477.5808", Currency{INT64_MIN}},
        {Type::Currency, 2000000000, Currency{20000000000000}},
        {Type::Double, "3.25", 3.25},
        {Type::Double, "3,25", 3.25},
        {Type::Double, day(1900, 1, 1), 2.0},
        {Type::Single, 0.5, 0.5f},
        {Type::Date, 39706, Date{39706}},
        {Type::Date, "2008-09-15", day(2008, 9, 15)},
        {Type::Date, "2008-09-15 13:05:07", day(2008, 9, 15, 13, 5, 7)},
        {Type::Date, "15.09.2008", day(2008, 9, 15)},
        {Type::Date, "5.9.2008 08:30", day(2008, 9, 5, 8, 30)},
        {Type::Text, 12, "12"},
        {Type::Text, 2.5, "2.5"},
        {Type::Memo, true, "-1"},
        {Type::Text, Value(), Value()},
    };
    for (const Good& c : cases)
        EXPECT_EQ(convertTo(field(c.type), c.from), c.to) << c.from.toText() << " as type " << int(c.type);
}

TEST(Convert, ValuesThatCannotAreRefused) {
    const std::vector<std::pair<Type, Value>> cases = {
        {Type::Byte, 300},
        {Type::Byte, -1},
        {Type::Integer, 32768},
        {Type::Long, 2147483648.0},
        {Type::Long, "abc"},
        {Type::Long, ""},
        {Type::Long, "1.2.3"},
        {Type::Long, "12,34,5"},
        {Type::Double, "1,2x"},
        {Type::Double, Bytes{1}},
        {Type::Currency, 1e15},
        {Type::Currency, "922337203685477.5808"},
        {Type::Single, 1e300},
        {Type::Date, "31.02.2008"},
        {Type::Date, "15.09.08"},
        {Type::Date, "2008-13-01"},
        {Type::Date, "15.09.2008 24:00"},
        {Type::Date, 3000000},
        {Type::Boolean, "belki"},
        {Type::Guid, "1234"},
        {Type::Binary, "metin"},
        {Type::Text, Bytes{1}},
    };
    for (const auto& [type, value] : cases) {
        try {
            convertTo(field(type), value);
            ADD_FAILURE() << value.toText() << " was taken as type " << int(type);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), Err::Conversion);
            EXPECT_NE(error.message().find("'Ogr_Adi' alanına"), std::string::npos) << error.message();
        }
    }
}

TEST(Convert, GuidAndNumericReadTheirOwnTexts) {
    const std::string guid = "{00112233-4455-6677-8899-AABBCCDDEEFF}";
    EXPECT_EQ(convertTo(field(Type::Guid), guid).toText(), guid);
    FieldDef numeric = field(Type::Numeric);
    numeric.precision = 18;
    numeric.scale = 3;
    for (const char* text : {"-123456789012345.678", "0.001", "0.000", "999999999999999.999"})
        EXPECT_EQ(convertTo(numeric, text).toText(), text);
    EXPECT_EQ(convertTo(numeric, "9,9996").toText(), "10.000");
    EXPECT_EQ(convertTo(numeric, 1.5).toText(), "1.500");
    EXPECT_THROW(convertTo(numeric, "1234567890123456"), Error);
}

TEST(EncodeField, WidthCountsCharactersAndTheTextNamesIt) {
    StoredField out;
    const FieldDef narrow = field(Type::Text, 3);
    encodeField(kJet4, narrow, "ğüş", out);
    EXPECT_FALSE(out.null);
    try {
        encodeField(kJet4, narrow, "ğüşi", out);
        FAIL() << "too long a text was taken";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), Err::FieldTooLong);
        EXPECT_EQ(error.message(), "'Ogr_Adi' alanına en çok 3 karakter girilebilir.");
    }
    EXPECT_THROW(encodeField(kJet4, field(Type::Binary, 2), Bytes(3), out), Error);
    encodeField(kJet4, field(Type::Boolean), Value(), out); // yes/no is never null
    EXPECT_FALSE(out.null);
    EXPECT_FALSE(out.boolean);
}

} // namespace
