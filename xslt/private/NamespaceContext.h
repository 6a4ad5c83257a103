// A snapshot of the namespace bindings in scope at a stylesheet element. Every instruction keeps
// one, so that its expressions and QName-valued attribute value templates resolve at run time
// without the DOM; it is also the prefix resolver handed to XPath evaluation.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "dom/Node.h"
#include "xpath/Context.h"

namespace XsltPrivate {

class CNamespaceContext : public Xpath::INamespaceResolver {
public:
    // Takes the bindings of the nearest element at or above `node`, in the scope's order.
    explicit CNamespaceContext(const Dom::CNode* node);

    // Linear; false for an unknown prefix. "xml" is always bound.
    bool Lookup(DomStringView prefix, DomString& uri) const;
    bool ResolvePrefix(const DomString& prefix, DomString& uri) override { return Lookup(prefix, uri); }

    int GetCount() const { return m_aBindings.GetSize(); }
    const DomString& GetPrefix(int index) const { return m_aBindings[index].sPrefix; }
    const DomString& GetUri(int index) const { return m_aBindings[index].sUri; }

private:
    struct SBinding {
        DomString sPrefix;
        DomString sUri;
    };
    TArray<SBinding> m_aBindings;
};

}  // namespace XsltPrivate
