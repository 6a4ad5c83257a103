// Built-in functions dispatch to their owner's CallNative.
#include "ecmascript/private/NativeFunction.h"

#include "ecmascript/GlobalObject.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

CNativeFunction::CNativeFunction(CObject* owner, int index, int length)
    : CObject(owner->GetGlobal(), owner->GetGlobal() ? owner->GetGlobal()->GetFunctionPrototype() : nullptr),
      m_pOwner(owner),
      m_nIndex(index) {
    DefineValue(u"length", CValue::Integer(length), ReadOnly | DontEnum | DontDelete);
}

TRefPtr<CValue> CNativeFunction::Call(CObject* thisObject, const CValueList& arguments) {
    return m_pOwner->CallNative(m_nIndex, thisObject, arguments);
}

void CNativeFunction::ClearProperties() {
    CObject::ClearProperties();
    m_pOwner = nullptr;
}

}  // namespace EcmaScriptPrivate
