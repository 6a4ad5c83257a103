// A fixed open-addressing table of lower-case HTML names and their flags, as the HTML writer
// uses for elements (empty, raw text) and attributes (boolean, URI).
#pragma once
#include "core/DomString.h"

namespace XmlWriterPrivate {

class CHtmlNameTable {
public:
    static constexpr int Capacity = 64;
    // Longer names than this are in no table; lookups lower-case into a buffer of this size.
    static constexpr int MaxNameLength = 16;

    // `name` must be a lower-case literal that outlives the table.
    void Add(const DomChar* name, unsigned int flags);
    // The flags of `name` compared without regard to ASCII case, or 0 if it is not listed.
    unsigned int Find(DomStringView name) const;

private:
    struct SEntry {
        const DomChar* pName = nullptr;
        int nLength = 0;
        unsigned int nFlags = 0;
    };

    int FindSlot(DomStringView lowerName) const;

    SEntry m_aEntries[Capacity];
};

}  // namespace XmlWriterPrivate
