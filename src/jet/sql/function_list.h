// jet/sql/function_list.h — the functions of Jet's SQL: how many arguments, what they give, which SQLite
// function runs.
#pragma once

#include <cstdint>
#include <string_view>

namespace jet::sql {

enum class Gives { Text, Long, Integer, Byte, Double, Single, Currency, Date, Boolean, Argument };

struct FunctionInfo {
    std::string_view name; // in capitals
    int least, most;       // arguments
    const char* sqlName;
    Gives gives;               // Argument: as its first argument
    uint8_t textArguments = 0; // bit n: argument n is read as text, a date must be written out first
    bool tellDate = false;     // gets one more argument: whether the first is a date
};

// By name without regard to ASCII case, with or without "$" at its end; nullptr when there is none. Functions
// that are not calls in SQLite (IIf, Nz, aggregates, …) are not in the list.
const FunctionInfo* findFunction(std::string_view name);

} // namespace jet::sql
