// Open-addressing index of entry numbers by hash.
#include "xslt/private/EntryIndex.h"

namespace XsltPrivate {

namespace {

const int InitialSlots = 32;

}  // namespace

void CEntryIndex::Add(unsigned int hash, int entry) {
    if ((m_nCount + 1) * 4 > m_aSlots.GetSize() * 3) Grow();
    Place(m_aSlots, hash, entry);
    ++m_nCount;
}

void CEntryIndex::Clear() {
    if (m_nCount == 0) return;
    for (SSlot& slot : m_aSlots) slot.nEntry = -1;
    m_nCount = 0;
}

void CEntryIndex::Grow() {
    int capacity = m_aSlots.GetSize() ? m_aSlots.GetSize() * 2 : InitialSlots;
    TArray<SSlot> slots;
    slots.SetSize(capacity);
    for (SSlot& slot : slots) slot.nEntry = -1;
    for (const SSlot& slot : m_aSlots) {
        if (slot.nEntry >= 0) Place(slots, slot.nHash, slot.nEntry);
    }
    m_aSlots = std::move(slots);
}

void CEntryIndex::Place(TArray<SSlot>& slots, unsigned int hash, int entry) {
    int capacity = slots.GetSize();
    int slot = static_cast<int>(hash % static_cast<unsigned int>(capacity));
    while (slots[slot].nEntry >= 0) slot = (slot + 1) % capacity;
    slots[slot] = SSlot{hash, entry};
}

}  // namespace XsltPrivate
