// The rule index: selection from its candidates agrees with selection from every rule, and
// the candidates leave out the rules that cannot match.
#include <gtest/gtest.h>

#include "tests/xpath/XpathTestSupport.h"
#include "xslt/private/PatternContext.h"
#include "xslt/private/PatternParser.h"
#include "xslt/private/RuleMatcher.h"

namespace {

using namespace XpathTest;
using XsltPrivate::SQName;

class CTestHost : public XsltPrivate::IPatternHost {
public:
    explicit CTestHost(CEvaluator& evaluator) : m_evaluator(evaluator) {}
    void MakeExpressionContext(TRefPtr<Xpath::CContext>& context) override { context = m_evaluator.m_pContext; }
    bool ResolvePrefix(const DomString& prefix, DomString& uri) override {
        return m_evaluator.m_pNamespaces->ResolvePrefix(prefix, uri);
    }
    bool GetElementId(const Dom::CNode*, DomString&) override { return false; }
    bool MatchKey(const Dom::CNode*, const DomString&, const DomString&, const DomString&) override { return false; }

private:
    CEvaluator& m_evaluator;
};

struct SRule : CRefObject {
    SRule(const char* text, const SQName* ruleMode, bool hasPriority = false, double given = 0)
        : pMode(ruleMode), bHasPriority(hasPriority), dPriority(given) {
        if (*text) XsltPrivate::CPatternParser().Parse(pPattern, U(text));
    }
    const XsltPrivate::CPattern* GetPattern() const { return pPattern; }
    const SQName* GetMode() const { return pMode; }
    bool MatchRule(XsltPrivate::IPatternContext& context, const SQName* mode, double& priority) const {
        return XsltPrivate::MatchRule(pPattern, pMode, bHasPriority, dPriority, context, mode, priority);
    }
    TRefPtr<XsltPrivate::CPattern> pPattern;
    const SQName* pMode;
    bool bHasPriority;
    double dPriority;
};

class RuleIndexTest : public ::testing::Test {
protected:
    RuleIndexTest()
        : m_evaluator("<doc><a x=\"1\"><b/><c><b/>t</c></a><p:e xmlns:p=\"urn:p\"/><!--n--><?pi d?></doc>"),
          m_host(m_evaluator) {
        const SQName* none = nullptr;
        const struct {
            const char* text;
            const SQName* mode;
            bool hasPriority;
            double priority;
        } rules[] = {
            {"b", none, false, 0},      {"*", none, false, 0},        {"a/b | c/b", none, false, 0},
            {"", none, false, 0},       {"c/b", none, false, 0},      {"node()", none, true, 0.5},
            {"b", &m_mode, false, 0},   {"@*", none, false, 0},       {"@x", none, false, 0},
            {"text()", none, false, 0}, {"/", none, false, 0},        {"p:e | a", none, false, 0},
            {"*", &m_sameMode, false, 0}, {"c | b", none, true, 0.5}, {"comment() | x", &m_mode, false, 0},
        };
        for (const auto& rule : rules) m_aRules.Add(new SRule(rule.text, rule.mode, rule.hasPriority, rule.priority));
        m_index.Build(m_aRules);
    }

    SQName m_mode{DomString(), u"m"};
    SQName m_sameMode{DomString(), u"m"};
    SQName m_otherMode{u"urn:p", u"m"};
    CEvaluator m_evaluator;
    CTestHost m_host;
    TArray<TRefPtr<SRule>> m_aRules;
    XsltPrivate::TRuleIndex<SRule> m_index;
};

TEST_F(RuleIndexTest, CandidatesSelectWhatTheWholeListSelects) {
    TRefPtr<Xpath::CValue> all = m_evaluator.Evaluate("/ | //node() | //@*");
    TRefPtr<Xpath::CNodeIterator> iterator;
    all->GetNodeSet()->CreateIterator(iterator);
    for (; iterator->Current(); iterator->Next()) {
        for (const SQName* mode : std::initializer_list<const SQName*>{nullptr, &m_mode, &m_otherMode}) {
            XsltPrivate::CPatternContext context(m_host, iterator->Current());
            bool ambiguous = false;
            bool indexedAmbiguous = false;
            SRule* expected = XsltPrivate::FindBestRule(m_aRules, context, mode, ambiguous);
            SRule* found = XsltPrivate::FindBestRule(m_index.Find(mode, context.GetNameHash()), context, mode,
                                                     indexedAmbiguous);
            EXPECT_EQ(found, expected) << Describe(iterator->Current());
            EXPECT_EQ(indexedAmbiguous, ambiguous) << Describe(iterator->Current());
            EXPECT_EQ(m_index.Select(context, mode, indexedAmbiguous), expected) << Describe(iterator->Current());
            EXPECT_EQ(indexedAmbiguous, ambiguous) << Describe(iterator->Current());
        }
    }
}

TEST_F(RuleIndexTest, ChoicesByKindAloneAreRememberedPerKind) {
    for (const char* texts : {"@* | node();text();comment() | processing-instruction()", "node();*;/"}) {
        TArray<TRefPtr<SRule>> rules;
        std::string list = texts;
        for (size_t start = 0, end; start <= list.size(); start = end + 1) {
            end = list.find(';', start);
            if (end == std::string::npos) end = list.size();
            rules.Add(new SRule(list.substr(start, end - start).c_str(), nullptr));
        }
        XsltPrivate::TRuleIndex<SRule> index;
        index.Build(rules);
        TRefPtr<Xpath::CValue> all = m_evaluator.Evaluate("/ | //node() | //@*");
        TRefPtr<Xpath::CNodeIterator> iterator;
        all->GetNodeSet()->CreateIterator(iterator);
        for (; iterator->Current(); iterator->Next()) {
            XsltPrivate::CPatternContext context(m_host, iterator->Current());
            bool ambiguous = false;
            bool remembered = false;
            SRule* expected = XsltPrivate::FindBestRule(rules, context, nullptr, ambiguous);
            EXPECT_EQ(index.Select(context, nullptr, remembered), expected) << texts << Describe(iterator->Current());
            EXPECT_EQ(remembered, ambiguous) << texts << Describe(iterator->Current());
        }
    }
}

TEST_F(RuleIndexTest, CandidatesAreRulesForTheNameOrAnyNameInStoredOrder) {
    auto candidates = [&](const char* path, const SQName* mode) {
        Dom::CNode* node = m_evaluator.Evaluate(path)->GetNodeSet()->GetFirst();
        XsltPrivate::CPatternContext context(m_host, node);
        std::string numbers;
        for (SRule* rule : m_index.Find(mode, context.GetNameHash())) {
            for (int i = 0; i < m_aRules.GetSize(); ++i) {
                if (m_aRules[i] == rule) numbers += (numbers.empty() ? "" : " ") + std::to_string(i);
            }
        }
        return numbers;
    };
    EXPECT_EQ(candidates("//c/b", nullptr), "0 1 2 4 5 7 9 10 13");
    EXPECT_EQ(candidates("//c", nullptr), "1 5 7 9 10 13");
    EXPECT_EQ(candidates("//@x", nullptr), "1 5 7 9 10");
    EXPECT_EQ(candidates("//c", &m_mode), "12 14");
    EXPECT_EQ(candidates("//b", &m_sameMode), "6 12 14");
    EXPECT_EQ(candidates("//b", &m_otherMode), "");
}

}  // namespace
