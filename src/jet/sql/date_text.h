// jet/sql/date_text.h — dates and numbers as people of a Turkish installation write them: dd.MM.yyyy, decimal
// comma.
#pragma once

#include "jet/value.h"

#include <optional>
#include <string>
#include <string_view>

namespace jet::sql {

// The inside of #…#: month/day/year, ISO, or day.month.year with points; a time may follow or stand alone.
std::optional<Date> parseDateLiteral(std::string_view text);
// A text a person typed: day.month.year (also with / or -), ISO, "15 Eylül 2008"; a time may follow or stand
// alone.
std::optional<Date> parseDateText(std::string_view text);
// "15.09.2008", "15.09.2008 10:30:00", or "10:30:00" for a time alone.
std::string dateText(Date date);

bool isLeapYear(int year);
int daysInMonth(int year, int month);
enum class NameForm { Long, Short };
std::string_view monthName(int month, NameForm form = NameForm::Long); // 1..12; "Ocak", "Oca"
std::string_view weekdayName(int day, NameForm form = NameForm::Long); // 1..7, 1 = Sunday; "Pazar", "Paz"
int weekdayOf(Date date);                                              // 1..7, 1 = Sunday

// A whole text that is a number: "12", "-3,5", "1.234,56"; a single point is taken as decimal point ("12.5").
std::optional<double> parseNumber(std::string_view text);
// As Val() does: the number a text begins with, decimal point, spaces skipped; 0 when there is none.
double leadingNumber(std::string_view text);
// Up to 15 digits, decimal comma: "12,5".
std::string numberText(double value);

} // namespace jet::sql
