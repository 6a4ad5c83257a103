// Interned names: one record per distinct (qualified name, namespace URI) in a document,
// compared by pointer, and the open-addressing table that owns them.
#pragma once
#include "core/DomString.h"

namespace Dom {

class CName {
public:
    CName(DomStringView qualifiedName, DomStringView namespaceUri, unsigned int hash);

    const DomString& GetQualifiedName() const { return m_sQualifiedName; }
    const DomString& GetNamespaceUri() const { return m_sNamespaceUri; }
    const DomString& GetLocalName() const { return m_sLocalName; }
    // The part before the first ":", empty without one.
    DomStringView GetPrefix() const;
    unsigned int GetHash() const { return m_nHash; }

    DomString m_sQualifiedName;
    DomString m_sNamespaceUri;
    DomString m_sLocalName;
    unsigned int m_nHash;
};

class CNameTable {
public:
    CNameTable();
    ~CNameTable();
    CNameTable(const CNameTable&) = delete;
    CNameTable& operator=(const CNameTable&) = delete;

    // The record of the pair, made on first use; `hash` is Core::HashText of the qualified name.
    const CName* Intern(DomStringView qualifiedName, DomStringView namespaceUri, unsigned int hash);
    // The record of the pair, or null.
    const CName* Find(DomStringView qualifiedName, DomStringView namespaceUri, unsigned int hash) const;
    int GetCount() const { return m_nCount; }

private:
    int FindSlot(DomStringView qualifiedName, DomStringView namespaceUri, unsigned int hash) const;
    void Grow();

    int m_nCapacity;
    int m_nCount;
    CName** m_pSlots;
};

}  // namespace Dom
