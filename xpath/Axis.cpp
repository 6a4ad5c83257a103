// The axes as pairs of walking rules: where an iteration starts from the origin, and how it
// moves on from the current node. The document-wide axes use the bare successor and
// predecessor steps and exclude nothing, so following also gives the origin's descendants and
// preceding its ancestors.
#include "xpath/Axis.h"

#include "xpath/NodeTest.h"

namespace Xpath {

Dom::CNode* Successor(const Dom::CNode* node, const Dom::CNode* limit) {
    if (Dom::CNode* child = node->GetFirstChild()) return child;
    for (const Dom::CNode* c = node; c && c != limit; c = c->GetParentNode())
        if (Dom::CNode* next = c->GetNextSibling()) return next;
    return nullptr;
}

Dom::CNode* Predecessor(const Dom::CNode* node) {
    Dom::CNode* previous = node->GetPreviousSibling();
    if (!previous) return node->GetParentNode();
    while (Dom::CNode* last = previous->GetLastChild()) previous = last;
    return previous;
}

bool CAxisNodeSet::Retarget(Dom::CNode* origin) {
    m_origin = origin;
    m_nLength = -1;
    return true;
}

namespace {

// Successor for a node strictly below `top`, read from the records: below a container every
// node is of a sibling kind, and only elements among them have children.
Dom::CNode* SubtreeSuccessor(const Dom::CNode* node, const Dom::CNode* top) {
    if (node->GetNodeType() == Dom::ELEMENT_NODE)
        if (Dom::CNode* child = static_cast<const Dom::CElement*>(node)->m_pFirstChild) return child;
    for (auto* c = static_cast<const Dom::CChildNode*>(node);; c = static_cast<const Dom::CChildNode*>(c->m_pParent)) {
        if (c->m_pNext) return c->m_pNext;
        if (c->m_pParent == top) return nullptr;
    }
}

// The next sibling of a node that a child or sibling walk stands on, which is of a sibling kind.
Dom::CNode* NextSibling(const Dom::CNode* node) { return static_cast<const Dom::CChildNode*>(node)->m_pNext; }

// `TWalk` gives First(origin) and After(current, origin, position), position being that of
// the current node.
template <class TWalk>
class TAxisIterator : public CNodeIterator {
public:
    explicit TAxisIterator(CAxisNodeSet* set) : CNodeIterator(set), m_origin(set->GetOrigin()) {
        MoveTo(TWalk::First(m_origin));
    }
    void Next() override {
        if (Dom::CNode* current = Current()) MoveTo(TWalk::After(current, m_origin, m_nPosition));
    }
    bool Restart() override {
        m_origin = static_cast<CAxisNodeSet*>(m_pNodeSet.Get())->GetOrigin();
        Rewind();
        MoveTo(TWalk::First(m_origin));
        return true;
    }

private:
    Dom::TNodeRef m_origin;
};

// The axis walk and a test filter's test in one iterator, which belongs to the filter set.
// Positions are the filter's; the walk's own count of nodes goes to After.
template <class TWalk>
class TTestedAxisIterator : public CNodeIterator {
public:
    TTestedAxisIterator(CTestFilterNodeSet* filter, CAxisNodeSet* axis)
        : CNodeIterator(filter),
          m_pAxis(axis),
          m_origin(axis->GetOrigin()),
          m_pContext(filter->GetContext()),
          m_pTest(filter->GetTest()) {
        Seek(TWalk::First(m_origin));
    }
    void Next() override {
        if (Dom::CNode* current = Current()) Seek(TWalk::After(current, m_origin, m_nWalked));
    }
    bool Restart() override {
        m_origin = m_pAxis->GetOrigin();
        Rewind();
        m_nWalked = 0;
        Seek(TWalk::First(m_origin));
        return true;
    }

private:
    // Stands on the first node from `node` on that the test accepts.
    void Seek(Dom::CNode* node) {
        for (; node; node = TWalk::After(node, m_origin, m_nWalked)) {
            ++m_nWalked;
            if (m_pTest->Accepts(m_pContext, node)) break;
        }
        MoveTo(node);
    }

