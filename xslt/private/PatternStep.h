// The steps of a path pattern. A child or attribute step tests one node with the node test and
// predicates of an XPath step; a gap step stands for "//" and tests nothing itself.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "dom/Node.h"
#include "xpath/NodeSet.h"

namespace Xpath {
class CContext;
class CStepExpr;
}  // namespace Xpath

namespace XsltPrivate {

class IPatternContext;

class CPatternStep : public CRefObject {
public:
    virtual bool IsGap() const = 0;
    virtual bool Matches(IPatternContext* context, Dom::CNode* node) const = 0;
    // The XPath step whose test and predicates apply; null for a gap.
    virtual Xpath::CStepExpr* GetStepExpr() const { return nullptr; }
};

// Common part of child and attribute steps: the node test, then each predicate in a context
// whose position is the node's place among what the step selects from the node's parent.
class CTestingPatternStep : public CPatternStep {
public:
    explicit CTestingPatternStep(Xpath::CStepExpr* step);
    ~CTestingPatternStep() override;
    bool IsGap() const override { return false; }
    Xpath::CStepExpr* GetStepExpr() const override { return m_pStep; }

protected:
    bool Test(IPatternContext* context, Dom::CNode* node) const;

private:
    bool TestPredicate(Xpath::CContext* context, Dom::CNode* node, int index) const;

    TRefPtr<Xpath::CStepExpr> m_pStep;
    // For predicate k: the step with predicates 0 to k-1, which selects the siblings that
    // predicate k counts positions among.
    TArray<TRefPtr<Xpath::CStepExpr>> m_aCountingSteps;
    // Whether the node test can resolve a prefix; tests that cannot run without the
    // expression context, so that most matches never make one.
    bool m_bNeedsContext;
};

// Elements, text, CDATA sections, processing instructions and comments only.
class CChildPatternStep : public CTestingPatternStep {
public:
    using CTestingPatternStep::CTestingPatternStep;
    bool Matches(IPatternContext* context, Dom::CNode* node) const override;
};

// Attribute nodes only.
class CAttributePatternStep : public CTestingPatternStep {
public:
    using CTestingPatternStep::CTestingPatternStep;
    bool Matches(IPatternContext* context, Dom::CNode* node) const override;
};

class CGapPatternStep : public CPatternStep {
public:
    bool IsGap() const override { return true; }
    bool Matches(IPatternContext*, Dom::CNode*) const override { return false; }
};

// What a counting step selects from the parent of one node, evaluated only when a predicate
// asks for position() or last().
class CPatternNodeSet : public Xpath::CNodeSet {
public:
    CPatternNodeSet(Xpath::CContext* context, Xpath::CStepExpr* countingStep, Dom::CNode* node);
    ~CPatternNodeSet() override;
    int32_t GetLength() override;
    void CreateIterator(TRefPtr<Xpath::CNodeIterator>& iterator) override;
    // The place of the node among the members, from 1; 0 if it is not among them.
    int32_t FindPosition();

private:
    Xpath::CNodeSet* GetMembers();

    TRefPtr<Xpath::CContext> m_pContext;
    TRefPtr<Xpath::CStepExpr> m_pCountingStep;
    Dom::TNodeRef m_node;
    TRefPtr<Xpath::CNodeSet> m_pMembers;
};

}  // namespace XsltPrivate
