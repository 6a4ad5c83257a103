// The runtime errors of the script engine: a code from the table below and, for faults of an
// operand, the offending value and object, which the statement guard carries on.
#pragma once
#include "core/Exception.h"
#include "core/RefObject.h"

namespace EcmaScript {

class CValue;
class CObject;

class CRuntimeError : public Core::IException {
public:
    enum ECode {
        NoDefaultValue = 0,
        NoConstruct = 1,
        NoCall = 2,
        NoMatch = 3,
        GetBaseNeedsReference = 4,
        GetPropertyNameNeedsReference = 5,
        InvalidReference = 6,
        PutValueNeedsReference = 7,
        IllegalDefaultValue = 8,
        CannotConvertToObject = 9,
        NewOperandNotObject = 10,
        CallOperandNotObject = 11,
        ToStringOperandNotFunction = 12,
        InvalidNewArrayLength = 13,
        InvalidArrayLength = 14,
        StringObjectRequired = 15,
        BooleanObjectRequired = 16,
        NumberObjectRequired = 17,
        InvalidRadix = 18,
        DateObjectRequired = 19,
        RegExpObjectRequired = 20,
        InvalidParameterList = 21,
        InvalidFunctionBody = 22,
        EvalSyntaxError = 23,
        InvalidRegExpFlags = 24,
        CallDepthExceeded = 25,
        OutOfMemory = 26
    };

    CRuntimeError(int code, CValue* value = nullptr, CObject* object = nullptr);
    ~CRuntimeError() override;
    void GetMessage(DomString& text) const override;

    int GetCode() const { return m_nCode; }
    CValue* GetValue() const { return m_pValue; }
    CObject* GetObject() const { return m_pObject; }

private:
    int m_nCode;
    CValue* m_pValue;
    CObject* m_pObject;
};

}  // namespace EcmaScript
