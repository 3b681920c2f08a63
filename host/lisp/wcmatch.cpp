// Wildcard matching: each alternative is compiled to a token list, then matched with a
// dynamic-programming table so that many stars cannot blow up.
#include "wcmatch.h"

#include <cwctype>
#include <string>
#include <vector>

namespace lisp {

namespace {

struct Token {
    enum Kind { Literal, Digit, Alpha, NonAlnum, Star, Any, Class };
    Token(Kind k, wchar_t c = 0) : kind(k), ch(c) {}
    Kind kind;
    wchar_t ch;
    std::wstring members;   // Class: single characters and ranges as "a-z" triples
    bool negated = false;
};

bool classHas(const Token& t, wchar_t c) {
    const auto& m = t.members;
    for (std::size_t i = 0; i < m.size(); ++i) {
        if (i + 2 < m.size() && m[i + 1] == L'-') {
            if (c >= m[i] && c <= m[i + 2]) return true;
            i += 2;
        } else if (m[i] == c) {
            return true;
        }
    }
    return false;
}

bool tokenMatches(const Token& t, wchar_t c) {
    switch (t.kind) {
    case Token::Literal: return t.ch == c;
    case Token::Digit: return std::iswdigit(c);
    case Token::Alpha: return std::iswalpha(c);
    case Token::NonAlnum: return !std::iswalnum(c);
    case Token::Any: return true;
    case Token::Class: return classHas(t, c) != t.negated;
    case Token::Star: return false;
    }
    return false;
}

// Reads a [...] class starting after '['; returns the position after ']'.
std::size_t readClass(std::wstring_view p, std::size_t i, Token& t) {
    t.kind = Token::Class;
    if (i < p.size() && p[i] == L'~' && i + 1 < p.size() && p[i + 1] != L']') {
        t.negated = true;
        ++i;
    }
    bool first = true;
    for (; i < p.size() && (first || p[i] != L']'); ++i, first = false) {
        if (p[i] == L'`' && i + 1 < p.size()) ++i;
        t.members += p[i];
    }
    return i < p.size() ? i + 1 : i;
}

Token simpleToken(wchar_t c) {
    switch (c) {
    case L'#': return {Token::Digit};
    case L'@': return {Token::Alpha};
    case L'.': return {Token::NonAlnum};
    case L'*': return {Token::Star};
    case L'?': return {Token::Any};
    default: return {Token::Literal, c};
    }
}

// Splits the pattern at commas (outside classes and escapes) into compiled alternatives.
std::vector<std::pair<bool, std::vector<Token>>> compile(std::wstring_view p) {
    std::vector<std::pair<bool, std::vector<Token>>> alts(1);
    for (std::size_t i = 0; i < p.size();) {
        auto& [negated, tokens] = alts.back();
        wchar_t c = p[i++];
        if (c == L',') {
            alts.emplace_back();
        } else if (c == L'~' && tokens.empty() && !negated) {
            negated = true;
        } else if (c == L'`' && i < p.size()) {
            tokens.push_back({Token::Literal, p[i++]});
        } else if (c == L'[') {
            Token t{Token::Class};
            i = readClass(p, i, t);
            tokens.push_back(std::move(t));
        } else {
            tokens.push_back(simpleToken(c));
        }
    }
    return alts;
}

bool matchTokens(std::wstring_view s, const std::vector<Token>& tokens) {
    // reach[j]: the first k tokens can match the first j characters.
    std::vector<char> reach(s.size() + 1, 0);
    reach[0] = 1;
    for (const Token& t : tokens) {
        std::vector<char> next(s.size() + 1, 0);
        for (std::size_t j = 0; j <= s.size(); ++j) {
            if (t.kind == Token::Star) next[j] = reach[j] || (j > 0 && next[j - 1]);
            else next[j] = j > 0 && reach[j - 1] && tokenMatches(t, s[j - 1]);
        }
        reach = std::move(next);
    }
    return reach[s.size()];
}

}  // namespace

bool wcmatch(std::wstring_view text, std::wstring_view pattern) {
    for (const auto& [negated, tokens] : compile(pattern))
        if (matchTokens(text, tokens) != negated) return true;
    return false;
}

}  // namespace lisp
