// The matching loop. Stack frames: an alternative pushes the position and its right-branch
// entry; a loop pushes a record {saved link, remaining minimum, remaining maximum, position at the
// last iteration} that its link word points to; captures and lookaheads push {saved link, position}.
// Every entry that restores state pops exactly what its node pushed.
#include "regexp/private/Matcher.h"

#include "regexp/private/CharacterSets.h"

namespace RegExpPrivate {

namespace {

const Core::SMessage kMatcherMessages[] = {
    {0, u"Out of memory: the backtrack stack of a regular expression cannot grow"},
    {-1, u"Unclassified RegExp matcher exception"},
};

bool IsWordAt(const DomChar* text, int length, int index) {
    return index >= 0 && index < length && InSet(text[index], SetWord);
}

}  // namespace

void CMatcherException::GetMessage(DomString& text) const {
    Core::FormatTableMessage(text, kMatcherMessages, m_nCode, DomString(), DomString());
}

CMatcher::CMatcher(Word* program, bool ignoreCase, bool multiline)
    : m_bIgnoreCase(ignoreCase), m_bMultiline(multiline), m_pProgram(program), m_firstUnits(program, ignoreCase) {}

bool CMatcher::MatchAt(const DomChar* text, int length, int index) {
    if (index < 0 || index > length) return false;
    m_pText = text;
    m_nLength = length;
    size_t spans = 2 * (static_cast<size_t>(m_pProgram[Head::CaptureCount]) + 1);
    if (m_aSpans.size() != spans) m_aSpans.assign(spans, -1);
    return Run(index);
}

void CMatcher::Grow(std::int64_t needed) {
    if (!m_stack.Reserve(needed)) throw new CMatcherException(CMatcherException::StackExhausted);
}

void CMatcher::PushSpans(Word* stack, Word& sp, Word first, Word count) {
    for (Word n = first; n < first + count; ++n) {
        stack[sp++] = static_cast<Word>(m_aSpans[2 * n]);
        stack[sp++] = static_cast<Word>(m_aSpans[2 * n + 1]);
    }
}

void CMatcher::PopSpans(const Word* stack, Word& sp, Word first, Word count) {
    for (Word n = first + count; n-- > first;) {
        m_aSpans[2 * n + 1] = static_cast<std::int32_t>(stack[--sp]);
        m_aSpans[2 * n] = static_cast<std::int32_t>(stack[--sp]);
    }
}

void CMatcher::ResetSpans(Word first, Word count) {
    for (Word n = first; n < first + count; ++n) m_aSpans[2 * n] = m_aSpans[2 * n + 1] = -1;
}

// `node` points at a class node's code word; the unit is already folded if need be.
bool CMatcher::ClassContains(const Word* node, Word unit) const {
    Word operation = node[0];
    if (operation == OpBitmapClass || operation == OpNegatedBitmapClass) {
        Word offset = unit - node[Simple::BitmapFirst];  // wraps for units below the first
        bool inside = offset < node[Simple::BitmapCount] && PackedByte(node + Simple::Bytes, offset);
        return inside != (operation == OpNegatedBitmapClass);
    }
    const Word* items = node + Simple::Items;
    Word index = 0;
    bool inside = false;
    for (Word i = 0; i < node[Simple::ItemCount] && !inside; ++i) {
        Word kind = PackedUnit(items, index++);
        switch (kind) {
            case ItemUnit: inside = unit == PackedUnit(items, index++); break;
            case ItemRange:
                inside = unit >= PackedUnit(items, index) && unit <= PackedUnit(items, index + 1);
                index += 2;
                break;
            case ItemDigit: inside = InSet(unit, SetDigit); break;
            case ItemNotDigit: inside = !InSet(unit, SetDigit); break;
            case ItemSpace: inside = InSet(unit, SetSpace); break;
            case ItemNotSpace: inside = !InSet(unit, SetSpace); break;
            case ItemWord: inside = InSet(unit, SetWord); break;
            default: inside = !InSet(unit, SetWord); break;
        }
    }
    return inside != (operation == OpNegatedListClass);
}

// Whether the one-unit node at `node` accepts the text unit `unit`.
inline bool CMatcher::MatchesOne(const Word* node, Word unit) const {
    static constexpr std::uint8_t kSets[] = {SetDigit, SetSpace, SetWord};
    Word operation = node[0];
    switch (operation) {
        case OpUnit: return (m_bIgnoreCase ? Fold(unit) : unit) == node[Simple::Unit];
        case OpAnyButLineEnd: return !IsLineTerminator(unit);
        case OpEmptyClass: return false;
        case OpNegatedEmptyClass: return true;
        case OpBitmapClass:
        case OpNegatedBitmapClass:
        case OpListClass:
        case OpNegatedListClass: return ClassContains(node, m_bIgnoreCase ? Fold(unit) : unit);
        default: {
            Word offset = operation - OpDigit;
            return InSet(unit, kSets[offset / 2]) != ((offset & 1) != 0);
        }
    }
}

// A reference to a capture that is not set matches the empty string.
bool CMatcher::BackReference(Word number, int& position) const {
    int start = m_aSpans[2 * number];
    if (start < 0) return true;
    int length = m_aSpans[2 * number + 1];
    if (length > m_nLength - position) return false;
    for (int i = 0; i < length; ++i) {
        Word a = m_pText[start + i], b = m_pText[position + i];
        if (m_bIgnoreCase ? Fold(a) != Fold(b) : a != b) return false;
    }
    position += length;
    return true;
}

bool CMatcher::Run(int start) {
    Word* const code = m_pProgram;
    const DomChar* const text = m_pText;
    const int length = m_nLength;
    const bool ignoreCase = m_bIgnoreCase;
    if (!m_stack.GetCapacity()) Grow(CWordBuffer::Step);
    Word* stack = m_stack.GetWords();
    std::int64_t capacity = m_stack.GetCapacity();
    Word sp = 0;
    int pos = start;
    Word pc = 0;
    auto need = [&](std::int64_t words) {
        if (sp + words <= capacity) return;
        Grow(sp + words);
        stack = m_stack.GetWords();
        capacity = m_stack.GetCapacity();
    };
    auto unitAt = [&](int index) -> Word { return ignoreCase ? Fold(text[index]) : text[index]; };

    for (;;) {
        Word n = 0;  // the node of a multi-entry code
        Word r = 0;  // the stack record of a loop, capture or lookahead
        bool ok;     // the outcome of a one-unit test
        switch (code[pc]) {
            case OpStart:
                for (auto& span : m_aSpans) span = -1;
                stack[sp++] = OpFail;
                pc = code[Head::First];
                continue;
            case OpSucceed:
                m_aSpans[0] = start;
                m_aSpans[1] = pos - start;
                m_nPosition = pos;
                return true;
            case OpFail:
                return false;

            case OpAlternative:
                need(2);
                stack[sp++] = static_cast<Word>(pos);
                stack[sp++] = pc + 1;
                pc = code[pc + Alternative::Left];
                continue;
            case OpAlternativeRight:
                pos = static_cast<int>(stack[--sp]);
                pc = code[pc - 1 + Alternative::Right];
                continue;
            case OpEmpty:
                pc = code[pc + Simple::Next];
                continue;
            case OpSequence:
                pc = code[pc + Sequence::First];
                continue;
            case OpSequenceSecond:
                pc = code[pc - 1 + Sequence::Second];
                continue;

            case OpLineStart:
                ok = pos == 0 || (m_bMultiline && IsLineTerminator(text[pos - 1]));
                if (!ok) break;
                pc = code[pc + Simple::Next];
                continue;
            case OpLineEnd:
                ok = pos == length || (m_bMultiline && IsLineTerminator(text[pos]));
                if (!ok) break;
                pc = code[pc + Simple::Next];
                continue;
            case OpWordBoundary:
            case OpNotWordBoundary:
                ok = IsWordAt(text, length, pos - 1) != IsWordAt(text, length, pos);
                if (ok != (code[pc] == OpWordBoundary)) break;
                pc = code[pc + Simple::Next];
                continue;

            case OpLoopEnter:
                n = pc;
                need(5);
                r = sp;
                stack[sp++] = code[n + Loop::Link];
                stack[sp++] = code[n + Loop::Min];
                stack[sp++] = code[n + Loop::Max];
                stack[sp++] = static_cast<Word>(pos);
                stack[sp++] = n + (OpLoopLeave - OpLoopEnter);
                code[n + Loop::Link] = r;
                goto iterate;
            case OpLoopReenter:
                n = pc - 1;
                r = code[n + Loop::Link];
                // An optional iteration that consumed nothing ends the loop by failing.
                if (stack[r + 1] == 0 && static_cast<Word>(pos) == stack[r + 3]) break;
                need(4);
                stack[sp++] = stack[r + 1];
                stack[sp++] = stack[r + 2];
                stack[sp++] = stack[r + 3];
                stack[sp++] = n + (OpLoopUndoCount - OpLoopEnter);
                if (stack[r + 1] > 0) --stack[r + 1];
                if (stack[r + 2] != Loop::Unbounded) --stack[r + 2];
                stack[r + 3] = static_cast<Word>(pos);
                goto iterate;
            case OpLoopGreedyResume:
                n = pc - 2;
                PopSpans(stack, sp, code[n + Loop::FirstCapture], code[n + Loop::CaptureCount]);
                pos = static_cast<int>(stack[code[n + Loop::Link] + 3]);
                pc = code[n + Loop::Next];
                continue;
            case OpLoopLazyResume:
                n = pc - 3;
                pos = static_cast<int>(stack[code[n + Loop::Link] + 3]);
                need(2 * static_cast<std::int64_t>(code[n + Loop::CaptureCount]) + 1);
                PushSpans(stack, sp, code[n + Loop::FirstCapture], code[n + Loop::CaptureCount]);
                ResetSpans(code[n + Loop::FirstCapture], code[n + Loop::CaptureCount]);
                stack[sp++] = n + (OpLoopRestoreSpans - OpLoopEnter);
                pc = code[n + Loop::Sub];
                continue;
            case OpLoopRestoreSpans:
                n = pc - 4;
                PopSpans(stack, sp, code[n + Loop::FirstCapture], code[n + Loop::CaptureCount]);
                break;
            case OpLoopUndoCount:
                n = pc - 5;
                r = code[n + Loop::Link];
                stack[r + 3] = stack[--sp];
                stack[r + 2] = stack[--sp];
                stack[r + 1] = stack[--sp];
                break;
            case OpLoopLeave:
                n = pc - 6;
                sp -= 4;
                code[n + Loop::Link] = stack[sp];
                break;

            case OpCaptureEnter:
                need(3);
                r = sp;
                stack[sp++] = code[pc + Capture::Link];
                stack[sp++] = static_cast<Word>(pos);
                stack[sp++] = pc + (OpCaptureLeave - OpCaptureEnter);
                code[pc + Capture::Link] = r;
                pc = code[pc + Capture::Sub];
                continue;
            case OpCaptureReenter: {
                n = pc - 1;
                r = code[n + Capture::Link];
                Word number = code[n + Capture::Number];
                need(3);
                stack[sp++] = static_cast<Word>(m_aSpans[2 * number]);
                stack[sp++] = static_cast<Word>(m_aSpans[2 * number + 1]);
                stack[sp++] = n + (OpCaptureRestore - OpCaptureEnter);
                m_aSpans[2 * number] = static_cast<std::int32_t>(stack[r + 1]);
                m_aSpans[2 * number + 1] = pos - static_cast<std::int32_t>(stack[r + 1]);
                pc = code[n + Capture::Next];
                continue;
            }
            case OpCaptureRestore: {
                Word number = code[pc - 2 + Capture::Number];
                m_aSpans[2 * number + 1] = static_cast<std::int32_t>(stack[--sp]);
                m_aSpans[2 * number] = static_cast<std::int32_t>(stack[--sp]);
                break;
            }
            case OpCaptureLeave:
                sp -= 2;
                code[pc - 3 + Capture::Link] = stack[sp];
                break;

            case OpLookEnter:
            case OpNotLookEnter:
                need(3);
                r = sp;
                stack[sp++] = code[pc + Look::Link + (code[pc] == OpNotLookEnter ? 2 : 0)];
                stack[sp++] = static_cast<Word>(pos);
                stack[sp++] = pc + 2;
                code[pc + Look::Link + (code[pc] == OpNotLookEnter ? 2 : 0)] = r;
                pc = code[pc + Look::Sub];
                continue;
            case OpLookMatched:
                // Success discards the alternatives of the sub-part and puts the position back.
                n = pc - 1;
                r = code[n + Look::Link];
                pos = static_cast<int>(stack[r + 1]);
                code[n + Look::Link] = stack[r];
                sp = r;
                pc = code[n + Look::Next];
                continue;
            case OpLookLeave:
                sp -= 2;
                code[pc - 2 + Look::Link] = stack[sp];
                break;
            case OpNotLookMatched:
                n = pc - 1;
                r = code[n + NotLook::Link];
                code[n + NotLook::Link] = stack[r];
                sp = r;
                ResetSpans(code[n + NotLook::FirstCapture], code[n + NotLook::CaptureCount]);
                break;
            case OpNotLookFailed:
                n = pc - 2;
                sp -= 2;
                code[n + NotLook::Link] = stack[sp];
                pos = static_cast<int>(stack[sp + 1]);
                ResetSpans(code[n + NotLook::FirstCapture], code[n + NotLook::CaptureCount]);
                pc = code[n + NotLook::Next];
                continue;

            case OpBackReference:
                if (!BackReference(code[pc + Simple::Unit], pos)) break;
                pc = code[pc + Simple::Next];
                continue;
            case OpString: {
                Word count = code[pc + Simple::Length];
                if (count > static_cast<Word>(length - pos)) break;
                const Word* units = code + pc + Simple::Units;
                Word i = 0;
                while (i < count && unitAt(pos + static_cast<int>(i)) == PackedUnit(units, i)) ++i;
                if (i < count) break;
                pos += static_cast<int>(count);
                pc = code[pc + Simple::Next];
                continue;
            }
            case OpUnit:
            case OpAnyButLineEnd:
            case OpBitmapClass:
            case OpNegatedBitmapClass:
            case OpListClass:
            case OpNegatedListClass:
            case OpEmptyClass:
            case OpNegatedEmptyClass:
            case OpDigit:
            case OpNotDigit:
            case OpSpace:
            case OpNotSpace:
            case OpWord:
            case OpNotWord:
                if (pos >= length || !MatchesOne(code + pc, text[pos])) break;
                ++pos;
                pc = code[pc + Simple::Next];
                continue;

            case OpRunEnter: {
                // Consume the longest run, then give back one unit per backtrack down to the
                // minimum, skipping positions where the unit that must follow is absent.
                const Word* sub = code + code[pc + Loop::Sub];
                Word max = code[pc + Loop::Max];
                Word count = 0;
                while (count < max && pos + static_cast<int>(count) < length &&
                       MatchesOne(sub, text[pos + static_cast<int>(count)]))
                    ++count;
                if (count < code[pc + Loop::Min]) break;
                std::int64_t lower = pos + static_cast<std::int64_t>(code[pc + Loop::Min]);
                std::int64_t end = pos + static_cast<std::int64_t>(count);
                Word required = code[pc + Loop::Link];
                while (required && end >= lower && (end >= length || unitAt(static_cast<int>(end)) + 1 != required))
                    --end;
                if (end < lower) break;
                need(3);
                stack[sp++] = static_cast<Word>(lower);
                stack[sp++] = static_cast<Word>(end);
                stack[sp++] = pc + 1;
                pos = static_cast<int>(end);
                pc = code[pc + Loop::Next];
                continue;
            }
            case OpRunGiveBack: {
                std::int64_t lower = stack[sp - 2];
                std::int64_t end = stack[sp - 1];
                Word required = code[pc - 1 + Loop::Link];
                do --end;
                while (required && end >= lower && unitAt(static_cast<int>(end)) + 1 != required);
                if (end < lower) {
                    sp -= 2;
                    break;
                }
                stack[sp - 1] = static_cast<Word>(end);
                stack[sp++] = pc;
                pos = static_cast<int>(end);
                pc = code[pc - 1 + Loop::Next];
                continue;
            }
            default:
                return false;  // a program is never malformed; stop rather than run wild
        }
        // Failure: resume at the entry on top of the stack.
        pc = stack[--sp];
        continue;

    iterate:
        // One more round of the loop at node n with its record r.
        if (stack[r + 1] > 0) {
            pc = code[n + Loop::Sub];
        } else if (stack[r + 2] == 0) {
            pc = code[n + Loop::Next];
        } else if (!code[n + Loop::Lazy]) {
            need(2 * static_cast<std::int64_t>(code[n + Loop::CaptureCount]) + 1);
            PushSpans(stack, sp, code[n + Loop::FirstCapture], code[n + Loop::CaptureCount]);
            ResetSpans(code[n + Loop::FirstCapture], code[n + Loop::CaptureCount]);
            stack[sp++] = n + (OpLoopGreedyResume - OpLoopEnter);
            pc = code[n + Loop::Sub];
        } else {
            need(1);
            stack[sp++] = n + (OpLoopLazyResume - OpLoopEnter);
            pc = code[n + Loop::Next];
        }
    }
}

}  // namespace RegExpPrivate
