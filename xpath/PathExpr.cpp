// Evaluation of steps, predicates, filters, unions, the root and paths: each builds lazy
// node-sets over what it wraps and returns at once.
#include "xpath/PathExpr.h"

#include "xpath/Context.h"
#include "xpath/Converter.h"
#include "xpath/PathNodeSet.h"
#include "xpath/Value.h"
#include "xpath/XpathException.h"

namespace Xpath {

CNodeSet* RequireNodeSet(CValue* value) {
    CNodeSet* set = value->GetType() == TypeNodeSet ? value->GetNodeSet() : nullptr;
    if (!set) throw new CXpathException(CXpathException::NotANodeSet);
    return set;
}

void CExpression::GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const {
    TRefPtr<CValue> value;
    Evaluate(value, context);
    nodeSet = RequireNodeSet(value);
}

bool CPredicate::Test(CContext* context) const {
    TRefPtr<CValue> value;
    m_pExpression->Evaluate(value, context);
    if (value->GetType() == TypeNumber) return value->GetNumber() == CNumber(context->GetPosition());
    return CConverter(context).ToBoolean(value);
}

void CStepExpr::GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const {
    Dom::CNode* node = context->GetNode();
    if (!node) {
        nodeSet = new CSingleNodeSet(nullptr);
        return;
    }
    m_pAxis->GetNodeSet(nodeSet, node);
    // node() accepts every node of every axis: the axis set needs no filter.
    if (m_pTest->GetKind() != TestAnyNode) nodeSet = new CTestFilterNodeSet(context, nodeSet, m_pTest);
    for (const TRefPtr<CPredicate>& predicate : m_aPredicates)
        nodeSet = new CPredicateFilterNodeSet(context, nodeSet, predicate);
}

void CStepExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    TRefPtr<CNodeSet> nodeSet;
    GetNodeSet(nodeSet, context);
    result = new CNodeSetValue(nodeSet);
}

// The root of the tree of the context node: the document, or the fragment it belongs to.
void CRootExpr::GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const {
    Dom::CNode* node = context->GetNode();
    while (node) {
        Dom::CNode* parent = node->GetParentNode();
        if (!parent) break;
        node = parent;
    }
    nodeSet = new CSingleNodeSet(node);
}

void CRootExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    TRefPtr<CNodeSet> nodeSet;
    GetNodeSet(nodeSet, context);
    result = new CNodeSetValue(nodeSet);
}

void CFilterExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    m_pPrimary->Evaluate(result, context);
    if (m_aPredicates.IsEmpty()) return;
    TRefPtr<CNodeSet> nodeSet(RequireNodeSet(result));
    for (const TRefPtr<CPredicate>& predicate : m_aPredicates)
        nodeSet = new CPredicateFilterNodeSet(context, nodeSet, predicate);
    result = new CNodeSetValue(nodeSet);
}

void CUnionExpr::GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const {
    CUnionNodeSet* alternatives = new CUnionNodeSet(context, m_nAttributesFirst);
    nodeSet = alternatives;
    for (const TRefPtr<CExpression>& operand : m_aOperands) {
        TRefPtr<CNodeSet> operandSet;
        operand->GetNodeSet(operandSet, context);
        alternatives->AddOperand(operandSet);
    }
}

void CUnionExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    TRefPtr<CNodeSet> nodeSet;
    GetNodeSet(nodeSet, context);
    result = new CNodeSetValue(nodeSet);
}

