// Walking a path level by level. Both path sets keep, per element, a live iterator and the
// context derived from it for the next element. When the next element is a step opened
// again for another node, its chain of sets and iterators is retargeted instead of rebuilt,
// so a path walk allocates nothing per node. Both walks are loops, not recursion, so the
// number of steps does not reach the stack.
#include "xpath/PathNodeSet.h"

#include "xpath/Context.h"
#include "xpath/PathExpr.h"
#include "xpath/SortedNodeList.h"
#include "xpath/Value.h"

namespace Xpath {

namespace {

// The per-element state of a walk over the elements of a path.
class CPathLevels {
public:
    CPathLevels(CContext* context, const TArray<TRefPtr<CExpression>>& elements)
        : m_pContext(context), m_aElements(elements) {
        m_aLevels.SetSize(elements.GetSize());
    }
    // Each level's sets hold the context of the level before; releasing from the last level
    // frees one level at a time instead of a chain as deep as the path.
    ~CPathLevels() {
        for (int level = m_aLevels.GetSize() - 1; level >= 0; --level) m_aLevels[level] = SLevel();
    }
    CPathLevels(const CPathLevels&) = delete;
    CPathLevels& operator=(const CPathLevels&) = delete;
    int GetCount() const { return m_aLevels.GetSize(); }
    CNodeIterator* GetIterator(int level) const { return m_aLevels[level].m_pIterator; }

    // Opens element `level` under the current node of the level before it (under the set's
    // context for level 0); the iterator then stands on its first node.
    void Open(int level) {
        SLevel& state = m_aLevels[level];
        CContext* context = ContextOf(level);
        if (!Reopen(state, context)) {
            TRefPtr<CNodeSet> nodeSet;
            m_aElements[level]->GetNodeSet(nodeSet, context);
            nodeSet->CreateIterator(state.m_pIterator);
            state.m_pOpenedUnder = context;
            state.m_pDerived = new CContext(m_pContext, state.m_pIterator);
        }
    }

    // The set of element `level` under the current node of the level before it, with no
    // iterator on it, so that nothing in it is evaluated before the caller asks.
    CNodeSet* OpenSet(int level) {
        SLevel& state = m_aLevels[level];
        CContext* context = ContextOf(level);
        Dom::CNode* node = context->GetNode();
        bool reused = state.m_pSet && state.m_pOpenedUnder.Get() == context && node &&
                      state.m_pSet->GetRefCount() == 1 && state.m_pSet->Retarget(node);
        if (!reused) {
            m_aElements[level]->GetNodeSet(state.m_pSet, context);
            state.m_pOpenedUnder = context;
        }
        return state.m_pSet;
    }

    // Moves the iterators on from `level` upwards until one has a node, and returns its
    // level; -1 when all are done.
    int Advance(int level) {
        for (; level >= 0; --level) {
            CNodeIterator* iterator = GetIterator(level);
            iterator->Next();
            if (iterator->Current()) break;
        }
        return level;
    }

private:
    struct SLevel {
        TRefPtr<CNodeIterator> m_pIterator;
        TRefPtr<CNodeSet> m_pSet;  // of a level opened by OpenSet
        // The context the level's sets were made under, and the one derived from its iterator.
        TRefPtr<CContext> m_pOpenedUnder;
        TRefPtr<CContext> m_pDerived;
    };

    CContext* ContextOf(int level) const {
        return level == 0 ? m_pContext.Get() : m_aLevels[level - 1].m_pDerived.Get();
    }

    // Moves the level's chain to the new context node when it was made under the same
    // (live) context and nobody else holds its node-set.
    static bool Reopen(SLevel& state, CContext* context) {
        if (!state.m_pIterator || state.m_pOpenedUnder.Get() != context) return false;
        CNodeSet* nodeSet = state.m_pIterator->GetNodeSet();
        Dom::CNode* node = context->GetNode();
        return node && nodeSet->GetRefCount() == 1 && nodeSet->Retarget(node) && state.m_pIterator->Restart();
    }

