// The thirteen axes. An axis object is stateless and makes, from one node, a lazy node-set
// that walks the tree afresh at each iterator with no storage proportional to the document.
#pragma once
#include <cstdint>

#include "core/RefObject.h"
#include "dom/Node.h"
#include "xpath/NodeSet.h"

namespace Xpath {

// Axis kinds (not the indexes of the axis-name table).
enum {
    AxisChild = 0,
    AxisDescendant = 1,
    AxisParent = 2,
    AxisAncestor = 3,
    AxisFollowingSibling = 4,
    AxisPrecedingSibling = 5,
    AxisFollowing = 6,
    AxisPreceding = 7,
    AxisAttribute = 8,
    AxisNamespace = 9,
    AxisSelf = 10,
    AxisDescendantOrSelf = 11,
    AxisAncestorOrSelf = 12,
    AxisKindCount = 13,
};

class CAxis : public CRefObject {
public:
    // The axis object of a kind; `axis` stays null for an unknown kind.
    static void Create(TRefPtr<CAxis>& axis, int32_t kind);

    virtual int32_t GetKind() const = 0;
    virtual void GetNodeSet(TRefPtr<CNodeSet>& nodeSet, Dom::CNode* node) const = 0;
};

#define KST_XPATH_AXIS(Name)                                                           \
    class Name : public CAxis {                                                        \
    public:                                                                            \
        int32_t GetKind() const override;                                              \
        void GetNodeSet(TRefPtr<CNodeSet>& nodeSet, Dom::CNode* node) const override; \
    };
KST_XPATH_AXIS(CChildAxis)
KST_XPATH_AXIS(CDescendantAxis)
KST_XPATH_AXIS(CParentAxis)
KST_XPATH_AXIS(CAncestorAxis)
KST_XPATH_AXIS(CFollowingSiblingAxis)
KST_XPATH_AXIS(CPrecedingSiblingAxis)
KST_XPATH_AXIS(CFollowingAxis)
KST_XPATH_AXIS(CPrecedingAxis)
KST_XPATH_AXIS(CAttributeAxis)
KST_XPATH_AXIS(CNamespaceAxis)
KST_XPATH_AXIS(CSelfAxis)
KST_XPATH_AXIS(CDescendantOrSelfAxis)
KST_XPATH_AXIS(CAncestorOrSelfAxis)
#undef KST_XPATH_AXIS

// The node-set of an axis from one origin. `reverse` follows the axis table: preceding,
// preceding-sibling and ancestor-or-self are flagged, ancestor is not.
class CAxisNodeSet : public CNodeSet {
public:
    CAxisNodeSet(Dom::CNode* origin, bool reverse) : m_origin(origin), m_bReverse(reverse) {}
    bool IsDocumentOrder() const override { return !m_bReverse; }
    bool IsReverseDocumentOrder() const override { return m_bReverse; }
    bool Retarget(Dom::CNode* origin) override;
    Dom::CNode* GetOrigin() const { return m_origin; }

protected:
    Dom::TNodeRef m_origin;
    bool m_bReverse;
};

// The next node after `node` in document order, not leaving the subtree of `limit` (null for
// no limit). Attributes and namespace nodes have no children and no siblings here.
Dom::CNode* Successor(const Dom::CNode* node, const Dom::CNode* limit);
// The node before `node`: the previous sibling's deepest last descendant, else the parent.
Dom::CNode* Predecessor(const Dom::CNode* node);

}  // namespace Xpath
