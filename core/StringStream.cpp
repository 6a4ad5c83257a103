// Reading units from a text in memory.
#include "core/StringStream.h"

#include <cstring>

namespace Core {

int CStringStream::Read(void* buffer, int count) {
    long length = static_cast<long>(m_sText.size());
    if (count <= 0 || m_nPosition >= length) return 0;
    long available = length - m_nPosition;
    int n = available < count ? static_cast<int>(available) : count;
    std::memcpy(buffer, m_sText.data() + m_nPosition, sizeof(DomChar) * static_cast<size_t>(n));
    m_nPosition += n;
    return n;
}

void CStringStream::Write(const void*, int) {}

void CStringStream::Seek(long offset, int origin) {
    long base = origin == 1 ? m_nPosition : origin == 2 ? static_cast<long>(m_sText.size()) : 0;
    long position = base + offset;
    m_nPosition = position < 0 ? 0 : position;
}

}  // namespace Core
