// A function written in script: its parsed body, "length" and a "prototype" object.
#pragma once
#include "ecmascript/Object.h"
#include "ecmascript/Program.h"

namespace EcmaScriptPrivate {

class CFunctionObject : public EcmaScript::CObject {
public:
    CFunctionObject(EcmaScript::CGlobalObject* global, EcmaScript::CFunctionBody* body);

    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject* thisObject, const EcmaScript::CValueList& arguments) override;
    TRefPtr<EcmaScript::CObject> Construct(const EcmaScript::CValueList& arguments) override;

    EcmaScript::CFunctionBody* GetBody() const { return m_pBody; }

private:
    TRefPtr<EcmaScript::CFunctionBody> m_pBody;
};

}  // namespace EcmaScriptPrivate
