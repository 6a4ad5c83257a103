// Lookup of encodings by name; callers word their own error for an unknown name.
#include "core/EncodingTable.h"

#include "core/Latin1Encoding.h"
#include "core/Utf16Encoding.h"
#include "core/Utf8Encoding.h"

namespace Core {

CEncodingTable::CEncodingTable() {
    Add(new CUtf8Encoding());
    Add(new CUtf16Encoding(true));
    Add(new CLatin1Encoding());
}

void CEncodingTable::Add(IEncoding* encoding) { m_aEncodings.Add(TRefPtr<IEncoding>(encoding)); }

static DomChar FoldAscii(DomChar c) { return c >= u'a' && c <= u'z' ? static_cast<DomChar>(c - 0x20) : c; }

static bool EqualsIgnoringAsciiCase(DomStringView a, DomStringView b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (FoldAscii(a[i]) != FoldAscii(b[i])) return false;
    }
    return true;
}

IEncoding* CEncodingTable::Find(DomStringView name) const {
    for (const TRefPtr<IEncoding>& encoding : m_aEncodings) {
        if (EqualsIgnoringAsciiCase(encoding->GetName(), name)) return encoding;
    }
    return nullptr;
}

}  // namespace Core
