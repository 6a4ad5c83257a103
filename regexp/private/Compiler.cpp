// Pattern compilation: the grammar, the emission of nodes and the link pass.
#include "regexp/private/Compiler.h"

#include "regexp/private/CharacterSets.h"

#include <new>
#include <utility>

namespace RegExpPrivate {

namespace {

const Core::SMessage kParserMessages[] = {
    {0, u"Invalid quantifier prefix"},
    {1, u"Invalid atom"},
    {2, u"Invalid atom escape"},
    {3, u"Invalid decimal escape"},
    {4, u"Invalid character escape"},
    {5, u"Invalid character class"},
    {6, u"Missing token, '%s' expected"},
    {-1, u"Unclassified RegExp parser exception"},
};

bool IsDecimalDigit(DomChar unit) { return unit >= u'0' && unit <= u'9'; }
bool IsLetter(DomChar unit) { return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z'); }

int HexValue(DomChar unit) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
    return -1;
}

// The node code of a class escape letter, or 0 if the unit is none.
Word ClassEscapeOperation(DomChar unit) {
    switch (unit) {
        case u'd': return OpDigit;
        case u'D': return OpNotDigit;
        case u's': return OpSpace;
        case u'S': return OpNotSpace;
        case u'w': return OpWord;
        case u'W': return OpNotWord;
        default: return 0;
    }
}

}  // namespace

void CParserException::GetMessage(DomString& text) const {
    Core::FormatTableMessage(text, kParserMessages, m_nCode, m_sArgument, DomString());
}

Word* Compile(const DomChar* pattern, int length, bool ignoreCase) {
    CCompiler compiler(pattern, length, ignoreCase);
    return compiler.Compile();
}

CCompiler::CCompiler(const DomChar* pattern, int length, bool ignoreCase)
    : m_pPattern(pattern), m_length(length), m_ignoreCase(ignoreCase) {}

Word* CCompiler::Compile() {
    Word head = NewNode(Head::Size, OpStart);
    Code(head + 1) = OpSucceed;
    Code(head + 2) = OpFail;
    Word first = ParseAlternative();
    if (!AtEnd()) Fail(CParserException::InvalidAtom);  // a ')' without its '('
    if (m_captureCount < m_maxBackReference) Fail(CParserException::InvalidDecimalEscape);
    Code(head + Head::First) = first;
    Code(head + Head::CaptureCount) = m_captureCount;
    Link(first);
    Word* program = m_code.CopyOut(m_codeSize);
    if (!program) throw std::bad_alloc();
    return program;
}

void CCompiler::Fail(int code, const char16_t* argument) const {
    throw new CParserException(code, argument ? DomString(argument) : DomString());
}

bool CCompiler::AtQuantifier() const {
    if (AtEnd()) return false;
    DomChar unit = Current();
    return unit == u'*' || unit == u'+' || unit == u'?' || unit == u'{';
}

Word CCompiler::NewNode(int size, Word operation) {
    Word index = m_codeSize;
    if (!m_code.Reserve(static_cast<std::int64_t>(m_codeSize) + size)) throw std::bad_alloc();
    Word* words = m_code.GetWords() + index;
    for (int i = 0; i < size; ++i) words[i] = 0;
    words[0] = operation;
    m_codeSize += size;
    return index;
}

// Alternatives chain to the right: a|b|c is (a | (b | c)).
Word CCompiler::ParseAlternative() {
    Word first = ParseSequence();
    if (!At(u'|')) return first;
    Word top = NewNode(Alternative::Size, OpAlternative);
    Code(top + 1) = OpAlternativeRight;
    Code(top + Alternative::Left) = first;
    Word open = top;
    for (;;) {
        ++m_position;  // '|'
        Word branch = ParseSequence();
        if (!At(u'|')) {
            Code(open + Alternative::Right) = branch;
            return top;
        }
        Word next = NewNode(Alternative::Size, OpAlternative);
        Code(next + 1) = OpAlternativeRight;
        Code(next + Alternative::Left) = branch;
        Code(open + Alternative::Right) = next;
        open = next;
    }
}

Word CCompiler::ParseSequence() {
    Word sequence = NewNode(2, OpEmpty);
    while (!AtEnd() && Current() != u'|' && Current() != u')') {
        Word term = ParseTerm();
        Word joined = NewNode(Sequence::Size, OpSequence);
        Code(joined + 1) = OpSequenceSecond;
        Code(joined + Sequence::First) = sequence;
        Code(joined + Sequence::Second) = term;
        sequence = joined;
    }
    return sequence;
}

Word CCompiler::ParseTerm() {
    DomChar unit = Current();
    Word assertion = 0;
    if (unit == u'^') assertion = OpLineStart;
    if (unit == u'$') assertion = OpLineEnd;
    if (unit == u'\\' && m_position + 1 < m_length) {
        if (m_pPattern[m_position + 1] == u'b') assertion = OpWordBoundary;
        if (m_pPattern[m_position + 1] == u'B') assertion = OpNotWordBoundary;
    }
    if (assertion) {
        m_position += assertion >= OpWordBoundary ? 2 : 1;
        return NewNode(2, assertion);
    }
    Word capturesBefore = m_captureCount;
    Word atom = ParseAtom();
    return AtQuantifier() ? ParseQuantifier(atom, capturesBefore) : atom;
}

Word CCompiler::ParseQuantifier(Word atom, Word capturesBefore) {
    Word min = 0;
    Word max = Loop::Unbounded;
    DomChar unit = Current();
    ++m_position;
    if (unit == u'+') min = 1;
    if (unit == u'?') max = 1;
    if (unit == u'{') {
        min = max = ReadCount();
        if (At(u',')) {
            ++m_position;
            max = At(u'}') ? Loop::Unbounded : ReadCount();
            if (max < min) Fail(CParserException::InvalidQuantifierPrefix);
        }
        if (!At(u'}')) Fail(CParserException::MissingToken, u"}");
        ++m_position;
    }
    bool lazy = At(u'?');
    if (lazy) ++m_position;
    Word loop = NewNode(Loop::Size, OpLoopEnter);
    for (Word entry = 1; entry < 7; ++entry) Code(loop + entry) = OpLoopEnter + entry;
    Code(loop + Loop::Sub) = atom;
    Code(loop + Loop::Min) = min;
    Code(loop + Loop::Max) = max;
    Code(loop + Loop::Lazy) = lazy ? 1 : 0;
    Code(loop + Loop::FirstCapture) = capturesBefore + 1;
    Code(loop + Loop::CaptureCount) = m_captureCount - capturesBefore;
    if (!lazy && IsSingleUnitNode(Code(atom))) {
        Code(loop) = OpRunEnter;
        Code(loop + 1) = OpRunGiveBack;
    }
    return loop;
}

// Digits of a {n,m} bound; they accumulate without a limit check, wrapping at 32 bits.
Word CCompiler::ReadCount() {
    if (AtEnd() || !IsDecimalDigit(Current())) Fail(CParserException::InvalidQuantifierPrefix);
    Word value = 0;
    while (!AtEnd() && IsDecimalDigit(Current())) value = value * 10 + (m_pPattern[m_position++] - u'0');
    return value;
}

Word CCompiler::ParseAtom() {
    switch (Current()) {
        case u'.':
            ++m_position;
            return NewNode(2, OpAnyButLineEnd);
        case u'\\':
            return ParseAtomEscape();
        case u'[':
            return ParseClass();
        case u'(':
            return ParseGroup();
        default:
            return ParseAtomRun();
    }
}

Word CCompiler::ParseAtomEscape() {
    if (m_position + 1 >= m_length) Fail(CParserException::InvalidAtomEscape);
    DomChar unit = m_pPattern[m_position + 1];
    if (unit >= u'1' && unit <= u'9') {
        ++m_position;
        Word number = ReadDecimalEscape();
        if (number > m_maxBackReference) m_maxBackReference = number;
        Word node = NewNode(3, OpBackReference);
        Code(node + Simple::Unit) = number;
        return node;
    }
    if (Word operation = ClassEscapeOperation(unit)) {
        m_position += 2;
        return NewNode(2, operation);
    }
    return ParseAtomRun();
}

// Gathers plain units and character escapes into one unit or string node. When a quantifier
// follows a run of several units, the last unit is given back so that the quantifier takes it alone.
Word CCompiler::ParseAtomRun() {
    std::u16string units;
    int lastStart = m_position;
    while (!AtEnd()) {
        DomChar unit = Current();
        if (unit == u'$' || unit == u'(' || unit == u')' || unit == u'*' || unit == u'+' || unit == u'.' ||
            unit == u'?' || unit == u'[' || unit == u']' || unit == u'^' || unit == u'{' || unit == u'|' ||
            unit == u'}')
            break;
        lastStart = m_position;
        if (unit == u'\\') {
            if (m_position + 1 >= m_length) Fail(CParserException::InvalidAtomEscape);
            DomChar next = m_pPattern[m_position + 1];
            if ((next >= u'1' && next <= u'9') || next == u'b' || next == u'B' || ClassEscapeOperation(next)) break;
            ++m_position;
            units += static_cast<DomChar>(ParseCharacterEscape());
        } else {
            units += unit;
            ++m_position;
        }
    }
    if (units.empty()) Fail(CParserException::InvalidAtom);
    if (units.size() > 1 && AtQuantifier()) {
        units.pop_back();
        m_position = lastStart;
    }
    if (m_ignoreCase)
        for (DomChar& unit : units) unit = static_cast<DomChar>(Fold(unit));
    return EmitUnits(units);
}

Word CCompiler::EmitUnits(const std::u16string& units) {
    if (units.size() == 1) {
        Word node = NewNode(3, OpUnit);
        Code(node + Simple::Unit) = units[0];
        return node;
    }
    Word length = static_cast<Word>(units.size());
    Word node = NewNode(static_cast<int>(Simple::Units + (length + 1) / 2), OpString);
    Code(node + Simple::Length) = length;
    Word* words = m_code.GetWords() + node + Simple::Units;
    for (Word i = 0; i < length; ++i) words[i >> 1] |= static_cast<Word>(units[i]) << ((i & 1) * 16);
    return node;
}

Word CCompiler::ParseGroup() {
    if (++m_nDepth > MaxDepth) Fail(CParserException::InvalidAtom);
    ++m_position;  // '('
    Word node = 0;
    DomChar kind = 0;
    if (At(u'?') && m_position + 1 < m_length) {
        DomChar next = m_pPattern[m_position + 1];
        if (next == u':' || next == u'=' || next == u'!') {
            kind = next;
            m_position += 2;
        }
    }
    Word capturesBefore = m_captureCount;
    if (kind == u':') {
        node = ParseAlternative();
    } else if (kind == u'=') {
        node = NewNode(Look::Size, OpLookEnter);
        Code(node + 1) = OpLookMatched;
        Code(node + 2) = OpLookLeave;
        Word sub = ParseAlternative();
        Code(node + Look::Sub) = sub;
    } else if (kind == u'!') {
        node = NewNode(NotLook::Size, OpNotLookEnter);
        Code(node + 1) = OpNotLookMatched;
        Code(node + 2) = OpNotLookFailed;
        Word sub = ParseAlternative();
        Code(node + NotLook::Sub) = sub;
        Code(node + NotLook::FirstCapture) = capturesBefore + 1;
        Code(node + NotLook::CaptureCount) = m_captureCount - capturesBefore;
    } else {
        node = NewNode(Capture::Size, OpCaptureEnter);
        for (Word entry = 1; entry < 4; ++entry) Code(node + entry) = OpCaptureEnter + entry;
        Code(node + Capture::Number) = ++m_captureCount;
        Word sub = ParseAlternative();
        Code(node + Capture::Sub) = sub;
    }
    if (!At(u')')) Fail(CParserException::MissingToken, u")");
    ++m_position;
    --m_nDepth;
    return node;
}

// The unit after a '\' that is neither a back reference nor a class escape.
Word CCompiler::ParseCharacterEscape() {
    DomChar unit = m_pPattern[m_position++];
    switch (unit) {
        case u'0': return 0;
        case u'f': return 12;
        case u'n': return 10;
        case u'r': return 13;
        case u't': return 9;
        case u'v': return 11;
        case u'x': return ReadHexDigits(2);
        case u'u': return ReadHexDigits(4);
        case u'c':
            if (AtEnd() || !IsLetter(Current())) Fail(CParserException::InvalidAtomEscape);
            return m_pPattern[m_position++] % 32;
        default:
            if (IsLetter(unit) || IsDecimalDigit(unit) || unit == u'$' || unit == u'_')
                Fail(CParserException::InvalidCharacterEscape);
            return unit;
    }
}

Word CCompiler::ReadHexDigits(int count) {
    Word value = 0;
    for (int i = 0; i < count; ++i) {
        int digit = AtEnd() ? -1 : HexValue(Current());
        if (digit < 0) Fail(CParserException::InvalidAtomEscape);
        value = value * 16 + static_cast<Word>(digit);
        ++m_position;
    }
    return value;
}

// Decimal digits after a '\', as a back reference number or a class unit.
Word CCompiler::ReadDecimalEscape() {
    Word value = 0;
    while (!AtEnd() && IsDecimalDigit(Current())) {
        value = value * 10 + (m_pPattern[m_position++] - u'0');
        if (value > 65535) Fail(CParserException::InvalidDecimalEscape);
    }
    return value;
}

Word CCompiler::ParseClass() {
    ++m_position;  // '['
    bool negated = At(u'^');
    if (negated) ++m_position;
    m_aClassItems.clear();
    m_nClassLow = 0xFFFF;
    m_nClassHigh = 0;
    for (;;) {
        if (AtEnd()) Fail(CParserException::InvalidCharacterClass);
        if (Current() == u']') break;
        CClassItem item = ParseClassAtom();
        bool range = At(u'-') && m_position + 1 < m_length && m_pPattern[m_position + 1] != u']';
        if (!range) {
            AddClassItem(item);
            continue;
        }
        ++m_position;  // '-'
        if (AtEnd()) Fail(CParserException::InvalidCharacterClass);
        CClassItem last = ParseClassAtom();
        if (item.nKind != ItemUnit || last.nKind != ItemUnit) Fail(CParserException::InvalidCharacterClass);
        if (last.nFirst < item.nFirst) continue;  // an inverted range is dropped
        AddClassItem({last.nFirst == item.nFirst ? ItemUnit : ItemRange, item.nFirst, last.nFirst});
    }
    ++m_position;  // ']'
    if (m_ignoreCase) AddUpperCaseCounterparts();
    return EmitClass(negated);
}

CClassItem CCompiler::ParseClassAtom() {
    DomChar unit = m_pPattern[m_position++];
    if (unit != u'\\') return {ItemUnit, unit, unit};
    if (AtEnd()) Fail(CParserException::InvalidCharacterClass);
    DomChar next = Current();
    if (next == u'b') {
        ++m_position;
        return {ItemUnit, 8, 8};
    }
    if (next >= u'1' && next <= u'9') {
        Word value = ReadDecimalEscape();
        return {ItemUnit, value, value};
    }
    if (Word operation = ClassEscapeOperation(next)) {
        ++m_position;
        return {ItemDigit + (operation - OpDigit), 0, 0xFFFF};
    }
    Word value = ParseCharacterEscape();
    return {ItemUnit, value, value};
}

void CCompiler::AddClassItem(const CClassItem& item) {
    m_aClassItems.push_back(item);
    if (item.nFirst < m_nClassLow) m_nClassLow = item.nFirst;
    if (item.nLast > m_nClassHigh) m_nClassHigh = item.nLast;
}

// Text units are folded to upper case before a class test, so a class that holds a lower-case
// letter must hold its upper-case counterpart as well.
void CCompiler::AddUpperCaseCounterparts() {
    size_t count = m_aClassItems.size();
    for (size_t i = 0; i < count; ++i) {
        CClassItem item = m_aClassItems[i];
        if (item.nKind > ItemRange || item.nLast < u'a' || item.nFirst > u'z') continue;
        Word first = (item.nFirst < u'a' ? u'a' : item.nFirst) - 32;
        Word last = (item.nLast > u'z' ? u'z' : item.nLast) - 32;
        AddClassItem({first == last ? ItemUnit : ItemRange, first, last});
    }
}

Word CCompiler::EmitClass(bool negated) {
    if (m_aClassItems.empty()) return NewNode(2, negated ? OpNegatedEmptyClass : OpEmptyClass);
    for (const CClassItem& item : m_aClassItems)
        if (item.nKind > ItemRange) return EmitListClass(negated);
    // A wide class of few items would make a large bitmap; its list matches the same units.
    Word width = m_nClassHigh - m_nClassLow + 1;
    if (width > 1024 && m_aClassItems.size() * 16 < width) return EmitListClass(negated);
    return EmitBitmapClass(negated);
}

Word CCompiler::EmitBitmapClass(bool negated) {
    Word count = m_nClassHigh - m_nClassLow + 1;
    Word node = NewNode(static_cast<int>(Simple::Bytes + (count + 3) / 4), negated ? OpNegatedBitmapClass : OpBitmapClass);
    Code(node + Simple::BitmapFirst) = m_nClassLow;
    Code(node + Simple::BitmapCount) = count;
    Word* bytes = m_code.GetWords() + node + Simple::Bytes;
    for (const CClassItem& item : m_aClassItems)
        for (Word unit = item.nFirst; unit <= item.nLast; ++unit) {
            Word offset = unit - m_nClassLow;
            bytes[offset >> 2] |= Word(1) << ((offset & 3) * 8);
        }
    return node;
}

// A list class packs each item as its kind followed by its first and, for a range, last unit.
Word CCompiler::EmitListClass(bool negated) {
    std::u16string packed;
    for (const CClassItem& item : m_aClassItems) {
        packed += static_cast<DomChar>(item.nKind);
        if (item.nKind <= ItemRange) packed += static_cast<DomChar>(item.nFirst);
        if (item.nKind == ItemRange) packed += static_cast<DomChar>(item.nLast);
    }
    Word node = NewNode(static_cast<int>(Simple::Items + (packed.size() + 1) / 2),
                        negated ? OpNegatedListClass : OpListClass);
    Code(node + Simple::ItemCount) = static_cast<Word>(m_aClassItems.size());
    Word* words = m_code.GetWords() + node + Simple::Items;
    for (size_t i = 0; i < packed.size(); ++i) words[i >> 1] |= static_cast<Word>(packed[i]) << ((i & 1) * 16);
    return node;
}

// Gives every node its continuation. Sub-parts continue at their node's second entry, both
// branches of an alternative at the alternative's continuation, the first part of a sequence at
// the sequence's second entry. An explicit work list keeps deep patterns off the call stack.
void CCompiler::Link(Word first) {
    std::vector<std::pair<Word, Word>> work;  // node, continuation
    std::vector<Word> runs;
    std::vector<Word> targets{Head::First};  // words that hold the index of a node to go to
    work.emplace_back(first, OpSucceed);
    while (!work.empty()) {
        auto [node, next] = work.back();
        work.pop_back();
        switch (Code(node)) {
            case OpAlternative:
                targets.insert(targets.end(), {node + Alternative::Left, node + Alternative::Right});
                Code(node + Alternative::Next) = next;
                work.emplace_back(Code(node + Alternative::Left), next);
                work.emplace_back(Code(node + Alternative::Right), next);
                break;
            case OpSequence:
                targets.insert(targets.end(), {node + Sequence::First, node + Sequence::Second});
                Code(node + Sequence::Next) = next;
                work.emplace_back(Code(node + Sequence::First), node + 1);
                work.emplace_back(Code(node + Sequence::Second), next);
                break;
            case OpRunEnter:
                runs.push_back(node);
                [[fallthrough]];
            case OpLoopEnter:
                targets.insert(targets.end(), {node + Loop::Next, node + Loop::Sub});
                Code(node + Loop::Next) = next;
                work.emplace_back(Code(node + Loop::Sub), node + 1);
                break;
            case OpCaptureEnter:
                targets.insert(targets.end(), {node + Capture::Next, node + Capture::Sub});
                Code(node + Capture::Next) = next;
                work.emplace_back(Code(node + Capture::Sub), node + 1);
                break;
            case OpLookEnter:
            case OpNotLookEnter:
                targets.insert(targets.end(), {node + Look::Next, node + Look::Sub});
                Code(node + Look::Next) = next;
                work.emplace_back(Code(node + Look::Sub), node + 1);
                break;
            default:
                targets.push_back(node + Simple::Next);
                Code(node + Simple::Next) = next;
                break;
        }
    }
    // Inner nodes first, so that outer jumps find their way already shortened.
    for (auto target = targets.rbegin(); target != targets.rend(); ++target) Code(*target) = SkipPassThrough(Code(*target));
    for (Word run : runs) Code(run + Loop::Link) = RequiredUnitAt(Code(run + Loop::Next));
}

// Sequence and empty nodes only pass control on: a jump to one goes straight to where it leads.
// Stopping early is harmless, since every node on the way leads to the same place.
Word CCompiler::SkipPassThrough(Word node) {
    for (int hops = 0; hops < 64; ++hops) {
        switch (Code(node)) {
            case OpSequence: node = Code(node + Sequence::First); break;
            case OpSequenceSecond: node = Code(node - 1 + Sequence::Second); break;
            case OpEmpty: node = Code(node + Simple::Next); break;
            default: return node;
        }
    }
    return node;
}

// The unit that must stand in the text where `node` starts, plus one, or 0 if it is not known.
// Only nodes that consume nothing and never fail are passed through. A run of units gives back
// only to positions where this unit stands.
Word CCompiler::RequiredUnitAt(Word node) {
    for (int hops = 0; hops < 64; ++hops) {
        switch (Code(node)) {
            case OpSequence: node = Code(node + Sequence::First); break;
            case OpSequenceSecond: node = Code(node - 1 + Sequence::Second); break;
            case OpEmpty: node = Code(node + Simple::Next); break;
            case OpCaptureEnter: node = Code(node + Capture::Sub); break;
            case OpCaptureReenter: node = Code(node - 1 + Capture::Next); break;
            case OpUnit: return Code(node + Simple::Unit) + 1;
            case OpString: return PackedUnit(m_code.GetWords() + node + Simple::Units, 0) + 1;
            default: return 0;
        }
    }
    return 0;
}

}  // namespace RegExpPrivate
