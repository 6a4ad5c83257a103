// Evaluation and source text of the expression nodes, and the operators of the language.
#include "ecmascript/private/Expression.h"

#include "ecmascript/Conversions.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/Interpreter.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/ActivationObject.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

// Concatenation refuses texts beyond 2^26 units (128 MB) with a runtime error, before the
// memory of the process runs out.
const size_t kMaxStringLength = size_t(1) << 26;

TRefPtr<CValue> NumberValue(const CNumber& number) { return CValue::Number(number); }

TRefPtr<CValue> ReadReference(CObject* base, const CName& name) {
    if (!base) throw new CRuntimeError(CRuntimeError::InvalidReference, new CReferenceValue(nullptr, name));
    if (base->IsVariableScope()) {
        if (SPropertyEntry* entry = base->FindOwn(name)) {
            return entry->nNativeIndex >= 0 ? base->GetNative(entry->nNativeIndex) : entry->pValue;
        }
    }
    return base->Get(name);
}

// Evaluates a target: a reference when the node gives one, otherwise its plain value (which
// assignment then refuses with "PutValue: reference required"). An identifier found in a
// variable scope keeps its entry, which stays valid while no entry of that table is removed;
// its name stays in the node.
struct STarget {
    CReference reference;
    const CName* pName = &reference.name;
    TRefPtr<CValue> pPlain;
    SPropertyEntry* pEntry = nullptr;
    uint32_t nRemovals = 0;
    bool bIsReference;

    STarget(CExpression* target, CContext& context) {
        if (CIdentifierExpression* identifier = target->AsIdentifier()) {
            identifier->Resolve(context, reference.pBase, pEntry);
            pName = &identifier->GetName();
            if (pEntry) nRemovals = reference.pBase->GetOwnTable().GetRemovals();
            bIsReference = true;
            return;
        }
        bIsReference = target->EvaluateReference(context, reference);
        if (!bIsReference) pPlain = target->Evaluate(context);
    }
    SPropertyEntry* GetEntry() const {
        return pEntry && reference.pBase->GetOwnTable().GetRemovals() == nRemovals && pEntry->nNativeIndex < 0
                   ? pEntry
                   : nullptr;
    }
    TRefPtr<CValue> Read() const {
        if (SPropertyEntry* entry = GetEntry()) return entry->pValue;
        return bIsReference ? ReadReference(reference.pBase, *pName) : GetValue(pPlain);
    }
    void Write(CContext& context, CValue* value) const {
        if (SPropertyEntry* entry = GetEntry()) {
            if (!(entry->nAttributes & ReadOnly)) entry->pValue = value;
        } else if (bIsReference) {
            context.AssignTo(reference.pBase, *pName, value);
        } else {
            PutValue(context.GetGlobal(), pPlain, value);
        }
    }
};

// The numbers of two number values, read without virtual calls; false if either is none.
bool ReadNumbers(CValue* left, CValue* right, CNumber& a, CNumber& b) {
    if (left->GetTypeCode() != TypeNumber || right->GetTypeCode() != TypeNumber) return false;
    a = static_cast<CNumberValue*>(left)->GetNumberDirect();
    b = static_cast<CNumberValue*>(right)->GetNumberDirect();
    return true;
}

// The relational comparison: true, false, or undefined (any NaN), given as 1, 0 and -1.
int CompareValues(CValue* left, CValue* right) {
    CNumber x, y;
    if (!ReadNumbers(left, right, x, y)) {
        TRefPtr<CValue> a = ToPrimitive(left, HintNumber);
        TRefPtr<CValue> b = ToPrimitive(right, HintNumber);
        if (a->GetType() == TypeString && b->GetType() == TypeString) return a->GetString() < b->GetString() ? 1 : 0;
        x = ToNumber(a);
        y = ToNumber(b);
    }
    if (x.IsNaN() || y.IsNaN()) return -1;
    return x.Less(y) ? 1 : 0;
}

