// The value classes and the shared immutable values.
#include "ecmascript/Value.h"

#include "ecmascript/Object.h"
#include "ecmascript/private/BlockCache.h"

namespace EcmaScript {

namespace {

// Shared values are counted once at creation, so that no release ever frees them.
template <class T, class... A>
CValue* MakeShared(A... arguments) {
    CValue* value = new T(arguments...);
    value->AddRef();
    return value;
}

}  // namespace

void* CNumberValue::operator new(size_t size) {
    return EcmaScriptPrivate::TBlockCache<sizeof(CNumberValue)>::Allocate(size);
}

void CNumberValue::operator delete(void* block, size_t size) {
    EcmaScriptPrivate::TBlockCache<sizeof(CNumberValue)>::Free(block, size);
}

const DomString& CValue::GetString() const {
    static const DomString empty;
    return empty;
}

CValue* CValue::Undefined() {
    static CValue* value = MakeShared<CUndefinedValue>();
    return value;
}

CValue* CValue::Null() {
    static CValue* value = MakeShared<CNullValue>();
    return value;
}

CValue* CValue::Boolean(bool flag) {
    static CValue* trueValue = MakeShared<CBooleanValue>(true);
    static CValue* falseValue = MakeShared<CBooleanValue>(false);
    return flag ? trueValue : falseValue;
}

// The first use of a small integer makes its shared value.
TRefPtr<CValue> CValue::MakeNumber(const CNumber& number) {
    if (number.IsInteger()) {
        uint32_t slot = static_cast<uint32_t>(number.GetInteger() - kSmallestCached);
        if (slot < kCachedCount) return s_apSmallIntegers[slot] = MakeShared<CNumberValue>(number);
    }
    return new CNumberValue(number);
}

TRefPtr<CValue> CValue::String(DomString text) { return new CStringValue(std::move(text)); }

TRefPtr<CValue> CValue::Object(CObject* object) { return new CObjectValue(object); }

CObjectValue::CObjectValue(CObject* object) : CValue(TypeObject), m_pObject(object) { m_pObject->AddRef(); }

CObjectValue::~CObjectValue() { m_pObject->Release(); }

CReferenceValue::CReferenceValue(CObject* base, CName name)
    : CValue(TypeReference), m_reference{base, std::move(name)} {}

CReferenceValue::~CReferenceValue() = default;

}  // namespace EcmaScript
