// Template invocations reuse variable frames, parameter lists and expression contexts: what one
// invocation bound is never seen by the next, and each instruction sees its own node list.
#include <gtest/gtest.h>

#include <unistd.h>

#include <fstream>
#include <string>

#include "RecordingResultHandler.h"
#include "uri/UriConversions.h"
#include "xslt/Environment.h"
#include "xslt/Transformer.h"

namespace {

class InvocationTest : public ::testing::Test {
protected:
    void SetUp() override {
        char dir[] = "/tmp/kst-invocation-XXXXXX";
        ASSERT_NE(mkdtemp(dir), nullptr);
        m_sDir = dir;
        m_pTransformer = new Xslt::CTransformer(new Xslt::CEnvironment());
        m_pHandler = new XsltTest::CRecordingResultHandler();
        m_pTransformer->SetOutputHandler(m_pHandler);
        std::ofstream(m_sDir + "/doc.xml") << "<r><a>1</a><a>2</a><b>3</b></r>";
        m_pTransformer->SetDocumentUri(UriOf("doc.xml"));
        m_pTransformer->SetStylesheetUri(UriOf("style.xsl"));
    }
    void TearDown() override { std::system(("rm -rf '" + m_sDir + "'").c_str()); }

    DomString UriOf(const std::string& name) {
        DomString uri;
        Uri::FileNameToUri(Core::WidenLatin1(m_sDir + "/" + name), uri);
        return uri;
    }
    // The text events of a run of the templates, joined by "|".
    std::string Run(const std::string& templates) {
        std::ofstream(m_sDir + "/style.xsl")
            << "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
               "<xsl:output method='text'/><xsl:variable name='v' select=\"'global'\"/>"
            << templates << "</xsl:stylesheet>";
        m_pTransformer->Run();
        return m_pHandler->GetEvents();
    }

    std::string m_sDir;
    TRefPtr<Xslt::CTransformer> m_pTransformer;
    TRefPtr<XsltTest::CRecordingResultHandler> m_pHandler;
};

TEST_F(InvocationTest, BindingsOfOneInvocationAreNotSeenByTheNext) {
    std::string events = Run(
        "<xsl:template match='/'><xsl:apply-templates select='r/*'/></xsl:template>"
        "<xsl:template match='a'><xsl:variable name='v' select='concat(\"a\", .)'/>"
        "<xsl:value-of select='$v'/><xsl:call-template name='show'/></xsl:template>"
        "<xsl:template match='b'><xsl:call-template name='show'><xsl:with-param name='p' select='.'/>"
        "</xsl:call-template><xsl:call-template name='show'/></xsl:template>"
        "<xsl:template name='show'><xsl:param name='p' select=\"'none'\"/>"
        "<xsl:value-of select='concat(\":\", $v, \"/\", $p, \" \")'/></xsl:template>");
    EXPECT_EQ(events, "[doc|a1|:global/none |a2|:global/none |:global/3 |:global/none |doc]");
}

TEST_F(InvocationTest, InstructionsOfOneInvocationKeepTheirOwnNodeLists) {
    std::string events = Run(
        "<xsl:template match='/'><xsl:for-each select='r/*'><xsl:value-of select='position()'/>"
        "<xsl:for-each select='../a'><xsl:value-of select='concat(last(), .)'/></xsl:for-each>"
        "<xsl:value-of select='concat(last(), name())'/></xsl:for-each>"
        "<xsl:value-of select='count(r/*)'/></xsl:template>");
    EXPECT_EQ(events, "[doc|1|21|22|3a|2|21|22|3a|3|21|22|3b|3|doc]");
}

TEST_F(InvocationTest, RecursionThroughParametersAndFragments) {
    std::string events = Run(
        "<xsl:template match='/'><xsl:call-template name='count'><xsl:with-param name='n' select='3'/>"
        "</xsl:call-template></xsl:template>"
        "<xsl:template name='count'><xsl:param name='n'/><xsl:if test='$n &gt; 0'>"
        "<xsl:variable name='inner'><xsl:call-template name='count'><xsl:with-param name='n' select='$n - 1'/>"
        "</xsl:call-template></xsl:variable><xsl:value-of select='concat($n, \"(\", $inner, \")\")'/>"
        "</xsl:if></xsl:template>");
    EXPECT_EQ(events, "[doc|3(2(1()))|doc]");
}

}  // namespace
