// The node-set root with its counting defaults, and the single, list, union and filter sets.
#include "xpath/NodeSet.h"

#include "xpath/Context.h"
#include "xpath/NodeTest.h"
#include "xpath/PathExpr.h"
#include "xpath/SortedNodeList.h"

namespace Xpath {

namespace {

class CSingleNodeIterator : public CNodeIterator {
public:
    CSingleNodeIterator(CNodeSet* set, Dom::CNode* node) : CNodeIterator(set) { MoveTo(node); }
    void Next() override { MoveTo(nullptr); }
};

class CNodeListIterator : public CNodeIterator {
public:
    CNodeListIterator(CNodeSet* set, CSortedNodeList* list) : CNodeIterator(set), m_pList(list) { Next(); }
    void Next() override { MoveTo(m_nIndex < m_pList->GetCount() ? m_pList->GetAt(m_nIndex++) : nullptr); }

private:
    TRefPtr<CSortedNodeList> m_pList;
    int32_t m_nIndex = 0;
};

// Keeps one iterator per operand and delivers the smallest current node, stepping over the
// same node in other operands.
class CUnionIterator : public CNodeIterator {
public:
    explicit CUnionIterator(CUnionNodeSet* set) : CNodeIterator(set), m_pOrder(set->GetContext()->GetNodeOrder()) {
        const TPairFirstList<TRefPtr<CNodeSet>>& operands = set->GetOperands();
        for (int i = 0; i < operands.GetSize(); ++i) {
            TRefPtr<CNodeIterator> iterator;
            operands[i]->CreateIterator(iterator);
            m_aIterators.Add(iterator);
        }
        Next();
    }
    void Next() override {
        int best = -1;
        for (int i = 0; i < m_aIterators.GetSize(); ++i) {
            Dom::CNode* current = m_aIterators[i]->Current();
            if (!current) continue;
            if (best < 0) {
                best = i;
                continue;
            }
            int order = m_pOrder->Compare(m_aIterators[best]->Current(), current);
            if (order > 0)
                best = i;
            else if (order == 0)
                m_aIterators[i]->Next();
        }
        if (best < 0) return MoveTo(nullptr);
        MoveTo(m_aIterators[best]->Current());
        m_aIterators[best]->Next();
    }

private:
    INodeOrder* m_pOrder;  // kept alive by the set's context
    TPairFirstList<TRefPtr<CNodeIterator>> m_aIterators;
};

// Two operands whose nodes never interleave: all of `first`, then all of the other. Both
// iterators are made at once, as the merging iterator makes them.
class CConcatenatingIterator : public CNodeIterator {
public:
    CConcatenatingIterator(CUnionNodeSet* set, int first) : CNodeIterator(set) {
        const TPairFirstList<TRefPtr<CNodeSet>>& operands = set->GetOperands();
        operands[first]->CreateIterator(m_pFirst);
        operands[1 - first]->CreateIterator(m_pSecond);
        Next();
    }
    void Next() override {
        CNodeIterator* source = m_pFirst->Current() ? m_pFirst.Get() : m_pSecond.Get();
        MoveTo(source->Current());
        if (source->Current()) source->Next();
    }

private:
    TRefPtr<CNodeIterator> m_pFirst;
    TRefPtr<CNodeIterator> m_pSecond;
};

class CTestFilterIterator : public CNodeIterator {
public:
    explicit CTestFilterIterator(CTestFilterNodeSet* set)
        : CNodeIterator(set), m_pContext(set->GetContext()), m_pTest(set->GetTest()) {
        set->GetInner()->CreateIterator(m_pInner);
        Skip();
    }
    void Next() override {
        m_pInner->Next();
        Skip();
    }
    bool Restart() override {
        if (!m_pInner->Restart()) return false;
        Rewind();
        Skip();
        return true;
    }

private:
    void Skip() {
        Dom::CNode* node = m_pInner->Current();
        while (node && !m_pTest->Accepts(m_pContext, node)) {
            m_pInner->Next();
            node = m_pInner->Current();
        }
        MoveTo(node);
    }

    CContext* m_pContext;  // the set holds both
    CNodeTest* m_pTest;
    TRefPtr<CNodeIterator> m_pInner;
};

// Evaluates the predicate in one context derived from the inner iterator, so position() and
// last() inside it are the inner iteration's. A number literal needs no evaluation, and the
// iteration ends once the inner position has passed it.
class CPredicateFilterIterator : public CNodeIterator {
public:
    explicit CPredicateFilterIterator(CPredicateFilterNodeSet* set)
        : CNodeIterator(set),
          m_pPredicate(set->GetPredicate()),
          m_dPosition(set->GetPredicate()->GetConstantPosition()) {
        set->GetInner()->CreateIterator(m_pInner);
        if (m_dPosition == 0) m_pContext = new CContext(set->GetContext(), m_pInner);
        Skip();
    }
    void Next() override {
        if (!m_pInner->Current()) return MoveTo(nullptr);
        m_pInner->Next();
        Skip();
    }
    bool Restart() override {
        if (!m_pInner->Restart()) return false;
        Rewind();
        Skip();
        return true;
    }

private:
    void Skip() {
        Dom::CNode* node = m_pInner->Current();
        while (node && !Accepts()) {
            if (m_dPosition != 0 && m_pInner->GetPosition() >= m_dPosition) {
                node = nullptr;
                break;
            }
            m_pInner->Next();
            node = m_pInner->Current();
        }
        MoveTo(node);
    }
    bool Accepts() const {
        if (m_dPosition != 0) return m_pInner->GetPosition() == m_dPosition;
        return m_pPredicate->Test(m_pContext);
    }