bool EqualValues(CValue* x, CValue* y) {
    int tx = x->GetTypeCode(), ty = y->GetTypeCode();
    if (tx == ty) {
        switch (tx) {
            case TypeNumber: {
                CNumber a = x->GetNumber(), b = y->GetNumber();
                return !a.IsNaN() && !b.IsNaN() && a.Equal(b);
            }
            case TypeString:
                return x->GetString() == y->GetString();
            case TypeBoolean:
                return x->GetBoolean() == y->GetBoolean();
            case TypeObject:
                return x->GetObject()->IsSame(y->GetObject());
            default:
                return true;
        }
    }
    bool xVoid = tx == TypeUndefined || tx == TypeNull, yVoid = ty == TypeUndefined || ty == TypeNull;
    if (xVoid || yVoid) return xVoid && yVoid;
    if (tx == TypeNumber && ty == TypeString) return EqualValues(x, NumberValue(ToNumber(y)));
    if (tx == TypeString && ty == TypeNumber) return EqualValues(NumberValue(ToNumber(x)), y);
    if (tx == TypeBoolean) return EqualValues(NumberValue(ToNumber(x)), y);
    if (ty == TypeBoolean) return EqualValues(x, NumberValue(ToNumber(y)));
    if ((tx == TypeString || tx == TypeNumber) && ty == TypeObject) return EqualValues(x, ToPrimitive(y, HintNone));
    if (tx == TypeObject && (ty == TypeString || ty == TypeNumber)) return EqualValues(ToPrimitive(x, HintNone), y);
    return false;
}

TRefPtr<CValue> AddValues(CValue* left, CValue* right) {
    CNumber x, y;
    if (ReadNumbers(left, right, x, y)) return NumberValue(x.Add(y));
    TRefPtr<CValue> a = ToPrimitive(left, HintNone);
    TRefPtr<CValue> b = ToPrimitive(right, HintNone);
    if (a->GetType() == TypeString || b->GetType() == TypeString) {
        DomString text = ToString(a);
        DomString right = b->GetType() == TypeString ? b->GetString() : ToString(b);
        if (text.size() + right.size() > kMaxStringLength) throw new CRuntimeError(CRuntimeError::OutOfMemory);
        text += right;
        return CValue::String(std::move(text));
    }
    return NumberValue(ToNumber(a).Add(ToNumber(b)));
}

template <CNumber (CNumber::*Operation)(const CNumber&) const>
TRefPtr<CValue> ApplyNumbers(CValue* left, CValue* right) {
    CNumber a, b;
    if (!ReadNumbers(left, right, a, b)) {
        a = ToNumber(left);
        b = ToNumber(right);
    }
    return NumberValue((a.*Operation)(b));
}

void WriteQuoted(DomString& text, const DomString& value) {
    text += u'"';
    for (DomChar unit : value) {
        if (unit == u'"' || unit == u'\\') {
            text += u'\\';
            text += unit;
        } else if (unit == 10) {
            text += u"\\n";
        } else if (unit == 13) {
            text += u"\\r";
        } else {
            text += unit;
        }
    }
    text += u'"';
}

const DomChar* const kCompoundSources[] = {u" *= ", u" /= ", u" %= ", u" += ", u" -= ", u" <<= ",
                                           u" >>= ", u" >>>= ", u" &= ", u" ^= ", u" |= "};

TRefPtr<CValue> ApplyCompound(int op, CValue* left, CValue* right) {
    switch (op) {
        case CCompoundAssignExpression::Multiply: return SMultiply::Apply(left, right);
        case CCompoundAssignExpression::Divide: return SDivide::Apply(left, right);
        case CCompoundAssignExpression::Modulo: return SModulo::Apply(left, right);
        case CCompoundAssignExpression::Add: return SAdd::Apply(left, right);
        case CCompoundAssignExpression::Subtract: return SSubtract::Apply(left, right);
        case CCompoundAssignExpression::ShiftLeft: return SShiftLeft::Apply(left, right);
        case CCompoundAssignExpression::ShiftRight: return SShiftRight::Apply(left, right);
        case CCompoundAssignExpression::ShiftRightUnsigned: return SShiftRightUnsigned::Apply(left, right);
        case CCompoundAssignExpression::BitAnd: return SBitAnd::Apply(left, right);
        case CCompoundAssignExpression::BitXor: return SBitXor::Apply(left, right);
        default: return SBitOr::Apply(left, right);
    }
}

