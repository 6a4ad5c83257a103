// A list of (URI, local name, value) for the parameters of a run or of one template call.
// Lookup is linear and the first entry of a name wins.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "xpath/Value.h"

namespace XsltPrivate {

class CBoundParameters : public CRefObject {
public:
    void Add(const DomString& uri, const DomString& localName, Xpath::CValue* value) {
        m_aEntries.Add(SEntry{uri, localName, value});
    }
    Xpath::CValue* Find(DomStringView uri, DomStringView localName) const {
        for (const SEntry& entry : m_aEntries) {
            if (entry.sLocalName == localName && entry.sUri == uri) return entry.pValue;
        }
        return nullptr;
    }
    int GetCount() const { return m_aEntries.GetSize(); }
    void Clear() { m_aEntries.Clear(); }

private:
    struct SEntry {
        DomString sUri;
        DomString sLocalName;
        TRefPtr<Xpath::CValue> pValue;
    };
    TArray<SEntry> m_aEntries;
};

}  // namespace XsltPrivate
