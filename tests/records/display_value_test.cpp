// Coded values as people read them; identity numbers and their check digits.
#include "records/display_value.h"
#include "records/identity_number.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;

namespace {

TEST(DisplayValue, EveryCodedField) {
    orvan_test::TestCentre centre;
    centre.databases.connect();
    centre.addProfession("1101", "Otomotiv Mekanikerliği");
    struct Case {
        const char* field;
        jet::Value stored;
        const char* shown;
    };
    const Case cases[] = {
        {"Ogr_Cinsiyeti", "e", "ERKEK"},
        {"ogr_cinsiyeti", "E", "ERKEK"},
        {"Ogr_Nufus_Cinsiyeti", "K", "KIZ"},
        {"Ogr_Cinsiyeti", {}, "KIZ"},
        {"Ogr_Nufus_Medeni_Hali", "B", "BEKAR"},
        {"Ogr_Nufus_Medeni_Hali", "E", "EVLİ"},
        {"Ogr_Nufus_KanGrubu", "0", ""},
        {"Ogr_Nufus_KanGrubu", "5", "AB(Rh+)"},
        {"Ogr_Nufus_KanGrubu", jet::Value(8), "0 (Rh-)"},
        {"Ogr_Nufus_Dini", "1", "İSLAM"},
        {"Ogr_Nufus_Dini", "0", ""},
        {"Ogr_OgrenimDuzeyi", "07", "Ortaokula Devam Ediyor"},
        {"Ogr_MeslekKod", "1101", "Otomotiv Mekanikerliği"},
        {"Ogr_MeslekKod", "9999", "Bu koda ait Meslek yok"},
        {"Ogr_AnaMeslek_Kod", "9999", "Bu koda ait AnaMeslek yok"},
        {"Ogr_Kayit_Tarihi", "5/9/2008", "05.09.2008"},
        {"Ogr_Dogum_Tarihi", {}, ""},
        {"Ogr_Kayit_Tarihi", "bilinmiyor", "bilinmiyor"},
        {"Ogr_Adi", " Ayşe ", "Ayşe"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(displayValue(centre.level(), c.field, c.stored).toStdString(), c.shown)
            << c.field << ' ' << c.stored.toText();
}

TEST(IdentityNumber, CheckDigits) {
    EXPECT_EQ(completeIdentityNumber("100000001"), "10000000146"); // (1+1)*7 = 14, ends in 4; 1+1+4 = 6
    for (const char* good : {"10000000146", "10000000078"})
        EXPECT_TRUE(isIdentityNumber(good)) << good;
    for (const char* bad : {"", "1000000014", "100000001466", "10000000147", "10000000156", "00000000000",
                            "1000000014a", "10000000１46"})
        EXPECT_FALSE(isIdentityNumber(bad)) << bad;
}

} // namespace
