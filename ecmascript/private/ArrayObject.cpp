// Array objects and the Array built-ins.
#include "ecmascript/private/ArrayObject.h"

#include <cstdio>
#include <new>

#include "core/Sort.h"
#include "ecmascript/Conversions.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/Builtins.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

enum { ArrayToString = 0, ArrayJoin = 1, ArrayReverse = 2, ArraySort = 3 };

const CName& LengthName() {
    static const CName name(u"length");
    return name;
}

// The name of an index as "%lu" would print it.
CName IndexName(uint32_t index) {
    if (index <= 0x7FFFFFFFu) return CName::FromIndex(static_cast<int32_t>(index));
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%lu", static_cast<unsigned long>(index));
    return CName(Core::WidenLatin1(buffer));
}

TRefPtr<CValue> LengthValue(uint32_t length) {
    if (length <= 0x7FFFFFFFu) return CValue::Integer(static_cast<int32_t>(length));
    return CValue::Number(CNumber::FromDouble(length));
}

uint32_t LengthOf(CObject* object) { return ToUint32(object->Get(LengthName())).GetUint32(); }

// Joined texts beyond 2^26 units are refused, as concatenation refuses them.
const size_t kMaxTextLength = size_t(1) << 26;

// join on any object with a "length"; undefined and null elements give the empty text.
DomString Join(CObject* object, CValue* separatorValue) {
    DomString separator = separatorValue->GetType() == TypeUndefined ? DomString(u",") : ToString(separatorValue);
    uint32_t length = LengthOf(object);
    DomString text;
    for (uint32_t i = 0; i < length; ++i) {
        if (text.size() > kMaxTextLength) throw new CRuntimeError(CRuntimeError::OutOfMemory);
        if (i) text += separator;
        TRefPtr<CValue> element = object->Get(IndexName(i));
        if (element->GetType() != TypeUndefined && element->GetType() != TypeNull) text += ToString(element);
    }
    return text;
}

// Moves the element at `from` (or its absence) to `to`.
void MoveElement(CObject* object, bool present, CValue* value, const CName& to) {
    if (present) {
        object->Put(to, value);
    } else {
        object->Delete(to);
    }
}

void Reverse(CObject* object) {
    uint32_t length = LengthOf(object);
    for (uint32_t lower = 0; lower < length / 2; ++lower) {
        CName lowerName = IndexName(lower), upperName = IndexName(length - 1 - lower);
        bool lowerPresent = object->HasProperty(lowerName), upperPresent = object->HasProperty(upperName);
        TRefPtr<CValue> lowerValue = object->Get(lowerName), upperValue = object->Get(upperName);
        MoveElement(object, upperPresent, upperValue, lowerName);
        MoveElement(object, lowerPresent, lowerValue, upperName);
    }
}

// The first-edition comparison of array elements: missing ones last, then undefined ones,
// then by the comparison function or by text.
class CArraySortable : public Core::ISortable {
public:
    CArraySortable(CObject* object, CObject* compare) : m_pObject(object), m_pCompare(compare) {
        uint32_t length = LengthOf(object);
        m_nSize = length > 0x7FFFFFFFu ? 0x7FFFFFFF : static_cast<int>(length);
    }
    int GetSize() override { return m_nSize; }

    int Compare(int i, int j) override {
        CName first = IndexName(i), second = IndexName(j);
        bool hasFirst = m_pObject->HasProperty(first), hasSecond = m_pObject->HasProperty(second);
        if (!hasFirst || !hasSecond) return hasFirst == hasSecond ? 0 : (hasFirst ? -1 : 1);
        TRefPtr<CValue> x = m_pObject->Get(first), y = m_pObject->Get(second);
        bool xUndefined = x->GetType() == TypeUndefined, yUndefined = y->GetType() == TypeUndefined;
        if (xUndefined || yUndefined) return xUndefined == yUndefined ? 0 : (xUndefined ? 1 : -1);
        if (m_pCompare) {
            CValueList arguments;
            arguments.Add(x);
            arguments.Add(y);
            CNumber result = ToNumber(m_pCompare->Call(nullptr, arguments));
            if (result.IsNaN() || result.IsZero()) return 0;
            return result.Less(CNumber::FromInteger(0)) ? -1 : 1;
        }
        DomString a = ToString(x), b = ToString(y);
        return a < b ? -1 : (a == b ? 0 : 1);
    }

    void Swap(int i, int j) override {
        CName first = IndexName(i), second = IndexName(j);
        bool hasFirst = m_pObject->HasProperty(first), hasSecond = m_pObject->HasProperty(second);
        TRefPtr<CValue> x = m_pObject->Get(first), y = m_pObject->Get(second);
        MoveElement(m_pObject, hasSecond, y, first);
        MoveElement(m_pObject, hasFirst, x, second);
    }

private:
    CObject* m_pObject;
    CObject* m_pCompare;
    int m_nSize;
};

class CArrayEnumerator : public CPropertyEnumerator {
public:
    explicit CArrayEnumerator(CArrayObject* array) : CPropertyEnumerator(array), m_pArray(array) {}
    bool Next(CName& name) override {
        while (m_nIndex < m_pArray->GetLength()) {
            uint32_t index = m_nIndex++;
            if (m_pArray->GetElement(index)) {
                name = CName(IndexName(index).GetText());
                return true;
            }
        }
        return CPropertyEnumerator::Next(name);
    }

private:
    CArrayObject* m_pArray;
    uint32_t m_nIndex = 0;
};

}  // namespace

