// The extensions known to an environment: factories by namespace URI, searched in the order
// they were added. The factories' element and function operations join with the extension framework.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"

namespace Xslt {

class IExtensionFactory : public CRefObject {
public:
    virtual DomString GetNamespaceURI() const = 0;
};

class CExtensionRegistry : public CRefObject {
public:
    // The URI is taken from the factory once, when it is added.
    void Add(IExtensionFactory* factory) { m_aEntries.Add(SEntry{factory->GetNamespaceURI(), factory}); }
    // The first factory added for the URI, compared in full; a later one on the same URI is never seen.
    IExtensionFactory* Find(DomStringView uri) const {
        for (const SEntry& entry : m_aEntries) {
            if (entry.sUri == uri) return entry.pFactory;
        }
        return nullptr;
    }
    int GetCount() const { return m_aEntries.GetSize(); }
    IExtensionFactory* GetFactory(int index) const { return m_aEntries[index].pFactory; }

private:
    struct SEntry {
        DomString sUri;
        TRefPtr<IExtensionFactory> pFactory;
    };
    TArray<SEntry> m_aEntries;
};

}  // namespace Xslt
