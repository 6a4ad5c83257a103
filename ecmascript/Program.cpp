// Parsed programs and function bodies.
#include "ecmascript/Program.h"

#include "ecmascript/private/ActivationObject.h"
#include "ecmascript/private/Statement.h"

namespace EcmaScript {

CFunctionBody::CFunctionBody() = default;
CFunctionBody::~CFunctionBody() = default;

DomString CFunctionBody::WriteSource() const {
    DomString text = u"function ";
    text += m_name.GetText();
    text += u"(";
    for (int i = 0; i < m_aParameters.GetSize(); ++i) {
        if (i) text += u", ";
        text += m_aParameters[i].GetText();
    }
    text += u") { ";
    EcmaScriptPrivate::WriteList(text, m_aStatements);
    text += u"}";
    return text;
}

int CFunctionBody::FindFrameSlot(const CName& name) {
    const TArray<SFrameSlot>& frame = GetFrame();
    for (int i = 0; i < frame.GetSize(); ++i) {
        if (frame[i].name == name) return i;
    }
    return -1;
}

// Made at the first call, when the parser has collected all `var` names.
void CFunctionBody::MakeFrame() {
    static const CName argumentsName(u"arguments");
    m_bFrameReady = true;  // FindFrameSlot below searches the frame made so far
    for (int i = 0; i < m_aParameters.GetSize(); ++i) {
        int slot = FindFrameSlot(m_aParameters[i]);
        if (slot >= 0) {
            m_aFrame[slot].nArgument = i;
        } else {
            m_aFrame.Add(SFrameSlot{m_aParameters[i], i});
        }
    }
    for (const CName& name : m_aVariables) {
        if (name == argumentsName) {
            m_bDeclaresArguments = true;
        } else if (FindFrameSlot(name) < 0) {
            m_aFrame.Add(SFrameSlot{name, -1});
        }
    }
}

CProgram::CProgram() = default;
CProgram::~CProgram() = default;

}  // namespace EcmaScript
