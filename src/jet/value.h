// jet/value.h — the values that a field of a Jet table can hold, each with its own exact type.
// Pure data: no file, no locale. Text is UTF-8 (a lone UTF-16 surrogate is kept in WTF-8 form, so round trips
// are exact).
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace jet {

// Stored type byte of a column; persisted, never renumber.
enum class Type : uint8_t {
    Boolean = 0x01,
    Byte = 0x02,
    Integer = 0x03, // 16 bit
    Long = 0x04,    // 32 bit
    Currency = 0x05,
    Single = 0x06,
    Double = 0x07,
    Date = 0x08,
    Binary = 0x09,
    Text = 0x0A,
    Ole = 0x0B,
    Memo = 0x0C,
    Guid = 0x0F,
    Numeric = 0x10,
};

using Bytes = std::vector<uint8_t>;

// Money: an exact count of ten-thousandths. Rounds half to even when it comes from a double.
struct Currency {
    int64_t tenThousandths = 0;
    static Currency fromDouble(double amount); // throws Error(Conversion) past the range
    double toDouble() const { return static_cast<double>(tenThousandths) / 10000.0; }
    std::string toText() const; // "12.3400": always four decimals, a point
    auto operator<=>(const Currency&) const = default;
};

// Jet's day count: whole days since 1899-12-30, time of day as the fraction (for negative days it still
// counts forward).
struct Date {
    double days = 0;
    struct Parts {
        int year, month, day, hour, minute, second;
    };
    static Date fromParts(const Parts&); // month 1..12, day 1..31; no validation beyond normalisation
    Parts parts() const;                 // rounded to the nearest second
    std::string toIso() const;           // "2008-09-15 00:00:00"
    auto operator<=>(const Date&) const = default;
};

struct Guid {
    std::array<uint8_t, 16> bytes{}; // as stored (first three groups little-endian)
    std::string toText() const;      // "{00112233-4455-6677-8899-AABBCCDDEEFF}"
    auto operator<=>(const Guid&) const = default;
};

// DECIMAL: magnitude as four 32-bit words, most significant first; scale = digits after the point.
struct Numeric {
    bool negative = false;
    std::array<uint32_t, 4> magnitude{};
    uint8_t scale = 0; // 0..28
    std::string toText() const;
    bool operator==(const Numeric&) const = default;
};

class Value {
  public:
    using Data = std::variant<std::monostate, bool, int32_t, Currency, float, double, Date, std::string,
                              Bytes, Guid, Numeric>;

    Value() = default; // null
    Value(bool v) : data_(v) {}
    Value(int32_t v) : data_(v) {}
    Value(Currency v) : data_(v) {}
    Value(float v) : data_(v) {}
    Value(double v) : data_(v) {}
    Value(Date v) : data_(v) {}
    Value(std::string v) : data_(std::move(v)) {}
    Value(std::string_view v) : data_(std::string(v)) {}
    Value(const char* v) : data_(std::string(v)) {}
    Value(Bytes v) : data_(std::move(v)) {}
    Value(Guid v) : data_(v) {}
    Value(Numeric v) : data_(v) {}

    bool isNull() const { return std::holds_alternative<std::monostate>(data_); }
    const Data& data() const { return data_; }
    template <class T> const T* get() const { return std::get_if<T>(&data_); }

    // Reading with the usual widenings; null reads as 0 / empty. Throw Error(Conversion) when the text is no
    // number.
    int64_t toInt() const;      // bool: -1 / 0; a fraction is rounded half to even
    double toDouble() const;    // currency as amount, date as day count
    bool toBool() const;        // any number other than 0
    std::string toText() const; // invariant form: point decimals, dates ISO, bool "-1"/"0", bytes as hex

    bool operator==(const Value&) const = default;

  private:
    Data data_;
};

// A row's place: page number and slot. Never changes while the row exists (a grown row leaves a pointer
// behind).
struct RowId {
    uint32_t page = 0; // 0 = no row
    uint8_t row = 0;
    auto operator<=>(const RowId&) const = default;
    explicit operator bool() const { return page != 0; }
    uint64_t packed() const { return (static_cast<uint64_t>(page) << 8) | row; } // as row pointers store it
    static RowId fromPacked(uint64_t v) {
        return {static_cast<uint32_t>(v >> 8), static_cast<uint8_t>(v & 0xFF)};
    }
};

// Text order of a column or file: Windows locale id and the version of Jet's weights.
struct SortOrder {
    uint16_t lcid = 0x0409;
    uint8_t version = 0;
    bool operator==(const SortOrder&) const = default;
};
inline constexpr SortOrder kGeneralSort{0x0409, 0};
inline constexpr SortOrder kTurkishSort{0x041F, 0};

} // namespace jet
