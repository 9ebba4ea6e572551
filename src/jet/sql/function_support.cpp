// jet/sql/function_support.cpp — see function_support.h.
#include "jet/sql/function_support.h"

#include "jet/index/sort_key.h"
#include "jet/sql/date_text.h"

#include <cmath>
#include <cstdio>
#include <limits>

namespace jet::sql {
namespace {

int compareCollated(void* argument, int sizeA, const void* a, int sizeB, const void* b) {
    const auto packed = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(argument));
    const SortOrder order{static_cast<uint16_t>(packed >> 8), static_cast<uint8_t>(packed)};
    try {
        return compareText({static_cast<const char*>(a), static_cast<size_t>(sizeA)},
                           {static_cast<const char*>(b), static_cast<size_t>(sizeB)}, order);
    } catch (...) { // out of memory: any consistent answer will do, the statement is about to fail anyway
        return sizeA - sizeB;
    }
}

} // namespace

std::string collationName(SortOrder order) {
    char name[24];
    std::snprintf(name, sizeof name, "JET_%04X_%u", order.lcid, order.version);
    return name;
}

void registerCollation(sqlite3* db, SortOrder order) {
    // Orders whose weights are not known compare as General: a usable order, if not the original's.
    const SortOrder used = knowsSortOrder(order) ? order : kGeneralSort;
    const uintptr_t packed = static_cast<uintptr_t>(used.lcid) << 8 | used.version;
    sqlite3_create_collation(db, collationName(order).c_str(), SQLITE_UTF8, reinterpret_cast<void*>(packed),
                             compareCollated);
}

void addFunction(sqlite3* db, FunctionContext& context, const char* name, Function function) {
    sqlite3_create_function_v2(db, name, -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, &context,
                               function, nullptr, nullptr, nullptr);
}

void reportException(sqlite3_context* call) {
    FunctionContext& context = contextOf(call);
    if (!context.pending) context.pending = std::current_exception();
    sqlite3_result_error(call, "error", -1);
}

bool anyNull(sqlite3_context* call, int count, sqlite3_value** values) {
    for (int i = 0; i < count; ++i)
        if (isNull(values[i])) {
            sqlite3_result_null(call);
            return true;
        }
    return false;
}

std::string textOf(sqlite3_value* value) {
    if (sqlite3_value_type(value) == SQLITE_FLOAT) return numberText(sqlite3_value_double(value));
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text ? std::string(text, static_cast<size_t>(sqlite3_value_bytes(value))) : std::string();
}

double numberOf(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT: return sqlite3_value_double(value);
    case SQLITE_NULL: return 0;
    default: break;
    }
    const std::string text = textOf(value);
    if (const auto number = parseNumber(text)) return *number;
    throw Error(Err::Conversion, "“" + text + "” bir sayı değil.");
}

int32_t longOf(sqlite3_value* value) {
    const double rounded = roundHalfEven(numberOf(value));
    if (!(rounded >= std::numeric_limits<int32_t>::min() && rounded <= std::numeric_limits<int32_t>::max()))
        throwOverflow();
    return static_cast<int32_t>(rounded);
}

std::optional<Date> dateIfAny(sqlite3_value* value) {
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT: {
        const double days = sqlite3_value_double(value);
        if (!(days > -657435.0 && days < 2958466.0)) return {}; // years 100..9999
        return Date{days};
    }
    case SQLITE_NULL: return {};
    default: return parseDateText(textOf(value));
    }
}

Date dateOf(sqlite3_value* value) {
    if (const auto date = dateIfAny(value)) return *date;
    throw Error(Err::Conversion, "“" + textOf(value) + "” bir tarih değil.");
}

void giveText(sqlite3_context* call, std::string_view text) {
    sqlite3_result_text64(call, text.data() ? text.data() : "", text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void giveNumber(sqlite3_context* call, double value) {
    if (!std::isfinite(value)) throwOverflow();
    constexpr double kExact = 9007199254740992.0; // 2^53
    if (value == std::floor(value) && std::fabs(value) < kExact)
        sqlite3_result_int64(call, static_cast<int64_t>(value));
    else
        sqlite3_result_double(call, value);
}

double roundHalfEven(double value) { return std::nearbyint(value); }
void throwOverflow() { throw Error(Err::Overflow, "Taşma: sonuç türün sınırlarını aşıyor."); }
void throwBadArgument(const char* function) {
    throw Error(Err::InvalidArgument, std::string(function) + " işlevine geçersiz değer verildi.");
}

} // namespace jet::sql
