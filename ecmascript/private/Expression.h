// The expression nodes of the syntax tree. Evaluate gives a value, possibly a reference; the
// interpreter's own paths use EvaluateValue and EvaluateReference, which spare the reference
// object, and WriteSource renders the node back to source text.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "ecmascript/Context.h"
#include "ecmascript/Object.h"
#include "ecmascript/Program.h"

namespace EcmaScriptPrivate {

using EcmaScript::CContext;
using EcmaScript::CNumber;
using EcmaScript::CObject;
using EcmaScript::CReference;
using EcmaScript::CValue;
using EcmaScript::CValueList;

class CIdentifierExpression;

class CExpression : public CRefObject {
public:
    virtual bool IsLeftHandSide() const { return false; }
    virtual void WriteSource(DomString& text) const = 0;
    virtual TRefPtr<CValue> Evaluate(CContext& context) = 0;

    // GetValue of Evaluate.
    virtual TRefPtr<CValue> EvaluateValue(CContext& context);
    // Fills `reference` and returns true for the nodes that denote one.
    virtual bool EvaluateReference(CContext& context, CReference& reference);
    // ToObject of EvaluateValue.
    virtual TRefPtr<CObject> EvaluateObject(CContext& context);
    // ToBoolean of EvaluateValue; comparisons answer without making a boolean value.
    virtual bool EvaluateCondition(CContext& context);
    // This node as an identifier, or none.
    virtual CIdentifierExpression* AsIdentifier() { return nullptr; }

    DomString WriteSource() const {
        DomString text;
        WriteSource(text);
        return text;
    }
    // The height of the tree below this node; the parser bounds it so that evaluation and
    // destruction cannot run out of stack.
    int GetDepth() const { return m_nDepth; }

protected:
    void SetDepthAbove(const CExpression* a, const CExpression* b = nullptr, const CExpression* c = nullptr);

private:
    int m_nDepth = 1;
};

using TExpressionPtr = TRefPtr<CExpression>;

class CArgumentList : public CExpression {
public:
    TArray<TExpressionPtr> m_aArguments;
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override;
    void EvaluateInto(CContext& context, CValueList& values);
    void UpdateDepth();
};

class CCommaExpression : public CExpression {
public:
    CCommaExpression(CExpression* left, CExpression* right);
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override;

private:
    TExpressionPtr m_pLeft, m_pRight;
};

class CAssignExpression : public CExpression {
public:
    CAssignExpression(CExpression* target, CExpression* value);
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override;

private:
    TExpressionPtr m_pTarget, m_pValue;
};

class CCompoundAssignExpression : public CExpression {
public:
    enum EOperator { Multiply, Divide, Modulo, Add, Subtract, ShiftLeft, ShiftRight, ShiftRightUnsigned, BitAnd, BitXor, BitOr };
    CCompoundAssignExpression(int op, CExpression* target, CExpression* value);
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override;

private:
    int m_nOperator;
    TExpressionPtr m_pTarget, m_pValue;
};

class CConditionalExpression : public CExpression {
public:
    CConditionalExpression(CExpression* condition, CExpression* thenValue, CExpression* elseValue);
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override;

private:
    TExpressionPtr m_pCondition, m_pThen, m_pElse;
};

class CLogicalOrExpression : public CExpression {
public:
    CLogicalOrExpression(CExpression* left, CExpression* right);
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override;

private:
    TExpressionPtr m_pLeft, m_pRight;
};

class CLogicalAndExpression : public CExpression {
public:
    CLogicalAndExpression(CExpression* left, CExpression* right);
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override;

private:
    TExpressionPtr m_pLeft, m_pRight;
};

// The binary operators that evaluate both operands and combine their values; `TOperator`
// gives the source text and the combination.
template <class TOperator>
class TBinaryExpression : public CExpression {
public:
    TBinaryExpression(CExpression* left, CExpression* right) : m_pLeft(left), m_pRight(right) {
        SetDepthAbove(left, right);
    }
    void WriteSource(DomString& text) const override {
        m_pLeft->WriteSource(text);
        text += TOperator::kSource;
        m_pRight->WriteSource(text);
    }
    TRefPtr<CValue> Evaluate(CContext& context) override {
        TRefPtr<CValue> left = m_pLeft->EvaluateValue(context);
        TRefPtr<CValue> right = m_pRight->EvaluateValue(context);
        return TOperator::Apply(left, right);
    }
    TRefPtr<CValue> EvaluateValue(CContext& context) override { return Evaluate(context); }
    bool EvaluateCondition(CContext& context) override {
        if constexpr (requires(CValue* value) { TOperator::Test(value, value); }) {
            TRefPtr<CValue> left = m_pLeft->EvaluateValue(context);
            TRefPtr<CValue> right = m_pRight->EvaluateValue(context);
            return TOperator::Test(left, right);
        } else {
            return CExpression::EvaluateCondition(context);
        }
    }

private:
    TExpressionPtr m_pLeft, m_pRight;
};

#define KST_BINARY_OPERATOR(Name, Source)                                 \
    struct S##Name {                                                      \
        static constexpr const DomChar* kSource = Source;                 \
        static TRefPtr<CValue> Apply(CValue* left, CValue* right);        \
    };                                                                    \
    using C##Name##Expression = TBinaryExpression<S##Name>;

