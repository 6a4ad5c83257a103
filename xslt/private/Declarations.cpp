// Decimal format properties and their defaults.
#include "xslt/private/Declarations.h"

namespace XsltPrivate {

const DomChar* const CDecimalFormatDeclaration::s_apAttributeNames[PropertyCount] = {
    u"decimal-separator", u"grouping-separator", u"infinity", u"minus-sign", u"NaN",
    u"percent",           u"per-mille",          u"zero-digit", u"digit",     u"pattern-separator"};

const DomChar* const CDecimalFormatDeclaration::s_apDefaults[PropertyCount] = {
    u".", u",", u"Infinity", u"-", u"NaN", u"%", u"\u2030", u"0", u"#", u";"};

CDecimalFormatDeclaration::CDecimalFormatDeclaration() {
    for (int i = 0; i < PropertyCount; ++i) m_asProperties[i] = s_apDefaults[i];
}

bool CDecimalFormatDeclaration::HasSameProperties(const CDecimalFormatDeclaration& other) const {
    for (int i = 0; i < PropertyCount; ++i) {
        if (m_asProperties[i] != other.m_asProperties[i]) return false;
    }
    return true;
}

}  // namespace XsltPrivate
