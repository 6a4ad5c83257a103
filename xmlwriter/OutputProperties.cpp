// Output properties with their set-mask, and the cdata-section-elements set.
#include "xmlwriter/OutputProperties.h"

#include "core/Hash.h"

namespace XmlWriter {

namespace {

// The local name is hashed with the URI's hash as seed, so one pass tells names apart.
unsigned int HashExpandedName(DomStringView uri, DomStringView localName) {
    unsigned int h = Core::HashText(uri);
    for (DomChar unit : localName) h = h * 9 + unit;
    return h & 0x7FFFFFFF;
}

}  // namespace

bool COutputProperties::GetMethodKind(int& kind) const {
    if (!IsSet(MethodKindBit)) return false;
    kind = m_nMethodKind;
    return true;
}

void COutputProperties::SetMethodKind(int kind) {
    m_nMethodKind = kind;
    m_nMask |= MethodKindBit;
}

bool COutputProperties::GetMethodName(DomString& uri, DomString& localName) const {
    if (!IsSet(MethodNameBit)) return false;
    uri = m_sMethodUri;
    localName = m_sMethodLocalName;
    return true;
}

void COutputProperties::SetMethodName(DomStringView uri, DomStringView localName) {
    m_sMethodUri = uri;
    m_sMethodLocalName = localName;
    m_nMask |= MethodNameBit;
}

void COutputProperties::AddCDataSectionElement(DomStringView uri, DomStringView localName) {
    if (IsCDataSectionElement(uri, localName)) return;
    m_aCDataSectionElements.Add(SExpandedName{HashExpandedName(uri, localName), DomString(uri), DomString(localName)});
}

bool COutputProperties::IsCDataSectionElement(DomStringView uri, DomStringView localName) const {
    if (m_aCDataSectionElements.IsEmpty()) return false;
    unsigned int hash = HashExpandedName(uri, localName);
    for (const SExpandedName& name : m_aCDataSectionElements) {
        if (name.nHash == hash && name.sLocalName == localName && name.sUri == uri) return true;
    }
    return false;
}

bool COutputProperties::GetText(unsigned int bit, const DomString& value, DomString& out) const {
    if (!IsSet(bit)) return false;
    out = value;
    return true;
}

void COutputProperties::SetText(unsigned int bit, DomString& value, DomStringView text) {
    value = text;
    m_nMask |= bit;
}

bool COutputProperties::GetFlag(unsigned int bit, bool value, bool& out) const {
    if (!IsSet(bit)) return false;
    out = value;
    return true;
}

void COutputProperties::SetFlag(unsigned int bit, bool& value, bool flag) {
    value = flag;
    m_nMask |= bit;
}

}  // namespace XmlWriter
