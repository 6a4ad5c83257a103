// Token scanning and the block readers of text, literals, comments and sections.
#include "xmlparser/private/Scanner.h"

#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include "xmlparser/private/CharClass.h"
#include "xmlparser/private/XmlException.h"

namespace XmlParserPrivate {

namespace {

using Code = Sxp::CParseException;

// A set of units at which a block copy stops. Every set holds 0 (end of a stream) and the line
// feed (line counting); the units are constants, so the vector search compares with immediates.
template <DomChar... Units>
struct TStops {
    static bool Holds(DomChar unit) { return unit == 0 || unit == u'\n' || ((unit == Units) || ...); }
#ifdef __SSE2__
    static __m128i Hits(__m128i units) {
        __m128i hits = _mm_or_si128(_mm_cmpeq_epi16(units, _mm_setzero_si128()),
                                    _mm_cmpeq_epi16(units, _mm_set1_epi16(u'\n')));
        ((hits = _mm_or_si128(hits, _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(Units))))), ...);
        return hits;
    }
#endif
};

using STextStops = TStops<u'<', u'&', u']'>;
using SAttributeStops = TStops<u'"', u'\'', u'<', u'&', u'\r', u'\t'>;
using SCommentStops = TStops<u'-'>;
using SCDataStops = TStops<u']'>;
using SPiStops = TStops<u'?'>;

// The first unit in [p, end) that the set holds, or end; sixteen units at a time where the
// machine has the vector instructions.
template <class Stops>
const DomChar* FindStop(const DomChar* p, const DomChar* end) {
    if (p == end || Stops::Holds(*p)) return p;
#ifdef __SSE2__
    for (; end - p >= 16; p += 16) {
        __m128i low = Stops::Hits(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
        __m128i high = Stops::Hits(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 8)));
        int mask = _mm_movemask_epi8(_mm_packs_epi16(low, high));
        if (mask != 0) return p + __builtin_ctz(static_cast<unsigned>(mask));
    }
    if (end - p >= 8) {
        int mask = _mm_movemask_epi8(Stops::Hits(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))));
        if (mask != 0) return p + (__builtin_ctz(static_cast<unsigned>(mask)) >> 1);
        p += 8;
    }
#endif
    while (p < end && !Stops::Holds(*p)) ++p;
    return p;
}

// The end of the run of name characters that starts at p, within [p, end); eight units at a
// time while they are ASCII, which tag names nearly always are. Units from 0x80 on are negative
// to the signed comparisons, so they leave the vector loop to the table lookup.
const DomChar* SkipNameChars(const DomChar* p, const DomChar* end) {
#ifdef __SSE2__
    auto inRange = [](__m128i units, short low, short high) {
        return _mm_and_si128(_mm_cmpgt_epi16(units, _mm_set1_epi16(static_cast<short>(low - 1))),
                             _mm_cmplt_epi16(units, _mm_set1_epi16(static_cast<short>(high + 1))));
    };
    for (; end - p >= 8; p += 8) {
        __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        __m128i letters = inRange(_mm_or_si128(units, _mm_set1_epi16(0x20)), u'a', u'z');
        __m128i digitsAndColon = inRange(units, u'0', u':');
        __m128i dashAndDot = inRange(units, u'-', u'.');
        __m128i underscore = _mm_cmpeq_epi16(units, _mm_set1_epi16(u'_'));
        __m128i names = _mm_or_si128(_mm_or_si128(letters, digitsAndColon), _mm_or_si128(dashAndDot, underscore));
        unsigned others = ~static_cast<unsigned>(_mm_movemask_epi8(names)) & 0xFFFFu;
        if (others != 0) {
            p += __builtin_ctz(others) >> 1;
            break;
        }
    }
#endif
    while (p < end && IsNameChar(*p)) ++p;
    return p;
}

// Entity expansion is refused once it has produced more than this many units and more than this
// multiple of the units read from the document itself, which stops self-multiplying entities.
constexpr int64_t s_nExpansionAllowance = 1 << 25;
constexpr int64_t s_nExpansionFactor = 16;