// ++ and -- in both positions: the target is read, stepped and written back.
TRefPtr<CValue> Step(CExpression* operand, CContext& context, int delta, bool prefix) {
    STarget target(operand, context);
    TRefPtr<CValue> oldValue = target.Read();
    CNumber old = ToNumber(oldValue);
    TRefPtr<CValue> stepped = NumberValue(old.Add(CNumber::FromInteger(delta)));
    target.Write(context, stepped);
    if (prefix) return stepped;
    return oldValue->GetType() == TypeNumber ? oldValue : NumberValue(old);
}

}  // namespace

TRefPtr<CValue> SBitOr::Apply(CValue* l, CValue* r) { return ApplyNumbers<&CNumber::BitOr>(l, r); }
TRefPtr<CValue> SBitXor::Apply(CValue* l, CValue* r) { return ApplyNumbers<&CNumber::BitXor>(l, r); }
TRefPtr<CValue> SBitAnd::Apply(CValue* l, CValue* r) { return ApplyNumbers<&CNumber::BitAnd>(l, r); }
bool SEqual::Test(CValue* l, CValue* r) { return EqualValues(l, r); }
bool SNotEqual::Test(CValue* l, CValue* r) { return !EqualValues(l, r); }
bool SLess::Test(CValue* l, CValue* r) { return CompareValues(l, r) == 1; }
bool SGreater::Test(CValue* l, CValue* r) { return CompareValues(r, l) == 1; }
bool SLessEqual::Test(CValue* l, CValue* r) { return CompareValues(r, l) == 0; }
bool SGreaterEqual::Test(CValue* l, CValue* r) { return CompareValues(l, r) == 0; }
TRefPtr<CValue> SShiftLeft::Apply(CValue* l, CValue* r) { return ApplyNumbers<&CNumber::ShiftLeft>(l, r); }
TRefPtr<CValue> SShiftRight::Apply(CValue* l, CValue* r) { return ApplyNumbers<&CNumber::ShiftRight>(l, r); }
TRefPtr<CValue> SShiftRightUnsigned::Apply(CValue* l, CValue* r) {
    return ApplyNumbers<&CNumber::ShiftRightUnsigned>(l, r);
}
TRefPtr<CValue> SAdd::Apply(CValue* l, CValue* r) { return AddValues(l, r); }
TRefPtr<CValue> SSubtract::Apply(CValue* l, CValue* r) { return ApplyNumbers<&CNumber::Subtract>(l, r); }
TRefPtr<CValue> SMultiply::Apply(CValue* l, CValue* r) { return ApplyNumbers<&CNumber::Multiply>(l, r); }
TRefPtr<CValue> SDivide::Apply(CValue* l, CValue* r) { return ApplyNumbers<&CNumber::Divide>(l, r); }
TRefPtr<CValue> SModulo::Apply(CValue* l, CValue* r) { return ApplyNumbers<&CNumber::Modulo>(l, r); }

TRefPtr<CValue> CExpression::EvaluateValue(CContext& context) { return GetValue(Evaluate(context)); }

bool CExpression::EvaluateReference(CContext&, CReference&) { return false; }

bool CExpression::EvaluateCondition(CContext& context) { return ToBoolean(EvaluateValue(context)); }

TRefPtr<CObject> CExpression::EvaluateObject(CContext& context) {
    return ToObject(context.GetGlobal(), EvaluateValue(context));
}

void CExpression::SetDepthAbove(const CExpression* a, const CExpression* b, const CExpression* c) {
    int depth = 0;
    for (const CExpression* child : {a, b, c}) {
        if (child && child->m_nDepth > depth) depth = child->m_nDepth;
    }
    m_nDepth = depth + 1;
}

void CArgumentList::WriteSource(DomString& text) const {
    for (int i = 0; i < m_aArguments.GetSize(); ++i) {
        if (i) text += u", ";
        m_aArguments[i]->WriteSource(text);
    }
}

TRefPtr<CValue> CArgumentList::Evaluate(CContext& context) {
    TRefPtr<CListValue> list = new CListValue;
    EvaluateInto(context, list->GetValues());
    return list.Get();
}

void CArgumentList::EvaluateInto(CContext& context, CValueList& values) {
    values.Reserve(m_aArguments.GetSize());
    for (TExpressionPtr& argument : m_aArguments) values.Add(argument->EvaluateValue(context));
}

void CArgumentList::UpdateDepth() {
    for (TExpressionPtr& argument : m_aArguments) SetDepthAbove(argument, this);
}

