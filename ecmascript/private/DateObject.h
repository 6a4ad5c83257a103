// Date objects, the Date constructor with parse and UTC, and the Date prototype with its
// getters, setters and text forms. Text has one pattern, "dd/MM/yyyy HH:mm:ss", both ways.
#pragma once
#include "ecmascript/Object.h"

namespace EcmaScriptPrivate {

class CDateObject : public EcmaScript::CObject {
public:
    CDateObject(EcmaScript::CGlobalObject* global, EcmaScript::CObject* prototype, const EcmaScript::CNumber& value);
    const DomChar* GetClass() const override { return u"Date"; }
    EcmaScript::CValue* GetValue() override { return m_pValue; }
    void SetValue(EcmaScript::CValue* value) override { m_pValue = value; }

private:
    TRefPtr<EcmaScript::CValue> m_pValue;
};

class CDatePrototype : public CDateObject {
public:
    explicit CDatePrototype(EcmaScript::CGlobalObject* global);
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;

private:
    EcmaScript::CNumber GetField(int index, const EcmaScript::CNumber& t);
    EcmaScript::CNumber SetFields(int index, const EcmaScript::CNumber& t, const EcmaScript::CValueList& arguments);
};

class CDateConstructor : public EcmaScript::CObject {
public:
    explicit CDateConstructor(EcmaScript::CGlobalObject* global);
    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CObject> Construct(const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject* thisObject, const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;
};

}  // namespace EcmaScriptPrivate