    CPredicate* m_pPredicate;  // the set holds it
    double m_dPosition;
    TRefPtr<CNodeIterator> m_pInner;
    TRefPtr<CContext> m_pContext;
};

}  // namespace

int32_t CNodeSet::GetLength() {
    if (m_nLength < 0) {
        TRefPtr<CNodeIterator> iterator;
        CreateIterator(iterator);
        int32_t count = 0;
        for (; iterator->Current(); iterator->Next()) ++count;
        m_nLength = count;
    }
    return m_nLength;
}

Dom::CNode* CNodeSet::GetFirst() {
    TRefPtr<CNodeIterator> iterator;
    CreateIterator(iterator);
    return iterator->Current();
}

bool CNodeSet::Retarget(Dom::CNode*) { return false; }

bool CNodeSet::CreateTestedIterator(TRefPtr<CNodeIterator>&, CTestFilterNodeSet*) { return false; }

int32_t CNodeSet::CountAccepted(CContext* context, const CNodeTest* test) {
    TRefPtr<CNodeIterator> iterator;
    CreateIterator(iterator);
    int32_t count = 0;
    for (; Dom::CNode* node = iterator->Current(); iterator->Next())
        if (test->Accepts(context, node)) ++count;
    return count;
}

CNodeIterator::CNodeIterator(CNodeSet* nodeSet) : m_pNodeSet(nodeSet) {}
CNodeIterator::~CNodeIterator() = default;

bool CNodeIterator::Restart() { return false; }

void CSingleNodeSet::CreateIterator(TRefPtr<CNodeIterator>& iterator) {
    iterator = new CSingleNodeIterator(this, m_node);
}

CNodeListNodeSet::CNodeListNodeSet(CSortedNodeList* list) : m_pList(list) {}
CNodeListNodeSet::~CNodeListNodeSet() = default;

int32_t CNodeListNodeSet::GetLength() { return m_pList->GetCount(); }

void CNodeListNodeSet::CreateIterator(TRefPtr<CNodeIterator>& iterator) {
    iterator = new CNodeListIterator(this, m_pList);
}

CUnionNodeSet::CUnionNodeSet(CContext* context, int first) : m_pContext(context), m_nFirst(first) {}
CUnionNodeSet::~CUnionNodeSet() = default;

void CUnionNodeSet::CreateIterator(TRefPtr<CNodeIterator>& iterator) {
    if (m_nFirst >= 0 && m_aOperands.GetSize() == 2)
        iterator = new CConcatenatingIterator(this, m_nFirst);
    else
        iterator = new CUnionIterator(this);
}

CTestFilterNodeSet::CTestFilterNodeSet(CContext* context, CNodeSet* inner, CNodeTest* test)
    : m_pContext(context), m_pInner(inner), m_pTest(test) {}
CTestFilterNodeSet::~CTestFilterNodeSet() = default;

bool CTestFilterNodeSet::IsDocumentOrder() const { return m_pInner->IsDocumentOrder(); }
bool CTestFilterNodeSet::IsReverseDocumentOrder() const { return m_pInner->IsReverseDocumentOrder(); }

int32_t CTestFilterNodeSet::GetLength() {
    if (m_nLength < 0) m_nLength = m_pInner->CountAccepted(m_pContext, m_pTest);
    return m_nLength;
}

void CTestFilterNodeSet::CreateIterator(TRefPtr<CNodeIterator>& iterator) {
    if (!m_pInner->CreateTestedIterator(iterator, this)) iterator = new CTestFilterIterator(this);
}

bool CTestFilterNodeSet::Retarget(Dom::CNode* origin) {
    m_nLength = -1;
    return m_pInner->Retarget(origin);
}

CPredicateFilterNodeSet::CPredicateFilterNodeSet(CContext* context, CNodeSet* inner, CPredicate* predicate)
    : m_pContext(context), m_pInner(inner), m_pPredicate(predicate) {}
CPredicateFilterNodeSet::~CPredicateFilterNodeSet() = default;

bool CPredicateFilterNodeSet::IsDocumentOrder() const { return m_pInner->IsDocumentOrder(); }
bool CPredicateFilterNodeSet::IsReverseDocumentOrder() const { return m_pInner->IsReverseDocumentOrder(); }

void CPredicateFilterNodeSet::CreateIterator(TRefPtr<CNodeIterator>& iterator) {
    iterator = new CPredicateFilterIterator(this);
}

bool CPredicateFilterNodeSet::Retarget(Dom::CNode* origin) {
    m_nLength = -1;
    return m_pInner->Retarget(origin);
}

}  // namespace Xpath
