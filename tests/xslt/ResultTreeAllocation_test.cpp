// A start tag allocates nothing once the result tree is warmed up: attributes, collected text
// and namespace maps are reused. Counts the allocations of this test program to show it.
#include <gtest/gtest.h>

#include "tests/AllocationCounting.h"
#include "xslt/private/MessageSink.h"
#include "xslt/private/ResultTree.h"

namespace {

using XsltPrivate::CResultTree;

// Every element binds or generates namespaces of its own, and has repeated attributes.
void WriteDocument(CResultTree& tree) {
    tree.StartDocument();
    tree.StartElement(u"root", u"urn:root");
    for (int i = 0; i < 50; ++i) {
        tree.StartElement(u"p:item", i % 2 ? u"urn:odd" : u"urn:even");
        tree.StartNamespace(u"p");
        tree.Characters(u"urn:p", 5, false);
        tree.EndNamespace();
        for (const char16_t* name : {u"a", u"b", u"a"}) {
            tree.StartAttribute(name, u"urn:attribute");
            tree.Characters(u"value", 5, false);
            tree.EndAttribute();
        }
        tree.StartElement(u"inner", u"");
        tree.Characters(u"text", 4, false);
        tree.EndElement();
        tree.EndElement();
    }
    tree.EndElement();
    tree.EndDocument();
}

TEST(ResultTreeAllocationTest, StartTagsAllocateNothingAfterWarmUp) {
    TRefPtr<XsltPrivate::CStringSink> sink(new XsltPrivate::CStringSink);
    TRefPtr<CResultTree> tree(new CResultTree(sink));
    long start = AllocationCounting::Count();
    WriteDocument(*tree);
    EXPECT_GT(AllocationCounting::Count() - start, 0) << "the count must see the warm-up";
    long before = AllocationCounting::Count();
    WriteDocument(*tree);
    EXPECT_EQ(AllocationCounting::Count() - before, 0);
}

}  // namespace
