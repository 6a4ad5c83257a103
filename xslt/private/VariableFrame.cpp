// Local variable lookup with the global table behind it.
#include "xslt/private/VariableFrame.h"

#include "xslt/private/Runtime.h"

namespace XsltPrivate {

void CVariableFrame::PopEntries(int mark) {
    while (m_aEntries.GetSize() > mark) m_aEntries.RemoveLast();
}

void CVariableFrame::Reset() {
    PopTo(0);
    m_pXpathContext = nullptr;
}

bool CVariableFrame::Contains(DomStringView uri, DomStringView localName) const {
    return FindLocal(uri, localName) != nullptr;
}

void CVariableFrame::Add(const SQName* name, Xpath::CValue* value) { m_aEntries.Add(SEntry{name, value}); }

Xpath::CValue* CVariableFrame::FindLocal(DomStringView uri, DomStringView localName) const {
    // Names of a frame mostly differ in length, which rejects them without reading the text.
    const size_t length = localName.size();
    for (int i = m_aEntries.GetSize() - 1; i >= 0; --i) {
        const SEntry& entry = m_aEntries[i];
        if (entry.pName->sLocalName.size() == length && entry.pName->Equals(uri, localName)) return entry.pValue;
    }
    return nullptr;
}

void CVariableFrame::GetVariable(TRefPtr<Xpath::CValue>& value, const DomString& namespaceUri,
                                 const DomString& localName) {
    value = FindLocal(namespaceUri, localName);
    if (!value) m_pRuntime->GetGlobalValue(namespaceUri, localName, value);
}

}  // namespace XsltPrivate
