// jet/sql/functions_format.cpp — Format(value, mask): number, date and text masks under Turkish settings
// (decimal comma, point between thousands, dates with points).
#include "jet/sql/function_support.h"

#include "jet/format/row_codec.h"
#include "jet/index/sort_key.h"
#include "jet/sql/date_text.h"
#include "jet/sql/number_mask.h"

#include <array>
#include <cstdio>

namespace jet::sql {
namespace {

enum class MaskKind { Number, Date, Text };

struct NamedMask {
    std::string_view name;
    MaskKind kind;
    std::string_view mask;
};

constexpr std::array<NamedMask, 17> kNamedMasks = {{
    {"general date", MaskKind::Date, "c"},
    {"long date", MaskKind::Date, "d mmmm yyyy dddd"},
    {"medium date", MaskKind::Date, "dd mmm yyyy"},
    {"short date", MaskKind::Date, "dd.mm.yyyy"},
    {"long time", MaskKind::Date, "hh:nn:ss"},
    {"medium time", MaskKind::Date, "hh:nn"},
    {"short time", MaskKind::Date, "hh:nn"},
    {"general number", MaskKind::Number, ""},
    {"currency", MaskKind::Number, "#,##0.00 \"TL\""},
    {"fixed", MaskKind::Number, "0.00"},
    {"standard", MaskKind::Number, "#,##0.00"},
    {"percent", MaskKind::Number, "0.00%"},
    {"scientific", MaskKind::Number, "0.00E+00"},
    {"yes/no", MaskKind::Number, "\"Evet\";\"Evet\";\"Hayır\""},
    {"true/false", MaskKind::Number, "\"Doğru\";\"Doğru\";\"Yanlış\""},
    {"on/off", MaskKind::Number, "\"Açık\";\"Açık\";\"Kapalı\""},
    {"general", MaskKind::Number, ""},
}};

// The first placeholder that belongs to one kind only decides.
MaskKind kindOf(std::string_view mask) {
    for (size_t i = 0; i < mask.size(); ++i) {
        const char c = mask[i];
        if (c == '\\')
            ++i;
        else if (c == '"') {
            const size_t close = mask.find('"', i + 1);
            if (close == std::string_view::npos) break;
            i = close;
        } else if (c == '0' || c == '#' || c == '%')
            return MaskKind::Number;
        else if (c == '@' || c == '&' || c == '<' || c == '>' || c == '!')
            return MaskKind::Text;
        else if (std::string_view("dDmMyYhHnNsSqQwWcC").find(c) != std::string_view::npos)
            return MaskKind::Date;
    }
    return MaskKind::Number;
}

// --- dates
class DateMask {
  public:
    DateMask(std::string_view mask, Date date) : mask_(mask), date_(date), parts_(date.parts()) {
        lower_.reserve(mask.size());
        for (const char c : mask)
            lower_.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c);
        twelveHours_ = lower_.find("am/pm") != std::string::npos || lower_.find("a/p") != std::string::npos ||
                       lower_.find("ampm") != std::string::npos;
    }

    std::string run() {
        while (at_ < mask_.size())
            step();
        return std::move(out_);
    }

  private:
    void step() {
        const char c = lower_[at_];
        if (c == '\\' && at_ + 1 < mask_.size()) {
            out_.push_back(mask_[at_ + 1]);
            at_ += 2;
        } else if (c == '"') {
            size_t close = mask_.find('"', at_ + 1);
            if (close == std::string_view::npos) close = mask_.size();
            out_ += mask_.substr(at_ + 1, close - at_ - 1);
            at_ = close + 1;
        } else if (c == '/') {
            out_.push_back('.');
            ++at_;
        } else if (halfDay())
            return;
        else if (std::string_view("dmyhnsqwct").find(c) != std::string_view::npos)
            field(c, run(c));
        else {
            out_.push_back(mask_[at_]);
            ++at_;
        }
    }

    int run(char c) {
        const size_t from = at_;
        while (at_ < lower_.size() && lower_[at_] == c)
            ++at_;
        return static_cast<int>(at_ - from);
    }

    bool halfDay() {
        for (const std::string_view name : {"am/pm", "ampm", "a/p"})
            if (lower_.compare(at_, name.size(), name) == 0) {
                out_ += parts_.hour < 12 ? "ÖÖ" : "ÖS";
                at_ += name.size();
                return true;
            }
        return false;
    }

