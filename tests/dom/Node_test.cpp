// The read-only node model: names and values per kind, refusals with their codes and texts,
// string values, document order and handles.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "tests/dom/DomTestSupport.h"

using namespace DomTest;
using Dom::CDomException;
using Dom::CElement;
using Dom::CNode;

namespace {

// <?p d?><!--c--><r xmlns:q="urn:q" q:a="v">t<?x y?></r>
struct SSample {
    CEventFeeder feeder;
    Dom::CDocument* document;
    CElement* root;
    SSample() {
        feeder.Pi("p", "d").Comment("c").Start("r").Attribute("xmlns:q", "urn:q").Attribute("q:a", "v");
        feeder.Text("t").Pi("x", "y").End();
        document = feeder.Finish();
        root = document->GetDocumentElement();
    }
    CNode* Attribute() const { return root->GetAttributeAt(0); }
    CNode* Text() const { return root->GetFirstChild(); }
    CNode* Comment() const { return document->GetFirstChild()->GetNextSibling(); }
    CNode* Pi() const { return document->GetFirstChild(); }
    CNode* Binding() const { return root->GetNamespaceNode(u"q"); }
    std::vector<CNode*> All() const { return {document, root, Attribute(), Text(), Comment(), Pi(), Binding()}; }
};

}  // namespace

TEST(NodeModel, EachKindReportsItsTypeNameValueAndStringValue) {
    SSample sample;
    struct SRow {
        CNode* pNode;
        int nType;
        const char16_t* pName;
        const char16_t* pValue;
        const char16_t* pStringValue;
    } rows[] = {
        {sample.document, Dom::DOCUMENT_NODE, u"#document", u"", u"dcty"},
        {sample.root, Dom::ELEMENT_NODE, u"r", u"", u"ty"},
        {sample.Attribute(), Dom::ATTRIBUTE_NODE, u"q:a", u"v", u"v"},
        {sample.Text(), Dom::TEXT_NODE, u"#text", u"t", u"t"},
        {sample.Comment(), Dom::COMMENT_NODE, u"#comment", u"c", u"c"},
        {sample.Pi(), Dom::PROCESSING_INSTRUCTION_NODE, u"p", u"d", u"d"},
        {sample.Binding(), Dom::NAMESPACE_NODE, u"q", u"urn:q", u"urn:q"},
    };
    for (const SRow& row : rows) {
        SCOPED_TRACE(Core::ToUtf8(row.pName));
        EXPECT_EQ(row.pNode->GetNodeType(), row.nType);
        EXPECT_EQ(row.pNode->GetNodeName(), row.pName);
        EXPECT_EQ(row.pNode->GetNodeValue(), row.pValue);
        EXPECT_EQ(row.pNode->GetStringValue(), row.pStringValue);
        EXPECT_EQ(row.pNode->GetOwnerDocument(), sample.document);
    }
}

TEST(NodeModel, NamesCarryNamespaceUriAndLocalName) {
    SSample sample;
    EXPECT_EQ(sample.Attribute()->GetNamespaceUri(), u"urn:q");
    EXPECT_EQ(sample.Attribute()->GetLocalName(), u"a");
    EXPECT_EQ(sample.Attribute()->GetName()->GetPrefix(), u"q");
    EXPECT_EQ(sample.root->GetNamespaceUri(), u"");
    EXPECT_EQ(sample.root->GetLocalName(), u"r");
    EXPECT_EQ(sample.Text()->GetLocalName(), u"");
    EXPECT_EQ(sample.Pi()->GetLocalName(), u"");
    EXPECT_EQ(sample.Binding()->GetLocalName(), u"q");
    EXPECT_EQ(sample.Binding()->GetNamespaceUri(), u"");
    EXPECT_EQ(sample.Text()->GetName(), nullptr);
}

