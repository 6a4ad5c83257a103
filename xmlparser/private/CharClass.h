// Character classes of the scanner: one class per 16-bit unit, looked up in two levels
// (a page per high byte, a class per low byte), built once from the name-character table.
#pragma once
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
inline bool IsNameChar(DomChar unit) {
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
