// The script's RegExp objects over a compiled CRegExp, the RegExp constructor and the prototype
// with exec, test and toString. "lastIndex" belongs to each object, also when two objects share
// one compiled pattern.
#pragma once
#include "ecmascript/Object.h"
#include "regexp/RegExp.h"

namespace EcmaScriptPrivate {

class CRegExpObject : public EcmaScript::CObject {
public:
    CRegExpObject(EcmaScript::CGlobalObject* global, EcmaScript::CRegExp* regexp);

    const DomChar* GetClass() const override { return u"RegExp"; }
    TRefPtr<EcmaScript::CValue> Match(const DomString& text, int index) override;
    TRefPtr<EcmaScript::CValue> GetNative(int index) override;
    void PutNative(int index, EcmaScript::CValue* value) override;

    EcmaScript::CRegExp* GetRegExp() const { return m_pRegExp; }

    // The RegExp object behind a value, or null.
    static CRegExpObject* From(EcmaScript::CValue* value);

private:
    TRefPtr<EcmaScript::CRegExp> m_pRegExp;
    EcmaScript::CNumber m_nLastIndex;
};

class CRegExpPrototype : public EcmaScript::CObject {
public:
    explicit CRegExpPrototype(EcmaScript::CGlobalObject* global);
    TRefPtr<EcmaScript::CValue> CallNative(int index, EcmaScript::CObject* thisObject,
                                           const EcmaScript::CValueList& arguments) override;

private:
    TRefPtr<EcmaScript::CValue> Execute(CRegExpObject* self, EcmaScript::CValue* argument, bool buildArray);
};

class CRegExpConstructor : public EcmaScript::CObject {
public:
    explicit CRegExpConstructor(EcmaScript::CGlobalObject* global);
    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CObject> Construct(const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject* thisObject, const EcmaScript::CValueList& arguments) override;
};

// The array that exec and a non-global match give: the match and each capture as text (unset
// ones undefined), with "index" and "input".
TRefPtr<EcmaScript::CObject> MakeMatchArray(EcmaScript::CGlobalObject* global, const DomString& text,
                                            const EcmaScript::CMatchResult& result);

}  // namespace EcmaScriptPrivate
