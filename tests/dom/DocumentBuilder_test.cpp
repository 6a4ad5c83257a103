// Building trees from events: structure, names, namespaces, text joining and stripping, chunk
// boundaries, the DTD's leftovers and the listener.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "dom/NamespaceScope.h"
#include "tests/dom/DomTestSupport.h"

using namespace DomTest;
using Dom::CElement;
using Dom::CNode;

namespace {

// "stem" followed by the number, e.g. Numbered("a", 12) is "a12".
std::string Numbered(const char* stem, long number) {
    std::string text(stem);
    text += std::to_string(number);
    return text;
}

CElement* FirstElement(CNode* node) {
    for (CNode* child = node->GetFirstChild(); child; child = child->GetNextSibling()) {
        if (child->GetNodeType() == Dom::ELEMENT_NODE) return static_cast<CElement*>(child);
    }
    return nullptr;
}

// The children of a node as "kind:value" words, e.g. "t:abc c:x e:b".
std::string Children(CNode* node) {
    std::string words;
    for (CNode* child = node->GetFirstChild(); child; child = child->GetNextSibling()) {
        if (!words.empty()) words += ' ';
        switch (child->GetNodeType()) {
        case Dom::ELEMENT_NODE: words.append("e:").append(Core::ToUtf8(child->GetNodeName())); break;
        case Dom::TEXT_NODE: words.append("t:").append(Core::ToUtf8(child->GetNodeValue())); break;
        case Dom::COMMENT_NODE: words.append("c:").append(Core::ToUtf8(child->GetNodeValue())); break;
        default: words.append("p:").append(Core::ToUtf8(child->GetNodeName())); break;
        }
    }
    return words;
}

}  // namespace

TEST(DocumentBuilder, BuildsNestedElementsWithTextInDocumentOrder) {
    CEventFeeder feeder;
    feeder.Start("a").Attribute("x", "1").Start("b").Text("hi").End().Comment("c").Pi("t", "d").End();
    Dom::CDocument* document = feeder.Finish();
    CElement* root = document->GetDocumentElement();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(Children(root), "e:b c:c p:t");
    CNode* b = root->GetFirstChild();
    EXPECT_EQ(b->GetParentNode(), root);
    EXPECT_EQ(root->GetParentNode(), document);
    EXPECT_EQ(b->GetNextSibling()->GetPreviousSibling(), b);
    EXPECT_EQ(b->GetPreviousSibling(), nullptr);
    EXPECT_EQ(root->GetLastChild()->GetNextSibling(), nullptr);
    EXPECT_EQ(root->GetAttributeAt(0)->GetParentNode(), root);
    // Element, then its attributes, then its children.
    EXPECT_LT(root->GetOrder(), root->GetAttributeAt(0)->GetOrder());
    EXPECT_LT(root->GetAttributeAt(0)->GetOrder(), b->GetOrder());
    EXPECT_LT(b->GetOrder(), b->GetFirstChild()->GetOrder());
    EXPECT_LT(b->GetFirstChild()->GetOrder(), root->GetLastChild()->GetOrder());
}

TEST(DocumentBuilder, JoinsAdjacentCharacterEventsIntoOneTextNode) {
    CEventFeeder feeder;
    feeder.Start("e").Text("a");
    feeder.Builder()->StartCData();
    feeder.Text("b");
    feeder.Builder()->EndCData();
    feeder.Text("c");
    feeder.Builder()->SkippedEntity(u"undefined");
    feeder.Text("d").Comment("x").Text("f").Text("").End();
    EXPECT_EQ(Children(feeder.Finish()->GetDocumentElement()), "t:abcd c:x t:f");
}

