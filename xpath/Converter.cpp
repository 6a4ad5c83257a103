// Conversions and comparisons. Comparisons involving a node-set compare with each node's
// string-value in turn and stop at the first pair that holds; string-values are gathered into
// reused buffers rather than made into values.
#include "xpath/Converter.h"

#include "xpath/Context.h"
#include "xpath/NodeSet.h"
#include "xpath/PathExpr.h"
#include "xpath/Value.h"

namespace Xpath {

namespace {

bool CompareNumbers(int op, CNumber a, CNumber b) {
    switch (op) {
        case CompareEqual: return a == b;
        case CompareNotEqual: return a != b;
        case CompareLess: return a < b;
        case CompareGreater: return a > b;
        case CompareLessOrEqual: return a <= b;
        default: return a >= b;
    }
}

bool CompareTexts(int op, DomStringView a, DomStringView b) {
    if (op == CompareEqual) return a == b;
    if (op == CompareNotEqual) return a != b;
    return CompareNumbers(op, CConverter::StringToNumber(a), CConverter::StringToNumber(b));
}

void StringValue(DomString& text, const Dom::CNode* node) {
    text.clear();
    node->AppendStringValue(text);
}

}  // namespace

CNumber CConverter::StringToNumber(DomStringView text) {
    CNumber number;
    return CNumber::Parse(text, number) ? number : CNumber::NaN;
}

bool CConverter::ToBoolean(CValue* value) const {
    switch (value->GetType()) {
        case TypeNodeSet: return RequireNodeSet(value)->GetLength() > 0;
        case TypeBoolean: return value->GetBoolean();
        case TypeNumber: {
            CNumber number = value->GetNumber();
            return !number.IsNaN() && number != CNumber(0);
        }
        case TypeString: return !static_cast<CStringValue*>(value)->GetText().empty();
        default: return m_pContext->GetExtensionTypes()->GetConverter()->ToBoolean(m_pContext, value);
    }
}

CNumber CConverter::ToNumber(CValue* value) const {
    switch (value->GetType()) {
        case TypeNodeSet: return StringToNumber(ToString(value));
        case TypeBoolean: return value->GetBoolean() ? 1 : 0;
        case TypeNumber: return value->GetNumber();
        case TypeString: return StringToNumber(static_cast<CStringValue*>(value)->GetText());
        default: {
            CNumber number;
            m_pContext->GetExtensionTypes()->GetConverter()->ToNumber(number, m_pContext, value);
            return number;
        }
    }
}

DomString CConverter::ToString(CValue* value) const {
    switch (value->GetType()) {
        case TypeNodeSet: {
            Dom::CNode* first = RequireNodeSet(value)->GetFirst();
            return first ? first->GetStringValue() : DomString();
        }
        case TypeBoolean: return BooleanToString(value->GetBoolean());
        case TypeNumber: return value->GetNumber().ToString();
        case TypeString: return static_cast<CStringValue*>(value)->GetText();
        default: {
            DomString text;
            m_pContext->GetExtensionTypes()->GetConverter()->ToString(text, m_pContext, value);
            return text;
        }
    }
}

bool CComparer::Compare(int op, CValue* a, CValue* b) const {
    int typeA = a->GetType(), typeB = b->GetType();
    if (typeA == TypeNodeSet) {
        if (typeB == TypeNodeSet) return CompareNodeSets(op, a, b);
        if (typeB > TypeString) return m_pContext->GetExtensionTypes()->GetComparer()->CompareLeft(op, a, b);
        return CompareNodeSetWith(op, a, b, true);
    }
    if (typeB == TypeNodeSet) {
        if (typeA > TypeString) return m_pContext->GetExtensionTypes()->GetComparer()->CompareRight(op, a, b);
        return CompareNodeSetWith(op, b, a, false);
    }
    return CompareScalars(op, a, b);
}

bool CComparer::CompareScalars(int op, CValue* a, CValue* b) const {
    CConverter converter(m_pContext);
    if (op == CompareEqual || op == CompareNotEqual) {
        bool equal;
        if (a->GetType() == TypeBoolean || b->GetType() == TypeBoolean)
            equal = converter.ToBoolean(a) == converter.ToBoolean(b);
        else if (a->GetType() == TypeNumber || b->GetType() == TypeNumber)
            return CompareNumbers(op, converter.ToNumber(a), converter.ToNumber(b));
        else
            equal = converter.ToString(a) == converter.ToString(b);
        return op == CompareEqual ? equal : !equal;
    }
    return CompareNumbers(op, converter.ToNumber(a), converter.ToNumber(b));
}

// Every node of `a` against every node of `b`, the inner set walked anew for each outer node.
bool CComparer::CompareNodeSets(int op, CValue* a, CValue* b) const {
    TRefPtr<CNodeIterator> outer;
    RequireNodeSet(a)->CreateIterator(outer);
    CNodeSet* inner = RequireNodeSet(b);
    DomString textA, textB;
    for (; outer->Current(); outer->Next()) {
        StringValue(textA, outer->Current());
        TRefPtr<CNodeIterator> iterator;
        inner->CreateIterator(iterator);
        for (; iterator->Current(); iterator->Next()) {
            StringValue(textB, iterator->Current());
            if (CompareTexts(op, textA, textB)) return true;
        }
    }
    return false;
}

// The node's string-value takes the node-set's side; the other value keeps its own.
bool CComparer::CompareNodeSetWith(int op, CValue* nodeSet, CValue* other, bool nodeSetLeft) const {
    CConverter converter(m_pContext);
    if (other->GetType() == TypeBoolean) {
        // Booleans compare as 1 and 0, for equality as for order.
        CNumber setTruth = converter.ToBoolean(nodeSet) ? 1 : 0, otherTruth = other->GetBoolean() ? 1 : 0;
        return nodeSetLeft ? CompareNumbers(op, setTruth, otherTruth) : CompareNumbers(op, otherTruth, setTruth);
    }
    bool numeric = other->GetType() == TypeNumber || (op != CompareEqual && op != CompareNotEqual);
    CNumber number = numeric ? converter.ToNumber(other) : CNumber();
    DomString text = numeric ? DomString() : converter.ToString(other);
    TRefPtr<CNodeIterator> iterator;
    RequireNodeSet(nodeSet)->CreateIterator(iterator);
    DomString nodeText;
    for (; iterator->Current(); iterator->Next()) {
        StringValue(nodeText, iterator->Current());
        bool holds;
        if (numeric) {
            CNumber nodeNumber = CConverter::StringToNumber(nodeText);
            holds = nodeSetLeft ? CompareNumbers(op, nodeNumber, number) : CompareNumbers(op, number, nodeNumber);
        } else {
            holds = CompareTexts(op, nodeText, text);
        }
        if (holds) return true;
    }
    return false;
}

}  // namespace Xpath
