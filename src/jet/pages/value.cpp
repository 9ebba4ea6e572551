// jet/value.h: conversions between the value types and their invariant text forms.
#include "jet/value.h"

#include "jet/error.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace jet {

namespace {

constexpr double kFirstDay = -657434;                // 0100-01-01
constexpr double kLastDay = 2958465;                 // 9999-12-31
constexpr double kLargestAmount = 922337203685477.5; // the largest double whose ten-thousandths fit
constexpr int64_t kSecondsPerDay = 86400;
constexpr int64_t kUnixEpochDay = 25569;    // 1970-01-01 in Jet's count
constexpr int64_t kDaysBefore1970 = 719468; // since 0000-03-01, where the civil arithmetic starts

// Days since 1970-01-01 of a date of the Gregorian calendar, extended to both sides; month 1..12.
int64_t daysFromCivil(int64_t year, int month, int64_t day) {
    year -= month <= 2;
    const int64_t era = (year >= 0 ? year : year - 399) / 400;
    const int64_t yearOfEra = year - era * 400;
    const int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear + day - 1 -
           kDaysBefore1970;
}

void civilFromDays(int64_t days, int& year, int& month, int& day) {
    days += kDaysBefore1970;
    const int64_t era = (days >= 0 ? days : days - 146096) / 146097;
    const int64_t dayOfEra = days - era * 146097;
    const int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const int64_t shifted = (5 * dayOfYear + 2) / 153; // 0 = March
    day = static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1);
    month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
    year = static_cast<int>(yearOfEra + era * 400 + (month <= 2));
}

int64_t floorDiv(int64_t a, int64_t b) { return a / b - (a % b != 0 && (a % b < 0) != (b < 0)); }

[[noreturn]] void notANumber() { throw Error(Err::Conversion, "Değer sayıya çevrilemiyor."); }
[[noreturn]] void outOfRange() { throw Error(Err::Conversion, "Sayı, izin verilen sınırların dışında."); }

int64_t roundToInt(double v) {
    const double rounded = std::nearbyint(v);
    if (!(rounded >= -9223372036854775808.0 && rounded < 9223372036854775808.0)) outOfRange();
    return static_cast<int64_t>(rounded);
}

double parseNumber(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) notANumber();
    text = text.substr(first, text.find_last_not_of(blanks) - first + 1);
    if (text.front() == '+' && text.size() > 1 && text[1] != '-') text.remove_prefix(1);
    double v = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), v);
    if (error == std::errc::result_out_of_range) outOfRange();
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(v)) notANumber();
    return v;
}

// The shortest text that reads back as the same number; an exponent only below 1e-5 and from 1e15 on.
template <class T> std::string numberText(T v) {
    if (v == 0) return "0";
    const T size = std::abs(v);
    const bool plain = size >= T(1e-5) && size < T(1e15);
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, v,
                                      plain ? std::chars_format::fixed : std::chars_format::scientific);
    return std::string(buffer, result.ptr);
}

void appendHex(std::string& out, uint8_t byte) {
    constexpr char digits[] = "0123456789ABCDEF";
    out += digits[byte >> 4];
    out += digits[byte & 15];
}

// Digits with the point `scale` places from the right: ("5", 3) is "0.005".
std::string withPoint(std::string digits, size_t scale, bool negative) {
    if (digits.size() <= scale) digits.insert(0, scale + 1 - digits.size(), '0');
    if (scale > 0) digits.insert(digits.size() - scale, 1, '.');
    if (negative) digits.insert(0, 1, '-');
    return digits;
}

// Divides the magnitude by ten in place and returns the remainder.
uint32_t divideByTen(std::array<uint32_t, 4>& words) {
    uint64_t rest = 0;
    for (uint32_t& word : words) {
        const uint64_t part = (rest << 32) | word;
        word = static_cast<uint32_t>(part / 10);
        rest = part % 10;
    }
    return static_cast<uint32_t>(rest);
}

double numericToDouble(const Numeric& n) {
    double v = 0;
    for (const uint32_t word : n.magnitude)
        v = v * 4294967296.0 + word;
    v /= std::pow(10.0, n.scale);
    return n.negative ? -v : v;
}

template <class... F> struct Overloaded : F... { using F::operator()...; };
template <class... F> Overloaded(F...) -> Overloaded<F...>;

} // namespace

// Whole and fraction apart: their product with ten thousand would lose the last digits of large amounts.
Currency Currency::fromDouble(double amount) {
    double whole = 0;
    const double fraction = std::modf(amount, &whole);
    if (!(std::abs(amount) <= kLargestAmount))
        throw Error(Err::Conversion, "Tutar, para alanının sınırlarının dışında.");
    return {static_cast<int64_t>(whole) * 10000 + static_cast<int64_t>(std::nearbyint(fraction * 10000.0))};
}

std::string Currency::toText() const {
    const bool negative = tenThousandths < 0;
    const uint64_t size =
        negative ? 0 - static_cast<uint64_t>(tenThousandths) : static_cast<uint64_t>(tenThousandths);
    return withPoint(std::to_string(size), 4, negative);
}

