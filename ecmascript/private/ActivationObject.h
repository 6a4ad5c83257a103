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
    ~CActivationObject() override;
    static void* operator new(size_t size);
    static void operator delete(void* block, size_t size);

    // The variable object of a call, with the parameters, each holding the argument of its
    // position (of two parameters of one name the last wins), and the `var` names as undefined.
    static TRefPtr<CActivationObject> Make(EcmaScript::CGlobalObject* global, EcmaScript::CObject* callee,
                                           EcmaScript::CFunctionBody* body, const EcmaScript::CValueList& arguments);
    // Ends the use of `activation` by a call. No script can reach an activation object after its
    // call, so one that nothing else holds and that has only its own variables goes back to
    // the body for a later call.
    static void Recycle(TRefPtr<CActivationObject>& activation);

    EcmaScript::CFunctionBody* GetBody() const { return m_pBody; }
    // The entry of frame slot `slot` while it certainly holds that variable: no entry has left
    // the table since the call began. None otherwise.
    EcmaScript::SPropertyEntry* GetFrameEntry(int slot) {
        return slot < m_nInlineEntries && GetOwnTable().GetRemovals() == 0 ? &m_aEntries[slot] : nullptr;
    }
    // True while the table holds just the variables the call defined, so that a name outside
    // the frame is certainly not here.
    bool HoldsOnlyFrame() { return GetOwnTable().GetCount() == m_nDefinedCount && GetOwnTable().GetRemovals() == 0; }

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
    CActivationObject(EcmaScript::CGlobalObject* global, EcmaScript::CObject* callee,
                      EcmaScript::CFunctionBody* body, const EcmaScript::CValueList& arguments);
    // The first few entries live inside this object, in the order of the body's frame.
    void DefineVariables(const EcmaScript::CValueList& arguments);
    bool IsReusable();
    void MakeArgumentsIfNamed(const CName& name);

    EcmaScript::CObject* m_pCallee;
    EcmaScript::CFunctionBody* m_pBody;
    const EcmaScript::CValueList* m_pArguments;
    TRefPtr<CArgumentsObject> m_pArgumentsObject;
    int m_nInlineEntries = 0;
    int m_nDefinedCount = 0;
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
