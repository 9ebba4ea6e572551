// jet/sql/function_support.h — what Jet's functions share when SQLite calls them: arguments, results, errors.
#pragma once

#include "jet/error.h"
#include "jet/value.h"

#include <exception>
#include <optional>
#include <sqlite3.h>
#include <string>
#include <string_view>

namespace jet::sql {

// What functions know of the session. `pending` carries an exception over SQLite's C frames.
struct FunctionContext {
    SortOrder order;
    Date now; // the same for a whole statement
    std::exception_ptr pending;
};

void registerTextFunctions(sqlite3* db, FunctionContext& context);
void registerNumberFunctions(sqlite3* db, FunctionContext& context);
void registerDateFunctions(sqlite3* db, FunctionContext& context);
void registerFormatFunctions(sqlite3* db, FunctionContext& context);
void registerAggregates(sqlite3* db, FunctionContext& context);
void registerLike(sqlite3* db, FunctionContext& context);
// The collation of a sort order, under the name collationName() gives.
void registerCollation(sqlite3* db, SortOrder order);
std::string collationName(SortOrder order);

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);
void addFunction(sqlite3* db, FunctionContext& context, const char* name, Function function);

inline FunctionContext& contextOf(sqlite3_context* call) {
    return *static_cast<FunctionContext*>(sqlite3_user_data(call));
}

// Keeps the current exception for the session and makes SQLite stop. Call inside a catch block.
void reportException(sqlite3_context* call);

// Runs the body of a function; what it throws reaches the caller of the statement.
template <class Body> void guarded(sqlite3_context* call, Body body) {
    try {
        body();
    } catch (...) {
        reportException(call);
    }
}

inline bool isNull(sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_NULL; }
// Any argument null: the result is null too.
bool anyNull(sqlite3_context* call, int count, sqlite3_value** values);

std::string textOf(sqlite3_value* value); // numbers with decimal comma
// Err::Conversion when a text is no number.
double numberOf(sqlite3_value* value);
// Rounded half to even; Err::Overflow outside 32 bits.
int32_t longOf(sqlite3_value* value);
// A day count, or a text that is a date; Err::Conversion when it is none.
Date dateOf(sqlite3_value* value);
std::optional<Date> dateIfAny(sqlite3_value* value);

void giveText(sqlite3_context* call, std::string_view text);
// As an integer when it is one and `value` fits, so that it shows and compares as one.
void giveNumber(sqlite3_context* call, double value);
inline void giveBoolean(sqlite3_context* call, bool value) { sqlite3_result_int(call, value ? -1 : 0); }

double roundHalfEven(double value);
[[noreturn]] void throwOverflow();
[[noreturn]] void throwBadArgument(const char* function);

} // namespace jet::sql
