// Object(value) and new Object(value) follow one rule: a new plain object for undefined and
// null, a wrapper for primitives, the object itself otherwise.
#include "ecmascript/private/ObjectConstructor.h"

#include "ecmascript/Conversions.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/private/Builtins.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

enum { ObjectToString = 0, ObjectValueOf = 1 };

}  // namespace

TRefPtr<CValue> CObjectPrototype::CallNative(int index, CObject* thisObject, const CValueList&) {
    CObject* self = thisObject ? thisObject : GetGlobal();
    if (index == ObjectToString) {
        DomString text = u"[object ";
        text += self->GetClass();
        text += u"]";
        return CValue::String(std::move(text));
    }
    return CValue::Object(self);
}

CObjectConstructor::CObjectConstructor(CGlobalObject* global) : CObject(global, global->GetFunctionPrototype()) {}

TRefPtr<CObject> CObjectConstructor::Construct(const CValueList& arguments) {
    CValue* value = arguments[0];
    int type = value->GetType();
    if (type == TypeUndefined || type == TypeNull) return new CObject(GetGlobal(), GetGlobal()->GetObjectPrototype());
    if (type == TypeObject) return value->GetObject()->GetObject();
    return ToObject(GetGlobal(), value);
}

TRefPtr<CValue> CObjectConstructor::Call(CObject*, const CValueList& arguments) {
    return CValue::Object(Construct(arguments));
}

TRefPtr<CObject> MakeObjectPrototype(CGlobalObject* global) { return new CObjectPrototype(global); }

void InstallObject(CGlobalObject* global) {
    CObject* prototype = global->GetObjectPrototype();
    prototype->AddFunction(u"toString", ObjectToString, 0, DontEnum);
    prototype->AddFunction(u"valueOf", ObjectValueOf, 0, DontEnum);
    TRefPtr<CObject> constructor = new CObjectConstructor(global);
    global->InstallConstructor(BuiltinObject, u"Object", constructor, prototype, 1);
}

}  // namespace EcmaScriptPrivate
