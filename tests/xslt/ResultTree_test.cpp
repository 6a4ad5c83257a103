// The result tree as a writer sees it: completed start tags, fixed namespaces, collected
// attribute text and the refusals of misplaced nodes.
#include <gtest/gtest.h>

#include "RecordingResultHandler.h"
#include "xslt/private/EventBuffer.h"
#include "xslt/private/OutputException.h"
#include "xslt/private/ResultTree.h"

using XsltPrivate::COutputException;
using XsltPrivate::CResultTree;

namespace {

const DomChar XmlNs[] = u"http://www.w3.org/XML/1998/namespace";
const DomChar XsltNs[] = u"http://www.w3.org/1999/XSL/Transform";

class ResultTreeTest : public ::testing::Test {
public:
    ResultTreeTest() : m_pHandler(new XsltTest::CRecordingResultHandler), m_pTree(new CResultTree(m_pHandler)) {}

    void Attribute(DomStringView name, DomStringView uri, DomStringView value) {
        m_pTree->StartAttribute(name, uri);
        Text(value);
        m_pTree->EndAttribute();
    }
    void Namespace(DomStringView prefix, DomStringView uri) {
        m_pTree->StartNamespace(prefix);
        Text(uri);
        m_pTree->EndNamespace();
    }
    void Text(DomStringView text) { m_pTree->Characters(text.data(), static_cast<int>(text.size()), false); }
    const std::string& Events() const { return m_pHandler->GetEvents(); }

    // Runs `action` and returns the text of the output exception it throws.
    template <class F>
    std::string FailureOf(F action) {
        try {
            action();
        } catch (COutputException* e) {
            DomString text;
            e->GetMessage(text);
            delete e;
            return Core::ToUtf8(text);
        }
        return "no failure";
    }

    TRefPtr<XsltTest::CRecordingResultHandler> m_pHandler;
    TRefPtr<CResultTree> m_pTree;
};

TEST_F(ResultTreeTest, DeclaresLateNamespacesBeforeAttributes) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"x:a", u"urn:u");
    Attribute(u"b", u"", u"1");
    Namespace(u"p", u"urn:u");
    Text(u"t");
    m_pTree->EndElement();
    m_pTree->EndDocument();
    EXPECT_EQ(Events(), "[doc|<p:a|xmlns:p=urn:u|b=1|t|</p:a>|doc]");
}

TEST_F(ResultTreeTest, BindsGeneratedPrefixForUnboundAttributeNamespace) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"p:a", u"urn:u");
    Namespace(u"p", u"urn:u");
    Attribute(u"q:b", u"urn:v", u"1");
    m_pTree->EndElement();
    EXPECT_EQ(Events(), "[doc|<p:a|xmlns:p=urn:u|xmlns:__1__=urn:v|__1__:b=1|</p:a>");
}

// A child's counter continues from its parent's value when it starts; siblings both start
// there, so each may generate the same prefix for its own URI.
TEST_F(ResultTreeTest, GeneratedPrefixCounterContinuesFromParent) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"a", u"urn:u");
    Attribute(u"b", u"urn:v", u"1");
    m_pTree->StartElement(u"c", u"urn:w");
    m_pTree->EndElement();
    m_pTree->StartElement(u"d", u"urn:x");
    m_pTree->EndElement();
    m_pTree->StartElement(u"e", u"urn:v");
    m_pTree->EndElement();
    m_pTree->EndElement();
    EXPECT_EQ(Events(),
              "[doc|<__2__:a|xmlns:__1__=urn:v|xmlns:__2__=urn:u|__1__:b=1"
              "|<__3__:c|xmlns:__3__=urn:w|</__3__:c>"
              "|<__3__:d|xmlns:__3__=urn:x|</__3__:d>"
              "|<__1__:e|</__1__:e>|</__2__:a>");
}

// Past a few entries the lookups go through hash indexes; they must agree with the scans.
TEST_F(ResultTreeTest, ManyBindingsAndAttributesKeepTheirRules) {
    const int count = 40;
    auto numbered = [](const char16_t* stem, int i) { return stem + Core::Ascii(std::to_string(i)); };
    m_pTree->StartDocument();
    m_pTree->StartElement(u"e", u"urn:0");
    std::string expected = "[doc|<p0:e";
    std::string attributes;
    for (int i = 0; i < count; ++i) {
        Namespace(numbered(u"p", i), numbered(u"urn:", i));
        expected += "|xmlns:p" + std::to_string(i) + "=urn:" + std::to_string(i);
    }
    for (int i = 0; i < count; ++i) {
        Attribute(numbered(u"a", i), numbered(u"urn:", i), u"1");
        attributes += "|p" + std::to_string(i) + ":a" + std::to_string(i) + "=" + (i == 30 ? "2" : "1");
    }
    Attribute(u"a30", u"urn:30", u"2");
    m_pTree->StartElement(u"c", u"urn:7");
    Namespace(u"p3", u"urn:other");
    Attribute(u"b", u"urn:3", u"3");
    m_pTree->EndElement();
    m_pTree->EndElement();
    expected += attributes + "|<p7:c|xmlns:p3=urn:other|xmlns:__1__=urn:3|__1__:b=3|</p7:c>|</p0:e>";
    EXPECT_EQ(Events(), expected);
}

