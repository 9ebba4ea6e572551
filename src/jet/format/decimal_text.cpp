// jet/format/decimal_text.h
#include "jet/format/decimal_text.h"

#include <algorithm>
#include <charconv>
#include <vector>

namespace jet {

namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Position of the decimal separator, npos when there is none; nullopt when the separators make no sense.
std::optional<size_t> decimalPoint(std::string_view number) {
    const size_t last = number.find_last_of(".,");
    if (last == std::string_view::npos) return last;
    const char point = number[last];
    const char other = point == '.' ? ',' : '.';
    const auto same = std::count(number.begin(), number.end(), point);
    const auto others = std::count(number.begin(), number.end(), other);
    if (same > 1 && others > 0) return std::nullopt;
    if (same == 1 && others == 0) return last;
    // Groups of three, counted from the right.
    const char group = same > 1 ? point : other;
    const size_t end = same > 1 ? number.size() : last;
    for (size_t i = 0; i < end; ++i) {
        const bool wantSeparator = i > 0 && (end - i) % 4 == 0;
        if ((number[i] == group) != wantSeparator) return std::nullopt;
    }
    return same > 1 ? std::string_view::npos : last;
}

// A run of 1..`width` digits at the begin of `text`, taken off it.
std::optional<int> takeNumber(std::string_view& text, size_t width) {
    size_t length = 0;
    while (length < text.size() && length < width && isDigit(text[length]))
        ++length;
    int value = 0;
    if (length == 0) return std::nullopt;
    std::from_chars(text.data(), text.data() + length, value);
    text.remove_prefix(length);
    return value;
}

bool takeChar(std::string_view& text, char wanted) {
    if (text.empty() || text.front() != wanted) return false;
    text.remove_prefix(1);
    return true;
}

bool parseTime(std::string_view text, Date::Parts& parts) {
    const auto hour = takeNumber(text, 2);
    if (!hour || !takeChar(text, ':')) return false;
    const auto minute = takeNumber(text, 2);
    if (!minute) return false;
    std::optional<int> second = 0;
    if (takeChar(text, ':')) second = takeNumber(text, 2);
    if (!second || !text.empty() || *hour > 23 || *minute > 59 || *second > 59) return false;
    parts.hour = *hour;
    parts.minute = *minute;
    parts.second = *second;
    return true;
}

bool parseDay(std::string_view& text, Date::Parts& parts) {
    const size_t separator = text.find_first_not_of("0123456789");
    if (separator == std::string_view::npos) return false;
    const char between = text[separator];
    const bool iso = between == '-' && separator == 4;
    if (!iso && (between != '.' && between != '/')) return false;
    const auto first = takeNumber(text, iso ? 4 : 2);
    if (!first || !takeChar(text, between)) return false;
    const auto month = takeNumber(text, 2);
    if (!month || !takeChar(text, between)) return false;
    const size_t lastDigits = std::min(text.find_first_not_of("0123456789"), text.size());
    const auto last = takeNumber(text, 4);
    if (!last || (!iso && lastDigits != 4)) return false;
    parts.year = iso ? *first : *last;
    parts.month = *month;
    parts.day = iso ? *last : *first;
    if (parts.year < 100 || parts.month < 1 || parts.month > 12 || parts.day < 1) return false;
    const Date::Parts back = Date::fromParts({parts.year, parts.month, parts.day, 0, 0, 0}).parts();
    return back.month == parts.month && back.day == parts.day;
}

} // namespace

Decimal Decimal::withScale(size_t wanted) const {
    Decimal result = *this;
    if (scale <= wanted) {
        if (!result.digits.empty()) result.digits.append(wanted - scale, '0');
    } else {
        const size_t dropped = std::min(scale - wanted, digits.size());
        const bool allDropped =
            scale - wanted > digits.size(); // then less than a tenth of the last place is left
        const std::string tail = digits.substr(digits.size() - dropped);
        result.digits.erase(digits.size() - dropped);
        const std::string half = "5" + std::string(tail.empty() ? 0 : tail.size() - 1, '0');
        const bool odd = !result.digits.empty() && (result.digits.back() - '0') % 2 == 1;
        if (!allDropped && !tail.empty() && (tail > half || (tail == half && odd))) {
            size_t i = result.digits.size();
            while (i > 0 && result.digits[i - 1] == '9')
                result.digits[--i] = '0';
            if (i > 0)
                ++result.digits[i - 1];
            else
                result.digits.insert(0, 1, '1');
        }
    }
    result.scale = wanted;
    return result;
}

std::string Decimal::invariantText() const {
    std::string text = digits;
    if (text.size() <= scale) text.insert(0, scale + 1 - text.size(), '0');
    if (scale > 0) text.insert(text.size() - scale, 1, '.');
    return negative ? "-" + text : text;
}

std::optional<Decimal> parseDecimal(std::string_view text) {
    text = trimmed(text);
    Decimal number;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        number.negative = text.front() == '-';
        text.remove_prefix(1);
    }
    const auto point = decimalPoint(text);
    if (!point) return std::nullopt;
    bool any = false;
    for (size_t i = 0; i < text.size(); ++i) {
        if (isDigit(text[i])) {
            any = true;
            number.digits += text[i];
            if (*point != std::string_view::npos && i > *point) ++number.scale;
        } else if (text[i] != '.' && text[i] != ',') {
            return std::nullopt;
        }
    }
    if (!any) return std::nullopt;
    number.digits.erase(0, std::min(number.digits.find_first_not_of('0'), number.digits.size()));
    return number;
}

std::optional<Date> parseDate(std::string_view text) {
    text = trimmed(text);
    Date::Parts parts{1899, 12, 30, 0, 0, 0};
    if (parseTime(text, parts)) return Date::fromParts(parts);
    if (!parseDay(text, parts)) return std::nullopt;
    if (text.empty()) return Date::fromParts(parts);
    if (text.front() != ' ' && text.front() != 'T') return std::nullopt;
    if (!parseTime(trimmed(text.substr(1)), parts)) return std::nullopt;
    return Date::fromParts(parts);
}

} // namespace jet
