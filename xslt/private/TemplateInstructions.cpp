// Template invocation, the built-in rules, and the instructions that select nodes.
#include "xslt/private/TemplateInstructions.h"

#include <string>

#include "xpath/NodeSet.h"
#include "xslt/XsltException.h"
#include "xslt/private/CompileContext.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/Runtime.h"
#include "xslt/private/Sorter.h"
#include "xslt/private/StylesheetModule.h"
#include "xslt/private/Template.h"

namespace XsltPrivate {

using Xslt::CXsltException;

namespace {

// Runs `nodes` through ApplyTemplates one node at a time, in a child context on their list.
void ApplyToNodes(CExecutionContext& context, Xpath::CNodeSet* nodes, const SQName* mode, CBoundParameters* parameters) {
    TRefPtr<Xpath::CNodeIterator> iterator;
    context.CreateIterator(nodes, iterator);
    CExecutionContext child(context, iterator.Get());
    while (iterator->Current()) {
        ApplyTemplates(child, mode, parameters);
        child.Advance(iterator);
    }
    child.Leave();
}

// Counts a template level for the lifetime of the guard; past the limit the run ends.
class CTemplateLevel {
public:
    explicit CTemplateLevel(CExecutionContext& context) : m_pRuntime(context.GetRuntime()) {
        if (!m_pRuntime->EnterTemplate()) {
            m_pRuntime->LeaveTemplate();
            context.RaiseFatal(CXsltException::UnsupportedFeature, u"nesting of templates deeper than",
                               Core::WidenLatin1(std::to_string(CRuntime::MaxTemplateDepth)));
        }
    }
    ~CTemplateLevel() { m_pRuntime->LeaveTemplate(); }
    CTemplateLevel(const CTemplateLevel&) = delete;
    CTemplateLevel& operator=(const CTemplateLevel&) = delete;

private:
    CRuntime* m_pRuntime;
};

void RunBuiltInRule(CExecutionContext& context, const SQName* mode, CBoundParameters* parameters) {
    Dom::CNode* node = context.GetCurrentNode();
    switch (node->GetNodeType()) {
    case Dom::DOCUMENT_NODE:
    case Dom::ELEMENT_NODE: {
        CTemplateLevel level(context);
        TRefPtr<Xpath::CNodeSet> children;
        context.EvaluateNodeSet(context.GetRuntime()->GetRootModule()->GetBuiltInSelection(), children);
        ApplyToNodes(context, children, mode, parameters);
        break;
    }
    case Dom::ATTRIBUTE_NODE:
    case Dom::TEXT_NODE:
    case Dom::CDATA_SECTION_NODE: {
        DomStringView text = node->GetTextView();
        context.Characters(text.data(), static_cast<int>(text.size()), false);
        break;
    }
    default:
        break;
    }
}

// The with-parameters of one call, evaluated in the present context into a list that the
// runtime lends for the call; null when there are none.
class CCallParameters {
public:
    CCallParameters(CExecutionContext& context, const TArray<TRefPtr<CVariableInstruction>>& declarations)
        : m_pRuntime(context.GetRuntime()) {
        if (declarations.GetSize() == 0) return;
        m_pRuntime->TakeParameters(m_pList);
        for (const TRefPtr<CVariableInstruction>& declaration : declarations) {
            CExecutionContext child(context, declaration, false);
            TRefPtr<Xpath::CValue> value;
            declaration->ComputeValue(child, value);
            m_pList->Add(&declaration->GetVariableName(), value);
            child.Leave();
        }
    }
    ~CCallParameters() {
        if (m_pList) m_pRuntime->GiveBackParameters(m_pList);
    }
    CCallParameters(const CCallParameters&) = delete;
    CCallParameters& operator=(const CCallParameters&) = delete;

