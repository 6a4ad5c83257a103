// Parsing URI references and resolving them against a base.
#include <gtest/gtest.h>

#include <optional>
#include <random>

#include "uri/Uri.h"

namespace {

std::string Narrow(DomStringView text) { return Core::ToUtf8(text); }

// Parses and returns the failure code, or -1 when the text parses.
int ParseCode(DomStringView text) {
    Uri::CUri uri;
    try {
        uri.Parse(text);
        return -1;
    } catch (Uri::CUriException* e) {
        int code = e->GetCode();
        delete e;
        return code;
    }
}

std::string Describe(const Uri::CUri& uri) {
    DomString part;
    std::string text;
    if (uri.GetScheme(part)) text += "scheme=" + Narrow(part) + " ";
    if (uri.GetAuthority(part)) text += "authority=" + Narrow(part) + " ";
    if (uri.GetOpaquePart(part)) text += "opaque=" + Narrow(part) + " ";
    text += "segments=";
    for (int i = 0; i < uri.GetSegmentCount(); ++i) text += (i ? "|" : "") + Narrow(uri.GetSegment(i));
    if (uri.GetQuery(part)) text += " query=" + Narrow(part);
    if (uri.GetFragment(part)) text += " fragment=" + Narrow(part);
    if (uri.HasRelativeSegment()) text += " relative";
    return text;
}

TEST(UriParse, SplitsReferencesIntoTheirParts) {
    struct SCase {
        const char16_t* pText;
        const char* pParts;
    };
    const SCase cases[] = {
        {u"file:///a/b", "scheme=file authority= segments=a|b"},
        {u"file://h", "scheme=file authority=h segments="},
        {u"file://h/", "scheme=file authority=h segments="},
        {u"file://localhost/a%20b/c;p?q=1#top", "scheme=file authority=localhost segments=a%20b|c;p query=q=1 fragment=top"},
        {u"a:b/c", "scheme=a opaque=b/c segments="},
        {u"a:/b", "scheme=a segments=b"},
        {u"", "segments= relative"},
        {u"#x", "segments= fragment=x relative"},
        {u"a/b:c", "segments=a|b:c relative"},
        {u"../x", "segments=..|x relative"},
        {u"/a//b/", "segments=a||b|"},
        {u"//host", "authority=host segments="},
        {u"?q", "segments= query=q relative"},
    };
    for (const SCase& c : cases) {
        Uri::CUri uri;
        uri.Parse(c.pText);
        EXPECT_TRUE(uri.IsValid());
        // "file://h/" has one empty segment, shown as nothing after "segments=".
        EXPECT_EQ(Describe(uri), c.pParts) << Narrow(c.pText);
    }
    Uri::CUri h;
    h.Parse(u"file://h/");
    EXPECT_EQ(h.GetSegmentCount(), 1);
    h.Parse(u"file://h");
    EXPECT_EQ(h.GetSegmentCount(), 0);
    EXPECT_TRUE(h.IsAbsolute());
}

TEST(UriParse, RejectsMalformedReferencesWithTheirCodes) {
    struct SCase {
        DomString sText;
        int nCode;
    };
    const SCase cases[] = {
        {u"a%2", 3},        {u"a%zz", 3},          {u"a%9F", 3},       {u"a%2f", 3},     {u"%", 3},
        {u"1a:/b", 1},      {u"mailto:joe", 4},    {u"a b", 4},        {u"a\x00E9", 4},  {u"file:///a b", 4},
        {u"a b:/c", 0},     {u"a:/b\x4E2D", 4},    {u"x:#/", 2},       {u"a#b#c", 4},    {u"/a?b c", 4},
        {DomString(u"a\0b", 3), 4},
    };
    for (const SCase& c : cases) EXPECT_EQ(ParseCode(c.sText), c.nCode) << Narrow(c.sText);
    EXPECT_EQ(ParseCode(u"a%20b"), -1);
    EXPECT_EQ(ParseCode(u"a%E8"), -1);
}

TEST(UriException, MessagesComeFromTheTableWithoutTheUri) {
    struct SCase {
        int nCode;
        const char16_t* pText;
    };
    const SCase cases[] = {{0, u"Missing ':'"},
                           {3, u"Invalid escaped syntax"},
                           {5, u"Invalid '..' segment"},
                           {9, u"Unclassified XPath exception"}};
    for (const SCase& c : cases) {
        DomString text;
        Uri::CUriException(c.nCode, u"x:/%s").GetMessage(text);
        EXPECT_EQ(text, c.pText);
    }
}

std::optional<DomString> Resolve(DomStringView base, DomStringView reference, int* code = nullptr) {
    Uri::CUri uri;
    try {
        uri.Parse(base);
        return uri.Resolve(reference);
    } catch (Uri::CUriException* e) {
        if (code) *code = e->GetCode();
        delete e;
        return std::nullopt;
    }
}

TEST(UriResolve, ResolvesReferencesAgainstABase) {
    struct SCase {
        const char16_t* pBase;
        const char16_t* pReference;
        const char16_t* pExpected;
    };
    const SCase cases[] = {
        {u"file:///a/b", u"../x", u"file:///x"},
        {u"file:///a/b?z", u"x?q#f", u"file:///a/x?q#f"},
        {u"file:///x/y", u"a/b/..", u"file:///x/a"},
        {u"file:///x/y", u".", u"file:///x"},
        {u"file:///x/y", u"", u"file:///x/"},
        {u"file:///x/y", u"#f", u"file:///x/#f"},
        {u"file:///x/y", u"http://h/p", u"http://h/p"},
        {u"file:///x/y", u"//host", u"file:///x/y"},
        {u"file:///x/y", u"//host#f", u"file:///x/y"},
        {u"file:///x/y", u"//host/p/../q", u"file://host/p/../q"},
        {u"file:///x/y", u"/a/../b", u"file:///a/../b"},
        {u"file://localhost/d/style.xsl", u"inc/common.xsl", u"file://localhost/d/inc/common.xsl"},
        {u"file:///a/b/c", u"./../../d", u"file:///d"},
        {u"file:///a/b/c", u"%2E%2E/d", u"file:///a/b/%2E%2E/d"},
        {u"file:///a/b/c", u"x/./y/", u"file:///a/b/x/y/"},
        {u"file:///a/b", u"?q", u"file:///a/?q"},
    };
    for (const SCase& c : cases) {
        std::optional<DomString> result = Resolve(c.pBase, c.pReference);
        ASSERT_TRUE(result.has_value()) << Narrow(c.pReference);
        EXPECT_EQ(Narrow(*result), Narrow(c.pExpected)) << Narrow(c.pBase) << " + " << Narrow(c.pReference);
    }
}

TEST(UriResolve, FailsForADotDotAboveTheRootAndForABadReference) {
    int code = -1;
    EXPECT_FALSE(Resolve(u"file:///a", u"../x", &code));
    EXPECT_EQ(code, Uri::CUriException::InvalidDotDotSegment);
    EXPECT_FALSE(Resolve(u"file:///a/b", u"a%zz", &code));
    EXPECT_EQ(code, Uri::CUriException::InvalidEscape);

    Uri::CUri base;
    base.Parse(u"file:///a");
    try {
        base.Resolve(u"../x");
        FAIL();
    } catch (Uri::CUriException* e) {
        EXPECT_EQ(e->GetUri(), u"file:///a");  // the base is named, not the reference
        delete e;
    }
}

TEST(UriParse, LongHostileInputParsesWithoutRecursion) {
    DomString text(200000, u'a');
    for (size_t i = 0; i < text.size(); i += 2) text[i] = u'/';
    Uri::CUri uri;
    uri.Parse(text);
    EXPECT_EQ(uri.GetSegmentCount(), 100000);
    DomString dots = u"x";
    for (int i = 0; i < 50000; ++i) dots += u"/..";
    EXPECT_FALSE(Resolve(u"file:///a/b", dots));
}

// Random references built from the characters that steer the parser either parse or fail with a
// code of the table; nothing else may happen.
TEST(UriParse, RandomReferencesParseOrFailWithACode) {
    const DomString alphabet = u"ab:/?#%2Ef.;@9 \x00E9";
    std::mt19937 random(7);
    Uri::CUri base;
    base.Parse(u"file://localhost/d/e/f.xml");
    for (int round = 0; round < 20000; ++round) {
        DomString text(random() % 12, u'a');
        for (DomChar& c : text) c = alphabet[random() % alphabet.size()];
        int code = -1;
        std::optional<DomString> result = Resolve(u"file://localhost/d/e/f.xml", text, &code);
        EXPECT_TRUE(result || (code >= 0 && code <= 5)) << Narrow(text);
    }
}

}  // namespace
