// Boolean objects: toString gives "true" or "false", valueOf the boolean.
#include "ecmascript/private/BooleanObject.h"

#include "ecmascript/Conversions.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/Builtins.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

enum { BooleanToString, BooleanValueOf };

}  // namespace

CBooleanObject::CBooleanObject(CGlobalObject* global, CObject* prototype, bool value)
    : CObject(global, prototype), m_pValue(CValue::Boolean(value)) {}

CBooleanPrototype::CBooleanPrototype(CGlobalObject* global) : CBooleanObject(global, global->GetObjectPrototype(), false) {}

TRefPtr<CValue> CBooleanPrototype::CallNative(int index, CObject* thisObject, const CValueList&) {
    CObject* self = thisObject ? thisObject : GetGlobal();
    if (DomStringView(self->GetClass()) != u"Boolean" || !self->GetValue())
        throw new CRuntimeError(CRuntimeError::BooleanObjectRequired, CValue::Object(self));
    if (index == BooleanValueOf) return self->GetValue();
    return CValue::String(self->GetValue()->GetBoolean() ? u"true" : u"false");
}

CBooleanConstructor::CBooleanConstructor(CGlobalObject* global) : CObject(global, global->GetFunctionPrototype()) {}

TRefPtr<CObject> CBooleanConstructor::Construct(const CValueList& arguments) {
    return new CBooleanObject(GetGlobal(), GetGlobal()->GetPrototypeObject(BuiltinBoolean), ToBoolean(arguments[0]));
}

TRefPtr<CValue> CBooleanConstructor::Call(CObject*, const CValueList& arguments) {
    return CValue::Boolean(ToBoolean(arguments[0]));
}

void InstallBoolean(CGlobalObject* global) {
    TRefPtr<CObject> prototype = new CBooleanPrototype(global);
    prototype->AddFunction(u"toString", BooleanToString, 0, DontEnum);
    prototype->AddFunction(u"valueOf", BooleanValueOf, 0, DontEnum);
    TRefPtr<CObject> constructor = new CBooleanConstructor(global);
    global->InstallConstructor(BuiltinBoolean, u"Boolean", constructor, prototype, 1);
}

}  // namespace EcmaScriptPrivate
