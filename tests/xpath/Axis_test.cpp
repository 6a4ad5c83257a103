// The thirteen axes from elements, attributes and the document, with their settled
// following and preceding behaviour, and the node tests with late prefix resolution.
#include "XpathTestSupport.h"
#include "xpath/Axis.h"
#include "xpath/NodeTest.h"

namespace {

using namespace XpathTest;

const char* kTree = "<r><a><a1/><a2>t</a2></a><b x=\"1\" y=\"2\"><b1/><!--c--><?p d?>u<b2/></b><c><c1/></c></r>";

// The bare axis sets, as a step sees them before any path sorts them.
TEST(Axis, EachAxisFromAnElementInIterationOrder) {
    CEvaluator evaluator(kTree);
    evaluator.MoveTo("/r/b");
    const char* rows[] = {
        /* child */ "b1 #comment ?p 'u' b2",
        /* descendant */ "b1 #comment ?p 'u' b2",
        /* parent */ "r",
        /* ancestor */ "r /",
        /* following-sibling */ "c",
        /* preceding-sibling */ "a",
        /* following */ "b1 #comment ?p 'u' b2 c c1",
        /* preceding */ "'t' a2 a1 a r /",
        /* attribute */ "@x @y",
        /* namespace */ "ns: ns:xml",
        /* self */ "b",
        /* descendant-or-self */ "b b1 #comment ?p 'u' b2",
        /* ancestor-or-self */ "b r /",
    };
    for (int kind = 0; kind < Xpath::AxisKindCount; ++kind) {
        TRefPtr<Xpath::CAxis> axis;
        Xpath::CAxis::Create(axis, kind);
        TRefPtr<Xpath::CNodeSet> set;
        axis->GetNodeSet(set, evaluator.m_pContext->GetNode());
        TRefPtr<Xpath::CNodeIterator> iterator;
        set->CreateIterator(iterator);
        std::string walk;
        int expectedPosition = 1;
        for (; iterator->Current(); iterator->Next(), ++expectedPosition) {
            EXPECT_EQ(iterator->GetPosition(), expectedPosition) << kind;
            walk += (walk.empty() ? "" : " ") + Describe(iterator->Current());
        }
        EXPECT_EQ(iterator->GetPosition(), 0);
        EXPECT_EQ(walk, rows[kind]) << kind;
        EXPECT_EQ(set->GetLength(), expectedPosition - 1) << kind;
    }
}

TEST(Axis, PathsOverReverseAxesAreSortedIntoDocumentOrder) {
    CEvaluator evaluator(kTree);
    EXPECT_EQ(evaluator.Nodes("/r/b/b2/ancestor::*"), "r b");
    EXPECT_EQ(evaluator.Nodes("/r/c/preceding::*"), "r a a1 a2 b b1 b2");
    EXPECT_EQ(evaluator.Nodes("/r/b/b2/ancestor-or-self::*"), "r b b2");
    EXPECT_EQ(evaluator.String("name(/r/b/b2/ancestor::*[1])"), "b");
    EXPECT_EQ(evaluator.String("name(/r/c/preceding-sibling::*[1])"), "b");
    EXPECT_EQ(evaluator.String("name(/r/c/preceding::node()[1])"), "b2");
    EXPECT_EQ(evaluator.String("name(/r/c/c1/preceding::node()[1])"), "c");
}

TEST(Axis, AxesFromAttributesAndTheDocument) {
    CEvaluator evaluator(kTree);
    const char* rows[][2] = {
        {"/parent::node()", ""},
        {"/r/ancestor::node()", "/"},
        {"/r/b/@y/parent::*", "b"},
        {"/r/b/@y/ancestor-or-self::*", "r b @y"},
        {"/r/b/@y/self::*", "@y"},
        {"/r/b/@y/following-sibling::node()", ""},
        {"/r/b/@y/child::node()", ""},
        {"/r/b/@x/following::*", "c c1"},
        {"/r/b/@x/preceding::*", "r a a1 a2 b"},
        {"/r/b/@x/attribute::node()", ""},
        {"/r/b/@x/namespace::node()", ""},
        {"/descendant-or-self::node()[self::r or self::a]", "r a"},
        {"//comment()", "#comment"},
        {"/r/b/text()", "'u'"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.Nodes(row[0]), row[1]) << row[0];
}

TEST(Axis, ReverseFlagsFollowTheSettledTable) {
    CEvaluator evaluator(kTree);
    Dom::CNode* node = evaluator.m_pContext->GetNode();
    std::string reverse;
    for (int kind = 0; kind < Xpath::AxisKindCount; ++kind) {
        TRefPtr<Xpath::CAxis> axis;
        Xpath::CAxis::Create(axis, kind);
        ASSERT_TRUE(axis);
        EXPECT_EQ(axis->GetKind(), kind);
        TRefPtr<Xpath::CNodeSet> set;
        axis->GetNodeSet(set, node);
        EXPECT_NE(set->IsDocumentOrder(), set->IsReverseDocumentOrder());
        if (set->IsReverseDocumentOrder()) reverse += std::to_string(kind) + " ";
    }
    EXPECT_EQ(reverse, "5 7 12 ");
}

// A step with a test walks and counts its axis with the test folded in; what it gives must be
// the bare axis filtered node by node, positions and sizes included, from every kind of origin.
TEST(Axis, TestedWalksAndCountsAgreeWithTheFilteredAxis) {
    CEvaluator evaluator(
        "<r xmlns:p=\"urn:p\"><p:a x=\"1\" p:y=\"2\"><b/>t<![CDATA[cd]]></p:a><!--c--><?p d?><?q e?>"
        "<b><b><p:b/></b>u</b></r>");
    TRefPtr<Xpath::CNodeTest> tests[] = {
        new Xpath::CAnyNameTest(),
        new Xpath::CNameTest(u"", u"b"),
        new Xpath::CNameTest(u"p", u"y"),
        new Xpath::CNamespaceTest(u"p"),
        new Xpath::CTextTest(),
        new Xpath::CCommentTest(),
        new Xpath::CProcessingInstructionTest(),
        new Xpath::CProcessingInstructionTest(u"q"),
    };
    for (const char* origin : {"/", "/r", "/r/p:a", "/r/p:a/@p:y", "/r/b/b", "/r/b/text()"}) {
        evaluator.MoveTo(origin);
        Dom::CNode* node = evaluator.m_pContext->GetNode();
        for (int kind = 0; kind < Xpath::AxisKindCount; ++kind) {
            TRefPtr<Xpath::CAxis> axis;
            Xpath::CAxis::Create(axis, kind);
            for (const TRefPtr<Xpath::CNodeTest>& test : tests) {
                TRefPtr<Xpath::CNodeSet> bare;
                axis->GetNodeSet(bare, node);
                std::string expected;
                int32_t bareCount = 0, expectedCount = 0;
                TRefPtr<Xpath::CNodeIterator> iterator;
                for (bare->CreateIterator(iterator); iterator->Current(); iterator->Next()) {
                    ++bareCount;
                    if (!test->Matches(evaluator.m_pContext, iterator->Current())) continue;
                    expected += " " + std::to_string(++expectedCount) + Describe(iterator->Current());
                }
                TRefPtr<Xpath::CNodeSet> tested(new Xpath::CTestFilterNodeSet(evaluator.m_pContext, bare, test));
                std::string walked;
                for (tested->CreateIterator(iterator); iterator->Current(); iterator->Next())
                    walked += " " + std::to_string(iterator->GetPosition()) + Describe(iterator->Current());
                std::string where = std::string(origin) + " axis " + std::to_string(kind) + " test " +
                                    std::to_string(test->GetKind());
                EXPECT_EQ(walked, expected) << where;
                EXPECT_EQ(tested->GetLength(), expectedCount) << where;
                EXPECT_EQ(bare->GetLength(), bareCount) << where;
            }
        }
    }
}

TEST(NodeTest, TypesAndNames) {
    CEvaluator evaluator(
        "<r xmlns:p=\"urn:p\" xmlns:z=\"urn:p\"><p:a/><z:a/><a/><p:b/><![CDATA[cd]]>"
        "<?x 1?><?X 2?><?  3?>t</r>");
    const char* rows[][2] = {
        {"/r/node()", "p:a z:a a p:b 'cd' ?x ?X ? 't'"},
        {"/r/*", "p:a z:a a p:b"},
        {"/r/p:a", "p:a z:a"},
        {"/r/a", "a"},
        {"/r/p:*", "p:a z:a p:b"},
        {"/r/q:*", ""},
        {"/r/text()", "'cd' 't'"},
        {"/r/processing-instruction()", "?x ?X ?"},
        {"/r/processing-instruction('x')", "?x"},
        {"/r/processing-instruction('')", "?"},
        {"/r/namespace::p", "ns:p"},
        {"/r/namespace::xml", "ns:xml"},
        {"/r/@*", ""},
        {"//self::*", "r p:a z:a a p:b"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.Nodes(row[0]), row[1]) << row[0];
}

TEST(NodeTest, NamesOfEqualLengthAndPrefixedNamesAreToldApart) {
    CEvaluator evaluator(
        "<r xmlns:p=\"urn:p\"><ab/><ba/><p:ab/><abc p:ab=\"1\" ab=\"2\" ba=\"3\"/><p:abc/></r>");
    const char* rows[][2] = {
        {"/r/ab", "ab"},
        {"/r/ba", "ba"},
        {"/r/p:ab", "p:ab"},
        {"/r/abc", "abc"},
        {"/r/p:abc", "p:abc"},
        {"/r/*/@ab", "@ab"},
        {"/r/*/@p:ab", "@p:ab"},
        {"/r/*/@ba", "@ba"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.Nodes(row[0]), row[1]) << row[0];
}

TEST(NodeTest, UnknownPrefixFailsOnlyWhenANodeIsTested) {
    CEvaluator evaluator("<r><e/><bar/></r>");
    EXPECT_EQ(evaluator.Failure("/r/e/foo:*"), "");
    EXPECT_EQ(evaluator.Failure("/r/foo:*"), "Prefix 'foo' not found in expression context");
    EXPECT_EQ(evaluator.Failure("/r/foo:nothing"), "");
    EXPECT_EQ(evaluator.Failure("/r/foo:bar"), "Prefix 'foo' not found in expression context");
    EXPECT_EQ(evaluator.Failure("/r/e[foo:bar]"), "");
}

}  // namespace
