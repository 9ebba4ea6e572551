// jet/sql/aggregates.cpp — First, Last, StDev, StDevP, Var, VarP; the others are SQLite's own.
#include "jet/sql/function_support.h"

#include <cmath>

namespace jet::sql {
namespace {

// --- First and Last: of the rows in the order they are met, nulls included.
struct Kept {
    sqlite3_value* value;
};

void keepFirst(sqlite3_context* call, int, sqlite3_value** args) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(call, sizeof(Kept)));
    if (kept && !kept->value) kept->value = sqlite3_value_dup(args[0]);
}

void keepLast(sqlite3_context* call, int, sqlite3_value** args) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(call, sizeof(Kept)));
    if (!kept) return;
    sqlite3_value_free(kept->value);
    kept->value = sqlite3_value_dup(args[0]);
}

void giveKept(sqlite3_context* call) {
    auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(call, 0));
    if (!kept || !kept->value) return sqlite3_result_null(call);
    sqlite3_result_value(call, kept->value);
    sqlite3_value_free(kept->value);
    kept->value = nullptr;
}

// --- spread, in one pass (Welford)
struct Spread {
    int64_t count;
    double mean, squares;
};

void addToSpread(sqlite3_context* call, int, sqlite3_value** args) {
    guarded(call, [&] {
        auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(call, sizeof(Spread)));
        if (!spread || isNull(args[0])) return;
        const double value = numberOf(args[0]);
        const double before = value - spread->mean;
        spread->mean += before / static_cast<double>(++spread->count);
        spread->squares += before * (value - spread->mean);
    });
}

template <int Freedom, bool Root> void giveSpread(sqlite3_context* call) {
    const auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(call, 0));
    if (!spread || spread->count <= Freedom) return sqlite3_result_null(call);
    const double variance = spread->squares / static_cast<double>(spread->count - Freedom);
    sqlite3_result_double(call, Root ? std::sqrt(variance) : variance);
}

} // namespace

void registerAggregates(sqlite3* db, FunctionContext& context) {
    const auto add = [&](const char* name, Function step, void (*final)(sqlite3_context*)) {
        sqlite3_create_function_v2(db, name, 1, SQLITE_UTF8, &context, nullptr, step, final, nullptr);
    };
    add("jet_first", keepFirst, giveKept);
    add("jet_last", keepLast, giveKept);
    add("jet_stdev", addToSpread, giveSpread<1, true>);
    add("jet_stdevp", addToSpread, giveSpread<0, true>);
    add("jet_var", addToSpread, giveSpread<1, false>);
    add("jet_varp", addToSpread, giveSpread<0, false>);
}

} // namespace jet::sql