    CAxisNodeSet* m_pAxis;  // the filter set holds it, and the context and test
    Dom::TNodeRef m_origin;
    CContext* m_pContext;
    const CNodeTest* m_pTest;
    int32_t m_nWalked = 0;
};

// Counting walks the records without an iterator.
template <class TWalk, bool Reverse>
class TAxisNodeSet : public CAxisNodeSet {
public:
    explicit TAxisNodeSet(Dom::CNode* origin) : CAxisNodeSet(origin, Reverse) {}
    void CreateIterator(TRefPtr<CNodeIterator>& iterator) override { iterator = new TAxisIterator<TWalk>(this); }
    bool CreateTestedIterator(TRefPtr<CNodeIterator>& iterator, CTestFilterNodeSet* filter) override {
        iterator = new TTestedAxisIterator<TWalk>(filter, this);
        return true;
    }
    int32_t GetLength() override {
        if (m_nLength < 0) m_nLength = Count([](const Dom::CNode*) { return true; });
        return m_nLength;
    }
    int32_t CountAccepted(CContext* context, const CNodeTest* test) override {
        return Count([context, test](const Dom::CNode* node) { return test->Accepts(context, node); });
    }

private:
    template <class TAccept>
    int32_t Count(TAccept accept) const {
        int32_t count = 0;
        int32_t walked = 0;
        for (Dom::CNode* node = TWalk::First(m_origin); node; node = TWalk::After(node, m_origin, ++walked))
            if (accept(node)) ++count;
        return count;
    }
};

struct SChildWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return origin->GetFirstChild(); }
    static Dom::CNode* After(Dom::CNode* current, Dom::CNode*, int32_t) { return NextSibling(current); }
};
struct SDescendantWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return origin->GetFirstChild(); }
    static Dom::CNode* After(Dom::CNode* current, Dom::CNode* origin, int32_t) {
        return SubtreeSuccessor(current, origin);
    }
};
struct SParentWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return origin->GetParentNode(); }
    static Dom::CNode* After(Dom::CNode*, Dom::CNode*, int32_t) { return nullptr; }
};
struct SAncestorWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return origin->GetParentNode(); }
    static Dom::CNode* After(Dom::CNode* current, Dom::CNode*, int32_t) { return current->GetParentNode(); }
};
struct SFollowingSiblingWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return origin->GetNextSibling(); }
    static Dom::CNode* After(Dom::CNode* current, Dom::CNode*, int32_t) { return NextSibling(current); }
};
struct SPrecedingSiblingWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return origin->GetPreviousSibling(); }
    static Dom::CNode* After(Dom::CNode* current, Dom::CNode*, int32_t) { return current->GetPreviousSibling(); }
};
struct SFollowingWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return Successor(origin, nullptr); }
    static Dom::CNode* After(Dom::CNode* current, Dom::CNode*, int32_t) { return Successor(current, nullptr); }
};
struct SPrecedingWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return Predecessor(origin); }
    static Dom::CNode* After(Dom::CNode* current, Dom::CNode*, int32_t) { return Predecessor(current); }
};
// The index of the next item is the position of the current one.
struct SAttributeWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return After(nullptr, origin, 0); }
    static Dom::CNode* After(Dom::CNode*, Dom::CNode* origin, int32_t position) {
        return position < origin->GetAttributeCount() ? origin->GetAttributeAt(position) : nullptr;
    }
};
struct SNamespaceWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return After(nullptr, origin, 0); }
    static Dom::CNode* After(Dom::CNode*, Dom::CNode* origin, int32_t position) {
        return position < origin->GetNamespaceCount() ? origin->GetNamespaceAt(position) : nullptr;
    }
};
struct SSelfWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return origin; }
    static Dom::CNode* After(Dom::CNode*, Dom::CNode*, int32_t) { return nullptr; }
};
struct SDescendantOrSelfWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return origin; }
    static Dom::CNode* After(Dom::CNode* current, Dom::CNode* origin, int32_t) {
        return current == origin ? origin->GetFirstChild() : SubtreeSuccessor(current, origin);
    }
};
struct SAncestorOrSelfWalk {
    static Dom::CNode* First(Dom::CNode* origin) { return origin; }
    static Dom::CNode* After(Dom::CNode* current, Dom::CNode*, int32_t) { return current->GetParentNode(); }
};

}  // namespace

