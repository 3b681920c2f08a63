// jet_like(pattern, text): Access's LIKE. * any run of characters, ? one character,
// # one digit, [abc] one of a list, [!abc] one not in it, [a-z] a range; [*] [?] [#] [[]
// match the character itself. Letters match without regard to case (all of Unicode).
// % and _ are ordinary characters, as in Access's default (ANSI-89) mode. A Null operand
// gives Null; a malformed pattern raises "Invalid pattern string.".
#include <memory>
#include <vector>

#include "jet_utf8.h"
#include "jet_values.h"
#include "text_collation.h"

namespace kelvo::jet {
namespace {

struct Element {
    enum Kind { Literal, AnyRun, One, Digit, Set } kind;
    char32_t c = 0;
    bool negated = false;
    std::vector<std::pair<char32_t, char32_t>> ranges{};

    explicit Element(Kind k, char32_t ch = 0) : kind(k), c(ch) {}
};

using Pattern = std::vector<Element>;

std::unique_ptr<Pattern> compile(std::u32string_view p) {
    auto out = std::make_unique<Pattern>();
    for (size_t i = 0; i < p.size(); ++i) {
        const char32_t c = p[i];
        if (c == '*') {
            if (out->empty() || out->back().kind != Element::AnyRun) out->emplace_back(Element::AnyRun);
        } else if (c == '?') {
            out->emplace_back(Element::One);
        } else if (c == '#') {
            out->emplace_back(Element::Digit);
        } else if (c == '[') {
            const size_t close = p.find(']', i + 1);
            if (close == std::u32string_view::npos) return nullptr;
            Element set(Element::Set);
            size_t k = i + 1;
            if (k < close && p[k] == '!' && k + 1 < close) {
                set.negated = true;
                ++k;
            }
            if (close == i + 1) {  // [] matches the empty string
                i = close;
                continue;
            }
            for (; k < close; ++k) {
                char32_t lo = foldCase(p[k]);
                char32_t hi = lo;
                if (k + 2 < close && p[k + 1] == '-') {
                    hi = foldCase(p[k + 2]);
                    if (hi < lo) return nullptr;
                    k += 2;
                }
                set.ranges.emplace_back(lo, hi);
            }
            out->push_back(std::move(set));
            i = close;
        } else {
            out->emplace_back(Element::Literal, foldCase(c));
        }
    }
    return out;
}

bool matchOne(const Element& e, char32_t c) {
    switch (e.kind) {
        case Element::Literal: return e.c == c;
        case Element::One: return true;
        case Element::Digit: return c >= '0' && c <= '9';
        case Element::Set: {
            bool in = false;
            for (const auto& [lo, hi] : e.ranges) in = in || (c >= lo && c <= hi);
            return in != e.negated;
        }
        case Element::AnyRun: return false;
    }
    return false;
}

// Wildcard matching with backtracking to the last *: O(pattern x text) at worst.
bool matches(const Pattern& p, std::u32string_view text) {
    size_t pi = 0, ti = 0;
    size_t starP = std::u32string_view::npos, starT = 0;
    while (ti < text.size()) {
        if (pi < p.size() && p[pi].kind == Element::AnyRun) {
            starP = pi++;
            starT = ti;
        } else if (pi < p.size() && matchOne(p[pi], text[ti])) {
            ++pi;
            ++ti;
        } else if (starP != std::u32string_view::npos) {
            pi = starP + 1;
            ti = ++starT;
        } else {
            return false;
        }
    }
    while (pi < p.size() && p[pi].kind == Element::AnyRun) ++pi;
    return pi == p.size();
}

void deletePattern(void* p) { delete static_cast<Pattern*>(p); }

void like(sqlite3_context* ctx, int, sqlite3_value** argv) {
    if (isNull(argv[0]) || isNull(argv[1])) return sqlite3_result_null(ctx);
    auto* pattern = static_cast<Pattern*>(sqlite3_get_auxdata(ctx, 0));
    if (pattern == nullptr) {
        std::unique_ptr<Pattern> compiled = compile(toCodePoints(textOf(argv[0])));
        if (!compiled) return resultError(ctx, kInvalidPattern);
        pattern = compiled.release();
        sqlite3_set_auxdata(ctx, 0, pattern, deletePattern);  // frees it on failure too
        pattern = static_cast<Pattern*>(sqlite3_get_auxdata(ctx, 0));
        if (pattern == nullptr) {  // not kept (out of memory): compile per row
            compiled = compile(toCodePoints(textOf(argv[0])));
            std::u32string text = toCodePoints(textOf(argv[1]));
            for (char32_t& c : text) c = foldCase(c);
            return sqlite3_result_int(ctx, matches(*compiled, text) ? 1 : 0);
        }
    }
    std::u32string text = toCodePoints(textOf(argv[1]));
    for (char32_t& c : text) c = foldCase(c);
    sqlite3_result_int(ctx, matches(*pattern, text) ? 1 : 0);
}

}  // namespace

void registerLikeFunction(sqlite3* db) { addFunction(db, "jet_like", 2, like); }

}  // namespace kelvo::jet
