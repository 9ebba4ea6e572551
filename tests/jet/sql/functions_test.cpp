// Every function of the dialect, by what a query shows for it. The clock stands at Monday, 15.09.2008 10:30.
#include "sql_fixture.h"

using namespace sql_test;

namespace {

struct Case {
    const char* expression;
    const char* expected;
};

class Functions : public SqlTest {
  protected:
    void check(std::initializer_list<Case> cases) {
        for (const Case& c : cases) {
            std::string got;
            try {
                got = value(c.expression);
            } catch (const jet::Error& error) {
                got = "error " + std::to_string(error.code());
            }
            EXPECT_EQ(got, c.expected) << c.expression;
        }
    }
};

TEST_F(Functions, Texts) {
    check({
        {"Left('Çırak', 2)", "Çı"},
        {"Left('ab', 9)", "ab"},
        {"Left('ab', -1)", "error 3001"},
        {"Left(Null, 2)", "∅"},
        {"Right('Çırak', 3)", "rak"},
        {"Mid('0123456', 5)", "456"},
        {"Mid('Şişli', 2, 3)", "işl"},
        {"Mid('abc', 4)", ""},
        {"Mid('abc', 0)", "error 3001"},
        {"Len('ığüşöç')", "6"},
        {"Len('😀')", "2"},
        {"Len(Null)", "∅"},
        {"InStr('Kalfalık', 'FA')", "4"},
        {"InStr('Kalfalık', 'x')", "0"},
        {"InStr(3, 'aXaXa', 'x')", "4"},
        {"InStr(1, 'abc', 'B', 0)", "0"},
        {"InStrRev('a.b.c', '.')", "4"},
        {"InStrRev('a.b.c', '.', 3)", "2"},
        {"Replace('01/09/2008', '/', '.')", "01.09.2008"},
        {"Replace('aaaa', 'A', 'b', 1, 2)", "bbaa"},
        {"UCase('ılık iğne')", "ILIK İĞNE"},
        {"LCase('ILIK İĞNE')", "ılık iğne"},
        {"'[' & Trim('  a b  ') & ']'", "[a b]"},
        {"'[' & LTrim('  a ') & ']'", "[a ]"},
        {"'[' & RTrim('  a ') & ']'", "[  a]"},
        {"Trim(Null)", "∅"},
        {"'[' & Space(3) & ']'", "[   ]"},
        {"String(3, 'xy')", "xxx"},
        {"String(2, 65)", "AA"},
        {"String(2000000000, 'x')", "error 6"},
        {"StrComp('ali', 'ALİ')", "0"},
        {"StrComp('ali', 'veli')", "-1"},
        {"StrComp('a', 'A', 0)", "1"},
        {"StrReverse('çay')", "yaç"},
        {"Asc('A')", "65"},
        {"Asc('Ş')", "222"},
        {"Chr(254)", "ş"},
        {"AscW('ğ')", "287"},
        {"ChrW(287)", "ğ"},
        {"Val('0099')", "99"},
        {"Val('12a')", "12"},
        {"Val('')", "0"},
        {"Val(' 1 2 . 5')", "12.5"},
        {"Val('1,5')", "1"},
        {"Val('-3e2x')", "-300"},
        {"Val('nan')", "0"},
        {"Val(Null)", "∅"},
        {"Str(5)", " 5"},
        {"Str(-1.5)", "-1.5"},
        {"CStr(1.5)", "1,5"},
        {"Left$('abc', 1)", "a"},
    });
}

TEST_F(Functions, Numbers) {
    check({
        {"CInt(2.5)", "2"},
        {"CInt(3.5)", "4"},
        {"CInt('12')", "12"},
        {"CInt(40000)", "error 6"},
        {"CLng(-2.5)", "-2"},
        {"CLng(3000000000)", "error 6"},
        {"CLng('abc')", "error 3421"},
        {"CLng(Null)", "∅"},
        {"CByte(255)", "255"},
        {"CByte(-1)", "error 6"},
        {"CDbl('1,5')", "1.5"},
        {"CDbl('1.234,5')", "1234.5"},
        {"CSng(0.5)", "0.5"},
        {"CCur(0.03125)", "0.0312"},
        {"CCur('12,34')", "12.3400"},
        {"CBool(5)", "-1"},
        {"Int(-2.5)", "-3"},
        {"Fix(-2.5)", "-2"},
        {"Round(2.5)", "2"},
        {"Round(3.5)", "4"},
        {"Round(2.675, 2)", "2.68"},
        {"Round(-0.125, 2)", "-0.12"},
        {"Abs(-3)", "3"},
        {"Sgn(-9.5)", "-1"},
        {"Sqr(16)", "4"},
        {"Sqr(-1)", "error 3001"},
        {"Exp(0)", "1"},
        {"Log(1)", "0"},
        {"IsNumeric('12,5')", "-1"},
        {"IsNumeric('12a')", "0"},
        {"IsNumeric(Null)", "0"},
        {"7 / 2", "3.5"},
        {"7 \\ 2", "3"},
        {"7.5 \\ 2", "4"},
        {"-7 MOD 3", "-1"},
        {"2 ^ 10", "1024"},
        {"-2 ^ 2", "-4"},
        {"1 / 0", "error 11"},
        {"5 MOD 0", "error 11"},
        {"'5' + 3", "8"},
        {"'a' + 3", "error 3421"},
        {"'a' + 'b'", "ab"},
        {"'a' + Null", "∅"},
        {"'a' & Null & 'b'", "ab"},
        {"Null & Null", "∅"},
        {"1 & 2.5", "12,5"},
        {"2 + 3 * 4 - 10 / 4", "11.5"},
        {"&H1F", "31"},
    });
}

TEST_F(Functions, Dates) {
    check({
        {"Now()", "2008-09-15 10:30:00"},
        {"Date()", "2008-09-15 00:00:00"},
        {"Format(Time(), 'hh:nn')", "10:30"},
        {"DateValue('01.07.2005')", "2005-07-01 00:00:00"},
        {"DateValue('1/7/05')", "2005-07-01 00:00:00"},
        {"DateValue('2005-07-01 13:00')", "2005-07-01 00:00:00"},
        {"DateValue('1 Temmuz 2005')", "2005-07-01 00:00:00"},
        {"DateValue('31.02.2005')", "error 3421"},
        {"DateValue('')", "error 3421"},
        {"DateValue(Null)", "∅"},
        {"Format(TimeValue('15.09.2008 21:05:09'), 'hh:nn:ss')", "21:05:09"},
        {"CDate('15.09.2008 21:05')", "2008-09-15 21:05:00"},
        {"DateSerial(2008, 14, 0)", "2009-01-31 00:00:00"},
        {"DateSerial(2008, 2, 30)", "2008-03-01 00:00:00"},
        {"Format(TimeSerial(10, 90, 0), 'hh:nn')", "11:30"},
        {"DateAdd('m', 1, #1/31/2008#)", "2008-02-29 00:00:00"},
        {"DateAdd('yyyy', -1, #2/29/2008#)", "2007-02-28 00:00:00"},
        {"DateAdd('n', 45, Now())", "2008-09-15 11:15:00"},
        {"DateAdd('ww', 2, Date())", "2008-09-29 00:00:00"},
        {"DateAdd('h', 3, #12/29/1899 23:00#)", "1899-12-30 02:00:00"},
        {"DateDiff('d', #12/31/2007#, #3/1/2008#)", "61"},
        {"DateDiff('yyyy', #12/31/2007#, #1/1/2008#)", "1"},
        {"DateDiff('m', '15.09.2008', '01.01.2009')", "4"},
        {"DateDiff('ww', #9/13/2008#, #9/14/2008#)", "1"},
        {"DateDiff('ww', #9/13/2008#, #9/14/2008#, 2)", "0"},
        {"DateDiff('s', #1/1/2008#, #1/1/2008 00:01:05#)", "65"},
        {"DatePart('q', Date())", "3"},
        {"DatePart('y', Date())", "259"},
        {"DatePart('ww', #1/1/2008#)", "1"},
        {"DatePart('ww', #12/31/2008#, 2, 2)", "1"},
        {"DatePart('x', Date())", "error 3001"},
        {"Day('15.09.2008') & '-' & Month('15.09.2008') & '-' & Year('15.09.2008')", "15-9-2008"},
        {"Hour(Now()) & ':' & Minute(Now()) & ':' & Second(Now())", "10:30:0"},
        {"Weekday(Date())", "2"},
        {"Weekday(Date(), 2)", "1"},
        {"WeekdayName(1)", "Pazartesi"},
        {"WeekdayName(7, True)", "Paz"},
        {"MonthName(9)", "Eylül"},
        {"MonthName(2, True)", "Şub"},
        {"MonthName(13)", "error 3001"},
        {"IsDate('15.09.2008')", "-1"},
        {"IsDate('32.09.2008')", "0"},
        {"IsDate(Now())", "-1"},
        {"IsDate(5)", "0"},
        {"#9/15/2008# = #2008-09-15#", "-1"},
        {"#15/9/2008# = #9/15/2008#", "-1"},
        {"Round(#9/15/2008 1:05 PM# - Date(), 6)", "0.545139"},
        {"Date() + 1", "2008-09-16 00:00:00"},
        {"'Bugün ' & Date()", "Bugün 15.09.2008"},
        {"Left(Now(), 10)", "15.09.2008"},
        {"Year(#1/1/1850 06:00#) & ' ' & Hour(#1/1/1850 06:00#)", "1850 6"},
    });
}

TEST_F(Functions, Format) {
    check({
        {"Format(7, '0000')", "0007"},
        {"Format(12345, '0000')", "12345"},
        {"Format(1234567.891, '#,##0.00')", "1.234.567,89"},
        {"Format(0.5, '#,##0.00')", "0,50"},
        {"Format(0.5, '#.##')", ",5"},
        {"Format(2.5, '0')", "3"},
        {"Format(0.125, '0.00')", "0,13"},
        {"Format(-3.14159, '0.00')", "-3,14"},
        {"Format(-5, '0;(0)')", "(5)"},
        {"Format(0, '0;-0;\"yok\"')", "yok"},
        {"Format(-0.001, '0.00')", "0,00"},
        {"Format(0.256, '0.0%')", "25,6%"},
        {"Format(5321234567, '(000) 000 00 00')", "(532) 123 45 67"},
        {"Format(12345.678, '0.00E+00')", "1,23E+04"},
        {"Format(1234.5, 'Fixed')", "1234,50"},
        {"Format(1234.5, 'Standard')", "1.234,50"},
        {"Format('12', '0000')", "0012"},
        {"Format('abc', '0000')", "abc"},
        {"Format(1.5)", "1,5"},
        {"Format(Null, '0')", ""},
        {"Format(Date(), 'dd.mm.yyyy')", "15.09.2008"},
        {"Format(Date(), 'd/m/yy')", "15.9.08"},
        {"Format(Date(), 'dd mmmm yyyy dddd')", "15 Eylül 2008 Pazartesi"},
        {"Format(Date(), 'ddd, d mmm')", "Pzt, 15 Eyl"},
        {"Format(Now(), 'hh:mm:ss')", "10:30:00"},
        {"Format(#1/1/2008 15:04:00#, 'h:nn AM/PM')", "3:04 ÖS"},
        {"Format(Date(), 'Short Date')", "15.09.2008"},
        {"Format(Date(), 'Long Date')", "15 Eylül 2008 Pazartesi"},
        {"Format('15.09.2008', 'yyyymmdd')", "20080915"},
        {"Format('ali', '>')", "ALİ"},
        {"Format('123', '@@@@@')", "  123"},
        {"Format(True, 'Yes/No')", "Evet"},
        {"Format(Date(), 'yyyy \"yılı\"')", "2008 yılı"},
    });
}

TEST_F(Functions, ChoicesAndNulls) {
    check({
        {"IIf(2 > 1, 'evet', 'hayır')", "evet"},
        {"IIf(Null, 1, 2)", "2"},
        {"IIf(True, 1, 1 / 0)", "1"},
        {"IsNull(Null)", "-1"},
        {"IsNull('')", "0"},
        {"Nz(Null, 5)", "5"},
        {"Nz(Null)", ""},
        {"Nz(Null, Date())", "2008-09-15 00:00:00"},
        {"IIf(False, Date(), 'yok')", "yok"},
        {"IIf(True, Date(), 'yok')", "15.09.2008"},
        {"Choose(2, 'a', 'b', 'c')", "b"},
        {"Choose(9, 'a', 'b')", "∅"},
        {"Switch(1 = 2, 'a', 2 = 2, 'b')", "b"},
        {"Switch(1 = 2, 'a')", "∅"},
        {"True And Not False", "-1"},
        {"Null And False", "0"},
        {"Null Or True", "-1"},
        {"True Xor True", "0"},
        {"False Eqv False", "-1"},
        {"True Imp False", "0"},
        {"1 = Null", "∅"},
        {"3 Between 1 And 5", "-1"},
        {"'b' Between 'A' And 'C'", "-1"},
        {"(2 > 1) + (3 > 1)", "-2"},
        {"-True", "1"},
    });
}

TEST_F(Functions, AggregatesOverAColumn) {
    executeAll(
        {"CREATE TABLE T (Ad TEXT(10), Sayi LONG, Tutar CURRENCY, Gun DATETIME)",
         "INSERT INTO T VALUES ('b', 4, 0.1, #1/2/2008#)", "INSERT INTO T VALUES ('İ', 2, 0.2, #1/1/2008#)",
         "INSERT INTO T VALUES ('ı', NULL, NULL, NULL)", "INSERT INTO T VALUES ('a', 9, 0.3, #1/3/2008#)"});
    const struct {
        const char* expression;
        const char* expected;
        jet::Type type;
    } cases[] = {
        {"Count(*)", "4", jet::Type::Long},
        {"Count(Sayi)", "3", jet::Type::Long},
        {"Sum(Sayi)", "15", jet::Type::Double},
        {"Sum(IIf(Sayi > 3, 1, 0))", "2", jet::Type::Long},
        {"Sum(Tutar)", "0.6000", jet::Type::Currency},
        {"Avg(Tutar)", "0.2000", jet::Type::Currency},
        {"Avg(Sayi)", "5", jet::Type::Double},
        {"Min(Ad)", "a", jet::Type::Text},
        {"Max(Ad)", "İ", jet::Type::Text}, // a b ı i: by the Turkish order, not by bytes
        {"Max(Trim(Ad))", "İ", jet::Type::Text},
        {"Max(Gun)", "2008-01-03 00:00:00", jet::Type::Date},
        {"First(Ad)", "b", jet::Type::Text},
        {"Last(Gun)", "2008-01-03 00:00:00", jet::Type::Date},
        {"Round(StDev(Sayi), 4)", "3.6056", jet::Type::Double},
        {"Var(Sayi)", "13", jet::Type::Double},
        {"Round(VarP(Sayi), 4)", "8.6667", jet::Type::Double},
        {"Nz(Max(Sayi), 0) + 1", "10", jet::Type::Long},
    };
    for (const auto& c : cases) {
        const auto result = session_->query(std::string("SELECT ") + c.expression + " AS x FROM T");
        EXPECT_EQ(shown(result), c.expected) << c.expression;
        EXPECT_EQ(result.columns()[0].type, c.type) << c.expression;
    }
    EXPECT_EQ(rows("SELECT Count(*) FROM T HAVING Sum(Tutar) = 0.6 AND Avg(Tutar) = 0.2"), "4");
    EXPECT_EQ(rows("SELECT Ad FROM T WHERE Tutar * 3 = 0.3 OR Tutar + Tutar = 0.6"), "b; a");
    EXPECT_EQ(rows("SELECT Sum(Sayi), Max(Sayi), Count(*), StDev(Sayi) FROM T WHERE Sayi > 100"), "∅|∅|0|∅");
}

} // namespace
