// Keys of every type: known bytes, order of the values in both directions, and which indexes have no keys.
#include "hex.h"
#include "jet/error.h"
#include "jet/format/layout.h"
#include "jet/index/key.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

using namespace jet;
using namespace orvan_test;

namespace {

FieldDef fieldOf(Type type) {
    FieldDef field;
    field.name = "Alan";
    field.type = type;
    field.sortOrder = kTurkishSort;
    return field;
}

Bytes part(Type type, const Value& value, bool descending = false) {
    Bytes key;
    appendKeyPart(fieldOf(type), descending, value, key);
    return key;
}

Guid guid(uint8_t first) {
    Guid made;
    for (size_t i = 0; i < 16; ++i)
        made.bytes[i] = static_cast<uint8_t>(first + i);
    return made;
}

} // namespace

TEST(IndexKey, BytesOfEveryType) {
    const struct {
        Type type;
        Value value;
        const char *ascending, *descending;
    } cases[] = {
        {Type::Long, Value(), "00", "ff"},
        {Type::Boolean, true, "7f 00", "80 ff"},
        {Type::Boolean, false, "7f ff", "80 00"},
        {Type::Boolean, Value(), "7f ff", "80 00"},
        {Type::Byte, 200, "7f c8", "80 37"},
        {Type::Integer, 1, "7f 80 01", "80 7f fe"},
        {Type::Integer, -1, "7f 7f ff", "80 80 00"},
        {Type::Long, 0x010203, "7f 80 01 02 03", "80 7f fe fd fc"},
        {Type::Long, std::numeric_limits<int32_t>::min(), "7f 00 00 00 00", "80 ff ff ff ff"},
        {Type::Currency, Currency{10000}, "7f 80 00 00 00 00 00 27 10", "80 7f ff ff ff ff ff d8 ef"},
        {Type::Single, 1.0f, "7f bf 80 00 00", "80 40 7f ff ff"},
        {Type::Double, -1.0, "7f 40 0f ff ff ff ff ff ff", "80 bf f0 00 00 00 00 00 00"},
        {Type::Date, Date{1.0}, "7f bf f0 00 00 00 00 00 00", "80 40 0f ff ff ff ff ff ff"},
        {Type::Binary, Bytes{}, "7f", "80"},
        {Type::Binary, Bytes{1, 2, 3}, "7f 01 02 03 00 00 00 00 00 03", "80 fe fd fc ff ff ff ff ff fc"},
        {Type::Binary, Bytes{1, 2, 3, 4, 5, 6, 7, 8}, "7f 01 02 03 04 05 06 07 08 08",
         "80 fe fd fc fb fa f9 f8 f7 f7"},
        {Type::Binary, Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9},
         "7f 01 02 03 04 05 06 07 08 09 09 00 00 00 00 00 00 00 01",
         "80 fe fd fc fb fa f9 f8 f7 f6 f6 ff ff ff ff ff ff ff fe"},
        {Type::Guid, guid(0x10), "7f 13 12 11 10 15 14 17 16 09 18 19 1a 1b 1c 1d 1e 1f 08",
         "80 ec ed ee ef ea eb e8 e9 f6 e7 e6 e5 e4 e3 e2 e1 e0 f7"},
        {Type::Text, "a", "7f 4a 01 00", "80 b5 fe ff 00"},
        {Type::Text, "", "7f 01 00", "80 fe ff 00"},
        {Type::Memo, "ığ", "7f 58 06 56 02 01 00", "80 a7 f9 a9 fd fe ff 00"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(hex(part(c.type, c.value)), c.ascending)
            << static_cast<int>(c.type) << ' ' << c.value.toText();
        EXPECT_EQ(hex(part(c.type, c.value, true)), c.descending)
            << static_cast<int>(c.type) << ' ' << c.value.toText();
    }
}

