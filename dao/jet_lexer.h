// Tokens of the Access SQL dialect.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvo::jet {

enum class TokenKind {
    End,
    Word,    // a bare name or keyword: letters, digits, _ (and a trailing $)
    Name,    // [bracketed] or `quoted` name; text without the delimiters
    String,  // 'text' or "text"; text with doubled quotes undone
    Number,  // text as SQLite reads it (hexadecimal &H.. already in decimal)
    Date,    // #date#; text is the OLE date as a REAL literal
    Symbol   // punctuation and operators: ( ) , . ! ; * / \ ^ + - & = <> < > <= >=
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::string text;
    size_t begin = 0;  // byte offsets in the statement
    size_t end = 0;
};

// The tokens of a statement, ending with an End token. Throws SyntaxError (3075) for an
// unterminated string, name or date, or a date that is not a date.
std::vector<Token> tokenize(std::string_view sql);

// True when a Word token's text is the keyword (compared without regard to case).
bool isKeyword(const Token& token, std::string_view keyword);

// ASCII case-insensitive equality of names and keywords.
bool equalsNoCase(std::string_view a, std::string_view b);

}  // namespace kelvo::jet