    TRefPtr<CContext> m_pContext;
    const TArray<TRefPtr<CExpression>>& m_aElements;  // held by the set that owns the walk
    TArray<SLevel> m_aLevels;
};

// Nested iteration, the last element varying fastest.
class CStreamingPathIterator : public CNodeIterator {
public:
    explicit CStreamingPathIterator(CStreamingPathNodeSet* set)
        : CNodeIterator(set), m_levels(set->GetContext(), set->GetElements()) {
        MoveTo(Descend(0) ? m_levels.GetIterator(m_levels.GetCount() - 1)->Current() : nullptr);
    }
    void Next() override {
        if (!Current()) return;
        int level = m_levels.Advance(m_levels.GetCount() - 1);
        bool found = level >= 0 && Descend(level + 1);
        MoveTo(found ? m_levels.GetIterator(m_levels.GetCount() - 1)->Current() : nullptr);
    }

private:
    // Opens the levels from `level` down to the last, backtracking over empty ones.
    bool Descend(int level) {
        int count = m_levels.GetCount();
        while (level < count) {
            m_levels.Open(level);
            if (m_levels.GetIterator(level)->Current()) {
                ++level;
                continue;
            }
            level = m_levels.Advance(level - 1);
            if (level < 0) return false;
            ++level;
        }
        return true;
    }

    CPathLevels m_levels;
};

class CResultIterator : public CNodeIterator {
public:
    CResultIterator(CNodeSet* set, CSortedNodeList* list) : CNodeIterator(set), m_pList(list) { Next(); }
    void Next() override { MoveTo(m_nIndex < m_pList->GetCount() ? m_pList->GetAt(m_nIndex++) : nullptr); }

private:
    TRefPtr<CSortedNodeList> m_pList;
    int32_t m_nIndex = 0;
};

}  // namespace

CStreamingPathNodeSet::CStreamingPathNodeSet(CContext* context) : m_pContext(context) {}
CStreamingPathNodeSet::~CStreamingPathNodeSet() = default;

// Depth first over all levels but the last, as the iterator walks them. The streaming shape
// gives no node twice, so the last element's sets under different nodes count apart.
int32_t CStreamingPathNodeSet::GetLength() {
    if (m_nLength >= 0) return m_nLength;
    CPathLevels levels(m_pContext, m_aElements);
    int last = levels.GetCount() - 1;
    int32_t count = 0;
    for (int level = 0;;) {
        int advance;  // the level whose iterator moves on next
        if (level == last) {
            count += levels.OpenSet(last)->GetLength();
            advance = last - 1;
        } else {
            levels.Open(level);
            if (levels.GetIterator(level)->Current()) {
                ++level;
                continue;
            }
            advance = level - 1;
        }
        level = levels.Advance(advance) + 1;
        if (level == 0) break;
    }
    m_nLength = count;
    return m_nLength;
}

void CStreamingPathNodeSet::CreateIterator(TRefPtr<CNodeIterator>& iterator) {
    iterator = new CStreamingPathIterator(this);
}

CCollectedPathNodeSet::CCollectedPathNodeSet(CContext* context) : m_pContext(context) {}
CCollectedPathNodeSet::~CCollectedPathNodeSet() = default;

void CCollectedPathNodeSet::CreateIterator(TRefPtr<CNodeIterator>& iterator) {
    if (!m_pResult) Collect();
    iterator = new CResultIterator(this, m_pResult);
}

int32_t CCollectedPathNodeSet::GetLength() {
    if (!m_pResult) Collect();
    return m_pResult->GetCount();
}

// Depth first over the levels. Each level's list is its visited set: a node reached twice at
// the same level is expanded once. The last list is the result, in document order.
void CCollectedPathNodeSet::Collect() {
    int count = m_aElements.GetSize();
    CSortedNodeListFactory* factory = m_pContext->GetExtensionTypes()->GetListFactory();
    TArray<TRefPtr<CSortedNodeList>> lists;
    lists.SetSize(count);
    for (TRefPtr<CSortedNodeList>& list : lists) factory->Create(list, m_pContext->GetNodeOrder());
    CPathLevels levels(m_pContext, m_aElements);
    int level = 0;
    levels.Open(0);
    while (level >= 0) {
        CNodeIterator* iterator = levels.GetIterator(level);
        Dom::CNode* node = iterator->Current();
        if (!node) {
            if (--level >= 0) levels.GetIterator(level)->Next();
            continue;
        }
        if (!lists[level]->Contains(node)) {
            lists[level]->Insert(node);
            if (level + 1 < count) {
                levels.Open(++level);
                continue;
            }
        }
        iterator->Next();
    }
    m_pResult = lists[count - 1];
}

}  // namespace Xpath