// The predefined entities. Their replacement texts ("&#60;", ">", "&#38;", "'" and the double
// quote) each come down to one character, which is appended directly.
struct SPredefined {
    const char16_t* pName;
    DomChar nUnit;
};
const SPredefined s_aPredefined[] = {{u"lt", u'<'}, {u"gt", u'>'}, {u"amp", u'&'}, {u"apos", u'\''}, {u"quot", u'"'}};

DomChar PredefinedUnit(DomStringView name) {
    for (const SPredefined& entity : s_aPredefined) {
        if (name == entity.pName) return entity.nUnit;
    }
    return 0;
}

int DigitValue(DomChar unit, int base) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (base == 16 && unit >= u'a' && unit <= u'f') return unit - u'a' + 10;
    if (base == 16 && unit >= u'A' && unit <= u'F') return unit - u'A' + 10;
    return -1;
}

bool IsPublicIdChar(DomChar unit) {
    if ((unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || (unit >= u'0' && unit <= u'9')) {
        return true;
    }
    return unit < 0x80 && unit != 0 && std::strchr("!#$%'()*+,-./:;=?@_", static_cast<char>(unit)) != nullptr;
}

}  // namespace

CScanner::CScanner(Sxp::IContentHandler* handler, Sxp::IErrorHandler* errorHandler, DomString publicId,
                   DomString systemId)
    : m_pHandler(handler),
      m_pErrorHandler(errorHandler),
      m_sPublicId(std::move(publicId)),
      m_sSystemId(std::move(systemId)),
      m_pStack(std::make_unique<CStreamStack>(static_cast<IFailure*>(this))) {}

CScanner::~CScanner() = default;

void CScanner::Open(CSourceReader* reader) {
    m_pReader = reader;
    m_pStack->Push(reader);
}

void CScanner::Fail(int code) {
    Sxp::CParseException* exception = new CXmlException(code, m_sPublicId, m_sSystemId, GetLine(), GetColumn());
    if (m_pErrorHandler) m_pErrorHandler->FatalError(exception);
    throw exception;
}

// ---- tokens ----

int CScanner::ScanToken() {
    int previous = m_nToken;
    m_pStack->SetEofAllowed(true);
    for (;;) {
        DomChar unit = NextChar();
        int type = -1;
        if (unit == 0) {
            type = TokenEnd;
        } else if (m_bInContent && unit != u'<') {
            PushBack(unit);
            type = TokenCharData;
        } else {
            switch (CharClass(unit)) {
            case ClassIllegal:
                Fail(Code::IllegalCharacter);
            case ClassSpace:
                SkipSpaceChars();
                if (previous == TokenSpaces) continue;  // spaces on both sides of an expansion
                type = TokenSpaces;
                break;
            case ClassNameStart: {
                ReadTokenName(unit, m_bNamesInPlace);
                DomChar next = PeekChar();
                type = next == u'?' ? TokenNameOptional
                     : next == u'*' ? TokenNameStar
                     : next == u'+' ? TokenNamePlus
                                    : TokenName;
                if (type != TokenName) NextChar();
                break;
            }
            case ClassNameChar:
                ReadTokenName(unit, false);
                type = TokenNameToken;
                break;
            case ClassQuote:
            case ClassApostrophe:
                m_nQuote = unit;
                m_nLiteralDepth = m_pStack->GetDepth();
                type = TokenLiteral;
                break;
            case ClassHash: {
                DomChar next = NextChar();
                if (!IsNameStartChar(next)) Fail(Code::BadToken);
                ReadTokenName(next, false);
                type = TokenHashName;
                break;
            }
            case ClassAmpersand:
                type = ScanReferenceName() ? TokenEntityRef : TokenLoneReference;
                break;
            case ClassPercent:
                if (!ScanReferenceName()) {
                    type = TokenLoneReference;
                    break;
                }
                if (const CEntity* entity = m_pDtd ? m_pDtd->FindParameterEntity(m_vToken) : nullptr) {
                    if (!entity->m_bExternal) {
                        PushEntity(entity);
                        continue;
                    }
                }
                type = TokenParameterRef;
                break;
            case ClassSlash:
                if (NextChar() != u'>' || m_bInDeclaration) Fail(Code::BadToken);
                type = TokenEmptyTagClose;
                break;
            case ClassOpenParen:
                type = TokenOpenParen;
                break;
            case ClassCloseParen: {
                DomChar next = PeekChar();
                type = next == u'?' ? TokenCloseOptional
                     : next == u'*' ? TokenCloseStar
                     : next == u'+' ? TokenClosePlus
                                    : TokenCloseParen;
                if (type != TokenCloseParen) NextChar();
                break;
            }
            case ClassLess:
                type = ScanMarkupOpen();
                break;
            case ClassGreater:
                type = m_bInDeclaration ? TokenDeclClose : TokenTagClose;
                break;
            case ClassEquals:
                type = TokenEquals;
                break;
            case ClassBar:
                type = TokenBar;
                break;
            case ClassComma:
                type = TokenComma;
                break;
            case ClassOpenBracket:
                type = TokenOpenBracket;
                break;
            case ClassCloseBracket:
                type = TokenCloseBracket;
                break;
            default:
                Fail(Code::BadToken);
            }
        }
        m_pStack->SetEofAllowed(false);
        m_nToken = type;
        return type;
    }
}

