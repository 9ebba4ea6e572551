// jet/sql/date_text.cpp — see date_text.h.
#include "jet/sql/date_text.h"

#include "jet/format/decimal_text.h"
#include "jet/index/sort_key.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace jet::sql {
namespace {

constexpr std::array<std::string_view, 12> kMonths = {"Ocak",  "Şubat",   "Mart",   "Nisan",
                                                      "Mayıs", "Haziran", "Temmuz", "Ağustos",
                                                      "Eylül", "Ekim",    "Kasım",  "Aralık"};
constexpr std::array<std::string_view, 7> kWeekdays = {"Pazar",    "Pazartesi", "Salı",     "Çarşamba",
                                                       "Perşembe", "Cuma",      "Cumartesi"};
constexpr std::array<std::string_view, 12> kShortMonths = {"Oca", "Şub", "Mar", "Nis", "May", "Haz",
                                                           "Tem", "Ağu", "Eyl", "Eki", "Kas", "Ara"};
constexpr std::array<std::string_view, 7> kShortWeekdays = {"Paz", "Pzt", "Sal", "Çar", "Per", "Cum", "Cmt"};
constexpr int kFirstYear = 100, kLastYear = 9999;
constexpr int kTwoDigitPivot = 30; // 00..29 are 20xx, 30..99 are 19xx

enum class DayOrder { DayFirst, MonthFirst };

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view trimmed(std::string_view text) {
    const auto from = text.find_first_not_of(" \t");
    if (from == std::string_view::npos) return {};
    return text.substr(from, text.find_last_not_of(" \t") - from + 1);
}

class DateScanner {
  public:
    DateScanner(std::string_view text, DayOrder order) : rest_(trimmed(text)), order_(order) {}

    std::optional<Date> run() {
        if (rest_.empty() || rest_.size() > 60) return {};
        Date::Parts parts{1899, 12, 30, 0, 0, 0};
        const bool hasDate = !looksLikeTime();
        if (hasDate) {
            if (!date(parts)) return {};
            if (!rest_.empty() && rest_.front() == 'T') rest_.remove_prefix(1);
            rest_ = trimmed(rest_);
        }
        if (!rest_.empty() && !time(parts)) return {};
        return Date::fromParts(parts);
    }

  private:
    bool looksLikeTime() const {
        size_t i = 0;
        while (i < rest_.size() && isDigit(rest_[i]))
            ++i;
        while (i < rest_.size() && rest_[i] == ' ')
            ++i;
        if (i == 0 || i >= rest_.size()) return false;
        const std::string_view tail = rest_.substr(i);
        return tail[0] == ':' || halfDay(tail) >= 0;
    }

    // 0 = before noon, 1 = after noon, -1 = none.
    static int halfDay(std::string_view text) {
        const std::string lower = lowerText(text, kGeneralSort);
        if (lower == "am" || lower == "öö") return 0;
        return lower == "pm" || lower == "ös" ? 1 : -1;
    }

    bool number(int& value, int& digits) {
        digits = 0;
        value = 0;
        while (!rest_.empty() && isDigit(rest_.front()) && digits < 6) {
            value = value * 10 + (rest_.front() - '0');
            rest_.remove_prefix(1);
            ++digits;
        }
        return digits > 0;
    }

    bool separator(char& found) {
        rest_ = trimmed(rest_);
        if (rest_.empty() || std::string_view("./-").find(rest_.front()) == std::string_view::npos)
            return false;
        found = rest_.front();
        rest_.remove_prefix(1);
        rest_ = trimmed(rest_);
        return true;
    }

    bool date(Date::Parts& parts) {
        int first, second, third, firstDigits, digits;
        char mark = 0, secondMark = 0;
        if (!number(first, firstDigits)) return false;
        if (!separator(mark)) return namedMonth(first, parts);
        if (!number(second, digits)) return namedMonth(first, parts);
        if (!separator(secondMark) || mark != secondMark || !number(third, digits)) return false;
        if (firstDigits > 2) return set(parts, first, firstDigits, second, third);
        const bool monthFirst = order_ == DayOrder::MonthFirst && mark != '.';
        int month = monthFirst ? first : second, day = monthFirst ? second : first;
        if (month > 12 && day <= 12) std::swap(month, day);
        return set(parts, third, digits, month, day);
    }

    // "15 Eylül 2008"
    bool namedMonth(int day, Date::Parts& parts) {
        rest_ = trimmed(rest_);
        size_t end = 0;
        while (end < rest_.size() && !isDigit(rest_[end]) && rest_[end] != ' ' && rest_[end] != '-')
            ++end;
        const std::string word = lowerText(rest_.substr(0, end), kTurkishSort);
        rest_.remove_prefix(end);
        if (!rest_.empty() && rest_.front() == '-') rest_.remove_prefix(1);
        rest_ = trimmed(rest_);
        for (int month = 1; month <= 12; ++month)
            if (word == lowerText(monthName(month), kTurkishSort)) {
                int year, digits;
                return number(year, digits) && set(parts, year, digits, month, day);
            }
        return false;
    }

