// CRegExp: compiles once, and runs one matcher whose stack is reused by every attempt.
#include "regexp/RegExp.h"

#include "regexp/private/Compiler.h"
#include "regexp/private/Matcher.h"

#include <cstdlib>

namespace EcmaScript {

void CMatchResult::Assign(const RegExpPrivate::CMatcher& matcher) {
    int count = matcher.GetSpanCount();
    m_aSpans.resize(2 * static_cast<size_t>(count));
    for (int n = 0; n < count; ++n) {
        m_aSpans[2 * n] = matcher.GetSpanStart(n);
        m_aSpans[2 * n + 1] = matcher.GetSpanLength(n);
    }
}

CRegExp::CRegExp(DomStringView source, bool global, bool ignoreCase, bool multiline)
    : m_sSource(source), m_bGlobal(global), m_bIgnoreCase(ignoreCase), m_bMultiline(multiline),
      m_pProgram(RegExpPrivate::Compile(m_sSource.data(), static_cast<int>(m_sSource.size()), ignoreCase)) {}

CRegExp::~CRegExp() { std::free(m_pProgram); }

int CRegExp::GetCaptureCount() const { return static_cast<int>(m_pProgram[RegExpPrivate::Head::CaptureCount]); }

RegExpPrivate::CMatcher& CRegExp::GetMatcher() {
    if (!m_pMatcher) m_pMatcher = std::make_unique<RegExpPrivate::CMatcher>(m_pProgram, m_bIgnoreCase, m_bMultiline);
    return *m_pMatcher;
}

bool CRegExp::MatchAt(DomStringView text, int index, CMatchResult& result) {
    RegExpPrivate::CMatcher& matcher = GetMatcher();
    if (!matcher.MatchAt(text.data(), static_cast<int>(text.size()), index)) return false;
    result.Assign(matcher);
    return true;
}

int CRegExp::Search(DomStringView text) {
    RegExpPrivate::CMatcher& matcher = GetMatcher();
    int length = static_cast<int>(text.size());
    for (int index = 0; index <= length; ++index)
        if (matcher.MayMatchAt(text.data(), length, index) && matcher.MatchAt(text.data(), length, index)) return index;
    return -1;
}

bool CRegExp::Scan(DomStringView text, int from, CMatchResult& result) {
    RegExpPrivate::CMatcher& matcher = GetMatcher();
    int length = static_cast<int>(text.size());
    for (int index = from < 0 ? 0 : from; index <= length; ++index) {
        if (matcher.MayMatchAt(text.data(), length, index) && matcher.MatchAt(text.data(), length, index)) {
            result.Assign(matcher);
            return true;
        }
    }
    return false;
}

bool CRegExp::Next(DomStringView text, CMatchResult& result) {
    // Indexes below 0 never match, so a negative last index amounts to starting at 0.
    int from = m_bGlobal ? m_nLastIndex : 0;
    if (!Scan(text, from, result)) {
        m_nLastIndex = 0;
        return false;
    }
    if (m_bGlobal) m_nLastIndex = result.GetEnd(0);
    return true;
}

}  // namespace EcmaScript
