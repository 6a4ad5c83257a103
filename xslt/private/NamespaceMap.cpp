// Namespace bindings of the result tree. Maps hold a handful of entries, so lookups scan from
// the newest entry back, comparing the stored hash before the text.
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
}

bool CNamespaceMap::FindUri(DomStringView prefix, DomStringView& uri) const {
    int index = FindEntry(prefix);
    if (index < 0) return false;
    uri = UriOf(m_aEntries[index]);
    return true;
}

bool CNamespaceMap::FindPrefix(DomStringView uri, bool skipEmpty, DomStringView& prefix) const {
    unsigned int hash = Core::HashText(uri);
    for (int i = m_aEntries.GetSize() - 1; i >= 0; --i) {
        const SEntry& entry = m_aEntries[i];
        if (!entry.bLive || entry.nUriHash != hash || UriOf(entry) != uri) continue;
        if (skipEmpty && entry.nPrefixLength == 0) continue;
        prefix = PrefixOf(entry);
        return true;
    }
    return false;
}

void CNamespaceMap::CopyFrom(const CNamespaceMap& other) {
    Clear();
    for (const SEntry& entry : other.m_aEntries) {
        if (!entry.bLive) continue;
        SEntry copy = entry;
        copy.nPrefix = AppendText(other.PrefixOf(entry));
        copy.nUri = AppendText(other.UriOf(entry));
        copy.bNew = false;
        m_aEntries.Add(copy);
    }
}

void CNamespaceMap::Clear() {
    m_aEntries.Clear();
    m_aText.Clear();
}

int CNamespaceMap::FindEntry(DomStringView prefix) const {
    unsigned int hash = Core::HashText(prefix);
    for (int i = m_aEntries.GetSize() - 1; i >= 0; --i) {
        const SEntry& entry = m_aEntries[i];
        if (entry.bLive && entry.nPrefixHash == hash && PrefixOf(entry) == prefix) return i;
    }
    return -1;
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
