// The attributes of the open start tag of the result: names and values over one character
// buffer, reused from tag to tag, so that a start tag allocates nothing once warmed up.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "xslt/private/EntryIndex.h"

namespace XsltPrivate {

class CResultAttributes {
public:
    // Adds an attribute; a name that is present takes the new value and keeps its place.
    void Add(DomStringView name, DomStringView value);
    void Clear();

    int GetCount() const { return m_aEntries.GetSize(); }
    // Zero-terminated texts, valid until the next Add or Clear.
    const DomChar* GetName(int index) const { return m_aText.GetData() + m_aEntries[index].nName; }
    const DomChar* GetValue(int index) const { return m_aText.GetData() + m_aEntries[index].nValue; }

private:
    struct SEntry {
        unsigned int nHash;
        int nName;
        int nNameLength;
        int nValue;
    };

    int Find(DomStringView name, unsigned int hash) const;
    void IndexLastEntry();
    int AppendText(DomStringView text);
    DomStringView NameOf(const SEntry& entry) const {
        return DomStringView(m_aText.GetData() + entry.nName, entry.nNameLength);
    }

    TArray<SEntry> m_aEntries;
    TArray<DomChar> m_aText;
    CEntryIndex m_index;  // by name, once there are many
};

}  // namespace XsltPrivate
