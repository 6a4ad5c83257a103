// Refilling and put-back of one stream level.
#include "xmlparser/private/CharStream.h"

#include <cstring>

namespace XmlParserPrivate {

void CCharStream::OpenSource(IUnitSource* source) {
    Close();
    m_pSource = source;
}

void CCharStream::OpenText(const DomChar* text, int length) {
    Close();
    m_pText = text;
    m_nTextLength = length;
}

void CCharStream::Close() {
    m_pSource = nullptr;
    m_pText = nullptr;
    m_nTextLength = m_nTextPos = 0;
    m_nEnd = m_nPos = BackRoom;
    m_position = Sxp::SPosition{1, 0};
}

bool CCharStream::Refill() {
    int count = 0;
    if (m_pSource) {
        count = m_pSource->Read(m_aBuffer + BackRoom, DataRoom);
    } else if (m_pText) {
        count = m_nTextLength - m_nTextPos;
        if (count > DataRoom) count = DataRoom;
        std::memcpy(m_aBuffer + BackRoom, m_pText + m_nTextPos, sizeof(DomChar) * static_cast<size_t>(count));
        m_nTextPos += count;
    }
    m_nPos = BackRoom;
    m_nEnd = BackRoom + (count > 0 ? count : 0);
    return count > 0;
}

}  // namespace XmlParserPrivate