TEST(DocumentBuilder, InternsNamesPerDocument) {
    CEventFeeder feeder;
    feeder.Start("r");
    for (int i = 0; i < 300; ++i) feeder.Start(Numbered("n", i % 150)).Attribute("a", "v").End();
    feeder.End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    std::vector<const Dom::CName*> names;
    for (CNode* child = root->GetFirstChild(); child; child = child->GetNextSibling()) names.push_back(child->GetName());
    ASSERT_EQ(names.size(), 300u);
    for (int i = 0; i < 150; ++i) {
        EXPECT_EQ(names[i], names[i + 150]);
        EXPECT_EQ(names[i]->GetQualifiedName(), U(Numbered("n", i)));
    }
    EXPECT_NE(names[0], names[1]);
    EXPECT_EQ(root->GetFirstChild()->GetAttributeAt(0)->GetName(), root->GetLastChild()->GetAttributeAt(0)->GetName());
}

TEST(DocumentBuilder, ResolvesElementAndAttributeNamespaces) {
    CEventFeeder feeder;
    feeder.Start("r").Attribute("xmlns", "urn:d").Attribute("a:x", "1").Attribute("xmlns:a", "urn:a").Attribute("y", "2");
    feeder.Start("c").Attribute("xmlns", "").Start("a:g").End().End();
    feeder.Start("xmlnsfoo").Attribute("xmlnsfoo", "1").End();
    feeder.End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    // The default namespace applies to elements only; a prefix may be declared after its use.
    EXPECT_EQ(root->GetNamespaceUri(), u"urn:d");
    EXPECT_EQ(root->GetAttributeAt(0)->GetNamespaceUri(), u"urn:a");
    EXPECT_EQ(root->GetAttributeAt(0)->GetLocalName(), u"x");
    EXPECT_EQ(root->GetAttributeAt(1)->GetNamespaceUri(), u"");
    // Declarations are no attributes.
    EXPECT_EQ(root->GetAttributeCount(), 2);
    CElement* undeclared = FirstElement(root);
    EXPECT_EQ(undeclared->GetNamespaceUri(), u"");
    EXPECT_EQ(undeclared->GetAttributeCount(), 0);
    EXPECT_EQ(FirstElement(undeclared)->GetNamespaceUri(), u"urn:a");
    // "xmlnsfoo" is an ordinary name.
    CNode* plain = undeclared->GetNextSibling();
    EXPECT_EQ(plain->GetNamespaceUri(), u"urn:d");
    EXPECT_EQ(plain->GetAttributeCount(), 1);
    EXPECT_EQ(plain->GetAttributeAt(0)->GetNodeName(), u"xmlnsfoo");
}

TEST(DocumentBuilder, UnboundPrefixFailsAtTheEndOfTheStartTag) {
    struct {
        const char* pCase;
        std::function<void(CEventFeeder&)> build;
    } rows[] = {
        {"element", [](CEventFeeder& f) { f.Start("p:e").Text("x"); }},
        {"attribute", [](CEventFeeder& f) { f.Start("e").Attribute("p:a", "1").Start("c"); }},
        {"with own scope", [](CEventFeeder& f) { f.Start("e").Attribute("xmlns:q", "u").Attribute("p:a", "1").End(); }},
        {"out of scope", [](CEventFeeder& f) { f.Start("e").Attribute("xmlns:p", "u").End().Start("p:f").End(); }},
    };
    for (auto& row : rows) {
        CEventFeeder feeder;
        DomString message;
        EXPECT_EQ(DomErrorCode([&] { row.build(feeder); }, &message), 8) << row.pCase;
        EXPECT_EQ(message, u"Attempt to reference a node in a context where it does not exist") << row.pCase;
    }
}

