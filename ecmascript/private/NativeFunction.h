// A built-in function: calling it runs CallNative with its index on the object that owns it.
#pragma once
#include "ecmascript/Object.h"

namespace EcmaScriptPrivate {

class CNativeFunction : public EcmaScript::CObject {
public:
    CNativeFunction(EcmaScript::CObject* owner, int index, int length);

    const DomChar* GetClass() const override { return u"Function"; }
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<EcmaScript::CValue> Call(EcmaScript::CObject* thisObject,
                                     const EcmaScript::CValueList& arguments) override;
    void ClearProperties() override;

private:
    TRefPtr<EcmaScript::CObject> m_pOwner;
    int m_nIndex;
};

}  // namespace EcmaScriptPrivate
