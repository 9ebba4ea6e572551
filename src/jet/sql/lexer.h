// jet/sql/lexer.h — cuts a Jet SQL text into tokens; knows quoting and number forms, nothing of grammar.
#pragma once

#include "jet/error.h"

#include <string>
#include <string_view>
#include <vector>

namespace jet::sql {

enum class TokenKind {
    End,
    Word,      // bare name or keyword; `text` as written
    Name,      // [bracketed] or `quoted` name; never a keyword
    Text,      // '…' or "…"; `text` without the quotes, doubled quotes made single
    Number,    // digits, point, exponent, or &H hexadecimal (already turned to decimal)
    DateText,  // #…#; `text` without the marks
    Parameter, // ? (text empty), :name or @name (text = the name)
    Symbol,    // operator or punctuation; `text` is it
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::string text;
    size_t at = 0;  // byte offset in the SQL text
    size_t end = 0; // offset past it
};

// The last token is always End. Err::Syntax with the place for an open quote, an unknown character, a NUL.
std::vector<Token> tokenize(std::string_view sql);

// Without regard to ASCII case; `keyword` in capitals.
bool sameKeyword(std::string_view word, std::string_view keyword);

// "REASON: … önceki ⟶hatalı yer … (N. karakter)" as an Error of this number.
Error errorAt(Err number, std::string_view sql, size_t at, const std::string& reason);

} // namespace jet::sql
