// Rows: what goes in comes out, old rows read under newer definitions, damaged rows never lead outside.
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/row_codec.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace jet;

// Adds a column the way a table does it.
void add(TableDef& def, const std::string& name, Type type, uint16_t size = 0) {
    FieldDef field;
    field.name = name;
    field.type = type;
    field.size = size;
    field.columnNumber = def.maxColumns++;
    field.fixedLength = type != Type::Text && type != Type::Binary && type != Type::Memo && type != Type::Ole;
    if (field.fixedLength) {
        for (const FieldDef& other : def.fields)
            if (other.fixedLength && other.type != Type::Boolean)
                field.fixedOffset = std::max<uint16_t>(field.fixedOffset, other.fixedOffset + 17);
    } else {
        field.variableIndex = def.variableColumns++;
    }
    def.fields.push_back(field);
}

TableDef everyType() {
    TableDef def;
    add(def, "Id", Type::Long);
    add(def, "Evet", Type::Boolean);
    add(def, "Bayt", Type::Byte);
    add(def, "Kısa", Type::Integer);
    add(def, "Ücret", Type::Currency);
    add(def, "Tek", Type::Single);
    add(def, "Çift", Type::Double);
    add(def, "Gün", Type::Date);
    add(def, "Ad", Type::Text, 20);
    add(def, "Veri", Type::Binary, 30);
    add(def, "Kimlik", Type::Guid);
    add(def, "Ondalık", Type::Numeric);
    def.fields.back().precision = 18;
    def.fields.back().scale = 2;
    return def;
}

Bytes encode(const TableDef& def, const std::vector<Value>& values) {
    std::vector<StoredField> fields(def.fields.size());
    for (size_t i = 0; i < values.size(); ++i)
        encodeField(kJet4, def.fields[i], values[i], fields[i]);
    Bytes row;
    encodeRow(kJet4, def, fields, row);
    return row;
}

std::vector<Value> decode(const TableDef& def, std::span<const uint8_t> row) {
    RowView view;
    view.attach(kJet4, def, row);
    std::vector<Value> values;
    for (size_t i = 0; i < view.fieldCount(); ++i)
        values.push_back(view.value(i));
    return values;
}

const std::vector<Value>& sampleValues() {
    static const std::vector<Value> values = {
        -5,   true,          200,     -32768,           Currency{-123456}, 0.5f,
        2.25, Date{39706.5}, "Kadın", Bytes{0, 1, 255}, Guid{{1, 2, 3}},   Numeric{true, {0, 0, 1, 5}, 2}};
    return values;
}

TEST(RowCodec, EveryTypeRoundTripsWithAndWithoutNulls) {
    const TableDef def = everyType();
    EXPECT_EQ(decode(def, encode(def, sampleValues())), sampleValues());
    for (size_t i = 0; i < def.fields.size(); ++i) {
        std::vector<Value> values = sampleValues();
        values[i] = Value();
        const auto back = decode(def, encode(def, values));
        if (def.fields[i].type == Type::Boolean) values[i] = false;
        EXPECT_EQ(back, values) << def.fields[i].name;
    }
}

TEST(RowCodec, OldRowsReadNullInFieldsAddedLater) {
    TableDef def;
    add(def, "Id", Type::Long);
    const Bytes onlyFixed = encode(def, {7});
    add(def, "Ad", Type::Text, 10); // the first variable field
    EXPECT_EQ(decode(def, onlyFixed), (std::vector<Value>{7, Value()}));
    const Bytes both = encode(def, {8, "ali"});
    for (int i = 0; i < 8; ++i)
        add(def, "Ek" + std::to_string(i), i % 2 ? Type::Boolean : Type::Double);
    add(def, "Son", Type::Text, 10);
    const auto values = decode(def, both);
    EXPECT_EQ(values[0], Value(8));
    EXPECT_EQ(values[1], Value("ali"));
    EXPECT_EQ(values[2], Value());
    EXPECT_EQ(values[3], Value(false));
    EXPECT_EQ(values.back(), Value());
}

