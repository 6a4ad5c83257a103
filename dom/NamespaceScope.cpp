// Namespace scopes: bindings live in the slots of an open-addressing table keyed by prefix.
#include "dom/NamespaceScope.h"

#include "core/Hash.h"
#include "dom/private/SlotIndex.h"

namespace Dom {

namespace {

const int INITIAL_CAPACITY = 4;

}  // namespace

CNamespaceScope::CNamespaceScope(const CNodeClass* bindingClass, CNamespaceScope* previous)
    : m_pPrevious(previous),
      m_nCapacity(INITIAL_CAPACITY),
      m_nCount(0),
      m_pSlots(new CNamespaceNode[INITIAL_CAPACITY]()),
      m_pBindingClass(bindingClass) {
    for (int i = 0; i < m_nCapacity; ++i) m_pSlots[i].m_pClass = bindingClass;
}

CNamespaceScope::CNamespaceScope(const CNamespaceScope& source, CNamespaceScope* previous)
    : m_pPrevious(previous),
      m_nCapacity(source.m_nCapacity),
      m_nCount(source.m_nCount),
      m_pSlots(new CNamespaceNode[source.m_nCapacity]()),
      m_pBindingClass(source.m_pBindingClass) {
    for (int i = 0; i < m_nCapacity; ++i) m_pSlots[i] = source.m_pSlots[i];
    m_aOrder.Reserve(m_nCount);
    for (CNamespaceNode* binding : source.m_aOrder) m_aOrder.Add(m_pSlots + (binding - source.m_pSlots));
}

CNamespaceScope::~CNamespaceScope() { delete[] m_pSlots; }

// The slot of the prefix, or the free slot where it would go. The empty prefix hashes to 0,
// so it is found at once in slot 0 unless a collision moved it.
int CNamespaceScope::FindSlot(DomStringView prefix, unsigned int hash) const {
    int slot = SlotIndex(hash, m_nCapacity);
    while (m_pSlots[slot].m_nOrder != 0) {
        const CNamespaceNode& binding = m_pSlots[slot];
        if (binding.m_nHash == hash && binding.m_sPrefix == prefix) break;
        if (++slot == m_nCapacity) slot = 0;
    }
    return slot;
}

CNamespaceNode* CNamespaceScope::Find(DomStringView prefix) const {
    if (prefix.empty() && m_pSlots[0].m_nOrder != 0 && m_pSlots[0].m_sPrefix.empty()) return m_pSlots;
    CNamespaceNode* binding = m_pSlots + FindSlot(prefix, Core::HashText(prefix));
    return binding->m_nOrder != 0 ? binding : nullptr;
}

CNamespaceNode* CNamespaceScope::Bind(DomStringView prefix) {
    unsigned int hash = Core::HashText(prefix);
    int slot = FindSlot(prefix, hash);
    if (m_pSlots[slot].m_nOrder != 0) return m_pSlots + slot;
    if (m_nCount >= m_nCapacity / 4 * 3) {
        Grow();
        slot = FindSlot(prefix, hash);
    }
    CNamespaceNode* binding = m_pSlots + slot;
    binding->m_nOrder = static_cast<uint32_t>(++m_nCount);
    binding->m_sPrefix = prefix;
    binding->m_sUri.clear();
    binding->m_nHash = hash;
    binding->m_pOwner = nullptr;
    m_aOrder.Add(binding);
    return binding;
}

// Doubles the table, places every binding anew by its stored hash and rebuilds the creation
// order, whose pointers refer to the old slots.
void CNamespaceScope::Grow() {
    int oldCapacity = m_nCapacity;
    CNamespaceNode* oldSlots = m_pSlots;
    m_nCapacity = oldCapacity * 2;
    m_pSlots = new CNamespaceNode[m_nCapacity]();
    for (int i = 0; i < m_nCapacity; ++i) m_pSlots[i].m_pClass = m_pBindingClass;
    for (CNamespaceNode*& binding : m_aOrder) {
        int slot = SlotIndex(binding->m_nHash, m_nCapacity);
        while (m_pSlots[slot].m_nOrder != 0) {
            if (++slot == m_nCapacity) slot = 0;
        }
        m_pSlots[slot] = std::move(*binding);
        binding = m_pSlots + slot;
    }
    delete[] oldSlots;
}

void CNamespaceScope::SetOwner(CNode* owner) {
    for (CNamespaceNode* binding : m_aOrder) binding->m_pOwner = owner;
}

}  // namespace Dom
