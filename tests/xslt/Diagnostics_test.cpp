// The locator that remembers where nodes were read, and the reporter's exact lines.
#include <gtest/gtest.h>

#include "core/Stream.h"
#include "dom/Document.h"
#include "dom/DocumentBuilder.h"
#include "xslt/XsltException.h"
#include "xslt/private/DiagnosticReporter.h"
#include "xslt/private/Locator.h"

using XsltPrivate::CDiagnosticReporter;
using XsltPrivate::CLocator;

namespace {

// Stands in for the parser's position while a test drives a builder.
class CFakeParserLocator : public Sxp::ILocator {
public:
    DomString GetPublicId() const override { return u""; }
    DomString GetSystemId() const override { return m_sSystemId; }
    int GetColumn() const override { return m_position.nColumn; }
    int GetLine() const override { return m_position.nLine; }
    const Sxp::SPosition* const* GetPositionSlot() const override { return &m_pPosition; }

    DomString m_sSystemId = u"file:///style.xsl";
    Sxp::SPosition m_position{1, 1};
    const Sxp::SPosition* m_pPosition = &m_position;
};

// Takes 16-bit units, as the console stream does.
class CCapturingStream : public Core::IStream {
public:
    int Read(void*, int) override { return 0; }
    void Write(const void* buffer, int count) override {
        m_sText.append(static_cast<const DomChar*>(buffer), static_cast<size_t>(count));
    }
    void Seek(long, int) override {}
    long Tell() override { return 0; }

    DomString m_sText;
};

class DiagnosticsTest : public ::testing::Test {
public:
    DiagnosticsTest() : m_pFactory(new Dom::CDocumentFactory(1)), m_pLocator(new CLocator) {}

    // <a>\n<b/>\n</a> with the start tags on lines 2 and 3; `listener` may be null. A parse
    // that fails never tells the builder that the parser's locator is gone.
    void Build(Dom::TNodeRef& document, Dom::IBuildListener* listener, CFakeParserLocator* parser,
               bool parseFails = false) {
        m_pFactory->CreateDocument(document);
        TRefPtr<Dom::CDocumentBuilder> builder;
        Dom::CDocumentBuilder::Create(document, nullptr, listener, builder);
        builder->SetLocator(parser);
        builder->StartDocument();
        if (parser) parser->m_position.nLine = 2;
        builder->StartElement(u"a");
        if (parser) parser->m_position.nLine = 3;
        builder->StartElement(u"b");
        builder->EndElement();
        builder->EndElement();
        if (parseFails) return;
        builder->EndDocument();
        builder->SetLocator(nullptr);
    }

