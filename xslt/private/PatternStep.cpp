// Child and attribute steps of patterns, and the lazily counted sibling sets that give their
// predicates a position.
#include "xslt/private/PatternStep.h"

#include "xpath/Axis.h"
#include "xpath/Context.h"
#include "xpath/NodeTest.h"
#include "xpath/PathExpr.h"
#include "xslt/private/Pattern.h"

namespace XsltPrivate {

namespace {

// Stands on the node under test; its position is looked up among the counting step's
// members only when a predicate asks for it.
class CPatternIterator : public Xpath::CNodeIterator {
public:
    CPatternIterator(CPatternNodeSet* nodeSet, Dom::CNode* node) : Xpath::CNodeIterator(nodeSet) {
        m_current = node;
        m_nPosition = 0;
    }
    int32_t GetPosition() const override {
        if (!m_bKnown) {
            m_nFound = static_cast<CPatternNodeSet*>(m_pNodeSet.Get())->FindPosition();
            m_bKnown = true;
        }
        return m_nFound;
    }
    void Next() override {
        Rewind();
        m_nFound = 0;
        m_bKnown = true;
    }

private:
    mutable int32_t m_nFound = 0;
    mutable bool m_bKnown = false;
};

bool TestNeedsContext(const Xpath::CNodeTest* test) {
    if (test->GetKind() == Xpath::TestNamespace) return true;
    if (test->GetKind() != Xpath::TestName) return false;
    return !static_cast<const Xpath::CNameTest*>(test)->GetPrefix().empty();
}

// The place of `node` among what a counting step without predicates selects on the child axis:
// one more than the preceding siblings that pass the test. No walk of the parent's other
// children and no allocation; -1 where this shortcut does not apply.
int32_t CountSiblingPosition(Xpath::CContext* context, const Xpath::CStepExpr* countingStep, Dom::CNode* node) {
    if (!countingStep->GetPredicates().IsEmpty() || countingStep->GetAxis()->GetKind() != Xpath::AxisChild) return -1;
    const Xpath::CNodeTest* test = countingStep->GetTest();
    int32_t position = 1;
    for (Dom::CNode* sibling = node->GetPreviousSibling(); sibling; sibling = sibling->GetPreviousSibling()) {
        if (test->Matches(context, sibling)) ++position;
    }
    return position;
}

bool IsChildType(int type) {
    return type == Dom::ELEMENT_NODE || type == Dom::TEXT_NODE || type == Dom::CDATA_SECTION_NODE ||
           type == Dom::PROCESSING_INSTRUCTION_NODE || type == Dom::COMMENT_NODE;
}

}  // namespace

CTestingPatternStep::CTestingPatternStep(Xpath::CStepExpr* step)
    : m_pStep(step), m_bNeedsContext(TestNeedsContext(step->GetTest())) {
    const TArray<TRefPtr<Xpath::CPredicate>>& predicates = step->GetPredicates();
    for (int k = 0; k < predicates.GetSize(); ++k) {
        TRefPtr<Xpath::CStepExpr> counting(new Xpath::CStepExpr(step->GetAxis(), step->GetTest()));
        for (int j = 0; j < k; ++j) counting->GetPredicates().Add(predicates[j]);
        m_aCountingSteps.Add(counting);
    }
}

CTestingPatternStep::~CTestingPatternStep() = default;

bool CTestingPatternStep::Test(IPatternContext* context, Dom::CNode* node) const {
    Xpath::CContext* expressionContext = m_bNeedsContext ? context->GetExpressionContext() : nullptr;
    if (!m_pStep->GetTest()->Matches(expressionContext, node)) return false;
    const int count = m_aCountingSteps.GetSize();
    if (count == 0) return true;
    if (!expressionContext) expressionContext = context->GetExpressionContext();
    for (int k = 0; k < count; ++k) {
        if (!TestPredicate(expressionContext, node, k)) return false;
    }
    return true;
}

bool CTestingPatternStep::TestPredicate(Xpath::CContext* context, Dom::CNode* node, int index) const {
    const Xpath::CPredicate* predicate = m_pStep->GetPredicates()[index];
    // A number literal such as [2] needs only the node's position.
    const double constant = predicate->GetConstantPosition();
    if (constant > 0) {
        int32_t position = CountSiblingPosition(context, m_aCountingSteps[index], node);
        if (position >= 0) return position == constant;
    }
    TRefPtr<CPatternNodeSet> siblings(new CPatternNodeSet(context, m_aCountingSteps[index], node));
    TRefPtr<Xpath::CNodeIterator> iterator(new CPatternIterator(siblings, node));
    TRefPtr<Xpath::CContext> predicateContext(new Xpath::CContext(context, iterator));
    return predicate->Test(predicateContext);
}

bool CChildPatternStep::Matches(IPatternContext* context, Dom::CNode* node) const {
    return IsChildType(node->GetNodeType()) && Test(context, node);
}

bool CAttributePatternStep::Matches(IPatternContext* context, Dom::CNode* node) const {
    return node->GetNodeType() == Dom::ATTRIBUTE_NODE && Test(context, node);
}

CPatternNodeSet::CPatternNodeSet(Xpath::CContext* context, Xpath::CStepExpr* countingStep, Dom::CNode* node)
    : m_pContext(context), m_pCountingStep(countingStep), m_node(node) {}

CPatternNodeSet::~CPatternNodeSet() = default;

Xpath::CNodeSet* CPatternNodeSet::GetMembers() {
    if (m_pMembers) return m_pMembers;
    Dom::CNode* parent = m_node->GetParentNode();
    if (!parent) {
        m_pMembers = new Xpath::CSingleNodeSet(nullptr);
    } else {
        TRefPtr<Xpath::CContext> parentContext;
        Xpath::CContext::CreateForNode(parentContext, m_pContext, parent);
        m_pCountingStep->GetNodeSet(m_pMembers, parentContext);
    }
    return m_pMembers;
}

int32_t CPatternNodeSet::GetLength() {
    if (m_nLength < 0) m_nLength = GetMembers()->GetLength();
    return m_nLength;
}

void CPatternNodeSet::CreateIterator(TRefPtr<Xpath::CNodeIterator>& iterator) {
    GetMembers()->CreateIterator(iterator);
}

int32_t CPatternNodeSet::FindPosition() {
    int32_t position = CountSiblingPosition(m_pContext, m_pCountingStep, m_node);
    if (position >= 0) return position;
    TRefPtr<Xpath::CNodeIterator> iterator;
    GetMembers()->CreateIterator(iterator);
    for (position = 1; iterator->Current(); iterator->Next(), ++position) {
        if (iterator->Current() == m_node.Get()) return position;
    }
    return 0;
}

}  // namespace XsltPrivate
