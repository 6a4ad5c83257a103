// The interface through which 16-bit code units meet bytes. Implementations: UTF-8, UTF-16
// (with a byte-order flag) and ISO-8859-1, found by name in CEncodingTable.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"

namespace Core {

class IEncoding : public CRefObject {
public:
    virtual DomString GetName() const = 0;
    // Bytes to units. Stops when input or output runs out, or before an unfinished sequence,
    // in which case `incomplete` is set and `bytesConsumed` points at its lead byte.
    virtual int Decode(const unsigned char* bytes, int byteCount, int& bytesConsumed, DomChar* units,
                       int unitCapacity, bool& incomplete) const = 0;
    // Units to bytes; returns the units consumed. Stops before a character that does not fit
    // (`failed` false) or at one that cannot be represented (`failed` true).
    virtual int Encode(const DomChar* units, int unitCount, unsigned char* bytes, int byteCapacity,
                       int& bytesWritten, bool& failed) const = 0;
    // How many leading units, from the point where Encode failed, must become references.
    virtual int GetUnencodableLength(const DomChar* units, int unitCount) const = 0;
    // The units that open an output file in this encoding, or null with a count of 0.
    virtual const DomChar* GetByteOrderMark(int& unitCount) const = 0;
};

}  // namespace Core
