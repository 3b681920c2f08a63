// The JETNOCASE collation and Unicode case mapping.
#include "text_collation.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>

#include "jet_case_tables.h"
#include "jet_sql.h"
#include "jet_utf8.h"

namespace kelvo::jet {
namespace {

char32_t lookup(const CaseMapping* table, size_t size, char32_t c) {
    const CaseMapping* end = table + size;
    const CaseMapping* found = std::lower_bound(
        table, end, c, [](const CaseMapping& m, char32_t key) { return m.from < key; });
    return found != end && found->from == c ? found->to : c;
}

constexpr std::array<unsigned char, 128> kAsciiFold = [] {
    std::array<unsigned char, 128> t{};
    for (int i = 0; i < 128; ++i)
        t[static_cast<size_t>(i)] = static_cast<unsigned char>(i >= 'A' && i <= 'Z' ? i + 32 : i);
    return t;
}();

int collate(void*, int n1, const void* p1, int n2, const void* p2) {
    return compareNoCase(
        std::string_view(static_cast<const char*>(p1), static_cast<size_t>(n1)),
        std::string_view(static_cast<const char*>(p2), static_cast<size_t>(n2)));
}

template <char32_t (*Map)(char32_t)>
std::string mapText(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        const unsigned char c = static_cast<unsigned char>(text[i]);
        if (c < 0x80) {
            out += static_cast<char>(Map(c));
            ++i;
        } else {
            appendUtf8(out, Map(decodeUtf8(text, i)));
        }
    }
    return out;
}

}  // namespace

char32_t foldCase(char32_t c) {
    if (c < 128) return kAsciiFold[c];
    return lookup(kFoldMappings, kFoldMappingsSize, c);
}

char32_t lowerCase(char32_t c) {
    if (c < 128) return kAsciiFold[c];
    return lookup(kLowerMappings, kLowerMappingsSize, c);
}

char32_t upperCase(char32_t c) {
    if (c < 128) return c >= 'a' && c <= 'z' ? c - 32 : c;
    return lookup(kUpperMappings, kUpperMappingsSize, c);
}

int compareNoCase(std::string_view a, std::string_view b) {
    size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        const unsigned char x = static_cast<unsigned char>(a[i]);
        const unsigned char y = static_cast<unsigned char>(b[j]);
        if ((x | y) < 0x80) {
            if (x != y) {
                const int d = kAsciiFold[x] - kAsciiFold[y];
                if (d != 0) return d;
            }
            ++i;
            ++j;
            continue;
        }
        const char32_t cx = foldCase(decodeUtf8(a, i));
        const char32_t cy = foldCase(decodeUtf8(b, j));
        if (cx != cy) return cx < cy ? -1 : 1;
    }
    return (i < a.size()) - (j < b.size());
}

std::string lowerText(std::string_view text) { return mapText<lowerCase>(text); }
std::string upperText(std::string_view text) { return mapText<upperCase>(text); }

void registerCollation(sqlite3* db) {
    sqlite3_create_collation_v2(db, "JETNOCASE", SQLITE_UTF8, nullptr, collate, nullptr);
}

}  // namespace kelvo::jet
