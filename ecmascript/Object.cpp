// The property table and the default internal methods of script objects.
#include "ecmascript/Object.h"

#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/NativeFunction.h"

namespace EcmaScript {

CPropertyTable::~CPropertyTable() { Clear(); }

SPropertyEntry* CPropertyTable::Find(const CName& name) const {
    if (m_nCount == 0) return nullptr;
    int32_t hash = name.GetHash();
    if (!(m_nHashBits & (uint64_t(1) << (hash & 63)))) return nullptr;
    const DomString& text = name.GetText();
    size_t length = text.size();
    int mask = m_nCapacity - 1;
    int start = hash & mask;
    int slot = start;
    do {
        SPropertyEntry* entry = m_pSlots[slot];
        if (entry && entry->nHash == hash && entry->sName.size() == length &&
            std::char_traits<DomChar>::compare(entry->sName.data(), text.data(), length) == 0) {
            return entry;
        }
        slot = (slot + 1) & mask;
    } while (slot != start);
    return nullptr;
}

SPropertyEntry* CPropertyTable::Add(const CName& name, CValue* value, uint32_t attributes, int32_t nativeIndex) {
    SPropertyEntry* entry = new SPropertyEntry;
    entry->sName = name.GetText();
    entry->pValue = value;
    entry->nNativeIndex = nativeIndex;
    entry->nAttributes = attributes;
    entry->nHash = name.GetHash();
    Insert(entry);
    return entry;
}

void CPropertyTable::AddExternal(SPropertyEntry* entry, const CName& name, CValue* value, uint32_t attributes) {
    entry->sName = name.GetText();
    entry->pValue = value;
    entry->nNativeIndex = -1;
    entry->nAttributes = attributes;
    entry->nHash = name.GetHash();
    entry->bExternal = true;
    Insert(entry);
}

void CPropertyTable::Insert(SPropertyEntry* entry) {
    if (m_nCount >= m_nCapacity * 3 / 4) Grow();
    m_nHashBits |= uint64_t(1) << (entry->nHash & 63);
    int mask = m_nCapacity - 1;
    int slot = entry->nHash & mask;
    while (m_pSlots[slot]) slot = (slot + 1) & mask;
    m_pSlots[slot] = entry;
    ++m_nCount;
}

void CPropertyTable::Discard(SPropertyEntry* entry) {
    if (!entry) return;
    if (entry->bExternal) {
        entry->pValue = nullptr;
    } else {
        delete entry;
    }
}

void CPropertyTable::Grow() {
    int capacity = m_nCapacity ? m_nCapacity * 2 : kInlineSlots;
    SPropertyEntry** slots = capacity == kInlineSlots ? m_apInline : new SPropertyEntry*[capacity];
    for (int i = 0; i < capacity; ++i) slots[i] = nullptr;
    int mask = capacity - 1;
    for (int i = 0; i < m_nCapacity; ++i) {
        SPropertyEntry* entry = m_pSlots[i];
        if (!entry) continue;
        int slot = entry->nHash & mask;
        while (slots[slot]) slot = (slot + 1) & mask;
        slots[slot] = entry;
    }
    FreeSlots();
    m_pSlots = slots;
    m_nCapacity = capacity;
}

void CPropertyTable::FreeSlots() {
    if (m_pSlots != m_apInline) delete[] m_pSlots;
    m_pSlots = nullptr;
}

void CPropertyTable::Remove(SPropertyEntry* entry) {
    for (int i = 0; i < m_nCapacity; ++i) {
        if (m_pSlots[i] == entry) {
            m_pSlots[i] = nullptr;
            --m_nCount;
            ++m_nRemovals;
            Discard(entry);
            return;
        }
    }
}

// Entries are detached before they are deleted: releasing a value may run destructors that
// look at this table again.
void CPropertyTable::Clear() {
    if (!m_pSlots) return;
    ++m_nRemovals;
    SPropertyEntry* inlineCopy[kInlineSlots];
    SPropertyEntry** slots = m_pSlots;
    int capacity = m_nCapacity;
    if (slots == m_apInline) {
        for (int i = 0; i < kInlineSlots; ++i) inlineCopy[i] = m_apInline[i];
        slots = inlineCopy;
    }
    m_pSlots = nullptr;
    m_nCapacity = m_nCount = 0;
    m_nHashBits = 0;
    for (int i = 0; i < capacity; ++i) Discard(slots[i]);
    if (slots != inlineCopy) delete[] slots;
}

CObject::CObject(CGlobalObject* global, CObject* prototype) : m_pGlobal(global), m_pPrototype(prototype) {}

CObject::~CObject() = default;

TRefPtr<CValue> CObject::Get(const CName& name) {
    if (m_pSharedTable) {
        if (SPropertyEntry* entry = m_pSharedTable->Find(name)) return GetNative(entry->nNativeIndex);
    }
    return GetOwnOrInherited(name);
}

TRefPtr<CValue> CObject::GetOwnOrInherited(const CName& name) {
    if (SPropertyEntry* entry = m_table.Find(name)) {
        if (entry->nNativeIndex >= 0) return GetNative(entry->nNativeIndex);
        return entry->pValue;
    }
    CObject* prototype = GetPrototype();
    return prototype ? prototype->Get(name) : TRefPtr<CValue>(CValue::Undefined());
}

void CObject::Put(const CName& name, CValue* value) {
    if (!CanPut(name)) return;
    PutOrdinary(name, value);
}

void CObject::PutOrdinary(const CName& name, CValue* value) {
    if (m_pSharedTable) {
        if (SPropertyEntry* entry = m_pSharedTable->Find(name)) {
            PutNative(entry->nNativeIndex, value);
            return;
        }
    }
    if (SPropertyEntry* entry = m_table.Find(name)) {
        if (entry->nNativeIndex >= 0) {
            PutNative(entry->nNativeIndex, value);
        } else {
            entry->pValue = value;
        }
        return;
    }
    m_table.Add(name, value, 0);
}

bool CObject::CanPut(const CName& name) {
    if (m_pSharedTable) {
        if (SPropertyEntry* entry = m_pSharedTable->Find(name)) return !(entry->nAttributes & ReadOnly);
    }
    if (SPropertyEntry* entry = m_table.Find(name)) return !(entry->nAttributes & ReadOnly);
    CObject* prototype = GetPrototype();
    return prototype ? prototype->CanPut(name) : true;
}

bool CObject::HasProperty(const CName& name) {
    if (m_pSharedTable && m_pSharedTable->Find(name)) return true;
    if (m_table.Find(name)) return true;
    CObject* prototype = GetPrototype();
    return prototype && prototype->HasProperty(name);
}

bool CObject::Delete(const CName& name) {
    if (m_pSharedTable && m_pSharedTable->Find(name)) return false;
    if (SPropertyEntry* entry = m_table.Find(name)) {
        if (entry->nAttributes & DontDelete) return false;
        m_table.Remove(entry);
    }
    return true;
}

// Hint string asks "toString" first, the other hints "valueOf" first.
TRefPtr<CValue> CObject::DefaultValue(int hint) {
    static const CName toStringName(u"toString");
    static const CName valueOfName(u"valueOf");
    const CName* order[2] = {&valueOfName, &toStringName};
    if (hint == HintString) std::swap(order[0], order[1]);
    for (const CName* name : order) {
        TRefPtr<CValue> method = Get(*name);
        if (CObject* function = method->GetObject()) {
            TRefPtr<CValue> result = function->Call(this, CValueList());
            if (result->GetType() < TypeObject) return result;
        }
    }
    throw new CRuntimeError(CRuntimeError::NoDefaultValue, nullptr, this);
}

TRefPtr<CObject> CObject::Construct(const CValueList&) { throw new CRuntimeError(CRuntimeError::NoConstruct, nullptr, this); }

TRefPtr<CValue> CObject::Call(CObject*, const CValueList&) { throw new CRuntimeError(CRuntimeError::NoCall, nullptr, this); }

TRefPtr<CValue> CObject::Match(const DomString&, int) { throw new CRuntimeError(CRuntimeError::NoMatch, nullptr, this); }

void CObject::Define(const CName& name, CValue* value, uint32_t attributes, bool replace) {
    if (SPropertyEntry* entry = m_table.Find(name)) {
        if (!replace) return;
        entry->pValue = value;
        entry->nAttributes = attributes;
        entry->nNativeIndex = -1;
        return;
    }
    m_table.Add(name, value, attributes);
}

void CObject::DefineNative(const DomChar* name, int index, uint32_t attributes) {
    CName key(name);
    if (SPropertyEntry* entry = m_table.Find(key)) {
        entry->pValue = nullptr;
        entry->nNativeIndex = index;
        entry->nAttributes = attributes;
        return;
    }
    m_table.Add(key, nullptr, attributes, index);
}

TRefPtr<CPropertyEnumerator> CObject::Enumerate() { return new CPropertyEnumerator(this); }

TRefPtr<CValue> CObject::GetNative(int) { return CValue::Undefined(); }

void CObject::PutNative(int, CValue*) {}

TRefPtr<CValue> CObject::CallNative(int, CObject*, const CValueList&) { return CValue::Undefined(); }

void CObject::AddFunction(const DomChar* name, int index, int length, uint32_t attributes) {
    TRefPtr<CObject> function = new EcmaScriptPrivate::CNativeFunction(this, index, length);
    Define(CName(name), CValue::Object(function), attributes, true);
}

void CObject::ClearProperties() {
    m_table.Clear();
    m_pSharedTable = nullptr;
    m_pPrototype = nullptr;
}

bool CPropertyEnumerator::Next(CName& name) {
    if (m_bEnd) return false;
    CPropertyTable& table = m_pObject->GetOwnTable();
    while (++m_nSlot < table.GetCapacity()) {
        SPropertyEntry* entry = table.GetSlot(m_nSlot);
        if (entry && !(entry->nAttributes & DontEnum)) {
            name = CName(entry->sName);
            return true;
        }
    }
    m_bEnd = true;
    return false;
}

}  // namespace EcmaScript