TEST(DocumentBuilder, ScopesAreSharedUntilAnElementDeclares) {
    CEventFeeder feeder;
    feeder.Start("r").Attribute("xmlns:a", "urn:1").Start("b").Start("c").Attribute("xmlns:a", "urn:2").Start("d");
    feeder.End().End().End().Start("e").End().End();
    Dom::CDocument* document = feeder.Finish();
    CElement* r = document->GetDocumentElement();
    CElement* b = FirstElement(r);
    CElement* c = FirstElement(b);
    CElement* d = FirstElement(c);
    auto* e = static_cast<CElement*>(r->GetLastChild());
    EXPECT_EQ(r->m_pScope, b->m_pScope);
    EXPECT_EQ(r->m_pScope, e->m_pScope);
    EXPECT_NE(c->m_pScope, b->m_pScope);
    EXPECT_EQ(c->m_pScope, d->m_pScope);
    EXPECT_EQ(b->GetNamespace(u"a"), u"urn:1");
    EXPECT_EQ(d->GetNamespace(u"a"), u"urn:2");
    // A redeclared prefix keeps its place; owners are the elements that made the scopes.
    ASSERT_EQ(d->GetNamespaceCount(), 3);
    EXPECT_EQ(d->GetNamespaceAt(2)->GetNodeName(), u"a");
    EXPECT_EQ(d->GetNamespaceAt(2)->GetParentNode(), c);
    EXPECT_EQ(b->GetNamespaceNode(u"a")->GetParentNode(), r);
    EXPECT_EQ(d->GetNamespaceNode(u"xml")->GetParentNode(), c);
    EXPECT_EQ(b->GetNamespaceNode(u"xml")->GetNodeValue(), u"http://www.w3.org/XML/1998/namespace");
    CEventFeeder plain;
    plain.Start("r").End();
    CElement* lone = plain.Finish()->GetDocumentElement();
    EXPECT_EQ(lone->GetNamespaceNode(u"")->GetParentNode(), plain.Document());
    EXPECT_EQ(lone->GetNamespaceCount(), 2);
}

TEST(DocumentBuilder, ScopeGrowthKeepsCreationOrder) {
    CEventFeeder feeder;
    feeder.Start("r");
    for (int i = 0; i < 40; ++i) feeder.Attribute(Numbered("xmlns:p", i), Numbered("urn:", i));
    feeder.Start("p39:c").End().End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    ASSERT_EQ(root->GetNamespaceCount(), 42);
    for (int i = 0; i < 40; ++i) {
        EXPECT_EQ(root->GetNamespaceAt(i + 2)->GetNodeName(), U(Numbered("p", i)));
        EXPECT_EQ(root->GetNamespaceAt(i + 2)->GetOrder(), static_cast<uint32_t>(i + 3));
    }
    EXPECT_EQ(root->GetFirstChild()->GetNamespaceUri(), u"urn:39");
}

namespace {

struct SStripCase {
    const char* pCase;
    bool bRules;
    bool bStripAll;
    bool bPreserveKeep;  // a rule preserving "keep"
    const char* pSpace;  // xml:space on the root, or null
    const char* pExpected;
};

// <root [xml:space]> <keep> </keep> <drop> <x/> </drop> </root>: the words list the kept texts
// as "where:length".
std::string BuildAndListWhitespace(const SStripCase& row) {
    TRefPtr<Dom::CStripSpaceRules> rules;
    if (row.bRules) {
        rules = new Dom::CStripSpaceRules();
        if (row.bStripAll) {
            rules->AddRule(nullptr, nullptr, 0, false);
            rules->SetAnyStrip(true);
        }
        if (row.bPreserveKeep) rules->AddRule(u"", u"keep", 0, true);
    }
    CEventFeeder feeder(rules);
    feeder.Start("root");
    if (row.pSpace) feeder.Attribute("xml:space", row.pSpace);
    feeder.Text(" ").Start("keep").Text("  ").End().Text("\n").Start("drop").Text("\t").Start("x").End();
    feeder.Text("\r\n").End().Text(" ").End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    std::string words;
    for (CNode* node = root; node;) {
        if (node->GetNodeType() == Dom::TEXT_NODE) {
            if (!words.empty()) words += ' ';
            words.append(Core::ToUtf8(node->GetParentNode()->GetNodeName())).append(":");
            words.append(std::to_string(node->GetNodeValue().size()));
        }
        CNode* next = node->GetFirstChild();
        while (!next && node && node != root) {
            next = node->GetNextSibling();
            if (!next) node = node->GetParentNode();
        }
        node = next;
    }
    return words;
}

}  // namespace

