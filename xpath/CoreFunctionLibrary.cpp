// The core library's table: a linear search by exact name, for the empty namespace only.
#include "xpath/CoreFunctionLibrary.h"

#include "core/Hash.h"
#include "xpath/private/CoreFunctions.h"

namespace Xpath {

CCoreFunctionLibrary::CCoreFunctionLibrary() {
    static uint64_t s_nLastIdentity = 0;
    m_nIdentity = ++s_nLastIdentity;
    XpathPrivate::AddCoreFunctions(*this);
}
CCoreFunctionLibrary::~CCoreFunctionLibrary() = default;

void CCoreFunctionLibrary::AddFunction(const DomString& name, IFunction* function) {
    m_aEntries.Add(SEntry{name, Core::HashText(name), function});
}

IFunction* CCoreFunctionLibrary::Find(const DomString& namespaceUri, const DomString& localName) const {
    if (!namespaceUri.empty()) return nullptr;
    unsigned int hash = Core::HashText(localName);
    for (const SEntry& entry : m_aEntries)
        if (entry.m_nHash == hash && entry.m_sName == localName) return entry.m_pFunction;
    return nullptr;
}

bool CCoreFunctionLibrary::IsFunctionAvailable(const DomString& namespaceUri, const DomString& localName) {
    return Find(namespaceUri, localName) != nullptr;
}

void CCoreFunctionLibrary::GetFunction(TRefPtr<IFunction>& function, const DomString& namespaceUri,
                                       const DomString& localName) {
    function = Find(namespaceUri, localName);
}

}  // namespace Xpath
