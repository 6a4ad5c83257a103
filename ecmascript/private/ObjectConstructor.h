// The Object constructor and the Object prototype with "toString" and "valueOf".
#pragma once
#include "ecmascript/Object.h"

namespace EcmaScriptPrivate {

class CObjectPrototype : public EcmaScript::CObject {
public:
    explicit CObjectPrototype(EcmaScript::CGlobalObject* global) : CObject(global, nullptr) {}
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;
};

class CObjectConstructor : public EcmaScript::CObject {
public:
    explicit CObjectConstructor(EcmaScript::CGlobalObject* global);
    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CObject> Construct(const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject* thisObject, const EcmaScript::CValueList& arguments) override;
};

}  // namespace EcmaScriptPrivate
