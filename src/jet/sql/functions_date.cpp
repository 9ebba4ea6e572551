// jet/sql/functions_date.cpp — DateSerial, DateAdd, DateDiff, DatePart, Year … on Jet's day count.
#include "jet/sql/function_support.h"

#include "jet/index/sort_key.h"
#include "jet/sql/date_text.h"

#include <cmath>

namespace jet::sql {
namespace {

constexpr double kFirstDay = -657434, kLastDay = 2958465; // 1.1.0100 and 31.12.9999
constexpr int64_t kSecondsPerDay = 86400;

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

Interval intervalOf(sqlite3_value* value, const char* function) {
    const std::string text = lowerText(textOf(value), kGeneralSort);
    constexpr std::pair<std::string_view, Interval> kNames[] = {
        {"yyyy", Interval::Year},   {"q", Interval::Quarter}, {"m", Interval::Month},
        {"y", Interval::DayOfYear}, {"d", Interval::Day},     {"w", Interval::Weekday},
        {"ww", Interval::Week},     {"h", Interval::Hour},    {"n", Interval::Minute},
        {"s", Interval::Second},
    };
    for (const auto& [name, interval] : kNames)
        if (text == name) return interval;
    throwBadArgument(function);
}

void giveDate(sqlite3_context* call, Date date) {
    if (!(date.days >= kFirstDay && date.days < kLastDay + 1)) throwOverflow();
    sqlite3_result_double(call, date.days);
}

int64_t floorDivide(int64_t a, int64_t b) { return a / b - ((a % b != 0 && (a < 0) != (b < 0)) ? 1 : 0); }

// Seconds since day 0, counting straight on (a negative day's time of day counts forward within the day).
int64_t secondsOf(Date date) {
    const double whole = std::trunc(date.days);
    return static_cast<int64_t>(whole) * kSecondsPerDay +
           static_cast<int64_t>(
               std::llround(std::fabs(date.days - whole) * static_cast<double>(kSecondsPerDay)));
}

Date fromSeconds(int64_t seconds) {
    const int64_t day = floorDivide(seconds, kSecondsPerDay);
    const double time =
        static_cast<double>(seconds - day * kSecondsPerDay) / static_cast<double>(kSecondsPerDay);
    return Date{static_cast<double>(day) + (day < 0 ? -time : time)};
}

int64_t dayOf(Date date) { return floorDivide(secondsOf(date), kSecondsPerDay); }

// Months and days outside their range move the year, month on, as DateSerial does.
Date serial(int64_t year, int64_t month, int64_t day) {
    year += floorDivide(month - 1, 12);
    month = month - 1 - floorDivide(month - 1, 12) * 12 + 1;
    if (year < 100 || year > 9999 || day < -4'000'000 || day > 4'000'000) throwOverflow();
    const Date first = Date::fromParts({static_cast<int>(year), static_cast<int>(month), 1, 0, 0, 0});
    return Date{first.days + static_cast<double>(day - 1)};
}

Date addMonths(Date date, int64_t months) {
    const Date::Parts p = date.parts();
    const int64_t month = p.year * int64_t{12} + p.month - 1 + months;
    const int64_t year = floorDivide(month, 12);
    if (year < 100 || year > 9999) throwOverflow();
    const int inYear = static_cast<int>(month - year * 12) + 1;
    const int day = std::min(p.day, daysInMonth(static_cast<int>(year), inYear));
    return Date::fromParts({static_cast<int>(year), inYear, day, p.hour, p.minute, p.second});
}

void dateAdd(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const Interval interval = intervalOf(args[0], "DateAdd");
        const int64_t n = longOf(args[1]);
        const Date date = dateOf(args[2]);
        switch (interval) {
        case Interval::Year: return giveDate(call, addMonths(date, n * 12));
        case Interval::Quarter: return giveDate(call, addMonths(date, n * 3));
        case Interval::Month: return giveDate(call, addMonths(date, n));
        case Interval::Hour: return giveDate(call, fromSeconds(secondsOf(date) + n * 3600));
        case Interval::Minute: return giveDate(call, fromSeconds(secondsOf(date) + n * 60));
        case Interval::Second: return giveDate(call, fromSeconds(secondsOf(date) + n));
        case Interval::Week: return giveDate(call, fromSeconds(secondsOf(date) + n * 7 * kSecondsPerDay));
        default: return giveDate(call, fromSeconds(secondsOf(date) + n * kSecondsPerDay));
        }
    });
}

