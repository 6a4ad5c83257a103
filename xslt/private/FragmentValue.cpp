// Conversions of a result tree fragment value.
#include "xslt/private/FragmentValue.h"

#include "xpath/Converter.h"

namespace XsltPrivate {

Xpath::CNumber CFragmentValue::GetNumber() const {
    DomString text;
    m_pBuffer->GetText(text);
    return Xpath::CConverter::StringToNumber(text);
}

DomString CFragmentValue::GetString() const {
    DomString text;
    m_pBuffer->GetText(text);
    return text;
}

}  // namespace XsltPrivate
