// A list of (name, value) for the parameters of a run or of one template call. Names are
// pointers to names that outlive the list (those of the compiled with-param instructions, or
// the runtime's copies of the run's parameter names). Lookup is linear and the first entry of
// a name wins.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "xpath/Value.h"
#include "xslt/private/QName.h"

namespace XsltPrivate {

class CBoundParameters : public CRefObject {
public:
    void Add(const SQName* name, Xpath::CValue* value) { m_aEntries.Add(SEntry{name, value}); }
    Xpath::CValue* Find(DomStringView uri, DomStringView localName) const {
        for (const SEntry& entry : m_aEntries) {
            if (entry.pName->Equals(uri, localName)) return entry.pValue;
        }
        return nullptr;
    }
    int GetCount() const { return m_aEntries.GetSize(); }
    void Clear() { m_aEntries.Clear(); }

private:
    struct SEntry {
        const SQName* pName;
        TRefPtr<Xpath::CValue> pValue;
    };
    TArray<SEntry> m_aEntries;
};

}  // namespace XsltPrivate
