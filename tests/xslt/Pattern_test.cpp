// Patterns: parsing and its errors, default priorities, matching against a small document,
// and rule selection with the name-hash pre-test.
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "tests/xpath/XpathTestSupport.h"
#include "xslt/private/PatternContext.h"
#include "xslt/private/PatternException.h"
#include "xslt/private/PatternParser.h"
#include "xslt/private/RuleMatcher.h"

namespace {

using namespace XpathTest;
using XsltPrivate::CPattern;
using XsltPrivate::CPatternContext;
using XsltPrivate::CPatternParser;

const char* const kDocument =
    "<doc><a x=\"1\"><b/><c><b/></c></a><a/><a x=\"2\"><b id=\"i1\"/>t<!--n--><![CDATA[cd]]><?x d?></a>"
    "<p:e xmlns:p=\"urn:p\" p:y=\"3\"/></doc>";

// The run as patterns see it: the evaluator's context and prefixes, ids from the DTD, and one
// key "k" (also reachable as "p:k") whose value of an element is its attribute x.
class CTestHost : public XsltPrivate::IPatternHost {
public:
    explicit CTestHost(CEvaluator& evaluator) : m_evaluator(evaluator) {}
    void MakeExpressionContext(TRefPtr<Xpath::CContext>& context) override {
        ++m_nContextsMade;
        context = m_evaluator.m_pContext;
    }
    bool ResolvePrefix(const DomString& prefix, DomString& uri) override {
        return m_evaluator.m_pNamespaces->ResolvePrefix(prefix, uri);
    }
    bool GetElementId(const Dom::CNode* node, DomString& id) override { return m_order.GetElementId(node, id); }
    bool MatchKey(const Dom::CNode* node, const DomString& uri, const DomString& local,
                  const DomString& value) override {
        bool known = local == u"k" && (uri.empty() || uri == u"urn:p");
        if (!known || node->GetNodeType() != Dom::ELEMENT_NODE) return false;
        const Dom::CAttr* x = static_cast<const Dom::CElement*>(node)->GetAttributeNode(u"x");
        return x && x->GetValueView() == value;
    }

    int m_nContextsMade = 0;

private:
    CEvaluator& m_evaluator;
    Xpath::CDocumentNodeOrder m_order;
};

TRefPtr<CPattern> Compile(const std::string& text) {
    CPatternParser parser;
    TRefPtr<CPattern> pattern;
    parser.Parse(pattern, U(text));
    return pattern;
}

// "" when the text parses; otherwise which class failed and its message.
std::string ParseFailure(const std::string& text) {
    try {
        Compile(text);
    } catch (Core::IException* failure) {
        std::string kind = dynamic_cast<Xpath::CXpathException*>(failure) ? "xpath: " : "pattern: ";
        DomString message;
        failure->GetMessage(message);
        delete failure;
        return kind + A(message);
    }
    return "";
}

class PatternTest : public ::testing::Test {
protected:
    PatternTest() : m_evaluator(kDocument, {"b/id"}), m_host(m_evaluator) {}

    // Every node of the document that the pattern matches, in document order.
    std::string MatchingNodes(const std::string& text) {
        TRefPtr<CPattern> pattern = Compile(text);
        TRefPtr<Xpath::CValue> all = m_evaluator.Evaluate("/ | //node() | //@*");
        TRefPtr<Xpath::CNodeIterator> iterator;
        all->GetNodeSet()->CreateIterator(iterator);
        std::string matched;
        for (; iterator->Current(); iterator->Next()) {
            Dom::CNode* node = iterator->Current();
            CPatternContext context(m_host, node);
            if (pattern->Matches(&context, node)) matched += (matched.empty() ? "" : " ") + Describe(node);
        }
        return matched;
    }
    Dom::CNode* Node(const std::string& path) { return m_evaluator.Evaluate(path)->GetNodeSet()->GetFirst(); }

