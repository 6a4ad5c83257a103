// Whole runs through the transformer into a recording handler: runs, parameters, the silent
// environment, and the guard against a stylesheet that includes itself.
#include <gtest/gtest.h>

#include <unistd.h>

#include <fstream>
#include <string>

#include "RecordingResultHandler.h"
#include "uri/UriConversions.h"
#include "xslt/Environment.h"
#include "xslt/Transformer.h"
#include "xslt/XsltException.h"

namespace {

const char kStylesheetStart[] = "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'";

class TransformationTest : public ::testing::Test {
protected:
    void SetUp() override {
        char dir[] = "/tmp/kst-run-XXXXXX";
        ASSERT_NE(mkdtemp(dir), nullptr);
        m_sDir = dir;
        m_pTransformer = new Xslt::CTransformer(new Xslt::CEnvironment());
        m_pHandler = new XsltTest::CRecordingResultHandler();
        m_pTransformer->SetOutputHandler(m_pHandler);
        Write("doc.xml", "<r><a>1</a><a>2</a></r>");
        m_pTransformer->SetDocumentUri(UriOf("doc.xml"));
        m_pTransformer->SetStylesheetUri(UriOf("style.xsl"));
    }
    void TearDown() override { std::system(("rm -rf '" + m_sDir + "'").c_str()); }

    void Write(const std::string& name, const std::string& text) { std::ofstream(m_sDir + "/" + name) << text; }
    DomString UriOf(const std::string& name) {
        DomString uri;
        Uri::FileNameToUri(Core::WidenLatin1(m_sDir + "/" + name), uri);
        return uri;
    }
    // Runs and returns the code of the engine exception, or -1 when the run completed.
    int Run() {
        try {
            m_pTransformer->Run();
        } catch (Xslt::CXsltException* failure) {
            int code = failure->GetCode();
            delete failure;
            return code;
        }
        return -1;
    }

    std::string m_sDir;
    TRefPtr<Xslt::CTransformer> m_pTransformer;
    TRefPtr<XsltTest::CRecordingResultHandler> m_pHandler;
};

TEST_F(TransformationTest, EachRunCompilesAndWritesAgain) {
    Write("style.xsl", std::string(kStylesheetStart) + "><xsl:template match='a'><b><xsl:value-of select='.'/></b>"
                                                       "</xsl:template></xsl:stylesheet>");
    EXPECT_EQ(Run(), -1);
    Write("style.xsl", std::string(kStylesheetStart) + "><xsl:template match='/'>changed</xsl:template></xsl:stylesheet>");
    EXPECT_EQ(Run(), -1);
    EXPECT_EQ(m_pHandler->GetEvents(), "[doc|<b|1|</b>|<b|2|</b>|doc]|[doc|changed|doc]");
}

TEST_F(TransformationTest, ParametersResolveTheirPrefixesAgainstTheStylesheetRoot) {
    Write("style.xsl", std::string(kStylesheetStart) +
                           " xmlns:p='urn:p'><xsl:param name='p:x' select='0'/><xsl:param name='x' select='0'/>"
                           "<xsl:template match='/'><xsl:value-of select='concat($p:x, $x)'/></xsl:template>"
                           "</xsl:stylesheet>");
    TRefPtr<Xslt::CParameterList> parameters = new Xslt::CParameterList();
    parameters->AddParameter(u"p:x", u"prefixed");
    parameters->AddParameter(u"x", u"-plain");
    parameters->AddParameter(u"x", u"-second");
    m_pTransformer->SetParameters(parameters);
    EXPECT_EQ(Run(), -1);
    EXPECT_EQ(m_pHandler->GetEvents(), "[doc|prefixed-plain|doc]");

    parameters->AddParameter(u"q:x", u"unbound");
    m_pTransformer->SetParameters(parameters);
    EXPECT_EQ(Run(), Xslt::CXsltException::UndefinedPrefix);
}

TEST_F(TransformationTest, WithoutStreamsMessagesAreSilentAndTerminationReachesTheCaller) {
    Write("style.xsl", std::string(kStylesheetStart) +
                           "><xsl:template match='/'><xsl:message>quiet</xsl:message>"
                           "<xsl:message terminate='yes'>stop</xsl:message></xsl:template></xsl:stylesheet>");
    EXPECT_EQ(Run(), Xslt::CXsltException::ProcessingTerminated);
}

TEST_F(TransformationTest, StylesheetThatIncludesItselfFailsInsteadOfRecursingForever) {
    Write("style.xsl", std::string(kStylesheetStart) + "><xsl:include href='style.xsl'/></xsl:stylesheet>");
    EXPECT_EQ(Run(), Xslt::CXsltException::StylesheetRetrievalError);
}

TEST_F(TransformationTest, MissingDocumentIsDocumentRetrievalError) {
    Write("style.xsl", std::string(kStylesheetStart) + "/>");
    m_pTransformer->SetDocumentUri(UriOf("absent.xml"));
    EXPECT_EQ(Run(), Xslt::CXsltException::DocumentRetrievalError);
}

}  // namespace
