// Boolean objects, the Boolean constructor and the Boolean prototype.
#pragma once
#include "ecmascript/Object.h"

namespace EcmaScriptPrivate {

class CBooleanObject : public EcmaScript::CObject {
public:
    CBooleanObject(EcmaScript::CGlobalObject* global, EcmaScript::CObject* prototype, bool value);
    const DomChar* GetClass() const override { return u"Boolean"; }
    EcmaScript::CValue* GetValue() override { return m_pValue; }
    void SetValue(EcmaScript::CValue* value) override { m_pValue = value; }

private:
    TRefPtr<EcmaScript::CValue> m_pValue;
};

class CBooleanPrototype : public CBooleanObject {
public:
    explicit CBooleanPrototype(EcmaScript::CGlobalObject* global);
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;
};

class CBooleanConstructor : public EcmaScript::CObject {
public:
    explicit CBooleanConstructor(EcmaScript::CGlobalObject* global);
    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CObject> Construct(const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject* thisObject, const EcmaScript::CValueList& arguments) override;
};

}  // namespace EcmaScriptPrivate
