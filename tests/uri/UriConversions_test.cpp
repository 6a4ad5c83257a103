// File names to URIs and back, and escaping.
#include <gtest/gtest.h>

#include <unistd.h>

#include "core/FileStream.h"
#include "uri/UriConversions.h"

namespace {

std::string Narrow(DomStringView text) { return Core::ToUtf8(text); }

TEST(UriEscape, EscapesBytesOutsideTheUriClassesInUpperCaseHex) {
    struct SCase {
        const char16_t* pText;
        const char16_t* pEscaped;
    };
    const SCase cases[] = {
        {u"a b", u"a%20b"},
        {u"100%", u"100%25"},
        {u"file://localhost/a;b?c=d&e+f$,", u"file://localhost/a;b?c=d&e+f$,"},
        {u"-_.!~*'()", u"-_.!~*'()"},
        {u"\x00E9", u"%C3%A9"},
        {u"\x4E2D", u"%E4%B8%AD"},
        {u"<#>\\", u"%3C%23%3E%5C"},
    };
    for (const SCase& c : cases) {
        DomString escaped;
        ASSERT_TRUE(Uri::Escape(c.pText, escaped));
        EXPECT_EQ(Narrow(escaped), Narrow(c.pEscaped));
    }
}

TEST(UriUnescape, TakesFullHexAndRefusesBadEscapesAndWideUnits) {
    DomString text;
    EXPECT_TRUE(Uri::Unescape(u"a%20b%2f%2F%41", text));
    EXPECT_EQ(text, u"a b//A");
    EXPECT_TRUE(Uri::Unescape(u"%E4%B8%AD", text));
    EXPECT_EQ(text, u"\x4E2D");
    EXPECT_TRUE(Uri::Unescape(u"%C3%A9", text));
    EXPECT_EQ(text, u"i");  // the decoder's lossy bit merge, kept on purpose
    const char16_t* refused[] = {u"%", u"a%2", u"%zz", u"%E4%B8", u"\x00E9"};
    for (const char16_t* escaped : refused) EXPECT_FALSE(Uri::Unescape(escaped, text)) << Narrow(escaped);
}

TEST(UriToFileName, AcceptsExactlyTheTwoLocalPrefixes) {
    struct SCase {
        const char16_t* pUri;
        const char16_t* pName;  // null: refused
    };
    const SCase cases[] = {
        {u"file://localhost/a/b%20c.xml", u"/a/b c.xml"},
        {u"file:///a/b%20c.xml", u"/a/b c.xml"},
        {u"file:///c:/x", u"/c:/x"},
        {u"file:///", u"/"},
        {u"file://other/x", nullptr},
        {u"FILE:///c/x", nullptr},
        {u"file:/x", nullptr},
        {u"http://localhost/x", nullptr},
        {u"file:///a%zz", nullptr},
    };
    for (const SCase& c : cases) {
        DomString name = u"left over";
        bool ok = Uri::UriToFileName(c.pUri, name);
        EXPECT_EQ(ok, c.pName != nullptr) << Narrow(c.pUri);
        EXPECT_EQ(Narrow(name), c.pName ? Narrow(c.pName) : "");
    }
}

TEST(FileNameToUri, MakesNamesAbsoluteLexically) {
    char buffer[4096];
    ASSERT_NE(getcwd(buffer, sizeof buffer), nullptr);
    DomString cwd = Core::FromPlatformName(buffer);
    DomString escapedCwd;
    ASSERT_TRUE(Uri::Escape(cwd == u"/" ? DomString() : cwd, escapedCwd));
    struct SCase {
        const char16_t* pName;
        DomString sUri;
    };
    const SCase cases[] = {
        {u"/a/b c.xml", u"file://localhost/a/b%20c.xml"},
        {u"/a/./b/../c.xml", u"file://localhost/a/c.xml"},
        {u"//a///b", u"file://localhost/a/b"},
        {u"/../x", u"file://localhost/x"},
        {u"/dir/", u"file://localhost/dir/"},
        {u"/", u"file://localhost/"},
        {u"/c:/x", u"file://localhost/c:/x"},
        {u"out.xml", u"file://localhost" + escapedCwd + u"/out.xml"},
        {u"./sub/../doc.xml", u"file://localhost" + escapedCwd + u"/doc.xml"},
    };
    for (const SCase& c : cases) {
        DomString uri;
        ASSERT_TRUE(Uri::FileNameToUri(c.pName, uri)) << Narrow(c.pName);
        EXPECT_EQ(Narrow(uri), Narrow(c.sUri));
    }
    DomString uri;
    EXPECT_FALSE(Uri::FileNameToUri(u"", uri));
    EXPECT_FALSE(Uri::FileNameToUri(DomString(u"a\0b", 3), uri));
}

// Non-ASCII names come back whole when their UTF-8 bits do not meet in the decoder's merge.
TEST(FileNameToUri, RoundTripsThroughUriToFileName) {
    const char16_t* names[] = {
        u"/data/a.xml",        u"/data/with space/b c.xml", u"/data/100%/x.xml", u"/data/#hash?&=.xml",
        u"/\x4E2D/\x0416\x0416.xml", u"/data/a:b.xml",    u"/data/back\\slash",
    };
    for (const char16_t* name : names) {
        DomString uri;
        DomString back;
        ASSERT_TRUE(Uri::FileNameToUri(name, uri)) << Narrow(name);
        ASSERT_TRUE(Uri::UriToFileName(uri, back)) << Narrow(uri);
        EXPECT_EQ(Narrow(back), Narrow(name));
    }
}

}  // namespace
