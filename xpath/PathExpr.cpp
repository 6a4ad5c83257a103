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

bool CPredicate::Test(CContext* context) const {
    TRefPtr<CValue> value;
    m_pExpression->Evaluate(value, context);
    if (value->GetType() == TypeNumber) return value->GetNumber() == CNumber(context->GetPosition());
    return CConverter(context).ToBoolean(value);
}

double CPredicate::GetConstantPosition() const {
    const CExpression* expression = m_pExpression;
    const CFilterExpr* filter = dynamic_cast<const CFilterExpr*>(expression);
    if (filter && filter->GetPredicates().IsEmpty()) expression = filter->GetPrimary();
    const CNumberExpr* number = dynamic_cast<const CNumberExpr*>(expression);
    if (!number) return 0;
    double position = number->GetNumber().GetValue();
    return position >= 1 ? position : 0;
}

void CStepExpr::GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const {
    Dom::CNode* node = context->GetNode();
    if (!node) {
        nodeSet = new CSingleNodeSet(nullptr);
        return;
    }
    TRefPtr<CNodeSet> axisSet;
    m_pAxis->GetNodeSet(axisSet, node);
    nodeSet = new CTestFilterNodeSet(context, axisSet, m_pTest);
    for (const TRefPtr<CPredicate>& predicate : m_aPredicates)
        nodeSet = new CPredicateFilterNodeSet(context, nodeSet, predicate);
}

void CStepExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    TRefPtr<CNodeSet> nodeSet;
    GetNodeSet(nodeSet, context);
    result = new CNodeSetValue(nodeSet);
}

// The root of the tree of the context node: the document, or the fragment it belongs to.
void CRootExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    Dom::CNode* node = context->GetNode();
    while (node) {
        Dom::CNode* parent = node->GetParentNode();
        if (!parent) break;
        node = parent;
    }
    result = new CNodeSetValue(new CSingleNodeSet(node));
}

void CFilterExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    m_pPrimary->Evaluate(result, context);
    if (m_aPredicates.IsEmpty()) return;
    TRefPtr<CNodeSet> nodeSet(RequireNodeSet(result));
    for (const TRefPtr<CPredicate>& predicate : m_aPredicates)
        nodeSet = new CPredicateFilterNodeSet(context, nodeSet, predicate);
    result = new CNodeSetValue(nodeSet);
}

void CUnionExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    TRefPtr<CUnionNodeSet> nodeSet(new CUnionNodeSet(context));
    for (const TRefPtr<CExpression>& operand : m_aOperands) {
        TRefPtr<CValue> value;
        operand->Evaluate(value, context);
        nodeSet->AddOperand(RequireNodeSet(value));
    }
    result = new CNodeSetValue(nodeSet);
}

// Only child and self may stand anywhere; descendant, descendant-or-self, attribute and
// namespace only last; the other axes never. Such a path gives neither duplicates nor disorder.
bool CPathExpr::CanStream() const {
    if (m_pBase && !m_bAbsolute) return false;
    int last = m_aSteps.GetSize() - 1;
    for (int i = 0; i <= last; ++i) {
        switch (m_aSteps[i]->GetAxis()->GetKind()) {
            case AxisChild:
            case AxisSelf:
                break;
            case AxisDescendant:
            case AxisDescendantOrSelf:
            case AxisAttribute:
            case AxisNamespace:
                if (i != last) return false;
                break;
            default:
                return false;
        }
    }
    return true;
}

void CPathExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    TRefPtr<CNodeSet> nodeSet;
    if (CanStream()) {
        CStreamingPathNodeSet* streaming = new CStreamingPathNodeSet(context);
        nodeSet = streaming;
        if (m_pBase) streaming->AddElement(m_pBase);
        for (const TRefPtr<CStepExpr>& step : m_aSteps) streaming->AddElement(step);
    } else {
        CCollectedPathNodeSet* collected = new CCollectedPathNodeSet(context);
        nodeSet = collected;
        if (m_pBase) collected->AddElement(m_pBase);
        for (const TRefPtr<CStepExpr>& step : m_aSteps) collected->AddElement(step);
    }
    result = new CNodeSetValue(nodeSet);
}

}  // namespace Xpath