TEST(DocumentBuilder, StripsWhitespaceTextByRulesAndXmlSpace) {
    const SStripCase rows[] = {
        {"no rules", false, false, false, nullptr, "root:1 keep:2 root:1 drop:1 drop:2 root:1"},
        {"rules without stripping", true, false, false, "default", "root:1 keep:2 root:1 drop:1 drop:2 root:1"},
        {"strip all", true, true, false, nullptr, ""},
        {"strip all but keep", true, true, true, nullptr, "keep:2"},
        {"preserve in force", true, true, false, "preserve", "root:1 keep:2 root:1 drop:1 drop:2 root:1"},
        {"default in force", true, true, true, "default", "keep:2"},
    };
    for (const SStripCase& row : rows) EXPECT_EQ(BuildAndListWhitespace(row), row.pExpected) << row.pCase;
}

TEST(DocumentBuilder, XmlSpaceOnAChildEndsWithTheChild) {
    TRefPtr<Dom::CStripSpaceRules> rules = new Dom::CStripSpaceRules();
    rules->AddRule(nullptr, nullptr, 0, false);
    rules->SetAnyStrip(true);
    CEventFeeder feeder(rules);
    feeder.Start("r").Start("p").Attribute("xml:space", "preserve").Text(" ").Start("q").Attribute("xml:space", "default");
    feeder.Text(" ").End().Text(" ").End().Text(" ").Text("x").End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    EXPECT_EQ(Children(root), "e:p t: x");
    EXPECT_EQ(Children(FirstElement(root)), "t:  e:q t: ");
    EXPECT_EQ(Children(FirstElement(FirstElement(root))), "");
}

TEST(DocumentBuilder, StripSpaceRulesFollowPriorityAndSpecificity) {
    Dom::CStripSpaceRules rules;
    EXPECT_TRUE(rules.ShouldPreserve(u"", u"a"));
    EXPECT_TRUE(rules.AddRule(nullptr, nullptr, 1, false));
    EXPECT_FALSE(rules.ShouldPreserve(u"", u"a"));
    EXPECT_TRUE(rules.AddRule(u"urn:x", nullptr, 1, true));
    EXPECT_TRUE(rules.ShouldPreserve(u"urn:x", u"a"));
    EXPECT_TRUE(rules.AddRule(u"urn:x", u"b", 1, false));
    EXPECT_FALSE(rules.ShouldPreserve(u"urn:x", u"b"));
    // A lower priority loses but is no conflict; an equal one is a conflict and wins.
    EXPECT_TRUE(rules.AddRule(u"urn:x", u"b", 0, true));
    EXPECT_FALSE(rules.ShouldPreserve(u"urn:x", u"b"));
    EXPECT_FALSE(rules.AddRule(u"urn:x", u"b", 1, true));
    EXPECT_TRUE(rules.ShouldPreserve(u"urn:x", u"b"));
    EXPECT_TRUE(rules.AddRule(u"urn:x", u"b", 2, false));
    EXPECT_FALSE(rules.ShouldPreserve(u"urn:x", u"b"));
    for (int i = 0; i < 50; ++i) rules.AddRule(U(Numbered("urn:", i)).c_str(), u"n", 0, i % 2 == 0);
    for (int i = 0; i < 50; ++i) EXPECT_EQ(rules.ShouldPreserve(U(Numbered("urn:", i)), u"n"), i % 2 == 0);
}

