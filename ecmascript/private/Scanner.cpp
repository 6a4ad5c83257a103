// The script scanner: a class table for units below 128, a linear keyword table, and a read
// buffer with push-back room in front of each block.
#include "ecmascript/private/Scanner.h"

#include <cstdio>

namespace EcmaScriptPrivate {

using EcmaScript::CNumber;

namespace {

const Core::SMessage kMessages[] = {
    {0, u"Illegal character: hex code %s"},
    {1, u"Unexpected end of stream in multi-line comment"},
    {2, u"Nested multi-line comments"},
    {3, u"Invalid decimal literal: %s..."},
    {4, u"Invalid hex integer literal: %s..."},
    {5, u"Invalid octal integer literal: %s..."},
    {6, u"Unexpected end of stream in string literal"},
    {7, u"Line terminator in string literal"},
    {8, u"Invalid escape sequence: %s..."},
    {9, u"Error limit exceeded"},
    {-1, u"Unclassified scanner exception"},
};

enum ECharacterClass {
    ClassIllegal = 0,
    ClassEnd = 1,
    ClassSpace = 2,
    ClassLineTerminator = 3,
    ClassIdentifierStart = 4,
    ClassDigit = 5,
    ClassFirstPunctuation = 6,
    ClassDoubleQuote = 30,
    ClassSingleQuote = 31
};

const char kPunctuation[] = "=><,!~?:.+-*/&|^%(){}[];";

const char16_t* const kKeywords[] = {
    u"break", u"continue", u"delete", u"else", u"for", u"function", u"if", u"in", u"new", u"return", u"this",
    u"typeof", u"var", u"void", u"while", u"with"};

const char16_t* const kReservedWords[] = {
    u"abstract", u"boolean", u"byte", u"case", u"catch", u"char", u"class", u"const", u"debugger", u"default",
    u"do", u"double", u"enum", u"export", u"extends", u"final", u"finally", u"float", u"goto", u"implements",
    u"import", u"instanceof", u"int", u"interface", u"long", u"native", u"package", u"private", u"protected",
    u"public", u"short", u"static", u"super", u"switch", u"synchronized", u"throw", u"throws", u"transient",
    u"try", u"volatile"};

bool IsOctalDigit(DomChar unit) { return unit >= u'0' && unit <= u'7'; }
bool IsDecimalDigit(DomChar unit) { return unit >= u'0' && unit <= u'9'; }
bool IsHexDigit(DomChar unit) {
    return IsDecimalDigit(unit) || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}
int HexValue(DomChar unit) {
    if (IsDecimalDigit(unit)) return unit - u'0';
    return (unit | 0x20) - u'a' + 10;
}

}  // namespace

void CScannerException::GetMessage(DomString& text) const {
    Core::FormatTableMessage(text, kMessages, m_nCode, m_sArgument, DomString());
}

CScanner::CScanner() { FillTables(); }

void CScanner::FillTables() {
    for (int unit = 0; unit < 128; ++unit) m_aClasses[unit] = ClassIllegal;
    m_aClasses[0] = ClassEnd;
    m_aClasses[9] = m_aClasses[11] = m_aClasses[12] = m_aClasses[32] = ClassSpace;
    m_aClasses[10] = m_aClasses[13] = ClassLineTerminator;
    for (int unit = 'a'; unit <= 'z'; ++unit) m_aClasses[unit] = m_aClasses[unit - 'a' + 'A'] = ClassIdentifierStart;
    m_aClasses[static_cast<int>('$')] = m_aClasses[static_cast<int>('_')] = ClassIdentifierStart;
    for (int unit = '0'; unit <= '9'; ++unit) m_aClasses[unit] = ClassDigit;
    for (int i = 0; kPunctuation[i]; ++i) m_aClasses[static_cast<int>(kPunctuation[i])] = ClassFirstPunctuation + i;
    m_aClasses[static_cast<int>('"')] = ClassDoubleQuote;
    m_aClasses[static_cast<int>('\'')] = ClassSingleQuote;

    int kind = TokenBreak;
    for (const char16_t* word : kKeywords) m_aKeywords.Add(SKeyword{word, kind++});
    for (const char16_t* word : kReservedWords) m_aKeywords.Add(SKeyword{word, TokenReserved});
    m_aKeywords.Add(SKeyword{u"null", TokenNull});
    m_aKeywords.Add(SKeyword{u"true", TokenTrue});
    m_aKeywords.Add(SKeyword{u"false", TokenFalse});
}

void CScanner::Open(EcmaScript::ICharacterStream* stream) {
    m_stream = stream;
    m_errorHandler = nullptr;
    m_hasErrors = 0;
    m_lineTerminatorSeen = 0;
    m_line = 1;
    m_limit = m_position = kPushBackRoom;
}

// At the end of the stream the unit 0 is given and the indexes stay, so the end reads for ever.
DomChar CScanner::Refill() {
    int count = m_stream ? m_stream->Read(m_aBuffer + kPushBackRoom, kBlockSize) : 0;
    if (count <= 0) return 0;
    m_limit = kPushBackRoom + count;
    m_position = kPushBackRoom;
    return m_aBuffer[m_position++];
}

void CScanner::Report(int code, const DomString& argument) {
    m_hasErrors = 1;
    if (!m_errorHandler) return;
    CScannerException error(code, argument);
    DomString text;
    error.GetMessage(text);
    if (!m_errorHandler->Report(m_line, text)) throw new CScannerException(CScannerException::ErrorLimit);
}

// A 13 followed by a 10 counts as one terminator.
void CScanner::CountLineTerminator(DomChar unit) {
    if (unit == 13) {
        DomChar next = ReadUnit();
        if (next != 10) PushBack(next);
    }
    ++m_line;
}

void CScanner::NextToken(CToken& token) {
    for (;;) {
        DomChar unit = ReadUnit();
        int unitClass = ClassOf(unit);
        switch (unitClass) {
            case ClassEnd:
                PushBack(unit);
                token.kind = TokenEnd;
                break;
            case ClassSpace:
                continue;
            case ClassLineTerminator:
                CountLineTerminator(unit);
                m_lineTerminatorSeen = 1;
                continue;
            case ClassIdentifierStart:
                ScanIdentifier(unit, token);
                break;
            case ClassDigit:
                ScanNumber(unit, token);
                break;
            case ClassDoubleQuote:
            case ClassSingleQuote:
                ScanString(unit, token);
                break;
            case ClassIllegal: {
                char hex[8];
                std::snprintf(hex, sizeof hex, "%04x", static_cast<unsigned>(unit));
                Report(CScannerException::IllegalCharacter, Core::WidenLatin1(hex));
                continue;
            }
            default:
                if (unit == u'/') {
                    DomChar next = ReadUnit();
                    if (next == u'*') {
                        SkipBlockComment();
                        continue;
                    }
                    if (next == u'/') {
                        SkipLineComment();
                        continue;
                    }
                    if (next == u'=') {
                        token.kind = TokenDivideAssign;
                    } else {
                        PushBack(next);
                        token.kind = TokenDivide;
                    }
                    break;
                }
                if (unit == u'.') {
                    DomChar next = ReadUnit();
                    PushBack(next);
                    if (IsDecimalDigit(next)) {
                        ScanNumber(unit, token);
                        break;
                    }
                }
                token.kind = ScanPunctuation(unit);
                break;
        }
        token.lineTerminatorBefore = m_lineTerminatorSeen;
        m_lineTerminatorSeen = 0;
        return;
    }
}

void CScanner::SkipLineComment() {
    for (;;) {
        DomChar unit = ReadUnit();
        int unitClass = ClassOf(unit);
        if (unitClass == ClassLineTerminator || unitClass == ClassEnd) {
            PushBack(unit);
            return;
        }
    }
}

void CScanner::SkipBlockComment() {
    bool lineCrossed = false;
    for (;;) {
        DomChar unit = ReadUnit();
        int unitClass = ClassOf(unit);
        if (unitClass == ClassEnd) {
            PushBack(unit);
            Report(CScannerException::EndInComment);
            break;
        }
        if (unitClass == ClassLineTerminator) {
            CountLineTerminator(unit);
            lineCrossed = true;
        } else if (unit == u'/') {
            DomChar next = ReadUnit();
            PushBack(next);
            if (next == u'*') Report(CScannerException::NestedComment);
        } else if (unit == u'*') {
            DomChar next = ReadUnit();
            if (next == u'/') break;
            PushBack(next);
        }
    }
    if (lineCrossed) m_lineTerminatorSeen = 1;
}

void CScanner::ScanIdentifier(DomChar first, CToken& token) {
    DomChar buffer[64];
    DomString longText;
    int length = 0;
    DomChar unit = first;
    do {
        if (length == 64) {
            longText.append(buffer, length);
            length = 0;
        }
        buffer[length++] = unit;
        unit = ReadUnit();
    } while (ClassOf(unit) == ClassIdentifierStart || ClassOf(unit) == ClassDigit);
    PushBack(unit);
    DomStringView spelling(buffer, length);
    if (!longText.empty()) {
        longText.append(buffer, length);
        spelling = longText;
    }
    for (const SKeyword& keyword : m_aKeywords) {
        if (keyword.sSpelling == spelling) {
            token.kind = keyword.nKind;
            return;
        }
    }
    token.kind = TokenIdentifier;
    token.name = CName(spelling);
    token.name.GetHash();
}

void CScanner::ScanNumber(DomChar first, CToken& token) {
    token.kind = TokenNumber;
    DomString text(1, first);
    if (first != u'0') {
        ScanDecimal(text, token);
        return;
    }
    DomChar next = ReadUnit();
    if (next == u'.' || next == u'e' || next == u'E') {
        PushBack(next);
        ScanDecimal(text, token);
    } else if (next == u'x' || next == u'X') {
        text += u'x';
        ScanDigitsInBase(text, 16, CScannerException::InvalidHex, token);
    } else if (IsOctalDigit(next)) {
        PushBack(next);
        ScanDigitsInBase(text, 8, CScannerException::InvalidOctal, token);
    } else {
        PushBack(next);
        token.number = CNumber::FromInteger(0);
    }
}

// Digits, optional "." and digits, optional exponent with sign and at least one digit. The
// first unit is already in `text`.
void CScanner::ScanDecimal(DomString& text, CToken& token) {
    bool inFraction = text[0] == u'.';
    DomChar unit = ReadUnit();
    while (IsDecimalDigit(unit)) {
        text += unit;
        unit = ReadUnit();
    }
    if (unit == u'.' && !inFraction) {
        text += unit;
        unit = ReadUnit();
        while (IsDecimalDigit(unit)) {
            text += unit;
            unit = ReadUnit();
        }
    }
    if (unit == u'e' || unit == u'E') {
        text += unit;
        unit = ReadUnit();
        if (unit == u'+' || unit == u'-') {
            text += unit;
            unit = ReadUnit();
        }
        if (!IsDecimalDigit(unit)) {
            text += unit;
            PushBack(unit);
            Report(CScannerException::InvalidDecimal, text);
            token.number = CNumber::FromInteger(0);
            return;
        }
        while (IsDecimalDigit(unit)) {
            text += unit;
            unit = ReadUnit();
        }
    }
    PushBack(unit);
    ConvertLiteral(text, CScannerException::InvalidDecimal, token);
}

void CScanner::ScanDigitsInBase(DomString& text, int base, int errorCode, CToken& token) {
    DomChar unit = ReadUnit();
    if (base == 16 && !IsHexDigit(unit)) {
        text += unit;
        PushBack(unit);
        Report(errorCode, text);
        token.number = CNumber::FromInteger(0);
        return;
    }
    while (base == 16 ? IsHexDigit(unit) : IsOctalDigit(unit)) {
        text += unit;
        unit = ReadUnit();
    }
    PushBack(unit);
    ConvertLiteral(text, errorCode, token);
}

void CScanner::ConvertLiteral(const DomString& text, int errorCode, CToken& token) {
    if (!CNumber::FromLiteralText(text, token.number)) {
        Report(errorCode, text);
        token.number = CNumber::FromInteger(0);
    }
}

void CScanner::ScanString(DomChar quote, CToken& token) {
    token.kind = TokenString;
    token.text.clear();
    for (;;) {
        DomChar unit = ReadUnit();
        if (unit == quote) return;
        int unitClass = ClassOf(unit);
        if (unit < 128 && (unitClass == ClassEnd || unitClass == ClassLineTerminator)) {
            PushBack(unit);
            Report(unitClass == ClassEnd ? CScannerException::EndInString : CScannerException::LineTerminatorInString);
            token.text.clear();
            return;
        }
        if (unit == u'\\') {
            if (!ScanEscape(token.text)) {
                token.text.clear();
                return;
            }
            continue;
        }
        token.text += unit;
    }
}

// Appends the unit of one escape; false when the string ended inside it.
bool CScanner::ScanEscape(DomString& text) {
    DomChar unit = ReadUnit();
    int unitClass = ClassOf(unit);
    if (unitClass == ClassEnd || unitClass == ClassLineTerminator) {
        PushBack(unit);
        Report(unitClass == ClassEnd ? CScannerException::EndInString : CScannerException::LineTerminatorInString);
        return false;
    }
    switch (unit) {
        case u'b': text += DomChar(8); return true;
        case u'f': text += DomChar(12); return true;
        case u'n': text += DomChar(10); return true;
        case u'r': text += DomChar(13); return true;
        case u't': text += DomChar(9); return true;
        case u'v': text += DomChar(11); return true;
        default: break;
    }
    if (IsOctalDigit(unit)) {
        DomString digits(1, unit);
        DomChar next = ReadUnit();
        while (digits.size() < 3 && IsOctalDigit(next)) {
            digits += next;
            next = ReadUnit();
        }
        PushBack(next);
        int value = 0;
        for (DomChar digit : digits) value = value * 8 + (digit - u'0');
        if (value > 255) Report(CScannerException::InvalidEscape, u"\\" + digits);
        text += static_cast<DomChar>(value);
        return true;
    }
    if (unit == u'u' || unit == u'x') {
        int wanted = unit == u'u' ? 4 : 2;
        DomChar digits[4];
        int count = 0;
        DomChar next = 0;
        while (count < wanted && IsHexDigit(next = ReadUnit())) digits[count++] = next;
        if (count < wanted) {
            PushBack(next);
            while (count > 0) PushBack(digits[--count]);
            text += unit;
            return true;
        }
        int value = 0;
        for (int i = 0; i < wanted; ++i) value = value * 16 + HexValue(digits[i]);
        text += static_cast<DomChar>(value);
        return true;
    }
    text += unit;
    return true;
}

int CScanner::ScanPunctuation(DomChar first) {
    // Each operator that may be extended: the follower and the longer kind.
    auto extend = [this](DomChar follower) {
        DomChar next = ReadUnit();
        if (next == follower) return true;
        PushBack(next);
        return false;
    };
    switch (first) {
        case u'=': return extend(u'=') ? TokenEqual : TokenAssign;
        case u'!': return extend(u'=') ? TokenNotEqual : TokenNot;
        case u'*': return extend(u'=') ? TokenMultiplyAssign : TokenMultiply;
        case u'%': return extend(u'=') ? TokenModuloAssign : TokenModulo;
        case u'^': return extend(u'=') ? TokenBitXorAssign : TokenBitXor;
        case u'&': return extend(u'&') ? TokenAnd : extend(u'=') ? TokenBitAndAssign : TokenBitAnd;
        case u'|': return extend(u'|') ? TokenOr : extend(u'=') ? TokenBitOrAssign : TokenBitOr;
        case u'+': return extend(u'+') ? TokenIncrement : extend(u'=') ? TokenPlusAssign : TokenPlus;
        case u'-': return extend(u'-') ? TokenDecrement : extend(u'=') ? TokenMinusAssign : TokenMinus;
        case u'<':
            if (extend(u'=')) return TokenLessEqual;
            if (extend(u'<')) return extend(u'=') ? TokenShiftLeftAssign : TokenShiftLeft;
            return TokenLess;
        case u'>':
            if (extend(u'=')) return TokenGreaterEqual;
            if (!extend(u'>')) return TokenGreater;
            if (extend(u'=')) return TokenShiftRightAssign;
            if (!extend(u'>')) return TokenShiftRight;
            return extend(u'=') ? TokenShiftRightUnsignedAssign : TokenShiftRightUnsigned;
        case u',': return TokenComma;
        case u'~': return TokenBitNot;
        case u'?': return TokenQuestion;
        case u':': return TokenColon;
        case u'.': return TokenDot;
        case u'(': return TokenLeftParen;
        case u')': return TokenRightParen;
        case u'{': return TokenLeftBrace;
        case u'}': return TokenRightBrace;
        case u'[': return TokenLeftBracket;
        case u']': return TokenRightBracket;
        default: return TokenSemicolon;
    }
}

}  // namespace EcmaScriptPrivate
