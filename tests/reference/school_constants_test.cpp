// The one row of the school's constants: read, checked, saved field by field, and completed after sign-in.
#include "reference/maintenance.h"
#include "reference/school_constants.h"
#include "reference/school_year.h"

#include "core/users.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

struct ConstantsTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    FixedClock clock{QDate(2009, 8, 31)};
    const QString title = QStringLiteral("Kuruma Ait Bilgiler");

    void SetUp() override {
        centre.databases.connect();
        centre.session.user = QStringLiteral("müdür");
        auto& constants = centre.databases.constants().database();
        createUser(constants, centre.session.user, "1");
        grantAll(constants, centre.session.user, {true, true});
    }
    int rowCount() {
        return static_cast<int>(
            centre.constants().query("SELECT COUNT(*) FROM SabitBilgiler").at(0, size_t{0}).toInt());
    }
    void addRow() {
        centre.constants().execute("INSERT INTO SabitBilgiler (SB_Okul_Adi,SB_Telefon,SB_ORAN) VALUES "
                                   "(' Işık MEM ','0312','50')");
    }
    SchoolConstants stored() { return readConstants(centre.databases); }
};

TEST_F(ConstantsTest, AnEmptyTableIsLegalAndStaysEmpty) {
    const SchoolConstants constants = stored();
    EXPECT_FALSE(constants.exists);
    EXPECT_EQ(constants.text("SB_Okul_Adi"), "");
    EXPECT_EQ(constants.number("KutukHane", 5), 5);
    EXPECT_FALSE(constants.yes("SB_IzinSigortadanDusulsun"));
    EXPECT_EQ(supplyConstants(centre.databases.constants(), clock), 0);
    maintainReference(centre.databases, dialogs, clock);
    EXPECT_EQ(rowCount(), 0);
    EXPECT_EQ(centre.session.schoolName, "");
}

TEST_F(ConstantsTest, FirstSaveMakesTheRowAndLaterOnesKeepIt) {
    ConstantsRecord record(centre.databases, dialogs, title);
    record.load();
    ASSERT_TRUE(
        record.save({{"SB_Okul_Adi", " Çınar MEM "}, {"SB_Semt", ""}, {"SB_Ders_Yili", "2008-2009"}}).saved);
    EXPECT_EQ(centre.session.schoolName, "Çınar MEM");
    EXPECT_EQ(centre.session.schoolYear, "2008-2009");
    ASSERT_TRUE(record.save({{"SB_Okul_Adi", "Çınar MEM"}, {"SB_Telefon", "0312 1"}}).saved);
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(stored().text("SB_Telefon"), "0312 1");
}

TEST_F(ConstantsTest, TwoScreensOfOneRowDoNotOverwriteEachOther) {
    addRow();
    ConstantsRecord school(centre.databases, dialogs, title);
    ConstantsRecord insurance(centre.databases, dialogs, QStringLiteral("Sigorta Sabit Bilgileri"));
    school.load();
    insurance.load();
    ASSERT_TRUE(insurance.save({{"SB_ORAN", "25"}, {"SB_IzinSigortadanDusulsun", "1"}}).saved);
    ASSERT_TRUE(school.save({{"SB_Okul_Adi", "Işık MEM"}, {"SB_Telefon", "0216"}}).saved);
    const SchoolConstants now = stored();
    EXPECT_EQ(now.text("SB_ORAN"), "25");
    EXPECT_EQ(now.text("SB_Telefon"), "0216");
    EXPECT_TRUE(now.yes("SB_IzinSigortadanDusulsun"));
}

TEST_F(ConstantsTest, TheSameFieldChangedByAnotherStationIsAskedAbout) {
    addRow();
    ConstantsRecord record(centre.databases, dialogs, title);
    record.load();
    centre.constants().execute("UPDATE SabitBilgiler SET SB_Telefon='444', SB_Semt='Ulus'");
    dialogs.expectChoice(
        QStringLiteral("Bu kayıt, siz açtıktan sonra başka bir bilgisayarda değiştirildi:\n\n"
                       "Telefon: “0312” yerine “444” (siz “0216” yazdınız)"),
        std::nullopt);
    EXPECT_FALSE(record.save({{"SB_Telefon", "0216"}}).saved);
    EXPECT_EQ(stored().text("SB_Telefon"), "444");
    EXPECT_TRUE(record.save({{"SB_Telefon", "0216"}}).saved);
    EXPECT_EQ(stored().text("SB_Semt"), "Ulus");
}

TEST_F(ConstantsTest, AnotherStationMakesTheRowFirst) {
    ConstantsRecord record(centre.databases, dialogs, title);
    record.load();
    addRow();
    ASSERT_TRUE(record.save({{"SB_Okul_Adi", ""}, {"SB_Telefon", ""}, {"SB_Semt", "Ulus"}}).saved);
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(stored().text("SB_Okul_Adi"), "Işık MEM"); // an empty field takes nothing away
    EXPECT_EQ(stored().text("SB_Semt"), "Ulus");
}

