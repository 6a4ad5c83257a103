// The backtracking machine over a compiled program. It runs a loop over the program with one
// switch per node and never recurses; failure pops the next node entry from its own word stack.
#pragma once
#include "core/DomString.h"
#include "core/Exception.h"
#include "regexp/private/FirstUnits.h"
#include "regexp/private/Program.h"
#include "regexp/private/WordBuffer.h"

#include <cstdint>
#include <vector>

namespace RegExpPrivate {

// Raised when the backtrack stack cannot grow any further.
class CMatcherException : public Core::IException {
public:
    enum ECode { StackExhausted = 0 };
    explicit CMatcherException(int code) : m_nCode(code) {}
    void GetMessage(DomString& text) const override;

private:
    int m_nCode;
};

class CMatcher {
public:
    // `program` stays owned by the caller; its link words are written while matching.
    CMatcher(Word* program, bool ignoreCase, bool multiline);

    // One attempt anchored at `index` of the text. The stack and the capture array are kept
    // for the next attempt.
    bool MatchAt(const DomChar* text, int length, int index);

    // False only if an attempt at `index` cannot match: a scan skips such positions.
    bool MayMatchAt(const DomChar* text, int length, int index) const {
        return m_firstUnits.MayMatchAt(text, length, index);
    }

    // Spans after a successful attempt: 0 is the whole match, n capture n; an unset span starts at -1.
    int GetSpanCount() const { return static_cast<int>(m_aSpans.size() / 2); }
    int GetSpanStart(int n) const { return m_aSpans[2 * n]; }
    int GetSpanLength(int n) const { return m_aSpans[2 * n + 1]; }

private:
    bool Run(int start);
    void Grow(std::int64_t needed);
    void PushSpans(Word* stack, Word& sp, Word first, Word count);
    void PopSpans(const Word* stack, Word& sp, Word first, Word count);
    void ResetSpans(Word first, Word count);
    bool ClassContains(const Word* node, Word unit) const;
    bool MatchesOne(const Word* node, Word unit) const;
    bool BackReference(Word number, int& position) const;

    const DomChar* m_pText = nullptr;
    int m_nLength = 0;
    bool m_bIgnoreCase;
    bool m_bMultiline;
    Word* m_pProgram;
    CFirstUnits m_firstUnits;
    int m_nPosition = 0;
    std::vector<std::int32_t> m_aSpans;
    CWordBuffer m_stack;
};

}  // namespace RegExpPrivate
