// UTF-16 byte pairs to units and back, in the byte order chosen at construction.
#include "core/Utf16Encoding.h"

namespace Core {

CUtf16Encoding::CUtf16Encoding(bool bigEndian) : m_bBigEndian(bigEndian) {}

DomString CUtf16Encoding::GetName() const { return u"UTF-16"; }

int CUtf16Encoding::Decode(const unsigned char* bytes, int byteCount, int& bytesConsumed, DomChar* units,
                           int unitCapacity, bool& incomplete) const {
    int pairs = byteCount / 2;
    int count = pairs < unitCapacity ? pairs : unitCapacity;
    int high = m_bBigEndian ? 0 : 1;
    for (int i = 0; i < count; ++i) {
        units[i] = static_cast<DomChar>((bytes[2 * i + high] << 8) | bytes[2 * i + 1 - high]);
    }
    bytesConsumed = 2 * count;
    incomplete = count == pairs && (byteCount & 1) != 0;
    return count;
}

int CUtf16Encoding::Encode(const DomChar* units, int unitCount, unsigned char* bytes, int byteCapacity,
                           int& bytesWritten, bool& failed) const {
    int room = byteCapacity / 2;
    int count = unitCount < room ? unitCount : room;
    int high = m_bBigEndian ? 0 : 1;
    for (int i = 0; i < count; ++i) {
        bytes[2 * i + high] = static_cast<unsigned char>(units[i] >> 8);
        bytes[2 * i + 1 - high] = static_cast<unsigned char>(units[i] & 0xFF);
    }
    bytesWritten = 2 * count;
    failed = false;
    return count;
}

int CUtf16Encoding::GetUnencodableLength(const DomChar*, int) const { return 0; }

const DomChar* CUtf16Encoding::GetByteOrderMark(int& unitCount) const {
    static const DomChar kMark[1] = {0xFEFF};
    unitCount = 1;
    return kMark;
}

}  // namespace Core
