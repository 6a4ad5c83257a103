// Sorted node lists: binary search by the node order, with the common case of a node that
// belongs at the end (paths deliver mostly in document order) checked first.
#include "xpath/SortedNodeList.h"

#include "xpath/Context.h"

namespace Xpath {

namespace {

class CListCursor : public CSortedNodeListCursor {
public:
    explicit CListCursor(CSortedNodeList* list) : m_pList(list) {}
    void GetCurrent(Dom::TNodeRef& node) const override {
        if (m_nIndex < m_pList->GetCount())
            m_pList->GetItem(node, m_nIndex);
        else
            node = nullptr;
    }
    void Advance() override { ++m_nIndex; }

private:
    TRefPtr<CSortedNodeList> m_pList;
    int32_t m_nIndex = 0;
};

}  // namespace

CSortedNodeList::CSortedNodeList(INodeOrder* order) : m_pOrder(order) {}
CSortedNodeList::~CSortedNodeList() = default;

int32_t CSortedNodeList::Find(const Dom::CNode* node, bool& found) const {
    found = false;
    int32_t low = 0, high = m_aNodes.GetSize();
    if (high > 0) {
        int last = m_pOrder->Compare(m_aNodes[high - 1].Get(), node);
        if (last < 0) return high;
        if (last == 0) {
            found = true;
            return high - 1;
        }
        --high;
    }
    while (low < high) {
        int32_t middle = low + (high - low) / 2;
        int order = m_pOrder->Compare(m_aNodes[middle].Get(), node);
        if (order == 0) {
            found = true;
            return middle;
        }
        if (order < 0)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

void CSortedNodeList::Insert(Dom::CNode* node) {
    bool found;
    int32_t index = Find(node, found);
    if (found) return;
    if (index == m_aNodes.GetSize())
        m_aNodes.Add(Dom::TNodeRef(node));
    else
        m_aNodes.Insert(index, Dom::TNodeRef(node));
}

bool CSortedNodeList::Contains(const Dom::CNode* node) const {
    bool found;
    Find(node, found);
    return found;
}

void CSortedNodeList::CreateCursor(TRefPtr<CSortedNodeListCursor>& cursor) { cursor = new CListCursor(this); }

void CSortedNodeListFactory::Create(TRefPtr<CSortedNodeList>& list, INodeOrder* order) {
    list = new CSortedNodeList(order);
}

}  // namespace Xpath
