// A list of nodes in the order of a node order, never holding a node twice; the visited sets
// and results of collecting paths, and the result of id(). Nodes that arrive in order are
// appended; the first one out of order switches the list to a hash set for membership, and
// the list is sorted once when it is next read.
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

    // A node already present is not added again.
    virtual void Insert(Dom::CNode* node);
    virtual int32_t GetCount() const { return m_aNodes.GetSize(); }
    virtual void GetItem(Dom::TNodeRef& node, int32_t index) const { node = GetAt(index); }
    virtual bool Contains(const Dom::CNode* node) const;
    virtual void CreateCursor(TRefPtr<CSortedNodeListCursor>& cursor);

    // The node at `index` in order, without touching counts.
    Dom::CNode* GetAt(int32_t index) const {
        if (!m_bSorted) Sort();
        return m_aNodes[index];
    }

private:
    // Binary search in the sorted list: the index of the node or of its place.
    int32_t Find(const Dom::CNode* node, bool& found) const;
    void Sort() const;
    // The hash set over all entries, for membership while the list is out of order.
    bool HashContains(const Dom::CNode* node) const;
    void HashAdd(Dom::CNode* node);
    void HashRebuild(int capacity);

    TRefPtr<INodeOrder> m_pOrder;
    mutable TArray<Dom::CNode*> m_aNodes;
    mutable bool m_bSorted = true;
    mutable TArray<Dom::CNode*> m_aSlots;  // empty while the list is sorted
    int32_t m_nSlotCount = 0;
    // Documents and fragments in the list, the only nodes that need a count to stay alive.
    TArray<Dom::TNodeRef> m_aCounted;
};

class CSortedNodeListFactory : public CRefObject {
public:
    virtual void Create(TRefPtr<CSortedNodeList>& list, INodeOrder* order);
};

}  // namespace Xpath
