// Streaming paths walk large documents without allocating per node. This program replaces
// the global operator new to count allocations while a walk runs.
#include "XpathTestSupport.h"
#include "tests/AllocationCounting.h"

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
    long before = AllocationCounting::Count();
    {
        TRefPtr<Xpath::CValue> value;
        tree->Evaluate(value, evaluator.m_pContext);
        TRefPtr<Xpath::CNodeIterator> iterator;
        value->GetNodeSet()->CreateIterator(iterator);
        for (nodes = 0; iterator->Current(); iterator->Next()) ++nodes;
    }
    return AllocationCounting::Count() - before;
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
