// Code lists of a fresh level database, and lookups in them; what the declarations promise the engine.
#include "reference/code_lists.h"

#include "support/test_centre.h"

#include <gtest/gtest.h>
#include <set>

using namespace orvan;
using orvan_test::TestCentre;

namespace {

struct CodeListsTest : testing::Test {
    TestCentre centre;
    void SetUp() override { centre.databases.connect(); }
};

TEST_F(CodeListsTest, FreshDatabaseHoldsTheListsOfANewCentre) {
    EXPECT_EQ(descriptions(centre.level(), "ÖğrenimDr").size(), 22);
    EXPECT_EQ(descriptionOf(centre.level(), "ÖğrenimDr", "60"), "Lisans Mezunu");
    for (const char* state : {"ADAY ÇIRAK", "BİTİRME", "DIŞARDAN", "GEÇTİ", "MEZUN"})
        EXPECT_FALSE(codeOf(centre.level(), "Donem", state).isEmpty()) << state;
}

TEST_F(CodeListsTest, GroupsAndCodesAreExactTexts) {
    EXPECT_EQ(descriptionOf(centre.level(), "KanunMd.", "16"), "16.madde");
    EXPECT_EQ(descriptionOf(centre.level(), "KanunMd", "16"), "");
    EXPECT_EQ(descriptionOf(centre.level(), "ÖğrenimDr", "06"), "Ortaokul 3 Terk");
    EXPECT_EQ(descriptionOf(centre.level(), "ÖğrenimDr", "6"), "");
    EXPECT_EQ(codeOf(centre.level(), "ÖğrenimDr", " Lise Mezunu "), "10");
}

TEST(Declarations, AreWithinTheLimitsOfTheFormatAndOfEachOther) {
    std::set<std::string> tables;
    for (const TableDeclaration& table : allTables().tables()) {
        EXPECT_TRUE(tables.insert(jet::foldName(table.name)).second) << table.name;
        EXPECT_LE(table.fields.size(), 255u) << table.name;
        EXPECT_LE(table.indexes.size(), 32u) << table.name;
        std::set<std::string> fields;
        for (const FieldDeclaration& field : table.fields) {
            EXPECT_TRUE(fields.insert(jet::foldName(field.name)).second) << table.name << '.' << field.name;
            EXPECT_EQ(field.width > 0, field.type == jet::Type::Text) << table.name << '.' << field.name;
            EXPECT_LE(field.width, 255) << table.name << '.' << field.name;
            EXPECT_FALSE(field.label.empty()) << table.name << '.' << field.name;
        }
        for (const IndexDeclaration& index : table.indexes)
            for (const std::string& field : index.fields)
                EXPECT_TRUE(table.field(field)) << index.name << '.' << field;
        for (const FirstRows& first : table.firstRows) {
            for (const std::string& field : first.fields)
                EXPECT_TRUE(table.field(field)) << table.name << '.' << field;
            for (const auto& row : first.rows)
                EXPECT_EQ(row.size(), first.fields.size()) << table.name;
        }
    }
}

} // namespace