TEST(DocumentBuilder, ElementWithManyAttributesMovesAndStaysContiguous) {
    CEventFeeder feeder;
    feeder.Start("r").Text("lead").Start("small").End();
    const int count = 2000;
    feeder.Start("big");
    for (int i = 0; i < count; ++i) feeder.Attribute(Numbered("a", i), std::to_string(i));
    feeder.Start("inner").End().End().Start("after").End().End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    EXPECT_EQ(Children(root), "t:lead e:small e:big e:after");
    CNode* big = root->GetFirstChild()->GetNextSibling()->GetNextSibling();
    ASSERT_EQ(big->GetAttributeCount(), count);
    for (int i = 0; i < count; ++i) {
        Dom::CAttr* attribute = big->GetAttributeAt(i);
        ASSERT_EQ(attribute, static_cast<CElement*>(big)->GetAttributeArray() + i);
        ASSERT_EQ(attribute->GetNodeName(), U(Numbered("a", i)));
        ASSERT_EQ(attribute->GetNodeValue(), U(std::to_string(i)));
        ASSERT_EQ(attribute->GetParentNode(), big);
    }
    EXPECT_EQ(big->GetPreviousSibling()->GetNextSibling(), big);
    EXPECT_EQ(big->GetNextSibling()->GetPreviousSibling(), big);
    EXPECT_EQ(big->GetFirstChild()->GetParentNode(), big);
}

TEST(DocumentBuilder, FirstChildThatMovesStaysTheFirstChild) {
    CEventFeeder feeder;
    feeder.Start("r");
    for (int i = 0; i < 500; ++i) feeder.Start("big").Attribute("a", "1").Attribute("b", "2").End();
    feeder.Start("only");
    for (int i = 0; i < 1000; ++i) feeder.Attribute(Numbered("x", i), "v");
    feeder.End().End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    CNode* only = root->GetLastChild();
    EXPECT_EQ(only->GetNodeName(), u"only");
    EXPECT_EQ(only->GetAttributeCount(), 1000);
    EXPECT_EQ(only->GetPreviousSibling()->GetNextSibling(), only);
    EXPECT_EQ(only->GetAttributeAt(999)->GetParentNode(), only);

    CEventFeeder alone;
    alone.Start("solo");
    for (int i = 0; i < 1000; ++i) alone.Attribute(Numbered("x", i), "v");
    alone.End();
    Dom::CDocument* document = alone.Finish();
    EXPECT_EQ(document->GetFirstChild(), document->GetLastChild());
    EXPECT_EQ(document->GetDocumentElement()->GetAttributeAt(500)->GetParentNode(), document->GetFirstChild());
}

TEST(DocumentBuilder, TextLongerThanAChunkStaysOneContiguousNode) {
    CEventFeeder feeder;
    feeder.Start("r").Text("small");
    feeder.Start("x").End();
    std::string piece(1000, 'a');
    std::string expected;
    for (int i = 0; i < 70; ++i) {
        piece[0] = static_cast<char>('A' + i % 26);
        feeder.Text(piece);
        expected += piece;
    }
    feeder.Comment(std::string(20000, 'c')).Pi("t", std::string(17000, 'p')).Text("tail").End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    CNode* big = root->GetFirstChild()->GetNextSibling()->GetNextSibling();
    EXPECT_EQ(big->GetTextView(), U(expected));
    EXPECT_EQ(big->GetNextSibling()->GetTextView().size(), 20000u);
    EXPECT_EQ(big->GetNextSibling()->GetNextSibling()->GetTextView().size(), 17000u);
    EXPECT_EQ(root->GetFirstChild()->GetTextView(), u"small");
    EXPECT_EQ(root->GetLastChild()->GetTextView(), u"tail");
}

TEST(DocumentBuilder, ManySmallNodesCrossChunkBoundaries) {
    CEventFeeder feeder;
    feeder.Start("r");
    // Short repeated values share their storage; long texts between them force new chunks.
    for (int i = 0; i < 20000; ++i) {
        feeder.Start("e").Attribute("n", std::to_string(i)).Attribute("k", Numbered("k", i % 5)).Text(std::to_string(i));
        if (i % 1000 == 0) feeder.Comment(std::string(9000, 'c'));
        feeder.End();
    }
    feeder.End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    int i = 0;
    uint32_t order = 0;
    for (CNode* child = root->GetFirstChild(); child; child = child->GetNextSibling(), ++i) {
        ASSERT_EQ(child->GetFirstChild()->GetNodeValue(), U(std::to_string(i)));
        ASSERT_EQ(static_cast<CElement*>(child)->GetAttribute(u"n"), U(std::to_string(i)));
        ASSERT_EQ(static_cast<CElement*>(child)->GetAttribute(u"k"), U(Numbered("k", i % 5)));
        ASSERT_GT(child->GetOrder(), order);
        order = child->GetOrder();
    }
    EXPECT_EQ(i, 20000);
}