int64_t weekBegin(Date date, int firstDay) { return dayOf(date) - (weekdayOf(date) - firstDay + 7) % 7; }

int firstDayArgument(int count, sqlite3_value** args, int at, const char* function) {
    const int32_t day = count > at ? longOf(args[at]) : 1;
    if (day < 0 || day > 7) throwBadArgument(function);
    return day == 0 ? 2 : day; // 0: as the system has it; in Türkiye the week begins on Monday
}

void dateDiff(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const Interval interval = intervalOf(args[0], "DateDiff");
        const Date a = dateOf(args[1]), b = dateOf(args[2]);
        const Date::Parts from = a.parts(), to = b.parts();
        const int64_t seconds = secondsOf(b) - secondsOf(a), days = dayOf(b) - dayOf(a);
        int64_t result = 0;
        switch (interval) {
        case Interval::Year: result = to.year - from.year; break;
        case Interval::Quarter:
            result = (to.year * 4 + (to.month - 1) / 3) - (from.year * 4 + (from.month - 1) / 3);
            break;
        case Interval::Month: result = (to.year - from.year) * 12 + to.month - from.month; break;
        case Interval::Day:
        case Interval::DayOfYear: result = days; break;
        case Interval::Weekday: result = days / 7; break;
        case Interval::Week: {
            const int first = firstDayArgument(count, args, 3, "DateDiff");
            result = (weekBegin(b, first) - weekBegin(a, first)) / 7;
            break;
        }
        case Interval::Hour:
            result = floorDivide(secondsOf(b), 3600) - floorDivide(secondsOf(a), 3600);
            break;
        case Interval::Minute: result = floorDivide(secondsOf(b), 60) - floorDivide(secondsOf(a), 60); break;
        case Interval::Second: result = seconds; break;
        }
        if (result != static_cast<int32_t>(result)) throwOverflow();
        sqlite3_result_int64(call, result);
    });
}

// firstWeek: 1 = the week of 1 January, 2 = the first with four days in the year, 3 = the first whole one.
int weekOfYear(Date date, int firstDay, int firstWeek) {
    const auto startOf = [&](int year) {
        const Date newYear = serial(year, 1, 1);
        const int64_t begin = weekBegin(newYear, firstDay), inside = begin + 7 - dayOf(newYear);
        const bool counts = firstWeek == 1 || inside == 7 || (firstWeek == 2 && inside >= 4);
        return counts ? begin : begin + 7;
    };
    const int year = date.parts().year;
    int64_t start = startOf(year);
    if (dayOf(date) < start)
        start = startOf(year - 1);
    else if (firstWeek != 1 && year < 9999 && dayOf(date) >= startOf(year + 1))
        start = startOf(year + 1);
    return static_cast<int>((dayOf(date) - start) / 7) + 1;
}

void datePart(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const Interval interval = intervalOf(args[0], "DatePart");
        const Date date = dateOf(args[1]);
        const Date::Parts p = date.parts();
        const int first = firstDayArgument(count, args, 2, "DatePart");
        const int firstWeek = count > 3 ? longOf(args[3]) : 1;
        int result = 0;
        switch (interval) {
        case Interval::Year: result = p.year; break;
        case Interval::Quarter: result = (p.month - 1) / 3 + 1; break;
        case Interval::Month: result = p.month; break;
        case Interval::DayOfYear:
            result = static_cast<int>(dayOf(date) - dayOf(serial(p.year, 1, 1))) + 1;
            break;
        case Interval::Day: result = p.day; break;
        case Interval::Weekday: result = (weekdayOf(date) - first + 7) % 7 + 1; break;
        case Interval::Week: result = weekOfYear(date, first, firstWeek == 0 ? 1 : firstWeek); break;
        case Interval::Hour: result = p.hour; break;
        case Interval::Minute: result = p.minute; break;
        case Interval::Second: result = p.second; break;
        }
        sqlite3_result_int(call, result);
    });
}

template <int Date::Parts::*Member> void partOf(sqlite3_context* call, int, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, 1, args)) sqlite3_result_int(call, dateOf(args[0]).parts().*Member);
    });
}

void weekday(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const int first = firstDayArgument(count, args, 1, "Weekday");
        sqlite3_result_int(call, (weekdayOf(dateOf(args[0])) - first + 7) % 7 + 1);
    });
}