// Comparisons also give their truth value directly.
#define KST_COMPARISON_OPERATOR(Name, Source)                             \
    struct S##Name {                                                      \
        static constexpr const DomChar* kSource = Source;                 \
        static bool Test(CValue* left, CValue* right);                    \
        static TRefPtr<CValue> Apply(CValue* left, CValue* right) {       \
            return CValue::Boolean(Test(left, right));                    \
        }                                                                 \
    };                                                                    \
    using C##Name##Expression = TBinaryExpression<S##Name>;

KST_BINARY_OPERATOR(BitOr, u" | ")
KST_BINARY_OPERATOR(BitXor, u" ^ ")
KST_BINARY_OPERATOR(BitAnd, u" & ")
KST_COMPARISON_OPERATOR(Equal, u" == ")
KST_COMPARISON_OPERATOR(NotEqual, u" != ")
KST_COMPARISON_OPERATOR(Less, u" < ")
KST_COMPARISON_OPERATOR(Greater, u" > ")
KST_COMPARISON_OPERATOR(LessEqual, u" <= ")
KST_COMPARISON_OPERATOR(GreaterEqual, u" >= ")
KST_BINARY_OPERATOR(ShiftLeft, u" << ")
KST_BINARY_OPERATOR(ShiftRight, u" >> ")
KST_BINARY_OPERATOR(ShiftRightUnsigned, u" >>> ")
KST_BINARY_OPERATOR(Add, u" + ")
KST_BINARY_OPERATOR(Subtract, u" - ")
KST_BINARY_OPERATOR(Multiply, u" * ")
KST_BINARY_OPERATOR(Divide, u" / ")
KST_BINARY_OPERATOR(Modulo, u" % ")

#undef KST_BINARY_OPERATOR
#undef KST_COMPARISON_OPERATOR

class CUnaryExpression : public CExpression {
public:
    explicit CUnaryExpression(CExpression* operand) : m_pOperand(operand) { SetDepthAbove(operand); }

protected:
    TExpressionPtr m_pOperand;
};

#define KST_UNARY_EXPRESSION(Name)                                   \
    class Name : public CUnaryExpression {                           \
    public:                                                          \
        using CUnaryExpression::CUnaryExpression;                    \
        void WriteSource(DomString& text) const override;            \
        TRefPtr<CValue> Evaluate(CContext& context) override;        \
    };

KST_UNARY_EXPRESSION(CDeleteExpression)
KST_UNARY_EXPRESSION(CVoidExpression)
KST_UNARY_EXPRESSION(CTypeofExpression)
KST_UNARY_EXPRESSION(CPreIncrementExpression)
KST_UNARY_EXPRESSION(CPreDecrementExpression)
KST_UNARY_EXPRESSION(CUnaryPlusExpression)
KST_UNARY_EXPRESSION(CUnaryMinusExpression)
KST_UNARY_EXPRESSION(CBitNotExpression)
KST_UNARY_EXPRESSION(CLogicalNotExpression)
KST_UNARY_EXPRESSION(CPostIncrementExpression)
KST_UNARY_EXPRESSION(CPostDecrementExpression)

#undef KST_UNARY_EXPRESSION

// The left-hand-side group: IsLeftHandSide holds for all of them, so that `1 = 2` parses and
// fails only when run.
class CLeftHandSideExpression : public CExpression {
public:
    bool IsLeftHandSide() const override { return true; }
};

class CMemberExpression : public CLeftHandSideExpression {
public:
    CMemberExpression(CExpression* object, CExpression* index);
    CMemberExpression(CExpression* object, const CName& name);
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override;
    TRefPtr<CValue> EvaluateValue(CContext& context) override;
    bool EvaluateReference(CContext& context, CReference& reference) override;

private:
    void EvaluateName(CContext& context, CName& name);

    TExpressionPtr m_pObject;
    bool m_bOnThis;
    TExpressionPtr m_pIndex;  // none for `.name`
    CName m_name;
};

class CCallExpression : public CLeftHandSideExpression {
public:
    CCallExpression(CExpression* callee, CArgumentList* arguments);
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override;
    // Calls give values, never references.
    TRefPtr<CValue> EvaluateValue(CContext& context) override { return Evaluate(context); }

private:
    TRefPtr<CValue> CallFound(CContext& context, CObject* base, EcmaScript::SPropertyEntry* entry);