// The builder's caches of recent names and short texts pick a slot from a value's length and a
// few of its units; values alike in those, or one the start of another, must stay apart.
TEST(DocumentBuilder, NamesAndTextsAlikeInTheirEdgesStayDistinct) {
    const char* names[] = {"axcd", "axcdg", "aycd", "azcd"};
    const char* values[] = {"1001", "1101", "", "aaabaaaaaaaaaaaa", "aaacaaaaaaaaaaaa", "ab", "absax"};
    const int valueCount = sizeof(values) / sizeof(values[0]);
    CEventFeeder feeder;
    feeder.Start("r");
    for (int i = 0; i < 40; ++i) {
        feeder.Start(names[i % 4]).Attribute(names[(i + 1) % 4], values[i % valueCount]);
        feeder.Text(values[(i + 3) % valueCount]).End();
    }
    feeder.End();
    CNode* child = feeder.Finish()->GetDocumentElement()->GetFirstChild();
    for (int i = 0; i < 40; ++i, child = child->GetNextSibling()) {
        ASSERT_EQ(child->GetNodeName(), U(names[i % 4])) << i;
        CNode* attribute = static_cast<CElement*>(child)->GetAttributeAt(0);
        ASSERT_EQ(attribute->GetNodeName(), U(names[(i + 1) % 4])) << i;
        ASSERT_EQ(attribute->GetNodeValue(), U(values[i % valueCount])) << i;
        const char* text = values[(i + 3) % valueCount];
        ASSERT_EQ(child->GetFirstChild() ? child->GetFirstChild()->GetNodeValue() : DomString(), U(text)) << i;
    }
}

// A large document takes its chunks from the arena after the first megabytes: chunks that grow
// there (many attributes, long texts) and chunks too large for it must keep their content.
TEST(DocumentBuilder, LargeDocumentKeepsContentWhereChunksGrowOrMove) {
    CEventFeeder feeder;
    feeder.Start("r");
    const int lead = 40000;
    for (int i = 0; i < lead; ++i) feeder.Start("e").Attribute("n", std::to_string(i)).Text(std::to_string(i)).End();
    feeder.Start("wide");
    for (int i = 0; i < 3000; ++i) feeder.Attribute(Numbered("a", i), std::to_string(i));
    feeder.End();
    std::string expected[2];
    for (int t = 0; t < 2; ++t) {
        feeder.Start("long");
        std::string piece(1000, 'a');
        for (int i = 0; i < (t == 0 ? 100 : 400); ++i) {
            piece[0] = static_cast<char>('A' + i % 26);
            feeder.Text(piece);
            expected[t] += piece;
        }
        feeder.End();
    }
    feeder.Start("last").Attribute("k", "v").End().End();
    CElement* root = feeder.Finish()->GetDocumentElement();
    CNode* child = root->GetFirstChild();
    for (int i = 0; i < lead; ++i, child = child->GetNextSibling()) {
        ASSERT_EQ(static_cast<CElement*>(child)->GetAttribute(u"n"), U(std::to_string(i)));
        ASSERT_EQ(child->GetFirstChild()->GetTextView(), U(std::to_string(i)));
    }
    ASSERT_EQ(child->GetNodeName(), u"wide");
    ASSERT_EQ(child->GetAttributeCount(), 3000);
    for (int i = 0; i < 3000; ++i) ASSERT_EQ(child->GetAttributeAt(i)->GetNodeValue(), U(std::to_string(i)));
    for (int t = 0; t < 2; ++t) {
        child = child->GetNextSibling();
        EXPECT_EQ(child->GetFirstChild()->GetTextView(), U(expected[t])) << t;
    }
    EXPECT_EQ(static_cast<CElement*>(child->GetNextSibling())->GetAttribute(u"k"), u"v");
    EXPECT_EQ(root->GetLastChild()->GetPreviousSibling(), child);
}

