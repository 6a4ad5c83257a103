// The XPath scanner. Units are read one at a time; 0 stands for the end, so a NUL unit inside
// the source ends the expression.
#include "xpath/Scanner.h"

#include "xpath/XpathException.h"

namespace Xpath {

const DomChar* const g_apOperatorNames[] = {u"and", u"or", u"mod", u"div", nullptr};
const DomChar* const g_apNodeTypes[] = {u"comment", u"text", u"processing-instruction", u"node", nullptr};
const DomChar* const g_apAxisNames[] = {
    u"ancestor",  u"ancestor-or-self", u"attribute", u"child",     u"descendant",        u"descendant-or-self",
    u"following", u"following-sibling", u"namespace", u"parent", u"preceding", u"preceding-sibling",
    u"self",      nullptr};

int FindWord(const DomChar* const* table, DomStringView word) {
    for (int i = 0; table[i]; ++i)
        if (word == table[i]) return i;
    return -1;
}

bool CScanner::IsNameStart(DomChar c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || c == u'_' || c > 0x80;
}

bool CScanner::IsNameChar(DomChar c) {
    return IsNameStart(c) || (c >= u'0' && c <= u'9') || c == u'.' || c == u'-';
}

bool CScanner::IsWhitespace(DomChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }

void CScanner::Reset(DomStringView source) {
    m_sSource.assign(source);
    m_nLength = m_sSource.size();
    m_nPosition = 0;
    m_nPrevious = TokenNone;
}

DomChar CScanner::GetChar() { return m_nPosition < m_nLength ? m_sSource[m_nPosition++] : 0; }

void CScanner::UngetChar(DomChar c) {
    if (c != 0) --m_nPosition;
}

void CScanner::SkipWhitespace() {
    DomChar c;
    do c = GetChar();
    while (IsWhitespace(c));
    UngetChar(c);
}

void CScanner::CollectName() {
    DomChar c;
    do c = GetChar();
    while (IsNameChar(c));
    UngetChar(c);
}

// The disambiguation rule of XPath 1.0 (section 3.7) on token kinds: after these kinds an
// operand is expected, after all others an operator.
bool CScanner::OperatorExpected() const {
    switch (m_nPrevious) {
        case TokenNone:
        case TokenLeftParenthesis:
        case TokenLeftBracket:
        case TokenAt:
        case TokenComma:
        case TokenDoubleColon:
            return false;
        default:
            return !(m_nPrevious >= TokenOperatorName && m_nPrevious <= TokenGreaterOrEqual);
    }
}

void CScanner::Deliver(CToken& token, int32_t kind) {
    token.m_nKind = kind;
    m_nPrevious = kind;
}

void CScanner::Next(CToken& token) {
    SkipWhitespace();
    size_t start = m_nPosition;
    DomChar c = GetChar();
    switch (c) {
        case 0: return Deliver(token, TokenEnd);
        case u'(': return Deliver(token, TokenLeftParenthesis);
        case u')': return Deliver(token, TokenRightParenthesis);
        case u'[': return Deliver(token, TokenLeftBracket);
        case u']': return Deliver(token, TokenRightBracket);
        case u'@': return Deliver(token, TokenAt);
        case u',': return Deliver(token, TokenComma);
        case u'+': return Deliver(token, TokenPlus);
        case u'-': return Deliver(token, TokenMinus);
        case u'=': return Deliver(token, TokenEqual);
        case u'|': return Deliver(token, TokenUnion);
        case u'!':
            if (GetChar() != u'=') throw new CXpathException(CXpathException::IllegalCharacter);
            return Deliver(token, TokenNotEqual);
        case u':':
            if (GetChar() != u':') throw new CXpathException(CXpathException::IllegalCharacter);
            return Deliver(token, TokenDoubleColon);
        case u'<':
        case u'>': {
            DomChar next = GetChar();
            bool orEqual = next == u'=';
            if (!orEqual) UngetChar(next);
            if (c == u'<') return Deliver(token, orEqual ? TokenLessOrEqual : TokenLess);
            return Deliver(token, orEqual ? TokenGreaterOrEqual : TokenGreater);
        }
        case u'/': {
            DomChar next = GetChar();
            if (next == u'/') return Deliver(token, TokenDoubleSlash);
            UngetChar(next);
            return Deliver(token, TokenSlash);
        }
        case u'"':
        case u'\'': return ScanLiteral(token, c);
        case u'$': return ScanVariable(token);
        case u'.': {
            DomChar next = GetChar();
            if (next == u'.') return Deliver(token, TokenParentNode);
            UngetChar(next);
            if (next >= u'0' && next <= u'9') return ScanNumber(token, start);
            return Deliver(token, TokenCurrentNode);
        }
        case u'*':
            if (OperatorExpected()) return Deliver(token, TokenMultiply);
            token.m_sText = u"*";
            return Deliver(token, TokenNameTest);
        default:
            if (c >= u'0' && c <= u'9') return ScanNumber(token, start);
            if (IsNameStart(c)) return ScanName(token, start);
            throw new CXpathException(CXpathException::IllegalCharacter);
    }
}

void CScanner::ScanLiteral(CToken& token, DomChar quote) {
    size_t start = m_nPosition;
    size_t end = m_sSource.find(quote, start);
    if (end == DomString::npos) throw new CXpathException(CXpathException::NonTerminatedLiteral);
    // A NUL unit reads like the end of the source, so a literal cannot run across one.
    size_t nul = m_sSource.find(DomChar(0), start);
    if (nul < end) throw new CXpathException(CXpathException::NonTerminatedLiteral);
    token.m_sText.assign(m_sSource, start, end - start);
    m_nPosition = end + 1;
    Deliver(token, TokenLiteral);
}

void CScanner::ScanVariable(CToken& token) {
    size_t start = m_nPosition;
    DomChar c = GetChar();
    if (!IsNameStart(c)) throw new CXpathException(CXpathException::InvalidVariableReference);
    CollectName();
    c = GetChar();
    if (c == u':')
        CollectName();
    else
        UngetChar(c);
    token.m_sText.assign(m_sSource, start, m_nPosition - start);
    Deliver(token, TokenVariableReference);
}

// `start` is the first unit of the number: a digit, or the point of ".5".
void CScanner::ScanNumber(CToken& token, size_t start) {
    m_nPosition = start;
    DomChar c;
    do c = GetChar();
    while (c >= u'0' && c <= u'9');
    if (c == u'.') {
        do c = GetChar();
        while (c >= u'0' && c <= u'9');
    }
    UngetChar(c);
    DomStringView text(m_sSource.data() + start, m_nPosition - start);
    if (!CNumber::Parse(text, token.m_number)) token.m_number = CNumber::NaN;
    Deliver(token, TokenNumber);
}

bool CScanner::ScanOperatorName(CToken& token) {
    token.m_nSelector = FindWord(g_apOperatorNames, token.m_sText);
    return token.m_nSelector >= 0;
}

void CScanner::ScanName(CToken& token, size_t start) {
    bool hasColon = false, hasWildcard = false;
    CollectName();
    size_t end = m_nPosition;
    DomChar c = GetChar();
    if (c == u':') {
        DomChar behind = GetChar();
        if (behind == u'*') {
            hasColon = hasWildcard = true;
        } else if (IsNameStart(behind)) {
            CollectName();
            hasColon = true;
        } else {
            UngetChar(behind);
            UngetChar(c);
        }
        if (hasColon) end = m_nPosition;
    } else {
        UngetChar(c);
    }
    token.m_sText.assign(m_sSource, start, end - start);
    if (OperatorExpected()) {
        if (hasColon || !ScanOperatorName(token))
            throw new CXpathException(CXpathException::InvalidOperatorName, token.m_sText);
        return Deliver(token, TokenOperatorName);
    }
    SkipWhitespace();
    c = GetChar();
    if (c == u'(') {
        UngetChar(c);
        if (!hasColon && (token.m_nSelector = FindWord(g_apNodeTypes, token.m_sText)) >= 0)
            return Deliver(token, TokenNodeType);
        if (hasWildcard) throw new CXpathException(CXpathException::InvalidFunctionName, token.m_sText);
        return Deliver(token, TokenFunctionName);
    }
    if (c == u':') {
        DomChar further = GetChar();
        UngetChar(further);
        UngetChar(c);
        if (further == u':') {
            if (hasColon || (token.m_nSelector = FindWord(g_apAxisNames, token.m_sText)) < 0)
                throw new CXpathException(CXpathException::InvalidAxisName, token.m_sText);
            return Deliver(token, TokenAxisName);
        }
        return Deliver(token, TokenNameTest);
    }
    UngetChar(c);
    Deliver(token, TokenNameTest);
}

}  // namespace Xpath