namespace {

bool IsCoreCall(const CFunctionCallExpr* call, const DomChar* name) {
    return call->GetPrefix().empty() && call->GetLocalName() == name;
}

// True if the value of `expression` cannot depend on the context position or size: no
// position() or last() outside nested steps, and no prefixed (extension) call, which could
// read the context. Nested steps and filters have their own positions.
bool IsPositionFree(const CExpression* expression) {
    if (auto* binary = dynamic_cast<const CBinaryExpr*>(expression))
        return IsPositionFree(binary->GetLeft()) && IsPositionFree(binary->GetRight());
    if (auto* negate = dynamic_cast<const CNegateExpr*>(expression)) return IsPositionFree(negate->GetOperand());
    if (auto* call = dynamic_cast<const CFunctionCallExpr*>(expression)) {
        if (!call->GetPrefix().empty() || IsCoreCall(call, u"position") || IsCoreCall(call, u"last")) return false;
        for (const TRefPtr<CExpression>& argument : call->GetArguments())
            if (!IsPositionFree(argument)) return false;
        return true;
    }
    if (auto* filter = dynamic_cast<const CFilterExpr*>(expression)) return IsPositionFree(filter->GetPrimary());
    if (auto* path = dynamic_cast<const CPathExpr*>(expression)) return !path->GetBase() || IsPositionFree(path->GetBase());
    if (auto* alternatives = dynamic_cast<const CUnionExpr*>(expression)) {
        for (const TRefPtr<CExpression>& operand : alternatives->GetOperands())
            if (!IsPositionFree(operand)) return false;
        return true;
    }
    return dynamic_cast<const CLiteralExpr*>(expression) || dynamic_cast<const CNumberExpr*>(expression) ||
           dynamic_cast<const CVariableExpr*>(expression) || dynamic_cast<const CRootExpr*>(expression);
}

// True if the predicate's value is never a number, so it is never compared with the position.
bool IsNeverNumber(const CExpression* expression) {
    if (dynamic_cast<const CEqualityExpr*>(expression) || dynamic_cast<const CRelationalExpr*>(expression) ||
        dynamic_cast<const COrExpr*>(expression) || dynamic_cast<const CAndExpr*>(expression) ||
        dynamic_cast<const CPathExpr*>(expression) || dynamic_cast<const CUnionExpr*>(expression))
        return true;
    auto* filter = dynamic_cast<const CFilterExpr*>(expression);
    if (!filter) return false;
    if (!filter->GetPredicates().IsEmpty()) return true;
    auto* call = dynamic_cast<const CFunctionCallExpr*>(filter->GetPrimary());
    if (!call) return dynamic_cast<const CLiteralExpr*>(filter->GetPrimary()) != nullptr;
    for (const DomChar* name : {u"not", u"boolean", u"true", u"false", u"contains", u"starts-with", u"lang"})
        if (IsCoreCall(call, name)) return true;
    return false;
}

bool IsPlainStep(const CStepExpr* step, int axis) {
    return step->GetAxis()->GetKind() == axis && step->GetPredicates().IsEmpty();
}

bool StaysInPlace(const CStepExpr* step) {
    int axis = step->GetAxis()->GetKind();
    return axis == AxisChild || axis == AxisSelf;
}

bool MayStreamLast(const CStepExpr* step) {
    int axis = step->GetAxis()->GetKind();
    return axis == AxisDescendant || axis == AxisDescendantOrSelf || axis == AxisAttribute || axis == AxisNamespace;
}

bool IgnoresPosition(const CStepExpr* step) {
    for (const TRefPtr<CPredicate>& predicate : step->GetPredicates())
        if (!predicate->IgnoresPosition()) return false;
    return true;
}

double ConstantPositionOf(const CExpression* expression) {
    const CFilterExpr* filter = dynamic_cast<const CFilterExpr*>(expression);
    if (filter && filter->GetPredicates().IsEmpty()) expression = filter->GetPrimary();
    const CNumberExpr* number = dynamic_cast<const CNumberExpr*>(expression);
    if (!number) return 0;
    double position = number->GetNumber().GetValue();
    return position >= 1 ? position : 0;
}

// The axis of an operand that is one relative step, or -1.
int OnlyStepAxis(const CExpression* operand) {
    const CPathExpr* path = dynamic_cast<const CPathExpr*>(operand);
    const CStepExpr* step = path ? path->GetOnlyStep() : dynamic_cast<const CStepExpr*>(operand);
    return step ? step->GetAxis()->GetKind() : -1;
}

bool IsBelowContext(int axis) { return axis == AxisChild || axis == AxisDescendant; }

}  // namespace

