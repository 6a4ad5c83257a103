// The type conversions of the language and the reference operations, on counted values.
#pragma once
#include "ecmascript/Object.h"

namespace EcmaScript {

class CGlobalObject;

TRefPtr<CValue> ToPrimitive(CValue* value, int hint);
bool ToBoolean(CValue* value);
CNumber ToNumber(CValue* value);
DomString ToString(CValue* value);
// Wraps booleans, strings and numbers through their constructors on `global`.
TRefPtr<CObject> ToObject(CGlobalObject* global, CValue* value);
inline CNumber ToInteger(CValue* value) { return ToNumber(value).ToInteger(); }
inline CNumber ToInt32(CValue* value) { return ToNumber(value).ToInt32(); }
inline CNumber ToUint32(CValue* value) { return ToNumber(value).ToUint32(); }
inline CNumber ToUint16(CValue* value) { return ToNumber(value).ToUint16(); }

CObject* GetBase(CValue* value);
const CName& GetPropertyName(CValue* value);
TRefPtr<CValue> GetValue(CValue* value);
// A reference without base puts on `global`.
void PutValue(CGlobalObject* global, CValue* reference, CValue* value);

}  // namespace EcmaScript
