// Sorted node lists. Paths deliver mostly in document order, so the common insertion is an
// append checked against the last entry; out-of-order insertions go to the end as well, with
// a hash set of node addresses for membership, and one sort restores the order on reading.
#include "xpath/SortedNodeList.h"

#include <algorithm>
#include <cstdint>

#include "xpath/Context.h"

namespace Xpath {

namespace {

class CListCursor : public CSortedNodeListCursor {
public:
    explicit CListCursor(CSortedNodeList* list) : m_pList(list) {}
    void GetCurrent(Dom::TNodeRef& node) const override {
        node = m_nIndex < m_pList->GetCount() ? m_pList->GetAt(m_nIndex) : nullptr;
    }
    void Advance() override { ++m_nIndex; }

private:
    TRefPtr<CSortedNodeList> m_pList;
    int32_t m_nIndex = 0;
};

// Order numbers are dense and distinct within a document; multiplying by a large odd
// constant scatters neighbours over the slots, so that linear probing finds short runs.
// (Text hashing, or the numbers as they are, would pile neighbours into one long run.)
unsigned int HashNode(const Dom::CNode* node) {
    uint32_t key = node->GetOrder() ^ (node->GetDocumentNumber() << 20);
    return (key * 0x9E3779B1u) & 0x7FFFFFFF;
}

}  // namespace

CSortedNodeList::CSortedNodeList(INodeOrder* order) : m_pOrder(order) {}
CSortedNodeList::~CSortedNodeList() = default;

int32_t CSortedNodeList::Find(const Dom::CNode* node, bool& found) const {
    found = false;
    int32_t low = 0, high = m_aNodes.GetSize();
    while (low < high) {
        int32_t middle = low + (high - low) / 2;
        int order = m_pOrder->Compare(m_aNodes[middle], node);
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

void CSortedNodeList::Sort() const {
    INodeOrder* order = m_pOrder;
    std::sort(m_aNodes.begin(), m_aNodes.end(),
              [order](const Dom::CNode* a, const Dom::CNode* b) { return order->Compare(a, b) < 0; });
    m_bSorted = true;
    m_aSlots.Clear();
}

bool CSortedNodeList::HashContains(const Dom::CNode* node) const {
    int capacity = m_aSlots.GetSize();
    for (int slot = HashNode(node) % capacity;; slot = (slot + 1) % capacity) {
        if (m_aSlots[slot] == node) return true;
        if (!m_aSlots[slot]) return false;
    }
}

void CSortedNodeList::HashAdd(Dom::CNode* node) {
    if (m_nSlotCount >= m_aSlots.GetSize() / 4 * 3) return HashRebuild(m_aSlots.GetSize() * 2);
    int capacity = m_aSlots.GetSize();
    int slot = HashNode(node) % capacity;
    while (m_aSlots[slot]) slot = (slot + 1) % capacity;
    m_aSlots[slot] = node;
    ++m_nSlotCount;
}

// Places every entry of the list anew; the node just appended is among them.
void CSortedNodeList::HashRebuild(int capacity) {
    m_aSlots.Clear();
    m_aSlots.SetSize(capacity < 64 ? 64 : capacity);
    m_nSlotCount = 0;
    for (Dom::CNode* entry : m_aNodes) HashAdd(entry);
}

void CSortedNodeList::Insert(Dom::CNode* node) {
    if (Contains(node)) return;
    bool inOrder = m_bSorted && (m_aNodes.IsEmpty() || m_pOrder->Compare(m_aNodes.Last(), node) < 0);
    m_aNodes.Add(node);
    if (node->m_pClass->m_bCounted) m_aCounted.Add(Dom::TNodeRef(node));
    if (inOrder) return;
    if (m_bSorted) {
        m_bSorted = false;
        HashRebuild(m_aNodes.GetSize() * 2);
    } else {
        HashAdd(node);
    }
}

bool CSortedNodeList::Contains(const Dom::CNode* node) const {
    if (!m_bSorted) return HashContains(node);
    if (m_aNodes.IsEmpty()) return false;
    int last = m_pOrder->Compare(m_aNodes.Last(), node);
    if (last <= 0) return last == 0;
    bool found;
    Find(node, found);
    return found;
}

void CSortedNodeList::CreateCursor(TRefPtr<CSortedNodeListCursor>& cursor) { cursor = new CListCursor(this); }

void CSortedNodeListFactory::Create(TRefPtr<CSortedNodeList>& list, INodeOrder* order) {
    list = new CSortedNodeList(order);
}

}  // namespace Xpath