    CBoundParameters* Get() const { return m_pList; }

private:
    CRuntime* m_pRuntime;
    TRefPtr<CBoundParameters> m_pList;
};

// Reads the key of one xsl:sort in the present context; code 45 for a value it refuses.
void AddSortKey(CExecutionContext& context, CSortInstruction* sort, CSorter* sorter) {
    CExecutionContext child(context, sort, false);
    DomString texts[4];
    const CAvt* avts[4] = {sort->m_pLang, sort->m_pDataType, sort->m_pOrder, sort->m_pCaseOrder};
    const DomString* given[4] = {};
    for (int i = 0; i < 4; ++i) {
        if (!avts[i]) continue;
        child.EvaluateAvt(avts[i], texts[i]);
        given[i] = &texts[i];
    }
    CSortKeyInfo key;
    DomString attribute;
    DomString value;
    if (!key.Read(given[0], given[1], given[2], given[3], attribute, value)) {
        child.RaiseFatal(CXsltException::InvalidComputedAttributeValue, attribute, value);
    }
    sorter->AddKey(key);
    child.Leave();
}

// Replaces `nodes` by the same nodes in the order of the sort keys.
void SortNodes(CExecutionContext& context, const TArray<TRefPtr<CSortInstruction>>& sorts,
               TRefPtr<Xpath::CNodeSet>& nodes) {
    TRefPtr<CSorter> sorter = new CSorter();
    for (CSortInstruction* sort : sorts) AddSortKey(context, sort, sorter);
    sorter->Reserve(context.CountNodes(nodes));
    TRefPtr<Xpath::CNodeIterator> iterator;
    context.CreateIterator(nodes, iterator);
    CExecutionContext list(context, iterator.Get());
    TArray<DomString> keys;
    keys.SetSize(sorts.GetSize());
    for (; iterator->Current(); list.Advance(iterator)) {
        for (int i = 0; i < sorts.GetSize(); ++i) {
            CExecutionContext child(list, sorts[i], false);
            child.EvaluateString(sorts[i]->m_pSelect, keys[i]);
            child.Leave();
        }
        sorter->AddNode(iterator->Current(), keys);
    }
    list.Leave();
    sorter->Sort();
    nodes = new CSortedNodeSet(sorter);
}

// The selected node-set, sorted when there are sort keys.
void SelectNodes(CExecutionContext& context, const Xpath::CExpression* select,
                 const TArray<TRefPtr<CSortInstruction>>& sorts, TRefPtr<Xpath::CNodeSet>& nodes) {
    context.EvaluateNodeSet(select, nodes);
    if (sorts.GetSize() != 0) SortNodes(context, sorts, nodes);
}

// Compiles the xsl:sort and xsl:with-param children that apply-templates and call-template
// allow (with `sorts` null, sorts are refused); anything else but comments and processing
// instructions is code 14.
void CompileChildren(CCompileContext& compile, TArray<TRefPtr<CSortInstruction>>* sorts,
                     TArray<TRefPtr<CVariableInstruction>>& parameters) {
    for (Dom::CNode* child = compile.GetNode()->GetFirstChild(); child; child = child->GetNextSibling()) {
        int type = child->GetNodeType();
        if (type == Dom::COMMENT_NODE || type == Dom::PROCESSING_INSTRUCTION_NODE) continue;
        CCompileContext element(compile, child);
        if (type == Dom::ELEMENT_NODE && element.IsXsltElement(u"with-param")) {
            TRefPtr<CVariableInstruction> parameter;
            CVariableInstruction::Compile(element, CVariableInstruction::WithParameter, parameter);
            parameters.Add(parameter);
        } else if (sorts && type == Dom::ELEMENT_NODE && element.IsXsltElement(u"sort")) {
            TRefPtr<CSortInstruction> sort;
            CSortInstruction::Compile(element, sort);
            sorts->Add(sort);
        } else {
            compile.Raise(CXsltException::InvalidElement);
        }
    }
}

}  // namespace

void ApplyTemplates(CExecutionContext& context, const SQName* mode, CBoundParameters* parameters) {
    CTemplate* rule = context.GetRuntime()->GetRootModule()->FindTemplateRule(context, mode);
    if (rule) {
        InvokeTemplate(context, rule, parameters, true);
    } else {
        RunBuiltInRule(context, mode, parameters);
    }
}

void InvokeTemplate(CExecutionContext& context, CTemplate* rule, CBoundParameters* parameters, bool asRule) {
    CRuntime* runtime = context.GetRuntime();
    CTemplateLevel level(context);
    // A parameter's content may call templates of its own, so the caller's list comes back.
    CBoundParameters* previous = runtime->GetCurrentParameters();
    runtime->SetCurrentParameters(parameters);
    CExecutionContext child(context, rule, true);
    if (asRule) child.SetCurrentTemplate(rule);
    rule->Execute(child);
    child.Leave();
    runtime->SetCurrentParameters(previous);
}

void CSortInstruction::Compile(CCompileContext& compile, TRefPtr<CSortInstruction>& instruction) {
    instruction = new CSortInstruction();
    instruction->Initialise(compile);
    compile.GetExpression(u"select", false, instruction->m_pSelect, u".");
    compile.GetAvt(u"lang", false, instruction->m_pLang);
    compile.GetAvt(u"data-type", false, instruction->m_pDataType);
    compile.GetAvt(u"order", false, instruction->m_pOrder);
    compile.GetAvt(u"case-order", false, instruction->m_pCaseOrder);
    compile.RaiseIfNotEmpty();
}

void CApplyTemplatesInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CApplyTemplatesInstruction> self = new CApplyTemplatesInstruction();
    self->Initialise(compile);
    compile.GetExpression(u"select", false, self->m_pSelect, u"node()");
    self->m_bHasMode = compile.GetQName(u"mode", false, self->m_mode);
    CompileChildren(compile, &self->m_aSorts, self->m_aParameters);
    instruction = self.Get();
}