Date Date::fromParts(const Parts& p) {
    const int64_t months = int64_t{p.month} - 1;
    const int64_t year = p.year + floorDiv(months, 12);
    const int month = static_cast<int>(months - floorDiv(months, 12) * 12) + 1;
    const int64_t seconds = int64_t{p.hour} * 3600 + int64_t{p.minute} * 60 + p.second;
    const int64_t day = daysFromCivil(year, month, p.day) + kUnixEpochDay + floorDiv(seconds, kSecondsPerDay);
    const int64_t timeOfDay = seconds - floorDiv(seconds, kSecondsPerDay) * kSecondsPerDay;
    const double fraction = static_cast<double>(timeOfDay) / static_cast<double>(kSecondsPerDay);
    return {static_cast<double>(day) + (day < 0 ? -fraction : fraction)};
}

// A day count that no date has (damaged file) reads as the nearest date between the years 100 and 9999.
Date::Parts Date::parts() const {
    double whole = 0;
    double fraction = std::abs(std::modf(std::isnan(days) ? 0.0 : days, &whole));
    if (whole < kFirstDay || whole > kLastDay) {
        whole = std::clamp(whole, kFirstDay, kLastDay);
        fraction = 0;
    }
    auto day = static_cast<int64_t>(whole);
    auto seconds = static_cast<int>(std::lround(fraction * static_cast<double>(kSecondsPerDay)));
    if (seconds == kSecondsPerDay) {
        ++day;
        seconds = 0;
    }
    Parts p{};
    civilFromDays(day - kUnixEpochDay, p.year, p.month, p.day);
    p.hour = seconds / 3600;
    p.minute = seconds / 60 % 60;
    p.second = seconds % 60;
    return p;
}

std::string Date::toIso() const {
    const Parts p = parts();
    std::string out;
    const auto add = [&out](int v, size_t width, const char* after) {
        const std::string digits = std::to_string(v);
        out.append(width > digits.size() ? width - digits.size() : 0, '0').append(digits).append(after);
    };
    add(p.year, 4, "-");
    add(p.month, 2, "-");
    add(p.day, 2, " ");
    add(p.hour, 2, ":");
    add(p.minute, 2, ":");
    add(p.second, 2, "");
    return out;
}

std::string Guid::toText() const {
    static constexpr uint8_t order[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    std::string out = "{";
    for (size_t i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) out += '-';
        appendHex(out, bytes[order[i]]);
    }
    return out + "}";
}

std::string Numeric::toText() const {
    std::array<uint32_t, 4> rest = magnitude;
    const std::array<uint32_t, 4> zero{};
    std::string digits;
    while (rest != zero)
        digits += static_cast<char>('0' + divideByTen(rest));
    std::reverse(digits.begin(), digits.end());
    const bool isZero = digits.empty();
    return withPoint(isZero ? "0" : digits, scale, negative && !isZero);
}

int64_t Value::toInt() const {
    return std::visit(
        Overloaded{[](std::monostate) -> int64_t { return 0; }, [](bool v) -> int64_t { return v ? -1 : 0; },
                   [](int32_t v) -> int64_t { return v; },
                   [](Currency v) -> int64_t {
                       const int64_t whole = floorDiv(v.tenThousandths, 10000);
                       const int64_t rest = v.tenThousandths - whole * 10000;
                       return whole + (rest > 5000 || (rest == 5000 && whole % 2 != 0));
                   },
                   [](float v) { return roundToInt(v); }, [](double v) { return roundToInt(v); },
                   [](Date v) { return roundToInt(v.days); },
                   [](const std::string& v) { return roundToInt(parseNumber(v)); },
                   [](const Bytes&) -> int64_t { notANumber(); },
                   [](const Guid&) -> int64_t { notANumber(); },
                   [](const Numeric& v) { return roundToInt(numericToDouble(v)); }},
        data_);
}

double Value::toDouble() const {
    return std::visit(
        Overloaded{[](std::monostate) { return 0.0; }, [](bool v) { return v ? -1.0 : 0.0; },
                   [](int32_t v) { return static_cast<double>(v); }, [](Currency v) { return v.toDouble(); },
                   [](float v) { return static_cast<double>(v); }, [](double v) { return v; },
                   [](Date v) { return v.days; }, [](const std::string& v) { return parseNumber(v); },
                   [](const Bytes&) -> double { notANumber(); }, [](const Guid&) -> double { notANumber(); },
                   [](const Numeric& v) { return numericToDouble(v); }},
        data_);
}

bool Value::toBool() const {
    if (const bool* v = get<bool>()) return *v;
    return toDouble() != 0;
}

std::string Value::toText() const {
    return std::visit(
        Overloaded{[](std::monostate) { return std::string(); },
                   [](bool v) { return std::string(v ? "-1" : "0"); },
                   [](int32_t v) { return std::to_string(v); }, [](Currency v) { return v.toText(); },
                   [](float v) { return numberText(v); }, [](double v) { return numberText(v); },
                   [](Date v) { return v.toIso(); }, [](const std::string& v) { return v; },
                   [](const Bytes& v) {
                       std::string out;
                       for (const uint8_t byte : v)
                           appendHex(out, byte);
                       return out;
                   },
                   [](const Guid& v) { return v.toText(); }, [](const Numeric& v) { return v.toText(); }},
        data_);
}

} // namespace jet
