// Thrown by CInterpreter::Run when the program had parse errors; the errors themselves went to
// the parse error handler.
#pragma once
#include "core/Exception.h"

namespace EcmaScript {

class CParseError : public Core::IException {
public:
    explicit CParseError(DomString programName) : m_sProgramName(std::move(programName)) {}
    void GetMessage(DomString& text) const override {
        text = u"Error(s) encountered during program parsing";
        if (!m_sProgramName.empty()) text += u"\n    Program '" + m_sProgramName + u"'";
    }
    const DomString& GetProgramName() const { return m_sProgramName; }

private:
    DomString m_sProgramName;
};

}  // namespace EcmaScript
