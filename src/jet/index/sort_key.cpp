// jet/index/sort_key.cpp — makes text keys out of the weights, and compares texts without making keys where
// it can.
//
// A key is 7F, the inline bytes W of all weighted characters, 01, the diacritic bytes D (one for each
// weighted character, trailing ones up to 02 dropped), then, if there are special characters, 01 01 01 and
// four bytes S for each, then 00.
#include "jet/index/sort_key.h"

#include "jet/error.h"
#include "jet/index/sort_weights.h"
#include "jet/index/text_units.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

namespace jet {
namespace {

using sort_weights::Kind;
using sort_weights::kNoDiacritic;
using sort_weights::Weight;

constexpr uint8_t kAscendingFlag = 0x7F, kSectionEnd = 0x01, kKeyEnd = 0x00, kSpecialMark = 0x06;
constexpr uint8_t kUnknownLead = 0xFF; // above every known weight; only in comparisons, never in a stored key
constexpr size_t kUnitsInKey = 255, kAllUnits = std::numeric_limits<size_t>::max();

const Weight& weightOf(const sort_weights::Table& table, char16_t unit) {
    static constexpr Weight kUnknown{};
    return unit < sort_weights::kWeightTableEnd ? table[unit] : kUnknown;
}

template <class Units> [[noreturn]] void refuseCharacter(char16_t unit, Units rest) {
    char32_t code = unit;
    char16_t low = 0;
    if ((unit & 0xFC00) == 0xD800 && rest.next(low) && (low & 0xFC00) == 0xDC00)
        code = 0x10000 + ((unit & 0x3FFu) << 10) + (low & 0x3FFu);
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(code));
    throw Error(Err::InvalidArgument,
                std::string("Metindeki ") + name +
                    " karakterinin sıralamadaki yeri bilinmiyor; bu karakter dizinli bir alanda "
                    "kullanılamaz.");
}

// Collects D, which is nearly always all 02: those are only counted until another byte comes.
class Diacritics {
  public:
    void add(uint8_t byte) {
        if (byte != kNoDiacritic) {
            bytes_.resize(count_, kNoDiacritic);
            bytes_.push_back(byte);
        }
        ++count_;
    }
    void addMark(uint8_t value) {
        if (count_ == 0) return add(value);
        bytes_.resize(count_, kNoDiacritic);
        bytes_.back() = static_cast<uint8_t>(bytes_.back() + value);
    }
    void appendTo(Bytes& key) const {
        size_t length = bytes_.size();
        while (length > 0 && bytes_[length - 1] <= kNoDiacritic)
            --length;
        key.insert(key.end(), bytes_.begin(), bytes_.begin() + static_cast<ptrdiff_t>(length));
    }