TEST_F(ConstantsTest, BadInputNamesItsField) {
    addRow();
    const struct {
        const char* field;
        const char* text;
    } cases[] = {
        {"SB_PostaKodu", "6530"},
        {"SB_PostaKodu", "0653A"},
        {"SB_TCKimlikNo", "123"},
        {"SB_VergiNo", "12345"},
        {"SB_EPosta", "mem.meb.k12.tr"},
        {"SB_EPosta", "mem@meb"},
        {"SB_Ders_Yili", "2008-2010"},
        {"SB_Ders_Yili", "2008/2009"},
        {"SB_NotTarihi", "31.02.2009"},
        {"SB_Donem_Baslama_Tarihi", "dün"},
        {"KutukHane", "0"},
        {"KutukHane", "11"},
        {"SB_ORAN", "101"},
        {"SB_ORAN", "elli"},
        {"SB_PrimHesaplamaTipi", "256"},
        {"SB_YasHesaplamaUclu", "X"},
        {"SB_Prime_Esas_Toplam", "4"},
        {"SB_IzinRapor_Detay", "0"},
        {"SB_Yuvarlama_Katsayisi", "0"},
        {"SB_KalfaDevamsizKalmaSiniri4", "-1"},
        {"SB_prim_Analik_sigortasi", "x"},
        {"SB_DamgaVergisi", "-0.1"},
        {"SB_Asgari_ucret1", "-5"},
    };
    ConstantsRecord record(centre.databases, dialogs, title);
    record.load();
    for (const auto& bad : cases) {
        const SaveOutcome outcome =
            record.save({{"SB_Semt", "Ulus"}, {QString::fromUtf8(bad.field), QString::fromUtf8(bad.text)}});
        EXPECT_FALSE(outcome.saved) << bad.field;
        EXPECT_EQ(outcome.field, QString::fromUtf8(bad.field)) << bad.text;
        EXPECT_FALSE(outcome.reason.isEmpty()) << bad.field;
    }
    const SaveOutcome tooLong = record.save({{"SB_Okul_Adi", QString(101, u'a')}});
    EXPECT_TRUE(tooLong.reason.contains("en çok 100")) << tooLong.reason.toStdString();
    EXPECT_EQ(stored().text("SB_Semt"), ""); // nothing of a refused save is written
}

TEST_F(ConstantsTest, FieldsThatBelongTogether) {
    addRow();
    ConstantsRecord record(centre.databases, dialogs, title);
    record.load();
    EXPECT_EQ(
        record.save({{"SB_Donem_Baslama_Tarihi", "08.09.2008"}, {"SB_Donem_Bitis_Tarihi", "08.09.2008"}})
            .field,
        "SB_Donem_Bitis_Tarihi");
    EXPECT_EQ(
        record.save({{"SB_KalfaDevamsizKalmaSiniri4", "6"}, {"SB_KalfaDevamsizUyariSiniri4", "6.5"}}).field,
        "SB_KalfaDevamsizUyariSiniri4");
    EXPECT_TRUE(
        record.save({{"SB_KalfaDevamsizKalmaSiniri4", "6"}, {"SB_KalfaDevamsizUyariSiniri4", "6"}}).saved);
    EXPECT_TRUE(record.save({{"SB_KalfaDevamsizUyariSiniri", "9"}}).saved); // its own limit is empty
    // an old fault stops only changes of its own fields
    centre.constants().execute("UPDATE SabitBilgiler SET SB_PostaKodu='x', SB_KalfaDevamsizUyariSiniri4=9");
    record.load();
    EXPECT_TRUE(record.save({{"SB_PostaKodu", "x"}, {"SB_Semt", "Ulus"}}).saved);
}

TEST_F(ConstantsTest, SignInSuppliesWhatReadersNeedAndNothingElse) {
    addRow();
    centre.constants().execute("UPDATE SabitBilgiler SET SB_YasHesaplamaUclu='K', SMS_user='mem'");
    centre.constants().execute("INSERT INTO AsgariUcret (Yil,Ay,BuyukGunluk) VALUES (2008,12,20)");
    centre.constants().execute("INSERT INTO AsgariUcret (Yil,Ay,BuyukGunluk) VALUES (2009,1,22)");
    maintainReference(centre.databases, dialogs, clock);
    const SchoolConstants now = stored();
    EXPECT_EQ(now.text("SB_Ders_Yili"), "2008-2009"); // August still belongs to it
    EXPECT_EQ(now.text("KutukHane"), "") << "the width of serials is the centre's own choice";
    EXPECT_EQ(now.text("SB_PrimHesaplamaTipi"), "0");
    EXPECT_EQ(now.text("SB_AyHesap"), "0");
    EXPECT_EQ(now.text("SB_YasHesaplamaUclu"), "K");
    EXPECT_EQ(now.text("SMS_user"), "mem");
    EXPECT_EQ(centre.session.schoolYear, "2008-2009");
    EXPECT_FALSE(centre.constants().query("SELECT * FROM SabitBilgiler").at(0, "SMS_password").isNull());
    const auto marks = centre.constants().query("SELECT YtlVar FROM AsgariUcret ORDER BY Yil");
    EXPECT_TRUE(marks.at(0, size_t{0}).isNull());
    EXPECT_EQ(marks.at(1, size_t{0}).toText(), "E");
    EXPECT_EQ(supplyConstants(centre.databases.constants(), clock), 0); // a second time there is nothing left
    EXPECT_EQ(markNewLira(centre.databases.constants()), 0);
}

TEST(SchoolYear, BeginsInSeptember) {
    EXPECT_EQ(schoolYearOf({2008, 8, 31}), "2007-2008");
    EXPECT_EQ(schoolYearOf({2008, 9, 1}), "2008-2009");
    EXPECT_EQ(schoolYearProblem("1999-2000"), "");
    for (const char* bad : {"", "2008", "2009-2008", "2008-09", "08-09", "2008-2009 "})
        EXPECT_NE(schoolYearProblem(bad), "") << bad;
}

} // namespace
