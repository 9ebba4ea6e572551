// table/default_value.cpp — see default_value.h.
#include "jet/table/default_value.h"

#include "jet/format/row_codec.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace jet {
namespace {

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

// ASCII lower case without blanks: function and constant names of expressions are ASCII.
std::string keyword(std::string_view text) {
    std::string word;
    for (const char c : text)
        if (c != ' ') word += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return word;
}

// "text" with doubled quotes inside; nullopt when the quotes do not close at the very end.
std::optional<std::string> quoted(std::string_view text) {
    if (text.size() < 2 || (text.front() != '"' && text.front() != '\'')) return std::nullopt;
    const char quote = text.front();
    std::string inner;
    size_t at = 1;
    for (; at < text.size(); ++at) {
        if (text[at] == quote) {
            if (at + 1 == text.size()) return inner;
            if (text[++at] != quote) return std::nullopt;
        }
        inner += text[at];
    }
    return std::nullopt;
}

Value number(std::string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    int32_t whole = 0;
    auto end = std::from_chars(text.data(), text.data() + text.size(), whole);
    if (end.ec == std::errc() && end.ptr == text.data() + text.size()) return whole;
    double real = 0;
    end = std::from_chars(text.data(), text.data() + text.size(), real);
    if (end.ec == std::errc() && end.ptr == text.data() + text.size() && std::isfinite(real)) return real;
    return {};
}

Value constantOf(std::string_view text) {
    if (auto inner = quoted(text)) return *inner;
    const std::string word = keyword(text);
    if (word == "yes" || word == "true" || word == "on") return true;
    if (word == "no" || word == "false" || word == "off") return false;
    return number(text);
}

} // namespace

DefaultValue DefaultValue::of(const FieldDef& field) {
    DefaultValue result;
    std::string_view text = trimmed(field.defaultValue);
    if (text.starts_with('=')) text = trimmed(text.substr(1));
    if (text.empty()) return result;
    const std::string word = keyword(text);
    if (word == "now()") result.kind_ = Kind::Now;
    if (word == "date()") result.kind_ = Kind::Today;
    if (word == "time()") result.kind_ = Kind::TimeOfDay;
    if (result.kind_ != Kind::Constant) {
        if (field.type != Type::Date) result.kind_ = Kind::Constant;
        return result;
    }
    try {
        result.constant_ = convertTo(field, constantOf(text));
    } catch (const Error&) {
        result.constant_ = {}; // a constant of another type is no default
    }
    return result;
}

Value DefaultValue::at(Date now) const {
    const double day = std::floor(now.days);
    switch (kind_) {
    case Kind::Constant: return constant_;
    case Kind::Now: return now;
    case Kind::Today: return Date{day};
    case Kind::TimeOfDay: return Date{now.days - day};
    }
    return {};
}

} // namespace jet
