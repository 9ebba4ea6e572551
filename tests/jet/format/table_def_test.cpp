// Definitions made here: what is serialized is what is read, damaged images are refused, names compare as
// they should.
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/layout.h"
#include "jet/format/table_def.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace jet;

FieldDef field(const std::string& name, Type type, uint16_t number, uint16_t size = 0) {
    FieldDef f;
    f.name = name;
    f.type = type;
    f.size = size;
    f.columnNumber = f.ordinal = number;
    f.fixedLength = type != Type::Text && type != Type::Memo;
    f.sortOrder = kTurkishSort;
    return f;
}

TableDef sample() {
    TableDef def;
    def.rowCount = 12;
    def.lastAutoNumber = 40;
    def.fields = {field("Id", Type::Long, 0), field("Adı", Type::Text, 1, 50), field("Not", Type::Memo, 2)};
    def.fields[0].autoNumber = true;
    def.fields[2].variableIndex = 1;
    def.fields[2].ownedMapPage = 9;
    def.fields[2].freeMapPage = 9;
    def.fields[2].freeMapRow = 1;
    def.maxColumns = 3;
    def.variableColumns = 2;
    def.realIndexCount = 2;
    def.uniqueEntryCounts = {12, 5};
    IndexDef key, name;
    key.name = "PrimaryKey";
    key.fields = {{0, false}};
    key.primary = true;
    key.rootPage = 20;
    name.name = "Ad";
    name.fields = {{1, true}, {0, false}};
    name.ignoreNulls = true;
    name.number = name.realNumber = 1;
    name.rootPage = 21;
    def.indexes = {key, name};
    return def;
}

TEST(TableDef, SerializedIsWhatIsRead) {
    const Bytes image = serializeTableDef(kJet4, sample());
    EXPECT_EQ(get16(image, kJet4.tdefFree), 4096 - image.size());
    const TableDef def = parseTableDef(kJet4, 30, image);
    EXPECT_EQ(def.page, 30u);
    EXPECT_EQ(def.rowCount, 12u);
    EXPECT_EQ(def.lastAutoNumber, 40u);
    ASSERT_EQ(def.fields.size(), 3u);
    EXPECT_TRUE(def.fields[0].autoNumber && def.fields[0].fixedLength);
    EXPECT_EQ(def.fields[1].name, "Adı");
    EXPECT_EQ(def.fields[1].size, 50);
    EXPECT_EQ(def.fields[1].sortOrder, kTurkishSort);
    EXPECT_TRUE(def.fields[1].compressed);
    EXPECT_EQ(def.fields[2].freeMapRow, 1);
    const IndexDef* key = def.primaryKey();
    ASSERT_NE(key, nullptr);
    EXPECT_TRUE(key->unique && key->required) << "a primary key is both";
    const IndexDef* name = def.findIndex("ad");
    ASSERT_NE(name, nullptr);
    EXPECT_TRUE(name->ignoreNulls && !name->unique && name->fields[0].descending &&
                !name->fields[1].descending);
    EXPECT_EQ(serializeTableDef(kJet4, def), image);
}

TEST(TableDef, LongNamesAndUnnamedTreesAreRefused) {
    TableDef def = sample();
    def.fields[1].name = std::string(65, 'x');
    EXPECT_THROW(serializeTableDef(kJet4, def), Error);
    def = sample();
    def.indexes.pop_back();
    EXPECT_THROW(serializeTableDef(kJet4, def), Error);
}

TEST(TableDef, DamagedImagesAreCorruptOrReadable) {
    const Bytes good = serializeTableDef(kJet4, sample());
    const auto parse = [](const Bytes& image) {
        for (const Layout* layout : {&kJet4, &kJet3}) {
            try {
                parseTableDef(*layout, 30, image);
            } catch (const Error& error) {
                ASSERT_EQ(error.number(), Err::Corrupt);
            }
        }
    };
    for (size_t length = 0; length < good.size(); ++length)
        parse(Bytes(good.begin(), good.begin() + static_cast<ptrdiff_t>(length)));
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        Bytes bad = good;
        for (int i = 0; i < 3; ++i)
            bad[random() % bad.size()] = static_cast<uint8_t>(random() % 4 ? random() : 0xFF);
        parse(bad);
    }
    TableDef doubled = sample();
    doubled.fields[1].columnNumber = 0;
    EXPECT_THROW(parseTableDef(kJet4, 30, serializeTableDef(kJet4, doubled)), Error);
}

TEST(TableDef, NamesCompareWithoutCaseAndWithoutTheDotOfI) {
    for (const auto& [a, b] : std::vector<std::pair<std::string, std::string>>{{"Ogr_Id", "OGR_ID"},
                                                                               {"Kayıt", "KAYIT"},
                                                                               {"İsim", "isim"},
                                                                               {"ÇAĞRI", "çağrı"},
                                                                               {"Şube", "ŞUBE"}})
        EXPECT_TRUE(sameName(a, b) && foldName(a) == foldName(b)) << a << " " << b;
    EXPECT_FALSE(sameName("Ad", "Adı"));
    EXPECT_FALSE(sameName("u", "ü"));
    TableDef def = sample();
    def.fields[0].name = "ADI";
    EXPECT_EQ(def.findField("Adı"), 1u) << "the exact name comes before a similar one";
    EXPECT_EQ(def.findField("adi"), 0u);
    EXPECT_EQ(def.findField("yok"), std::nullopt);
    EXPECT_THROW(def.field("yok"), Error);
}

} // namespace
