// Trees built from parsed text: the parser's events and the builder together.
#include <gtest/gtest.h>

#include "core/StringStream.h"
#include "tests/dom/DomTestSupport.h"
#include "xmlparser/Parser.h"

using namespace DomTest;
using Dom::CNode;

namespace {

// Parses `text` into a new document; rules may be null.
Dom::TNodeRef Parse(const char16_t* text, Dom::CStripSpaceRules* rules = nullptr) {
    TRefPtr<Dom::CDocumentFactory> factory = new Dom::CDocumentFactory(1);
    Dom::TNodeRef document;
    factory->CreateDocument(document);
    TRefPtr<Dom::CDocumentBuilder> builder;
    Dom::CDocumentBuilder::Create(document, rules, nullptr, builder);
    TRefPtr<Sxp::IDtdHandler> dtd;
    builder->GetDtdHandler(dtd);
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    parser->SetContentHandler(builder);
    parser->SetDtdHandler(dtd);
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///test.xml");
    source->SetTextStream(new Core::CStringStream(text));
    parser->Parse(source);
    return document;
}

Dom::CDocument* AsDocument(const Dom::TNodeRef& node) { return static_cast<Dom::CDocument*>(node.Get()); }

}  // namespace

TEST(ParsedDocument, CDataJoinsTheTextAroundIt) {
    Dom::TNodeRef document = Parse(u"<r>a<![CDATA[b<]]>c&amp;<!--x-->d</r>");
    CNode* root = AsDocument(document)->GetDocumentElement();
    EXPECT_EQ(root->GetFirstChild()->GetNodeValue(), u"ab<c&");
    EXPECT_EQ(root->GetFirstChild()->GetNextSibling()->GetNodeType(), Dom::COMMENT_NODE);
    EXPECT_EQ(root->GetLastChild()->GetNodeValue(), u"d");
}

TEST(ParsedDocument, NamespacesResolveAcrossTheTree) {
    Dom::TNodeRef document = Parse(
        u"<a:r xmlns:a='urn:a' xmlns='urn:d' b:x='1' xmlns:b='urn:b'><c y='2'/><d xmlns=''/></a:r>");
    CNode* root = AsDocument(document)->GetDocumentElement();
    EXPECT_EQ(root->GetNamespaceUri(), u"urn:a");
    EXPECT_EQ(root->GetAttributeAt(0)->GetNamespaceUri(), u"urn:b");
    EXPECT_EQ(root->GetAttributeCount(), 1);
    EXPECT_EQ(root->GetFirstChild()->GetNamespaceUri(), u"urn:d");
    EXPECT_EQ(root->GetFirstChild()->GetAttributeAt(0)->GetNamespaceUri(), u"");
    EXPECT_EQ(root->GetLastChild()->GetNamespaceUri(), u"");
    // The default declaration overwrites the first binding in place.
    EXPECT_EQ(root->GetNamespaceCount(), 4);
    EXPECT_EQ(root->GetNamespaceAt(0)->GetNodeValue(), u"urn:d");
}

TEST(ParsedDocument, UnboundPrefixStopsTheParse) {
    EXPECT_EQ(DomErrorCode([] { Parse(u"<r><p:e/></r>"); }), 8);
}

TEST(ParsedDocument, DtdDeclaresIdsAndUnparsedEntities) {
    Dom::TNodeRef document = Parse(
        u"<!DOCTYPE r [<!ATTLIST e key ID #IMPLIED><!NOTATION gif SYSTEM 'viewer'>"
        u"<!ENTITY pic SYSTEM 'pic.gif' NDATA gif>]>"
        u"<r><e key='k1'/><e key='k2' id='k1'/></r>");
    Dom::CDocument* doc = AsDocument(document);
    CNode* second = doc->GetDocumentElement()->GetLastChild();
    EXPECT_EQ(doc->GetElementById(u"k2"), second);
    EXPECT_EQ(doc->GetElementById(u"k1"), doc->GetDocumentElement()->GetFirstChild());
    DomString systemId, publicId;
    EXPECT_TRUE(doc->GetUnparsedEntity(u"pic", systemId, publicId));
    EXPECT_EQ(systemId, u"pic.gif");
    EXPECT_EQ(doc->GetDocumentUri(), u"file:///test.xml");
}

TEST(ParsedDocument, StripsIndentationButKeepsPreservedText) {
    TRefPtr<Dom::CStripSpaceRules> rules = new Dom::CStripSpaceRules();
    rules->AddRule(nullptr, nullptr, 0, false);
    rules->SetAnyStrip(true);
    Dom::TNodeRef document = Parse(u"<r>\n  <a> </a>\n  <b xml:space='preserve'> <c> </c></b>\n</r>", rules);
    CNode* root = AsDocument(document)->GetDocumentElement();
    EXPECT_EQ(root->GetFirstChild()->GetNodeName(), u"a");
    EXPECT_EQ(root->GetFirstChild()->GetFirstChild(), nullptr);
    CNode* b = root->GetLastChild();
    EXPECT_EQ(b->GetNodeName(), u"b");
    EXPECT_EQ(b->GetStringValue(), u"  ");
}
