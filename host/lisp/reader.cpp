// The reader. Comments run from ';' to the end of the line, or from ";|" to "|;".
// An integer literal outside the 32-bit range reads as a real.
#include "reader.h"

#include <cerrno>
#include <cstdlib>
#include <cwchar>
#include <cwctype>
#include <vector>

namespace lisp {

namespace {

bool isDelimiter(wchar_t c) {
    return std::iswspace(c) || c == L'(' || c == L')' || c == L'\'' || c == L'"' || c == L';';
}

bool looksNumeric(std::wstring_view t) {
    bool digit = false;
    for (wchar_t c : t) {
        if (std::iswdigit(c)) digit = true;
        else if (c != L'.' && c != L'e' && c != L'E' && c != L'+' && c != L'-') return false;
    }
    return digit && (std::iswdigit(t[0]) || t[0] == L'.' || t[0] == L'+' || t[0] == L'-');
}

std::optional<Value> parseInteger(const std::wstring& t) {
    std::size_t i = (t[0] == L'+' || t[0] == L'-') ? 1 : 0;
    if (i == t.size()) return std::nullopt;
    for (std::size_t k = i; k < t.size(); ++k)
        if (!std::iswdigit(t[k])) return std::nullopt;
    errno = 0;
    long long v = std::wcstoll(t.c_str(), nullptr, 10);
    if (errno == ERANGE || v < INT32_MIN || v > INT32_MAX)
        return Value::real(std::wcstod(t.c_str(), nullptr));
    return Value::integer(static_cast<std::int32_t>(v));
}

}  // namespace

Value parseAtom(std::wstring_view token) {
    std::wstring t(token);
    if (looksNumeric(t)) {
        if (auto i = parseInteger(t)) return *i;
        wchar_t* end = nullptr;
        double d = std::wcstod(t.c_str(), &end);
        if (end == t.c_str() + t.size()) return Value::real(d);
    }
    Value sym = Value::symbol(t);
    return sym.symbolName() == L"NIL" ? Value() : sym;
}

void Reader::skipBlank() {
    while (!atEnd()) {
        wchar_t c = src_[pos_];
        if (std::iswspace(c)) {
            ++pos_;
        } else if (c == L';' && pos_ + 1 < src_.size() && src_[pos_ + 1] == L'|') {
            auto close = src_.find(L"|;", pos_ + 2);
            pos_ = close == std::wstring_view::npos ? src_.size() : close + 2;
        } else if (c == L';') {
            while (!atEnd() && src_[pos_] != L'\n') ++pos_;
        } else {
            return;
        }
    }
}

std::optional<Value> Reader::next() {
    skipBlank();
    if (atEnd()) return std::nullopt;
    return readForm();
}

// Lists are read with a stack of open lists rather than by recursion, so that any depth
// of nesting the memory holds can be read.
Value Reader::readForm() {
    struct Open {
        bool quote = false;  // a ' waiting for its form
        std::vector<Value> items;
        Value tail;
        bool dotted = false;  // after " . ": the next form is the tail
        bool hasTail = false;
    };
    std::vector<Open> open;
    for (;;) {
        skipBlank();
        if (atEnd()) throw IncompleteInput(L"malformed list on input");
        const wchar_t c = src_[pos_];
        Open* list = open.empty() || open.back().quote ? nullptr : &open.back();
        Value done;
        if (c == L')') {
            ++pos_;
            if (!list || (list->dotted && !list->hasTail))
                throw Error(L"extra right paren on input");
            done = Value::list(list->items, list->tail);
            open.pop_back();
        } else if (list && list->hasTail) {
            throw Error(L"malformed list on input");
        } else if (c == L'(') {
            ++pos_;
            open.emplace_back();
            continue;
        } else if (c == L'\'') {
            ++pos_;
            open.emplace_back().quote = true;
            continue;
        } else if (list && c == L'.' && (pos_ + 1 >= src_.size() || isDelimiter(src_[pos_ + 1]))) {
            ++pos_;
            if (list->items.empty() || list->dotted) throw Error(L"malformed list on input");
            list->dotted = true;
            continue;
        } else if (c == L'"') {
            ++pos_;
            done = readString();
        } else {
            done = readAtom();
        }
        // Hand the finished form to what encloses it.
        for (;;) {
            if (open.empty()) return done;
            Open& outer = open.back();
            if (outer.quote) {
                done = Value::list({Value::symbol(L"QUOTE"), std::move(done)});
                open.pop_back();
                continue;
            }
            if (outer.dotted) {
                outer.tail = std::move(done);
                outer.hasTail = true;
            } else {
                outer.items.push_back(std::move(done));
            }
            break;
        }
    }
}

Value Reader::readString() {
    std::wstring s;
    while (!atEnd()) {
        wchar_t c = src_[pos_++];
        if (c == L'"') return Value::string(std::move(s));
        if (c != L'\\' || atEnd()) {
            s += c;
            continue;
        }
        wchar_t e = src_[pos_++];
        switch (e) {
        case L'n': s += L'\n'; break;
        case L't': s += L'\t'; break;
        case L'r': s += L'\r'; break;
        case L'e': s += L'\x1b'; break;
        default:
            if (e >= L'0' && e <= L'7') {
                int code = e - L'0';
                for (int k = 0; k < 2 && !atEnd() && src_[pos_] >= L'0' && src_[pos_] <= L'7'; ++k)
                    code = code * 8 + (src_[pos_++] - L'0');
                s += static_cast<wchar_t>(code);
            } else {
                s += e;
            }
        }
    }
    throw IncompleteInput(L"malformed string on input");
}

Value Reader::readAtom() {
    std::size_t start = pos_;
    while (!atEnd() && !isDelimiter(src_[pos_])) ++pos_;
    return parseAtom(src_.substr(start, pos_ - start));
}

}  // namespace lisp
