// The ASCII character classes of URI references, shared by the parser and the escaping functions.
// Units of 0x80 and above belong to no class.
#pragma once
#include "core/DomString.h"

namespace UriPrivate {

enum : unsigned char { Alpha = 1, Digit = 2, Reserved = 4, Mark = 8, Hex = 16 };

struct SCharClassTable {
    unsigned char aFlags[128] = {};
    constexpr SCharClassTable() {
        for (int c = 'a'; c <= 'z'; ++c) aFlags[c] |= Alpha;
        for (int c = 'A'; c <= 'Z'; ++c) aFlags[c] |= Alpha;
        for (int c = '0'; c <= '9'; ++c) aFlags[c] |= Digit;
        for (const char* p = ";/?:@&=+$,"; *p; ++p) aFlags[static_cast<int>(*p)] |= Reserved;
        for (const char* p = "-_.!~*'()"; *p; ++p) aFlags[static_cast<int>(*p)] |= Mark;
        // The parser's hex class stops one short in each range: "9", "f" and "F" are not in it.
        for (int c = 'a'; c <= 'e'; ++c) aFlags[c] |= Hex;
        for (int c = 'A'; c <= 'E'; ++c) aFlags[c] |= Hex;
        for (int c = '0'; c <= '8'; ++c) aFlags[c] |= Hex;
    }
};

inline constexpr SCharClassTable kCharClasses;

inline bool IsInClass(DomChar c, unsigned char classes) { return c < 0x80 && (kCharClasses.aFlags[c] & classes); }

}  // namespace UriPrivate
