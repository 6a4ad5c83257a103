// The namespace bindings in force at an element: an open-addressing table whose slots are the
// binding records themselves, plus their creation order. A scope is shared by every element
// below the one that made it until one of them declares a namespace.
#pragma once
#include "core/Array.h"
#include "dom/Node.h"

namespace Dom {

class CNamespaceScope {
public:
    // An empty scope whose bindings take `bindingClass` (the document's namespace class).
    CNamespaceScope(const CNodeClass* bindingClass, CNamespaceScope* previous);
    // A copy of `source` that keeps its bindings' creation order; owners are left as copied.
    CNamespaceScope(const CNamespaceScope& source, CNamespaceScope* previous);
    ~CNamespaceScope();
    CNamespaceScope& operator=(const CNamespaceScope&) = delete;

    // The binding of the prefix, or null.
    CNamespaceNode* Find(DomStringView prefix) const;
    // The binding of the prefix, made with the next ordinal and an empty URI if new.
    CNamespaceNode* Bind(DomStringView prefix);
    int GetCount() const { return m_nCount; }
    // Bindings in the order of their creation.
    CNamespaceNode* GetAt(int index) const { return m_aOrder[index]; }
    void SetOwner(CNode* owner);
    CNamespaceScope* GetPrevious() const { return m_pPrevious; }

private:
    int FindSlot(DomStringView prefix, unsigned int hash) const;
    void Grow();

    CNamespaceScope* m_pPrevious;
    int m_nCapacity;
    int m_nCount;
    CNamespaceNode* m_pSlots;
    TArray<CNamespaceNode*> m_aOrder;
    const CNodeClass* m_pBindingClass;
};

}  // namespace Dom
