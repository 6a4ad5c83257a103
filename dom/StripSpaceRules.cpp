// Whitespace rules: a default, a rule per namespace URI and a rule per expanded name, held in
// two levels of small open-addressing tables.
#include "dom/StripSpaceRules.h"

#include "core/Hash.h"

namespace Dom {

// A table from text to owned items of type T (each with sKey and nHash), capacity 4 at the
// start, doubling when three quarters are taken.
template <class T>
struct CStripSpaceRules::TTable {
    int nCapacity = 4;
    int nCount = 0;
    T** pSlots = new T*[4]();

    ~TTable() {
        for (int i = 0; i < nCapacity; ++i) delete pSlots[i];
        delete[] pSlots;
    }
    int FindSlot(DomStringView key, unsigned int hash) const {
        int slot = static_cast<int>(hash % static_cast<unsigned int>(nCapacity));
        while (pSlots[slot] && !(pSlots[slot]->nHash == hash && pSlots[slot]->sKey == key)) {
            if (++slot == nCapacity) slot = 0;
        }
        return slot;
    }
    T* Find(DomStringView key) const { return pSlots[FindSlot(key, Core::HashText(key))]; }
    T* Make(DomStringView key) {
        unsigned int hash = Core::HashText(key);
        int slot = FindSlot(key, hash);
        if (pSlots[slot]) return pSlots[slot];
        if (nCount >= nCapacity / 4 * 3) {
            Grow();
            slot = FindSlot(key, hash);
        }
        T* item = new T();
        item->sKey = key;
        item->nHash = hash;
        pSlots[slot] = item;
        ++nCount;
        return item;
    }
    void Grow() {
        int oldCapacity = nCapacity;
        T** oldSlots = pSlots;
        nCapacity *= 2;
        pSlots = new T*[nCapacity]();
        for (int i = 0; i < oldCapacity; ++i) {
            if (oldSlots[i]) pSlots[FindSlot(oldSlots[i]->sKey, oldSlots[i]->nHash)] = oldSlots[i];
        }
        delete[] oldSlots;
    }
};

namespace {

struct SNamedRule {
    DomString sKey;
    unsigned int nHash;
    CStripSpaceRules::SRule oRule;
};

}  // namespace

struct CStripSpaceRules::SEntry {
    DomString sKey;
    unsigned int nHash;
    SRule oRule;
    TTable<SNamedRule> oNames;
};

CStripSpaceRules::CStripSpaceRules() : m_bAnyStrip(false), m_pEntries(new TTable<SEntry>()) {}

CStripSpaceRules::~CStripSpaceRules() { delete m_pEntries; }

bool CStripSpaceRules::Apply(SRule& rule, int priority, bool preserve) {
    bool conflict = rule.bSet && rule.nPriority == priority;
    if (!rule.bSet || rule.nPriority <= priority) {
        rule.bSet = true;
        rule.nPriority = priority;
        rule.bPreserve = preserve;
    }
    return !conflict;
}

bool CStripSpaceRules::AddRule(const DomChar* uri, const DomChar* localName, int priority, bool preserve) {
    if (!uri) return Apply(m_oDefault, priority, preserve);
    SEntry* entry = m_pEntries->Make(uri);
    if (!localName) return Apply(entry->oRule, priority, preserve);
    return Apply(entry->oNames.Make(localName)->oRule, priority, preserve);
}

bool CStripSpaceRules::ShouldPreserve(DomStringView uri, DomStringView localName) const {
    if (const SEntry* entry = m_pEntries->Find(uri)) {
        if (const SNamedRule* named = entry->oNames.Find(localName)) {
            if (named->oRule.bSet) return named->oRule.bPreserve;
        }
        if (entry->oRule.bSet) return entry->oRule.bPreserve;
    }
    return m_oDefault.bSet ? m_oDefault.bPreserve : true;
}

}  // namespace Dom