    TRefPtr<Dom::CDocumentFactory> m_pFactory;
    TRefPtr<CLocator> m_pLocator;
};

TEST_F(DiagnosticsTest, LocatorGivesBackLineAndUriOfBuiltNodes) {
    TRefPtr<CFakeParserLocator> parser(new CFakeParserLocator);
    Dom::TNodeRef document;
    Build(document, m_pLocator, parser);
    Dom::CNode* a = document->GetFirstChild();
    Dom::CNode* b = a->GetFirstChild();
    DomString uri;
    DomString publicId;
    int line = 0;
    int column = 0;
    ASSERT_TRUE(m_pLocator->GetLocation(m_pLocator->GetNodeLocation(b), uri, publicId, line, column));
    EXPECT_EQ(line, 3);
    EXPECT_EQ(uri, u"file:///style.xsl");
    ASSERT_TRUE(m_pLocator->GetLocation(m_pLocator->GetNodeLocation(a), uri, publicId, line, column));
    EXPECT_EQ(line, 2);

    Dom::TNodeRef failed;
    TRefPtr<CFakeParserLocator> gone(new CFakeParserLocator);
    Build(failed, m_pLocator, gone, true);
    gone = nullptr;
    Dom::TNodeRef unparsed;
    Build(unparsed, m_pLocator, nullptr);
    EXPECT_TRUE(m_pLocator->GetNodeLocation(unparsed->GetFirstChild()).IsNull());
    EXPECT_FALSE(m_pLocator->GetLocation(Xslt::SLocation(), uri, publicId, line, column));
}
TEST_F(DiagnosticsTest, LocatorFindsBuiltNodesOnLongLines) {
    // Many nodes per line, columns on both sides of one packed unit, a line going back.
    const int columns[] = {3, 127, 128, 32767, 32768, 70000, 9, 2000000};
    const int lines[] = {2, 2, 2, 2, 2, 2, 2, 5, 5, 1};
    TRefPtr<CFakeParserLocator> parser(new CFakeParserLocator);
    Dom::TNodeRef document;
    m_pFactory->CreateDocument(document);
    TRefPtr<Dom::CDocumentBuilder> builder;
    Dom::CDocumentBuilder::Create(document, nullptr, m_pLocator, builder);
    builder->SetLocator(parser);
    builder->StartDocument();
    builder->StartElement(u"r");
    int count = 0;
    for (int line : lines) {
        for (int column : columns) {
            parser->m_position = Sxp::SPosition{line, column + count++};
            builder->StartElement(u"e");
            builder->EndElement();
        }
    }
    builder->EndElement();
    builder->EndDocument();
    builder->SetLocator(nullptr);

    DomString uri;
    DomString publicId;
    int index = 0;
    for (Dom::CNode* e = document->GetFirstChild()->GetFirstChild(); e; e = e->GetNextSibling(), ++index) {
        int line = 0;
        int column = 0;
        ASSERT_TRUE(m_pLocator->GetLocation(m_pLocator->GetNodeLocation(e), uri, publicId, line, column)) << index;
        EXPECT_EQ(line, lines[index / 8]) << index;
        EXPECT_EQ(column, columns[index % 8] + index) << index;
    }
    EXPECT_EQ(index, count);
}


TEST_F(DiagnosticsTest, LocatorTakesBackWhatWasAdded) {
    int key = 0;
    Xslt::SLocation location{&key, 40};
    m_pLocator->AddLocation(location, u"file:///x.xml", u"-//P", 7, 9);
    m_pLocator->AddLocation(Xslt::SLocation{&key, 10}, u"file:///x.xml", u"-//P", 2, 1);
    DomString uri;
    DomString publicId;
    int line = 0;
    int column = 0;
    ASSERT_TRUE(m_pLocator->GetLocation(location, uri, publicId, line, column));
    EXPECT_EQ(uri + u"|" + publicId, u"file:///x.xml|-//P");
    EXPECT_EQ(line * 100 + column, 709);
    EXPECT_FALSE(m_pLocator->GetLocation(Xslt::SLocation{&key, 11}, uri, publicId, line, column));
    m_pLocator->Remove(&key);
    EXPECT_FALSE(m_pLocator->GetLocation(location, uri, publicId, line, column));
}

TEST_F(DiagnosticsTest, LocatorPacksManyPlacesAndFindsEachOne) {
    int key = 0;
    // Orders with gaps, several nodes per line, columns past one byte of packing, a line going back.
    auto lineOf = [](int order) { return order < 1500 ? order / 7 : 3; };
    auto columnOf = [](int order) { return order * 37 % 300 + (order % 5 == 0 ? 100000 : 0); };
    for (int order = 1; order < 2000; order += 2)
        m_pLocator->AddLocation(Xslt::SLocation{&key, order}, u"file:///big.xml", u"", lineOf(order), columnOf(order));
    DomString uri;
    DomString publicId;
    int line = 0;
    int column = 0;
    for (int order = 0; order < 2002; ++order) {
        bool known = m_pLocator->GetLocation(Xslt::SLocation{&key, order}, uri, publicId, line, column);
        ASSERT_EQ(known, order % 2 == 1 && order < 2000) << order;
        if (known) {
            EXPECT_EQ(line, lineOf(order)) << order;
            EXPECT_EQ(column, columnOf(order)) << order;
        }
    }
    // A place given again out of order takes precedence over the packed one.
    m_pLocator->AddLocation(Xslt::SLocation{&key, 9}, u"file:///big.xml", u"", 77, 5);
    ASSERT_TRUE(m_pLocator->GetLocation(Xslt::SLocation{&key, 9}, uri, publicId, line, column));
    EXPECT_EQ(line * 100 + column, 7705);
}

TEST_F(DiagnosticsTest, ReportPrintsMessageThenNodeLines) {
    TRefPtr<CFakeParserLocator> parser(new CFakeParserLocator);
    Dom::TNodeRef stylesheet;
    Build(stylesheet, m_pLocator, parser);
    Dom::TNodeRef source;
    Build(source, nullptr, nullptr);
    Xslt::SLocation styleNode = m_pLocator->GetNodeLocation(stylesheet->GetFirstChild()->GetFirstChild());
    Xslt::SLocation sourceNode{source.Get(), 2};  // a node the locator has no line for

    struct SCase {
        const char* sWhat;
        Xslt::CXsltException* pException;
        const char16_t* sExpected;
    };
    const SCase cases[] = {
        {"both nodes",
         new Xslt::CXsltException(Xslt::CXsltException::InvalidSelectionResultType, styleNode, u"xsl:apply-templates",
                                  sourceNode, u"item"),
         u"Invalid selection result type\n"
         u"    Stylesheet node 'xsl:apply-templates' at line 3\n"
         u"        (file:///style.xsl)\n"
         u"    Document node 'item'\n"},
        {"stylesheet node only",
         new Xslt::CXsltException(Xslt::CXsltException::MissingAttribute, styleNode, u"xsl:value-of", u"select"),
         u"Missing attribute: 'select'\n"
         u"    Stylesheet node 'xsl:value-of' at line 3\n"
         u"        (file:///style.xsl)\n"},
        {"no node",
         new Xslt::CXsltException(Xslt::CXsltException::DocumentRetrievalError, u"file:///in.xml", u"Bad token"),
         u"Document retrieval error: 'file:///in.xml' \nBad token\n"},
    };
    for (const SCase& c : cases) {
        TRefPtr<CCapturingStream> stream(new CCapturingStream);
        TRefPtr<CDiagnosticReporter> reporter(new CDiagnosticReporter(stream));
        reporter->Report(CDiagnosticReporter::Fatal, c.pException, m_pLocator);
        EXPECT_EQ(stream->m_sText, c.sExpected) << c.sWhat;
        delete c.pException;
    }
}

TEST_F(DiagnosticsTest, ReportWithoutStreamOrLocatorStaysQuiet) {
    Xslt::CXsltException exception(Xslt::CXsltException::ProcessingTerminated, Xslt::SLocation{this, 1},
                                   u"xsl:message");
    TRefPtr<CDiagnosticReporter> silent(new CDiagnosticReporter(nullptr));
    silent->Report(CDiagnosticReporter::Recoverable, &exception, m_pLocator);
    TRefPtr<CCapturingStream> stream(new CCapturingStream);
    TRefPtr<CDiagnosticReporter> reporter(new CDiagnosticReporter(stream));
    reporter->Report(CDiagnosticReporter::Recoverable, &exception, nullptr);
    EXPECT_EQ(stream->m_sText, u"Processing terminated\n    Stylesheet node 'xsl:message'\n");
}

}  // namespace