// The tokens of tags and the openings of markup in content, read straight from the top buffer
// while they end inside it, which is how nearly all of them come. -1 leaves the stream untouched
// for the general path: at a buffer's end, at the end of an entity, and for the rarer tokens.
// In content, text is not consumed: the general path reads its first unit and puts it back,
// which ends in the same place.
int CScanner::ScanCommonToken() {
    CCharStream* top = m_pStack->Top();
    const DomChar* p = top->Current();
    const DomChar* end = top->End();
    if (end - p < 2) return -1;
    DomChar unit = *p;
    if (m_bInContent) {
        if (unit != u'<') return unit == 0 ? -1 : TokenCharData;
        if (p[1] == u'/') {
            top->Advance(2);
            return TokenEndTag;
        }
        if (!IsNameStartChar(p[1])) return -1;
        top->Advance(1);
        return TokenStartTag;
    }
    switch (unit) {
    case u'=':
        top->Advance(1);
        return TokenEquals;
    case u'"':
    case u'\'':
        top->Advance(1);
        m_nQuote = unit;
        m_nLiteralDepth = m_pStack->GetDepth();
        return TokenLiteral;
    case u'>':
        top->Advance(1);
        return m_bInDeclaration ? TokenDeclClose : TokenTagClose;
    case u'/':
        if (p[1] != u'>' || m_bInDeclaration) return -1;
        top->Advance(2);
        return TokenEmptyTagClose;
    default:
        if (IsSpaceChar(unit)) return SkipSpacesInBuffer(top) ? TokenSpaces : -1;
        if (!IsNameStartChar(unit)) return -1;
        return ReadNameInBuffer(top) ? TokenName : -1;
    }
}

int CScanner::NextToken() {
    int common = ScanCommonToken();
    if (common < 0) return ScanToken();
    m_nToken = common;
    return common;
}

// Spaces that end inside the top buffer, not right behind other spaces (those meet across an
// entity's border and are skipped by the general path).
bool CScanner::SkipSpacesInBuffer(CCharStream* top) {
    if (m_nToken == TokenSpaces) return false;
    const DomChar* begin = top->Current();
    const DomChar* end = top->End();
    const DomChar* lineStart = nullptr;
    int lines = 0;
    const DomChar* p = begin;
    for (; p < end && IsSpaceChar(*p); ++p) {
        if (*p == u'\n') {
            ++lines;
            lineStart = p + 1;
        }
    }
    if (p == end) return false;
    top->AdvanceOverLines(static_cast<int>(p - begin), lines, lineStart);
    return true;
}

// A name that ends inside the top buffer and is not followed by an occurrence sign.
bool CScanner::ReadNameInBuffer(CCharStream* top) {
    const DomChar* begin = top->Current();
    const DomChar* end = top->End();
    const DomChar* p = SkipNameChars(begin + 1, end);
    if (p == end || *p == u'?' || *p == u'*' || *p == u'+') return false;
    size_t length = static_cast<size_t>(p - begin);
    if (m_bNamesInPlace) {
        m_vToken = DomStringView(begin, length);
    } else {
        CopyToken(DomStringView(begin, length));
    }
    top->Advance(static_cast<int>(length));
    return true;
}

