// The public face of the script engine: owns the global object, parses and runs programs, and
// turns failures into CParseError and CEcmaScriptException.
#pragma once
#include <cstdint>

#include "core/RefObject.h"
#include "ecmascript/CharacterStream.h"
#include "ecmascript/Context.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/ParseErrorHandler.h"
#include "ecmascript/Program.h"

namespace EcmaScript {

class CInterpreter : public CRefObject {
public:
    CInterpreter();
    ~CInterpreter() override;

    void SetInputStream(ICharacterStream* stream) { m_pStream = stream; }
    void SetProgramName(const DomString& name) { m_sProgramName = name; }
    void SetFirstLine(int line) { m_nFirstLine = line; }
    void SetErrorHandler(IParseErrorHandler* handler) { m_pErrorHandler = handler; }

    // Parses the input stream and runs it in global code; gives the completion value or none.
    TRefPtr<CValue> Run();
    CGlobalObject* GetGlobalObject() const { return m_pGlobal; }
    // Clears the global object, which breaks the cycles among the standard objects.
    void Shutdown();

    // The machinery below serves the built-ins and the tree.
    // The context whose code is running; eval runs in a copy of it.
    CContext* GetCurrentContext() const { return m_pCurrentContext; }
    CContext* SwapCurrentContext(CContext* context) {
        CContext* previous = m_pCurrentContext;
        m_pCurrentContext = context;
        return previous;
    }
    // Runs `code` in the current context; the call of the built-in "eval" counts its nesting.
    TRefPtr<CValue> Eval(CValue* code);
    // Defines the functions and `var` names of code on the variable object of `context`.
    static void Hoist(CContext& context, const TArray<TRefPtr<CFunctionBody>>& functions,
                      const TArray<CName>& variables);
    // Counts nested calls; throws when scripts recurse too deeply.
    void EnterCall();
    void LeaveCall() { --m_nCallDepth; }

private:
    TRefPtr<CGlobalObject> m_pGlobal;
    TRefPtr<ICharacterStream> m_pStream;
    DomString m_sProgramName;
    int m_nFirstLine = 1;
    TRefPtr<IParseErrorHandler> m_pErrorHandler;
    CContext* m_pCurrentContext = nullptr;
    int m_nCallDepth = 0;
    uintptr_t m_nStackBase = 0;
    uintptr_t m_nStackBudget;
};

// One nested call counted for the lifetime of the scope: EnterCall, and LeaveCall at its end.
class CNestedCall {
public:
    explicit CNestedCall(CInterpreter* interpreter) : m_pInterpreter(interpreter) { m_pInterpreter->EnterCall(); }
    ~CNestedCall() { m_pInterpreter->LeaveCall(); }
    CNestedCall(const CNestedCall&) = delete;
    CNestedCall& operator=(const CNestedCall&) = delete;

private:
    CInterpreter* m_pInterpreter;
};

}  // namespace EcmaScript