CCommaExpression::CCommaExpression(CExpression* left, CExpression* right) : m_pLeft(left), m_pRight(right) {
    SetDepthAbove(left, right);
}
void CCommaExpression::WriteSource(DomString& text) const {
    m_pLeft->WriteSource(text);
    text += u", ";
    m_pRight->WriteSource(text);
}
TRefPtr<CValue> CCommaExpression::Evaluate(CContext& context) {
    m_pLeft->EvaluateValue(context);
    return m_pRight->EvaluateValue(context);
}

CAssignExpression::CAssignExpression(CExpression* target, CExpression* value) : m_pTarget(target), m_pValue(value) {
    SetDepthAbove(target, value);
}
void CAssignExpression::WriteSource(DomString& text) const {
    m_pTarget->WriteSource(text);
    text += u" = ";
    m_pValue->WriteSource(text);
}
TRefPtr<CValue> CAssignExpression::Evaluate(CContext& context) {
    STarget target(m_pTarget, context);
    TRefPtr<CValue> value = m_pValue->EvaluateValue(context);
    target.Write(context, value);
    return value;
}

CCompoundAssignExpression::CCompoundAssignExpression(int op, CExpression* target, CExpression* value)
    : m_nOperator(op), m_pTarget(target), m_pValue(value) {
    SetDepthAbove(target, value);
}
void CCompoundAssignExpression::WriteSource(DomString& text) const {
    m_pTarget->WriteSource(text);
    text += kCompoundSources[m_nOperator];
    m_pValue->WriteSource(text);
}
TRefPtr<CValue> CCompoundAssignExpression::Evaluate(CContext& context) {
    STarget target(m_pTarget, context);
    TRefPtr<CValue> old = target.Read();
    TRefPtr<CValue> operand = m_pValue->EvaluateValue(context);
    TRefPtr<CValue> result = ApplyCompound(m_nOperator, old, operand);
    target.Write(context, result);
    return result;
}

CConditionalExpression::CConditionalExpression(CExpression* condition, CExpression* thenValue, CExpression* elseValue)
    : m_pCondition(condition), m_pThen(thenValue), m_pElse(elseValue) {
    SetDepthAbove(condition, thenValue, elseValue);
}
void CConditionalExpression::WriteSource(DomString& text) const {
    m_pCondition->WriteSource(text);
    text += u" ? ";
    m_pThen->WriteSource(text);
    text += u" : ";
    m_pElse->WriteSource(text);
}
TRefPtr<CValue> CConditionalExpression::Evaluate(CContext& context) {
    bool condition = m_pCondition->EvaluateCondition(context);
    return (condition ? m_pThen : m_pElse)->EvaluateValue(context);
}

CLogicalOrExpression::CLogicalOrExpression(CExpression* left, CExpression* right) : m_pLeft(left), m_pRight(right) {
    SetDepthAbove(left, right);
}
void CLogicalOrExpression::WriteSource(DomString& text) const {
    m_pLeft->WriteSource(text);
    text += u" || ";
    m_pRight->WriteSource(text);
}
TRefPtr<CValue> CLogicalOrExpression::Evaluate(CContext& context) {
    TRefPtr<CValue> left = m_pLeft->EvaluateValue(context);
    return ToBoolean(left) ? left : m_pRight->EvaluateValue(context);
}

CLogicalAndExpression::CLogicalAndExpression(CExpression* left, CExpression* right) : m_pLeft(left), m_pRight(right) {
    SetDepthAbove(left, right);
}
void CLogicalAndExpression::WriteSource(DomString& text) const {
    m_pLeft->WriteSource(text);
    text += u" && ";
    m_pRight->WriteSource(text);
}
TRefPtr<CValue> CLogicalAndExpression::Evaluate(CContext& context) {
    TRefPtr<CValue> left = m_pLeft->EvaluateValue(context);
    return ToBoolean(left) ? m_pRight->EvaluateValue(context) : left;
}

void CDeleteExpression::WriteSource(DomString& text) const {
    text += u"delete ";
    m_pOperand->WriteSource(text);
}
TRefPtr<CValue> CDeleteExpression::Evaluate(CContext& context) {
    CReference reference;
    if (!m_pOperand->EvaluateReference(context, reference)) {
        throw new CRuntimeError(CRuntimeError::GetBaseNeedsReference, m_pOperand->Evaluate(context));
    }
    if (!reference.pBase) return CValue::Boolean(true);
    return CValue::Boolean(reference.pBase->Delete(reference.name));
}