bool CScanner::ScanExpectedName(DomStringView name) {
    if (m_bInContent || !m_bNamesInPlace) return false;
    CCharStream* top = m_pStack->Top();
    const DomChar* begin = top->Current();
    if (top->End() - begin <= static_cast<ptrdiff_t>(name.size())) return false;
    if (std::memcmp(begin, name.data(), name.size() * sizeof(DomChar)) != 0) return false;
    DomChar next = begin[name.size()];
    if (IsNameChar(next) || next == u'?' || next == u'*' || next == u'+') return false;
    m_vToken = DomStringView(begin, name.size());
    top->Advance(static_cast<int>(name.size()));
    m_nToken = TokenName;
    return true;
}

void CScanner::CopyToken(DomStringView name) {
    m_sToken.assign(name);
    m_vToken = m_sToken;
}

// After "<": a declaration, processing instruction, comment, CDATA section or tag.
int CScanner::ScanMarkupOpen() {
    DomChar unit = NextChar();
    if (unit == u'?') {
        DomChar next = NextChar();
        if (!IsNameStartChar(next)) Fail(Code::BadToken);
        ReadTokenName(next, false);
        if (!EqualsIgnoringAsciiCase(m_sToken, u"xml")) return TokenPi;
        if (m_sToken != u"xml") Fail(Code::BadToken);
        return TokenXmlDecl;
    }
    if (unit == u'!') {
        DomChar next = NextChar();
        if (IsNameStartChar(next)) {
            ReadTokenName(next, false);
            return TokenMarkupDecl;
        }
        if (next == u'[') {
            for (const char16_t* p = u"CDATA["; *p; ++p) {
                if (NextChar() != *p) Fail(Code::BadToken);
            }
            return TokenCData;
        }
        if (next != u'-' || NextChar() != u'-') Fail(Code::BadToken);
        return TokenComment;
    }
    if (unit == u'/') return TokenEndTag;
    PushBack(unit);
    return TokenStartTag;
}

// After "&" or "%": a name and ";" make a reference; anything else leaves the sign alone.
bool CScanner::ScanReferenceName() {
    DomChar next = NextChar();
    if (!IsNameStartChar(next)) {
        PushBack(next);
        return false;
    }
    ReadTokenName(next, false);
    if (NextChar() != u';') Fail(Code::BadToken);
    return true;
}

void CScanner::SkipSpaceChars() {
    DomChar unit;
    do {
        unit = NextChar();
    } while (IsSpaceChar(unit));
    PushBack(unit);
}

// Appends the name characters that follow, scanning the top buffer in blocks.
void CScanner::ReadNameRest(DomString& name) {
    for (;;) {
        CCharStream* top = m_pStack->Top();
        const DomChar* begin = top->Current();
        const DomChar* end = top->End();
        const DomChar* p = begin;
        while (p < end && IsNameChar(*p)) ++p;
        if (p > begin) {
            name.append(begin, static_cast<size_t>(p - begin));
            top->Advance(static_cast<int>(p - begin));
        }
        if (p < end) return;
        DomChar unit = NextChar();
        if (!IsNameChar(unit)) {
            PushBack(unit);
            return;
        }
        name += unit;
    }
}

// The token's name from its first unit on. In place, a name that ends inside the top buffer is
// left there: the first unit was the last one read from that buffer.
void CScanner::ReadTokenName(DomChar first, bool inPlace) {
    if (inPlace) {
        CCharStream* top = m_pStack->Top();
        const DomChar* begin = top->Current();
        const DomChar* end = top->End();
        const DomChar* p = begin;
        while (p < end && IsNameChar(*p)) ++p;
        if (p < end && begin[-1] == first) {
            m_vToken = DomStringView(begin - 1, static_cast<size_t>(p - begin + 1));
            top->Advance(static_cast<int>(p - begin));
            return;
        }
    }
    m_sToken.assign(1, first);
    ReadNameRest(m_sToken);
    m_vToken = m_sToken;
}

// A name that must begin with a name start and end with ";".
void CScanner::ReadEntityName(DomString& name) {
    DomChar unit = NextChar();
    if (!IsNameStartChar(unit)) Fail(Code::BadEntityReference);
    name.assign(1, unit);
    ReadNameRest(name);
    if (NextChar() != u';') Fail(Code::BadEntityReference);
}

