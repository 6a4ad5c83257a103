// Expressions evaluated against small documents: arithmetic and its printing, conversions,
// comparisons with node-sets on either side, variables, late name resolution, and the
// streaming and collecting path walks.
#include "XpathTestSupport.h"

namespace {

using namespace XpathTest;

const char* kBooks =
    "<lib><book id=\"b1\" year=\"1990\"><title>Alpha</title><price>10</price></book>"
    "<book id=\"b2\" year=\"2001\"><title>Beta</title><price>25.5</price></book>"
    "<book id=\"b3\"><title>Gamma</title><price>x</price></book><!--note--><?pi data?></lib>";

TEST(Evaluation, ArithmeticAndItsPrinting) {
    CEvaluator evaluator("<r/>");
    const char* rows[][2] = {
        {"1 div 0", "Infinity"},  {"-1 div 0", "-Infinity"}, {"0 div 0", "NaN"},   {"1 div (-0)", "-Infinity"},
        {"-0", "0"},              {"1000000 * 1000000", "1000000000000"},            {"0.1 + 0.2", "0.3"},
        {"1 div 3", "0.333333"},  {"2.5", "2.5"},           {"- - 1", "1"},          {"--1", "1"},
        {"7 mod -3", "1"},        {"-7 mod 3", "-1"},       {"2 * 3 + 4 div 8", "6.5"}, {"1 - -1", "2"},
        {"'3' + true()", "4"},    {"'x' + 1", "NaN"},       {"5 mod 0", "NaN"},      {"1 = 1 = 1", "true"},
        {"3 > 2 > 1", "false"},   {"1 or $undefined", "true"}, {"0 and $undefined", "false"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
}

TEST(Evaluation, ConversionsBetweenTheFourTypes) {
    CEvaluator evaluator(kBooks);
    const char* rows[][2] = {
        {"string(true())", "true"},        {"string(1 = 2)", "false"},    {"number(true())", "1"},
        {"number('  -4.50 ')", "-4.5"},    {"number('')", "NaN"},         {"number('+1')", "NaN"},
        {"boolean('')", "false"},          {"boolean('false')", "true"},  {"boolean(0 div 0)", "false"},
        {"boolean(-0)", "false"},          {"boolean(//nothing)", "false"}, {"boolean(//book)", "true"},
        {"string(//book)", "Alpha10"},     {"string(//nothing)", ""},     {"number(//price)", "10"},
        {"string(/)", "Alpha10Beta25.5Gammaxnotedata"}, {"//price + 1", "11"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
}

TEST(Evaluation, ComparisonsWithNodeSets) {
    CEvaluator evaluator(kBooks);
    const char* rows[][2] = {
        {"//title = 'Beta'", "true"},       {"//title != 'Beta'", "true"},    {"//title = 'Delta'", "false"},
        {"'Beta' = //title", "true"},       {"//price > 20", "true"},         {"20 < //price", "true"},
        {"//price > 30", "false"},          {"30 > //price", "true"},         {"//price = 25.5", "true"},
        {"//price < '11'", "true"},         {"//nothing = false()", "true"},  {"//nothing != true()", "true"},
        {"false() = //nothing", "true"},    {"//book = true()", "true"},      {"//nothing = //book", "false"},
        {"//nothing != //book", "false"},   {"//title = //book/title", "true"}, {"//@year < //price", "false"},
        {"//price <= //@year", "true"},     {"//@id = 'b3'", "true"},         {"//nothing = ''", "false"},
        {"//book[3]/price = //book[3]/price", "true"}, {"//book[3]/price >= //book[3]/price", "false"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
}

TEST(Evaluation, ScalarComparisonsFollowTheTypeOrder) {
    CEvaluator evaluator("<r/>");
    const char* rows[][2] = {
        {"true() = 'x'", "true"},  {"false() = ''", "true"}, {"1 = '1.0'", "true"},   {"'1' = '1.0'", "false"},
        {"true() = 2", "true"},    {"'b' > 'a'", "false"},   {"'2' > '10'", "false"}, {"0 div 0 != 0 div 0", "true"},
        {"'abc' = 'abc'", "true"}, {"'' != ''", "false"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
}

TEST(Evaluation, VariablesAndPrefixesResolveAtEachEvaluation) {
    CEvaluator evaluator(kBooks);
    evaluator.m_pVariables->m_aValues[u"|n"] = new Xpath::CNumberValue(3);
    evaluator.m_pVariables->m_aValues[u"urn:p|n"] = new Xpath::CStringValue(u"pn");
    EXPECT_EQ(evaluator.String("$n * 2"), "6");
    EXPECT_EQ(evaluator.String("$p:n"), "pn");
    EXPECT_EQ(evaluator.Failure("$m"), "Variable ':m' (namespace ) not bound in expression context");
    EXPECT_EQ(evaluator.Failure("$q:n"), "Variable 'q:n' (namespace urn:q) not bound in expression context");
    EXPECT_EQ(evaluator.Failure("$x:n"), "Prefix 'x' not found in expression context");
    EXPECT_EQ(evaluator.Failure("p:f(1)"), "Function 'p:f' (namespace urn:p) not found in expression context");
    EXPECT_EQ(evaluator.Failure("nosuch()"), "Function ':nosuch' (namespace ) not found in expression context");
    EXPECT_EQ(evaluator.Failure("x:f()"), "Prefix 'x' not found in expression context");
    EXPECT_EQ(evaluator.String("true() or $undefined"), "true");
}

TEST(Evaluation, NonNodeSetsWherePathsNeedOneFailCleanly) {
    CEvaluator evaluator(kBooks);
    const std::string message = "Expression does not evaluate to a node-set";
    for (const char* expression : {"(1 | 2)", "'a'/b", "(1)[1]", "string(1)[1]", "$n/a"}) {
        evaluator.m_pVariables->m_aValues[u"|n"] = new Xpath::CNumberValue(3);
        EXPECT_EQ(evaluator.Failure(expression), message) << expression;
    }
}

TEST(Evaluation, FailedExpressionThrowsOnlyWhenReached) {
    Xpath::CParser parser;
    TRefPtr<Xpath::CExpression> tree;
    Xpath::CXpathException* failure = nullptr;
    try {
        parser.Parse(tree, u"a b");
    } catch (Xpath::CXpathException* caught) {
        failure = caught;
    }
    ASSERT_NE(failure, nullptr);
    TRefPtr<Xpath::CExpression> failed(new Xpath::CFailedExpr(failure));
    CEvaluator evaluator("<r/>");
    for (int i = 0; i < 2; ++i) {
        TRefPtr<Xpath::CValue> value;
        try {
            failed->Evaluate(value, evaluator.m_pContext);
            ADD_FAILURE();
        } catch (Xpath::CXpathException* thrown) {
            DomString message;
            thrown->GetMessage(message);
            EXPECT_EQ(message, u"Invalid operator name: 'b'");
            delete thrown;
        }
    }
}

TEST(Evaluation, PathsDeliverDocumentOrderWithoutDuplicates) {
    CEvaluator evaluator("<r><a><b/><b/></a><a><b/><c/></a></r>");
    const char* rows[][2] = {
        {"//b/..", "a a"},
        {"//b/ancestor::*", "r a a"},
        {"/r/a/b | /r/a", "a b b a b"},
        {"//c | //a | //b", "a b b a b c"},
        {"//a[1]", "a"},
        {"//b[1]", "b b"},
        {"(//b)[1]/..", "a"},
        {"//*[last()]", "r b a c"},
        {"/r/a/*[position() = last()]", "b c"},
        {"//a/following::*", "b b a b c"},
        {"/", "/"},
        {"/r/a[2]/b/following-sibling::node()", "c"},
        {"/r/a[2]/c/preceding-sibling::*", "b"},
        {"/descendant::b[2]", "b"},
        {"/r/a[b][2]/*", "b c"},
        {"/r/self::r/a/self::a", "a a"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.Nodes(row[0]), row[1]) << row[0];
    EXPECT_EQ(evaluator.String("count(//b[1])"), "2");
    EXPECT_EQ(evaluator.String("count((//b)[1])"), "1");
}

// A union of a node's attributes and its children or descendants comes out attributes first,
// in whichever order the operands are written, with positions counted across both.
TEST(Evaluation, AttributeAndChildUnionsKeepDocumentOrder) {
    CEvaluator evaluator("<r><a x=\"1\" y=\"2\"><b/>t<c z=\"3\"/></a><d/></r>");
    evaluator.MoveTo("/r/a");
    const char* rows[][2] = {
        {"@*|node()", "@x @y b 't' c"},
        {"node() | @*", "@x @y b 't' c"},
        {"*[1] | @y", "@y b"},
        {"descendant::* | @*", "@x @y b c"},
        {"(node()|@*)[4]", "'t'"},
        {"c/@z | @*", "@x @y @z"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.Nodes(row[0]), row[1]) << row[0];
    EXPECT_EQ(evaluator.String("count(@*|node())"), "5");
    evaluator.MoveTo("/r/a/@x");
    EXPECT_EQ(evaluator.Nodes("@*|node()"), "");
}

// A descendant shortcut for `//x[p]` must not change what positional predicates select.
TEST(Evaluation, DoubleSlashKeepsPositionsPerParent) {
    CEvaluator evaluator("<r><a n=\"1\"><a n=\"2\"/><a n=\"3\"/></a><b><a n=\"4\"/></b></r>");
    evaluator.m_pVariables->m_aValues[u"|one"] = new Xpath::CNumberValue(1);
    const char* rows[][2] = {
        {"string(//a[1][last()]/@n)", "1"},
        {"count(//a[1])", "3"},
        {"count(//a[position() = 1])", "3"},
        {"count(//a[$one])", "3"},
        {"count(//a[last()])", "3"},
        {"count(//a[count(../a) = 1 or true()][1])", "3"},
        {"count(//a[string(@n)])", "4"},
        {"count(//a[@n > 1])", "3"},
        {"count(//a[number(@n) > 1][1])", "2"},
        {"count(/r//a)", "4"},
        {"count(//a//a)", "2"},
        {"count(//a/a)", "2"},
        {"count(//*/a[not(position() = 1)])", "1"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
}

// count() of a streaming path adds up the sets of its last step, each counted without
// iterating; levels that turn out empty contribute nothing.
TEST(Evaluation, CountsOfStreamingPathsMatchTheirNodes) {
    CEvaluator evaluator("<r><a><a1/><a2>t</a2></a><b x=\"1\"><b1/><!--c-->u<b2 y=\"2\"/></b><c/><d>v</d></r>");
    const char* rows[] = {
        "//*", "//node()", "/descendant-or-self::node()", "//text()", "/r/*/*", "/r/*/node()", "/r/*/*/node()",
        "/r/*/*/*", "/r/*/@*", "/r/*/*/@*", "/r/*[2]/node()", "/r/*/self::b/*", "/r/*/text()", "/r/c/*",
        "/r/*/descendant::*", "/r/*/descendant-or-self::node()", "/r/*/*[1]", "/r/*/namespace::*",
    };
    for (const char* path : rows) {
        TRefPtr<Xpath::CValue> value = evaluator.Evaluate(path);
        int32_t walked = 0;
        TRefPtr<Xpath::CNodeIterator> iterator;
        for (value->GetNodeSet()->CreateIterator(iterator); iterator->Current(); iterator->Next()) ++walked;
        EXPECT_EQ(evaluator.String(std::string("count(") + path + ")"), std::to_string(walked)) << path;
    }
    EXPECT_EQ(evaluator.String("count(//*)"), "9");
    evaluator.MoveTo("/r/b");
    EXPECT_EQ(evaluator.String("count(*/@*) + count(descendant::node())"), "5");
}

// Counting must not evaluate a predicate twice for a node: an extension could see it.
TEST(Evaluation, CountingEvaluatesEachPredicateOnce) {
    class CCountingVariables : public CTestVariables {
    public:
        void GetVariable(TRefPtr<Xpath::CValue>& value, const DomString& uri, const DomString& local) override {
            ++m_nLookups;
            CTestVariables::GetVariable(value, uri, local);
        }
        int m_nLookups = 0;
    };
    CEvaluator evaluator("<r><a><b/><b/></a><a/><a><b/></a></r>");
    TRefPtr<CCountingVariables> variables(new CCountingVariables());
    variables->m_aValues[u"|yes"] = new Xpath::CBooleanValue(true);
    evaluator.m_pVariables = variables.Get();
    evaluator.SetContextNode(evaluator.m_document);
    const char* rows[][3] = {
        {"count(/r/a/b[$yes])", "3", "3"},
        {"count(/r/a[$yes])", "3", "3"},
        {"count(//b[$yes])", "3", "3"},
        {"count(/r/a[$yes]/b[$yes])", "3", "6"},
    };
    for (auto& row : rows) {
        variables->m_nLookups = 0;
        EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
        EXPECT_EQ(std::to_string(variables->m_nLookups), row[2]) << row[0];
    }
}

TEST(Evaluation, PredicatePositionsFollowTheInnerIteration) {
    CEvaluator evaluator("<r><a n=\"1\"/><a n=\"2\"/><a n=\"3\"/><a n=\"4\"/></r>");
    evaluator.MoveTo("/r/a[4]");
    const char* rows[][2] = {
        {"preceding-sibling::*[1]/@n", "3"},
        {"preceding-sibling::*[last()]/@n", "1"},
        {"ancestor::*[1]", ""},
        {"string(../a[position() > 1][1]/@n)", "2"},
        {"count(../a[position() mod 2 = 0])", "2"},
        {"../a[@n > 1][2]/@n", "3"},
        {"../a[1.5]/@n", ""},
        {"../a[3][1]/@n", "3"},
        {"../a[number(@n)][1]/@n", "1"},
        {"../a[last()][last()]/@n", "4"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
}

TEST(Evaluation, LongPathsAndUnionsWalkWithoutRecursion) {
    CEvaluator evaluator("<r><a><a/></a></r>");
    std::string streaming = "/r", collecting = "/r/a", alternatives = "/r";
    for (int i = 0; i < 20000; ++i) {
        streaming += "/self::r";
        collecting += "/a/..";
        alternatives += " | /r";
    }
    EXPECT_EQ(evaluator.Nodes(streaming), "r");
    EXPECT_EQ(evaluator.Nodes(collecting), "a");
    EXPECT_EQ(evaluator.Nodes(alternatives), "r");
}

TEST(Evaluation, NodeSetsIterateAgainIndependently) {
    CEvaluator evaluator("<r><a/><a/><a/></r>");
    TRefPtr<Xpath::CValue> value = evaluator.Evaluate("/r/a[position() < 3]");
    Xpath::CNodeSet* set = value->GetNodeSet();
    TRefPtr<Xpath::CNodeIterator> first, second;
    set->CreateIterator(first);
    first->Next();
    set->CreateIterator(second);
    EXPECT_EQ(first->GetPosition(), 2);
    EXPECT_EQ(second->GetPosition(), 1);
    EXPECT_EQ(set->GetLength(), 2);
    first->Next();
    EXPECT_EQ(first->Current(), nullptr);
    EXPECT_EQ(first->GetPosition(), 0);
    first->Next();
    EXPECT_EQ(first->Current(), nullptr);
}

}  // namespace