  private:
    Bytes bytes_;
    size_t count_ = 0;
};

void appendSpecial(Bytes& specials, size_t weightedBefore, uint8_t code) {
    const auto position = static_cast<uint16_t>(0x8000 | (4 * weightedBefore + 7));
    const uint8_t entry[] = {static_cast<uint8_t>(position >> 8), static_cast<uint8_t>(position),
                             kSpecialMark, code};
    specials.insert(specials.end(), std::begin(entry), std::end(entry));
}

enum class Unknown { Refuse, Last }; // Last: stands after everything known, for comparisons

template <Unknown unknown, class Units>
void appendKey(Units units, size_t maxUnits, SortOrder order, Bytes& key) {
    const auto& table = sort_weights::table(order);
    Diacritics diacritics;
    Bytes specials;
    const size_t start = key.size();
    key.push_back(kAscendingFlag);
    size_t weighted = 0, inlineEnd = key.size(); // inlineEnd: behind the last character that is no space
    char16_t unit = 0;
    for (size_t count = 0; count < maxUnits && units.next(unit); ++count) {
        const Weight& weight = weightOf(table, unit);
        switch (weight.kind) {
        case Kind::Weighted:
            key.push_back(static_cast<uint8_t>(weight.primary >> 8));
            if ((weight.primary & 0xFF) != 0) key.push_back(static_cast<uint8_t>(weight.primary));
            diacritics.add(weight.second);
            ++weighted;
            break;
        case Kind::Mark: diacritics.addMark(weight.second); break;
        case Kind::Special: appendSpecial(specials, weighted, weight.second); break;
        case Kind::Expansion: {
            const auto& letters = sort_weights::expansion(unit);
            const auto bytes = (order == kTurkishSort ? letters.turkish : letters.general).span();
            key.insert(key.end(), bytes.begin(), bytes.end());
            for (const uint8_t byte : letters.diacritics.span())
                diacritics.add(byte);
            ++weighted;
            break;
        }
        case Kind::Ignored: break;
        case Kind::Unknown:
            if constexpr (unknown == Unknown::Refuse) {
                key.resize(start);
                refuseCharacter(unit, units);
            }
            key.insert(key.end(),
                       {kUnknownLead, static_cast<uint8_t>(unit >> 8), static_cast<uint8_t>(unit)});
            diacritics.add(kNoDiacritic);
            ++weighted;
            break;
        }
        if (unit != u' ') inlineEnd = key.size();
    }
    key.resize(inlineEnd); // spaces at the end do not count; in D they were 02 and fall away by themselves
    key.push_back(kSectionEnd);
    diacritics.appendTo(key);
    if (!specials.empty()) {
        key.insert(key.end(), 3, kSectionEnd);
        key.insert(key.end(), specials.begin(), specials.end());
    }
    key.push_back(kKeyEnd);
}

int compareByKeys(std::string_view a, std::string_view b, SortOrder order) {
    Bytes keyA, keyB;
    appendKey<Unknown::Last>(Utf8Units(a), kAllUnits, order, keyA);
    appendKey<Unknown::Last>(Utf8Units(b), kAllUnits, order, keyB);
    const int difference = std::memcmp(keyA.data(), keyB.data(), std::min(keyA.size(), keyB.size()));
    if (difference != 0) return difference;
    return keyA.size() < keyB.size() ? -1 : keyA.size() > keyB.size();
}

std::string_view withoutTrailingSpaces(std::string_view text) {
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

// Gives the inline weights of a text one after the other and notes what else its key would hold.
class Primaries {
  public:
    Primaries(std::string_view text, const sort_weights::Table& table) : units_(text), table_(table) {}

    uint16_t next() { // 0 at the end, below every weight as 01 is in the key
        char16_t unit = 0;
        while (units_.next(unit)) {
            const Weight& weight = weightOf(table_, unit);
            switch (weight.kind) {
            case Kind::Weighted: hasTail |= weight.second != kNoDiacritic; return weight.primary;
            case Kind::Ignored: continue;
            case Kind::Mark:
            case Kind::Special: hasTail = true; continue;
            case Kind::Expansion:
            case Kind::Unknown: needsKey = true; return 0;
            }
        }
        return 0;
    }

    bool hasTail = false;  // D or S are not empty: equal weights do not yet mean equal keys
    bool needsKey = false; // a character that weighs more than one primary

  private:
    Utf8Units units_;
    const sort_weights::Table& table_;
};

} // namespace

bool knowsSortOrder(SortOrder order) { return order == kGeneralSort || order == kTurkishSort; }

void appendTextKey(std::u16string_view text, SortOrder order, Bytes& key) {
    appendKey<Unknown::Refuse>(Utf16Units(text), kUnitsInKey, order, key);
}

void appendTextKey(std::string_view utf8, SortOrder order, Bytes& key) {
    appendKey<Unknown::Refuse>(Utf8Units(utf8), kUnitsInKey, order, key);
}

bool canMakeTextKey(std::string_view utf8, SortOrder order) {
    if (!knowsSortOrder(order)) return false;
    const auto& table = sort_weights::table(order);
    Utf8Units units(utf8);
    char16_t unit = 0;
    for (size_t count = 0; count < kUnitsInKey && units.next(unit); ++count)
        if (weightOf(table, unit).kind == Kind::Unknown) return false;
    return true;
}

int compareText(std::string_view a, std::string_view b, SortOrder order) {
    if (a == b) return 0;
    a = withoutTrailingSpaces(a);
    b = withoutTrailingSpaces(b);
    const auto& table = sort_weights::table(order);
    Primaries left(a, table), right(b, table);
    for (;;) {
        const uint16_t x = left.next(), y = right.next();
        if (left.needsKey || right.needsKey) return compareByKeys(a, b, order);
        if (x != y) return x < y ? -1 : 1;
        if (x == 0) return left.hasTail || right.hasTail ? compareByKeys(a, b, order) : 0;
    }
}

} // namespace jet
