// jet/sql/function_list.cpp — see function_list.h.
#include "jet/sql/function_list.h"

#include "jet/sql/lexer.h"

namespace jet::sql {
namespace {

constexpr uint8_t kFirst = 1, kSecond = 2, kBoth = 3, kThree = 7;

constexpr FunctionInfo kFunctions[] = {
    {"LEFT", 2, 2, "jet_left", Gives::Text, kFirst},
    {"RIGHT", 2, 2, "jet_right", Gives::Text, kFirst},
    {"MID", 2, 3, "jet_mid", Gives::Text, kFirst},
    {"LEN", 1, 1, "jet_len", Gives::Long, kFirst},
    {"INSTR", 2, 4, "jet_instr", Gives::Long, kThree},
    {"INSTRREV", 2, 4, "jet_instrrev", Gives::Long, kBoth},
    {"REPLACE", 3, 6, "jet_replace", Gives::Text, kThree},
    {"UCASE", 1, 1, "jet_ucase", Gives::Text, kFirst},
    {"LCASE", 1, 1, "jet_lcase", Gives::Text, kFirst},
    {"TRIM", 1, 1, "jet_trim", Gives::Text, kFirst},
    {"LTRIM", 1, 1, "jet_ltrim", Gives::Text, kFirst},
    {"RTRIM", 1, 1, "jet_rtrim", Gives::Text, kFirst},
    {"SPACE", 1, 1, "jet_space", Gives::Text},
    {"STRING", 2, 2, "jet_string", Gives::Text, kSecond},
    {"STRCOMP", 2, 3, "jet_strcomp", Gives::Integer, kBoth},
    {"STRREVERSE", 1, 1, "jet_strreverse", Gives::Text, kFirst},
    {"ASC", 1, 1, "jet_asc", Gives::Integer, kFirst},
    {"CHR", 1, 1, "jet_chr", Gives::Text},
    {"ASCW", 1, 1, "jet_ascw", Gives::Integer, kFirst},
    {"CHRW", 1, 1, "jet_chrw", Gives::Text},
    {"VAL", 1, 1, "jet_val", Gives::Double, kFirst},
    {"STR", 1, 1, "jet_str", Gives::Text},
    {"CSTR", 1, 1, "jet_cstr", Gives::Text, kFirst},
    {"CINT", 1, 1, "jet_cint", Gives::Integer},
    {"CLNG", 1, 1, "jet_clng", Gives::Long},
    {"CBYTE", 1, 1, "jet_cbyte", Gives::Byte},
    {"CDBL", 1, 1, "jet_cdbl", Gives::Double},
    {"CSNG", 1, 1, "jet_csng", Gives::Single},
    {"CCUR", 1, 1, "jet_ccur", Gives::Currency},
    {"CBOOL", 1, 1, "jet_cbool", Gives::Boolean},
    {"CDATE", 1, 1, "jet_cdate", Gives::Date},
    {"CVDATE", 1, 1, "jet_cdate", Gives::Date},
    {"INT", 1, 1, "jet_int", Gives::Argument},
    {"FIX", 1, 1, "jet_fix", Gives::Argument},
    {"ABS", 1, 1, "jet_abs", Gives::Argument},
    {"ROUND", 1, 2, "jet_round", Gives::Argument},
    {"SGN", 1, 1, "jet_sgn", Gives::Integer},
    {"SQR", 1, 1, "jet_sqr", Gives::Double},
    {"EXP", 1, 1, "jet_exp", Gives::Double},
    {"LOG", 1, 1, "jet_log", Gives::Double},
    {"SIN", 1, 1, "jet_sin", Gives::Double},
    {"COS", 1, 1, "jet_cos", Gives::Double},
    {"TAN", 1, 1, "jet_tan", Gives::Double},
    {"ATN", 1, 1, "jet_atn", Gives::Double},
    {"ISNUMERIC", 1, 1, "jet_isnumeric", Gives::Boolean, kFirst},
    {"ISDATE", 1, 1, "jet_isdate", Gives::Boolean, 0, true},
    {"FORMAT", 1, 4, "jet_format", Gives::Text, 0, true},
    {"DATEADD", 3, 3, "jet_dateadd", Gives::Date},
    {"DATEDIFF", 3, 5, "jet_datediff", Gives::Long},
    {"DATEPART", 2, 4, "jet_datepart", Gives::Integer},
    {"DATESERIAL", 3, 3, "jet_dateserial", Gives::Date},
    {"TIMESERIAL", 3, 3, "jet_timeserial", Gives::Date},
    {"DATEVALUE", 1, 1, "jet_datevalue", Gives::Date},
    {"TIMEVALUE", 1, 1, "jet_timevalue", Gives::Date},
    {"YEAR", 1, 1, "jet_year", Gives::Integer},
    {"MONTH", 1, 1, "jet_month", Gives::Integer},
    {"DAY", 1, 1, "jet_day", Gives::Integer},
    {"HOUR", 1, 1, "jet_hour", Gives::Integer},
    {"MINUTE", 1, 1, "jet_minute", Gives::Integer},
    {"SECOND", 1, 1, "jet_second", Gives::Integer},
    {"WEEKDAY", 1, 2, "jet_weekday", Gives::Integer},
    {"WEEKDAYNAME", 1, 3, "jet_weekdayname", Gives::Text},
    {"MONTHNAME", 1, 2, "jet_monthname", Gives::Text},
    {"NOW", 0, 0, "jet_now", Gives::Date},
    {"DATE", 0, 0, "jet_date", Gives::Date},
    {"TIME", 0, 0, "jet_time", Gives::Date},
};

} // namespace

const FunctionInfo* findFunction(std::string_view name) {
    if (!name.empty() && name.back() == '$') name.remove_suffix(1);
    for (const FunctionInfo& known : kFunctions)
        if (sameKeyword(name, known.name)) return &known;
    return nullptr;
}

} // namespace jet::sql
