// Provinces and districts of a new and of an upgraded centre.
#include "core/structure_check.h"
#include "reference/school_constants.h"

#include "support/declining_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>
#include <set>

using namespace orvan;
using orvan_test::TestCentre;

namespace {

// Districts of each province, central ones included, by plate code.
constexpr int kCounts[81] = {
    15, 9, 18, 8,  7,  25, 19, 9,  17, 20, 8,  8,  7, 9,  11, 17, 12, 12, 14, 19, 17, 9, 11, 9, 20, 14, 9,
    16, 6, 5,  15, 13, 13, 39, 30, 8,  20, 16, 8,  7, 12, 31, 13, 13, 17, 11, 10, 13, 6, 8,  6, 19, 12, 16,
    17, 7, 9,  17, 11, 12, 18, 8,  13, 6,  13, 14, 8, 8,  3,  6,  9,  6,  7,  4,  6,  4, 6,  6, 4,  7,  8};

TEST(Districts, EveryProvinceHasItsOwn) {
    TestCentre centre;
    centre.databases.connect();
    const auto all = provinces(centre.constants());
    ASSERT_EQ(all.size(), 81u);
    size_t total = 0, central = 0;
    std::set<QString> codes;
    for (const Place& province : all) {
        const auto districts = districtsOf(centre.constants(), province.code);
        EXPECT_EQ(districts.size(), static_cast<size_t>(kCounts[province.code.toInt() - 1]))
            << province.name.toStdString();
        std::set<QString> names;
        for (const Place& district : districts) {
            EXPECT_TRUE(names.insert(district.name).second) << district.name.toStdString();
            EXPECT_TRUE(codes.insert(district.code).second) << district.code.toStdString();
            EXPECT_TRUE(district.code.startsWith(province.code)) << district.code.toStdString();
            central += district.name == QLatin1String("MERKEZ");
        }
        total += districts.size();
    }
    EXPECT_EQ(total, 973u);
    EXPECT_EQ(central, 51u); // the thirty metropolitan provinces have none
}

TEST(Districts, AnUpgradeAddsWhatIsMissingAndKeepsTheRest) {
    TestCentre centre;
    centre.databases.connect();
    centre.constants().execute("DELETE FROM Meb_Ilce_Tablo WHERE Il_Kodu<>'06'");
    centre.constants().execute("UPDATE Meb_Ilce_Tablo SET Ilce_Kodu='1231' WHERE Ilce_Adi='ÇANKAYA'");
    centre.databases.close();
    orvan_test::DecliningDialogs dialogs;
    checkStructure(centre.folder, centre.session, allTables(), dialogs, "Check1");
    centre.databases.connect();
    EXPECT_EQ(districtsOf(centre.constants(), "34").size(), 39u);
    const auto ankara = districtsOf(centre.constants(), "06");
    ASSERT_EQ(ankara.size(), 25u);
    for (const Place& district : ankara)
        if (district.name == QString("ÇANKAYA")) {
            EXPECT_EQ(district.code, "1231");
        }
}

} // namespace
