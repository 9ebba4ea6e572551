// What typed dates and numbers mean, what is refused with which words, and how values are shown.
#include "support/qt_print.h"
#include "widgets/date_edit.h"
#include "widgets/number_edit.h"

#include <gtest/gtest.h>

namespace orvan {
namespace {

TEST(TypedDate, FormsThatAreDays) {
    const struct {
        const char* typed;
        QDate day;
    } cases[] = {
        {"05092008", {2008, 9, 5}},     {"050908", {2008, 9, 5}},      {"05.09.08", {2008, 9, 5}},
        {"5.9.2008", {2008, 9, 5}},     {"05/09/2008", {2008, 9, 5}},  {"05-09-08", {2008, 9, 5}},
        {" 05 09 2008 ", {2008, 9, 5}}, {"29.02.2008", {2008, 2, 29}}, {"31.12.29", {2029, 12, 31}},
        {"01.01.30", {1930, 1, 1}},     {"010100", {2000, 1, 1}},      {"31.12.2099", {2099, 12, 31}},
    };
    for (const auto& c : cases) {
        const auto day = typedDate(c.typed);
        ASSERT_TRUE(day) << c.typed;
        EXPECT_EQ(*day, c.day) << c.typed;
        EXPECT_EQ(dateProblem(c.typed), QString()) << c.typed;
    }
}

TEST(TypedDate, WrongOnesSayWhatIsWrong) {
    const struct {
        const char *typed, *says;
    } cases[] = {
        {"29.02.2007", "28 arasında"}, {"31.04.2008", "30 arasında"}, {"00.05.2008", "0. gün yoktur"},
        {"05.13.2008", "13. ay"},      {"05.00.2008", "0. ay"},       {"05.09.1899", "Yıl 1900"},
        {"05.09.2100", "Yıl 1900"},    {"5092008", "gg.aa.yyyy"},     {"05.09", "gg.aa.yyyy"},
        {"05.09.208", "gg.aa.yyyy"},   {"bugün", "gg.aa.yyyy"},       {"05.09.2008 10:00", "gg.aa.yyyy"},
    };
    for (const auto& c : cases) {
        EXPECT_FALSE(typedDate(c.typed)) << c.typed;
        EXPECT_TRUE(dateProblem(c.typed).contains(QString(c.says)))
            << c.typed << ": " << dateProblem(c.typed).toStdString();
    }
    EXPECT_EQ(dateProblem(""), QString());
}

TEST(TypedNumber, ReadAsPeopleWriteThem) {
    using enum NumberKind;
    const struct {
        NumberKind kind;
        const char *typed, *value; // value nullptr: refused
    } cases[] = {
        {Whole, "25", "25"},
        {Whole, "007", "7"},
        {Whole, "-0", "0"},
        {Whole, "1.250", "1250"},
        {Whole, "12,5", nullptr},
        {Whole, "12a", nullptr},
        {Whole, "-", nullptr},
        {Money, "1234,5", "1234.5000"},
        {Money, "1.234.567,89", "1234567.8900"},
        {Money, ",5", "0.5000"},
        {Money, "5,", "5.0000"},
        {Money, "1.250", "1250.0000"}, // a dot of thousands
        {Money, "12.5", nullptr},      // no dot of thousands: not guessed
        {Money, "1.2345,00", nullptr},
        {Money, "1234.567,00", nullptr},
        {Money, "1,2,3", nullptr},
        {Money, "0,12345", nullptr}, // more than money can hold
        {Money, "0,12340", "0.1234"},
        {Money, "922337203685477,5807", "922337203685477.5807"}, // beyond a double's digits
        {Decimal, "0,00759", "0.00759"},
        {Decimal, "0.00759", "0.00759"},
        {Decimal, "12,50", "12.5"},
        {Decimal, "", ""},
    };
    for (const auto& c : cases) {
        const auto value = typedNumber(QString(c.typed), c.kind, 5);
        ASSERT_EQ(value.has_value(), c.value != nullptr) << c.typed;
        if (value) {
            EXPECT_EQ(*value, QString(c.value)) << c.typed;
        }
    }
}

TEST(TypedNumber, ShownInTurkishFormAndReadBackTheSame) {
    using enum NumberKind;
    const struct {
        NumberKind kind;
        const char *value, *shown;
    } cases[] = {
        {Whole, "1234567", "1234567"},   {Money, "1234567.8900", "1.234.567,89"},
        {Money, "-999.5000", "-999,50"}, {Money, "0.0000", "0,00"},
        {Money, "12.3456", "12,3456"},   {Money, "100.0000", "100,00"},
        {Decimal, "1234.5", "1234,5"},   {Decimal, "0.00759", "0,00759"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(shownNumber(c.value, c.kind), QString(c.shown));
        EXPECT_EQ(typedNumber(c.shown, c.kind, 6), QString(c.value)) << c.shown;
    }
    for (const char* noNumber : {"yok", "", "1,5", "1.2.3", "12 TL"})
        EXPECT_EQ(shownNumber(noNumber, Money), QString(noNumber));
}

TEST(TypedNumber, RefusalsSayWhatToDo) {
    using enum NumberKind;
    const struct {
        NumberKind kind;
        NumberLimits limits;
        const char *typed, *says; // says nullptr: taken
    } cases[] = {
        {Whole, {0, 100, 0}, "100", nullptr},
        {Whole, {0, 100, 0}, "101", "0 ile 100 arasında"},
        {Whole, {0, 100, 0}, "-1", "0 ile 100 arasında"},
        {Whole, {-5, 5, 0}, "-5", nullptr},
        {Whole, {}, "5,5", "Tam sayı"},
        {Decimal, {0, 100, 2}, "85,5", nullptr},
        {Decimal, {0, 100, 2}, "85,555", "en çok 2 basamak"},
        {Decimal, {0.5, 1.5, 2}, "0,4", "0,5 ile 1,5"},
        {Money, {0, 5000, 2}, "5.000,01", "0,00 ile 5.000,00"},
        {Money, {0, 5000, 2}, "12.5", "virgül"},
    };
    for (const auto& c : cases) {
        const QString problem = numberProblem(c.typed, c.kind, c.limits);
        if (c.says)
            EXPECT_TRUE(problem.contains(QString(c.says))) << c.typed << ": " << problem.toStdString();
        else
            EXPECT_EQ(problem, QString()) << c.typed;
    }
}

} // namespace
} // namespace orvan
