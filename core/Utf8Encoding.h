// UTF-8 as the system reads and writes it: a table-driven decoder that checks no continuation
// byte, and an encoder that writes correct UTF-8. Also the base of URI escaping.
#pragma once
#include "core/Encoding.h"

namespace Core {

class CUtf8Encoding : public IEncoding {
public:
    CUtf8Encoding();

    DomString GetName() const override;
    int Decode(const unsigned char* bytes, int byteCount, int& bytesConsumed, DomChar* units, int unitCapacity,
               bool& incomplete) const override;
    int Encode(const DomChar* units, int unitCount, unsigned char* bytes, int byteCapacity, int& bytesWritten,
               bool& failed) const override;
    int GetUnencodableLength(const DomChar* units, int unitCount) const override;
    const DomChar* GetByteOrderMark(int& unitCount) const override;

private:
    static int SequenceLengthOf(unsigned int value);

    int m_anLength[256];         // sequence length by lead byte
    unsigned int m_anMark[7];    // lead mark by sequence length 1..6
    unsigned int m_anOffset[7];  // value offset by sequence length 1..6
};

}  // namespace Core
