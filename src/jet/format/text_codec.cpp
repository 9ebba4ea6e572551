// jet/format/row_codec.h, texts: UTF-16LE, the compressed form and code pages on one side, UTF-8 on the
// other. Compressed form: FF FE, then 8-bit units (01..FF); a byte 00 switches to 16-bit units and back.
#include "jet/format/bytes.h"
#include "jet/format/code_page.h"
#include "jet/format/row_codec.h"

#include <algorithm>

namespace jet {

namespace {

constexpr uint8_t kMark0 = 0xFF, kMark1 = 0xFE;
constexpr size_t kMaxCompressedUnits = 1024; // longer texts stay plain
constexpr char16_t kByteOrderMark = 0xFEFF, kReplacement = 0xFFFD;

bool isHigh(char32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isLow(char32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

// Writes units as UTF-8 into a string that has room for 3 bytes a unit. A lone surrogate becomes its own 3
// bytes.
class Utf8Writer {
  public:
    Utf8Writer(std::string& out, size_t units) : out_(out), begin_(out.size()) {
        out_.resize(begin_ + 3 * units);
        at_ = out_.data() + begin_;
    }
    void put(char16_t unit) {
        if (unit < 0x80) {
            *at_++ = static_cast<char>(unit);
        } else if (unit < 0x800) {
            *at_++ = static_cast<char>(0xC0 | unit >> 6);
            *at_++ = static_cast<char>(0x80 | (unit & 0x3F));
        } else if (isLow(unit) && lastHigh_ != 0) {
            const char32_t whole = 0x10000 + ((char32_t{lastHigh_} - 0xD800) << 10) + (unit - 0xDC00);
            at_ -= 3; // the high half was written as if alone
            *at_++ = static_cast<char>(0xF0 | whole >> 18);
            *at_++ = static_cast<char>(0x80 | (whole >> 12 & 0x3F));
            *at_++ = static_cast<char>(0x80 | (whole >> 6 & 0x3F));
            *at_++ = static_cast<char>(0x80 | (whole & 0x3F));
        } else {
            *at_++ = static_cast<char>(0xE0 | unit >> 12);
            *at_++ = static_cast<char>(0x80 | (unit >> 6 & 0x3F));
            *at_++ = static_cast<char>(0x80 | (unit & 0x3F));
        }
        lastHigh_ = isHigh(unit) ? unit : 0;
    }
    void finish() { out_.resize(static_cast<size_t>(at_ - out_.data())); }

  private:
    std::string& out_;
    size_t begin_;
    char* at_;
    char16_t lastHigh_ = 0;
};

// True when no byte is 00 or above 7F.
bool isPlainAscii(std::span<const uint8_t> bytes) {
    size_t i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        const auto eight = loadLe<uint64_t>(bytes.data() + i);
        if ((eight | (eight - 0x0101010101010101)) & 0x8080808080808080) // a borrow only from a byte 00
            return false;
    }
    for (; i < bytes.size(); ++i)
        if (bytes[i] == 0 || bytes[i] >= 0x80) return false;
    return true;
}

void decodeCompressed(std::span<const uint8_t> bytes, std::string& utf8) {
    if (isPlainAscii(bytes)) {
        utf8.assign(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return;
    }
    utf8.clear();
    Utf8Writer out(utf8, bytes.size());
    bool wide = false;
    for (size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == 0)
            wide = !wide;
        else if (!wide)
            out.put(bytes[i]);
        else if (i + 1 < bytes.size()) {
            out.put(get16(bytes, i));
            ++i;
        }
    }
    out.finish();
}

void decodeWide(std::span<const uint8_t> bytes, std::string& utf8) {
    const size_t units = bytes.size() / 2;
    utf8.resize(units);
    size_t i = 0;
    for (; i < units; ++i) { // as long as it is ASCII
        const uint16_t unit = get16(bytes, 2 * i);
        if (unit >= 0x80) break;
        utf8[i] = static_cast<char>(unit);
    }
    if (i == units) return;
    utf8.resize(i);
    Utf8Writer out(utf8, units - i);
    for (; i < units; ++i)
        out.put(get16(bytes, 2 * i));
    out.finish();
}

void decodeCodePage(uint16_t codePage, std::span<const uint8_t> bytes, std::string& utf8) {
    utf8.clear();
    Utf8Writer out(utf8, bytes.size());
    for (const uint8_t byte : bytes)
        out.put(unitFromCodePage(codePage, byte));
    out.finish();
}

// Appends the compressed form; false (and nothing appended) when the text has a unit it cannot hold.
bool appendCompressed(std::u16string_view text, Bytes& stored) {
    const size_t begin = stored.size();
    stored.push_back(kMark0);
    stored.push_back(kMark1);
    bool wide = false;
    for (const char16_t unit : text) {
        if ((unit & 0xFF) == 0) {
            stored.resize(begin);
            return false;
        }
        if (wide != (unit > 0xFF)) {
            stored.push_back(0);
            wide = !wide;
        }
        stored.push_back(static_cast<uint8_t>(unit & 0xFF));
        if (wide) stored.push_back(static_cast<uint8_t>(unit >> 8));
    }
    return true;
}

// One character of UTF-8 or WTF-8 from text[at]; moves `at` behind it. A wrong byte reads as U+FFFD.
char32_t nextCharacter(std::string_view text, size_t& at) {
    const auto lead = static_cast<uint8_t>(text[at++]);
    if (lead < 0x80) return lead;
    const int more = lead >= 0xF0 && lead < 0xF5   ? 3
                     : lead >= 0xE0 && lead < 0xF0 ? 2
                     : lead >= 0xC2 && lead < 0xE0 ? 1
                                                   : 0;
    if (more == 0 || at + static_cast<size_t>(more) > text.size()) return kReplacement;
    char32_t c = lead & (0x3F >> more);
    for (int i = 0; i < more; ++i) {
        const auto next = static_cast<uint8_t>(text[at + static_cast<size_t>(i)]);
        if ((next & 0xC0) != 0x80) return kReplacement;
        c = c << 6 | (next & 0x3F);
    }
    if ((more == 2 && c < 0x800) || (more == 3 && (c < 0x10000 || c > 0x10FFFF))) return kReplacement;
    at += static_cast<size_t>(more);
    return c;
}

} // namespace

void decodeText(const Layout& layout, uint16_t codePage, std::span<const uint8_t> stored, std::string& utf8) {
    if (layout.rowCountSize == 1)
        decodeCodePage(codePage, stored, utf8);
    else if (stored.size() >= 2 && stored[0] == kMark0 && stored[1] == kMark1)
        decodeCompressed(stored.subspan(2), utf8);
    else
        decodeWide(stored, utf8);
}

// Compressed when that is not longer than plain; texts of one or two characters always stay plain. A leading
// U+FEFF would make plain text read as compressed: such a text is compressed whatever the rule says, or loses
// the mark.
void encodeText(std::string_view utf8, bool compress, Bytes& stored) {
    stored.clear();
    const std::span bytes(reinterpret_cast<const uint8_t*>(utf8.data()), utf8.size());
    if (compress && utf8.size() > 2 && utf8.size() <= kMaxCompressedUnits && isPlainAscii(bytes)) {
        stored.reserve(utf8.size() + 2);
        stored.push_back(kMark0);
        stored.push_back(kMark1);
        stored.insert(stored.end(), bytes.begin(), bytes.end());
        return;
    }
    const std::u16string units = utf16FromUtf8(utf8);
    const bool ambiguous = !units.empty() && units.front() == kByteOrderMark;
    if (ambiguous) {
        if (!appendCompressed(units, stored)) {
            const size_t from = units.find_first_not_of(kByteOrderMark);
            appendUnits(std::u16string_view(units).substr(std::min(from, units.size())), stored);
        }
        return;
    }
    if (compress && units.size() > 2 && units.size() <= kMaxCompressedUnits &&
        appendCompressed(units, stored)) {
        if (stored.size() <= 2 * units.size()) return;
        stored.clear();
    }
    appendUnits(units, stored);
}

std::u16string utf16FromUtf8(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    for (size_t at = 0; at < utf8.size();) {
        const char32_t c = nextCharacter(utf8, at);
        if (c < 0x10000) {
            out += static_cast<char16_t>(c);
        } else {
            out += static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
            out += static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        }
    }
    return out;
}

void appendUtf8(std::u16string_view text, std::string& utf8) {
    Utf8Writer out(utf8, text.size());
    for (const char16_t unit : text)
        out.put(unit);
    out.finish();
}

size_t utf16Length(std::string_view utf8) {
    size_t units = 0;
    for (size_t at = 0; at < utf8.size();)
        units += nextCharacter(utf8, at) < 0x10000 ? 1 : 2;
    return units;
}

} // namespace jet
