// The dispatch from a stylesheet element to the class that compiles it, and the compiling of
// sequences. XSLT instructions are found in a table by local name; an unknown one is an error,
// or in forwards-compatible processing an element that runs its fallback.
#include "xslt/XsltException.h"
#include "xslt/private/CompileContext.h"
#include "xslt/private/FlowInstructions.h"
#include "xslt/private/NumberInstruction.h"
#include "xslt/private/OutputInstructions.h"
#include "xslt/private/TemplateInstructions.h"
#include "xslt/private/VariableInstruction.h"

namespace XsltPrivate {

namespace {

using FCompile = void (*)(CCompileContext& compile, TRefPtr<CInstruction>& instruction);

void CompileVariable(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CVariableInstruction> variable;
    CVariableInstruction::Compile(compile, CVariableInstruction::Variable, variable);
    instruction = variable.Get();
}

void DropElement(CCompileContext&, TRefPtr<CInstruction>& instruction) { instruction = nullptr; }

struct SInstructionEntry {
    const DomChar* pLocalName;
    FCompile pCompile;
};

const SInstructionEntry s_aInstructions[] = {
    {u"attribute", CAttributeInstruction::Compile},
    {u"comment", CCommentInstruction::Compile},
    {u"element", CElementInstruction::Compile},
    {u"processing-instruction", CProcessingInstructionInstruction::Compile},
    {u"apply-imports", CApplyImportsInstruction::Compile},
    {u"apply-templates", CApplyTemplatesInstruction::Compile},
    {u"call-template", CCallTemplateInstruction::Compile},
    {u"choose", CChooseInstruction::Compile},
    {u"copy", CCopyInstruction::Compile},
    {u"copy-of", CCopyOfInstruction::Compile},
    {u"fallback", DropElement},
    {u"for-each", CForEachInstruction::Compile},
    {u"if", CIfInstruction::Compile},
    {u"message", CMessageInstruction::Compile},
    {u"number", CNumberInstruction::Compile},
    {u"text", CTextInstruction::CompileTextElement},
    {u"value-of", CValueOfInstruction::Compile},
    {u"variable", CompileVariable},
};

}  // namespace

void CCompileContext::CompileSequence(CContent& content) const {
    for (Dom::CNode* child = m_pNode->GetFirstChild(); child; child = child->GetNextSibling()) {
        CompileChild(child, content);
    }
}

void CCompileContext::CompileChild(Dom::CNode* child, CContent& content) const {
    int type = child->GetNodeType();
    if (type == Dom::TEXT_NODE || type == Dom::CDATA_SECTION_NODE) {
        TRefPtr<CInstruction> text = new CTextInstruction(DomString(child->GetTextView()), false);
        text->Initialise(CCompileContext(*this, child));
        content.Add(text);
    } else if (type == Dom::ELEMENT_NODE) {
        CCompileContext element(*this, child);
        TRefPtr<CInstruction> instruction;
        element.CompileInstruction(instruction);
        content.Add(instruction);
    }
}

void CCompileContext::CompileInstruction(TRefPtr<CInstruction>& instruction) const {
    auto& self = const_cast<CCompileContext&>(*this);
    if (m_bIsXslt) {
        for (const SInstructionEntry& entry : s_aInstructions) {
            if (m_sLocalName == entry.pLocalName) {
                entry.pCompile(self, instruction);
                return;
            }
        }
        if (!m_bForwards) Raise(Xslt::CXsltException::InvalidInstruction);
        CFallbackInstruction::Compile(self, instruction);
    } else if (m_bIsExtension) {
        // No extension element is known to the engine itself: an extension element runs its
        // fallback, and without one it does nothing.
        CFallbackInstruction::Compile(self, instruction);
    } else {
        CompileLiteralElement(instruction);
    }
}

void CCompileContext::CompileLiteralElement(TRefPtr<CInstruction>& instruction) const {
    CLiteralElementInstruction::Compile(*this, instruction);
}

}  // namespace XsltPrivate
