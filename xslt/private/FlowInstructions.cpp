// xsl:if, xsl:choose, xsl:message and the fallback instruction.
#include "xslt/private/FlowInstructions.h"

#include "xslt/XsltException.h"
#include "xslt/private/CompileContext.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/QName.h"
#include "xslt/private/ResultTree.h"
#include "xslt/private/Runtime.h"

namespace XsltPrivate {

using Xslt::CXsltException;

void CIfInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CIfInstruction> self = new CIfInstruction();
    self->Initialise(compile);
    compile.GetExpression(u"test", true, self->m_pTest);
    compile.CompileSequence(self->m_content);
    instruction = self.Get();
}

bool CIfInstruction::Test(CExecutionContext& context) const {
    return !m_pTest || context.EvaluateBoolean(m_pTest);
}

void CIfInstruction::Execute(CExecutionContext& context) {
    if (Test(context)) m_content.Execute(context);
}

void CChooseInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CChooseInstruction> self = new CChooseInstruction();
    self->Initialise(compile);
    for (Dom::CNode* child = compile.GetNode()->GetFirstChild(); child; child = child->GetNextSibling()) {
        int type = child->GetNodeType();
        if (type == Dom::COMMENT_NODE || type == Dom::PROCESSING_INSTRUCTION_NODE) continue;
        CCompileContext element(compile, child);
        if (type != Dom::ELEMENT_NODE || !element.IsXslt()) compile.Raise(CXsltException::InvalidElement);
        if (element.GetLocalName() == u"when") {
            if (self->m_pOtherwise) element.Raise(CXsltException::MisplacedElement);
            TRefPtr<CInstruction> when;
            CIfInstruction::Compile(element, when);
            self->m_aWhens.Add(static_cast<CIfInstruction*>(when.Get()));
        } else if (element.GetLocalName() == u"otherwise") {
            if (self->m_pOtherwise) element.Raise(CXsltException::MisplacedElement);
            self->m_pOtherwise = new CIfInstruction();
            self->m_pOtherwise->Initialise(element);
            element.CompileSequence(self->m_pOtherwise->m_content);
        } else {
            element.Raise(CXsltException::InvalidElement);
        }
    }
    if (self->m_aWhens.GetSize() == 0) {
        compile.Raise(CXsltException::MissingElement, DomString(kXsltNamespace) + u":when");
    }
    instruction = self.Get();
}

void CChooseInstruction::Execute(CExecutionContext& context) {
    for (const TRefPtr<CIfInstruction>& when : m_aWhens) {
        CExecutionContext child(context, when, false);
        bool chosen = when->Test(child);
        if (chosen) when->Execute(child);
        child.Leave();
        if (chosen) return;
    }
    if (!m_pOtherwise) return;
    CExecutionContext child(context, m_pOtherwise, false);
    m_pOtherwise->Execute(child);
    child.Leave();
}

void CMessageInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CMessageInstruction> self = new CMessageInstruction();
    self->Initialise(compile);
    compile.GetYesNo(u"terminate", false, self->m_bTerminate);
    compile.CompileSequence(self->m_content);
    instruction = self.Get();
}

void CMessageInstruction::Execute(CExecutionContext& context) {
    TRefPtr<CResultTree> tree = new CResultTree(context.GetRuntime()->GetEnvironment()->GetMessageSink());
    CExecutionContext child(context, tree);
    tree->StartDocument();
    m_content.Execute(child);
    tree->EndDocument();
    child.Leave();
    if (m_bTerminate) context.RaiseFatal(CXsltException::ProcessingTerminated);
}

void CFallbackInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CFallbackInstruction> self = new CFallbackInstruction();
    self->Initialise(compile);
    for (Dom::CNode* child = compile.GetNode()->GetFirstChild(); child; child = child->GetNextSibling()) {
        if (child->GetNodeType() != Dom::ELEMENT_NODE) continue;
        CCompileContext element(compile, child);
        if (!element.IsXsltElement(u"fallback")) continue;
        TRefPtr<CFallbackInstruction> fallback = new CFallbackInstruction();
        fallback->Initialise(element);
        element.CompileSequence(fallback->m_content);
        self->m_content.Add(fallback);
    }
    instruction = self.Get();
}

void CFallbackInstruction::Execute(CExecutionContext& context) { m_content.Execute(context); }

}  // namespace XsltPrivate
