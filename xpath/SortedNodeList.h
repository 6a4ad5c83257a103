// A list of nodes kept sorted by a node order, never holding a node twice; the visited sets
// and results of collecting paths, and the result of id().
#pragma once
#include <cstdint>

#include "core/Array.h"
#include "core/RefObject.h"
#include "dom/Node.h"

namespace Xpath {

class INodeOrder;

class CSortedNodeListCursor : public CRefObject {
public:
    // Null past the end.
    virtual void GetCurrent(Dom::TNodeRef& node) const = 0;
    virtual void Advance() = 0;
};

class CSortedNodeList : public CRefObject {
public:
    explicit CSortedNodeList(INodeOrder* order);
    ~CSortedNodeList() override;

    // Places the node by binary search; a node already present is not added again.
    virtual void Insert(Dom::CNode* node);
    virtual int32_t GetCount() const { return m_aNodes.GetSize(); }
    virtual void GetItem(Dom::TNodeRef& node, int32_t index) const { node = m_aNodes[index]; }
    virtual bool Contains(const Dom::CNode* node) const;
    virtual void CreateCursor(TRefPtr<CSortedNodeListCursor>& cursor);

    // The node at `index` without touching counts.
    Dom::CNode* GetAt(int32_t index) const { return m_aNodes[index].Get(); }

private:
    // The index of the node, or of the place where it would go, and whether it is there.
    int32_t Find(const Dom::CNode* node, bool& found) const;

    TRefPtr<INodeOrder> m_pOrder;
    TArray<Dom::TNodeRef> m_aNodes;
};

class CSortedNodeListFactory : public CRefObject {
public:
    virtual void Create(TRefPtr<CSortedNodeList>& list, INodeOrder* order);
};

}  // namespace Xpath