TEST(NodeModel, EveryModificationRaisesCodeSevenWithItsMessage) {
    SSample sample;
    CNode* text = sample.Text();
    auto* data = static_cast<Dom::CCharacterData*>(text);
    auto* attribute = static_cast<Dom::CAttr*>(sample.Attribute());
    std::vector<std::function<void()>> actions = {
        [&] { text->InsertBefore(text, nullptr); },
        [&] { sample.root->ReplaceChild(text, text); },
        [&] { sample.root->RemoveChild(text); },
        [&] { sample.document->AppendChild(text); },
        [&] { sample.root->SetAttribute(u"a", u"b"); },
        [&] { sample.root->RemoveAttribute(u"a"); },
        [&] { sample.root->SetAttributeNode(attribute); },
        [&] { sample.root->RemoveAttributeNode(attribute); },
        [&] { sample.root->SetNamespace(u"p", u"u"); },
        [&] { sample.root->RemoveNamespace(u"q"); },
        [&] { sample.root->SetNamespaceNode(nullptr); },
        [&] { sample.root->RemoveNamespaceNode(nullptr); },
        [&] { attribute->SetValue(u"x"); },
        [&] { data->SetData(u"x"); },
        [&] { data->AppendData(u"x"); },
        [&] { data->InsertData(0, u"x"); },
        [&] { data->DeleteData(0, 1); },
        [&] { data->ReplaceData(0, 1, u"x"); },
        [&] { static_cast<Dom::CText*>(text)->SplitText(0); },
        [&] { static_cast<Dom::CProcessingInstruction*>(sample.Pi())->SetData(u"x"); },
        [&] { static_cast<Dom::CNamespaceNode*>(sample.Binding())->SetValue(u"x"); },
        [&] {
            TRefPtr<Dom::CNodeList> list;
            sample.root->GetAttributes(list);
            list->SetNamedItem(text);
        },
        [&] {
            TRefPtr<Dom::CNodeList> list;
            sample.root->GetNamespaces(list);
            list->RemoveNamedItem(u"q");
        },
    };
    for (CNode* node : sample.All()) actions.push_back([node] { node->SetNodeValue(u"x"); });
    for (size_t i = 0; i < actions.size(); ++i) {
        DomString message;
        EXPECT_EQ(DomErrorCode(actions[i], &message), 7) << "action " << i;
        EXPECT_EQ(message, u"Attempt to modify an object where modifications are not allowed") << "action " << i;
    }
}

TEST(NodeModel, UnsupportedQueriesRaiseCodeNine) {
    SSample sample;
    std::vector<std::function<void()>> actions = {
        [&] { static_cast<Dom::CAttr*>(sample.Attribute())->GetSpecified(); },
        [&] {
            TRefPtr<Dom::CNodeList> list;
            sample.root->GetElementsByTagName(u"r", list);
        },
        [&] { sample.document->GetDoctype(); },
        [&] { sample.document->GetImplementation(); },
        [&] {
            Dom::TNodeRef node;
            sample.document->CreateElement(u"e", node);
        },
        [&] {
            Dom::TNodeRef node;
            sample.document->ImportNode(sample.root, true, node);
        },
    };
    // Child lists are refused on every kind, also where there are children.
    for (CNode* node : sample.All()) {
        actions.push_back([node] {
            TRefPtr<Dom::CNodeList> list;
            node->GetChildNodes(list);
        });
        actions.push_back([node] {
            Dom::TNodeRef clone;
            node->CloneNode(true, clone);
        });
    }
    for (size_t i = 0; i < actions.size(); ++i) {
        DomString message;
        EXPECT_EQ(DomErrorCode(actions[i], &message), 9) << "action " << i;
        EXPECT_EQ(message, u"Implementation does not support the type of object requested") << "action " << i;
    }
}

TEST(NodeModel, SubstringDataChecksOffsetAndCutsCount) {
    CEventFeeder feeder;
    feeder.Start("e").Text("hello").End();
    auto* text = static_cast<Dom::CCharacterData*>(feeder.Finish()->GetDocumentElement()->GetFirstChild());
    EXPECT_EQ(text->GetLength(), 5);
    EXPECT_EQ(text->SubstringData(1, 3), u"ell");
    EXPECT_EQ(text->SubstringData(2, 100), u"llo");
    EXPECT_EQ(text->SubstringData(5, 1), u"");
    EXPECT_EQ(DomErrorCode([&] { text->SubstringData(6, 0); }), 1);
    EXPECT_EQ(DomErrorCode([&] { text->SubstringData(-1, 1); }), 1);
    EXPECT_EQ(DomErrorCode([&] { text->SubstringData(0, -1); }), 1);
}

TEST(NodeModel, DocumentElementSkipsLeadingCommentsAndInstructions) {
    SSample sample;
    EXPECT_EQ(sample.document->GetDocumentElement()->GetNodeName(), u"r");
    CEventFeeder empty;
    EXPECT_EQ(empty.Finish()->GetDocumentElement(), nullptr);
    EXPECT_EQ(empty.Document()->GetStringValue(), u"");
}

TEST(NodeModel, StringValueTakesCommentAndInstructionChildren) {
    CEventFeeder feeder;
    feeder.Start("e").Comment("x").Text("y").Start("f").Pi("p", "z").End().End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    EXPECT_EQ(root->GetStringValue(), u"xyz");
    DomString gathered = u">";
    root->AppendStringValue(gathered);
    EXPECT_EQ(gathered, u">xyz");
}

