// A start tag allocates nothing once the result tree is warmed up: attributes, collected text
// and namespace maps are reused. Counts the allocations of this test program to show it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "core/SmallBlocks.h"
#include "xslt/private/MessageSink.h"
#include "xslt/private/ResultTree.h"

namespace {
long g_nAllocations = 0;
}

void* operator new(std::size_t size) {
    ++g_nAllocations;
    if (void* p = std::malloc(size ? size : 1)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
// The other replaceable forms, so that every allocation of the program pairs with free().
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size ? size : 1); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size ? size : 1); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { std::free(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { std::free(p); }

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

// Every allocation, including small blocks handed out again from the free lists.
long Allocations() { return g_nAllocations + Core::CSmallBlocks::GetReuseCount(); }

TEST(ResultTreeAllocationTest, StartTagsAllocateNothingAfterWarmUp) {
    TRefPtr<XsltPrivate::CStringSink> sink(new XsltPrivate::CStringSink);
    TRefPtr<CResultTree> tree(new CResultTree(sink));
    long start = Allocations();
    WriteDocument(*tree);
    EXPECT_GT(Allocations() - start, 0) << "the count must see the warm-up";
    long before = Allocations();
    WriteDocument(*tree);
    EXPECT_EQ(Allocations() - before, 0);
}

}  // namespace
