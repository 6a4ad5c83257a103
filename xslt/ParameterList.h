// The stylesheet parameters of a run, in order of adding; a name may occur more than once.
// Values are string XPath values.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "xpath/Value.h"

namespace Xslt {

class CParameterList : public CRefObject {
public:
    struct SParameter {
        DomString sName;          // the qualified name as given
        DomString sNamespaceUri;  // empty until the name is resolved against the stylesheet
        DomString sLocalName;
        TRefPtr<Xpath::CValue> pValue;
    };

    // A QName to be resolved later against the stylesheet.
    void AddParameter(DomStringView name, DomStringView value);
    // A name already resolved.
    void AddParameter(DomStringView name, DomStringView namespaceUri, DomStringView localName, DomStringView value);
    void AddParameter(DomStringView name, DomStringView namespaceUri, DomStringView localName, Xpath::CValue* value);
    int GetCount() const { return m_aParameters.GetSize(); }
    const SParameter& Get(int index) const { return m_aParameters[index]; }
    // Whether the record's name is still to be resolved.
    bool IsUnresolved(int index) const { return m_aParameters[index].sLocalName.empty(); }
    // Replaces the content with a copy of `other`.
    void CopyFrom(const CParameterList& other);

private:
    TArray<SParameter> m_aParameters;
};

}  // namespace Xslt