void CVoidExpression::WriteSource(DomString& text) const {
    text += u"void ";
    m_pOperand->WriteSource(text);
}
TRefPtr<CValue> CVoidExpression::Evaluate(CContext& context) {
    m_pOperand->EvaluateValue(context);
    return CValue::Undefined();
}

void CTypeofExpression::WriteSource(DomString& text) const {
    text += u"typeof ";
    m_pOperand->WriteSource(text);
}
TRefPtr<CValue> CTypeofExpression::Evaluate(CContext& context) {
    CReference reference;
    TRefPtr<CValue> value;
    if (m_pOperand->EvaluateReference(context, reference)) {
        if (!reference.pBase) return CValue::String(u"undefined");
        value = reference.pBase->Get(reference.name);
    } else {
        value = m_pOperand->EvaluateValue(context);
    }
    switch (value->GetType()) {
        case TypeUndefined: return CValue::String(u"undefined");
        case TypeBoolean: return CValue::String(u"boolean");
        case TypeNumber: return CValue::String(u"number");
        case TypeString: return CValue::String(u"string");
        case TypeObject: return CValue::String(value->GetObject()->GetTypeofName());
        default: return CValue::String(u"object");
    }
}

void CPreIncrementExpression::WriteSource(DomString& text) const {
    text += u"++";
    m_pOperand->WriteSource(text);
}
TRefPtr<CValue> CPreIncrementExpression::Evaluate(CContext& context) { return Step(m_pOperand, context, 1, true); }

void CPreDecrementExpression::WriteSource(DomString& text) const {
    text += u"--";
    m_pOperand->WriteSource(text);
}
TRefPtr<CValue> CPreDecrementExpression::Evaluate(CContext& context) { return Step(m_pOperand, context, -1, true); }

void CPostIncrementExpression::WriteSource(DomString& text) const {
    m_pOperand->WriteSource(text);
    text += u"++";
}
TRefPtr<CValue> CPostIncrementExpression::Evaluate(CContext& context) { return Step(m_pOperand, context, 1, false); }

void CPostDecrementExpression::WriteSource(DomString& text) const {
    m_pOperand->WriteSource(text);
    text += u"--";
}
TRefPtr<CValue> CPostDecrementExpression::Evaluate(CContext& context) { return Step(m_pOperand, context, -1, false); }

void CUnaryPlusExpression::WriteSource(DomString& text) const {
    text += u"+";
    m_pOperand->WriteSource(text);
}
TRefPtr<CValue> CUnaryPlusExpression::Evaluate(CContext& context) {
    return NumberValue(ToNumber(m_pOperand->EvaluateValue(context)));
}

void CUnaryMinusExpression::WriteSource(DomString& text) const {
    text += u"-";
    m_pOperand->WriteSource(text);
}
TRefPtr<CValue> CUnaryMinusExpression::Evaluate(CContext& context) {
    return NumberValue(ToNumber(m_pOperand->EvaluateValue(context)).Negate());
}

void CBitNotExpression::WriteSource(DomString& text) const {
    text += u"~";
    m_pOperand->WriteSource(text);
}
TRefPtr<CValue> CBitNotExpression::Evaluate(CContext& context) {
    return NumberValue(ToNumber(m_pOperand->EvaluateValue(context)).BitNot());
}

void CLogicalNotExpression::WriteSource(DomString& text) const {
    text += u"!";
    m_pOperand->WriteSource(text);
}
TRefPtr<CValue> CLogicalNotExpression::Evaluate(CContext& context) {
    return CValue::Boolean(!ToBoolean(m_pOperand->EvaluateValue(context)));
}

CMemberExpression::CMemberExpression(CExpression* object, CExpression* index)
    : m_pObject(object), m_bOnThis(dynamic_cast<CThisExpression*>(object) != nullptr), m_pIndex(index) {
    SetDepthAbove(object, index);
}
CMemberExpression::CMemberExpression(CExpression* object, const CName& name)
    : m_pObject(object), m_bOnThis(dynamic_cast<CThisExpression*>(object) != nullptr), m_name(name) {
    SetDepthAbove(object);
}
void CMemberExpression::WriteSource(DomString& text) const {
    m_pObject->WriteSource(text);
    if (m_pIndex) {
        text += u"[";
        m_pIndex->WriteSource(text);
        text += u"]";
    } else {
        text += u".";
        text += m_name.GetText();
    }
}

