// Built-in functions dispatch to their owner's CallNative.
#include "ecmascript/private/NativeFunction.h"

#include "ecmascript/GlobalObject.h"
#include "ecmascript/Interpreter.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

CNativeFunction::CNativeFunction(CObject* owner, int index, int length)
    : CObject(owner->GetGlobal(), owner->GetGlobal() ? owner->GetGlobal()->GetFunctionPrototype() : nullptr),
      m_pOwner(owner),
      m_nIndex(index) {
    DefineValue(u"length", CValue::Integer(length), ReadOnly | DontEnum | DontDelete);
}

// Counted as a nested call: built-ins call each other without script code between them, as
// `join` on an array that holds itself does through `toString`.
TRefPtr<CValue> CNativeFunction::Call(CObject* thisObject, const CValueList& arguments) {
    CGlobalObject* global = GetGlobal();
    if (!global || !global->GetInterpreter()) return m_pOwner->CallNative(m_nIndex, thisObject, arguments);
    CNestedCall call(global->GetInterpreter());
    return m_pOwner->CallNative(m_nIndex, thisObject, arguments);
}

void CNativeFunction::ClearProperties() {
    CObject::ClearProperties();
    m_pOwner = nullptr;
}

}  // namespace EcmaScriptPrivate