// After "&#": one to six digits, decimal or, after "x", hexadecimal, and ";".
uint32_t CScanner::ReadCharRefValue() {
    DomChar unit = NextChar();
    int base = 10;
    if (unit == u'x') {
        base = 16;
        unit = NextChar();
    }
    uint32_t value = 0;
    int digits = 0;
    for (int digit; (digit = DigitValue(unit, base)) >= 0; unit = NextChar()) {
        if (++digits > 6) Fail(Code::BadCharacterReference);
        value = value * static_cast<uint32_t>(base) + static_cast<uint32_t>(digit);
    }
    if (unit != u';' || digits == 0 || value > 0x10FFFF) Fail(Code::BadCharacterReference);
    if (value < 0x10000 && !IsLegalChar(static_cast<DomChar>(value))) Fail(Code::BadCharacterReference);
    return value;
}

void CScanner::PushEntity(const CEntity* entity) {
    if (m_pStack->GetDepth() > MaxEntityDepth) Fail(Code::EntityNestingTooDeep);
    ChargeExpansion(static_cast<int64_t>(entity->m_sText.size()));
    m_pStack->Push(entity->m_sText.data(), static_cast<int>(entity->m_sText.size()));
}

void CScanner::ChargeExpansion(int64_t units) {
    m_nExpanded += units;
    if (m_nExpanded > s_nExpansionAllowance && m_nExpanded > s_nExpansionFactor * m_pReader->GetUnitsRead()) {
        Fail(Code::EntityExpansionTooLarge);
    }
}

// ---- chunks ----

// Copies the units of the top buffer up to the first that `stops` holds into the chunk.
template <class Stops>
void CScanner::CopyRun() {
    CCharStream* top = m_pStack->Top();
    const DomChar* begin = top->Current();
    const DomChar* end = top->End();
    int count = static_cast<int>(FindStop<Stops>(begin, end) - begin);
    if (count == 0) return;
    Append(begin, count);
    top->Advance(count);
}

void CScanner::Append(const DomChar* units, int count) {
    while (count > 0) {
        int room = ChunkSize - m_nChunk;
        int n = count < room ? count : room;
        std::memcpy(m_aChunk + m_nChunk, units, sizeof(DomChar) * static_cast<size_t>(n));
        m_nChunk += n;
        units += n;
        count -= n;
        if (m_nChunk == ChunkSize) Flush();
    }
}

// A supplementary character becomes a surrogate pair, which a chunk border may split.
void CScanner::AppendCodePoint(uint32_t value) {
    if (value < 0x10000) {
        AppendUnit(static_cast<DomChar>(value));
        return;
    }
    value -= 0x10000;
    AppendUnit(static_cast<DomChar>(0xD800 + (value >> 10)));
    AppendUnit(static_cast<DomChar>(0xDC00 + (value & 0x3FF)));
}

void CScanner::Flush() {
    if (m_nChunk == 0) return;
    if (m_pCollect) {
        m_pCollect->append(m_aChunk, static_cast<size_t>(m_nChunk));
    } else {
        m_pHandler->Characters(m_aChunk, m_nChunk);
    }
    m_nChunk = 0;
}

// ---- content ----

// Text that ends at "<" inside the top buffer, with nothing collected before it and no more
// than a chunk of it, goes to the handler straight from the buffer, in the same one call a
// chunk would have made.
bool CScanner::PassTextInPlace() {
    CCharStream* top = m_pStack->Top();
    const DomChar* begin = top->Current();
    const DomChar* end = top->End();
    const DomChar* lineStart = nullptr;
    int lines = 0;
    const DomChar* p = begin;
    for (;;) {
        p = FindStop<STextStops>(p, end);
        if (p == end || *p != u'\n') break;
        ++lines;
        lineStart = ++p;
    }
    int count = static_cast<int>(p - begin);
    if (p == end || *p != u'<' || count > ChunkSize) return false;
    top->AdvanceOverLines(count, lines, lineStart);
    if (count > 0) m_pHandler->Characters(begin, count);
    return true;
}

