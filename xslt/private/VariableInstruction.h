// xsl:variable, xsl:param and xsl:with-param, local or global: a name and a value given by
// `select`, by content (a result tree fragment), or else the empty string.
#pragma once
#include "xpath/Expression.h"
#include "xpath/Value.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/QName.h"

namespace XsltPrivate {

class CVariableInstruction : public CInstruction {
public:
    enum EKind { Variable, Parameter, WithParameter };

    // Reads name and select, and the content when there is no select (code 10 otherwise).
    static void Compile(CCompileContext& compile, EKind kind, TRefPtr<CVariableInstruction>& instruction);

    // A local variable or template parameter: computes the value and makes it the binding
    // that takes effect when this instruction's context is left.
    void Execute(CExecutionContext& context) override;
    // The value from select, else from the content, else the empty string.
    void ComputeValue(CExecutionContext& context, TRefPtr<Xpath::CValue>& value) const;

    EKind GetKind() const { return m_nKind; }
    const SQName& GetVariableName() const { return m_name; }

private:
    EKind m_nKind = Variable;
    SQName m_name;
    TRefPtr<Xpath::CExpression> m_pSelect;
    CContent m_content;
};

// Evaluates content into a result tree fragment value.
void MakeFragment(CExecutionContext& context, const CContent& content, TRefPtr<Xpath::CValue>& value);

}  // namespace XsltPrivate