TEST(RowCodec, ShortestRowsCanStillBecomePointers) {
    TableDef def;
    add(def, "Evet", Type::Boolean);
    const Bytes row = encode(def, {true});
    EXPECT_GE(row.size(), 4u);
    EXPECT_EQ(decode(def, row), std::vector<Value>{true});
}

TEST(RowCodec, FixedTextIsPaddedToItsWidth) {
    TableDef def;
    add(def, "Kod", Type::Text, 4);
    def.fields[0].fixedLength = true;
    def.variableColumns = 0;
    EXPECT_EQ(decode(def, encode(def, {"ş"})), std::vector<Value>{"ş   "});
}

TEST(RowCodec, RowLimitIsAnError) {
    TableDef def;
    for (int i = 0; i < 8; ++i)
        add(def, "T" + std::to_string(i), Type::Text, 255);
    const std::string wide(255, 'x');
    std::vector<Value> values(8, Value());
    for (int i = 0; i < 7; ++i)
        values[static_cast<size_t>(i)] = wide + "";
    EXPECT_NO_THROW(encode(def, values));
    for (FieldDef& field : def.fields)
        field.compressed = false;
    values[7] = wide;
    try {
        encode(def, values);
        FAIL() << "a row longer than a page was taken";
    } catch (const Error& error) {
        EXPECT_EQ(error.number(), Err::RecordTooLarge);
    }
}

// Whatever the bytes are: attach() refuses them, or every getter stays inside them (the sanitizer watches).
void readEverything(const Layout& layout, const TableDef& def, const Bytes& bytes) {
    const Bytes exact(bytes); // so that one byte too far is seen
    RowView view;
    try {
        view.attach(layout, def, exact);
        for (size_t i = 0; i < view.fieldCount(); ++i)
            view.value(i);
    } catch (const Error& error) {
        ASSERT_EQ(error.number(), Err::Corrupt);
    }
}

TEST(RowCodec, DamagedRowsAreRefusedOrReadInside) {
    const TableDef def = everyType();
    const Bytes good = encode(def, sampleValues());
    for (const Layout* layout : {&kJet4, &kJet3}) {
        for (size_t length = 0; length <= good.size(); ++length)
            readEverything(*layout, def, Bytes(good.begin(), good.begin() + static_cast<ptrdiff_t>(length)));
        for (size_t at = 0; at < good.size(); ++at)
            for (const int value : {0, 1, 2, 0x7F, 0x80, 0xFF}) {
                Bytes bad = good;
                bad[at] = static_cast<uint8_t>(value);
                readEverything(*layout, def, bad);
            }
        std::mt19937 random(3);
        for (int round = 0; round < 5000; ++round) {
            Bytes bad(random() % 600);
            for (uint8_t& byte : bad)
                byte = static_cast<uint8_t>(random() % (round % 2 ? 16 : 256));
            if (!bad.empty()) bad[0] = static_cast<uint8_t>(def.maxColumns);
            readEverything(*layout, def, bad);
        }
    }
}

TEST(RowCodec, Jet3RowsLongerThan256BytesUseTheJumpTable) {
    TableDef def;
    add(def, "Id", Type::Long);
    for (int i = 0; i < 3; ++i)
        add(def, "T" + std::to_string(i), Type::Text, 255);
    const std::vector<std::string> texts = {std::string(200, 'a'), std::string(100, 'b'),
                                            std::string(230, 'c')};
    Bytes row = {4, 9, 0, 0, 0};
    std::vector<size_t> starts;
    for (const std::string& text : texts) {
        starts.push_back(row.size());
        row.insert(row.end(), text.begin(), text.end());
    }
    starts.push_back(row.size()); // 5, 205, 305, 535
    for (size_t i = starts.size(); i-- > 0;)
        row.push_back(static_cast<uint8_t>(starts[i] & 0xFF));
    row.insert(row.end(), {3, 2}); // from field 3 on 512 more, from field 2 on 256 more
    row.insert(row.end(), {3, 0x0F});
    RowView view;
    view.attach(kJet3, def, row);
    EXPECT_EQ(view.integer(0), 9);
    for (size_t i = 0; i < texts.size(); ++i)
        EXPECT_EQ(view.value(i + 1).toText(), texts[i]);
}

} // namespace