CPredicate::CPredicate(CExpression* expression)
    : m_pExpression(expression),
      m_dConstantPosition(ConstantPositionOf(expression)),
      m_bIgnoresPosition(IsNeverNumber(expression) && IsPositionFree(expression)) {}

// The attributes of a node stand before its children and descendants, and the two sets never
// share a node, so such a union is the one set followed by the other.
void CUnionExpr::AddOperand(CExpression* operand) {
    m_aOperands.Add(operand);
    m_nAttributesFirst = -1;
    if (m_aOperands.GetSize() != 2) return;
    int first = OnlyStepAxis(m_aOperands[0]);
    int second = OnlyStepAxis(m_aOperands[1]);
    if (first == AxisAttribute && IsBelowContext(second)) m_nAttributesFirst = 0;
    if (second == AxisAttribute && IsBelowContext(first)) m_nAttributesFirst = 1;
}

// A path streams when its steps give neither duplicates nor disorder: every step but the last is
// on the child or self axis, and the last also may be descendant, descendant-or-self, attribute or
// namespace. Kept up to date step by step, so a long path is built in linear time.
void CPathExpr::AddStep(CStepExpr* step) {
    m_aSteps.Add(step);
    if (!m_aWalkSteps.IsEmpty() && step->GetAxis()->GetKind() == AxisChild && IgnoresPosition(step)) {
        CStepExpr* previous = m_aWalkSteps.Last();
        if (IsPlainStep(previous, AxisDescendantOrSelf) && previous->GetTest()->GetKind() == TestAnyNode) {
            TRefPtr<CAxis> descendant;
            CAxis::Create(descendant, AxisDescendant);
            TRefPtr<CStepExpr> merged(new CStepExpr(descendant, step->GetTest()));
            for (const TRefPtr<CPredicate>& predicate : step->GetPredicates()) merged->GetPredicates().Add(predicate);
            m_aWalkSteps.Last() = merged;
            return;  // the merged step is a descendant step in the last place, as the one it replaces
        }
    }
    if (!m_aWalkSteps.IsEmpty()) m_bStream = m_bStream && StaysInPlace(m_aWalkSteps.Last());
    m_aWalkSteps.Add(step);
    m_bStream = m_bStream && (StaysInPlace(step) || MayStreamLast(step));
}

const CStepExpr* CPathExpr::GetOnlyStep() const {
    return !m_pBase && m_aWalkSteps.GetSize() == 1 ? m_aWalkSteps[0].Get() : nullptr;
}

void CPathExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    TRefPtr<CNodeSet> nodeSet;
    GetNodeSet(nodeSet, context);
    result = new CNodeSetValue(nodeSet);
}

void CPathExpr::GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const {
    // A streaming path of one step walks exactly as the step's own node-set does.
    if (m_bStream && !m_pBase && m_aWalkSteps.GetSize() == 1) return m_aWalkSteps[0]->GetNodeSet(nodeSet, context);
    if (m_bStream) {
        CStreamingPathNodeSet* streaming = new CStreamingPathNodeSet(context);
        nodeSet = streaming;
        if (m_pBase) streaming->AddElement(m_pBase);
        for (const TRefPtr<CStepExpr>& step : m_aWalkSteps) streaming->AddElement(step);
    } else {
        CCollectedPathNodeSet* collected = new CCollectedPathNodeSet(context);
        nodeSet = collected;
        if (m_pBase) collected->AddElement(m_pBase);
        for (const TRefPtr<CStepExpr>& step : m_aWalkSteps) collected->AddElement(step);
    }
}

}  // namespace Xpath