TEST(DocumentBuilder, KeepsDeclaredIdAttributesAndUnparsedEntities) {
    CEventFeeder feeder;
    TRefPtr<Sxp::IDtdHandler> dtd;
    feeder.Builder()->GetDtdHandler(dtd);
    dtd->AttributeDecl(u"item", u"key", u"ID", u"#IMPLIED", u"");
    dtd->AttributeDecl(u"item", u"name", u"CDATA", u"#IMPLIED", u"");
    dtd->UnparsedEntityDecl(u"pic", u"-//P//", u"pic.gif", u"gif");
    dtd->UnparsedEntityDecl(u"pic", u"", u"other.gif", u"gif");
    feeder.Start("list").Start("item").Attribute("key", "b").Attribute("name", "x").End();
    feeder.Start("item").Attribute("name", "y").Attribute("key", "a").End();
    feeder.Start("other").Attribute("key", "c").End();
    feeder.Start("item").Attribute("key", "a").End().End();
    Dom::CDocument* document = feeder.Finish();
    CElement* list = document->GetDocumentElement();
    CNode* first = list->GetFirstChild();
    CNode* second = first->GetNextSibling();
    DomString id;
    EXPECT_TRUE(document->GetElementId(first, id));
    EXPECT_EQ(id, u"b");
    EXPECT_FALSE(document->GetElementId(list, id));
    EXPECT_FALSE(document->GetElementId(second->GetNextSibling(), id));
    EXPECT_EQ(document->GetElementById(u"a"), second);
    EXPECT_EQ(document->GetElementById(u"b"), first);
    EXPECT_EQ(document->GetElementById(u"c"), nullptr);
    EXPECT_EQ(document->GetElementById(u"x"), nullptr);
    DomString systemId, publicId;
    EXPECT_TRUE(document->GetUnparsedEntity(u"pic", systemId, publicId));
    EXPECT_EQ(systemId, u"pic.gif");
    EXPECT_EQ(publicId, u"-//P//");
    EXPECT_FALSE(document->GetUnparsedEntity(u"none", systemId, publicId));
}

namespace {

class CRecordingListener : public Dom::IBuildListener {
public:
    void SetLocator(Sxp::ILocator*) override {}
    void NodeCreated(CNode* node, uint32_t) override { m_aCreated.push_back(node); }
    void NodeMoved(CNode* from, CNode* to) override {
        for (CNode*& node : m_aCreated) {
            if (node == from) node = to;
        }
    }
    std::vector<CNode*> m_aCreated;
};

}  // namespace

TEST(DocumentBuilder, ListenerSeesEveryNodeAndEveryMove) {
    TRefPtr<CRecordingListener> listener = new CRecordingListener();
    CEventFeeder feeder(nullptr, listener);
    feeder.Start("r").Attribute("xmlns:p", "u").Attribute("a", "1").Text("t").Comment("c").Pi("p", "d");
    feeder.Start("big");
    for (int i = 0; i < 600; ++i) feeder.Attribute(Numbered("x", i), "v");
    feeder.End().End();
    Dom::CDocument* document = feeder.Finish();
    std::vector<CNode*> expected = {document, document->GetDocumentElement(), document->GetDocumentElement()->GetAttributeAt(0)};
    for (CNode* child = document->GetDocumentElement()->GetFirstChild(); child; child = child->GetNextSibling()) {
        expected.push_back(child);
        for (int i = 0; i < child->GetAttributeCount(); ++i) expected.push_back(child->GetAttributeAt(i));
    }
    EXPECT_EQ(listener->m_aCreated, expected);
}

