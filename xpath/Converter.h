// Conversions between the four types and comparison of values, as XPath defines them.
// Extension types are handed to the context's IExtensionTypes.
#pragma once
#include "core/DomString.h"
#include "xpath/Number.h"

namespace Xpath {

class CContext;
class CValue;

class CConverter {
public:
    explicit CConverter(CContext* context) : m_pContext(context) {}
    // A node-set is true if it has a node; this counts the whole set.
    bool ToBoolean(CValue* value) const;
    CNumber ToNumber(CValue* value) const;
    DomString ToString(CValue* value) const;

    static CNumber StringToNumber(DomStringView text);
    static DomString BooleanToString(bool value) { return value ? u"true" : u"false"; }

private:
    CContext* m_pContext;
};

// Comparison operators of CComparer::Compare.
enum { CompareEqual = 0, CompareNotEqual = 1, CompareLess = 2, CompareGreater = 3, CompareLessOrEqual = 4,
       CompareGreaterOrEqual = 5 };

class CComparer {
public:
    explicit CComparer(CContext* context) : m_pContext(context) {}
    bool Compare(int op, CValue* a, CValue* b) const;

private:
    bool CompareNodeSets(int op, CValue* a, CValue* b) const;
    // A node-set on one side and a value of another type on the other.
    bool CompareNodeSetWith(int op, CValue* nodeSet, CValue* other, bool nodeSetLeft) const;
    bool CompareScalars(int op, CValue* a, CValue* b) const;

    CContext* m_pContext;
};

}  // namespace Xpath
