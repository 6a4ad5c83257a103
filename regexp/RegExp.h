// A compiled regular expression with its flags and the last index of stepped matching.
// Patterns follow the RegExp language of the script; ignoreCase folds ASCII letters only.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace RegExpPrivate {
class CMatcher;
}

namespace EcmaScript {

// The spans of one match: span 0 is the whole match, span n capture n. An unset capture
// starts at -1.
class CMatchResult {
public:
    int GetCount() const { return static_cast<int>(m_aSpans.size() / 2); }
    int GetStart(int n) const { return m_aSpans[2 * n]; }
    int GetLength(int n) const { return m_aSpans[2 * n + 1]; }
    int GetEnd(int n) const { return GetStart(n) + GetLength(n); }
    bool IsSet(int n) const { return GetStart(n) >= 0; }
    // The text of span n, empty if unset.
    DomStringView GetText(DomStringView text, int n) const {
        return IsSet(n) ? text.substr(static_cast<size_t>(GetStart(n)), static_cast<size_t>(GetLength(n)))
                        : DomStringView();
    }
    void Assign(const RegExpPrivate::CMatcher& matcher);
    // A result of the whole match alone, for a match found without a pattern.
    static CMatchResult Single(int start, int length) {
        CMatchResult result;
        result.m_aSpans = {start, length};
        return result;
    }

private:
    std::vector<int> m_aSpans;
};

class CRegExp : public CRefObject {
public:
    // Copies the source and compiles it; throws RegExpPrivate::CParserException by pointer
    // (a Core::IException) for a malformed pattern.
    CRegExp(DomStringView source, bool global, bool ignoreCase, bool multiline);
    ~CRegExp() override;

    const DomString& GetSource() const { return m_sSource; }
    bool GetGlobal() const { return m_bGlobal; }
    bool GetIgnoreCase() const { return m_bIgnoreCase; }
    bool GetMultiline() const { return m_bMultiline; }
    int GetCaptureCount() const;
    std::int32_t GetLastIndex() const { return m_nLastIndex; }
    void SetLastIndex(std::int32_t index) { m_nLastIndex = index; }

    // One attempt anchored at `index`; an index below 0 or beyond the text gives false.
    bool MatchAt(DomStringView text, int index, CMatchResult& result);
    // The first index from 0 to the length of the text at which an attempt matches, or -1.
    int Search(DomStringView text);
    // Tries each index from `from` up to the length; the first match fills `result`.
    bool Scan(DomStringView text, int from, CMatchResult& result);
    // Steps through matches: starts at 0, or at the last index if global; success stores the end
    // of the match as the last index if global, failure resets it to 0.
    bool Next(DomStringView text, CMatchResult& result);

private:
    RegExpPrivate::CMatcher& GetMatcher();

    DomString m_sSource;
    bool m_bGlobal;
    bool m_bIgnoreCase;
    bool m_bMultiline;
    std::uint32_t* m_pProgram;
    std::int32_t m_nLastIndex = 0;
    // Kept between calls so that the backtrack stack is allocated once.
    std::unique_ptr<RegExpPrivate::CMatcher> m_pMatcher;
};

}  // namespace EcmaScript
