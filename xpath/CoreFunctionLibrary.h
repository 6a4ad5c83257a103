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
};

}  // namespace Xpath