// Each list is in rising order. With a field behind it, no key may reach into the next part.
TEST(IndexKey, SortsAsTheValuesDo) {
    const double inf = std::numeric_limits<double>::infinity();
    const int64_t most = std::numeric_limits<int64_t>::max();
    const struct {
        Type type;
        std::vector<Value> rising;
    } lists[] = {
        {Type::Boolean, {true, false}},
        {Type::Byte, {Value(), 0, 1, 127, 128, 255}},
        {Type::Integer, {Value(), -32768, -256, -1, 0, 1, 255, 256, 32767}},
        {Type::Long, {Value(), std::numeric_limits<int32_t>::min(), -65536, -1, 0, 1, 65536, 2147483647}},
        {Type::Currency, {Value(), Currency{-most}, Currency{-1}, Currency{0}, Currency{1}, Currency{most}}},
        {Type::Single, {Value(), -3.4e38f, -1.5f, -1e-30f, 0.0f, 1e-30f, 1.5f, 3.4e38f}},
        {Type::Double, {Value(), -inf, -1e300, -2.0, -1.0, -1e-300, 0.0, 1e-300, 1.0, 2.0, 1e300, inf}},
        {Type::Date, {Value(), Date{-2.5}, Date{-1}, Date{0}, Date{0.5}, Date{39706}, Date{39706.25}}},
        {Type::Binary,
         {Value(), Bytes{0}, Bytes{0, 0}, Bytes{0, 1}, Bytes{1}, Bytes{1, 2, 3, 4, 5, 6, 7, 8},
          Bytes{1, 2, 3, 4, 5, 6, 7, 8, 0}, Bytes{1, 2, 3, 4, 5, 6, 7, 8, 9}, Bytes{1, 2, 3, 4, 5, 6, 7, 9},
          Bytes{255}}},
        {Type::Guid, {Value(), guid(1), guid(2), guid(200)}},
        {Type::Text, {Value(), "", "-", "1", "a", "a-", "â", "a b", "ab", "c", "ç", "d", "ı", "i"}},
    };
    for (const auto& list : lists)
        for (const bool descending : {false, true}) {
            std::vector<Bytes> keys;
            for (const Value& value : list.rising)
                for (const int behind : {-5, 5}) {
                    keys.push_back(part(list.type, value, descending));
                    appendKeyPart(fieldOf(Type::Long), false, behind, keys.back());
                }
            if (descending) { // the values fall, the field behind still rises
                std::reverse(keys.begin(), keys.end());
                for (size_t i = 0; i + 1 < keys.size(); i += 2)
                    std::swap(keys[i], keys[i + 1]);
            }
            for (size_t i = 1; i < keys.size(); ++i)
                EXPECT_LT(keys[i - 1], keys[i])
                    << static_cast<int>(list.type) << (descending ? " falling " : " rising ") << i;
        }
}

TEST(IndexKey, WholeRowTellsWhetherEveryPartIsNull) {
    TableDef def;
    def.fields = {fieldOf(Type::Long), fieldOf(Type::Text)};
    IndexDef index;
    index.fields = {{1, true}, {0, false}};
    Bytes key{9, 9};
    bool allNull = false;
    makeKey(def, index, std::vector<Value>{"b", 7}, key, allNull);
    EXPECT_EQ(hex(key), "80 b3 fe ff 00 7f 80 00 00 07");
    EXPECT_FALSE(allNull);
    makeKey(def, index, std::vector<Value>{Value(), 7}, key, allNull);
    EXPECT_FALSE(allNull);
    makeKey(def, index, std::vector<Value>{Value(), Value()}, key, allNull);
    EXPECT_EQ(hex(key), "ff 00");
    EXPECT_TRUE(allNull);
}

TEST(IndexKey, RefusedTextNamesTheField) {
    try {
        part(Type::Text, "\u4E2D");
        FAIL();
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), Err::InvalidArgument);
        EXPECT_NE(error.message().find("“Alan”"), std::string::npos) << error.message();
    }
}

TEST(IndexKey, ObstaclesAreNamed) {
    const auto obstacle = [](Type type, SortOrder order, const Layout& layout = kJet4) {
        TableDef def;
        def.fields = {fieldOf(Type::Long), fieldOf(type)};
        def.fields[1].sortOrder = order;
        IndexDef index;
        index.fields = {{0, false}, {1, false}};
        return keyObstacle(layout, def, index);
    };
    for (const Type type :
         {Type::Boolean, Type::Byte, Type::Integer, Type::Long, Type::Currency, Type::Single, Type::Double,
          Type::Date, Type::Binary, Type::Guid, Type::Text, Type::Memo})
        EXPECT_EQ(obstacle(type, kGeneralSort), "") << static_cast<int>(type);
    EXPECT_NE(obstacle(Type::Numeric, kTurkishSort), "");
    EXPECT_NE(obstacle(Type::Ole, kTurkishSort), "");
    EXPECT_NE(obstacle(static_cast<Type>(0x11), kTurkishSort), "");
    EXPECT_NE(obstacle(Type::Text, SortOrder{0x0409, 1}), "");
    EXPECT_NE(obstacle(Type::Memo, SortOrder{0x0407, 0}), "");
    EXPECT_EQ(obstacle(Type::Long, SortOrder{0x0407, 0}), ""); // numbers do not care
    EXPECT_NE(obstacle(Type::Text, kGeneralSort, kJet3), "");
    EXPECT_EQ(obstacle(Type::Date, kGeneralSort, kJet3), "");
}
