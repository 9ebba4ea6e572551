// jet/format/row_codec.h, convertTo(): what becomes of a value that is put into a field of another type.
#include "jet/error.h"
#include "jet/format/decimal_text.h"
#include "jet/format/row_codec.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace jet {

namespace {

constexpr double kFirstDay = -657434, kDayAfterLast = 2958466; // 0100-01-01 .. 9999-12-31

[[noreturn]] void refuse(const FieldDef& field, const std::string& wanted) {
    throw Error(Err::Conversion, "'" + field.name + "' alanına " + wanted + " yazılabilir.");
}

const std::string* textOf(const Value& value) { return value.get<std::string>(); }

// Text becomes a number the way people write one here; a value with an exponent is read in the invariant
// form.
Value numberOf(const FieldDef& field, const Value& value) {
    const std::string* text = textOf(value);
    if (!text) {
        if (value.get<Bytes>() || value.get<Guid>()) refuse(field, "yalnızca sayı");
        return value;
    }
    if (const auto decimal = parseDecimal(*text)) return Value(decimal->invariantText());
    double parsed = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), parsed);
    if (error != std::errc() || end != text->data() + text->size() || !std::isfinite(parsed))
        refuse(field, "yalnızca sayı");
    return Value(parsed);
}

template <class F> auto guarded(const FieldDef& field, const std::string& wanted, F convert) {
    try {
        return convert();
    } catch (const Error& error) {
        if (error.number() != Err::Conversion) throw;
        refuse(field, wanted);
    }
}

Value toInteger(const FieldDef& field, const Value& value, int64_t lowest, int64_t highest) {
    const std::string wanted =
        std::to_string(lowest) + " ile " + std::to_string(highest) + " arasında bir tam sayı";
    if (const bool* yes = value.get<bool>()) return Value(*yes ? (lowest == 0 ? int32_t(highest) : -1) : 0);
    const int64_t number = guarded(field, wanted, [&] { return numberOf(field, value).toInt(); });
    if (number < lowest || number > highest) refuse(field, wanted);
    return Value(static_cast<int32_t>(number));
}

Value toBoolean(const FieldDef& field, const Value& value) {
    if (const std::string* text = textOf(value)) {
        for (const char* yes : {"evet", "doğru", "true", "yes", "on"})
            if (sameName(*text, yes)) return true;
        for (const char* no : {"hayır", "yanlış", "false", "no", "off"})
            if (sameName(*text, no)) return false;
    }
    return guarded(field, "yalnızca evet ya da hayır", [&] { return numberOf(field, value).toBool(); });
}

Value toCurrency(const FieldDef& field, const Value& value) {
    const std::string wanted = "yalnızca para tutarı";
    if (const std::string* text = textOf(value)) {
        if (const auto decimal = parseDecimal(*text)) {
            const Decimal exact = decimal->withScale(4);
            int64_t amount = 0;
            const std::string digits =
                (exact.negative ? "-" : "") + (exact.digits.empty() ? "0" : exact.digits);
            const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), amount);
            if (result.ec != std::errc()) refuse(field, wanted);
            return Currency{amount};
        }
    }
    if (const int32_t* whole = value.get<int32_t>()) return Currency{int64_t{*whole} * 10000};
    if (value.get<Numeric>()) return toCurrency(field, Value(value.toText()));
    return guarded(field, wanted, [&] { return Currency::fromDouble(numberOf(field, value).toDouble()); });
}

Value toSingle(const FieldDef& field, const Value& value) {
    const double number = guarded(field, "yalnızca sayı", [&] { return numberOf(field, value).toDouble(); });
    if (std::isfinite(number) && std::abs(number) > double{std::numeric_limits<float>::max()})
        refuse(field, "yalnızca daha küçük bir sayı");
    return static_cast<float>(number);
}

