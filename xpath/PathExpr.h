// Location paths and their parts: steps, predicates, filters, unions and the root.
// Evaluating any of them builds lazy node-sets; the tree is walked only when iterated.
#pragma once
#include "xpath/Axis.h"
#include "xpath/Expression.h"
#include "xpath/NodeTest.h"

namespace Xpath {

class CNodeIterator;

// `[expression]`: a number is compared with the context position, anything else converted
// to a boolean.
class CPredicate : public CRefObject {
public:
    explicit CPredicate(CExpression* expression);
    bool Test(CContext* context) const;
    CExpression* GetExpression() const { return m_pExpression; }
    // The position the predicate selects when it is a number literal, else 0; iteration past
    // that position cannot yield more.
    double GetConstantPosition() const { return m_dConstantPosition; }
    // True if the predicate reads neither position() nor last() and its value is never a
    // number: it holds or fails for a node whatever the node's place in the set.
    bool IgnoresPosition() const { return m_bIgnoresPosition; }

private:
    TRefPtr<CExpression> m_pExpression;
    double m_dConstantPosition;
    bool m_bIgnoresPosition;
};

class CStepExpr : public CExpression {
public:
    CStepExpr(CAxis* axis, CNodeTest* test) : m_pAxis(axis), m_pTest(test) {}
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
    // The step's node-set from the context node: axis set, test filter, one filter per predicate.
    void GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const override;

    CAxis* GetAxis() const { return m_pAxis; }
    CNodeTest* GetTest() const { return m_pTest; }
    TArray<TRefPtr<CPredicate>>& GetPredicates() { return m_aPredicates; }
    const TArray<TRefPtr<CPredicate>>& GetPredicates() const { return m_aPredicates; }

private:
    TRefPtr<CAxis> m_pAxis;
    TRefPtr<CNodeTest> m_pTest;
    TArray<TRefPtr<CPredicate>> m_aPredicates;
};

// The base of an absolute path: the document of the context node.
class CRootExpr : public CExpression {
public:
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
    void GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const override;
};

class CFilterExpr : public CExpression {
public:
    explicit CFilterExpr(CExpression* primary) : m_pPrimary(primary) {}
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
    CExpression* GetPrimary() const { return m_pPrimary; }
    TArray<TRefPtr<CPredicate>>& GetPredicates() { return m_aPredicates; }
    const TArray<TRefPtr<CPredicate>>& GetPredicates() const { return m_aPredicates; }

private:
    TRefPtr<CExpression> m_pPrimary;
    TArray<TRefPtr<CPredicate>> m_aPredicates;
};

class CUnionExpr : public CExpression {
public:
    void AddOperand(CExpression* operand);
    const TArray<TRefPtr<CExpression>>& GetOperands() const { return m_aOperands; }
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
    void GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const override;

private:
    TArray<TRefPtr<CExpression>> m_aOperands;
    // With two operands, one the attributes and the other the children or descendants of the
    // context node: the index of the attribute operand, whose nodes all come first. -1 otherwise.
    int m_nAttributesFirst = -1;
};

// A base expression (a filter, or the root of an absolute path) followed by steps. It streams
// when its shape can give neither duplicates nor disorder, and collects otherwise.
class CPathExpr : public CExpression {
public:
    CPathExpr(CExpression* base, bool absolute)
        : m_pBase(base), m_bAbsolute(absolute), m_bStream(!base || absolute) {}
    // The step must be complete, its predicates included.
    void AddStep(CStepExpr* step);
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
    void GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const override;

    CExpression* GetBase() const { return m_pBase; }
    bool IsAbsolute() const { return m_bAbsolute; }
    // The steps as written.
    const TArray<TRefPtr<CStepExpr>>& GetSteps() const { return m_aSteps; }
    // The steps as walked: `descendant-or-self::node()/child::x` becomes `descendant::x` where
    // no predicate of the child step can see its position, which selects the same nodes.
    const TArray<TRefPtr<CStepExpr>>& GetWalkSteps() const { return m_aWalkSteps; }
    bool CanStream() const { return m_bStream; }
    // The single relative step this path is, or null.
    const CStepExpr* GetOnlyStep() const;

private:
    TRefPtr<CExpression> m_pBase;
    bool m_bAbsolute;
    bool m_bStream;
    TArray<TRefPtr<CStepExpr>> m_aSteps;
    TArray<TRefPtr<CStepExpr>> m_aWalkSteps;
};

// The node-set of a value that must be one; fails with a message otherwise.
CNodeSet* RequireNodeSet(CValue* value);

}  // namespace Xpath