TEST_F(ResultTreeTest, RepeatedAttributeKeepsFirstPlaceAndLastValue) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"a", u"");
    Attribute(u"x", u"", u"1");
    Attribute(u"y", u"", u"2");
    Attribute(u"x", u"", u"3");
    m_pTree->EndElement();
    EXPECT_EQ(Events(), "[doc|<a|x=3|y=2|</a>");
}

TEST_F(ResultTreeTest, NamespaceAlreadyInForceIsNotDeclaredAgain) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"a", u"urn:u");
    Namespace(u"p", u"urn:u");
    m_pTree->StartElement(u"b", u"urn:u");
    Namespace(u"p", u"urn:u");
    Namespace(u"xml", XmlNs);
    m_pTree->EndElement();
    m_pTree->StartElement(u"c", u"urn:u");
    Namespace(u"p", u"urn:other");
    m_pTree->EndElement();
    m_pTree->EndElement();
    EXPECT_EQ(Events(),
              "[doc|<p:a|xmlns:p=urn:u|<p:b|</p:b>|<__1__:c|xmlns:p=urn:other|xmlns:__1__=urn:u|</__1__:c>|</p:a>");
}

TEST_F(ResultTreeTest, XmlSpacePreserveReachesChildrenUntilReset) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"a", u"");
    Attribute(u"xml:space", XmlNs, u"preserve");
    m_pTree->StartElement(u"b", u"");
    m_pTree->EndElement();
    m_pTree->StartElement(u"c", u"");
    Attribute(u"xml:space", XmlNs, u"default");
    m_pTree->EndElement();
    m_pTree->EndElement();
    m_pTree->StartElement(u"d", u"");
    m_pTree->EndElement();
    EXPECT_EQ(Events(), "[doc|<a preserve|xml:space=preserve|<b preserve|</b>|<c|xml:space=default|</c>|</a>|<d|</d>");
}

TEST_F(ResultTreeTest, XsltTextElementPreservesItsText) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"xsl:text", XsltNs);
    m_pTree->EndElement();
    EXPECT_EQ(Events(), "[doc|<__1__:text preserve|xmlns:__1__=http://www.w3.org/1999/XSL/Transform|</__1__:text>");
}

TEST_F(ResultTreeTest, CommentAndProcessingInstructionCloseTheStartTag) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"a", u"");
    m_pTree->StartComment();
    Text(u"one ");
    Text(u"two");
    m_pTree->EndComment();
    m_pTree->ProcessingInstruction(u"pi", u"data");
    m_pTree->Characters(u"<&", 2, true);
    m_pTree->EndElement();
    EXPECT_EQ(Events(), "[doc|<a|<!--one two-->|<?pi data?>|!<&|</a>");
}

TEST_F(ResultTreeTest, NoNamespaceElementUnderBoundDefaultNamespaceFails) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"a", u"urn:u");
    Namespace(u"", u"urn:u");
    m_pTree->StartElement(u"b", u"");
    EXPECT_EQ(FailureOf([&] { m_pTree->EndElement(); }), "Default namespace not allowed");
    EXPECT_EQ(Events(), "[doc|<a|xmlns=urn:u");
}

TEST_F(ResultTreeTest, MisplacedNodesFailWithTheirTexts) {
    struct SCase {
        const char* sWhat;
        void (*pSetUp)(ResultTreeTest&);
        void (*pAction)(ResultTreeTest&);
        const char* sMessage;
    };
    const SCase cases[] = {
        {"attribute after text",
         [](ResultTreeTest& t) {
             t.m_pTree->StartElement(u"e", u"");
             t.Text(u"x");
         },
         [](ResultTreeTest& t) { t.m_pTree->StartAttribute(u"a", u""); }, "Misplaced attribute: 'a', ''"},
        {"attribute at document level", [](ResultTreeTest&) {},
         [](ResultTreeTest& t) { t.m_pTree->StartAttribute(u"p:a", u"urn:u"); }, "Misplaced attribute: 'p:a', 'urn:u'"},
        {"attribute inside attribute",
         [](ResultTreeTest& t) {
             t.m_pTree->StartElement(u"e", u"");
             t.m_pTree->StartAttribute(u"a", u"");
         },
         [](ResultTreeTest& t) { t.m_pTree->StartAttribute(u"b", u""); }, "Misplaced attribute: 'b', ''"},
        {"comment inside attribute",
         [](ResultTreeTest& t) {
             t.m_pTree->StartElement(u"e", u"");
             t.m_pTree->StartAttribute(u"a", u"");
         },
         [](ResultTreeTest& t) { t.m_pTree->StartComment(); }, "Misplaced commnent"},
        {"comment inside comment", [](ResultTreeTest& t) { t.m_pTree->StartComment(); },
         [](ResultTreeTest& t) { t.m_pTree->StartComment(); }, "Misplaced commnent"},
        {"processing instruction inside comment", [](ResultTreeTest& t) { t.m_pTree->StartComment(); },
         [](ResultTreeTest& t) { t.m_pTree->ProcessingInstruction(u"pi", u"d"); },
         "Misplaced processing instruction: 'pi'"},
    };
    for (const SCase& c : cases) {
        m_pTree->StartDocument();
        c.pSetUp(*this);
        EXPECT_EQ(FailureOf([&] { c.pAction(*this); }), c.sMessage) << c.sWhat;
    }
}