bool CScanner::ReadCharData() {
    if (m_nChunk == 0 && !m_pCollect && PassTextInPlace()) return false;
    for (;;) {
        CopyRun<STextStops>();
        DomChar unit = NextChar();
        if (unit == u'<') {
            PushBack(unit);
            Flush();
            return false;
        }
        if (unit == u'&') {
            if (!ReadContentReference()) {
                Flush();
                m_nToken = TokenEntityRef;
                return true;
            }
        } else if (unit == u']') {
            int count = 1;
            while ((unit = NextChar()) == u']') ++count;
            if (unit == u'>' && count >= 2) Fail(Code::MisplacedCDataClose);
            PushBack(unit);
            while (count-- > 0) AppendUnit(u']');
        } else {
            AppendUnit(unit);
        }
    }
}

// After "&" in text: a character reference, or an entity whose text is read on in place.
// Returns false, with the name as the token text, for an entity that is not expanded.
bool CScanner::ReadContentReference() {
    DomChar unit = NextChar();
    if (unit == u'#') {
        AppendCodePoint(ReadCharRefValue());
        return true;
    }
    PushBack(unit);
    ReadEntityName(m_sToken);
    SetTokenCopy();
    if (DomChar predefined = PredefinedUnit(m_sToken)) {
        AppendUnit(predefined);
        return true;
    }
    const CEntity* entity = m_pDtd ? m_pDtd->FindGeneralEntity(m_sToken) : nullptr;
    if (!entity || entity->m_bExternal) return false;
    PushEntity(entity);
    return true;
}

void CScanner::ReadComment() {
    m_pHandler->StartComment();
    for (;;) {
        CopyRun<SCommentStops>();
        DomChar unit = NextChar();
        if (unit != u'-') {
            AppendUnit(unit);
            continue;
        }
        unit = NextChar();
        if (unit != u'-') {
            AppendUnit(u'-');
            PushBack(unit);
            continue;
        }
        if (NextChar() != u'>') Fail(Code::BadComment);
        Flush();
        m_pHandler->EndComment();
        return;
    }
}

void CScanner::ReadCData() {
    m_pHandler->StartCData();
    for (;;) {
        CopyRun<SCDataStops>();
        DomChar unit = NextChar();
        if (unit != u']') {
            AppendUnit(unit);
            continue;
        }
        int count = 1;
        while ((unit = NextChar()) == u']') ++count;
        if (unit == u'>' && count >= 2) {
            for (count -= 2; count > 0; --count) AppendUnit(u']');
            Flush();
            m_pHandler->EndCData();
            return;
        }
        PushBack(unit);
        while (count-- > 0) AppendUnit(u']');
    }
}

void CScanner::ReadProcessingInstruction() {
    m_sData.clear();
    m_pCollect = &m_sData;
    SkipSpaceChars();
    for (;;) {
        CopyRun<SPiStops>();
        DomChar unit = NextChar();
        if (unit == u'?') {
            DomChar next = NextChar();
            if (next == u'>') break;
            PushBack(next);
        }
        AppendUnit(unit);
    }
    Flush();
    m_pCollect = nullptr;
    m_pHandler->ProcessingInstruction(m_sToken, m_sData);
}

// ---- literals ----

// True for the literal's own closing quote; a stream ending below the literal's level is an error.
bool CScanner::IsLiteralEnd(DomChar unit) {
    int depth = m_pStack->GetDepth();
    if (depth < m_nLiteralDepth) Fail(Code::UnexpectedEndOfLiteral);
    return unit == m_nQuote && depth == m_nLiteralDepth;
}

// A value that ends at its quote inside the top buffer, with nothing that needs replacing and
// no more than a chunk of it, goes to the handler straight from the buffer once the quote is
// read, as a chunk would have.
bool CScanner::PassValueInPlace() {
    if (m_nChunk != 0 || m_pCollect || m_pStack->GetDepth() != m_nLiteralDepth) return false;
    CCharStream* top = m_pStack->Top();
    const DomChar* begin = top->Current();
    const DomChar* p = FindStop<SAttributeStops>(begin, top->End());
    int count = static_cast<int>(p - begin);
    if (p == top->End() || *p != m_nQuote || count > ChunkSize) return false;
    top->Advance(count + 1);
    if (count > 0) m_pHandler->Characters(begin, count);
    return true;
}

