// Walks the program from its first node through the nodes that consume nothing, collecting the
// units accepted by the first consuming nodes reached.
#include "regexp/private/FirstUnits.h"

#include <vector>

namespace RegExpPrivate {

namespace {

// Beyond this many nodes the analysis gives up and lets every position through.
constexpr size_t kMaxVisits = 512;

}  // namespace

CFirstUnits::CFirstUnits(const Word* program, bool ignoreCase) : m_bIgnoreCase(ignoreCase) {
    std::vector<Word> work{program[Head::First]};
    size_t visits = 0;
    while (!work.empty() && !m_bAny) {
        if (++visits > kMaxVisits) {
            m_bAny = true;
            break;
        }
        Word node = work.back();
        work.pop_back();
        const Word* words = program + node;
        switch (words[0]) {
            case OpAlternative:
                work.push_back(words[Alternative::Left]);
                work.push_back(words[Alternative::Right]);
                break;
            case OpSequence: work.push_back(words[Sequence::First]); break;
            case OpSequenceSecond: work.push_back(program[node - 1 + Sequence::Second]); break;
            case OpEmpty:
            case OpLineStart:
            case OpLineEnd:
            case OpWordBoundary:
            case OpNotWordBoundary: work.push_back(words[Simple::Next]); break;
            case OpCaptureEnter: work.push_back(words[Capture::Sub]); break;
            case OpCaptureReenter: work.push_back(program[node - 1 + Capture::Next]); break;
            case OpLoopEnter:
            case OpRunEnter:
                work.push_back(words[Loop::Sub]);
                if (words[Loop::Min] == 0) work.push_back(words[Loop::Next]);
                break;
            case OpString: {
                Word unit = PackedUnit(words + Simple::Units, 0);
                if (unit < 256) m_aLow.set(unit); else m_bHigh = true;
                break;
            }
            default:
                if (!AddSingleUnit(words)) m_bAny = true;  // an empty match, a loop round, a lookahead...
                break;
        }
    }
}

bool CFirstUnits::AddSingleUnit(const Word* node) {
    static constexpr std::uint8_t kSets[] = {SetDigit, SetSpace, SetWord};
    Word operation = node[0];
    if (operation == OpUnit) {
        Word unit = node[Simple::Unit];
        if (unit < 256) m_aLow.set(unit); else m_bHigh = true;
        return true;
    }
    if (operation == OpBitmapClass) {
        Word first = node[Simple::BitmapFirst];
        Word count = node[Simple::BitmapCount];
        for (Word offset = 0; offset < count && first + offset < 256; ++offset)
            if (PackedByte(node + Simple::Bytes, offset)) m_aLow.set(first + offset);
        if (first + count > 256) m_bHigh = true;
        return true;
    }
    if (operation == OpEmptyClass) return true;
    if (operation == OpDigit || operation == OpSpace || operation == OpWord) {
        for (Word unit = 0; unit < 256; ++unit)
            if (InSet(unit, kSets[(operation - OpDigit) / 2])) m_aLow.set(unit);
        return true;
    }
    if (IsSingleUnitNode(operation)) {  // negated and list classes, '.', \D, \S, \W: anything
        m_bAny = true;
        return true;
    }
    return false;
}

}  // namespace RegExpPrivate