    TExpressionPtr m_pCallee;
    CIdentifierExpression* m_pCalleeIdentifier;  // the callee when it is an identifier
    TRefPtr<CArgumentList> m_pArguments;
};

class CNewExpression : public CLeftHandSideExpression {
public:
    CNewExpression(CExpression* constructor, CArgumentList* arguments);
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override;

private:
    TExpressionPtr m_pConstructor;
    TRefPtr<CArgumentList> m_pArguments;
};

class CThisExpression : public CLeftHandSideExpression {
public:
    void WriteSource(DomString& text) const override { text += u"this"; }
    TRefPtr<CValue> Evaluate(CContext& context) override;
    TRefPtr<CObject> EvaluateObject(CContext& context) override { return context.GetThis(); }
};

class CIdentifierExpression : public CLeftHandSideExpression {
public:
    // `owner` is the function whose body holds the node, none in global and eval code.
    CIdentifierExpression(const CName& name, EcmaScript::CFunctionBody* owner) : m_name(name), m_pOwner(owner) {}
    void WriteSource(DomString& text) const override { text += m_name.GetText(); }
    TRefPtr<CValue> Evaluate(CContext& context) override;
    TRefPtr<CValue> EvaluateValue(CContext& context) override;
    bool EvaluateReference(CContext& context, CReference& reference) override;
    CIdentifierExpression* AsIdentifier() override { return this; }
    const CName& GetName() const { return m_name; }
    // The base of the reference, and the entry of a variable scope that holds the name, if any.
    void Resolve(CContext& context, TRefPtr<CObject>& base, EcmaScript::SPropertyEntry*& entry);
    // The entry and its scope without a search of the chain, or none when a search is needed.
    EcmaScript::SPropertyEntry* FindFast(CContext& context, CObject*& base);

private:
    EcmaScript::SPropertyEntry* FindOutsideFrame(CContext& context, CObject*& base);
    EcmaScript::SPropertyEntry* FindGlobal(EcmaScript::CGlobalObject* global);

    CName m_name;
    // Not counted: the body owns this node.
    EcmaScript::CFunctionBody* m_pOwner;
    // The slot of the name in the owner's frame; -1 outside it, -2 before the first look.
    int m_nFrameSlot = -2;
    // The global entry last found, valid while the table has lost no entry since.
    EcmaScript::SPropertyEntry* m_pGlobalEntry = nullptr;
    const EcmaScript::CPropertyTable* m_pGlobalTable = nullptr;
    uint32_t m_nGlobalRemovals = 0;
};

// Literals hold their value, made once at parse time.
class CLiteral : public CLeftHandSideExpression {
public:
    explicit CLiteral(CValue* value) : m_pValue(value) {}
    TRefPtr<CValue> Evaluate(CContext&) override { return m_pValue; }
    TRefPtr<CValue> EvaluateValue(CContext&) override { return m_pValue; }

protected:
    TRefPtr<CValue> m_pValue;
};

class CNullLiteral : public CLiteral {
public:
    CNullLiteral() : CLiteral(CValue::Null()) {}
    void WriteSource(DomString& text) const override { text += u"null"; }
};

class CBooleanLiteral : public CLiteral {
public:
    explicit CBooleanLiteral(bool value) : CLiteral(CValue::Boolean(value)) {}
    void WriteSource(DomString& text) const override { text += m_pValue->GetBoolean() ? u"true" : u"false"; }
};

class CNumericLiteral : public CLiteral {
public:
    explicit CNumericLiteral(const CNumber& number) : CLiteral(CValue::Number(number)) {}
    void WriteSource(DomString& text) const override { text += m_pValue->GetNumber().ToString(); }
};

class CStringLiteral : public CLiteral {
public:
    explicit CStringLiteral(const DomString& text) : CLiteral(CValue::String(text)) {}
    void WriteSource(DomString& text) const override;
};

class CParenExpression : public CLeftHandSideExpression {
public:
    explicit CParenExpression(CExpression* expression) : m_pExpression(expression) { SetDepthAbove(expression); }
    void WriteSource(DomString& text) const override;
    TRefPtr<CValue> Evaluate(CContext& context) override { return m_pExpression->Evaluate(context); }
    TRefPtr<CValue> EvaluateValue(CContext& context) override { return m_pExpression->EvaluateValue(context); }
    bool EvaluateCondition(CContext& context) override { return m_pExpression->EvaluateCondition(context); }
    bool EvaluateReference(CContext& context, CReference& reference) override {
        return m_pExpression->EvaluateReference(context, reference);
    }

private:
    TExpressionPtr m_pExpression;
};

}  // namespace EcmaScriptPrivate