void CMemberExpression::EvaluateName(CContext& context, CName& name) {
    if (!m_pIndex) {
        name = m_name;
        return;
    }
    TRefPtr<CValue> index = m_pIndex->EvaluateValue(context);
    if (index->GetType() == TypeNumber && index->GetNumber().IsInteger() && index->GetNumber().GetInteger() >= 0) {
        name = CName::FromIndex(index->GetNumber().GetInteger());
    } else {
        name = CName(ToString(index));
    }
}

bool CMemberExpression::EvaluateReference(CContext& context, CReference& reference) {
    TRefPtr<CValue> value = m_pObject->EvaluateValue(context);
    EvaluateName(context, reference.name);
    reference.pBase = ToObject(context.GetGlobal(), value);
    return true;
}

TRefPtr<CValue> CMemberExpression::Evaluate(CContext& context) {
    CReference reference;
    EvaluateReference(context, reference);
    return new CReferenceValue(reference.pBase, reference.name);
}

// The length of a string needs no wrapper object: it is a fixed property of every String.
TRefPtr<CValue> CMemberExpression::EvaluateValue(CContext& context) {
    static const CName lengthName(u"length");
    if (!m_pIndex) {
        TRefPtr<CObject> object;
        if (m_bOnThis) {
            object = context.GetThis();
        } else {
            TRefPtr<CValue> value = m_pObject->EvaluateValue(context);
            if (value->GetType() == TypeString && m_name == lengthName) {
                return CValue::Integer(static_cast<int32_t>(value->GetString().size()));
            }
            object = ToObject(context.GetGlobal(), value);
        }
        return object->Get(m_name);
    }
    CReference reference;
    EvaluateReference(context, reference);
    return reference.pBase->Get(reference.name);
}

CCallExpression::CCallExpression(CExpression* callee, CArgumentList* arguments)
    : m_pCallee(callee), m_pCalleeIdentifier(callee->AsIdentifier()), m_pArguments(arguments) {
    SetDepthAbove(callee, arguments);
}
void CCallExpression::WriteSource(DomString& text) const {
    m_pCallee->WriteSource(text);
    text += u"(";
    m_pArguments->WriteSource(text);
    text += u")";
}
TRefPtr<CValue> CCallExpression::Evaluate(CContext& context) {
    if (m_pCalleeIdentifier) {
        CObject* base;
        SPropertyEntry* entry = m_pCalleeIdentifier->FindFast(context, base);
        if (entry && entry->nNativeIndex < 0) return CallFound(context, base, entry);
    }
    STarget target(m_pCallee, context);
    CReference& reference = target.reference;
    bool isReference = target.bIsReference;
    TRefPtr<CValue> callee = isReference ? nullptr : GetValue(target.pPlain);
    CValueList arguments;
    m_pArguments->EvaluateInto(context, arguments);
    if (isReference) callee = target.Read();
    CObject* function = callee->GetObject();
    if (!function) throw new CRuntimeError(CRuntimeError::CallOperandNotObject, callee);
    CObject* thisObject = nullptr;
    if (isReference && reference.pBase != context.GetActivation()) thisObject = reference.pBase;
    return function->Call(thisObject, arguments);
}

// A call of an identifier whose entry the plain chain gave: the global or activation object,
// alive throughout. The entry still holds the callee after the arguments unless one of them
// removed an entry of that table.
TRefPtr<CValue> CCallExpression::CallFound(CContext& context, CObject* base, SPropertyEntry* entry) {
    uint32_t removals = base->GetOwnTable().GetRemovals();
    CValueList arguments;
    m_pArguments->EvaluateInto(context, arguments);
    TRefPtr<CValue> callee = base->GetOwnTable().GetRemovals() == removals
                                 ? entry->pValue
                                 : ReadReference(base, m_pCalleeIdentifier->GetName());
    CObject* function = callee->GetObject();
    if (!function) throw new CRuntimeError(CRuntimeError::CallOperandNotObject, callee);
    return function->Call(base == context.GetActivation() ? nullptr : base, arguments);
}