Value toDate(const FieldDef& field, const Value& value) {
    const std::string wanted = "yalnızca tarih";
    if (const std::string* text = textOf(value))
        if (const auto date = parseDate(*text)) return *date;
    const double days = guarded(field, wanted, [&] { return numberOf(field, value).toDouble(); });
    if (!(days >= kFirstDay && days < kDayAfterLast))
        refuse(field, "yalnızca 100 ile 9999 yılları arasında bir tarih");
    return Date{days};
}

Value toGuid(const FieldDef& field, const Value& value) {
    Guid guid;
    if (const Bytes* bytes = value.get<Bytes>(); bytes && bytes->size() == guid.bytes.size()) {
        std::copy(bytes->begin(), bytes->end(), guid.bytes.begin());
        return guid;
    }
    static constexpr size_t order[] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    std::string digits;
    if (const std::string* text = textOf(value))
        std::copy_if(text->begin(), text->end(), std::back_inserter(digits),
                     [](char c) { return c != '{' && c != '}' && c != '-'; });
    if (digits.size() != 32) refuse(field, "yalnızca GUID");
    for (size_t i = 0; i < 16; ++i) {
        const char* at = digits.data() + 2 * i;
        if (std::from_chars(at, at + 2, guid.bytes[order[i]], 16).ptr != at + 2)
            refuse(field, "yalnızca GUID");
    }
    return guid;
}

// magnitude * 10 + digit; false when it does not fit.
bool appendDigit(std::array<uint32_t, 4>& words, uint32_t digit) {
    uint64_t carry = digit;
    for (size_t i = words.size(); i-- > 0;) {
        const uint64_t part = uint64_t{words[i]} * 10 + carry;
        words[i] = static_cast<uint32_t>(part);
        carry = part >> 32;
    }
    return carry == 0;
}

Value toNumeric(const FieldDef& field, const Value& value) {
    const Value number = numberOf(field, value);
    const auto decimal = parseDecimal(number.toText());
    if (!decimal) refuse(field, "yalnızca ondalık sayı");
    const Decimal exact = decimal->withScale(field.scale);
    const size_t digits =
        exact.digits.size() - std::min(exact.digits.find_first_not_of('0'), exact.digits.size());
    Numeric result{.negative = exact.negative, .magnitude = {}, .scale = field.scale};
    bool fits = field.precision == 0 || digits <= field.precision;
    for (const char c : exact.digits)
        fits = fits && appendDigit(result.magnitude, static_cast<uint32_t>(c - '0'));
    if (!fits) refuse(field, "en çok " + std::to_string(field.precision) + " basamaklı bir sayı");
    return result;
}

Value toBytes(const FieldDef& field, const Value& value) {
    if (value.get<Bytes>()) return value;
    if (const Guid* guid = value.get<Guid>()) return Bytes(guid->bytes.begin(), guid->bytes.end());
    refuse(field, "yalnızca ikili veri");
}

Value toTextValue(const FieldDef& field, const Value& value) {
    if (value.get<Bytes>()) refuse(field, "yalnızca metin");
    return textOf(value) ? value : Value(value.toText());
}

} // namespace

Value convertTo(const FieldDef& field, const Value& value) {
    if (value.isNull()) return value;
    switch (field.type) {
    case Type::Boolean: return toBoolean(field, value);
    case Type::Byte: return toInteger(field, value, 0, 255);
    case Type::Integer: return toInteger(field, value, INT16_MIN, INT16_MAX);
    case Type::Long: return toInteger(field, value, INT32_MIN, INT32_MAX);
    case Type::Currency: return value.get<Currency>() ? value : toCurrency(field, value);
    case Type::Single: return value.get<float>() ? value : toSingle(field, value);
    case Type::Double:
        return value.get<double>()
                   ? value
                   : guarded(field, "yalnızca sayı", [&] { return numberOf(field, value).toDouble(); });
    case Type::Date: return value.get<Date>() ? value : toDate(field, value);
    case Type::Guid: return value.get<Guid>() ? value : toGuid(field, value);
    case Type::Numeric: return toNumeric(field, value);
    case Type::Text:
    case Type::Memo: return toTextValue(field, value);
    default: return toBytes(field, value);
    }
}

} // namespace jet
