// jet/sql/number_mask.cpp — see number_mask.h.
#include "jet/sql/number_mask.h"

#include "jet/sql/date_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace jet::sql {
namespace {

constexpr int kDigits = 15; // a double's sure decimal digits

// |value| as decimal digits: 0.d1d2d3… × 10^exponent.
struct Decimal {
    std::string digits;
    int exponent = 0;

    explicit Decimal(double value) {
        char buffer[40]; // d.ddd…e+xx
        const char* end = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                        std::chars_format::scientific, kDigits - 1)
                              .ptr;
        const char* power = std::find(static_cast<const char*>(buffer), end, 'e') + 1;
        std::from_chars(*power == '+' ? power + 1 : power, end, exponent);
        ++exponent;
        digits = std::string(1, buffer[0]) + std::string(buffer + 2, kDigits - 1);
        if (value == 0) exponent = 0;
    }

    // Keeps `places` digits after the point, half away from zero.
    void roundTo(int places) {
        const int keep = exponent + places;
        if (keep < 0) return clear();
        if (keep >= static_cast<int>(digits.size())) return;
        const bool up = digits[static_cast<size_t>(keep)] >= '5';
        digits.resize(static_cast<size_t>(keep));
        if (!up) return;
        for (size_t i = digits.size(); i-- > 0;) {
            if (digits[i] != '9') {
                ++digits[i];
                return;
            }
            digits[i] = '0';
        }
        digits.insert(digits.begin(), '1');
        ++exponent;
    }

    void clear() {
        digits.clear();
        exponent = 0;
    }

    bool zero() const { return digits.find_first_not_of('0') == std::string::npos; }
    std::string whole() const { // without leading zeros: "" for 0
        std::string text;
        for (int i = 0; i < exponent; ++i)
            text.push_back(digitAt(i));
        return text.substr(std::min(text.find_first_not_of('0'), text.size()));
    }
    char fraction(int place) const { return digitAt(exponent + place); } // place 0 = tenths
    char digitAt(int i) const {
        return i >= 0 && i < static_cast<int>(digits.size()) ? digits[static_cast<size_t>(i)] : '0';
    }
};

// A mask cut into signs: placeholders keep their own char, literals are marked.
struct Sign {
    char c = 0;
    bool literal = false;
    std::string text; // of a literal
};

struct Section {
    std::vector<Sign> signs;
    int wholePlaces = 0, wholeZeros = 0, fractionPlaces = 0, thousands = 0;
    int exponentDigits = 0;
    bool grouped = false, percent = false, exponentPlus = false, hasPoint = false;
};

std::vector<std::string_view> sections(std::string_view mask) {
    std::vector<std::string_view> parts;
    size_t from = 0;
    bool quoted = false;
    for (size_t i = 0; i < mask.size(); ++i) {
        if (mask[i] == '"') quoted = !quoted;
        if (mask[i] == '\\' && !quoted)
            ++i;
        else if (mask[i] == ';' && !quoted) {
            parts.push_back(mask.substr(from, i - from));
            from = i + 1;
        }
    }
    parts.push_back(mask.substr(from));
    return parts;
}

bool isPlace(char c) { return c == '0' || c == '#'; }

Section parse(std::string_view mask) {
    Section section;
    bool exponent = false;
    for (size_t i = 0; i < mask.size(); ++i) {
        const char c = mask[i];
        if (c == '"') {
            size_t close = mask.find('"', i + 1);
            if (close == std::string_view::npos) close = mask.size();
            section.signs.push_back({'"', true, std::string(mask.substr(i + 1, close - i - 1))});
            i = close;
        } else if (c == '\\' && i + 1 < mask.size()) {
            section.signs.push_back({'"', true, std::string(1, mask[++i])});
        } else if (isPlace(c)) {
            if (exponent) {
                ++section.exponentDigits;
                continue;
            }
            section.signs.push_back({c, false, {}});
            if (section.hasPoint)
                ++section.fractionPlaces;
            else {
                ++section.wholePlaces;
                section.wholeZeros += c == '0';
            }
        } else if (c == '.' && !section.hasPoint) {
            section.hasPoint = true;
            section.signs.push_back({'.', false, {}});
        } else if (c == ',') {
            const bool digitFollows = i + 1 < mask.size() && isPlace(mask[i + 1]);
            if (!section.hasPoint && section.wholePlaces > 0 && digitFollows)
                section.grouped = true;
            else if (!section.hasPoint)
                ++section.thousands;
        } else if ((c == 'E' || c == 'e') && i + 1 < mask.size() &&
                   (mask[i + 1] == '+' || mask[i + 1] == '-')) {
            exponent = true;
            section.exponentPlus = mask[++i] == '+';
            section.signs.push_back({'E', false, {}});
        } else {
            section.percent |= c == '%';
            section.signs.push_back({'"', true, std::string(1, c)});
        }
    }
    return section;
}

