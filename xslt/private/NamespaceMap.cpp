// Namespace bindings of the result tree. Maps mostly hold a handful of entries, which lookups
// scan from the newest back, comparing the stored hash first; larger maps use hash indexes.
#include "xslt/private/NamespaceMap.h"

#include "core/Hash.h"

namespace XsltPrivate {

namespace {

// The character buffer grows in steps of at least this many units.
const int TextGrowth = 4096;

}  // namespace

void CNamespaceMap::Add(DomStringView prefix, DomStringView uri, bool isNew) {
    int old = FindEntry(prefix);
    if (old >= 0) m_aEntries[old].bLive = false;
    if (prefix.empty()) m_bDefaultEmpty = uri.empty();
    SEntry entry;
    entry.nPrefixHash = Core::HashText(prefix);
    entry.nUriHash = Core::HashText(uri);
    entry.nPrefix = AppendText(prefix);
    entry.nPrefixLength = static_cast<int>(prefix.size());
    entry.nUri = AppendText(uri);
    entry.nUriLength = static_cast<int>(uri.size());
    entry.bNew = isNew;
    entry.bLive = true;
    m_aEntries.Add(entry);
    IndexLastEntry();
}

bool CNamespaceMap::FindUri(DomStringView prefix, DomStringView& uri) const {
    int index = FindEntry(prefix);
    if (index < 0) return false;
    uri = UriOf(m_aEntries[index]);
    return true;
}

bool CNamespaceMap::FindPrefix(DomStringView uri, bool skipEmpty, DomStringView& prefix) const {
    unsigned int hash = Core::HashText(uri);
    auto accept = [&](int i) {
        const SEntry& entry = m_aEntries[i];
        return entry.bLive && UriOf(entry) == uri && !(skipEmpty && entry.nPrefixLength == 0);
    };
    int found = -1;
    if (!m_uriIndex.IsEmpty()) {
        found = m_uriIndex.FindLast(hash, accept);
    } else {
        for (int i = m_aEntries.GetSize() - 1; i >= 0 && found < 0; --i) {
            if (m_aEntries[i].nUriHash == hash && accept(i)) found = i;
        }
    }
    if (found < 0) return false;
    prefix = PrefixOf(m_aEntries[found]);
    return true;
}

void CNamespaceMap::CopyFrom(const CNamespaceMap& other) {
    Clear();
    m_bDefaultEmpty = other.m_bDefaultEmpty;
    for (const SEntry& entry : other.m_aEntries) {
        if (!entry.bLive) continue;
        SEntry copy = entry;
        copy.nPrefix = AppendText(other.PrefixOf(entry));
        copy.nUri = AppendText(other.UriOf(entry));
        copy.bNew = false;
        m_aEntries.Add(copy);
        IndexLastEntry();
    }
}

void CNamespaceMap::Clear() {
    m_aEntries.Clear();
    m_aText.Clear();
    m_prefixIndex.Clear();
    m_uriIndex.Clear();
    m_bDefaultEmpty = false;
}

int CNamespaceMap::FindEntry(DomStringView prefix) const {
    unsigned int hash = Core::HashText(prefix);
    auto accept = [&](int i) { return m_aEntries[i].bLive && PrefixOf(m_aEntries[i]) == prefix; };
    if (!m_prefixIndex.IsEmpty()) return m_prefixIndex.FindLast(hash, accept);
    for (int i = m_aEntries.GetSize() - 1; i >= 0; --i) {
        if (m_aEntries[i].nPrefixHash == hash && accept(i)) return i;
    }
    return -1;
}

// The indexes start with all entries when the count passes the threshold, then take each new one.
void CNamespaceMap::IndexLastEntry() {
    int count = m_aEntries.GetSize();
    if (count <= CEntryIndex::IndexThreshold) return;
    int first = m_prefixIndex.IsEmpty() ? 0 : count - 1;
    for (int i = first; i < count; ++i) {
        m_prefixIndex.Add(m_aEntries[i].nPrefixHash, i);
        m_uriIndex.Add(m_aEntries[i].nUriHash, i);
    }
}

// Appends the text with a terminator, since the sink takes zero-terminated texts.
int CNamespaceMap::AppendText(DomStringView text) {
    int offset = m_aText.GetSize();
    int needed = offset + static_cast<int>(text.size()) + 1;
    if (needed > m_aText.GetCapacity()) {
        int atLeast = m_aText.GetCapacity() + TextGrowth;
        m_aText.Reserve(needed > atLeast ? needed : atLeast);
    }
    m_aText.Append(text.data(), static_cast<int>(text.size()));
    m_aText.Add(0);
    return offset;
}

DomStringView CNamespaceMap::PrefixOf(const SEntry& entry) const {
    return DomStringView(m_aText.GetData() + entry.nPrefix, entry.nPrefixLength);
}

DomStringView CNamespaceMap::UriOf(const SEntry& entry) const {
    return DomStringView(m_aText.GetData() + entry.nUri, entry.nUriLength);
}

}  // namespace XsltPrivate
