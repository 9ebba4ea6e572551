// Minimum wages: a year at a time, what is refused, what is deleted, and which months are missing.
#include "reference/minimum_wages.h"

#include "core/users.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

struct WagesTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    MinimumWages wages{centre.databases, dialogs, QStringLiteral("Sigorta Sabit Bilgileri")};

    void SetUp() override {
        centre.databases.connect();
        centre.session.user = QStringLiteral("müdür");
        auto& constants = centre.databases.constants().database();
        createUser(constants, centre.session.user, "1");
        grantAll(constants, centre.session.user, {true, true});
    }
    QString stored() {
        const auto rows = centre.constants().query(
            "SELECT Yil,Ay,BuyukGunluk,KucukGunluk,YtlVar FROM AsgariUcret ORDER BY Yil,Ay");
        QStringList texts;
        for (size_t i = 0; i < rows.rowCount(); ++i)
            texts << QStringLiteral("%1/%2 %3 %4 %5")
                         .arg(toText(rows.at(i, 0)), toText(rows.at(i, 1)), toText(rows.at(i, 2)),
                              toText(rows.at(i, 3)), toText(rows.at(i, 4)));
        return texts.join(u'|');
    }
    static WageMonth& month(std::vector<WageMonth>& months, int number) {
        return months[static_cast<size_t>(number - 1)];
    }
};

TEST_F(WagesTest, AddChangeAndDeleteByYear) {
    auto months = wages.load(2008);
    ASSERT_EQ(months.size(), 12u);
    EXPECT_TRUE(months[0].isEmpty());
    EXPECT_TRUE(months[0].newLira);
    EXPECT_FALSE(wages.load(2004)[0].newLira);
    wages.load(2008);
    month(months, 1) = {1, "20.2800", "17.1800", true};
    month(months, 7) = {7, "21.2900", "18.0200", true};
    ASSERT_TRUE(wages.save(months).saved);
    EXPECT_EQ(stored(), "2008/1 20.2800 17.1800 E|2008/7 21.2900 18.0200 E");
    month(months, 1).adult = "20.2801";
    month(months, 7) = {7, {}, {}, true};
    centre.level().execute(
        "INSERT INTO Sigorta_Devamsizlik (D_OgrNo,D_Yil,D_Ay_Kod) VALUES ('1','2008','07')");
    const QString question = QStringLiteral("1 ayın asgari ücreti silinecek (2008: Temmuz).\nBu aylar için "
                                            "işlenmiş 1 sigorta günü kaydı var.\n\nSilinsin mi?");
    dialogs.expectYesNo(question, Answer::No).expectYesNo(question, Answer::Yes);
    EXPECT_FALSE(wages.save(months).saved);
    EXPECT_EQ(stored(), "2008/1 20.2800 17.1800 E|2008/7 21.2900 18.0200 E");
    ASSERT_TRUE(wages.save(months).saved);
    EXPECT_EQ(stored(), "2008/1 20.2801 17.1800 E");
}

TEST_F(WagesTest, BadInputNamesMonthAndField) {
    const struct {
        const char *adult, *young, *field;
    } cases[] = {{"20.0000", "", kYoungWage},
                 {"", "17.0000", kAdultWage},
                 {"0.0000", "0.0000", kAdultWage},
                 {"-1.0000", "1.0000", kAdultWage},
                 {"20.0000", "20.0001", kYoungWage}};
    for (const auto& bad : cases) {
        auto months = wages.load(2008);
        month(months, 1) = {1, "5.0000", "4.0000", true};
        month(months, 3) = {3, bad.adult, bad.young, true};
        const WageOutcome outcome = wages.save(months);
        EXPECT_FALSE(outcome.saved);
        EXPECT_EQ(outcome.month, 3);
        EXPECT_EQ(outcome.field, bad.field);
        EXPECT_TRUE(outcome.reason.startsWith("Mart: ")) << outcome.reason.toStdString();
    }
    EXPECT_EQ(stored(), ""); // nothing of a refused year is written
}

TEST_F(WagesTest, AnotherStationEntersTheSameMonth) {
    auto months = wages.load(2009);
    month(months, 1) = {1, "22.2000", "18.9000", true};
    centre.constants().execute(
        "INSERT INTO AsgariUcret (Yil,Ay,BuyukGunluk,KucukGunluk,YtlVar) VALUES (2009,1,22.2,19,'E')");
    dialogs.expectChoice(
        QStringLiteral(
            "Bu kayıt, siz açtıktan sonra başka bir bilgisayarda değiştirildi:\n\n"
            "Günlük asgari ücret (16 yaşından küçük): “” yerine “19.0000” (siz “18.9000” yazdınız)"),
        QStringLiteral("Benim yazdıklarım kaydedilsin"));
    EXPECT_TRUE(wages.save(months).saved);
    EXPECT_EQ(stored(), "2009/1 22.2000 18.9000 E");
}

TEST_F(WagesTest, WithoutTheRightNothingIsWritten) {
    grantAll(centre.databases.constants().database(), centre.session.user, {true, false});
    auto months = wages.load(2008);
    month(months, 1) = {1, "5.0000", "4.0000", true};
    dialogs.expectMessage(
        QStringLiteral("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz."));
    EXPECT_FALSE(wages.save(months).saved);
    EXPECT_EQ(stored(), "");
}

TEST(MissingWages, FromTheFirstToTheLastMonthOrToday) {
    const QDate today(2009, 3, 15);
    const struct {
        std::vector<WagePeriod> stored;
        const char* missing;
    } cases[] = {
        {{}, ""},
        {{{2009, 3}}, ""},
        {{{2009, 1}}, "2009: Şubat-Mart"},
        {{{2008, 11}, {2009, 2}}, "2008: Aralık; 2009: Ocak, Mart"},
        {{{2009, 2}, {2009, 5}}, "2009: Mart-Nisan"}, // a month ahead of today belongs to the list
        {{{2007, 12}, {2009, 1}, {2009, 2}, {2009, 3}}, "2008: tümü"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(periodsText(missingWages(each.stored, today)), QString::fromUtf8(each.missing));
}

} // namespace