class Writer {
  public:
    Writer(const Section& section, const Decimal& decimal, int exponent)
        : section_(section), decimal_(decimal), exponent_(exponent), whole_(decimal.whole()) {}

    std::string run() {
        placesLeft_ = section_.wholePlaces;
        bool pointPassed = false;
        int fraction = 0;
        const int lastFraction = lastShownFraction();
        for (const Sign& sign : section_.signs) {
            if (sign.literal)
                out_ += sign.text;
            else if (sign.c == '.') {
                if (section_.wholePlaces == 0) overflowDigits();
                pointPassed = true;
                out_.push_back(',');
            } else if (sign.c == 'E')
                exponent();
            else if (pointPassed) {
                if (fraction <= lastFraction) out_.push_back(decimal_.fraction(fraction));
                ++fraction;
            } else
                wholePlace(sign.c);
        }
        return std::move(out_);
    }

  private:
    // The last fraction place to show: zeros always, "#" only when a digit stands there or after it.
    int lastShownFraction() const {
        int place = 0, last = -1;
        bool passed = false;
        for (const Sign& sign : section_.signs) {
            passed |= !sign.literal && sign.c == '.';
            if (!passed || sign.literal || !isPlace(sign.c)) continue;
            if (sign.c == '0' || decimal_.fraction(place) != '0') last = place;
            ++place;
        }
        return last;
    }

    void wholePlace(char place) {
        if (placesLeft_ == section_.wholePlaces) overflowDigits();
        const int digitsLeft = static_cast<int>(whole_.size());
        if (placesLeft_ <= digitsLeft)
            digit(whole_[whole_.size() - static_cast<size_t>(placesLeft_)], placesLeft_);
        else if (place == '0' || zeroSeen_)
            digit('0', placesLeft_);
        zeroSeen_ |= place == '0';
        --placesLeft_;
    }

    // Digits for which the mask has no place stand before its first place.
    void overflowDigits() {
        for (int left = static_cast<int>(whole_.size()); left > section_.wholePlaces; --left)
            digit(whole_[whole_.size() - static_cast<size_t>(left)], left);
    }

    void digit(char c, int digitsToPoint) {
        out_.push_back(c);
        if (section_.grouped && digitsToPoint > 1 && digitsToPoint % 3 == 1) out_.push_back('.');
    }

    void exponent() {
        char buffer[16];
        std::snprintf(buffer, sizeof buffer, "E%s%0*d",
                      exponent_ < 0           ? "-"
                      : section_.exponentPlus ? "+"
                                              : "",
                      section_.exponentDigits, std::abs(exponent_));
        out_ += buffer;
    }

    const Section& section_;
    const Decimal& decimal_;
    int exponent_;
    std::string whole_, out_;
    int placesLeft_ = 0;
    bool zeroSeen_ = false;
};

} // namespace

std::string formatNumber(double value, std::string_view mask) {
    if (mask.empty() || !std::isfinite(value)) return numberText(value);
    const auto parts = sections(mask);
    const bool ownNegative = value < 0 && parts.size() > 1 && !parts[1].empty();
    const bool ownZero = value == 0 && parts.size() > 2 && !parts[2].empty();
    const Section section = parse(ownZero ? parts[2] : ownNegative ? parts[1] : parts[0]);
    Decimal decimal(value);
    if (!decimal.zero()) decimal.exponent += (section.percent ? 2 : 0) - 3 * section.thousands;
    int exponent = 0;
    if (section.exponentDigits > 0 && !decimal.zero()) {
        exponent = decimal.exponent - std::max(section.wholePlaces, 1);
        decimal.exponent -= exponent;
    }
    decimal.roundTo(section.fractionPlaces);
    const bool minus = value < 0 && !ownNegative && !decimal.zero();
    return (minus ? "-" : "") + Writer(section, decimal, exponent).run();
}

} // namespace jet::sql
