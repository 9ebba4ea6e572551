// jet/sql/like.cpp — LIKE: * any text, ? one character, # one digit, [a-z] and [!a-z] sets; without regard to
// case by the file's order.
#include "jet/sql/function_support.h"

#include "jet/format/row_codec.h"
#include "jet/index/sort_key.h"

#include <memory>
#include <vector>

namespace jet::sql {
namespace {

// A pattern cut into steps once, matched without recursion: a "*" remembers where to try again.
class Pattern {
  public:
    Pattern(std::string_view utf8, SortOrder order) {
        const std::u16string text = utf16FromUtf8(upperText(utf8, order));
        for (size_t i = 0; i < text.size(); ++i) {
            Step step;
            switch (text[i]) {
            case u'*': step.kind = Kind::Any; break;
            case u'?': step.kind = Kind::One; break;
            case u'#': step.kind = Kind::Digit; break;
            case u'[':
                if (!parseSet(text, i, step)) continue;
                break;
            default: step.single = text[i];
            }
            steps_.push_back(std::move(step));
        }
    }

    bool matches(std::u16string_view text) const {
        size_t step = 0, at = 0, retryStep = kNone, retryAt = 0;
        while (at < text.size()) {
            if (step < steps_.size() && steps_[step].kind == Kind::Any) {
                retryStep = ++step;
                retryAt = at;
            } else if (step < steps_.size() && steps_[step].accepts(text[at])) {
                ++step;
                ++at;
            } else if (retryStep != kNone) {
                step = retryStep;
                at = ++retryAt;
            } else
                return false;
        }
        while (step < steps_.size() && steps_[step].kind == Kind::Any)
            ++step;
        return step == steps_.size();
    }

  private:
    static constexpr size_t kNone = static_cast<size_t>(-1);
    enum class Kind { Single, Any, One, Digit, Set };
    struct Step {
        Kind kind = Kind::Single;
        char16_t single = 0;
        bool negated = false;
        std::vector<std::pair<char16_t, char16_t>> ranges;

        bool accepts(char16_t c) const {
            switch (kind) {
            case Kind::One: return true;
            case Kind::Digit: return c >= u'0' && c <= u'9';
            case Kind::Set:
                for (const auto& [from, to] : ranges)
                    if (c >= from && c <= to) return !negated;
                return negated;
            default: return c == single;
            }
        }
    };

    // From "[" at i to its "]"; without one the bracket is an ordinary character. "[]" is nothing at all.
    static bool parseSet(const std::u16string& text, size_t& i, Step& step) {
        const size_t close = text.find(u']', i + 1);
        if (close == std::u16string::npos) {
            step.single = text[i];
            return true;
        }
        size_t at = i + 1;
        i = close;
        if (at == close) return false;
        step.kind = Kind::Set;
        if (text[at] == u'!' && at + 1 < close) {
            step.negated = true;
            ++at;
        }
        while (at < close) {
            const char16_t from = text[at++];
            char16_t to = from;
            if (at + 1 < close && text[at] == u'-') {
                to = text[at + 1];
                at += 2;
            }
            step.ranges.emplace_back(from, to);
        }
        return true;
    }

    std::vector<Step> steps_;
};

// like(text, pattern); a constant pattern is cut once for the statement.
void like(sqlite3_context* call, int count, sqlite3_value** args) {
    guarded(call, [&] {
        if (anyNull(call, count, args)) return;
        const SortOrder order = contextOf(call).order;
        const auto* pattern = static_cast<const Pattern*>(sqlite3_get_auxdata(call, 1));
        std::unique_ptr<Pattern> made;
        if (!pattern) {
            made = std::make_unique<Pattern>(textOf(args[1]), order);
            pattern = made.get();
        }
        const bool match = pattern->matches(utf16FromUtf8(upperText(textOf(args[0]), order)));
        if (made)
            sqlite3_set_auxdata(call, 1, made.release(), [](void* p) { delete static_cast<Pattern*>(p); });
        sqlite3_result_int(call, match ? 1 : 0);
    });
}

} // namespace

void registerLike(sqlite3* db, FunctionContext& context) { addFunction(db, context, "jet_like", like); }

} // namespace jet::sql
