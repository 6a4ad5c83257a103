// The counted script values: undefined, null, boolean, string, number, object, reference and
// list, with type codes 0 to 7. Accessors of the wrong type give an empty answer; they never
// convert (the conversions are in Conversions.h).
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "ecmascript/Name.h"
#include "ecmascript/Number.h"

namespace EcmaScript {

class CObject;
class CValue;
class CValueList;

enum EValueType {
    TypeUndefined = 0,
    TypeNull = 1,
    TypeBoolean = 2,
    TypeString = 3,
    TypeNumber = 4,
    TypeObject = 5,
    TypeReference = 6,
    TypeList = 7
};

// A base object (or none) and a property name.
struct CReference {
    TRefPtr<CObject> pBase;
    CName name;
};

class CValue : public CRefObject {
public:
    explicit CValue(EValueType type) : m_nType(static_cast<uint8_t>(type)) {}
    virtual int GetType() const { return m_nType; }
    // The type code without a virtual call, for the hot paths of the operators.
    int GetTypeCode() const { return m_nType; }
    virtual bool GetBoolean() const { return false; }
    virtual const DomString& GetString() const;
    virtual CNumber GetNumber() const { return CNumber(); }
    // The object of an object value; the value keeps it alive.
    virtual CObject* GetObject() const { return nullptr; }
    virtual const CReference* GetReference() const { return nullptr; }
    virtual const CValueList* GetList() const { return nullptr; }
    virtual void* GetSpare() const { return nullptr; }

    // Shared immutable values.
    static CValue* Undefined();
    static CValue* Null();
    static CValue* Boolean(bool value);
    static TRefPtr<CValue> Number(const CNumber& number) {
        if (number.IsInteger()) {
            uint32_t slot = static_cast<uint32_t>(number.GetInteger() - kSmallestCached);
            if (slot < kCachedCount && s_apSmallIntegers[slot]) return s_apSmallIntegers[slot];
        }
        return MakeNumber(number);
    }
    static TRefPtr<CValue> Integer(int32_t value) { return Number(CNumber::FromInteger(value)); }
    static TRefPtr<CValue> String(DomString text);
    static TRefPtr<CValue> Object(CObject* object);

private:
    static TRefPtr<CValue> MakeNumber(const CNumber& number);

    // Small integers are shared: loop counters and indexes then cost no allocation.
    static const int kSmallestCached = -128;
    static const uint32_t kCachedCount = 1024 + 128;
    static inline CValue* s_apSmallIntegers[kCachedCount] = {};

    uint8_t m_nType;
};

class CUndefinedValue : public CValue {
public:
    CUndefinedValue() : CValue(TypeUndefined) {}
};

class CNullValue : public CValue {
public:
    CNullValue() : CValue(TypeNull) {}
};

class CBooleanValue : public CValue {
public:
    explicit CBooleanValue(bool value) : CValue(TypeBoolean), m_bValue(value) {}
    bool GetBoolean() const override { return m_bValue; }

private:
    bool m_bValue;
};

class CStringValue : public CValue {
public:
    explicit CStringValue(DomString text) : CValue(TypeString), m_sText(std::move(text)) {}
    const DomString& GetString() const override { return m_sText; }

private:
    DomString m_sText;
};

class CNumberValue : public CValue {
public:
    explicit CNumberValue(const CNumber& number) : CValue(TypeNumber), m_number(number) {}
    CNumber GetNumber() const override { return m_number; }
    // The number without a virtual call.
    const CNumber& GetNumberDirect() const { return m_number; }

    // Arithmetic makes and drops a number value per step; freed blocks are kept for reuse.
    static void* operator new(size_t size);
    static void operator delete(void* block, size_t size);

private:
    CNumber m_number;
};

class CObjectValue : public CValue {
public:
    explicit CObjectValue(CObject* object);
    ~CObjectValue() override;
    CObject* GetObject() const override { return m_pObject; }

private:
    CObject* m_pObject;
};

class CReferenceValue : public CValue {
public:
    CReferenceValue(CObject* base, CName name);
    ~CReferenceValue() override;
    const CReference* GetReference() const override { return &m_reference; }

private:
    CReference m_reference;
};

// The evaluated arguments of a call, in order. A missing position reads as undefined. The
// first few values live inside the list, so that most calls allocate nothing for it.
class CValueList {
public:
    int GetSize() const { return m_nSize; }
    CValue* Get(int index) const {
        if (index >= m_nSize) return CValue::Undefined();
        return index < kInline ? m_apInline[index].Get() : m_aMore[index - kInline].Get();
    }
    CValue* operator[](int index) const { return Get(index); }
    void Add(CValue* value) { Add(TRefPtr<CValue>(value)); }
    void Add(TRefPtr<CValue>&& value) {
        if (m_nSize < kInline) {
            m_apInline[m_nSize] = std::move(value);
        } else {
            m_aMore.Add(std::move(value));
        }
        ++m_nSize;
    }
    void Clear() {
        for (TRefPtr<CValue>& value : m_apInline) value = nullptr;
        m_aMore.Clear();
        m_nSize = 0;
    }
    void Reserve(int count) {
        if (count > kInline) m_aMore.Reserve(count - kInline);
    }

private:
    static const int kInline = 4;
    TRefPtr<CValue> m_apInline[kInline];
    TArray<TRefPtr<CValue>> m_aMore;
    int m_nSize = 0;
};

class CListValue : public CValue {
public:
    CListValue() : CValue(TypeList) {}
    explicit CListValue(CValueList values) : CValue(TypeList), m_values(std::move(values)) {}
    const CValueList* GetList() const override { return &m_values; }
    CValueList& GetValues() { return m_values; }

private:
    CValueList m_values;
};

// What a statement's execution gives: normal, break, continue or return, with a value or none.
struct CCompletion {
    enum EKind { Normal = 0, Break = 1, Continue = 2, Return = 3 };
    int nKind = Normal;
    TRefPtr<CValue> pValue;
};

}  // namespace EcmaScript
