// Parsed code: a program with its source elements and hoisting lists, and the body of a
// function, which also renders itself back to source text.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "ecmascript/Name.h"

namespace EcmaScriptPrivate {
class CStatement;
}

namespace EcmaScript {

class CFunctionBody : public CRefObject {
public:
    CFunctionBody();
    ~CFunctionBody() override;

    CName m_name;
    TArray<CName> m_aParameters;
    TArray<CName> m_aVariables;
    TArray<TRefPtr<EcmaScriptPrivate::CStatement>> m_aStatements;
    DomString m_sProgramName;
    int m_nLine = -1;

    // "function name(a, b) { statements }"
    DomString WriteSource() const;
};

class CProgram : public CRefObject {
public:
    CProgram();
    ~CProgram() override;

    DomString m_sName;
    TArray<CName> m_aVariables;
    TArray<TRefPtr<CFunctionBody>> m_aFunctions;
    TArray<TRefPtr<EcmaScriptPrivate::CStatement>> m_aElements;
};

}  // namespace EcmaScript
