// Messages of the runtime errors.
#include "ecmascript/RuntimeError.h"

#include "ecmascript/Object.h"

namespace EcmaScript {

namespace {

const Core::SMessage kMessages[] = {
    {0, u"Object does not support [[DefaultValue]] method"},
    {1, u"Object does not support [[Construct]] method"},
    {2, u"Object does not support [[Call]] method"},
    {3, u"Object does not support [[Match]] method"},
    {4, u"GetBase: reference required"},
    {5, u"GetPropertyName: reference required"},
    {6, u"GetValue: invalid reference"},
    {7, u"PutValue: reference required"},
    {8, u"Cannot convert to primitive: illegal object default value"},
    {9, u"Cannot convert to object: illegal value type"},
    {10, u"Operand of 'new' is not an object"},
    {11, u"Operand of function call is not an object"},
    {12, u"Operand of 'Function.prototype.toString' is not a function"},
    {13, u"Invalid array length supplied for 'new Array'"},
    {14, u"Invalid array 'length' property value"},
    {15, u"String object required"},
    {16, u"Boolean object required"},
    {17, u"Number object required"},
    {18, u"Invalid radix supplied for 'Number.prototype.toString'"},
    {19, u"Date object required"},
    {20, u"RegExp object required"},
    {21, u"Invalid formal parameter list syntax"},
    {22, u"Invalid function body syntax"},
    {23, u"Eval code syntax error"},
    {24, u"Invalid RegExp flags"},
    {25, u"Too many nested function calls"},
    {26, u"Out of memory"},
    {-1, u"Unclassified runtime error"},
};

}  // namespace

CRuntimeError::CRuntimeError(int code, CValue* value, CObject* object)
    : m_nCode(code), m_pValue(value), m_pObject(object) {
    if (m_pValue) m_pValue->AddRef();
    if (m_pObject) m_pObject->AddRef();
}

CRuntimeError::~CRuntimeError() {
    if (m_pValue) m_pValue->Release();
    if (m_pObject) m_pObject->Release();
}

void CRuntimeError::GetMessage(DomString& text) const {
    text = u"ECMAScript runtime error: ";
    text += Core::FindMessageFormat(kMessages, m_nCode);
}

}  // namespace EcmaScript
