// The namespace bindings in force at one level of the result tree: entries of prefix and URI
// over one shared character buffer. A frame copies its parent's map only when it changes it.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "xslt/private/EntryIndex.h"

namespace XsltPrivate {

class CNamespaceMap {
public:
    // Binds `prefix` to `uri`. A prefix that is present is rebound: its old entry stops
    // counting, the new one follows in map order. `isNew` marks it for declaration.
    void Add(DomStringView prefix, DomStringView uri, bool isNew);
    // The URI bound to `prefix`. The view lasts until the next Add.
    bool FindUri(DomStringView prefix, DomStringView& uri) const;
    // The prefix most recently bound to `uri`; with `skipEmpty` the default binding does not
    // count, since it never applies to attributes. The view lasts until the next Add.
    bool FindPrefix(DomStringView uri, bool skipEmpty, DomStringView& prefix) const;
    // Takes over the live bindings of `other` in their order, none of them marked new.
    void CopyFrom(const CNamespaceMap& other);
    void Clear();
    // Whether the empty prefix is bound to the empty URI, as it mostly is: a quick answer to
    // FindUri for the binding that copied elements bring most often.
    bool IsDefaultEmpty() const { return m_bDefaultEmpty; }

    // Walking the map in order: entries that were rebound are not live.
    int GetCount() const { return m_aEntries.GetSize(); }
    bool IsLive(int index) const { return m_aEntries[index].bLive; }
    bool IsNew(int index) const { return m_aEntries[index].bNew; }
    const DomChar* GetPrefix(int index) const { return m_aText.GetData() + m_aEntries[index].nPrefix; }
    const DomChar* GetUri(int index) const { return m_aText.GetData() + m_aEntries[index].nUri; }

private:
    struct SEntry {
        unsigned int nPrefixHash;
        unsigned int nUriHash;
        int nPrefix;
        int nPrefixLength;
        int nUri;
        int nUriLength;
        bool bNew;
        bool bLive;
    };

    int FindEntry(DomStringView prefix) const;
    void IndexLastEntry();
    int AppendText(DomStringView text);
    DomStringView PrefixOf(const SEntry& entry) const;
    DomStringView UriOf(const SEntry& entry) const;

    TArray<SEntry> m_aEntries;
    TArray<DomChar> m_aText;
    CEntryIndex m_prefixIndex;  // both once there are many entries
    CEntryIndex m_uriIndex;
    bool m_bDefaultEmpty = false;
};

}  // namespace XsltPrivate
