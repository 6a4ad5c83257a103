// Arrays: the elements in a dense vector whose size is the length, the Array constructor and
// the Array prototype with toString, join, reverse and sort.
#pragma once
#include "core/Array.h"
#include "ecmascript/Object.h"

namespace EcmaScriptPrivate {

class CArrayObject : public EcmaScript::CObject {
public:
    // Arrays longer than this are refused with a runtime error instead of exhausting memory.
    static const uint32_t kMaxLength = 1u << 25;

    explicit CArrayObject(EcmaScript::CGlobalObject* global);
    CArrayObject(EcmaScript::CGlobalObject* global, EcmaScript::CObject* prototype);

    const DomChar* GetClass() const override { return u"Array"; }
    TRefPtr<EcmaScript::CValue> Get(const CName& name) override;
    void Put(const CName& name, EcmaScript::CValue* value) override;
    bool CanPut(const CName& name) override;
    bool HasProperty(const CName& name) override;
    bool Delete(const CName& name) override;
    TRefPtr<EcmaScript::CPropertyEnumerator> Enumerate() override;
    void ClearProperties() override;

    uint32_t GetLength() const { return static_cast<uint32_t>(m_aElements.GetSize()); }
    // The stored element at `index`, or none.
    EcmaScript::CValue* GetElement(uint32_t index) const {
        return index < GetLength() ? m_aElements[static_cast<int>(index)].Get() : nullptr;
    }
    void SetLength(uint32_t length);
    void Append(EcmaScript::CValue* value);

private:
    TArray<TRefPtr<EcmaScript::CValue>> m_aElements;
};

// The name as an array index (-1 if it is none): an index name, or a decimal text that reads
// back as itself and is below 4294967295.
int64_t ArrayIndexOf(const CName& name);

class CArrayPrototype : public CArrayObject {
public:
    explicit CArrayPrototype(EcmaScript::CGlobalObject* global);
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;
};

class CArrayConstructor : public EcmaScript::CObject {
public:
    explicit CArrayConstructor(EcmaScript::CGlobalObject* global);
    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CObject> Construct(const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject* thisObject, const EcmaScript::CValueList& arguments) override;
};

}  // namespace EcmaScriptPrivate
