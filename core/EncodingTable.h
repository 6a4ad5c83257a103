// The encodings known by name: UTF-8, UTF-16 (most significant byte first) and ISO-8859-1.
#pragma once
#include "core/Array.h"
#include "core/Encoding.h"

namespace Core {

class CEncodingTable : public CRefObject {
public:
    CEncodingTable();

    // Appends and takes a reference.
    void Add(IEncoding* encoding);
    // The first encoding whose name equals `name` without regard to ASCII case, or null.
    IEncoding* Find(DomStringView name) const;

private:
    TArray<TRefPtr<IEncoding>> m_aEncodings;
};

}  // namespace Core
