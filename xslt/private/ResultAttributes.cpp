// Attributes of the open result start tag, in order of first setting.
#include "xslt/private/ResultAttributes.h"

#include "core/Hash.h"

namespace XsltPrivate {

namespace {

const int InitialEntries = 16;
const int InitialText = 4096;

}  // namespace

void CResultAttributes::Add(DomStringView name, DomStringView value) {
    if (m_aEntries.GetCapacity() == 0) {
        m_aEntries.Reserve(InitialEntries);
        m_aText.Reserve(InitialText);
    }
    unsigned int hash = Core::HashText(name);
    int index = Find(name, hash);
    if (index >= 0) {
        // The old value's room stays unused until the next start tag clears the buffer.
        int offset = AppendText(value);
        m_aEntries[index].nValue = offset;
        return;
    }
    SEntry entry;
    entry.nHash = hash;
    entry.nName = AppendText(name);
    entry.nNameLength = static_cast<int>(name.size());
    entry.nValue = AppendText(value);
    m_aEntries.Add(entry);
    IndexLastEntry();
}

void CResultAttributes::Clear() {
    m_aEntries.Clear();
    m_aText.Clear();
    m_index.Clear();
}

int CResultAttributes::Find(DomStringView name, unsigned int hash) const {
    if (!m_index.IsEmpty()) {
        return m_index.FindLast(hash, [&](int i) { return NameOf(m_aEntries[i]) == name; });
    }
    for (int i = 0; i < m_aEntries.GetSize(); ++i) {
        if (m_aEntries[i].nHash == hash && NameOf(m_aEntries[i]) == name) return i;
    }
    return -1;
}

// The index starts with all entries when the count passes the threshold, then takes each new one.
void CResultAttributes::IndexLastEntry() {
    int count = m_aEntries.GetSize();
    if (count <= CEntryIndex::IndexThreshold) return;
    int first = m_index.IsEmpty() ? 0 : count - 1;
    for (int i = first; i < count; ++i) m_index.Add(m_aEntries[i].nHash, i);
}

int CResultAttributes::AppendText(DomStringView text) {
    int offset = m_aText.GetSize();
    m_aText.Append(text.data(), static_cast<int>(text.size()));
    m_aText.Add(0);
    return offset;
}

}  // namespace XsltPrivate
