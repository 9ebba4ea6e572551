// jet/index/text_units.h — reads a text one UTF-16 unit at a time, whatever its form; for the inner loops of
// sort keys.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace jet {

class Utf16Units {
  public:
    explicit Utf16Units(std::u16string_view text) : at_(text.data()), end_(text.data() + text.size()) {}
    bool next(char16_t& unit) { // false at the end
        if (at_ == end_) return false;
        unit = *at_++;
        return true;
    }

  private:
    const char16_t *at_, *end_;
};

// A byte that begins no well-formed sequence reads as U+FFFD.
class Utf8Units {
  public:
    explicit Utf8Units(std::string_view text) : at_(text.data()), end_(text.data() + text.size()) {}
    bool next(char16_t& unit) { // false at the end
        if (low_ != 0) {
            unit = low_;
            low_ = 0;
            return true;
        }
        if (at_ == end_) return false;
        const auto lead = static_cast<uint8_t>(*at_);
        if (lead < 0x80) {
            unit = lead;
            ++at_;
        } else if (lead >= 0xC2 && lead < 0xE0 && follows(1)) {
            unit = static_cast<char16_t>((lead & 0x1F) << 6 | bits(1));
            at_ += 2;
        } else {
            unit = longer(lead);
        }
        return true;
    }

  private:
    bool follows(ptrdiff_t count) const {
        if (end_ - at_ <= count) return false;
        for (ptrdiff_t i = 1; i <= count; ++i)
            if ((at_[i] & 0xC0) != 0x80) return false;
        return true;
    }
    uint32_t bits(ptrdiff_t i) const { return static_cast<uint8_t>(at_[i]) & 0x3F; }

    char16_t longer(uint8_t lead) {
        if ((lead & 0xF0) == 0xE0 && follows(2)) {
            const uint32_t unit = (lead & 0x0Fu) << 12 | bits(1) << 6 | bits(2);
            if (unit >= 0x800) {
                at_ += 3;
                return static_cast<char16_t>(unit);
            }
        } else if ((lead & 0xF8) == 0xF0 && follows(3)) {
            const uint32_t code = (lead & 0x07u) << 18 | bits(1) << 12 | bits(2) << 6 | bits(3);
            if (code >= 0x10000 && code <= 0x10FFFF) {
                at_ += 4;
                low_ = static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
                return static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            }
        }
        ++at_;
        return 0xFFFD;
    }

    const char *at_, *end_;
    char16_t low_ = 0; // second half of a pair still to be given out
};

} // namespace jet
