// UTF-16 in either byte order; surrogates pass through unchecked in both directions.
#pragma once
#include "core/Encoding.h"

namespace Core {

class CUtf16Encoding : public IEncoding {
public:
    // bigEndian: true writes and reads the most significant byte first.
    explicit CUtf16Encoding(bool bigEndian);

    DomString GetName() const override;
    int Decode(const unsigned char* bytes, int byteCount, int& bytesConsumed, DomChar* units, int unitCapacity,
               bool& incomplete) const override;
    int Encode(const DomChar* units, int unitCount, unsigned char* bytes, int byteCapacity, int& bytesWritten,
               bool& failed) const override;
    int GetUnencodableLength(const DomChar* units, int unitCount) const override;
    const DomChar* GetByteOrderMark(int& unitCount) const override;

private:
    bool m_bBigEndian;
};

}  // namespace Core