int64_t ArrayIndexOf(const CName& name) {
    if (name.GetIndex() >= 0) return name.GetIndex();
    const DomString& text = name.GetText();
    if (text.empty() || text.size() > 10 || (text[0] == u'0' && text.size() > 1)) return -1;
    int64_t value = 0;
    for (DomChar unit : text) {
        if (unit < u'0' || unit > u'9') return -1;
        value = value * 10 + (unit - u'0');
    }
    return value < 4294967295LL ? value : -1;
}

CArrayObject::CArrayObject(CGlobalObject* global) : CObject(global, global->GetArrayPrototype()) {}

CArrayObject::CArrayObject(CGlobalObject* global, CObject* prototype) : CObject(global, prototype) {}

void CArrayObject::SetLength(uint32_t length) {
    if (length > kMaxLength) throw new CRuntimeError(CRuntimeError::OutOfMemory, LengthValue(length));
    try {
        m_aElements.SetSize(static_cast<int>(length));
    } catch (std::bad_alloc&) {
        throw new CRuntimeError(CRuntimeError::OutOfMemory, LengthValue(length));
    }
}

void CArrayObject::Append(CValue* value) {
    SetLength(GetLength() + 1);
    m_aElements.Last() = value;
}

TRefPtr<CValue> CArrayObject::Get(const CName& name) {
    int64_t index = ArrayIndexOf(name);
    if (index >= 0) {
        if (CValue* element = GetElement(static_cast<uint32_t>(index))) return element;
    } else if (name == LengthName()) {
        return LengthValue(GetLength());
    }
    return CObject::Get(name);
}

void CArrayObject::Put(const CName& name, CValue* value) {
    if (!CanPut(name)) return;
    int64_t index = ArrayIndexOf(name);
    if (index >= 0) {
        if (index >= GetLength()) SetLength(static_cast<uint32_t>(index + 1));
        m_aElements[static_cast<int>(index)] = value;
        return;
    }
    if (name == LengthName()) {
        CNumber number = ToNumber(value);
        uint32_t length = number.ToUint32().GetUint32();
        if (number.IsNaN() || number.GetDouble() != static_cast<double>(length)) {
            throw new CRuntimeError(CRuntimeError::InvalidArrayLength, value);
        }
        SetLength(length);
        return;
    }
    PutOrdinary(name, value);
}

bool CArrayObject::CanPut(const CName& name) {
    if (ArrayIndexOf(name) >= 0 || name == LengthName()) return true;
    return CObject::CanPut(name);
}

bool CArrayObject::HasProperty(const CName& name) {
    int64_t index = ArrayIndexOf(name);
    if (index >= 0 && GetElement(static_cast<uint32_t>(index))) return true;
    if (index < 0 && name == LengthName()) return true;
    return CObject::HasProperty(name);
}

bool CArrayObject::Delete(const CName& name) {
    int64_t index = ArrayIndexOf(name);
    if (index >= 0) {
        if (index < GetLength()) m_aElements[static_cast<int>(index)] = nullptr;
        return true;
    }
    if (name == LengthName()) return false;
    return CObject::Delete(name);
}

TRefPtr<CPropertyEnumerator> CArrayObject::Enumerate() { return new CArrayEnumerator(this); }

void CArrayObject::ClearProperties() {
    m_aElements.Clear();
    CObject::ClearProperties();
}

CArrayPrototype::CArrayPrototype(CGlobalObject* global) : CArrayObject(global, global->GetObjectPrototype()) {}

TRefPtr<CValue> CArrayPrototype::CallNative(int index, CObject* thisObject, const CValueList& arguments) {
    CObject* self = thisObject ? thisObject : GetGlobal();
    switch (index) {
        case ArrayToString:
            return CValue::String(Join(self, CValue::Undefined()));
        case ArrayJoin:
            return CValue::String(Join(self, arguments[0]));
        case ArrayReverse:
            Reverse(self);
            return CValue::Object(self);
        case ArraySort: {
            CArraySortable sortable(self, arguments[0]->GetObject());
            Core::Sort(sortable);
            return CValue::Object(self);
        }
        default:
            return CValue::Undefined();
    }
}

CArrayConstructor::CArrayConstructor(CGlobalObject* global) : CObject(global, global->GetFunctionPrototype()) {}

TRefPtr<CObject> CArrayConstructor::Construct(const CValueList& arguments) {
    TRefPtr<CArrayObject> array = new CArrayObject(GetGlobal());
    if (arguments.GetSize() == 1 && arguments[0]->GetType() == TypeNumber) {
        CNumber number = arguments[0]->GetNumber();
        uint32_t length = number.ToUint32().GetUint32();
        if (number.IsNaN() || number.GetDouble() != static_cast<double>(length)) {
            throw new CRuntimeError(CRuntimeError::InvalidNewArrayLength, arguments[0]);
        }
        array->SetLength(length);
    } else {
        for (int i = 0; i < arguments.GetSize(); ++i) array->Append(arguments[i]);
    }
    return array.Get();
}

TRefPtr<CValue> CArrayConstructor::Call(CObject*, const CValueList& arguments) {
    return CValue::Object(Construct(arguments));
}

void InstallArray(CGlobalObject* global) {
    TRefPtr<CArrayPrototype> prototype = new CArrayPrototype(global);
    prototype->AddFunction(u"toString", ArrayToString, 0, DontEnum);
    prototype->AddFunction(u"join", ArrayJoin, 1, DontEnum);
    prototype->AddFunction(u"reverse", ArrayReverse, 0, DontEnum);
    prototype->AddFunction(u"sort", ArraySort, 1, DontEnum);
    TRefPtr<CObject> constructor = new CArrayConstructor(global);
    global->InstallConstructor(BuiltinArray, u"Array", constructor, prototype.Get(), 1);
}

}  // namespace EcmaScriptPrivate
