// Number objects, the Number constructor with its constants, and the Number prototype.
#pragma once
#include "ecmascript/Object.h"

namespace EcmaScriptPrivate {

class CNumberObject : public EcmaScript::CObject {
public:
    CNumberObject(EcmaScript::CGlobalObject* global, EcmaScript::CObject* prototype, const EcmaScript::CNumber& value);
    const DomChar* GetClass() const override { return u"Number"; }
    EcmaScript::CValue* GetValue() override { return m_pValue; }
    void SetValue(EcmaScript::CValue* value) override { m_pValue = value; }

private:
    TRefPtr<EcmaScript::CValue> m_pValue;
};

class CNumberPrototype : public CNumberObject {
public:
    explicit CNumberPrototype(EcmaScript::CGlobalObject* global);
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;
};

class CNumberConstructor : public EcmaScript::CObject {
public:
    explicit CNumberConstructor(EcmaScript::CGlobalObject* global);
    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CObject> Construct(const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject* thisObject, const EcmaScript::CValueList& arguments) override;
};

}  // namespace EcmaScriptPrivate
