// Parsed URI references (the generic syntax, with the parser's own limits) and resolution of a
// reference against a base. Text only: nothing is opened here.
#pragma once
#include "core/Array.h"
#include "core/Exception.h"

namespace Uri {

class CUriException : public Core::IException {
public:
    enum : int {
        MissingColon = 0,
        InvalidScheme = 1,
        InvalidOpaquePart = 2,
        InvalidEscape = 3,
        TrailingCharacters = 4,
        InvalidDotDotSegment = 5,
    };
    CUriException(int code, DomString uri) : m_nCode(code), m_sUri(std::move(uri)) {}
    void GetMessage(DomString& text) const override;
    int GetCode() const { return m_nCode; }
    const DomString& GetUri() const { return m_sUri; }

private:
    int m_nCode;
    DomString m_sUri;
};

// A part of the URI text: start and length in code units.
struct SRange {
    int nStart = 0;
    int nLength = 0;
};

class CUri {
public:
    // Copies and parses the text; throws CUriException, leaving the object unusable.
    void Parse(DomStringView text);

    bool GetScheme(DomString& text) const { return GetPart(m_bHasScheme, m_rScheme, text); }
    bool GetAuthority(DomString& text) const { return GetPart(m_bHasAuthority, m_rAuthority, text); }
    bool GetQuery(DomString& text) const { return GetPart(m_bHasQuery, m_rQuery, text); }
    bool GetFragment(DomString& text) const { return GetPart(m_bHasFragment, m_rFragment, text); }
    bool GetOpaquePart(DomString& text) const { return GetPart(m_bHasOpaquePart, m_rOpaquePart, text); }
    bool IsValid() const { return m_bValid; }
    bool IsAbsolute() const { return m_bAbsolute; }
    bool HasRelativeSegment() const { return m_bHasRelativeSegment; }
    int GetSegmentCount() const { return m_aSegments.GetSize(); }
    DomString GetSegment(int index) const;
    const DomString& GetText() const { return m_sUri; }

    // The reference resolved against this URI; throws CUriException for a bad reference or a ".."
    // that climbs above the root.
    DomString Resolve(DomStringView reference) const;

private:
    bool GetPart(bool present, const SRange& range, DomString& text) const;
    DomStringView View(const SRange& range) const;
    void Reset();
    [[noreturn]] void Fail(int code) const;
    bool At(DomChar c) const { return m_nPos < m_nLength && m_sUri[m_nPos] == c; }
    bool Take(DomChar c);
    void ParseAbsolute();
    void ParseRelative();
    void ParseHierarchy();
    SRange TakeRun(const char* extra, unsigned char classes);
    void ParseAuthority();
    void ParsePathSegments();
    void ParseRelativeSegment();
    void TakeEscape();

    bool m_bValid = false;
    DomString m_sUri;
    int m_nLength = 0;
    int m_nPos = 0;
    bool m_bAbsolute = false;
    bool m_bHasScheme = false;
    bool m_bHasAuthority = false;
    bool m_bHasRelativeSegment = false;
    bool m_bHasQuery = false;
    bool m_bHasOpaquePart = false;
    bool m_bHasFragment = false;
    SRange m_rScheme;
    SRange m_rAuthority;
    TArray<SRange> m_aSegments;
    SRange m_rQuery;
    SRange m_rOpaquePart;
    SRange m_rFragment;
};

}  // namespace Uri
