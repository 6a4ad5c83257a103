// Lookup of HTML element and attribute names by the common hash and linear probing.
#include "xmlwriter/private/HtmlNameTable.h"

#include "core/Hash.h"

namespace XmlWriterPrivate {

int CHtmlNameTable::FindSlot(DomStringView lowerName) const {
    int slot = static_cast<int>(Core::HashText(lowerName) % Capacity);
    for (int probes = 0; probes < Capacity; ++probes) {
        const SEntry& entry = m_aEntries[slot];
        if (!entry.pName || DomStringView(entry.pName, entry.nLength) == lowerName) return slot;
        slot = (slot + 1) % Capacity;
    }
    return -1;
}

void CHtmlNameTable::Add(const DomChar* name, unsigned int flags) {
    DomStringView key(name);
    int slot = FindSlot(key);
    if (slot < 0) return;
    m_aEntries[slot] = SEntry{name, static_cast<int>(key.size()), m_aEntries[slot].nFlags | flags};
}

unsigned int CHtmlNameTable::Find(DomStringView name) const {
    if (name.empty() || name.size() > MaxNameLength) return 0;
    DomChar lower[MaxNameLength];
    for (size_t i = 0; i < name.size(); ++i) {
        DomChar unit = name[i];
        lower[i] = (unit >= u'A' && unit <= u'Z') ? static_cast<DomChar>(unit + 32) : unit;
    }
    int slot = FindSlot(DomStringView(lower, name.size()));
    return slot < 0 ? 0 : m_aEntries[slot].nFlags;
}

}  // namespace XmlWriterPrivate
