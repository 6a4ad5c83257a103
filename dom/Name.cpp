// Name records and their per-document intern table.
#include "dom/Name.h"

#include <cstdlib>
#include <new>

#include "dom/private/SlotIndex.h"

namespace Dom {

CName::CName(DomStringView qualifiedName, DomStringView namespaceUri, unsigned int hash)
    : m_sQualifiedName(qualifiedName), m_sNamespaceUri(namespaceUri), m_nHash(hash) {
    size_t colon = qualifiedName.find(u':');
    m_sLocalName = colon == DomStringView::npos ? qualifiedName : qualifiedName.substr(colon + 1);
}

DomStringView CName::GetPrefix() const {
    size_t colon = m_sQualifiedName.find(u':');
    return colon == DomString::npos ? DomStringView() : DomStringView(m_sQualifiedName).substr(0, colon);
}

CNameTable::CNameTable() : m_nCapacity(64), m_nCount(0), m_pSlots(new CName*[64]()) {}

CNameTable::~CNameTable() {
    for (int i = 0; i < m_nCapacity; ++i) delete m_pSlots[i];
    delete[] m_pSlots;
}

// The slot holding the pair, or the free slot where it would go.
int CNameTable::FindSlot(DomStringView qualifiedName, DomStringView namespaceUri, unsigned int hash) const {
    int slot = SlotIndex(hash, m_nCapacity);
    while (const CName* name = m_pSlots[slot]) {
        if (name->m_nHash == hash && name->m_sQualifiedName == qualifiedName && name->m_sNamespaceUri == namespaceUri)
            break;
        if (++slot == m_nCapacity) slot = 0;
    }
    return slot;
}

const CName* CNameTable::Find(DomStringView qualifiedName, DomStringView namespaceUri, unsigned int hash) const {
    return m_pSlots[FindSlot(qualifiedName, namespaceUri, hash)];
}

const CName* CNameTable::Intern(DomStringView qualifiedName, DomStringView namespaceUri, unsigned int hash) {
    int slot = FindSlot(qualifiedName, namespaceUri, hash);
    if (m_pSlots[slot]) return m_pSlots[slot];
    if (m_nCount >= m_nCapacity / 4 * 3) {
        Grow();
        slot = FindSlot(qualifiedName, namespaceUri, hash);
    }
    CName* name = new CName(qualifiedName, namespaceUri, hash);
    m_pSlots[slot] = name;
    ++m_nCount;
    return name;
}

// Doubles the table and places every entry anew by its stored hash.
void CNameTable::Grow() {
    int oldCapacity = m_nCapacity;
    CName** oldSlots = m_pSlots;
    m_nCapacity = oldCapacity * 2;
    m_pSlots = new CName*[m_nCapacity]();
    for (int i = 0; i < oldCapacity; ++i) {
        CName* name = oldSlots[i];
        if (!name) continue;
        int slot = SlotIndex(name->m_nHash, m_nCapacity);
        while (m_pSlots[slot]) {
            if (++slot == m_nCapacity) slot = 0;
        }
        m_pSlots[slot] = name;
    }
    delete[] oldSlots;
}

}  // namespace Dom
