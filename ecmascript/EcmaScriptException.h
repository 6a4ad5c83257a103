// What leaves the execution of a script: the original exception, with the program, function
// and line at which it arose and the operand references of a runtime error.
#pragma once
#include "core/Exception.h"
#include "core/RefObject.h"
#include "ecmascript/Object.h"

namespace EcmaScript {

class CEcmaScriptException : public Core::IException {
public:
    // Takes ownership of `inner`.
    CEcmaScriptException(Core::IException* inner, int line, CValue* value = nullptr, CObject* object = nullptr)
        : m_pInner(inner), m_nLine(line), m_pValue(value), m_pObject(object) {}
    ~CEcmaScriptException() override { delete m_pInner; }
    CEcmaScriptException(const CEcmaScriptException&) = delete;
    CEcmaScriptException& operator=(const CEcmaScriptException&) = delete;

    void GetMessage(DomString& text) const override { m_pInner->GetMessage(text); }

    Core::IException* GetInner() const { return m_pInner; }
    const DomString& GetProgramName() const { return m_sProgramName; }
    const DomString& GetFunctionName() const { return m_sFunctionName; }
    int GetLine() const { return m_nLine; }
    CValue* GetValue() const { return m_pValue; }
    CObject* GetObject() const { return m_pObject; }
    void SetProgramName(const DomString& name) { m_sProgramName = name; }
    void SetFunctionName(const DomString& name) { m_sFunctionName = name; }

private:
    Core::IException* m_pInner;
    DomString m_sProgramName;
    DomString m_sFunctionName;
    int m_nLine;
    TRefPtr<CValue> m_pValue;
    TRefPtr<CObject> m_pObject;
};

}  // namespace EcmaScript
