// Case-insensitive text order for all of Unicode: the JETNOCASE collation, and the case
// mappings of the dialect's UCase/LCase. Text is UTF-8.
//
// Two texts compare as the sequences of their case-folded code points (simple folding:
// each code point to one code point, so "ß" does not equal "ss"). That is a total order
// whose equality is case-insensitive equality, as unique indexes need. Trailing blanks
// count ("ab " sorts after "ab"); accents count ("é" is not "e"). ASCII text is compared
// byte by byte without decoding.
#pragma once

#include <string>
#include <string_view>

namespace kelvo::jet {

char32_t foldCase(char32_t c);
char32_t lowerCase(char32_t c);
char32_t upperCase(char32_t c);

// <0, 0, >0 as a sorts before, equal to, or after b.
int compareNoCase(std::string_view a, std::string_view b);

std::string lowerText(std::string_view text);
std::string upperText(std::string_view text);

}  // namespace kelvo::jet
