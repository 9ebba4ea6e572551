// fuzz/fuzz_keys — two hostile texts: their sort keys in both orders agree with comparison, the stored forms
// of a text give it back, case changes settle, decoding takes any bytes.
#include "hostile_file.h"
#include "jet/format/code_page.h"
#include "jet/index/key.h"
#include "jet/index/sort_key.h"

#include <algorithm>

namespace {

using fuzz::require;

int sign(int v) { return (v > 0) - (v < 0); }

jet::Bytes keyOf(std::string_view text, jet::SortOrder order, bool descending) {
    jet::FieldDef field;
    field.size = 255;
    field.sortOrder = order;
    jet::Bytes key;
    jet::appendKeyPart(field, descending, jet::Value(text), key);
    return key;
}

int compareBytes(const jet::Bytes& a, const jet::Bytes& b) {
    const auto order = std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end());
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

void compare(std::string_view a, std::string_view b, jet::SortOrder order) {
    const int compared = sign(jet::compareText(a, b, order));
    require(compared == -sign(jet::compareText(b, a, order)), "comparison is antisymmetric");
    require(jet::compareText(a, a, order) == 0, "a text equals itself");
    for (const std::string_view text : {a, b}) {
        const std::string upper = jet::upperText(text, order), lower = jet::lowerText(text, order);
        require(jet::upperText(upper, order) == upper && jet::lowerText(lower, order) == lower,
                "case settles");
    }
    if (!jet::canMakeTextKey(a, order) || !jet::canMakeTextKey(b, order)) return;
    if (jet::utf16Length(a) > 255 || jet::utf16Length(b) > 255) return; // keys hold 255 units, comparison all
    require(compareBytes(keyOf(a, order, false), keyOf(b, order, false)) == compared,
            "keys order as texts compare");
    require(compareBytes(keyOf(a, order, true), keyOf(b, order, true)) == -compared,
            "descending keys turn it round");
}

void storeAndRead(std::string_view text) {
    std::string exact, read; // `text` with its ill-formed bytes replaced
    jet::appendUtf8(jet::utf16FromUtf8(text), exact);
    require(jet::utf16FromUtf8(exact).size() == jet::utf16Length(text), "lengths agree");
    if (exact.starts_with("\xFE\xFF") || jet::utf16FromUtf8(exact).starts_with(u'\xFEFF'))
        return; // ambiguous
    for (const bool compress : {false, true}) {
        jet::Bytes stored;
        jet::encodeText(exact, compress, stored);
        require(stored.size() <= 2 * jet::utf16Length(exact), "stored no longer than plain");
        read.clear();
        jet::decodeText(jet::kJet4, 1254, stored, read);
        require(read == exact, "a stored text reads back");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const fuzz::TimeBound bound;
    if (size > 4096) return 0;
    const std::string_view all(reinterpret_cast<const char*>(data), size);
    const size_t cut = std::min(all.find('\n'), size);
    const std::string_view a = all.substr(0, cut), b = all.substr(std::min(size, cut + 1));
    for (const jet::SortOrder order : {jet::kTurkishSort, jet::kGeneralSort})
        compare(a, b, order);
    storeAndRead(a);
    std::string text;
    const std::span<const uint8_t> bytes(data, size);
    for (const uint16_t codePage : {uint16_t{1252}, uint16_t{1254}, uint16_t{0}})
        jet::decodeText(jet::kJet3, codePage, bytes, text);
    jet::decodeText(jet::kJet4, 1254, bytes, text);
    storeAndRead(text);
    return 0;
}