TEST_F(ResultTreeTest, NamespaceAfterChildrenIsDropped) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"a", u"");
    Text(u"x");
    Namespace(u"p", u"urn:u");
    m_pTree->StartElement(u"b", u"urn:u");
    m_pTree->EndElement();
    m_pTree->EndElement();
    EXPECT_EQ(Events(), "[doc|<a|x|<__1__:b|xmlns:__1__=urn:u|</__1__:b>|</a>");
}

TEST_F(ResultTreeTest, StartDocumentResetsAfterFailure) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"a", u"urn:u");
    Namespace(u"p", u"urn:u");
    Text(u"x");
    EXPECT_NE(FailureOf([&] { m_pTree->StartAttribute(u"b", u""); }), "no failure");
    m_pTree->StartDocument();
    m_pTree->StartElement(u"c", u"urn:u");
    m_pTree->EndElement();
    EXPECT_EQ(Events(), "[doc|<p:a|xmlns:p=urn:u|x|[doc|<__1__:c|xmlns:__1__=urn:u|</__1__:c>");
}

// Attributes and namespaces given in one piece go the same way as their three events, also
// into a fragment, and a namespace given while an attribute is collected ends the attribute.
TEST_F(ResultTreeTest, OnePieceAttributesAndNamespacesMatchTheirEvents) {
    auto eventsSince = [&](size_t start) {
        std::string events = Events().substr(start);
        return events.starts_with("|") ? events.substr(1) : events;
    };
    auto scenario = [&](auto attribute, auto ns) {
        size_t start = Events().size();
        m_pTree->StartDocument();
        m_pTree->StartElement(u"a", u"urn:u");
        ns(u"p", u"urn:u");
        ns(u"p", u"urn:u");
        attribute(u"x:b", u"urn:v", u"1");
        attribute(u"xml:space", XmlNs, u"preserve");
        attribute(u"c", u"", u"2");
        m_pTree->StartAttribute(u"d", u"");
        ns(u"q", u"urn:w");
        Text(u"t");
        m_pTree->EndAttribute();
        m_pTree->EndElement();
        ns(u"r", u"urn:r");
        m_pTree->EndDocument();
        return eventsSince(start);
    };
    auto attributeEvents = [&](DomStringView n, DomStringView u, DomStringView v) { Attribute(n, u, v); };
    auto namespaceEvents = [&](DomStringView p, DomStringView u) { Namespace(p, u); };
    auto attribute = [&](DomStringView n, DomStringView u, DomStringView v) { m_pTree->Attribute(n, u, v); };
    auto ns = [&](DomStringView p, DomStringView u) { m_pTree->Namespace(p, u); };
    std::string expected = scenario(attributeEvents, namespaceEvents);
    EXPECT_EQ(expected,
              "[doc|<p:a preserve|xmlns:p=urn:u|xmlns:__1__=urn:v|xmlns:q=urn:w|__1__:b=1|xml:space=preserve|c=2|t"
              "|</p:a>|doc]");
    EXPECT_EQ(scenario(attribute, ns), expected);

    TRefPtr<XsltPrivate::CEventBuffer> buffer = new XsltPrivate::CEventBuffer;
    TRefPtr<CResultTree> target = m_pTree;
    m_pTree = new CResultTree(buffer);
    scenario(attribute, ns);
    m_pTree = target;
    size_t start = Events().size();
    m_pTree->StartDocument();
    buffer->Replay(*m_pTree);
    EXPECT_EQ(eventsSince(start), "[doc|<p:a preserve|xmlns:p=urn:u|xmlns:__1__=urn:v|xmlns:q=urn:w|__1__:b=1|xml:space=preserve|c=2|t"
                        "|</p:a>");
}

// Children in their parent's namespace take its prefix, generated or not, until a binding
// of their own comes newer.
TEST_F(ResultTreeTest, ChildrenInTheParentsNamespaceTakeItsPrefix) {
    m_pTree->StartDocument();
    m_pTree->StartElement(u"a", u"urn:u");
    m_pTree->StartElement(u"p:b", u"urn:u");
    m_pTree->EndElement();
    m_pTree->StartElement(u"p:c", u"urn:u");
    m_pTree->Namespace(u"q", u"urn:u");
    m_pTree->StartElement(u"d", u"urn:u");
    m_pTree->EndElement();
    m_pTree->StartElement(u"e", u"");
    m_pTree->EndElement();
    m_pTree->EndElement();
    m_pTree->EndElement();
    EXPECT_EQ(Events(),
              "[doc|<__1__:a|xmlns:__1__=urn:u|<__1__:b|</__1__:b>|<q:c|xmlns:q=urn:u|<q:d|</q:d>|<e|</e>"
              "|</q:c>|</__1__:a>");
}

}  // namespace