void CScanner::ReadAttributeValue() {
    if (PassValueInPlace()) return;
    for (;;) {
        CopyRun<SAttributeStops>();
        DomChar unit = NextChar();
        if (IsLiteralEnd(unit)) break;
        switch (unit) {
        case u'<':
            Fail(Code::BadAttributeValue);
        case u'\r':
        case u'\n':
        case u'\t':
            AppendUnit(u' ');
            break;
        case u'&':
            ReadAttributeReference();
            break;
        default:
            AppendUnit(unit);
        }
    }
    Flush();
}

void CScanner::ReadAttributeValue(DomString& text) {
    text.clear();
    m_pCollect = &text;
    ReadAttributeValue();
    m_pCollect = nullptr;
}

// After "&" in an attribute value: every entity must be known and internal.
void CScanner::ReadAttributeReference() {
    DomChar unit = NextChar();
    if (unit == u'#') {
        uint32_t value = ReadCharRefValue();
        if (value == u'\r' || value == u'\n' || value == u'\t') value = u' ';
        AppendCodePoint(value);
        return;
    }
    PushBack(unit);
    ReadEntityName(m_sName);
    if (DomChar predefined = PredefinedUnit(m_sName)) {
        AppendUnit(predefined);
        return;
    }
    const CEntity* entity = m_pDtd ? m_pDtd->FindGeneralEntity(m_sName) : nullptr;
    if (!entity) Fail(Code::UndefinedGeneralEntity);
    if (entity->m_bExternal) Fail(Code::ExternalReferenceInAttributeValue);
    PushEntity(entity);
}

void CScanner::ReadSystemLiteral(DomString& text) {
    text.clear();
    for (DomChar unit; !IsLiteralEnd(unit = NextChar());) text += unit;
}

// White space is normalised on the way: dropped at both ends, one space inside.
void CScanner::ReadPublicLiteral(DomString& text) {
    text.clear();
    bool pendingSpace = false;
    for (DomChar unit; !IsLiteralEnd(unit = NextChar());) {
        if (unit == u' ' || unit == u'\r' || unit == u'\n') {
            pendingSpace = !text.empty();
            continue;
        }
        if (!IsPublicIdChar(unit)) Fail(Code::BadPublicIdentifier);
        if (pendingSpace) text += u' ';
        pendingSpace = false;
        text += unit;
    }
}

void CScanner::ReadEntityValue(DomString& text) {
    text.clear();
    for (DomChar unit; !IsLiteralEnd(unit = NextChar());) {
        if (unit == u'%' || unit == u'&') {
            PushBack(unit);
            ReadEntityValueReference(text);
        } else {
            text += unit;
        }
    }
}

// In an entity value: parameter entities are expanded, character references resolved, and
// general entity references kept as they stand.
void CScanner::ReadEntityValueReference(DomString& text) {
    DomChar sign = NextChar();
    DomChar next = NextChar();
    if (sign == u'&' && next == u'#') {
        uint32_t value = ReadCharRefValue();
        if (value < 0x10000) {
            text += static_cast<DomChar>(value);
        } else {
            text += static_cast<DomChar>(0xD800 + ((value - 0x10000) >> 10));
            text += static_cast<DomChar>(0xDC00 + ((value - 0x10000) & 0x3FF));
        }
        return;
    }
    PushBack(next);
    if (sign == u'%' && !IsNameStartChar(next)) {
        text += sign;
        return;
    }
    ReadEntityName(m_sName);
    if (sign == u'%') {
        const CEntity* entity = m_pDtd ? m_pDtd->FindParameterEntity(m_sName) : nullptr;
        if (entity && !entity->m_bExternal) {
            PushEntity(entity);
            return;
        }
    } else if (!PredefinedUnit(m_sName)) {
        const CEntity* entity = m_pDtd ? m_pDtd->FindGeneralEntity(m_sName) : nullptr;
        if (entity && entity->m_bUnparsed) Fail(Code::UnparsedEntityReference);
    }
    text += sign;
    text += m_sName;
    text += u';';
}

}  // namespace XmlParserPrivate
