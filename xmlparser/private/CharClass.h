// Character classes of the scanner: one class per 16-bit unit, looked up in two levels
// (a page per high byte, a class per low byte), built once from the name-character table.
#pragma once
#include <cstdint>

#include "core/DomString.h"

namespace XmlParserPrivate {

enum ECharClass : unsigned char {
    ClassIllegal = 0,
    ClassSpace = 1,
    ClassNameStart = 2,
    ClassNameChar = 3,
    ClassBang = 4,
    ClassQuote = 5,
    ClassHash = 6,
    ClassPercent = 7,
    ClassAmpersand = 8,
    ClassApostrophe = 9,
    ClassOpenParen = 10,
    ClassCloseParen = 11,
    ClassStar = 12,
    ClassPlus = 13,
    ClassComma = 14,
    ClassMinus = 15,
    ClassSlash = 16,
    ClassSemicolon = 17,
    ClassLess = 18,
    ClassEquals = 19,
    ClassGreater = 20,
    ClassQuestion = 21,
    ClassOpenBracket = 22,
    ClassCloseBracket = 23,
    ClassBar = 24,
    ClassOther = 25
};

// The page table: 256 pointers to blocks of 256 classes; pages without entries share one block.
extern const unsigned char* const* g_apCharClassPages;

inline int CharClass(DomChar unit) { return g_apCharClassPages[unit >> 8][unit & 0xFF]; }
inline bool IsLegalChar(DomChar unit) { return CharClass(unit) != ClassIllegal; }
inline bool IsSpaceChar(DomChar unit) { return CharClass(unit) == ClassSpace; }
inline bool IsNameStartChar(DomChar unit) { return CharClass(unit) == ClassNameStart; }
// Name characters below 0x80 as bits: tag names are nearly always ASCII, and this spares their
// loops the two table loads per unit. It agrees with the low page of the tables.
constexpr uint64_t AsciiNameBits(int first) {
    uint64_t bits = 0;
    for (int c = first; c < first + 64; ++c) {
        bool name = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
                    c == ':' || c == '.' || c == '-';
        if (name) bits |= uint64_t{1} << (c - first);
    }
    return bits;
}
constexpr uint64_t g_anAsciiNameChars[2] = {AsciiNameBits(0), AsciiNameBits(64)};

inline bool IsNameChar(DomChar unit) {
    if (unit < 0x80) return (g_anAsciiNameChars[unit >> 6] >> (unit & 63)) & 1u;
    constexpr unsigned nameClasses = 1u << ClassNameStart | 1u << ClassNameChar | 1u << ClassMinus;
    return (nameClasses >> CharClass(unit)) & 1u;
}

inline bool EqualsIgnoringAsciiCase(DomStringView a, DomStringView b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        DomChar x = a[i], y = b[i];
        if (x >= u'A' && x <= u'Z') x = static_cast<DomChar>(x + 32);
        if (y >= u'A' && y <= u'Z') y = static_cast<DomChar>(y + 32);
        if (x != y) return false;
    }
    return true;
}

}  // namespace XmlParserPrivate
