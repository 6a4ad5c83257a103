// A hash index over the entries of a table that keeps them in an array (namespace maps, result
// attributes): open addressing, slot = hash modulo capacity, linear probing with wrap-around,
// doubling when three quarters are used. Small tables are scanned instead; their owners build
// the index once they pass IndexThreshold entries.
#pragma once
#include "core/Array.h"

namespace XsltPrivate {

class CEntryIndex {
public:
    static const int IndexThreshold = 8;

    bool IsEmpty() const { return m_nCount == 0; }
    void Add(unsigned int hash, int entry);
    // Forgets the entries and keeps the room.
    void Clear();

    // The highest entry number under `hash` that `accept` takes, or -1.
    template <class F>
    int FindLast(unsigned int hash, F accept) const {
        int capacity = m_aSlots.GetSize();
        if (capacity == 0) return -1;
        int best = -1;
        for (int slot = static_cast<int>(hash % static_cast<unsigned int>(capacity));;
             slot = (slot + 1) % capacity) {
            const SSlot& s = m_aSlots[slot];
            if (s.nEntry < 0) return best;
            if (s.nHash == hash && s.nEntry > best && accept(s.nEntry)) best = s.nEntry;
        }
    }

private:
    struct SSlot {
        unsigned int nHash;
        int nEntry;  // -1 for a free slot
    };

    void Grow();
    static void Place(TArray<SSlot>& slots, unsigned int hash, int entry);

    TArray<SSlot> m_aSlots;
    int m_nCount = 0;
};

}  // namespace XsltPrivate
