// A template: match pattern and/or name, priority, mode, parameters and body. Running it as a
// rule binds its parameters, each in a context of its own, then runs the body.
#pragma once
#include "core/Array.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/QName.h"
#include "xslt/private/Pattern.h"
#include "xslt/private/VariableInstruction.h"

namespace XsltPrivate {

class CStylesheetModule;

class CTemplate : public CInstruction {
public:
    // Compiles an xsl:template element (code 5 without match and name, code 16 for a late param).
    static void Compile(CCompileContext& compile, CStylesheetModule* module, TRefPtr<CTemplate>& rule);
    // The template of a simplified stylesheet: match "/", the literal root element as body.
    static void CompileSimplified(CCompileContext& compile, CStylesheetModule* module, TRefPtr<CTemplate>& rule);

    void Execute(CExecutionContext& context) override;

    // Whether the rule matches the context's node in `mode` (null for the default mode), and
    // with which priority.
    bool MatchRule(IPatternContext& context, const SQName* mode, double& priority) const;

    // The match pattern, or null for a template with a name only.
    const CPattern* GetPattern() const { return m_pPattern; }
    bool HasName() const { return m_bHasName; }
    const SQName& GetTemplateName() const { return m_name; }
    CStylesheetModule* GetModule() const { return m_pModule; }
    // The rule's mode, or null for the default mode.
    const SQName* GetMode() const { return m_bHasMode ? &m_mode : nullptr; }

private:
    TRefPtr<CPattern> m_pPattern;
    bool m_bHasName = false;
    SQName m_name;
    bool m_bHasPriority = false;
    double m_dPriority = 0;
    bool m_bHasMode = false;
    SQName m_mode;
    TArray<TRefPtr<CVariableInstruction>> m_aParameters;
    CContent m_body;
    CStylesheetModule* m_pModule = nullptr;  // the owner, which outlives it
};

}  // namespace XsltPrivate
