// The variable object of a function call, and the arguments object whose slots stay tied to
// the parameters. The arguments object is made only when the name "arguments" is first
// looked at, which no script can tell apart from making it at the call.
#pragma once
#include "ecmascript/Object.h"
#include "ecmascript/Program.h"

namespace EcmaScriptPrivate {

class CArgumentsObject;

class CActivationObject : public EcmaScript::CObject {
public:
    CActivationObject(EcmaScript::CGlobalObject* global, EcmaScript::CObject* callee,
                      EcmaScript::CFunctionBody* body, const EcmaScript::CValueList& arguments);
    ~CActivationObject() override;
    static void* operator new(size_t size);
    static void operator delete(void* block, size_t size);

    // Gives each parameter the argument of its position; of two parameters of one name the
    // last wins. The first few entries live inside this object.
    void DefineParameters(const EcmaScript::CValueList& arguments);

    TRefPtr<EcmaScript::CValue> Get(const CName& name) override;
    void Put(const CName& name, EcmaScript::CValue* value) override;
    bool CanPut(const CName& name) override;
    bool HasProperty(const CName& name) override;
    bool Delete(const CName& name) override;
    void Define(const CName& name, EcmaScript::CValue* value, uint32_t attributes, bool replace) override;
    EcmaScript::SPropertyEntry* FindOwn(const CName& name) override;

    // Ends the call: the arguments object keeps the values its slots had and loses its tie to
    // this object, which no script can reach any more.
    void Detach();

private:
    void MakeArgumentsIfNamed(const CName& name);

    EcmaScript::CObject* m_pCallee;
    EcmaScript::CFunctionBody* m_pBody;
    const EcmaScript::CValueList* m_pArguments;
    TRefPtr<CArgumentsObject> m_pArgumentsObject;
    static const int kInlineEntries = 4;
    EcmaScript::SPropertyEntry m_aEntries[kInlineEntries];
};

class CArgumentsObject : public EcmaScript::CObject {
public:
    CArgumentsObject(EcmaScript::CGlobalObject* global, EcmaScript::CObject* activation, EcmaScript::CObject* callee,
                     EcmaScript::CFunctionBody* body, const EcmaScript::CValueList& arguments);

    TRefPtr<EcmaScript::CValue> Get(const CName& name) override;
    void Put(const CName& name, EcmaScript::CValue* value) override;
    bool CanPut(const CName& name) override;
    bool HasProperty(const CName& name) override;
    bool Delete(const CName& name) override;
    void Detach();

private:
    struct SSlot {
        const CName* pParameter;  // none for an argument beyond the parameters
        TRefPtr<EcmaScript::CValue> pValue;
        bool bDeleted = false;
    };
    // The slot a name refers to: "0", or 1 to 4 digits without a leading zero, below the count.
    SSlot* FindSlot(const CName& name);

    EcmaScript::CObject* m_pActivation;  // not counted: the activation owns this object
    TRefPtr<EcmaScript::CFunctionBody> m_pBody;
    TArray<SSlot> m_aSlots;
};

}  // namespace EcmaScriptPrivate