CNewExpression::CNewExpression(CExpression* constructor, CArgumentList* arguments)
    : m_pConstructor(constructor), m_pArguments(arguments) {
    SetDepthAbove(constructor, arguments);
}
void CNewExpression::WriteSource(DomString& text) const {
    text += u"new ";
    m_pConstructor->WriteSource(text);
    text += u"(";
    m_pArguments->WriteSource(text);
    text += u")";
}
TRefPtr<CValue> CNewExpression::Evaluate(CContext& context) {
    TRefPtr<CValue> constructor = m_pConstructor->EvaluateValue(context);
    CValueList arguments;
    m_pArguments->EvaluateInto(context, arguments);
    CObject* object = constructor->GetObject();
    if (!object) throw new CRuntimeError(CRuntimeError::NewOperandNotObject, constructor);
    return CValue::Object(object->Construct(arguments));
}

TRefPtr<CValue> CThisExpression::Evaluate(CContext& context) { return CValue::Object(context.GetThis()); }

TRefPtr<CValue> CIdentifierExpression::Evaluate(CContext& context) {
    CReference reference;
    context.Resolve(m_name, reference);
    return new CReferenceValue(reference.pBase, m_name);
}

TRefPtr<CValue> CIdentifierExpression::EvaluateValue(CContext& context) {
    CObject* base;
    if (SPropertyEntry* entry = FindFast(context, base)) {
        return entry->nNativeIndex >= 0 ? base->GetNative(entry->nNativeIndex) : entry->pValue;
    }
    return context.Lookup(m_name);
}

bool CIdentifierExpression::EvaluateReference(CContext& context, CReference& reference) {
    context.Resolve(m_name, reference);
    reference.name = m_name;
    return true;
}

void CIdentifierExpression::Resolve(CContext& context, TRefPtr<CObject>& base, SPropertyEntry*& entry) {
    CObject* found;
    entry = FindFast(context, found);
    if (entry) {
        base = found;
    } else {
        base = context.FindScope(m_name, &entry);
    }
}

// The entry of the name without a search of the chain, when the chain is the plain one of
// global code (the global object) or of this node's function (global and activation object);
// none when a search is needed. The name "arguments" always takes the search, which makes
// the arguments object.
SPropertyEntry* CIdentifierExpression::FindFast(CContext& context, CObject*& base) {
    if (!context.IsPlainFor(m_pOwner)) return nullptr;
    if (m_nFrameSlot < 0) return FindOutsideFrame(context, base);
    CActivationObject* frame = static_cast<CActivationObject*>(context.GetActivation());
    base = frame;
    return frame->GetFrameEntry(m_nFrameSlot);
}

// The plain chain of global code, or a name of function code that is not in the frame (or
// not looked up yet).
SPropertyEntry* CIdentifierExpression::FindOutsideFrame(CContext& context, CObject*& base) {
    if (CObject* activation = context.GetActivation()) {
        CActivationObject* frame = static_cast<CActivationObject*>(activation);
        if (m_nFrameSlot == -2) {
            static const CName argumentsName(u"arguments");
            m_nFrameSlot = m_name == argumentsName ? -3 : m_pOwner->FindFrameSlot(m_name);
        }
        if (m_nFrameSlot >= 0) {
            base = frame;
            return frame->GetFrameEntry(m_nFrameSlot);
        }
        if (m_nFrameSlot != -1 || !frame->HoldsOnlyFrame()) return nullptr;
    }
    base = context.GetGlobal();
    return FindGlobal(context.GetGlobal());
}

SPropertyEntry* CIdentifierExpression::FindGlobal(CGlobalObject* global) {
    const CPropertyTable& table = global->GetOwnTable();
    if (m_pGlobalEntry && m_pGlobalTable == &table && m_nGlobalRemovals == table.GetRemovals()) return m_pGlobalEntry;
    if (!global->IsVariableScope()) return nullptr;
    m_pGlobalEntry = global->FindOwn(m_name);
    m_pGlobalTable = &table;
    m_nGlobalRemovals = table.GetRemovals();
    return m_pGlobalEntry;
}

void CStringLiteral::WriteSource(DomString& text) const { WriteQuoted(text, m_pValue->GetString()); }

void CParenExpression::WriteSource(DomString& text) const {
    text += u"(";
    m_pExpression->WriteSource(text);
    text += u")";
}

}  // namespace EcmaScriptPrivate
