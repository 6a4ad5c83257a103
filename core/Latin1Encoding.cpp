// ISO-8859-1 decoding by widening and encoding by narrowing.
#include "core/Latin1Encoding.h"

namespace Core {

DomString CLatin1Encoding::GetName() const { return u"ISO-8859-1"; }

int CLatin1Encoding::Decode(const unsigned char* bytes, int byteCount, int& bytesConsumed, DomChar* units,
                            int unitCapacity, bool& incomplete) const {
    int count = byteCount < unitCapacity ? byteCount : unitCapacity;
    for (int i = 0; i < count; ++i) units[i] = bytes[i];
    bytesConsumed = count;
    incomplete = false;
    return count;
}

int CLatin1Encoding::Encode(const DomChar* units, int unitCount, unsigned char* bytes, int byteCapacity,
                            int& bytesWritten, bool& failed) const {
    int count = unitCount < byteCapacity ? unitCount : byteCapacity;
    int i = 0;
    while (i < count && units[i] < 0x100) {
        bytes[i] = static_cast<unsigned char>(units[i]);
        ++i;
    }
    failed = i < count;
    bytesWritten = i;
    return i;
}

int CLatin1Encoding::GetUnencodableLength(const DomChar* units, int unitCount) const {
    int i = 0;
    while (i < unitCount && units[i] >= 0x100) ++i;
    return i;
}

const DomChar* CLatin1Encoding::GetByteOrderMark(int& unitCount) const {
    unitCount = 0;
    return nullptr;
}

}  // namespace Core
