// jet/sql/functions_text.cpp — Left, Mid, InStr, Trim, UCase … as Jet has them. Positions count UTF-16 units
// from 1.
#include "jet/sql/function_support.h"

#include "jet/format/row_codec.h"
#include "jet/index/sort_key.h"
#include "jet/sql/date_text.h"

#include <algorithm>

namespace jet::sql {
namespace {

constexpr size_t kLongestResult = 64u << 20; // bytes; String(2000000000, "x") is an error, not a dead machine
constexpr uint16_t kTurkishCodePage = 1254;  // of Chr and Asc

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string utf8Of(std::u16string_view text) {
    std::string utf8;
    appendUtf8(text, utf8);
    return utf8;
}

// Part of a text by UTF-16 units; past the end is not an error.
std::string slice(const std::string& text, size_t from, size_t count) {
    if (isAscii(text)) return from < text.size() ? text.substr(from, count) : std::string();
    const std::u16string wide = utf16FromUtf8(text);
    return from < wide.size() ? utf8Of(std::u16string_view(wide).substr(from, count)) : std::string();
}

size_t countOf(sqlite3_value* value, const char* function, int32_t smallest) {
    const int32_t count = longOf(value);
    if (count < smallest) throwBadArgument(function);
    return static_cast<size_t>(count);
}

void left(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        giveText(call, slice(textOf(args[0]), 0, countOf(args[1], "Left", 0)));
    });
}

void right(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const std::string text = textOf(args[0]);
        const size_t wanted = countOf(args[1], "Right", 0), length = utf16Length(text);
        giveText(call, wanted >= length ? text : slice(text, length - wanted, wanted));
    });
}

void mid(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const size_t start = countOf(args[1], "Mid", 1);
        const size_t length = count > 2 ? countOf(args[2], "Mid", 0) : std::string::npos;
        giveText(call, slice(textOf(args[0]), start - 1, length));
    });
}

void len(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        sqlite3_result_int64(call, static_cast<int64_t>(utf16Length(textOf(args[0]))));
    });
}

enum Compare { kBinary = 0, kText = 1 };

// For searching: same length in units, case removed unless binary is wanted.
std::u16string searchForm(const std::string& text, int mode, SortOrder order) {
    std::u16string plain = utf16FromUtf8(text);
    if (mode == kBinary) return plain;
    std::u16string upper = utf16FromUtf8(upperText(text, order));
    return upper.size() == plain.size() ? upper : plain;
}

// InStr([start,] text, sought [, compare]): a number in front means that a start is given.
void inStr(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const bool hasStart = count > 2;
        const size_t start = hasStart ? countOf(args[0], "InStr", 1) : 1;
        const int mode = count > 3 ? longOf(args[3]) : kText;
        const SortOrder order = contextOf(call).order;
        const std::u16string text = searchForm(textOf(args[hasStart]), mode, order);
        const std::u16string sought = searchForm(textOf(args[hasStart + 1]), mode, order);
        if (start > text.size()) return sqlite3_result_int(call, 0);
        const size_t found = text.find(sought, start - 1);
        sqlite3_result_int64(call, found == std::u16string::npos ? 0 : static_cast<int64_t>(found) + 1);
    });
}

void inStrRev(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const int32_t start = count > 2 ? longOf(args[2]) : -1;
        if (start == 0 || start < -1) throwBadArgument("InStrRev");
        const int mode = count > 3 ? longOf(args[3]) : kText;
        const SortOrder order = contextOf(call).order;
        const std::u16string text = searchForm(textOf(args[0]), mode, order);
        const std::u16string sought = searchForm(textOf(args[1]), mode, order);
        const size_t end = start < 0 ? text.size() : std::min(text.size(), static_cast<size_t>(start));
        const size_t found =
            sought.size() > end ? std::u16string::npos : text.rfind(sought, end - sought.size());
        sqlite3_result_int64(call, found == std::u16string::npos ? 0 : static_cast<int64_t>(found) + 1);
    });
}

// Replace(text, sought, new [, start [, count [, compare]]])
void replace(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const size_t start = count > 3 ? countOf(args[3], "Replace", 1) - 1 : 0;
        int64_t most = count > 4 ? longOf(args[4]) : -1;
        const int mode = count > 5 ? longOf(args[5]) : kText;
        const SortOrder order = contextOf(call).order;
        const std::string whole = slice(textOf(args[0]), start, std::string::npos);
        const std::u16string text = utf16FromUtf8(whole), form = searchForm(whole, mode, order);
        const std::u16string sought = searchForm(textOf(args[1]), mode, order),
                             with = utf16FromUtf8(textOf(args[2]));
        if (sought.empty()) return giveText(call, whole);
        std::u16string result;
        size_t at = 0;
        for (size_t found; most != 0 && (found = form.find(sought, at)) != std::u16string::npos; --most) {
            result.append(text, at, found - at).append(with);
            at = found + sought.size();
            if (result.size() * sizeof(char16_t) > kLongestResult) throwOverflow();
        }
        giveText(call, utf8Of(result.append(text, at)));
    });
}

void upper(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, count, args)) giveText(call, upperText(textOf(args[0]), contextOf(call).order));
    });
}

void lower(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, count, args)) giveText(call, lowerText(textOf(args[0]), contextOf(call).order));
    });
}

enum TrimSide { kLeftSide = 1, kRightSide = 2 };

