// Pushing and popping stream levels.
#include "xmlparser/private/StreamStack.h"

#include "xmlparser/ParseException.h"

namespace XmlParserPrivate {

DomChar CStreamStack::NextCharSlow() {
    while (m_pTop) {
        DomChar unit = m_pTop->Next();
        if (unit != 0) return unit;
        if (m_nDepth == 1) break;
        m_pTop->Close();
        --m_nDepth;
        SetTop(m_aStreams[m_nDepth - 1].get());
    }
    if (!m_bEofAllowed) m_pFailure->Raise(Sxp::CParseException::UnexpectedEndOfDocument);
    return 0;
}

CCharStream* CStreamStack::PushLevel() {
    if (m_nDepth == static_cast<int>(m_aStreams.size())) m_aStreams.push_back(std::make_unique<CCharStream>());
    SetTop(m_aStreams[m_nDepth++].get());
    return m_pTop;
}

void CStreamStack::Push(IUnitSource* source) { PushLevel()->OpenSource(source); }

void CStreamStack::Push(const DomChar* text, int length) { PushLevel()->OpenText(text, length); }

void CStreamStack::Clear() {
    for (int i = 0; i < m_nDepth; ++i) m_aStreams[i]->Close();
    m_nDepth = 0;
    SetTop(nullptr);
}

}  // namespace XmlParserPrivate