#define KST_XPATH_AXIS_BODY(Name, Kind, Walk, Reverse)                                    \
    int32_t Name::GetKind() const { return Kind; }                                       \
    void Name::GetNodeSet(TRefPtr<CNodeSet>& nodeSet, Dom::CNode* node) const {          \
        nodeSet = new TAxisNodeSet<Walk, Reverse>(node);                                 \
    }
KST_XPATH_AXIS_BODY(CChildAxis, AxisChild, SChildWalk, false)
KST_XPATH_AXIS_BODY(CDescendantAxis, AxisDescendant, SDescendantWalk, false)
KST_XPATH_AXIS_BODY(CParentAxis, AxisParent, SParentWalk, false)
KST_XPATH_AXIS_BODY(CAncestorAxis, AxisAncestor, SAncestorWalk, false)
KST_XPATH_AXIS_BODY(CFollowingSiblingAxis, AxisFollowingSibling, SFollowingSiblingWalk, false)
KST_XPATH_AXIS_BODY(CPrecedingSiblingAxis, AxisPrecedingSibling, SPrecedingSiblingWalk, true)
KST_XPATH_AXIS_BODY(CFollowingAxis, AxisFollowing, SFollowingWalk, false)
KST_XPATH_AXIS_BODY(CPrecedingAxis, AxisPreceding, SPrecedingWalk, true)
KST_XPATH_AXIS_BODY(CAttributeAxis, AxisAttribute, SAttributeWalk, false)
KST_XPATH_AXIS_BODY(CNamespaceAxis, AxisNamespace, SNamespaceWalk, false)
KST_XPATH_AXIS_BODY(CSelfAxis, AxisSelf, SSelfWalk, false)
KST_XPATH_AXIS_BODY(CDescendantOrSelfAxis, AxisDescendantOrSelf, SDescendantOrSelfWalk, false)
KST_XPATH_AXIS_BODY(CAncestorOrSelfAxis, AxisAncestorOrSelf, SAncestorOrSelfWalk, true)
#undef KST_XPATH_AXIS_BODY

void CAxis::Create(TRefPtr<CAxis>& axis, int32_t kind) {
    switch (kind) {
        case AxisChild: axis = new CChildAxis(); break;
        case AxisDescendant: axis = new CDescendantAxis(); break;
        case AxisParent: axis = new CParentAxis(); break;
        case AxisAncestor: axis = new CAncestorAxis(); break;
        case AxisFollowingSibling: axis = new CFollowingSiblingAxis(); break;
        case AxisPrecedingSibling: axis = new CPrecedingSiblingAxis(); break;
        case AxisFollowing: axis = new CFollowingAxis(); break;
        case AxisPreceding: axis = new CPrecedingAxis(); break;
        case AxisAttribute: axis = new CAttributeAxis(); break;
        case AxisNamespace: axis = new CNamespaceAxis(); break;
        case AxisSelf: axis = new CSelfAxis(); break;
        case AxisDescendantOrSelf: axis = new CDescendantOrSelfAxis(); break;
        case AxisAncestorOrSelf: axis = new CAncestorOrSelfAxis(); break;
        default: axis = nullptr; break;
    }
}

}  // namespace Xpath
