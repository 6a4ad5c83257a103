// Key indexes built by a whole run: the walk reaches every kind of node in document order,
// past nested subtrees, and patterns that name their nodes still find attributes.
#include <gtest/gtest.h>

#include <unistd.h>

#include <fstream>
#include <string>

#include "RecordingResultHandler.h"
#include "uri/UriConversions.h"
#include "xslt/Environment.h"
#include "xslt/Transformer.h"

namespace {

class KeyWalkTest : public ::testing::Test {
protected:
    void SetUp() override {
        char dir[] = "/tmp/kst-keys-XXXXXX";
        ASSERT_NE(mkdtemp(dir), nullptr);
        m_sDir = dir;
    }
    void TearDown() override { std::system(("rm -rf '" + m_sDir + "'").c_str()); }

    // The text events of a run of `templates` with `keys` over `document`.
    std::string Run(const std::string& document, const std::string& keys, const std::string& templates) {
        Write("doc.xml", document);
        Write("style.xsl", "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
                           "<xsl:output method='text'/>" + keys + templates + "</xsl:stylesheet>");
        TRefPtr<Xslt::CTransformer> transformer = new Xslt::CTransformer(new Xslt::CEnvironment());
        TRefPtr<XsltTest::CRecordingResultHandler> handler = new XsltTest::CRecordingResultHandler();
        transformer->SetOutputHandler(handler);
        transformer->SetDocumentUri(UriOf("doc.xml"));
        transformer->SetStylesheetUri(UriOf("style.xsl"));
        transformer->Run();
        return handler->GetEvents();
    }

private:
    void Write(const std::string& name, const std::string& text) { std::ofstream(m_sDir + "/" + name) << text; }
    DomString UriOf(const std::string& name) {
        DomString uri;
        Uri::FileNameToUri(Core::WidenLatin1(m_sDir + "/" + name), uri);
        return uri;
    }

    std::string m_sDir;
};

const char kDocument[] =
    "<r xmlns:n='urn:n'><a x='1'>t1<!--c1--><?p1 d?><b y='2'><c>t2</c></b>t3</a><d z='3'>t4</d><![CDATA[t5]]></r>";

TEST_F(KeyWalkTest, EveryKindOfNodeIsIndexedInDocumentOrder) {
    std::string events = Run(kDocument, "<xsl:key name='all' match='node()|@*' use=\"'v'\"/>",
                             "<xsl:template match='/'><xsl:for-each select=\"key('all', 'v')\">"
                             "<xsl:value-of select=\"concat(name(), ':', substring(., 1, 2), ' ')\"/>"
                             "</xsl:for-each></xsl:template>");
    EXPECT_EQ(events,
              "[doc|r:t1 |a:t1 |x:1 |#text:t1 |#comment:c1 |p1:d |b:t2 |y:2 |c:t2 |#text:t2 |#text:t3 |d:t4 |z:3 |"
              "#text:t4 |#text:t5 |doc]");
}

TEST_F(KeyWalkTest, NamedPatternsFindElementsAndAttributesAfterNestedSubtrees) {
    std::string events = Run(kDocument, "<xsl:key name='named' match='c|@z|d|@y' use='name()'/>",
                             "<xsl:template match='/'><xsl:for-each select=\"key('named', 'c')|key('named', 'z')|"
                             "key('named', 'y')|key('named', 'd')\"><xsl:value-of select='name()'/>"
                             "</xsl:for-each></xsl:template>");
    EXPECT_EQ(events, "[doc|y|c|d|z|doc]");
}

}  // namespace
