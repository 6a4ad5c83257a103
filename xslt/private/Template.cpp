// Compiling templates and running them as rules.
#include "xslt/private/Template.h"

#include "xslt/XsltException.h"
#include "xslt/private/CompileContext.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/RuleMatcher.h"

namespace XsltPrivate {

using Xslt::CXsltException;

void CTemplate::Compile(CCompileContext& compile, CStylesheetModule* module, TRefPtr<CTemplate>& rule) {
    rule = new CTemplate();
    rule->Initialise(compile);
    rule->m_pModule = module;
    bool hasMatch = compile.GetPattern(u"match", false, rule->m_pPattern);
    rule->m_bHasName = compile.GetQName(u"name", false, rule->m_name);
    if (!hasMatch && !rule->m_bHasName) compile.Raise(CXsltException::MissingAttribute, u"match");
    rule->m_bHasPriority = compile.GetNumber(u"priority", false, rule->m_dPriority);
    rule->m_bHasMode = compile.GetQName(u"mode", false, rule->m_mode);
    bool parametersAllowed = true;
    for (Dom::CNode* child = compile.GetNode()->GetFirstChild(); child; child = child->GetNextSibling()) {
        CCompileContext element(compile, child);
        int type = child->GetNodeType();
        if (type == Dom::COMMENT_NODE || type == Dom::PROCESSING_INSTRUCTION_NODE) continue;
        if (type == Dom::ELEMENT_NODE && element.IsXsltElement(u"param")) {
            if (!parametersAllowed) element.Raise(CXsltException::MisplacedElement);
            TRefPtr<CVariableInstruction> parameter;
            CVariableInstruction::Compile(element, CVariableInstruction::Parameter, parameter);
            rule->m_aParameters.Add(parameter);
            continue;
        }
        parametersAllowed = false;
        compile.CompileChild(child, rule->m_body);
    }
}

void CTemplate::CompileSimplified(CCompileContext& compile, CStylesheetModule* module, TRefPtr<CTemplate>& rule) {
    rule = new CTemplate();
    rule->Initialise(compile);
    rule->m_pModule = module;
    compile.CompilePattern(u"/", rule->m_pPattern);
    TRefPtr<CInstruction> body;
    compile.CompileLiteralElement(body);
    rule->m_body.Add(body);
}

void CTemplate::Execute(CExecutionContext& context) {
    for (const TRefPtr<CVariableInstruction>& parameter : m_aParameters) {
        CExecutionContext child(context, parameter, false);
        parameter->Execute(child);
        child.Leave();
    }
    m_body.Execute(context);
}

bool CTemplate::MatchRule(IPatternContext& context, const SQName* mode, double& priority) const {
    return XsltPrivate::MatchRule(m_pPattern, GetMode(), m_bHasPriority, m_dPriority, context, mode, priority);
}

}  // namespace XsltPrivate
