// The façade's pieces: the engine's messages, the parameter list, the extension registry, and
// the order in which a run fails before anything is written.
#include <gtest/gtest.h>

#include <unistd.h>

#include <fstream>
#include <sstream>

#include "uri/UriConversions.h"
#include "xslt/Environment.h"
#include "xslt/Transformer.h"
#include "xslt/XsltException.h"

namespace {

TEST(XsltException, RendersMessagesWithArgumentsAndLineFeeds) {
    struct SCase {
        int nCode;
        const char16_t* pArgument1;
        const char16_t* pArgument2;
        const char16_t* pText;
    };
    const SCase cases[] = {
        {2, u"file:///s.xsl", u"Cannot access document", u"Stylesheet retrieval error: 'file:///s.xsl' \nCannot access document"},
        {21, u"file:///o", u"", u"Cannot create result stream, URI: 'file:///o'"},
        {25, u"urn:x", u"main", u"Named template rule not found: 'urn:x', 'main'"},
        {52, u"function", u"format-number", u"Unsupported feature: function 'format-number'"},
        {55, u"100%", u"", u"100%"},
        {5, u"", u"", u"Missing attribute: ''"},
        {56, u"x", u"", u"Unclassified XSLT exception"},
        {-7, u"", u"", u"Unclassified XSLT exception"},
    };
    for (const SCase& c : cases) {
        DomString text;
        Xslt::CXsltException(c.nCode, c.pArgument1, c.pArgument2).GetMessage(text);
        EXPECT_EQ(text, c.pText) << c.nCode;
    }
    int key = 0;
    Xslt::CXsltException located(43, Xslt::SLocation{&key, 7}, u"xsl:value-of", u"boom");
    EXPECT_FALSE(located.GetStylesheetLocation().IsNull());
    EXPECT_TRUE(located.GetDocumentLocation().IsNull());
}

TEST(ParameterList, KeepsOrderAndDuplicatesAndCopiesOverTheTarget) {
    TRefPtr<Xslt::CParameterList> list = new Xslt::CParameterList();
    list->AddParameter(u"a", u"1+1");
    list->AddParameter(u"a", u"b=c");
    list->AddParameter(u"p:n", u"urn:p", u"n", u"");
    TRefPtr<Xslt::CParameterList> copy = new Xslt::CParameterList();
    copy->AddParameter(u"stale", u"x");
    copy->CopyFrom(*list);
    ASSERT_EQ(copy->GetCount(), 3);
    EXPECT_EQ(copy->Get(0).pValue->GetString(), u"1+1");
    EXPECT_EQ(copy->Get(1).pValue->GetString(), u"b=c");
    EXPECT_EQ(copy->Get(0).sLocalName, u"");
    EXPECT_EQ(copy->Get(2).sNamespaceUri, u"urn:p");
    copy->CopyFrom(*copy);
    EXPECT_EQ(copy->GetCount(), 3);
}

class CFactory : public Xslt::IExtensionFactory {
public:
    explicit CFactory(DomString uri) : m_sUri(std::move(uri)) {}
    DomString GetNamespaceURI() const override { return m_sUri; }

private:
    DomString m_sUri;
};

TEST(ExtensionRegistry, FindsTheFirstFactoryOfAUri) {
    TRefPtr<Xslt::CEnvironment> environment = new Xslt::CEnvironment();
    Xslt::CExtensionRegistry* registry = environment->GetExtensionRegistry();
    TRefPtr<CFactory> first = new CFactory(u"urn:a");
    registry->Add(first);
    registry->Add(new CFactory(u"urn:a"));
    registry->Add(new CFactory(u"urn:b"));
    EXPECT_EQ(registry->Find(u"urn:a"), first.Get());
    EXPECT_NE(registry->Find(u"urn:b"), nullptr);
    EXPECT_EQ(registry->Find(u"urn:"), nullptr);
    EXPECT_EQ(registry->GetCount(), 3);
    EXPECT_EQ(environment->GetEncodingTable(), environment->GetEncodingTable());
}

TEST(Transformer, MissingStylesheetFailsWithCode2AndLeavesTheOutputUntouched) {
    char dir[] = "/tmp/kst-facade-XXXXXX";
    ASSERT_NE(mkdtemp(dir), nullptr);
    std::string output = std::string(dir) + "/out.xml";
    std::ofstream(output) << "keep";
    DomString outputUri;
    DomString stylesheetUri;
    ASSERT_TRUE(Uri::FileNameToUri(Core::WidenLatin1(output), outputUri));
    ASSERT_TRUE(Uri::FileNameToUri(Core::WidenLatin1(std::string(dir) + "/missing.xsl"), stylesheetUri));

    TRefPtr<Xslt::CTransformer> transformer = new Xslt::CTransformer(new Xslt::CEnvironment());
    transformer->SetStylesheetUri(stylesheetUri);
    transformer->SetOutputUri(outputUri);
    int code = -1;
    try {
        transformer->Run();
    } catch (Xslt::CXsltException* e) {
        code = e->GetCode();
        EXPECT_EQ(e->GetArgument1(), stylesheetUri);
        delete e;
    }
    EXPECT_EQ(code, Xslt::CXsltException::StylesheetRetrievalError);
    std::stringstream content;
    content << std::ifstream(output).rdbuf();
    EXPECT_EQ(content.str(), "keep");
    std::system(("rm -rf '" + std::string(dir) + "'").c_str());
}

}  // namespace