// Texts this long get blocks of their own, which the allocator may place far from the node
// records; a record too far from its data to reach it by offset takes a copy of it.
TEST(DocumentBuilder, RecordsReachTextsInBlocksOfTheirOwn) {
    TRefPtr<CRecordingListener> listener = new CRecordingListener();
    CEventFeeder feeder(nullptr, listener);
    std::string text(300000, 't');
    std::string comment(300000, 'c');
    feeder.Start("r").Text("a").Start("e").End().Text(text).Comment(comment).Comment("d").End();
    Dom::CDocument* document = feeder.Finish();
    CNode* root = document->GetDocumentElement();
    CNode* longText = root->GetFirstChild()->GetNextSibling()->GetNextSibling();
    CNode* longComment = longText->GetNextSibling();
    EXPECT_EQ(longText->GetTextView(), U(text));
    EXPECT_EQ(longComment->GetTextView(), U(comment));
    EXPECT_EQ(longComment->GetPreviousSibling(), longText);
    EXPECT_EQ(longComment->GetNextSibling()->GetPreviousSibling(), longComment);
    EXPECT_EQ(root->GetLastChild()->GetTextView(), u"d");
    std::vector<CNode*> expected = {document, root};
    for (CNode* child = root->GetFirstChild(); child; child = child->GetNextSibling()) expected.push_back(child);
    EXPECT_EQ(listener->m_aCreated, expected);
}

TEST(DocumentBuilder, RefusesWhatIsNotADocument) {
    CEventFeeder feeder;
    feeder.Start("r").End();
    CNode* element = feeder.Finish()->GetDocumentElement();
    TRefPtr<Dom::CDocumentBuilder> builder;
    EXPECT_EQ(DomErrorCode([&] { Dom::CDocumentBuilder::Create(element, nullptr, nullptr, builder); }), 9);
    EXPECT_EQ(DomErrorCode([&] { Dom::CDocumentBuilder::Create(nullptr, nullptr, nullptr, builder); }), 9);
}

TEST(DocumentBuilder, RefusesEventsOutOfPlace) {
    CEventFeeder unbalanced;
    EXPECT_EQ(DomErrorCode([&] { unbalanced.End(); }), 3);
    CEventFeeder late;
    late.Start("r").Text("x");
    EXPECT_EQ(DomErrorCode([&] { late.Attribute("a", "1"); }), 3);
}

TEST(DocumentBuilder, BuildsFragmentsThatKeepTheirDocumentAlive) {
    TRefPtr<Dom::CDocumentFactory> factory = new Dom::CDocumentFactory(3);
    Dom::TNodeRef fragment;
    factory->CreateFragment(fragment);
    {
        TRefPtr<Dom::CDocumentBuilder> builder;
        Dom::CDocumentBuilder::CreateForFragment(fragment, nullptr, nullptr, builder);
        builder->StartDocument();
        builder->Characters(u"a", 1);
        builder->StartElement(u"e");
        builder->EndElement();
        builder->Characters(u"b", 1);
        builder->EndDocument();
        EXPECT_EQ(DomErrorCode([&] { Dom::CDocumentBuilder::CreateForFragment(fragment->GetOwnerDocument(), nullptr, nullptr, builder); }), 9);
    }
    EXPECT_EQ(fragment->GetNodeType(), Dom::DOCUMENT_FRAGMENT_NODE);
    EXPECT_EQ(fragment->GetNodeName(), u"#document-fragment");
    EXPECT_EQ(fragment->GetStringValue(), u"ab");
    EXPECT_EQ(Children(fragment), "t:a e:e t:b");
    EXPECT_EQ(fragment->GetFirstChild()->GetNextSibling()->GetParentNode(), fragment.Get());
    EXPECT_EQ(fragment->GetDocumentNumber(), 0x3000001u);
    fragment = nullptr;  // frees the fragment and, with it, its document
}
