// jet/sql/lexer.cpp — see lexer.h.
#include "jet/sql/lexer.h"

#include <algorithm>
#include <charconv>

namespace jet::sql {
namespace {

constexpr size_t kContextBytes = 30; // shown on either side of the place of an error
constexpr size_t kLongestSql = 4u << 20;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }
// Letters of any script count as letters: everything past ASCII.
bool startsWord(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}
bool continuesWord(char c) { return startsWord(c) || isDigit(c) || c == '$'; }

class Lexer {
  public:
    explicit Lexer(std::string_view sql) : sql_(sql) {}

    std::vector<Token> run() {
        if (sql_.size() > kLongestSql) throw Error(Err::Syntax, "SQL cümlesi çok uzun.");
        do
            tokens_.push_back(next());
        while (tokens_.back().kind != TokenKind::End);
        return std::move(tokens_);
    }

  private:
    Token next() {
        while (at_ < sql_.size() && (isSpace(sql_[at_]) || noBreakSpace()))
            at_ += isSpace(sql_[at_]) ? 1 : 2;
        begin_ = at_;
        if (at_ == sql_.size()) return make(TokenKind::End, {});
        const char c = sql_[at_];
        if (c == '\0') throw errorAt(Err::Syntax, sql_, at_, "Geçersiz karakter");
        if (c == '\'' || c == '"') return quoted(c, TokenKind::Text, "Metnin kapanış tırnağı eksik");
        if (c == '[') return quoted(']', TokenKind::Name, "Adın kapanış köşeli ayracı eksik");
        if (c == '`') return quoted('`', TokenKind::Name, "Adın kapanış tırnağı eksik");
        if (c == '#') return quoted('#', TokenKind::DateText, "Tarihin kapanış # işareti eksik");
        if (isDigit(c) || (c == '.' && at_ + 1 < sql_.size() && isDigit(sql_[at_ + 1]) && !afterName()))
            return number();
        if (c == '&' && at_ + 2 < sql_.size() && (sql_[at_ + 1] == 'H' || sql_[at_ + 1] == 'h') &&
            isHex(sql_[at_ + 2]))
            return hexNumber();
        if (c == '?') {
            ++at_;
            return make(TokenKind::Parameter, {});
        }
        if ((c == ':' || c == '@') && at_ + 1 < sql_.size() && startsWord(sql_[at_ + 1])) {
            ++at_;
            return make(TokenKind::Parameter, word());
        }
        if (startsWord(c)) {
            std::string text = word();
            return make(TokenKind::Word, std::move(text));
        }
        return symbol();
    }

