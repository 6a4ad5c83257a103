// Running programs: parse, hoist, execute; and eval, which runs in the caller's context.
#include "ecmascript/Interpreter.h"

#include "ecmascript/EcmaScriptException.h"
#include "ecmascript/ParseError.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/FunctionObject.h"
#include "ecmascript/private/Parser.h"

namespace EcmaScript {

namespace {

// Script calls nest at most this deep; deeper recursion fails with a runtime error rather
// than exhausting the stack.
const int kMaxCallDepth = 1000;

// Makes `context` the running one for the lifetime of the scope.
class CRunningContext {
public:
    CRunningContext(CInterpreter* interpreter, CContext* context)
        : m_pInterpreter(interpreter), m_pPrevious(interpreter->SwapCurrentContext(context)) {}
    ~CRunningContext() { m_pInterpreter->SwapCurrentContext(m_pPrevious); }
    CRunningContext(const CRunningContext&) = delete;
    CRunningContext& operator=(const CRunningContext&) = delete;

private:
    CInterpreter* m_pInterpreter;
    CContext* m_pPrevious;
};

}  // namespace

CInterpreter::CInterpreter() { m_pGlobal = new CGlobalObject(this); }

CInterpreter::~CInterpreter() { Shutdown(); }

void CInterpreter::Shutdown() {
    if (m_pGlobal) {
        TRefPtr<CGlobalObject> global = m_pGlobal;
        m_pGlobal = nullptr;
        global->Clear();
    }
    m_pErrorHandler = nullptr;
}

void CInterpreter::Hoist(CContext& context, const TArray<TRefPtr<CFunctionBody>>& functions,
                         const TArray<CName>& variables) {
    CObject* variableObject = context.GetVariableObject();
    CGlobalObject* global = context.GetGlobal();
    for (const TRefPtr<CFunctionBody>& function : functions) {
        TRefPtr<CObject> object = new EcmaScriptPrivate::CFunctionObject(global, function);
        variableObject->Define(function->m_name, CValue::Object(object), 0, true);
    }
    for (const CName& name : variables) variableObject->Define(name, CValue::Undefined(), 0, false);
}

TRefPtr<CValue> CInterpreter::Run() {
    TRefPtr<CProgram> program;
    {
        EcmaScriptPrivate::CParser parser;
        parser.SetErrorHandler(m_pErrorHandler);
        parser.SetProgramName(m_sProgramName);
        parser.SetFirstLine(m_nFirstLine);
        try {
            program = parser.ParseProgram(m_pStream);
        } catch (Core::IException* error) {
            delete error;  // the error limit: the errors went to the handler
            throw new CParseError(m_sProgramName);
        }
        if (parser.HasErrors()) throw new CParseError(m_sProgramName);
    }
    CContext context(m_pGlobal);
    CRunningContext running(this, &context);
    try {
        Hoist(context, program->m_aFunctions, program->m_aVariables);
        return EcmaScriptPrivate::ExecuteList(program->m_aElements, context).pValue;
    } catch (CEcmaScriptException* error) {
        if (error->GetProgramName().empty()) error->SetProgramName(m_sProgramName);
        throw;
    }
}

TRefPtr<CValue> CInterpreter::Eval(CValue* code) {
    if (code->GetType() != TypeString) return code;
    TRefPtr<CProgram> program;
    EcmaScriptPrivate::CParser parser;
    parser.SetErrorHandler(new EcmaScriptPrivate::CFirstErrorHandler);
    try {
        program = parser.ParseProgramText(code->GetString());
    } catch (Core::IException* error) {
        delete error;
        throw new CRuntimeError(CRuntimeError::EvalSyntaxError, code);
    }
    if (parser.HasErrors()) throw new CRuntimeError(CRuntimeError::EvalSyntaxError, code);
    EnterCall();
    struct SLeave {
        CInterpreter* interpreter;
        ~SLeave() { interpreter->LeaveCall(); }
    } leave{this};
    CContext globalContext(m_pGlobal);
    CContext context(m_pCurrentContext ? *m_pCurrentContext : globalContext);
    CRunningContext running(this, &context);
    Hoist(context, program->m_aFunctions, program->m_aVariables);
    EcmaScriptPrivate::ExecuteList(program->m_aElements, context);
    return CValue::Undefined();
}

void CInterpreter::EnterCall() {
    if (m_nCallDepth >= kMaxCallDepth) throw new CRuntimeError(CRuntimeError::CallDepthExceeded);
    ++m_nCallDepth;
}

}  // namespace EcmaScript
