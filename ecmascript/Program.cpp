// Parsed programs and function bodies.
#include "ecmascript/Program.h"

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

CProgram::CProgram() = default;
CProgram::~CProgram() = default;

}  // namespace EcmaScript
