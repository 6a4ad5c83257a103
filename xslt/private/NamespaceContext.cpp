// Snapshot of in-scope namespace bindings.
#include "xslt/private/NamespaceContext.h"

#include "xslt/private/QName.h"

namespace XsltPrivate {

CNamespaceContext::CNamespaceContext(const Dom::CNode* node) {
    while (node && node->GetNodeType() != Dom::ELEMENT_NODE) node = node->GetParentNode();
    if (!node) return;
    int count = node->GetNamespaceCount();
    for (int i = 0; i < count; ++i) {
        const Dom::CNamespaceNode* binding = node->GetNamespaceAt(i);
        m_aBindings.Add(SBinding{binding->GetName(), binding->GetValue()});
    }
}

bool CNamespaceContext::Lookup(DomStringView prefix, DomString& uri) const {
    for (const SBinding& binding : m_aBindings) {
        if (binding.sPrefix == prefix) {
            uri = binding.sUri;
            return true;
        }
    }
    if (prefix == u"xml") {
        uri = kXmlNamespace;
        return true;
    }
    if (prefix.empty()) {
        uri.clear();
        return true;
    }
    return false;
}

}  // namespace XsltPrivate
