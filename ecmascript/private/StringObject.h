// String objects, the String constructor with fromCharCode, and the String prototype with the
// text methods and the regular-expression methods match, replace and search.
#pragma once
#include "ecmascript/Object.h"

namespace EcmaScriptPrivate {

class CStringObject : public EcmaScript::CObject {
public:
    CStringObject(EcmaScript::CGlobalObject* global, EcmaScript::CObject* prototype, DomString value);

    const DomChar* GetClass() const override { return u"String"; }
    EcmaScript::CValue* GetValue() override { return m_pValue; }
    void SetValue(EcmaScript::CValue* value) override;

private:
    TRefPtr<EcmaScript::CValue> m_pValue;
};

class CStringPrototype : public CStringObject {
public:
    explicit CStringPrototype(EcmaScript::CGlobalObject* global);
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;
};

class CStringConstructor : public EcmaScript::CObject {
public:
    explicit CStringConstructor(EcmaScript::CGlobalObject* global);
    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CObject> Construct(const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject* thisObject, const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;
};

// The regular-expression methods of the String prototype (StringMatching.cpp).
TRefPtr<EcmaScript::CValue> StringMatch(EcmaScript::CGlobalObject* global, const DomString& text,
                                        EcmaScript::CValue* pattern);
TRefPtr<EcmaScript::CValue> StringSearch(const DomString& text, EcmaScript::CValue* pattern);
TRefPtr<EcmaScript::CValue> StringReplace(const DomString& text, EcmaScript::CValue* search,
                                          EcmaScript::CValue* replacement);

}  // namespace EcmaScriptPrivate
