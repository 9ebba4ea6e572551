// jet/format/table_def.h: lookups in a definition, and how names are compared.
#include "jet/format/table_def.h"

#include "jet/error.h"
#include "jet/format/row_codec.h"

#include <algorithm>

namespace jet {

namespace {

// Lower case of the alphabets that names are written in.
char16_t foldUnit(char16_t c) {
    if (c == u'I' || c == u'İ' || c == u'ı') return u'i';
    if ((c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7)) return c + 0x20;
    if (c == 0x178) return 0xFF;
    if ((c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177)) return c | 1;
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) return c + (c & 1);
    if ((c >= 0x391 && c <= 0x3A9) || (c >= 0x410 && c <= 0x42F)) return c + 0x20;
    if (c >= 0x400 && c <= 0x40F) return c + 0x50;
    return c;
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char foldAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; }

} // namespace

bool sameName(std::string_view a, std::string_view b) {
    if (a == b) return true;
    if (isAscii(a) && isAscii(b))
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](char x, char y) { return foldAscii(x) == foldAscii(y); });
    return foldName(a) == foldName(b);
}

std::string foldName(std::string_view name) {
    if (isAscii(name)) {
        std::string folded(name);
        std::transform(folded.begin(), folded.end(), folded.begin(), foldAscii);
        return folded;
    }
    std::u16string units = utf16FromUtf8(name);
    std::transform(units.begin(), units.end(), units.begin(), foldUnit);
    std::string folded;
    appendUtf8(units, folded);
    return folded;
}

// A file made elsewhere may have names that differ in case or in the dot of an i only: the exact one wins.
std::optional<size_t> TableDef::findField(std::string_view wanted) const {
    std::optional<size_t> similar;
    for (size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].name == wanted) return i;
        if (!similar && sameName(fields[i].name, wanted)) similar = i;
    }
    return similar;
}

const FieldDef& TableDef::field(std::string_view wanted) const {
    if (const auto at = findField(wanted)) return fields[*at];
    throw Error(Err::NoSuchItem, "'" + std::string(wanted) + "' adında bir alan yok.").inTable(name);
}

const IndexDef* TableDef::findIndex(std::string_view wanted) const {
    const IndexDef* similar = nullptr;
    for (const IndexDef& index : indexes) {
        if (index.name == wanted) return &index;
        if (!similar && sameName(index.name, wanted)) similar = &index;
    }
    return similar;
}

const IndexDef* TableDef::primaryKey() const {
    const auto at = std::find_if(indexes.begin(), indexes.end(), [](const IndexDef& i) { return i.primary; });
    return at == indexes.end() ? nullptr : &*at;
}

std::string TableDef::readOnlyReason() const {
    if (!unsupported.empty()) return unsupported;
    for (const IndexDef& index : indexes)
        if (!index.readOnlyReason.empty()) return index.readOnlyReason;
    return {};
}

} // namespace jet