// Takes spaces only, as Jet does; a text without any is given back without a copy.
template <int Sides> void trim(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const bool isText = sqlite3_value_type(args[0]) == SQLITE_TEXT;
        const std::string made = isText ? std::string() : textOf(args[0]);
        std::string_view text = made;
        if (isText)
            text = {reinterpret_cast<const char*>(sqlite3_value_text(args[0])),
                    static_cast<size_t>(sqlite3_value_bytes(args[0]))};
        if (Sides & kLeftSide) text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
        if (Sides & kRightSide) text = text.substr(0, text.find_last_not_of(' ') + 1);
        giveText(call, text);
    });
}

std::string repeated(const std::string& text, size_t count) {
    if (text.size() * count > kLongestResult) throwOverflow();
    std::string result;
    result.reserve(text.size() * count);
    for (size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

void space(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, count, args)) giveText(call, repeated(" ", countOf(args[0], "Space", 0)));
    });
}

std::string characterOf(int32_t code) {
    if (code < 0 || code > 255) throwBadArgument("Chr");
    const auto byte = static_cast<uint8_t>(code);
    std::string text;
    decodeText(kJet3, kTurkishCodePage, {&byte, 1}, text);
    return text;
}

// String(number, text or character code): the first character, so often.
void stringOf(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const std::string source = sqlite3_value_type(args[1]) == SQLITE_TEXT
                                       ? textOf(args[1])
                                       : characterOf(longOf(args[1]) & 0xFF);
        if (source.empty()) throwBadArgument("String");
        giveText(call, repeated(slice(source, 0, 1), countOf(args[0], "String", 0)));
    });
}

void strComp(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const std::string a = textOf(args[0]), b = textOf(args[1]);
        const bool binary = count > 2 && longOf(args[2]) == kBinary;
        const int order =
            binary ? utf16FromUtf8(a).compare(utf16FromUtf8(b)) : compareText(a, b, contextOf(call).order);
        sqlite3_result_int(call, order < 0 ? -1 : order > 0 ? 1 : 0);
    });
}

void strReverse(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        std::u16string text = utf16FromUtf8(textOf(args[0]));
        std::reverse(text.begin(), text.end());
        giveText(call, utf8Of(text));
    });
}

void asc(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const std::string first = slice(textOf(args[0]), 0, 1);
        if (first.empty()) throwBadArgument("Asc");
        for (int32_t code = 0; code < 256; ++code)
            if (characterOf(code) == first) return sqlite3_result_int(call, code);
        sqlite3_result_int(call, '?'); // as a character that the code page lacks
    });
}

void chr(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, count, args)) giveText(call, characterOf(longOf(args[0])));
    });
}

void ascW(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const std::u16string text = utf16FromUtf8(textOf(args[0]));
        if (text.empty()) throwBadArgument("AscW");
        sqlite3_result_int(call, static_cast<int16_t>(text.front())); // signed, as Jet's Integer is
    });
}

void chrW(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const int32_t code = longOf(args[0]);
        if (code < -32768 || code > 65535) throwBadArgument("ChrW");
        giveText(call, utf8Of(std::u16string(1, static_cast<char16_t>(code))));
    });
}

void val(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        if (sqlite3_value_type(args[0]) != SQLITE_TEXT) return sqlite3_result_double(call, numberOf(args[0]));
        sqlite3_result_double(call, leadingNumber(textOf(args[0])));
    });
}

// A number with a decimal point and a place for the sign.
void str(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        std::string text = numberText(numberOf(args[0]));
        std::replace(text.begin(), text.end(), ',', '.');
        giveText(call, text.front() == '-' ? text : " " + text);
    });
}

void cStr(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (!anyNull(call, count, args)) giveText(call, textOf(args[0]));
    });
}

// a & b & …: null reads as empty, but nothing but nulls stays null.
void concatenate(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        std::string joined;
        bool any = false;
        for (int i = 0; i < count; ++i) {
            if (isNull(args[i])) continue;
            any = true;
            joined += textOf(args[i]);
        }
        any ? giveText(call, joined) : sqlite3_result_null(call);
    });
}

} // namespace

void registerTextFunctions(sqlite3* db, FunctionContext& context) {
    struct Entry {
        const char* name;
        Function function;
    };
    constexpr Entry kEntries[] = {
        {"jet_left", left},
        {"jet_right", right},
        {"jet_mid", mid},
        {"jet_len", len},
        {"jet_instr", inStr},
        {"jet_instrrev", inStrRev},
        {"jet_replace", replace},
        {"jet_ucase", upper},
        {"jet_lcase", lower},
        {"jet_trim", trim<kLeftSide | kRightSide>},
        {"jet_ltrim", trim<kLeftSide>},
        {"jet_rtrim", trim<kRightSide>},
        {"jet_space", space},
        {"jet_string", stringOf},
        {"jet_strcomp", strComp},
        {"jet_strreverse", strReverse},
        {"jet_asc", asc},
        {"jet_chr", chr},
        {"jet_ascw", ascW},
        {"jet_chrw", chrW},
        {"jet_val", val},
        {"jet_str", str},
        {"jet_cstr", cStr},
        {"jet_concat", concatenate},
    };
    for (const Entry& entry : kEntries)
        addFunction(db, context, entry.name, entry.function);
}

} // namespace jet::sql