NameForm formArgument(int count, sqlite3_value** args) {
    return count > 1 && longOf(args[1]) != 0 ? NameForm::Short : NameForm::Long;
}

void weekdayNameOf(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const int32_t day = longOf(args[0]);
        if (day < 1 || day > 7) throwBadArgument("WeekdayName");
        const int first = count > 2 ? firstDayArgument(count, args, 2, "WeekdayName") : 2;
        giveText(call, weekdayName((day - 1 + first - 1) % 7 + 1, formArgument(count, args)));
    });
}

void monthNameOf(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const int32_t month = longOf(args[0]);
        if (month < 1 || month > 12) throwBadArgument("MonthName");
        giveText(call, monthName(month, formArgument(count, args)));
    });
}

void dateSerial(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        int64_t year = longOf(args[0]);
        if (year >= 0 && year < 100) year += year < 30 ? 2000 : 1900;
        giveDate(call, serial(year, longOf(args[1]), longOf(args[2])));
    });
}

void timeSerial(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        giveDate(call, fromSeconds(int64_t{longOf(args[0])} * 3600 + int64_t{longOf(args[1])} * 60 +
                                   longOf(args[2])));
    });
}

void cDate(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, count, args)) giveDate(call, dateOf(args[0]));
    });
}

// A text that meets a date in a comparison; one that is no date equals nothing.
void dateIfAnyOf(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        if (const auto date = dateIfAny(args[0])) return sqlite3_result_double(call, date->days);
        sqlite3_result_null(call);
    });
}

void dateValue(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, count, args)) giveDate(call, Date{static_cast<double>(dayOf(dateOf(args[0])))});
    });
}

void timeValue(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const int64_t seconds = secondsOf(dateOf(args[0]));
        giveDate(call, fromSeconds(seconds - floorDivide(seconds, kSecondsPerDay) * kSecondsPerDay));
    });
}

// Second argument: not 0 when the first is known to be a date.
void isDate(sqlite3_context* call, int, sqlite3_value** args) {
    guarded(call, [&] {
        const bool text = sqlite3_value_type(args[0]) == SQLITE_TEXT && parseDateText(textOf(args[0]));
        giveBoolean(call, text || (!isNull(args[0]) && sqlite3_value_int(args[1]) != 0));
    });
}

void dateToText(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        if (sqlite3_value_type(args[0]) == SQLITE_TEXT) return sqlite3_result_value(call, args[0]);
        giveText(call, dateText(dateOf(args[0])));
    });
}

void now(sqlite3_context* call, int, sqlite3_value**) {
    sqlite3_result_double(call, contextOf(call).now.days);
}

void today(sqlite3_context* call, int, sqlite3_value**) {
    sqlite3_result_double(call, static_cast<double>(dayOf(contextOf(call).now)));
}

void timeNow(sqlite3_context* call, int, sqlite3_value**) {
    const int64_t seconds = secondsOf(contextOf(call).now);
    sqlite3_result_double(call,
                          fromSeconds(seconds - floorDivide(seconds, kSecondsPerDay) * kSecondsPerDay).days);
}

} // namespace

void registerDateFunctions(sqlite3* db, FunctionContext& context) {
    struct Entry {
        const char* name;
        Function function;
    };
    constexpr Entry kEntries[] = {
        {"jet_dateadd", dateAdd},
        {"jet_datediff", dateDiff},
        {"jet_datepart", datePart},
        {"jet_year", partOf<&Date::Parts::year>},
        {"jet_month", partOf<&Date::Parts::month>},
        {"jet_day", partOf<&Date::Parts::day>},
        {"jet_hour", partOf<&Date::Parts::hour>},
        {"jet_minute", partOf<&Date::Parts::minute>},
        {"jet_second", partOf<&Date::Parts::second>},
        {"jet_weekday", weekday},
        {"jet_weekdayname", weekdayNameOf},
        {"jet_monthname", monthNameOf},
        {"jet_dateserial", dateSerial},
        {"jet_timeserial", timeSerial},
        {"jet_cdate", cDate},
        {"jet_date_if_any", dateIfAnyOf},
        {"jet_datevalue", dateValue},
        {"jet_timevalue", timeValue},
        {"jet_isdate", isDate},
        {"jet_date_text", dateToText},
        {"jet_now", now},
        {"jet_date", today},
        {"jet_time", timeNow},
    };
    for (const Entry& entry : kEntries)
        addFunction(db, context, entry.name, entry.function);
}

} // namespace jet::sql