void CApplyTemplatesInstruction::Execute(CExecutionContext& context) {
    TRefPtr<Xpath::CNodeSet> nodes;
    SelectNodes(context, m_pSelect, m_aSorts, nodes);
    CCallParameters parameters(context, m_aParameters);
    ApplyToNodes(context, nodes, m_bHasMode ? &m_mode : nullptr, parameters.Get());
}

void CApplyImportsInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    instruction = new CApplyImportsInstruction();
    instruction->Initialise(compile);
    compile.RaiseIfNotEmpty();
}

void CApplyImportsInstruction::Execute(CExecutionContext& context) {
    CTemplate* current = context.GetCurrentTemplate();
    if (!current) context.RaiseFatal(CXsltException::CurrentTemplateRuleNull);
    const SQName* mode = current->GetMode();
    CTemplate* rule = current->GetModule()->FindImportedRule(context, mode);
    if (rule) {
        InvokeTemplate(context, rule, nullptr, true);
    } else {
        RunBuiltInRule(context, mode, nullptr);
    }
}

void CCallTemplateInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CCallTemplateInstruction> self = new CCallTemplateInstruction();
    self->Initialise(compile);
    compile.GetQName(u"name", true, self->m_name);
    CompileChildren(compile, nullptr, self->m_aParameters);
    instruction = self.Get();
}

void CCallTemplateInstruction::Execute(CExecutionContext& context) {
    if (!m_pTemplate) {
        m_pTemplate = context.GetRuntime()->FindNamedTemplate(m_name.sUri, m_name.sLocalName);
        if (!m_pTemplate) context.RaiseFatal(CXsltException::NamedTemplateNotFound, m_name.sUri, m_name.sLocalName);
    }
    CCallParameters parameters(context, m_aParameters);
    InvokeTemplate(context, m_pTemplate, parameters.Get(), false);
}

void CForEachInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CForEachInstruction> self = new CForEachInstruction();
    self->Initialise(compile);
    compile.GetExpression(u"select", true, self->m_pSelect);
    bool sortsAllowed = true;
    for (Dom::CNode* child = compile.GetNode()->GetFirstChild(); child; child = child->GetNextSibling()) {
        int type = child->GetNodeType();
        if (type == Dom::COMMENT_NODE || type == Dom::PROCESSING_INSTRUCTION_NODE) continue;
        CCompileContext element(compile, child);
        if (type == Dom::ELEMENT_NODE && element.IsXsltElement(u"sort")) {
            if (!sortsAllowed) element.Raise(CXsltException::MisplacedElement);
            TRefPtr<CSortInstruction> sort;
            CSortInstruction::Compile(element, sort);
            self->m_aSorts.Add(sort);
            continue;
        }
        sortsAllowed = false;
        compile.CompileChild(child, self->m_content);
    }
    instruction = self.Get();
}

void CForEachInstruction::Execute(CExecutionContext& context) {
    TRefPtr<Xpath::CNodeSet> nodes;
    SelectNodes(context, m_pSelect, m_aSorts, nodes);
    TRefPtr<Xpath::CNodeIterator> iterator;
    context.CreateIterator(nodes, iterator);
    CExecutionContext child(context, iterator.Get());
    while (iterator->Current()) {
        // Each round is a context of its own, so its variables are gone before the next.
        CExecutionContext round(child, iterator.Get());
        m_content.Execute(round);
        round.Leave();
        child.Advance(iterator);
    }
    child.Leave();
}

}  // namespace XsltPrivate
