// Adding and copying stylesheet parameters.
#include "xslt/ParameterList.h"

namespace Xslt {

void CParameterList::AddParameter(DomStringView name, DomStringView value) {
    AddParameter(name, DomStringView(), DomStringView(), value);
}

void CParameterList::AddParameter(DomStringView name, DomStringView namespaceUri, DomStringView localName,
                                  DomStringView value) {
    AddParameter(name, namespaceUri, localName, new Xpath::CStringValue(DomString(value)));
}

void CParameterList::AddParameter(DomStringView name, DomStringView namespaceUri, DomStringView localName,
                                  Xpath::CValue* value) {
    m_aParameters.Add(SParameter{DomString(name), DomString(namespaceUri), DomString(localName), value});
}

void CParameterList::CopyFrom(const CParameterList& other) {
    if (&other == this) return;
    m_aParameters.Clear();
    m_aParameters.Append(other.m_aParameters.GetData(), other.m_aParameters.GetSize());
}

}  // namespace Xslt
