// The scanning of attribute value templates and of whitespace-separated lists in the stylesheet.
#include <gtest/gtest.h>

#include <string>

#include "xslt/private/Avt.h"
#include "xslt/private/CompileContext.h"
#include "xslt/private/QName.h"

namespace {

// Literal pieces as "L:text", expression pieces as "E:text", joined by "|".
std::string Pieces(DomStringView text) {
    TArray<XsltPrivate::CAvt::SPiece> pieces;
    XsltPrivate::CAvt::Scan(text, pieces);
    std::string joined;
    for (const XsltPrivate::CAvt::SPiece& piece : pieces) {
        if (!joined.empty()) joined += "|";
        joined += (piece.bExpression ? "E:" : "L:") + Core::ToUtf8(piece.sText);
    }
    return joined;
}

TEST(AvtScanner, SplitsLiteralsAndExpressionsWithoutEscapes) {
    struct SCase {
        const char16_t* pText;
        const char* pPieces;
    };
    const SCase cases[] = {
        {u"", ""},
        {u"plain", "L:plain"},
        {u"{@a}", "E:@a"},
        {u"a{b}c{d}", "L:a|E:b|L:c|E:d"},
        // "}" outside an expression and doubled braces are ordinary text or expression text.
        {u"x}y", "L:x}y"},
        {u"x}}y", "L:x}}y"},
        {u"{{x}}", "E:{x|L:}"},
        // A closing brace inside quotes does not end the expression.
        {u"{'}'}", "E:'}'"},
        {u"{\"}\"}z", "E:\"}\"|L:z"},
        {u"{concat('{', \"'\")}", "E:concat('{', \"'\")"},
        // An unterminated expression vanishes with the rest of the text.
        {u"a{b", "L:a"},
        {u"a{'}", "L:a"},
        {u"{}", "E:"},
    };
    for (const SCase& c : cases) EXPECT_EQ(Pieces(c.pText), c.pPieces) << Core::ToUtf8(c.pText);
}

TEST(StylesheetLists, SplitAtSpaceTabReturnAndFormFeedButNotLineFeed) {
    TArray<DomString> tokens;
    XsltPrivate::CCompileContext::SplitList(u" a\tb\rc\fd  e\nf ", tokens);
    ASSERT_EQ(tokens.GetSize(), 5);
    EXPECT_EQ(tokens[0], u"a");
    EXPECT_EQ(tokens[3], u"d");
    EXPECT_EQ(tokens[4], u"e\nf");
}

TEST(StylesheetNames, QualifiedNamesAreOneOrTwoNamesJoinedByOneColon) {
    struct SCase {
        const char16_t* pText;
        bool bQName;
    };
    const SCase cases[] = {
        {u"a", true},      {u"p:a", true},   {u"_x.y-z", true}, {u"\u00e9t\u00e9", true},
        {u"", false},      {u"1a", false},   {u":a", false},    {u"a:", false},
        {u"a:b:c", false}, {u"a b", false},  {u"-a", false},    {u"p:1", false},
    };
    for (const SCase& c : cases) EXPECT_EQ(XsltPrivate::IsQName(c.pText), c.bQName) << Core::ToUtf8(c.pText);
}

}  // namespace