    bool noBreakSpace() const { return sql_.substr(at_, 2) == "\xC2\xA0"; }
    // "t.5" cannot be; but "[t].1x" could only be a slip: a point after a name is always a separator.
    bool afterName() const {
        return !tokens_.empty() && tokens_.back().end == at_ &&
               (tokens_.back().kind == TokenKind::Word || tokens_.back().kind == TokenKind::Name);
    }
    static bool isHex(char c) { return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

    Token make(TokenKind kind, std::string text) { return {kind, std::move(text), begin_, at_}; }

    std::string word() {
        const size_t from = at_;
        while (at_ < sql_.size() && continuesWord(sql_[at_]) && !noBreakSpace())
            ++at_;
        return std::string(sql_.substr(from, at_ - from));
    }

    Token quoted(char close, TokenKind kind, const char* unclosed) {
        std::string text;
        for (++at_; at_ < sql_.size(); ++at_) {
            if (sql_[at_] == '\0') throw errorAt(Err::Syntax, sql_, at_, "Geçersiz karakter");
            if (sql_[at_] == close) {
                const bool doubled =
                    kind == TokenKind::Text && at_ + 1 < sql_.size() && sql_[at_ + 1] == close;
                if (!doubled) {
                    ++at_;
                    if (kind == TokenKind::Name && text.empty())
                        throw errorAt(Err::Syntax, sql_, begin_, "Boş ad olamaz");
                    return make(kind, std::move(text));
                }
                ++at_;
            }
            text.push_back(sql_[at_]);
        }
        throw errorAt(Err::Syntax, sql_, begin_, unclosed);
    }

    Token number() {
        const auto digits = [this] {
            while (at_ < sql_.size() && isDigit(sql_[at_]))
                ++at_;
        };
        digits();
        if (at_ < sql_.size() && sql_[at_] == '.') {
            ++at_;
            digits();
        }
        if (at_ < sql_.size() && (sql_[at_] == 'e' || sql_[at_] == 'E')) {
            size_t ahead = at_ + 1;
            if (ahead < sql_.size() && (sql_[ahead] == '+' || sql_[ahead] == '-')) ++ahead;
            if (ahead < sql_.size() && isDigit(sql_[ahead])) {
                at_ = ahead;
                digits();
            }
        }
        std::string text(sql_.substr(begin_, at_ - begin_));
        if (at_ < sql_.size() && startsWord(sql_[at_]) && !noBreakSpace())
            throw errorAt(Err::Syntax, sql_, begin_, "Sayıya bitişik harf var");
        return make(TokenKind::Number, std::move(text));
    }

    Token hexNumber() {
        at_ += 2;
        const size_t from = at_;
        while (at_ < sql_.size() && isHex(sql_[at_]))
            ++at_;
        uint32_t value = 0;
        const auto [end, error] = std::from_chars(sql_.data() + from, sql_.data() + at_, value, 16);
        if (error != std::errc()) throw errorAt(Err::Syntax, sql_, begin_, "On altılık sayı çok büyük");
        return make(TokenKind::Number, std::to_string(static_cast<int32_t>(value)));
    }

    Token symbol() {
        for (const std::string_view two : {"<>", "<=", ">=", "=<", "=>", "!="})
            if (sql_.substr(at_, 2) == two) {
                at_ += 2;
                if (two == "!=") return make(TokenKind::Symbol, "<>");
                if (two == "=<") return make(TokenKind::Symbol, "<=");
                if (two == "=>") return make(TokenKind::Symbol, ">=");
                return make(TokenKind::Symbol, std::string(two));
            }
        const char c = sql_[at_];
        if (std::string_view("()+-*/\\^&=<>,.;!").find(c) == std::string_view::npos)
            throw errorAt(Err::Syntax, sql_, at_, "Beklenmeyen karakter");
        ++at_;
        return make(TokenKind::Symbol, std::string(1, c));
    }

    std::string_view sql_;
    size_t at_ = 0, begin_ = 0;
    std::vector<Token> tokens_;
};

} // namespace

std::vector<Token> tokenize(std::string_view sql) { return Lexer(sql).run(); }

bool sameKeyword(std::string_view word, std::string_view keyword) {
    return word.size() == keyword.size() &&
           std::equal(word.begin(), word.end(), keyword.begin(), [](char a, char b) {
               return (a >= 'a' && a <= 'z' ? static_cast<char>(a - 'a' + 'A') : a) == b;
           });
}

Error errorAt(Err number, std::string_view sql, size_t at, const std::string& reason) {
    at = std::min(at, sql.size());
    size_t from = at > kContextBytes ? at - kContextBytes : 0;
    while (from < at && isContinuation(sql[from]))
        ++from;
    size_t to = std::min(sql.size(), at + kContextBytes);
    while (to < sql.size() && isContinuation(sql[to]))
        ++to;
    std::string shown;
    if (from > 0) shown += "…";
    shown += sql.substr(from, at - from);
    shown += "⟶";
    shown += sql.substr(at, to - at);
    if (to < sql.size()) shown += "…";
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return isSpace(c) || c == '\0'; }, ' ');
    const auto before = sql.substr(0, at);
    const auto characters = static_cast<size_t>(
        std::count_if(before.begin(), before.end(), [](char c) { return !isContinuation(c); }));
    return Error(number,
                 "SQL: " + reason + ": " + shown + " (" + std::to_string(characters + 1) + ". karakter).");
}

} // namespace jet::sql
