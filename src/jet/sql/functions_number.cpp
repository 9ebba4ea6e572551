// jet/sql/functions_number.cpp — conversions, rounding and arithmetic with Jet's overflow and rounding rules.
#include "jet/sql/function_support.h"

#include "jet/sql/date_text.h"

#include <cmath>
#include <limits>

namespace jet::sql {
namespace {

// Body for one number; null in, null out.
template <class Compute> void ofNumber(sqlite3_context* call, sqlite3_value** args, Compute compute) {
    guarded(call, [&] {
        if (!anyNull(call, 1, args)) giveNumber(call, compute(numberOf(args[0])));
    });
}

template <int32_t Lowest, int32_t Highest> void toWhole(sqlite3_context* call, int, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, 1, args)) return;
        const int32_t value = longOf(args[0]);
        if (value < Lowest || value > Highest) throwOverflow();
        sqlite3_result_int(call, value);
    });
}

void toDouble(sqlite3_context* call, int, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, 1, args)) sqlite3_result_double(call, numberOf(args[0]));
    });
}

void toSingle(sqlite3_context* call, int, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, 1, args)) return;
        const double value = numberOf(args[0]);
        if (std::fabs(value) > static_cast<double>(std::numeric_limits<float>::max())) throwOverflow();
        sqlite3_result_double(call, static_cast<double>(static_cast<float>(value)));
    });
}

void toCurrency(sqlite3_context* call, int, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, 1, args))
            sqlite3_result_double(call, Currency::fromDouble(numberOf(args[0])).toDouble());
    });
}

void toBoolean(sqlite3_context* call, int, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, 1, args)) giveBoolean(call, numberOf(args[0]) != 0);
    });
}

void floorOf(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) { return std::floor(v); });
}
void truncate(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) { return std::trunc(v); });
}
void absolute(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) { return std::fabs(v); });
}
void sign(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) { return v > 0 ? 1.0 : v < 0 ? -1.0 : 0.0; });
}
void squareRoot(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) {
        if (v < 0) throwBadArgument("Sqr");
        return std::sqrt(v);
    });
}
void exponential(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) { return std::exp(v); });
}
void logarithm(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) {
        if (v <= 0) throwBadArgument("Log");
        return std::log(v);
    });
}
void sine(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) { return std::sin(v); });
}
void cosine(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) { return std::cos(v); });
}
void tangent(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) { return std::tan(v); });
}
void arcTangent(sqlite3_context* call, int, sqlite3_value** args) {
    ofNumber(call, args, [](double v) { return std::atan(v); });
}

// Half to even at the wanted digit. 2.675 is not exactly half in binary but is meant to be: a tie within the
// precision of a double counts as one.
double roundTo(double value, int digits) {
    const double scale = std::pow(10.0, digits), scaled = value * scale;
    if (!std::isfinite(scaled)) return value;
    const double lower = std::floor(scaled), rest = scaled - lower;
    const double slack = std::max(1.0, std::fabs(scaled)) * 4 * std::numeric_limits<double>::epsilon();
    if (std::fabs(rest - 0.5) <= slack) return (std::fmod(lower, 2) == 0 ? lower : lower + 1) / scale;
    return std::nearbyint(scaled) / scale;
}

void roundOff(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const int32_t digits = count > 1 ? longOf(args[1]) : 0;
        if (digits < 0 || digits > 22) throwBadArgument("Round");
        giveNumber(call, roundTo(numberOf(args[0]), digits));
    });
}

void isNumeric(sqlite3_context* call, int, sqlite3_value** args) {
    guarded(call, [&] {
        const int type = sqlite3_value_type(args[0]);
        const bool number = type == SQLITE_INTEGER || type == SQLITE_FLOAT;
        giveBoolean(call, number || (type == SQLITE_TEXT && parseNumber(textOf(args[0]))));
    });
}

// --- operators
void divide(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const double divisor = numberOf(args[1]);
        if (divisor == 0) throw Error(Err::DivisionByZero, "Sıfıra bölme.");
        sqlite3_result_double(call, numberOf(args[0]) / divisor);
    });
}

void divideWhole(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const int64_t divisor = longOf(args[1]);
        if (divisor == 0) throw Error(Err::DivisionByZero, "Sıfıra bölme.");
        sqlite3_result_int64(call, longOf(args[0]) / divisor);
    });
}

void modulo(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const int64_t divisor = longOf(args[1]);
        if (divisor == 0) throw Error(Err::DivisionByZero, "Sıfıra bölme.");
        sqlite3_result_int64(call, longOf(args[0]) % divisor);
    });
}

void power(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, count, args)) giveNumber(call, std::pow(numberOf(args[0]), numberOf(args[1])));
    });
}

// a + b where the types are known only now: two texts are joined, anything else is added.
void plus(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        if (sqlite3_value_type(args[0]) == SQLITE_TEXT && sqlite3_value_type(args[1]) == SQLITE_TEXT)
            giveText(call, textOf(args[0]).append(textOf(args[1])));
        else
            giveNumber(call, numberOf(args[0]) + numberOf(args[1]));
    });
}

// For a text that meets a number: its number.
void number(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        if (sqlite3_value_type(args[0]) != SQLITE_TEXT) return sqlite3_result_value(call, args[0]);
        giveNumber(call, numberOf(args[0]));
    });
}

// The same in a comparison: a text that is no number equals nothing, instead of ending the query.
void numberIfAny(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        if (sqlite3_value_type(args[0]) != SQLITE_TEXT) return sqlite3_result_value(call, args[0]);
        if (const auto value = parseNumber(textOf(args[0]))) return giveNumber(call, *value);
        sqlite3_result_null(call);
    });
}

} // namespace

void registerNumberFunctions(sqlite3* db, FunctionContext& context) {
    struct Entry {
        const char* name;
        Function function;
    };
    using Limits = std::numeric_limits<int32_t>;
    constexpr Entry kEntries[] = {
        {"jet_cint", toWhole<-32768, 32767>},
        {"jet_clng", toWhole<Limits::min(), Limits::max()>},
        {"jet_cbyte", toWhole<0, 255>},
        {"jet_cdbl", toDouble},
        {"jet_csng", toSingle},
        {"jet_ccur", toCurrency},
        {"jet_cbool", toBoolean},
        {"jet_int", floorOf},
        {"jet_fix", truncate},
        {"jet_abs", absolute},
        {"jet_sgn", sign},
        {"jet_sqr", squareRoot},
        {"jet_exp", exponential},
        {"jet_log", logarithm},
        {"jet_sin", sine},
        {"jet_cos", cosine},
        {"jet_tan", tangent},
        {"jet_atn", arcTangent},
        {"jet_round", roundOff},
        {"jet_isnumeric", isNumeric},
        {"jet_divide", divide},
        {"jet_divide_whole", divideWhole},
        {"jet_mod", modulo},
        {"jet_power", power},
        {"jet_plus", plus},
        {"jet_number", number},
        {"jet_number_if_any", numberIfAny},
    };
    for (const Entry& entry : kEntries)
        addFunction(db, context, entry.name, entry.function);
}

} // namespace jet::sql
