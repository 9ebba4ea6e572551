// jet/index/sort_key.h — Jet's text order: sort keys byte for byte as the index stores them, and comparison by them.
#pragma once

#include "jet/value.h"

#include <string>
#include <string_view>

namespace jet {

// True for General (0x0409 v0) and Turkish (0x041F v0): the orders whose keys we can make.
bool knowsSortOrder(SortOrder order);

// Appends the ascending key of a text (flag byte 7F, weights, 00) to `key`. REQUIRES: knowsSortOrder(order).
void appendTextKey(std::u16string_view text, SortOrder order, Bytes& key);

// <0, 0, >0 as the keys of the two texts compare; the texts are UTF-8. Fast when both are short or equal.
int compareText(std::string_view a, std::string_view b, SortOrder order);

// Case without locale traps: i/İ and ı/I. For LIKE, names and UCase/LCase. Turkish rules only for Turkish order.
std::string upperText(std::string_view utf8, SortOrder order);
std::string lowerText(std::string_view utf8, SortOrder order);

} // namespace jet
