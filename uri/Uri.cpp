// A recursive-descent reading of URI references, without inner structure of the authority, and
// the resolution of references with "." and ".." removal on merged paths.
#include "uri/Uri.h"

#include <cstring>

#include "uri/private/CharClass.h"

namespace Uri {

using namespace UriPrivate;

static const Core::SMessage kMessages[] = {
    {CUriException::MissingColon, u"Missing ':'"},
    {CUriException::InvalidScheme, u"Invalid scheme syntax"},
    {CUriException::InvalidOpaquePart, u"Invalid opaque part syntax"},
    {CUriException::InvalidEscape, u"Invalid escaped syntax"},
    {CUriException::TrailingCharacters, u"Invalid trailing characters"},
    {CUriException::InvalidDotDotSegment, u"Invalid '..' segment"},
    {-1, u"Unclassified XPath exception"},
};

void CUriException::GetMessage(DomString& text) const {
    Core::FormatTableMessage(text, kMessages, m_nCode, m_sUri, DomString());
}

static const unsigned char kUriChar = Alpha | Digit | Reserved | Mark;
static const unsigned char kPlainChar = Alpha | Digit | Mark;

DomStringView CUri::View(const SRange& range) const {
    return DomStringView(m_sUri).substr(static_cast<size_t>(range.nStart), static_cast<size_t>(range.nLength));
}

bool CUri::GetPart(bool present, const SRange& range, DomString& text) const {
    if (present) {
        text = View(range);
    } else {
        text.clear();
    }
    return present;
}

DomString CUri::GetSegment(int index) const { return DomString(View(m_aSegments[index])); }

void CUri::Reset() {
    m_bValid = m_bAbsolute = m_bHasScheme = m_bHasAuthority = m_bHasRelativeSegment = false;
    m_bHasQuery = m_bHasOpaquePart = m_bHasFragment = false;
    m_rScheme = m_rAuthority = m_rQuery = m_rOpaquePart = m_rFragment = SRange();
    m_aSegments = TArray<SRange>();
    m_nPos = 0;
}

void CUri::Fail(int code) const { throw new CUriException(code, m_sUri); }

bool CUri::Take(DomChar c) {
    if (!At(c)) return false;
    ++m_nPos;
    return true;
}

void CUri::TakeEscape() {
    if (m_nLength - m_nPos < 3) Fail(CUriException::InvalidEscape);
    if (!IsInClass(m_sUri[m_nPos + 1], Hex) || !IsInClass(m_sUri[m_nPos + 2], Hex)) {
        Fail(CUriException::InvalidEscape);
    }
    m_nPos += 3;
}

// Takes characters of the given classes, of `extra`, and escapes, as long as they last.
SRange CUri::TakeRun(const char* extra, unsigned char classes) {
    SRange range{m_nPos, 0};
    while (m_nPos < m_nLength) {
        DomChar c = m_sUri[m_nPos];
        if (c == u'%') {
            TakeEscape();
        } else if (IsInClass(c, classes) || (c < 0x80 && c != 0 && std::strchr(extra, static_cast<char>(c)))) {
            ++m_nPos;
        } else {
            break;
        }
    }
    range.nLength = m_nPos - range.nStart;
    return range;
}

void CUri::ParseAuthority() {
    m_bHasAuthority = true;
    m_rAuthority = TakeRun("$,;:@&=+", kPlainChar);
}

void CUri::ParsePathSegments() {
    do {
        m_aSegments.Add(TakeRun(":@&=+$,;", kPlainChar));
    } while (Take(u'/'));
}

void CUri::ParseRelativeSegment() {
    m_bHasRelativeSegment = true;
    m_aSegments.Add(TakeRun(";@&=+$,", kPlainChar));
}

void CUri::Parse(DomStringView text) {
    Reset();
    m_sUri = text;
    m_nLength = static_cast<int>(m_sUri.size());
    size_t colon = m_sUri.find(u':');
    size_t slash = m_sUri.find(u'/');
    // A ":" makes the reference absolute only with a "/" somewhere behind it.
    bool absolute = colon != DomString::npos && slash != DomString::npos && colon < slash;
    if (absolute) {
        ParseAbsolute();
    } else {
        ParseRelative();
    }
    if (!m_bHasOpaquePart && Take(u'?')) {
        m_bHasQuery = true;
        m_rQuery = TakeRun("", kUriChar);
    }
    if (Take(u'#')) {
        m_bHasFragment = true;
        m_rFragment = TakeRun("", kUriChar);
    }
    if (m_nPos < m_nLength) Fail(CUriException::TrailingCharacters);
    m_bValid = true;
}

void CUri::ParseAbsolute() {
    m_bAbsolute = m_bHasScheme = true;
    if (!IsInClass(m_sUri[0], Alpha)) Fail(CUriException::InvalidScheme);
    m_rScheme = TakeRun("+-.", Alpha | Digit);
    if (!Take(u':')) Fail(CUriException::MissingColon);
    if (!At(u'/')) {
        m_bHasOpaquePart = true;
        m_rOpaquePart = TakeRun("", kUriChar);
        if (m_rOpaquePart.nLength == 0) Fail(CUriException::InvalidOpaquePart);
        return;
    }
    ParseHierarchy();
}

void CUri::ParseRelative() {
    if (!At(u'/')) {
        ParseRelativeSegment();
        if (Take(u'/')) ParsePathSegments();
    } else {
        ParseHierarchy();
    }
}

// From a "/": an authority behind "//" with an optional path, or a path.
void CUri::ParseHierarchy() {
    Take(u'/');
    if (Take(u'/')) {
        ParseAuthority();
        if (Take(u'/')) ParsePathSegments();
    } else {
        ParsePathSegments();
    }
}

static bool IsSegment(DomStringView segment, const char16_t* text) { return segment == text; }

DomString CUri::Resolve(DomStringView text) const {
    CUri reference;
    reference.Parse(text);
    if (reference.m_bAbsolute) return reference.m_sUri;
    bool hasAuthority = reference.m_bHasAuthority;
    int referenceSegments = reference.GetSegmentCount();
    if (hasAuthority && referenceSegments == 0 && !reference.m_bHasQuery) return m_sUri;

    TArray<DomStringView> path;
    bool merge = !hasAuthority && reference.m_bHasRelativeSegment;
    if (merge) {
        for (int i = 0; i + 1 < GetSegmentCount(); ++i) path.Add(View(m_aSegments[i]));
    }
    for (int i = 0; i < referenceSegments; ++i) path.Add(reference.View(reference.m_aSegments[i]));
    if (merge) {
        int index = 0;
        while (index < path.GetSize()) {
            if (IsSegment(path[index], u".")) {
                path.RemoveAt(index);
            } else if (!IsSegment(path[index], u"..")) {
                ++index;
            } else if (index == 0) {
                Fail(CUriException::InvalidDotDotSegment);
            } else if (!IsSegment(path[index - 1], u"..")) {
                path.RemoveAt(index - 1, 2);
                --index;
            } else {
                ++index;
            }
        }
    }

    DomString result;
    if (m_bHasScheme) {
        result += View(m_rScheme);
        result += u':';
    }
    const CUri& authoritySource = hasAuthority ? reference : *this;
    if (authoritySource.m_bHasAuthority) {
        result += u"//";
        result += authoritySource.View(authoritySource.m_rAuthority);
    }
    for (const DomStringView& segment : path) {
        result += u'/';
        result += segment;
    }
    if (reference.m_bHasQuery) {
        result += u'?';
        result += reference.View(reference.m_rQuery);
    }
    if (reference.m_bHasFragment) {
        result += u'#';
        result += reference.View(reference.m_rFragment);
    }
    return result;
}

}  // namespace Uri
