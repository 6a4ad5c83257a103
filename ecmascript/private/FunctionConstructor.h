// The Function constructor, which parses its arguments into a new function, and the Function
// prototype, the prototype of every function object.
#pragma once
#include "ecmascript/Object.h"

namespace EcmaScriptPrivate {

class CFunctionPrototype : public EcmaScript::CObject {
public:
    explicit CFunctionPrototype(EcmaScript::CGlobalObject* global);
    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject*, const EcmaScript::CValueList&) override {
        return EcmaScript::CValue::Undefined();
    }
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;
};

class CFunctionConstructor : public EcmaScript::CObject {
public:
    explicit CFunctionConstructor(EcmaScript::CGlobalObject* global);
    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CObject> Construct(const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject* thisObject, const EcmaScript::CValueList& arguments) override;
};

}  // namespace EcmaScriptPrivate