    void field(char c, int length) {
        const bool minutes = c == 'm' && length <= 2 && afterHour_;
        switch (minutes ? 'n' : c) {
        case 'd': day(length); break;
        case 'm': month(length); break;
        case 'y': year(length); break;
        case 'q': number((parts_.month - 1) / 3 + 1, 1); break;
        case 'w': number(weekdayOf(date_), 1); break;
        case 'h': number(twelveHours_ ? (parts_.hour + 11) % 12 + 1 : parts_.hour, length); break;
        case 'n': number(parts_.minute, length); break;
        case 's': number(parts_.second, length); break;
        case 'c': out_ += dateText(date_); break;
        default: // ttttt: the whole time
            for (const auto& [value, mark] :
                 {std::pair{parts_.hour, ":"}, {parts_.minute, ":"}, {parts_.second, ""}}) {
                number(value, 2);
                out_ += mark;
            }
        }
        afterHour_ = c == 'h';
    }

    void day(int length) {
        if (length <= 2)
            number(parts_.day, length);
        else if (length <= 4)
            out_ += weekdayName(weekdayOf(date_), length == 3 ? NameForm::Short : NameForm::Long);
        else
            out_ += DateMask(length == 5 ? "dd.mm.yyyy" : "d mmmm yyyy dddd", date_).run();
    }

    void month(int length) {
        if (length <= 2)
            number(parts_.month, length);
        else
            out_ += monthName(parts_.month, length == 3 ? NameForm::Short : NameForm::Long);
    }

    void year(int length) {
        if (length == 1)
            number(static_cast<int>(date_.days - Date::fromParts({parts_.year, 1, 1, 0, 0, 0}).days) + 1, 1);
        else if (length == 2)
            number(parts_.year % 100, 2);
        else
            number(parts_.year, 4);
    }

    void number(int value, int width) {
        char buffer[16];
        std::snprintf(buffer, sizeof buffer, "%0*d", std::min(width, 4), value);
        out_ += buffer;
    }

    std::string_view mask_;
    std::string lower_, out_;
    Date date_;
    Date::Parts parts_;
    size_t at_ = 0;
    bool twelveHours_ = false, afterHour_ = false;
};

// --- texts
std::string formatText(const std::string& value, std::string_view mask, SortOrder order) {
    std::string source = value;
    bool leftToRight = false;
    size_t places = 0;
    for (const char c : mask) {
        if (c == '<') source = lowerText(source, order);
        if (c == '>') source = upperText(source, order);
        leftToRight |= c == '!';
        places += c == '@' || c == '&';
    }
    const std::u16string text = utf16FromUtf8(source);
    if (places == 0) return source;
    // Without "!" the places are filled from the right; what does not fit stands in front.
    size_t missing = !leftToRight && places > text.size() ? places - text.size() : 0;
    size_t next = 0;
    std::u16string out;
    if (text.size() > places) {
        next = text.size() - places;
        out = text.substr(0, next);
    }
    for (const char16_t c : utf16FromUtf8(mask)) {
        if (c == '<' || c == '>' || c == '!') continue;
        if (c != '@' && c != '&') {
            out.push_back(c);
        } else if (missing > 0 || next >= text.size()) {
            if (missing > 0) --missing;
            if (c == '@') out.push_back(' ');
        } else
            out.push_back(text[next++]);
    }
    std::string utf8;
    appendUtf8(out, utf8);
    return utf8;
}

// Arguments: value, mask, and 1 when the value is known to be a date.
void format(sqlite3_context* call, int, sqlite3_value** args) {
    guarded(call, [&] {
        if (isNull(args[0])) return giveText(call, ""); // Format(Null) is an empty text
        const bool isText = sqlite3_value_type(args[0]) == SQLITE_TEXT;
        const bool isDate = sqlite3_value_int(args[2]) != 0 && !isText;
        std::string mask = isNull(args[1]) ? std::string() : textOf(args[1]);
        if (mask.empty()) return giveText(call, isDate ? dateText(dateOf(args[0])) : textOf(args[0]));
        MaskKind kind = kindOf(mask);
        const std::string folded = lowerText(mask, kGeneralSort);
        for (const NamedMask& named : kNamedMasks)
            if (folded == named.name) {
                kind = named.kind;
                mask = named.mask;
                break;
            }
        const std::string text = isDate ? dateText(dateOf(args[0])) : textOf(args[0]);
        if (kind == MaskKind::Text) return giveText(call, formatText(text, mask, contextOf(call).order));
        const auto number = isText ? parseNumber(text) : std::optional(sqlite3_value_double(args[0]));
        if (kind == MaskKind::Number) return giveText(call, number ? formatNumber(*number, mask) : text);
        const auto date = isText && !number ? parseDateText(text)
                          : number          ? std::optional(Date{*number})
                                            : std::nullopt;
        if (!date || !(date->days > -657435.0 && date->days < 2958466.0)) return giveText(call, text);
        giveText(call, DateMask(mask, *date).run());
    });
}

} // namespace

void registerFormatFunctions(sqlite3* db, FunctionContext& context) {
    addFunction(db, context, "jet_format", format);
}

} // namespace jet::sql
