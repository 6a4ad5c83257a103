// Conversions between the value types and the reference operations.
#include "ecmascript/Conversions.h"

#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"

namespace EcmaScript {

TRefPtr<CValue> ToPrimitive(CValue* value, int hint) {
    if (value->GetTypeCode() != TypeObject) return value;
    TRefPtr<CValue> result = value->GetObject()->DefaultValue(hint);
    int type = result->GetTypeCode();
    if (type == TypeObject || type == TypeReference) throw new CRuntimeError(CRuntimeError::IllegalDefaultValue, result);
    return result;
}

bool ToBoolean(CValue* value) {
    switch (value->GetTypeCode()) {
        case TypeBoolean:
            return value->GetBoolean();
        case TypeString:
            return !value->GetString().empty();
        case TypeNumber: {
            CNumber number = value->GetNumber();
            return !number.IsZero() && !number.IsNaN();
        }
        case TypeObject:
            return true;
        default:
            return false;
    }
}

CNumber ToNumber(CValue* value) {
    switch (value->GetTypeCode()) {
        case TypeNumber:
            return value->GetNumber();
        case TypeNull:
            return CNumber::FromInteger(0);
        case TypeBoolean:
            return CNumber::FromInteger(value->GetBoolean() ? 1 : 0);
        case TypeString: {
            CNumber number;
            return CNumber::FromStringText(value->GetString(), number) ? number : CNumber::NaN();
        }
        case TypeObject:
            return ToNumber(ToPrimitive(value, HintNumber));
        default:
            return CNumber::NaN();
    }
}

DomString ToString(CValue* value) {
    switch (value->GetTypeCode()) {
        case TypeString:
            return value->GetString();
        case TypeNumber:
            return value->GetNumber().ToString();
        case TypeUndefined:
            return u"undefined";
        case TypeNull:
            return u"null";
        case TypeBoolean:
            return value->GetBoolean() ? u"true" : u"false";
        case TypeObject:
            return ToString(ToPrimitive(value, HintString));
        default:
            return DomString();
    }
}

TRefPtr<CObject> ToObject(CGlobalObject* global, CValue* value) {
    int builtin = -1;
    switch (value->GetTypeCode()) {
        case TypeObject:
            return value->GetObject();
        case TypeBoolean:
            builtin = BuiltinBoolean;
            break;
        case TypeString:
            builtin = BuiltinString;
            break;
        case TypeNumber:
            builtin = BuiltinNumber;
            break;
        default:
            break;
    }
    CObject* constructor = builtin >= 0 && global ? global->GetConstructor(builtin) : nullptr;
    if (!constructor) throw new CRuntimeError(CRuntimeError::CannotConvertToObject, value);
    CValueList arguments;
    arguments.Add(value);
    return constructor->Construct(arguments);
}

CObject* GetBase(CValue* value) {
    const CReference* reference = value->GetReference();
    if (!reference) throw new CRuntimeError(CRuntimeError::GetBaseNeedsReference, value);
    return reference->pBase;
}

const CName& GetPropertyName(CValue* value) {
    const CReference* reference = value->GetReference();
    if (!reference) throw new CRuntimeError(CRuntimeError::GetPropertyNameNeedsReference, value);
    return reference->name;
}

TRefPtr<CValue> GetValue(CValue* value) {
    const CReference* reference = value->GetReference();
    if (!reference) return value;
    if (!reference->pBase) throw new CRuntimeError(CRuntimeError::InvalidReference, value);
    return reference->pBase->Get(reference->name);
}

void PutValue(CGlobalObject* global, CValue* reference, CValue* value) {
    const CReference* target = reference->GetReference();
    if (!target) throw new CRuntimeError(CRuntimeError::PutValueNeedsReference, reference);
    CObject* base = target->pBase ? target->pBase.Get() : global;
    base->Put(target->name, value);
}

}  // namespace EcmaScript