    static bool set(Date::Parts& parts, int year, int digits, int month, int day) {
        if (digits <= 2) year += year < kTwoDigitPivot ? 2000 : 1900;
        if (year < kFirstYear || year > kLastYear || month < 1 || month > 12 || day < 1 ||
            day > daysInMonth(year, month))
            return false;
        parts.year = year;
        parts.month = month;
        parts.day = day;
        return true;
    }

    bool time(Date::Parts& parts) {
        int digits;
        if (!number(parts.hour, digits)) return false;
        if (accept(':') && (!number(parts.minute, digits) || (accept(':') && !number(parts.second, digits))))
            return false;
        rest_ = trimmed(rest_);
        if (!rest_.empty()) {
            const int half = halfDay(rest_);
            if (half < 0 || parts.hour < 1 || parts.hour > 12) return false;
            parts.hour = parts.hour % 12 + 12 * half;
        }
        return parts.hour < 24 && parts.minute < 60 && parts.second < 60;
    }

    bool accept(char c) {
        if (rest_.empty() || rest_.front() != c) return false;
        rest_.remove_prefix(1);
        return true;
    }

    std::string_view rest_;
    DayOrder order_;
};

} // namespace

std::optional<Date> parseDateLiteral(std::string_view text) {
    return DateScanner(text, DayOrder::MonthFirst).run();
}
std::optional<Date> parseDateText(std::string_view text) {
    return DateScanner(text, DayOrder::DayFirst).run();
}

std::string dateText(Date date) {
    const Date::Parts p = date.parts();
    char buffer[64];
    const bool hasTime = p.hour || p.minute || p.second;
    if (hasTime && p.year == 1899 && p.month == 12 && p.day == 30)
        std::snprintf(buffer, sizeof buffer, "%02d:%02d:%02d", p.hour, p.minute, p.second);
    else if (hasTime)
        std::snprintf(buffer, sizeof buffer, "%02d.%02d.%04d %02d:%02d:%02d", p.day, p.month, p.year, p.hour,
                      p.minute, p.second);
    else
        std::snprintf(buffer, sizeof buffer, "%02d.%02d.%04d", p.day, p.month, p.year);
    return buffer;
}

bool isLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int daysInMonth(int year, int month) {
    constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeapYear(year) ? 29 : kDays[static_cast<size_t>(month - 1)];
}

std::string_view monthName(int month, NameForm form) {
    return (form == NameForm::Short ? kShortMonths : kMonths)[static_cast<size_t>(month - 1)];
}
std::string_view weekdayName(int day, NameForm form) {
    return (form == NameForm::Short ? kShortWeekdays : kWeekdays)[static_cast<size_t>(day - 1)];
}

int weekdayOf(Date date) {
    // Day 0 is 30 December 1899, a Saturday.
    const auto day = static_cast<int64_t>(date.days < 0 ? std::ceil(date.days) : std::floor(date.days));
    return static_cast<int>(((day + 6) % 7 + 7) % 7) + 1;
}

std::optional<double> parseNumber(std::string_view text) {
    text = trimmed(text);
    if (text.empty() || text.size() > 400) return {};
    const auto decimal = parseDecimal(text);
    const std::string plain = decimal ? decimal->invariantText() : std::string(text);
    const char first = plain[plain[0] == '-' && plain.size() > 1];
    if (!isDigit(first) && first != '.') return {}; // no "inf", "nan"
    double value = 0;
    const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
    if (error != std::errc() || end != plain.data() + plain.size() || !std::isfinite(value)) return {};
    return value;
}

double leadingNumber(std::string_view text) {
    std::string plain; // Val skips spaces anywhere
    for (const char c : text) {
        if (plain.size() > 64) break;
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r') plain.push_back(c);
    }
    const char* from = plain.data();
    const char* end = plain.data() + plain.size();
    if (from != end && *from == '+') ++from;
    const char* digits = from != end && *from == '-' ? from + 1 : from;
    if (digits == end || (!isDigit(*digits) && *digits != '.')) return 0; // no "inf", "nan"
    double value = 0;
    const auto result = std::from_chars(from, end, value);
    return result.ec == std::errc() ? value : 0;
}

std::string numberText(double value) {
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15).ptr;
    std::string text(buffer, end);
    std::replace(text.begin(), text.end(), '.', ',');
    std::replace(text.begin(), text.end(), 'e', 'E');
    return text;
}

} // namespace jet::sql
