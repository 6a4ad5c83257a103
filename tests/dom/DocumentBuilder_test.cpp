// Building trees from events: structure, names, namespaces, text joining and stripping.
#include <gtest/gtest.h>

#include "dom/NamespaceScope.h"
#include "tests/dom/DomTestSupport.h"

using namespace DomTest;
using Dom::CElement;
using Dom::CNode;

TEST(DocumentBuilder, BuildsNestedElementsWithTextInDocumentOrder) {
    CEventFeeder feeder;
    feeder.Start("a").Attribute("x", "1").Start("b").Text("hi").End().Comment("c").Pi("t", "d").End();
    Dom::CDocument* document = feeder.Finish();
    CElement* root = document->GetDocumentElement();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->GetNodeName(), u"a");
    EXPECT_EQ(root->GetAttribute(u"x"), u"1");
    CNode* b = root->GetFirstChild();
    EXPECT_EQ(b->GetNodeName(), u"b");
    EXPECT_EQ(b->GetStringValue(), u"hi");
    EXPECT_EQ(root->GetStringValue(), u"hicd");
    EXPECT_EQ(b->GetParentNode(), root);
    EXPECT_EQ(root->GetParentNode(), document);
    EXPECT_EQ(root->GetLastChild()->GetNodeName(), u"t");
    EXPECT_LT(root->GetOrder(), root->GetAttributeAt(0)->GetOrder());
    EXPECT_LT(root->GetAttributeAt(0)->GetOrder(), b->GetOrder());
}
