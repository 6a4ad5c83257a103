// The Math object: its constants and its functions, each settling the special values (NaN, zeros,
// infinities, arguments out of the domain) before the C library computes the rest.
#pragma once
#include "ecmascript/Object.h"

namespace EcmaScriptPrivate {

class CMathObject : public EcmaScript::CObject {
public:
    explicit CMathObject(EcmaScript::CGlobalObject* global);
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;
};

}  // namespace EcmaScriptPrivate
