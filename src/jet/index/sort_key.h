// jet/index/sort_key.h — Jet's text order: sort keys byte for byte as the index stores them, and comparison
// by them. Text is UTF-8 (lone surrogates in WTF-8 form) or UTF-16. Pure functions, no state.
#pragma once

#include "jet/value.h"

#include <string>
#include <string_view>

namespace jet {

// True for General (0x0409 v0) and Turkish (0x041F v0): the orders whose keys we can make.
bool knowsSortOrder(SortOrder order);

// Appends the ascending key of a text (flag byte 7F, weights, 00) to `key`. Only the first 255 UTF-16 units
// count, and not the spaces at the end. Err::InvalidArgument, `key` unchanged, when the text holds a
// character whose weight is not known (see canMakeTextKey). REQUIRES: knowsSortOrder(order).
void appendTextKey(std::u16string_view text, SortOrder order, Bytes& key);
void appendTextKey(std::string_view utf8, SortOrder order, Bytes& key);

// False when appendTextKey would refuse the text: it holds a character outside the measured ones (they reach
// to U+2BFF and cover the Latin, Greek, Cyrillic, Hebrew and Arabic letters and the symbols). A search must
// then scan.
bool canMakeTextKey(std::string_view utf8, SortOrder order);

// <0, 0, >0 as the keys of the two UTF-8 texts compare. Never throws: a character without known weight stands
// after all known ones, by its code; an order that knowsSortOrder() denies compares as General. Unlike keys,
// which hold 255 units, it looks at the whole of a long memo.
int compareText(std::string_view a, std::string_view b, SortOrder order);

// Case without locale traps: i/İ and ı/I under Turkish order, i/I under the others (İ and ı then stay as they
// are). Covers Latin, Greek and Cyrillic letters; whatever has no single counterpart (ß) stays. For LIKE,
// UCase and LCase.
std::string upperText(std::string_view utf8, SortOrder order);
std::string lowerText(std::string_view utf8, SortOrder order);

} // namespace jet
