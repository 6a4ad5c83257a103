// Text-only result handlers.
#include "xslt/private/MessageSink.h"

namespace XsltPrivate {

void CMessageSink::Characters(const DomChar* text, int length, bool) {
    if (m_pStream && length > 0) m_pStream->Write(text, length);
}

void CStringSink::Characters(const DomChar* text, int length, bool) {
    if (length > 0) m_sText.append(text, length);
}

}  // namespace XsltPrivate
