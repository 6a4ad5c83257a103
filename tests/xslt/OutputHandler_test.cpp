// The handlers behind a result tree: the output handler that picks the writer of the method at
// the start of the document, the message sink and the string sink that keep only text.
#include <gtest/gtest.h>

#include <string>

#include "core/EncodingTable.h"
#include "core/Stream.h"
#include "core/TextSink.h"
#include "xmlwriter/OutputProperties.h"
#include "xmlwriter/WriterException.h"
#include "xslt/private/MessageSink.h"
#include "xslt/private/OutputHandlerFactory.h"
#include "xslt/private/ResultTree.h"

using XsltPrivate::CResultTree;

namespace {

class CCollectingTextSink : public Core::ITextSink {
public:
    void Write(const DomChar* units, int count) override { m_sText.append(units, static_cast<size_t>(count)); }
    DomString m_sText;
};

// Keeps bytes for a byte stream, or 16-bit units for the message stream.
class CCollectingStream : public Core::IStream {
public:
    explicit CCollectingStream(int unitSize) : m_nUnitSize(unitSize) {}
    int Read(void*, int) override { return 0; }
    void Write(const void* buffer, int count) override {
        m_sBytes.append(static_cast<const char*>(buffer), static_cast<size_t>(count * m_nUnitSize));
    }
    void Seek(long, int) override {}
    long Tell() override { return 0; }

    int m_nUnitSize;
    std::string m_sBytes;
};

void Text(CResultTree& tree, DomStringView text) {
    tree.Characters(text.data(), static_cast<int>(text.size()), false);
}

// <p:a p:x="1"><c>x&lt;y</c><!--n--><?t d?></p:a>
void WriteSample(CResultTree& tree) {
    tree.StartDocument();
    tree.StartElement(u"a", u"urn:u");
    tree.StartNamespace(u"p");
    Text(tree, u"urn:u");
    tree.EndNamespace();
    tree.StartAttribute(u"x", u"urn:u");
    Text(tree, u"1");
    tree.EndAttribute();
    tree.StartElement(u"c", u"");
    Text(tree, u"x<y");
    tree.EndElement();
    tree.StartComment();
    Text(tree, u"n");
    tree.EndComment();
    tree.ProcessingInstruction(u"t", u"d");
    tree.EndElement();
    tree.EndDocument();
}

class OutputHandlerTest : public ::testing::Test {
public:
    OutputHandlerTest() : m_pProperties(new XmlWriter::COutputProperties), m_pSink(new CCollectingTextSink) {
        TRefPtr<XsltPrivate::COutputHandlerFactory> factory(new XsltPrivate::COutputHandlerFactory);
        factory->Create(m_pHandler);
        m_pHandler->SetEncodingTable(TRefPtr<Core::CEncodingTable>(new Core::CEncodingTable));
        m_pHandler->SetTextSink(m_pSink);
        m_pHandler->SetOutputProperties(m_pProperties);
    }

    TRefPtr<XmlWriter::COutputProperties> m_pProperties;
    TRefPtr<CCollectingTextSink> m_pSink;
    TRefPtr<Xslt::IResultHandler> m_pHandler;
};

TEST_F(OutputHandlerTest, WritesTheMethodNamedInTheProperties) {
    struct SCase {
        int nKind;
        const char16_t* sExpected;
    };
    const SCase cases[] = {
        {XmlWriter::COutputProperties::XmlMethod, u"<p:a xmlns:p=\"urn:u\" p:x=\"1\"><c><![CDATA[x<y]]></c><!--n--><?t d?></p:a>"},
        {XmlWriter::COutputProperties::TextMethod, u"x<y"},
    };
    for (const SCase& c : cases) {
        m_pSink->m_sText.clear();
        m_pProperties->SetMethodKind(c.nKind);
        m_pProperties->SetOmitXmlDeclaration(true);
        m_pProperties->AddCDataSectionElement(u"", u"c");
        TRefPtr<CResultTree> tree(new CResultTree(m_pHandler));
        tree->SetOutputProperties(m_pProperties);
        WriteSample(*tree);
        EXPECT_EQ(m_pSink->m_sText, c.sExpected) << "method kind " << c.nKind;
    }
}

TEST_F(OutputHandlerTest, WritesEncodedBytesToTheStream) {
    TRefPtr<CCollectingStream> stream(new CCollectingStream(1));
    m_pHandler->SetStream(stream);
    m_pProperties->SetMethodKind(XmlWriter::COutputProperties::XmlMethod);
    TRefPtr<CResultTree> tree(new CResultTree(m_pHandler));
    tree->StartDocument();
    tree->StartElement(u"a", u"");
    Text(*tree, u"\u00e9");
    tree->EndElement();
    tree->EndDocument();
    EXPECT_EQ(stream->m_sBytes, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<a>\xc3\xa9</a>");
    EXPECT_TRUE(m_pSink->m_sText.empty());
}

TEST_F(OutputHandlerTest, RefusesToStartWithoutAnOutputMethod) {
    TRefPtr<CResultTree> tree(new CResultTree(m_pHandler));
    DomString message;
    try {
        tree->StartDocument();
    } catch (XmlWriter::CWriterException* e) {
        e->GetMessage(message);
        delete e;
    }
    EXPECT_EQ(message, u"Unsupported output method: '', ''");
}

TEST(TextOnlyHandlersTest, MessageSinkPassesOnlyTextToTheStream) {
    TRefPtr<CCollectingStream> stream(new CCollectingStream(2));
    TRefPtr<CResultTree> tree(new CResultTree(TRefPtr<Xslt::IResultHandler>(new XsltPrivate::CMessageSink(stream))));
    WriteSample(*tree);
    EXPECT_EQ(stream->m_sBytes, std::string("x\0<\0y\0", 6));

    TRefPtr<CResultTree> silent(new CResultTree(TRefPtr<Xslt::IResultHandler>(new XsltPrivate::CMessageSink(nullptr))));
    WriteSample(*silent);
}

TEST(TextOnlyHandlersTest, StringSinkCollectsTheTextOfOneDocument) {
    TRefPtr<XsltPrivate::CStringSink> sink(new XsltPrivate::CStringSink);
    TRefPtr<CResultTree> tree(new CResultTree(sink));
    WriteSample(*tree);
    WriteSample(*tree);
    EXPECT_EQ(sink->GetText(), u"x<y");
}

}  // namespace
