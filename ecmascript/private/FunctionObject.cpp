// Calling and constructing with functions written in script.
#include "ecmascript/private/FunctionObject.h"

#include "ecmascript/EcmaScriptException.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/Interpreter.h"
#include "ecmascript/private/ActivationObject.h"
#include "ecmascript/private/Statement.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

// Restores the interpreter's state when a call ends, also by an exception.
class CCallScope {
public:
    CCallScope(CInterpreter* interpreter, CContext* context, CActivationObject* activation)
        : m_pInterpreter(interpreter), m_pActivation(activation) {
        m_pInterpreter->EnterCall();
        m_pPrevious = m_pInterpreter->SwapCurrentContext(context);
    }
    ~CCallScope() {
        m_pInterpreter->SwapCurrentContext(m_pPrevious);
        m_pInterpreter->LeaveCall();
        m_pActivation->Detach();
    }
    CCallScope(const CCallScope&) = delete;
    CCallScope& operator=(const CCallScope&) = delete;

private:
    CInterpreter* m_pInterpreter;
    CActivationObject* m_pActivation;
    CContext* m_pPrevious;
};

}  // namespace

CFunctionObject::CFunctionObject(CGlobalObject* global, CFunctionBody* body)
    : CObject(global, global->GetFunctionPrototype()), m_pBody(body) {
    DefineValue(u"length", CValue::Integer(body->m_aParameters.GetSize()), ReadOnly | DontEnum | DontDelete);
    TRefPtr<CObject> prototype = new CObject(global, global->GetObjectPrototype());
    prototype->DefineValue(u"constructor", CValue::Object(this), DontEnum);
    DefineValue(u"prototype", CValue::Object(prototype), DontDelete);
}

TRefPtr<CValue> CFunctionObject::Call(CObject* thisObject, const CValueList& arguments) {
    CGlobalObject* global = GetGlobal();
    struct SActivation {
        TRefPtr<CActivationObject> pObject;
        ~SActivation() { CActivationObject::Recycle(pObject); }
    } activation{CActivationObject::Make(global, this, m_pBody, arguments)};
    CContext context(global, activation.pObject, thisObject, m_pBody);
    CCallScope scope(global->GetInterpreter(), &context, activation.pObject);
    try {
        CCompletion completion = ExecuteList(m_pBody->m_aStatements, context);
        if (completion.nKind == CCompletion::Return) return std::move(completion.pValue);
        return CValue::Undefined();
    } catch (CEcmaScriptException* error) {
        if (error->GetFunctionName().empty()) error->SetFunctionName(m_pBody->m_name.GetText());
        if (error->GetProgramName().empty()) error->SetProgramName(m_pBody->m_sProgramName);
        throw;
    }
}

TRefPtr<CObject> CFunctionObject::Construct(const CValueList& arguments) {
    static const CName prototypeName(u"prototype");
    TRefPtr<CValue> prototypeValue = Get(prototypeName);
    CObject* prototype = prototypeValue->GetObject();
    if (!prototype) prototype = GetGlobal()->GetObjectPrototype();
    TRefPtr<CObject> object = new CObject(GetGlobal(), prototype);
    TRefPtr<CValue> result = Call(object, arguments);
    if (CObject* returned = result->GetObject()) return returned;
    return object;
}

}  // namespace EcmaScriptPrivate
