// The units with which a match of a program can begin, so that a scan skips positions where no
// attempt can succeed. A program that may match the empty string, or starts in a way this
// analysis does not follow, gives a filter that lets every position through.
#pragma once
#include <bitset>

#include "core/DomString.h"
#include "regexp/private/CharacterSets.h"
#include "regexp/private/Program.h"

namespace RegExpPrivate {

class CFirstUnits {
public:
    // Reads the program once; `ignoreCase` as the program was compiled.
    CFirstUnits(const Word* program, bool ignoreCase);

    // False only if no attempt at `index` of the text can match.
    bool MayMatchAt(const DomChar* text, int length, int index) const {
        if (m_bAny) return true;
        return index < length && MayStartWith(text[index]);
    }
    // False only if no match can start at a position holding `unit`.
    bool MayStartWith(Word unit) const {
        if (m_bAny) return true;
        if (unit >= 256) return m_bHigh;
        return m_aLow[m_bIgnoreCase ? Fold(unit) : unit];
    }

private:
    // Adds what the one-unit node accepts; false if it was not a one-unit node.
    bool AddSingleUnit(const Word* node);

    std::bitset<256> m_aLow;
    bool m_bHigh = false;
    bool m_bAny = false;
    bool m_bIgnoreCase;
};

}  // namespace RegExpPrivate
