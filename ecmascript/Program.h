// Parsed code: a program with its source elements and hoisting lists, and the body of a
// function, which also renders itself back to source text.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "ecmascript/Name.h"

namespace EcmaScriptPrivate {
class CStatement;
class CActivationObject;
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
    // Activation objects of ended calls, ready for the next calls (CActivationObject::Make).
    TArray<TRefPtr<EcmaScriptPrivate::CActivationObject>> m_aSpareActivations;

    // "function name(a, b) { statements }"
    DomString WriteSource() const;

    // A variable of a call in the order in which the activation defines it: the distinct
    // parameters, then the `var` names that are no parameter. `nArgument` is the position of
    // the argument that gives the starting value (the last of repeated parameters), -1 for a
    // `var`. A `var arguments` is left out: it has to meet the arguments object.
    struct SFrameSlot {
        CName name;
        int nArgument;
    };
    const TArray<SFrameSlot>& GetFrame() {
        if (!m_bFrameReady) MakeFrame();
        return m_aFrame;
    }
    // The slot of a name in the frame, or -1.
    int FindFrameSlot(const CName& name);
    bool DeclaresArguments() {
        GetFrame();
        return m_bDeclaresArguments;
    }

private:
    void MakeFrame();

    TArray<SFrameSlot> m_aFrame;
    bool m_bFrameReady = false;
    bool m_bDeclaresArguments = false;
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
