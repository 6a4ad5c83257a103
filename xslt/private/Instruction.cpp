// Instruction base and sequences.
#include "xslt/private/Instruction.h"

#include "xslt/private/CompileContext.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/Locator.h"

namespace XsltPrivate {

void CInstruction::Initialise(const CCompileContext& compile) {
    Dom::CNode* node = compile.GetNode();
    m_sName = compile.GetQualifiedName();
    m_location = compile.GetSession().pLocator->GetNodeLocation(node);
    m_pNamespaces = compile.GetNamespaces();
    m_sBaseUri = node->GetOwnerDocument()->GetDocumentUri();
}

void CContent::Execute(CExecutionContext& context) const {
    for (const TRefPtr<CInstruction>& instruction : m_aInstructions) {
        CExecutionContext child(context, instruction, false);
        instruction->Execute(child);
        child.Leave();
    }
}

}  // namespace XsltPrivate
