// Streaming paths walk large documents without allocating per node. This program replaces
// the global operator new to count allocations while a walk runs.
#include <cstdlib>
#include <new>

#include "XpathTestSupport.h"
#include "core/SmallBlocks.h"

namespace {
bool g_bCounting = false;
long g_nAllocations = 0;
}  // namespace

#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

void* operator new(std::size_t size) {
    if (g_bCounting) ++g_nAllocations;
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

using namespace XpathTest;

std::string Items(int count) {
    std::string markup = "<r>";
    for (int i = 0; i < count; ++i)
        markup += "<item k=\"" + std::to_string(i % 7) + "\"><name>n</name><sub><leaf/><leaf/></sub></item>";
    return markup + "</r>";
}

// Allocations made while evaluating and fully walking the expression.
long CountWalkAllocations(const std::string& markup, const std::string& expression, int& nodes) {
    CEvaluator evaluator(markup);
    Xpath::CParser parser;
    TRefPtr<Xpath::CExpression> tree;
    parser.Parse(tree, U(expression));
    g_nAllocations = 0;
    long reusedBefore = Core::CSmallBlocks::GetReuseCount();
    g_bCounting = true;
    {
        TRefPtr<Xpath::CValue> value;
        tree->Evaluate(value, evaluator.m_pContext);
        TRefPtr<Xpath::CNodeIterator> iterator;
        value->GetNodeSet()->CreateIterator(iterator);
        for (nodes = 0; iterator->Current(); iterator->Next()) ++nodes;
    }
    g_bCounting = false;
    return g_nAllocations + Core::CSmallBlocks::GetReuseCount() - reusedBefore;
}

TEST(Allocation, StreamingPathsAllocateNothingPerNode) {
    for (const char* expression : {"/r/item/name", "/r/item/sub/leaf", "/r/item/descendant::leaf", "/r/*/@k",
                                   "/r/item/sub/leaf[2]", "/r/item/self::item/name/text()",
                                   "//leaf", "/r//name"}) {
        int smallNodes = 0, largeNodes = 0;
        long small = CountWalkAllocations(Items(100), expression, smallNodes);
        long large = CountWalkAllocations(Items(5000), expression, largeNodes);
        EXPECT_GT(largeNodes, smallNodes) << expression;
        EXPECT_EQ(small, large) << expression;
        EXPECT_LT(large, 40) << expression;
    }
}

}  // namespace
