// The 27 functions of the XPath core library, found by exact local name in the empty
// namespace. A host may append its own functions (the XSLT additions) to the same table.
#pragma once
#include "core/Array.h"
#include "xpath/Context.h"

namespace Xpath {

class CCoreFunctionLibrary : public IFunctionLibrary {
public:
    CCoreFunctionLibrary();
    ~CCoreFunctionLibrary() override;

    bool IsFunctionAvailable(const DomString& namespaceUri, const DomString& localName) override;
    void GetFunction(TRefPtr<IFunction>& function, const DomString& namespaceUri, const DomString& localName) override;
    // Entries are only appended and the first of a name wins, so a found function stays found.
    uint64_t GetStableIdentity() const override { return m_nIdentity; }

    // Appends an entry; a name already present keeps its first entry.
    void AddFunction(const DomString& name, IFunction* function);

private:
    IFunction* Find(const DomString& namespaceUri, const DomString& localName) const;

    struct SEntry {
        DomString m_sName;
        unsigned int m_nHash;  // of the name, so that the search compares numbers first
        TRefPtr<IFunction> m_pFunction;
    };
    TArray<SEntry> m_aEntries;
    uint64_t m_nIdentity;
};

}  // namespace Xpath
