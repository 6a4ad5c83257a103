// Running programs: parse, hoist, execute; and eval, which runs in the caller's context.
#include "ecmascript/Interpreter.h"

#include <sys/resource.h>

#include "ecmascript/EcmaScriptException.h"
#include "ecmascript/ParseError.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/FunctionObject.h"
#include "ecmascript/private/Parser.h"

namespace EcmaScript {

namespace {

// Script calls nest at most this deep, and use at most this much of the stack from the
// outermost call on (a call can start deep inside a nested expression); deeper recursion
// fails with a runtime error rather than exhausting the stack.
const int kMaxCallDepth = 1000;

// Half of the process's stack limit, at most 4 MB. Linux gives the main thread a stack of
// RLIMIT_STACK bytes; this is the only place that asks the platform about it.
uintptr_t StackBudget() {
    static uintptr_t budget = [] {
        uintptr_t limit = 4u << 20;
        struct rlimit stack;
        if (getrlimit(RLIMIT_STACK, &stack) == 0 && stack.rlim_cur != RLIM_INFINITY && stack.rlim_cur / 2 < limit) {
            limit = static_cast<uintptr_t>(stack.rlim_cur / 2);
        }
        return limit;
    }();
    return budget;
}

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

CInterpreter::CInterpreter() : m_nStackBudget(StackBudget()) { m_pGlobal = new CGlobalObject(this); }

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
    if (!m_pGlobal) return nullptr;  // shut down
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
    if (code->GetType() != TypeString || !m_pGlobal) return code;
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
    CContext globalContext(m_pGlobal);
    CContext context(m_pCurrentContext ? *m_pCurrentContext : globalContext);
    CRunningContext running(this, &context);
    Hoist(context, program->m_aFunctions, program->m_aVariables);
    EcmaScriptPrivate::ExecuteList(program->m_aElements, context);
    return CValue::Undefined();
}

void CInterpreter::EnterCall() {
    char probe = 0;
    uintptr_t here = reinterpret_cast<uintptr_t>(&probe);
    if (m_nCallDepth == 0) m_nStackBase = here;
    uintptr_t used = m_nStackBase > here ? m_nStackBase - here : here - m_nStackBase;
    if (m_nCallDepth >= kMaxCallDepth || used > m_nStackBudget) throw new CRuntimeError(CRuntimeError::CallDepthExceeded);
    ++m_nCallDepth;
}

}  // namespace EcmaScript
