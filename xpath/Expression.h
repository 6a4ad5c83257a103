// The expression tree: the root class and the operator, primary and failed expressions.
// Trees are immutable once parsed and may be shared; every evaluation makes fresh values.
// Path, step, filter, union and root expressions are in PathExpr.h.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "xpath/Number.h"

namespace Xpath {

class CValue;
class CContext;
class CXpathException;
class IFunction;

class CNodeSet;

class CExpression : public CRefObject {
public:
    virtual void Evaluate(TRefPtr<CValue>& result, CContext* context) const = 0;
    // The node-set the expression evaluates to; fails with a message for any other value.
    // Paths, steps and unions give it without wrapping it in a value.
    virtual void GetNodeSet(TRefPtr<CNodeSet>& nodeSet, CContext* context) const;
};

// Common shape of the binary operators: two operands and an operator number.
class CBinaryExpr : public CExpression {
public:
    CBinaryExpr(int op, CExpression* left, CExpression* right) : m_nOperator(op), m_pLeft(left), m_pRight(right) {}
    int GetOperator() const { return m_nOperator; }
    CExpression* GetLeft() const { return m_pLeft; }
    CExpression* GetRight() const { return m_pRight; }

protected:
    int m_nOperator;
    TRefPtr<CExpression> m_pLeft;
    TRefPtr<CExpression> m_pRight;
};

// Evaluates the right side only when the left converts to false.
class COrExpr : public CBinaryExpr {
public:
    COrExpr(CExpression* left, CExpression* right) : CBinaryExpr(0, left, right) {}
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
};

// Evaluates the right side only when the left converts to true.
class CAndExpr : public CBinaryExpr {
public:
    CAndExpr(CExpression* left, CExpression* right) : CBinaryExpr(0, left, right) {}
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
};

// Operator 0 "=", 1 "!=".
class CEqualityExpr : public CBinaryExpr {
public:
    using CBinaryExpr::CBinaryExpr;
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
};

// Operator 0 "<", 1 ">", 2 "<=", 3 ">=".
class CRelationalExpr : public CBinaryExpr {
public:
    using CBinaryExpr::CBinaryExpr;
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
};

// Operator 0 plus, 1 minus.
class CAdditiveExpr : public CBinaryExpr {
public:
    using CBinaryExpr::CBinaryExpr;
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
};

// Operator 0 times, 1 div, 2 mod.
class CMultiplicativeExpr : public CBinaryExpr {
public:
    using CBinaryExpr::CBinaryExpr;
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;
};

class CNegateExpr : public CExpression {
public:
    explicit CNegateExpr(CExpression* operand) : m_pOperand(operand) {}
    CExpression* GetOperand() const { return m_pOperand; }
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;

private:
    TRefPtr<CExpression> m_pOperand;
};

class CLiteralExpr : public CExpression {
public:
    explicit CLiteralExpr(DomString text) : m_sText(std::move(text)) {}
    const DomString& GetText() const { return m_sText; }
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;

private:
    DomString m_sText;
};

class CNumberExpr : public CExpression {
public:
    explicit CNumberExpr(CNumber number) : m_number(number) {}
    CNumber GetNumber() const { return m_number; }
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;

private:
    CNumber m_number;
};

// `$prefix:local`; the prefix is resolved through the context at each evaluation.
class CVariableExpr : public CExpression {
public:
    CVariableExpr(DomString prefix, DomString localName)
        : m_sPrefix(std::move(prefix)), m_sLocalName(std::move(localName)) {}
    const DomString& GetPrefix() const { return m_sPrefix; }
    const DomString& GetLocalName() const { return m_sLocalName; }
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;

private:
    DomString m_sPrefix;
    DomString m_sLocalName;
};

// A call looked up by namespace URI and local name in the context's library. An unprefixed
// call keeps what a library with a stable identity gave it, as long as that library is used.
class CFunctionCallExpr : public CExpression {
public:
    CFunctionCallExpr(DomString prefix, DomString localName)
        : m_sPrefix(std::move(prefix)), m_sLocalName(std::move(localName)) {}
    void AddArgument(CExpression* argument) { m_aArguments.Add(argument); }
    const DomString& GetPrefix() const { return m_sPrefix; }
    const DomString& GetLocalName() const { return m_sLocalName; }
    const TArray<TRefPtr<CExpression>>& GetArguments() const { return m_aArguments; }
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;

private:
    IFunction* FindFunction(CContext* context) const;

    DomString m_sPrefix;
    DomString m_sLocalName;
    TArray<TRefPtr<CExpression>> m_aArguments;
    // The function last found and the stable identity of its library; the library owns it.
    mutable IFunction* m_pKnownFunction = nullptr;
    mutable uint64_t m_nKnownLibrary = 0;
};

// Stands for an expression that failed to parse in forwards-compatible processing: its
// evaluation throws a copy of the stored failure, so the error bites only if reached.
class CFailedExpr : public CExpression {
public:
    // Takes ownership of `failure`.
    explicit CFailedExpr(CXpathException* failure);
    ~CFailedExpr() override;
    void Evaluate(TRefPtr<CValue>& result, CContext* context) const override;

private:
    CXpathException* m_pFailure;
};

// Resolves `prefix` through the context's namespace resolver into `uri`; an empty prefix is
// the empty URI. Throws message 13 for an unknown prefix.
void ResolvePrefix(CContext* context, const DomString& prefix, DomString& uri);

}  // namespace Xpath
