// The instructions that invoke templates or iterate: xsl:apply-templates, xsl:apply-imports,
// xsl:call-template, xsl:for-each, with their xsl:with-param and xsl:sort children; and the
// template invocation shared by them and by the built-in rules.
#pragma once
#include "core/Array.h"
#include "xpath/Expression.h"
#include "xslt/private/Avt.h"
#include "xslt/private/BoundParameters.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/QName.h"
#include "xslt/private/VariableInstruction.h"

namespace XsltPrivate {

class CTemplate;

// The compiled xsl:sort: select (default "."), and lang, data-type, order, case-order as
// attribute value templates or null.
class CSortInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CSortInstruction>& instruction);
    void Execute(CExecutionContext&) override {}

    TRefPtr<Xpath::CExpression> m_pSelect;
    TRefPtr<CAvt> m_pLang;
    TRefPtr<CAvt> m_pDataType;
    TRefPtr<CAvt> m_pOrder;
    TRefPtr<CAvt> m_pCaseOrder;
};

// Applies the best rule for the context's current node in `mode`, or the built-in rule.
void ApplyTemplates(CExecutionContext& context, const SQName* mode, CBoundParameters* parameters);
// Runs `rule` in a child context with a new frame and `rule` as the current template when
// `asRule` is set (a call through xsl:call-template leaves the caller's rule in force).
void InvokeTemplate(CExecutionContext& context, CTemplate* rule, CBoundParameters* parameters, bool asRule);

class CApplyTemplatesInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    TRefPtr<Xpath::CExpression> m_pSelect;
    bool m_bHasMode = false;
    SQName m_mode;
    TArray<TRefPtr<CSortInstruction>> m_aSorts;
    TArray<TRefPtr<CVariableInstruction>> m_aParameters;
};

class CApplyImportsInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;
};

class CCallTemplateInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    SQName m_name;
    TArray<TRefPtr<CVariableInstruction>> m_aParameters;
    CTemplate* m_pTemplate = nullptr;  // found at the first execution; the stylesheet keeps it alive
};

class CForEachInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    TRefPtr<Xpath::CExpression> m_pSelect;
    TArray<TRefPtr<CSortInstruction>> m_aSorts;
    CContent m_content;
};

}  // namespace XsltPrivate