TEST(NodeModel, StringValueOfVeryDeepTreeNeedsNoRecursion) {
    CEventFeeder feeder;
    const int depth = 200000;
    for (int i = 0; i < depth; ++i) feeder.Start("d");
    feeder.Text("x");
    for (int i = 0; i < depth; ++i) feeder.End();
    feeder.Text("y");
    EXPECT_EQ(feeder.Finish()->GetStringValue(), u"xy");
}

TEST(NodeModel, MissingAttributeGivesEmptyValueAndNoNode) {
    SSample sample;
    EXPECT_EQ(sample.root->GetAttribute(u"none"), u"");
    EXPECT_EQ(sample.root->GetAttributeNode(u"none"), nullptr);
    EXPECT_EQ(sample.root->GetAttributeNode(u"q:a"), sample.Attribute());
    EXPECT_EQ(sample.root->GetAttributeNodeNs(u"urn:q", u"a"), sample.Attribute());
    EXPECT_EQ(sample.root->GetNamespace(u"q"), u"urn:q");
    EXPECT_EQ(sample.root->GetNamespace(u"zz"), u"");
    EXPECT_EQ(sample.Text()->GetAttributeAt(0), nullptr);
}

TEST(NodeModel, ListsViewAttributesAndNamespaces) {
    SSample sample;
    TRefPtr<Dom::CNodeList> attributes;
    sample.root->GetAttributes(attributes);
    ASSERT_EQ(attributes->GetLength(), 1);
    EXPECT_EQ(attributes->Item(0), sample.Attribute());
    EXPECT_EQ(attributes->GetNamedItem(u"q:a"), sample.Attribute());
    EXPECT_EQ(attributes->GetNamedItem(u"a"), nullptr);

    TRefPtr<Dom::CNodeList> namespaces;
    sample.root->GetNamespaces(namespaces);
    ASSERT_EQ(namespaces->GetLength(), 3);
    EXPECT_EQ(namespaces->Item(0)->GetNodeName(), u"");
    EXPECT_EQ(namespaces->Item(1)->GetNodeName(), u"xml");
    EXPECT_EQ(namespaces->Item(2)->GetNodeName(), u"q");
    EXPECT_EQ(namespaces->GetNamedItem(u"q"), sample.Binding());

    TRefPtr<Dom::CNodeList> none;
    sample.Text()->GetAttributes(none);
    EXPECT_EQ(none.Get(), nullptr);
}

TEST(NodeModel, DocumentsOfOneFactoryOrderByNumberBeforeOrder) {
    TRefPtr<Dom::CDocumentFactory> factory = new Dom::CDocumentFactory(2);
    Dom::TNodeRef first, second;
    factory->CreateDocument(first);
    factory->CreateDocument(second);
    EXPECT_EQ(first->GetDocumentNumber(), 0x2000001u);
    EXPECT_EQ(second->GetDocumentNumber(), 0x2000002u);
    EXPECT_EQ(first->GetOrder(), second->GetOrder());
    EXPECT_LT(Dom::CompareDocumentOrder(first, second), 0);
    EXPECT_GT(Dom::CompareDocumentOrder(second, first), 0);
}

TEST(NodeModel, NamespaceNodesSortBetweenTheirOwnerAndItsAttributes) {
    SSample sample;
    CNode* binding = sample.Binding();
    CNode* xml = sample.root->GetNamespaceNode(u"xml");
    EXPECT_LT(Dom::CompareDocumentOrder(sample.root, binding), 0);
    EXPECT_LT(Dom::CompareDocumentOrder(binding, sample.Attribute()), 0);
    EXPECT_LT(Dom::CompareDocumentOrder(xml, binding), 0);
    EXPECT_GT(Dom::CompareDocumentOrder(sample.Text(), binding), 0);
    EXPECT_LT(Dom::CompareDocumentOrder(sample.Comment(), binding), 0);
    EXPECT_EQ(Dom::CompareDocumentOrder(binding, binding), 0);
}

TEST(NodeModel, OnlyDocumentHandlesCount) {
    SSample sample;
    int before = sample.document->m_nRefCount;
    {
        Dom::TNodeRef element = sample.root;
        Dom::TNodeRef copy = element;
        EXPECT_EQ(sample.document->m_nRefCount, before);
        Dom::TNodeRef document = sample.document;
        EXPECT_EQ(sample.document->m_nRefCount, before + 1);
    }
    EXPECT_EQ(sample.document->m_nRefCount, before);
}
