// Evaluation of the operator and primary expressions. Operands are evaluated left to right;
// `or` and `and` evaluate their right side only when needed.
#include "xpath/Expression.h"

#include <memory>

#include "xpath/Context.h"
#include "xpath/Converter.h"
#include "xpath/Value.h"
#include "xpath/XpathException.h"

namespace Xpath {

namespace {

CNumber EvaluateNumber(const CExpression* expression, CContext* context) {
    TRefPtr<CValue> value;
    expression->Evaluate(value, context);
    return CConverter(context).ToNumber(value);
}

bool EvaluateBoolean(const CExpression* expression, CContext* context) {
    TRefPtr<CValue> value;
    expression->Evaluate(value, context);
    return CConverter(context).ToBoolean(value);
}

// Argument lists are kept between calls, one per depth of nested calls, so that a call
// allocates no list once the depth has been reached before. The lists stay where they are
// while deeper ones are added, since an outer call holds its own.
class CArgumentList {
public:
    explicit CArgumentList(int count) {
        if (s_nDepth == s_aLists.GetSize()) s_aLists.Add(std::make_unique<TArray<TRefPtr<CValue>>>());
        m_pValues = s_aLists[s_nDepth++].get();
        m_pValues->SetSize(count);
    }
    ~CArgumentList() {
        m_pValues->Clear();
        --s_nDepth;
    }
    TArray<TRefPtr<CValue>>& GetValues() { return *m_pValues; }

private:
    static inline TArray<std::unique_ptr<TArray<TRefPtr<CValue>>>> s_aLists;
    static inline int s_nDepth = 0;
    TArray<TRefPtr<CValue>>* m_pValues;
};

bool EvaluateComparison(int op, const CExpression* left, const CExpression* right, CContext* context) {
    TRefPtr<CValue> a, b;
    left->Evaluate(a, context);
    right->Evaluate(b, context);
    return CComparer(context).Compare(op, a, b);
}

}  // namespace

void ResolvePrefix(CContext* context, const DomString& prefix, DomString& uri) {
    if (prefix.empty()) {
        uri.clear();
        return;
    }
    INamespaceResolver* resolver = context->GetNamespaces();
    if (!resolver || !resolver->ResolvePrefix(prefix, uri))
        throw new CXpathException(CXpathException::PrefixNotFound, prefix);
}

void COrExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    bool value = EvaluateBoolean(m_pLeft, context) || EvaluateBoolean(m_pRight, context);
    result = new CBooleanValue(value);
}

void CAndExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    bool value = EvaluateBoolean(m_pLeft, context) && EvaluateBoolean(m_pRight, context);
    result = new CBooleanValue(value);
}

void CEqualityExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    result = new CBooleanValue(EvaluateComparison(CompareEqual + m_nOperator, m_pLeft, m_pRight, context));
}

void CRelationalExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    result = new CBooleanValue(EvaluateComparison(CompareLess + m_nOperator, m_pLeft, m_pRight, context));
}

void CAdditiveExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    CNumber left = EvaluateNumber(m_pLeft, context);
    CNumber right = EvaluateNumber(m_pRight, context);
    result = new CNumberValue(m_nOperator == 0 ? left + right : left - right);
}

void CMultiplicativeExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    CNumber left = EvaluateNumber(m_pLeft, context);
    CNumber right = EvaluateNumber(m_pRight, context);
    CNumber value = m_nOperator == 0 ? left * right : m_nOperator == 1 ? left / right : left % right;
    result = new CNumberValue(value);
}

void CNegateExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    result = new CNumberValue(-EvaluateNumber(m_pOperand, context));
}

void CLiteralExpr::Evaluate(TRefPtr<CValue>& result, CContext*) const { result = new CStringValue(m_sText); }

void CNumberExpr::Evaluate(TRefPtr<CValue>& result, CContext*) const { result = new CNumberValue(m_number); }

void CVariableExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    DomString uri;
    ResolvePrefix(context, m_sPrefix, uri);
    TRefPtr<CValue> value;
    if (IVariableBindings* variables = context->GetVariables()) variables->GetVariable(value, uri, m_sLocalName);
    if (!value) throw new CXpathException(CXpathException::VariableNotBound, m_sPrefix, m_sLocalName, uri);
    result = value;
}

IFunction* CFunctionCallExpr::FindFunction(CContext* context) const {
    IFunctionLibrary* library = context->GetFunctions();
    uint64_t identity = library ? library->GetStableIdentity() : 0;
    if (identity && identity == m_nKnownLibrary) return m_pKnownFunction;
    DomString uri;
    ResolvePrefix(context, m_sPrefix, uri);
    TRefPtr<IFunction> function;
    if (library) library->GetFunction(function, uri, m_sLocalName);
    if (!function) throw new CXpathException(CXpathException::FunctionNotFound, m_sPrefix, m_sLocalName, uri);
    if (m_sPrefix.empty()) {
        m_pKnownFunction = function;
        m_nKnownLibrary = identity;
    }
    return function;
}

void CFunctionCallExpr::Evaluate(TRefPtr<CValue>& result, CContext* context) const {
    TRefPtr<IFunction> function(FindFunction(context));
    CArgumentList list(m_aArguments.GetSize());
    TArray<TRefPtr<CValue>>& arguments = list.GetValues();
    for (int i = 0; i < m_aArguments.GetSize(); ++i) m_aArguments[i]->Evaluate(arguments[i], context);
    function->Call(result, context, arguments);
}

CFailedExpr::CFailedExpr(CXpathException* failure) : m_pFailure(failure) {}

CFailedExpr::~CFailedExpr() { delete m_pFailure; }

void CFailedExpr::Evaluate(TRefPtr<CValue>&, CContext*) const { throw new CXpathException(*m_pFailure); }

}  // namespace Xpath
