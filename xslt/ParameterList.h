// The stylesheet parameters of a run, in order of adding; a name may occur more than once.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"

namespace Xslt {

class CParameterList : public CRefObject {
public:
    struct SParameter {
        DomString sName;          // the qualified name as given
        DomString sNamespaceUri;  // empty until the name is resolved against the stylesheet
        DomString sLocalName;
        DomString sValue;         // becomes a string Xpath::CValue once XPath values exist
    };

    // A QName to be resolved later against the stylesheet.
    void AddParameter(DomStringView name, DomStringView value);
    // A name already resolved.
    void AddParameter(DomStringView name, DomStringView namespaceUri, DomStringView localName, DomStringView value);
    int GetCount() const { return m_aParameters.GetSize(); }
    const SParameter& Get(int index) const { return m_aParameters[index]; }
    // Replaces the content with a copy of `other`.
    void CopyFrom(const CParameterList& other);

private:
    TArray<SParameter> m_aParameters;
};

}  // namespace Xslt