    CEvaluator m_evaluator;
    CTestHost m_host;
};

TEST(PatternParsing, DefaultPriorityFollowsTheShapeOfEachAlternative) {
    const struct {
        const char* text;
        double priority;
    } cases[] = {
        {"/", 0.5},           {"a", 0},        {"*", -0.5},      {"p:*", -0.25},
        {"node()", -0.5},     {"text()", -0.5}, {"comment()", -0.5}, {"processing-instruction()", -0.5},
        {"processing-instruction('x')", 0}, {"a/b", 0.5}, {"a//b", 0.5}, {"a[1]", 0.5},
        {"id('x')", 0.5},     {"key('k', 'v')", 0.5}, {"@a", 0},  {"@*", -0.5},
        {"@p:*", -0.25},      {"//a", 0.5},     {"/a", 0.5},      {"child::a", 0},
        {"attribute::a", 0},  {"p:a", 0},
    };
    for (const auto& c : cases) {
        TRefPtr<CPattern> pattern = Compile(c.text);
        ASSERT_EQ(pattern->GetCount(), 1) << c.text;
        EXPECT_EQ(pattern->GetPath(0)->GetDefaultPriority(), c.priority) << c.text;
    }
}

TEST(PatternParsing, UnionsGiveOneAlternativeEach) {
    EXPECT_EQ(Compile("a | b/c | /")->GetCount(), 3);
    EXPECT_EQ(Compile("key('k', 'v')/a | id('x')//b")->GetCount(), 2);
}

TEST(PatternParsing, ErrorsComeFromTheRightTableWithExactText) {
    const struct {
        const char* text;
        const char* failure;
    } cases[] = {
        {".", "pattern: Invalid pattern syntax"},
        {"..", "pattern: Invalid pattern syntax"},
        {"a/.", "pattern: Invalid pattern syntax"},
        {"a//..", "pattern: Invalid pattern syntax"},
        {"parent::a", "pattern: Invalid axis name"},
        {"a/descendant::b", "pattern: Invalid axis name"},
        {"foo('x')", "pattern: Invalid function name 'foo'"},
        {"p:id('x')", "pattern: Invalid function name 'p:id'"},
        {"id(1)", "pattern: Missing literal"},
        {"key('k', $v)", "pattern: Missing literal"},
        {"a b", "xpath: Invalid operator name: 'b'"},
        {"a = 1", "pattern: Invalid pattern syntax"},
        {"id('x') a", "xpath: Invalid operator name: 'a'"},
        {"id('x') | | a", "xpath: Invalid node test"},
        {"/child::a", "pattern: Invalid pattern syntax"},
        {"a/", "xpath: Invalid node test"},
        {"", "xpath: Invalid node test"},
        {"a |", "xpath: Invalid node test"},
        {"id('a'", "xpath: Invalid function name: ''"},
        {"key('a' 'b')", "xpath: Invalid expression syntax"},
        {"a[1", "xpath: Missing ']' character"},
        {"a[", "xpath: Invalid primary expression"},
        {"comment(1)", "xpath: Missing ')' character"},
        {"a!", "xpath: Illegal character in expression"},
    };
    for (const auto& c : cases) EXPECT_EQ(ParseFailure(c.text), c.failure) << c.text;
    for (const char* valid : {"/", "//a", "key('k', 'v')/a", "id('x')//b", "child::a", "attribute::a",
                              "/processing-instruction()", "/@x", "a[@x][2]//b[last()]"})
        EXPECT_EQ(ParseFailure(valid), "") << valid;
}

TEST(PatternParsing, HostileNestingIsRefusedWithoutOverflow) {
    std::string text;
    for (int i = 0; i < 100000; ++i) text += "a[";
    EXPECT_EQ(ParseFailure(text), "xpath: Expression nested too deeply");
}

TEST_F(PatternTest, MatchesNodesFromTheBottomUp) {
    const struct {
        const char* pattern;
        const char* nodes;
    } cases[] = {
        {"/", "/"},
        {"doc", "doc"},
        {"/doc", "doc"},
        {"/a", ""},
        {"a/b", "b b"},
        {"a//b", "b b b"},
        {"doc//c/b", "b"},
        {"doc//a//b", "b b b"},
        {"//c", "c"},
        {"/doc/a/c/b", "b"},
        {"doc/*/*/b", "b"},
        {"*", "doc a b c b a a b p:e"},
        {"node()", "doc a b c b a a b 't' #comment 'cd' ?x p:e"},
        {"text()", "'t' 'cd'"},
        {"comment()", "#comment"},
        {"processing-instruction('x')", "?x"},
        {"processing-instruction('y')", ""},
        {"@x", "@x @x"},
        {"@*", "@x @x @id @p:y"},
        {"a/@x", "@x @x"},
        {"@p:*", "@p:y"},
        {"p:e", "p:e"},
        {"p:*", "p:e"},
        {"q:*", ""},
        {"a | c", "a c a a"},
        {"a[2]", "a"},
        {"a[@x][2]", "a"},
        {"a[@x][2]/b", "b"},
        {"a[last()]", "a"},
        {"b[1]", "b b b"},
        {"doc/node()[3]", "a"},
        {"*[2]", "c a"},
        {"a/node()[2]", "c 't'"},
        {"text()[2]", "'cd'"},
        {"node()[last()]", "doc c b ?x p:e"},
        {"@*[1]", "@x @x @id @p:y"},
        {"@*[2]", ""},
        {"a[b]", "a a"},
        {"id('i1')", "b"},
        {"id('i1')/@id", "@id"},
        {"id('none')", ""},
        {"key('k', '3')", ""},
        {"key('k', '2')", "a"},
        {"key('p:k', '2')//b", "b"},
        {"key('k', '1')/node()", "b c"},
        {"key('k', '2')/node()", "b 't' #comment 'cd' ?x"},
    };
    for (const auto& c : cases) EXPECT_EQ(MatchingNodes(c.pattern), c.nodes) << c.pattern;
}

TEST_F(PatternTest, PositionsCountTheSelectedSiblingsOfTheNode) {
    Dom::CNode* secondA = Node("/doc/a[2]");
    Dom::CNode* thirdA = Node("/doc/a[3]");
    TRefPtr<CPattern> pattern = Compile("a[@x][2]");
    CPatternContext second(m_host, secondA), third(m_host, thirdA);
    EXPECT_FALSE(pattern->Matches(&second, secondA));
    EXPECT_TRUE(pattern->Matches(&third, thirdA));
    TRefPtr<CPattern> unfiltered = Compile("a[position() = 2 and last() = 3]");
    EXPECT_TRUE(unfiltered->Matches(&second, secondA));
}

TEST_F(PatternTest, UnknownPrefixesFailWhenReached) {
    auto failure = [this](const std::string& text) {
        Dom::CNode* node = Node("/doc/a");
        CPatternContext context(m_host, node);
        try {
            Compile(text)->Matches(&context, node);
        } catch (Core::IException* e) {
            DomString message;
            e->GetMessage(message);
            delete e;
            return A(message);
        }
        return std::string();
    };
    EXPECT_EQ(failure("key('z:k', 'v')"), "Invalid prefix 'z'");
    EXPECT_EQ(failure("z:a"), "Prefix 'z' not found in expression context");
    EXPECT_EQ(failure("z:other"), "");
}

TEST_F(PatternTest, FailedPatternThrowsACopyAtEachTest) {
    TRefPtr<CPattern> pattern;
    CPattern::CreateFailed(pattern, new Xpath::CXpathException(Xpath::CXpathException::InvalidNodeTest));
    Dom::CNode* node = Node("/doc");
    for (int round = 0; round < 2; ++round) {
        CPatternContext context(m_host, node);
        try {
            pattern->Matches(&context, node);
            ADD_FAILURE() << "no failure";
        } catch (Xpath::CXpathException* e) {
            EXPECT_EQ(e->GetNumber(), Xpath::CXpathException::InvalidNodeTest);
            delete e;
        }
    }
}

TEST_F(PatternTest, PlainNameTestsNeedNoExpressionContext) {
    Dom::CNode* node = Node("/doc/a/c/b");
    CPatternContext context(m_host, node);
    EXPECT_TRUE(Compile("a//b | doc/node()")->Matches(&context, node));
    EXPECT_EQ(m_host.m_nContextsMade, 0);
    EXPECT_TRUE(Compile("b[1]")->Matches(&context, node));
    EXPECT_TRUE(Compile("b[1]")->Matches(&context, node));
    EXPECT_EQ(m_host.m_nContextsMade, 1);
}

TEST_F(PatternTest, DeepGapPatternsUseALargerStack) {
    std::string text = "doc";
    for (int i = 0; i < 12; ++i) text += "//node()";
    EXPECT_EQ(MatchingNodes(text), "");
    EXPECT_EQ(MatchingNodes("doc//node()//node()//b"), "b");
}

TEST(PatternMatching, ManyGapsOnADeepDocumentAnswerWithoutSearchingEveryCombination) {
    const int depth = 3000;
    std::string markup;
    for (int i = 0; i < depth; ++i) markup += "<a>";
    markup += "<b/>";
    for (int i = 0; i < depth; ++i) markup += "</a>";
    CEvaluator evaluator(markup);
    CTestHost host(evaluator);
    Dom::CNode* leaf = evaluator.Evaluate("//b")->GetNodeSet()->GetFirst();
    const struct {
        const char* pattern;
        bool matches;
    } cases[] = {
        {"x//a//a//a//b", false}, {"/a//a//a//a/b", true}, {"/a/a//a//a//x//b", false},
        {"a//a//a//b", true},     {"/a//x/a//a//b", false}, {"/a/a/a//a/a/a//a/b", true},
    };
    for (const auto& c : cases) {
        CPatternContext context(host, leaf);
        EXPECT_EQ(Compile(c.pattern)->Matches(&context, leaf), c.matches) << c.pattern;
    }
}

// A node matches a pattern exactly when the pattern, read as a path from some node of the
// document, selects it; checked on generated documents and patterns.
TEST(PatternMatching, AgreesWithTheExpressionReadingOnGeneratedCases) {
    std::mt19937 random(5);
    std::function<std::string(int)> tree = [&](int depth) {
        std::string markup;
        for (int n = static_cast<int>(random() % 4); n > 0; --n) {
            std::string name(1, static_cast<char>('a' + random() % 3));
            markup += "<" + name + ">" + (depth < 6 ? tree(depth + 1) : "") + "</" + name + ">";
        }
        return markup;
    };
    const char* const steps[] = {"a", "b", "c", "*", "a[2]", "*[1]", "b[last()]", "*[position() mod 2 = 1][2]"};
    for (int document = 0; document < 15; ++document) {
        CEvaluator evaluator("<r>" + tree(0) + "</r>");
        CTestHost host(evaluator);
        TRefPtr<Xpath::CValue> all = evaluator.Evaluate("//node()");
        for (int round = 0; round < 40; ++round) {
            std::string pattern;
            for (int n = 1 + static_cast<int>(random() % 5); n > 0; --n)
                pattern += (pattern.empty() ? "" : random() % 2 ? "//" : "/") + std::string(steps[random() % 8]);
            if (random() % 3 == 0) pattern = (random() % 2 ? "/r/" : "//") + pattern;
            std::string path = pattern[0] == '/' ? pattern : "/descendant-or-self::node()/" + pattern;
            TRefPtr<CPattern> compiled = Compile(pattern);
            TRefPtr<Xpath::CNodeIterator> iterator;
            all->GetNodeSet()->CreateIterator(iterator);
            std::string matched;
            for (; iterator->Current(); iterator->Next()) {
                CPatternContext context(host, iterator->Current());
                if (compiled->Matches(&context, iterator->Current()))
                    matched += (matched.empty() ? "" : " ") + Describe(iterator->Current());
            }
            ASSERT_EQ(matched, evaluator.Nodes(path)) << pattern;
        }
    }
}

// Rule selection: modes, the name-hash pre-test, given and default priorities, ambiguity.
struct STestRule : CRefObject {
    STestRule(const std::string& text, const char* ruleMode = nullptr, bool hasPriority = false, double given = 0)
        : pPattern(text.empty() ? nullptr : Compile(text)), bHasPriority(hasPriority), dPriority(given) {
        if (ruleMode) {
            bHasMode = true;
            mode.sLocalName = U(ruleMode);
        }
    }
    bool MatchRule(XsltPrivate::IPatternContext& context, const XsltPrivate::SQName* requested,
                   double& priority) const {
        return XsltPrivate::MatchRule(pPattern, bHasMode ? &mode : nullptr, bHasPriority, dPriority, context,
                                      requested, priority);
    }
    TRefPtr<CPattern> pPattern;
    bool bHasMode = false;
    XsltPrivate::SQName mode;
    bool bHasPriority;
    double dPriority;
};

TEST_F(PatternTest, RuleSelectionSkipsNamedAttributesButNotWildcards) {
    Dom::CNode* attribute = Node("/doc/a/@x");
    CPatternContext context(m_host, attribute);
    double priority = 0;
    EXPECT_TRUE(MatchingNodes("@x") != "");
    EXPECT_FALSE(STestRule("@x").MatchRule(context, nullptr, priority));
    EXPECT_FALSE(STestRule("a/@x").MatchRule(context, nullptr, priority));
    EXPECT_TRUE(STestRule("@*").MatchRule(context, nullptr, priority));
    EXPECT_EQ(priority, -0.5);
    EXPECT_TRUE(STestRule("@x | node() | @*").MatchRule(context, nullptr, priority));
    EXPECT_EQ(priority, -0.5);
    Dom::CNode* element = Node("/doc/*[4]");
    CPatternContext elementContext(m_host, element);
    EXPECT_TRUE(STestRule("p:e").MatchRule(elementContext, nullptr, priority));
    EXPECT_EQ(priority, 0);
    EXPECT_FALSE(STestRule("q:e | p:f").MatchRule(elementContext, nullptr, priority));
}

TEST_F(PatternTest, RulePriorityIsTheBestMatchingAlternativeOrTheGivenValue) {
    Dom::CNode* b = Node("/doc/a/b");
    CPatternContext context(m_host, b);
    double priority = 0;
    EXPECT_TRUE(STestRule("b | a/b").MatchRule(context, nullptr, priority));
    EXPECT_EQ(priority, 0.5);
    EXPECT_TRUE(STestRule("a/b | b", nullptr, true, -3).MatchRule(context, nullptr, priority));
    EXPECT_EQ(priority, -3);
    EXPECT_FALSE(STestRule("c | a/c").MatchRule(context, nullptr, priority));
    EXPECT_FALSE(STestRule("").MatchRule(context, nullptr, priority));
}

TEST_F(PatternTest, ModesMustAgree) {
    Dom::CNode* b = Node("/doc/a/b");
    CPatternContext context(m_host, b);
    XsltPrivate::SQName m{DomString(), u"m"}, other{u"urn:p", u"m"};
    double priority;
    EXPECT_TRUE(STestRule("b").MatchRule(context, nullptr, priority));
    EXPECT_FALSE(STestRule("b").MatchRule(context, &m, priority));
    EXPECT_FALSE(STestRule("b", "m").MatchRule(context, nullptr, priority));
    EXPECT_TRUE(STestRule("b", "m").MatchRule(context, &m, priority));
    EXPECT_FALSE(STestRule("b", "m").MatchRule(context, &other, priority));
}

TEST_F(PatternTest, BestRuleIsTheHighestAndTheLastOfEquals) {
    Dom::CNode* b = Node("/doc/a/b");
    CPatternContext context(m_host, b);
    TArray<TRefPtr<STestRule>> rules;
    for (const char* text : {"b", "*", "a/b", "node()", "c/b", "a/b"}) rules.Add(new STestRule(text));
    bool ambiguous = true;
    EXPECT_EQ(XsltPrivate::FindBestRule(rules, context, nullptr, ambiguous), rules[5].Get());
    EXPECT_TRUE(ambiguous);
    rules.RemoveLast();
    EXPECT_EQ(XsltPrivate::FindBestRule(rules, context, nullptr, ambiguous), rules[2].Get());
    EXPECT_FALSE(ambiguous);
    rules.Add(new STestRule("b", nullptr, true, 0.5));
    rules.Add(new STestRule("*", nullptr, true, 0.25));
    EXPECT_EQ(XsltPrivate::FindBestRule(rules, context, nullptr, ambiguous), rules[5].Get());
    EXPECT_TRUE(ambiguous);
    XsltPrivate::SQName m{DomString(), u"m"};
    EXPECT_EQ(XsltPrivate::FindBestRule(rules, context, &m, ambiguous), nullptr);
    EXPECT_FALSE(ambiguous);
}

}  // namespace
