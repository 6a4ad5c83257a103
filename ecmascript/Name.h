// A property or variable name: its text, or an index whose decimal text is made on demand,
// with the hash cached so that an identifier of the source is hashed once.
#pragma once
#include <cstdint>
#include <utility>

#include "core/DomString.h"
#include "core/Hash.h"

namespace EcmaScriptPrivate {

class CName {
public:
    CName() = default;
    explicit CName(DomString text) : m_sText(std::move(text)) {}
    explicit CName(DomStringView text) : m_sText(text) {}
    explicit CName(const DomChar* text) : m_sText(text) {}
    static CName FromIndex(int32_t index) {
        CName name;
        name.m_nIndex = index;
        return name;
    }

    // -1 for a name given as text.
    int32_t GetIndex() const { return m_nIndex; }
    const DomString& GetText() const {
        if (m_nIndex >= 0 && m_sText.empty()) MakeText();
        return m_sText;
    }
    int32_t GetHash() const {
        if (m_nHash < 0) m_nHash = static_cast<int32_t>(Core::HashText(GetText()));
        return m_nHash;
    }
    bool Equals(DomStringView text, int32_t hash) const { return GetHash() == hash && GetText() == text; }
    bool operator==(const CName& other) const {
        if (m_nIndex >= 0 && other.m_nIndex >= 0) return m_nIndex == other.m_nIndex;
        return Equals(other.GetText(), other.GetHash());
    }

private:
    void MakeText() const;

    mutable DomString m_sText;
    int32_t m_nIndex = -1;
    mutable int32_t m_nHash = -1;
};

inline void CName::MakeText() const {
    DomChar buffer[12];
    int length = 0;
    uint32_t value = static_cast<uint32_t>(m_nIndex);
    do {
        buffer[length++] = static_cast<DomChar>(u'0' + value % 10);
        value /= 10;
    } while (value);
    m_sText.assign(buffer, length);
    for (int i = 0, j = length - 1; i < j; ++i, --j) std::swap(m_sText[i], m_sText[j]);
}

}  // namespace EcmaScriptPrivate

namespace EcmaScript {
using EcmaScriptPrivate::CName;
}
