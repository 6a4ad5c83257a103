// ISO-8859-1: one byte is one code unit; units of 0x100 and above cannot be written.
#pragma once
#include "core/Encoding.h"

namespace Core {

class CLatin1Encoding : public IEncoding {
public:
    DomString GetName() const override;
    int Decode(const unsigned char* bytes, int byteCount, int& bytesConsumed, DomChar* units, int unitCapacity,
               bool& incomplete) const override;
    int Encode(const DomChar* units, int unitCount, unsigned char* bytes, int byteCapacity, int& bytesWritten,
               bool& failed) const override;
    int GetUnencodableLength(const DomChar* units, int unitCount) const override;
    const DomChar* GetByteOrderMark(int& unitCount) const override;
};

}  // namespace Core
