// The script object: prototype, an open-addressing property table, an optional table shared by
// several objects for natively implemented properties, and the internal methods as virtual
// operations. Built-in functions are registered with AddFunction and run through CallNative.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "ecmascript/Value.h"

namespace EcmaScript {

class CGlobalObject;
class CPropertyEnumerator;

enum EPropertyAttribute { ReadOnly = 1, DontEnum = 2, DontDelete = 4 };

enum EHint { HintNone = 0, HintString = 1, HintNumber = 2 };

struct SPropertyEntry {
    DomString sName;
    TRefPtr<CValue> pValue;  // none for a native property
    int32_t nNativeIndex = -1;
    uint32_t nAttributes = 0;
    int32_t nHash = 0;
    bool bExternal = false;  // storage owned by the object, not the table
};

// Open addressing with linear probing. Deletion leaves no mark, so a lookup walks the whole
// table from the start slot round to it again; a miss costs a walk over the capacity.
class CPropertyTable : public CRefObject {
public:
    CPropertyTable() = default;
    CPropertyTable(const CPropertyTable&) = delete;
    CPropertyTable& operator=(const CPropertyTable&) = delete;
    ~CPropertyTable() override;

    SPropertyEntry* Find(const CName& name) const;
    // Adds an entry for a name known to be absent.
    SPropertyEntry* Add(const CName& name, CValue* value, uint32_t attributes, int32_t nativeIndex = -1);
    // Adds an entry whose storage the caller owns and keeps alive as long as the table.
    void AddExternal(SPropertyEntry* entry, const CName& name, CValue* value, uint32_t attributes);
    void Remove(SPropertyEntry* entry);
    void Clear();

    // Counts removals: an entry found before is still alive while this is unchanged.
    uint32_t GetRemovals() const { return m_nRemovals; }
    int GetCapacity() const { return m_nCapacity; }
    int GetCount() const { return m_nCount; }
    SPropertyEntry* GetSlot(int slot) const { return m_pSlots[slot]; }

private:
    void Grow();
    void FreeSlots();
    void Insert(SPropertyEntry* entry);
    static void Discard(SPropertyEntry* entry);

    // Capacities are powers of two, so the slot of a hash is taken by a mask. The first four
    // slots live inside the table: small objects need no slot array of their own.
    static const int kInlineSlots = 4;
    SPropertyEntry** m_pSlots = nullptr;
    int m_nCapacity = 0;
    int m_nCount = 0;
    uint32_t m_nRemovals = 0;
    // One bit per hash value modulo 64 of every name added since the table was last empty: a
    // name whose bit is clear is missing without a walk over the table.
    uint64_t m_nHashBits = 0;
    SPropertyEntry* m_apInline[kInlineSlots];
};

class CObject : public CRefObject {
public:
    CObject(CGlobalObject* global, CObject* prototype);
    ~CObject() override;

    virtual CObject* GetPrototype() { return m_pPrototype; }
    virtual const DomChar* GetClass() const { return u"Object"; }
    // The internal [[Value]], none by default.
    virtual CValue* GetValue() { return nullptr; }
    virtual void SetValue(CValue*) {}
    virtual TRefPtr<CValue> Get(const CName& name);
    virtual void Put(const CName& name, CValue* value);
    virtual bool CanPut(const CName& name);
    virtual bool HasProperty(const CName& name);
    virtual bool Delete(const CName& name);
    virtual TRefPtr<CValue> DefaultValue(int hint);
    virtual TRefPtr<CObject> Construct(const CValueList& arguments);
    virtual TRefPtr<CValue> Call(CObject* thisObject, const CValueList& arguments);
    virtual TRefPtr<CValue> Match(const DomString& text, int index);
    // Writes a property regardless of attributes; an existing one changes only with `replace`.
    virtual void Define(const CName& name, CValue* value, uint32_t attributes, bool replace);
    virtual TRefPtr<CPropertyEnumerator> Enumerate();
    virtual const DomChar* GetTypeofName() const { return u"object"; }
    virtual CObject* GetObject() { return this; }
    virtual bool IsSame(CObject* object) { return object == this; }
    virtual TRefPtr<CValue> GetNative(int index);
    virtual void PutNative(int index, CValue* value);
    virtual TRefPtr<CValue> CallNative(int index, CObject* thisObject, const CValueList& arguments);

    CGlobalObject* GetGlobal() const { return m_pGlobal; }
    void SetPrototype(CObject* prototype) { m_pPrototype = prototype; }
    bool IsCallable() const { return GetTypeofName()[0] == u'f'; }

    // Registers built-in function number `index` of this object under `name`.
    void AddFunction(const DomChar* name, int index, int length, uint32_t attributes);
    void DefineValue(const DomChar* name, CValue* value, uint32_t attributes) {
        Define(CName(name), value, attributes, true);
    }
    // A property of this object's own table read and written through GetNative/PutNative.
    void DefineNative(const DomChar* name, int index, uint32_t attributes);
    void SetSharedTable(CPropertyTable* table) { m_pSharedTable = table; }

    CPropertyTable& GetOwnTable() { return m_table; }
    // Empties the tables and drops the prototype: breaks the cycles among standard objects.
    virtual void ClearProperties();

    // True when the object's properties are exactly its own table (no prototype, no shared
    // table, no overriding class): scope lookups then read and write the entry directly.
    bool IsVariableScope() const { return m_bVariableScope && !m_pPrototype && !m_pSharedTable; }
    // The own entry of a name; classes that make properties on demand make them here.
    virtual SPropertyEntry* FindOwn(const CName& name) { return m_table.Find(name); }

protected:
    void SetVariableScope() { m_bVariableScope = true; }
    // Own-table lookups shared by the overrides of derived classes.
    TRefPtr<CValue> GetOwnOrInherited(const CName& name);
    void PutOrdinary(const CName& name, CValue* value);

private:
    CGlobalObject* m_pGlobal;
    TRefPtr<CObject> m_pPrototype;
    CPropertyTable m_table;
    TRefPtr<CPropertyTable> m_pSharedTable;
    bool m_bVariableScope = false;
};

// Walks the own table of an object in slot order, skipping DontEnum entries. Deleting during
// the walk is safe; an insertion that grows the table restarts it over different slots.
class CPropertyEnumerator : public CRefObject {
public:
    explicit CPropertyEnumerator(CObject* object) : m_pObject(object) {}
    virtual bool Next(CName& name);

protected:
    TRefPtr<CObject> m_pObject;
    int m_nSlot = -1;
    bool m_bEnd = false;
};

}  // namespace EcmaScript
