// The two list views an element hands out: its attribute array and its namespace scope.
#pragma once
#include "dom/NamespaceScope.h"
#include "dom/Node.h"

namespace Dom {

class CAttributeList : public CNodeList {
public:
    explicit CAttributeList(const CElement* element) : m_pElement(element) {}
    int GetLength() const override { return m_pElement->m_nAttributeCount; }
    // Walks the array from the front comparing qualified names.
    CNode* GetNamedItem(DomStringView name) const override { return m_pElement->GetAttributeNode(name); }
    CNode* Item(int index) const override { return m_pElement->GetAttributeArray() + index; }

private:
    const CElement* m_pElement;
};

class CNamespaceList : public CNodeList {
public:
    explicit CNamespaceList(const CNamespaceScope* scope) : m_pScope(scope) {}
    int GetLength() const override { return m_pScope->GetCount(); }
    CNode* GetNamedItem(DomStringView prefix) const override { return m_pScope->Find(prefix); }
    CNode* Item(int index) const override { return m_pScope->GetAt(index); }

private:
    const CNamespaceScope* m_pScope;
};

}  // namespace Dom
