// LvProp: changing one property leaves the others as they are; a damaged blob is an error.
#include "jet/error.h"
#include "jet/format/properties.h"

#include <gtest/gtest.h>

namespace {

using namespace jet;

PropertySet again(const PropertySet& set) { return PropertySet::parse(set.serialize()); }

PropertySet sample() {
    PropertySet set;
    set.setText("", "Description", "Öğrenciler");
    set.setBoolean("Adı", "Required", true);
    set.setBoolean("Adı", "AllowZeroLength", false);
    set.setText("Puan", "DefaultValue", "0");
    return set;
}

TEST(Properties, ValuesSurviveAndKeepTheirOwner) {
    const PropertySet set = again(sample());
    EXPECT_EQ(set.text("", "Description"), "Öğrenciler");
    EXPECT_TRUE(set.boolean("ADI", "Required", false)) << "names without regard to case";
    EXPECT_FALSE(set.boolean("Adı", "AllowZeroLength", true));
    EXPECT_EQ(set.text("Puan", "DefaultValue"), "0");
    EXPECT_TRUE(set.boolean("Puan", "Required", true)) << "absent";
    EXPECT_EQ(set.text("Puan", "Description"), "");
}

TEST(Properties, RenamingRemovingAndEmptying) {
    PropertySet set = again(sample());
    set.renameField("Adı", "İsim");
    set.setText("Puan", "DefaultValue", "");
    set = again(set);
    EXPECT_TRUE(set.boolean("İsim", "Required", false));
    EXPECT_FALSE(set.boolean("Soyadı", "Required", false));
    EXPECT_EQ(set.text("Puan", "DefaultValue"), "");
    set.removeField("isim");
    EXPECT_FALSE(set.boolean("İsim", "Required", false));
    EXPECT_TRUE(PropertySet().serialize().empty());
    EXPECT_TRUE(PropertySet::parse({}).empty());
}

TEST(Properties, DamagedBlobsAreCorruptOrReadable) {
    const Bytes good = sample().serialize();
    for (size_t length = 1; length < good.size(); ++length) {
        try {
            PropertySet::parse(std::span(good).first(length));
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), Err::Corrupt);
        }
    }
    for (size_t at = 0; at < good.size(); ++at)
        for (const int byte : {0, 1, 0x80, 0xFF}) {
            Bytes bad = good;
            bad[at] = static_cast<uint8_t>(byte);
            try {
                PropertySet::parse(bad);
            } catch (const Error& error) {
                EXPECT_EQ(error.number(), Err::Corrupt);
            }
        }
    EXPECT_THROW(PropertySet::parse(Bytes{'X', 'Y', 'Z', 0}), Error);
}

// One long name that thousands of entries share would be thousands of long names in memory.
TEST(Properties, SharedLongNameIsCorrupt) {
    PropertySet set;
    for (int i = 0; i < 5000; ++i)
        set.setBoolean("Alan " + std::to_string(i), "Required", true);
    EXPECT_NO_THROW(again(set));
    PropertySet hostile;
    for (int i = 0; i < 5000; ++i)
        hostile.setBoolean("Alan " + std::to_string(i), std::string(20000, 'R'), true);
    EXPECT_THROW(again(hostile), Error);
}

} // namespace
