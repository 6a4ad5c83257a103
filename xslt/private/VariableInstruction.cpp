// Variables and parameters: compiling, computing values, binding.
#include "xslt/private/VariableInstruction.h"

#include "xslt/XsltException.h"
#include "xslt/private/BoundParameters.h"
#include "xslt/private/CompileContext.h"
#include "xslt/private/EventBuffer.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/FragmentValue.h"
#include "xslt/private/ResultTree.h"
#include "xslt/private/Runtime.h"
#include "xpath/NodeSet.h"
#include "xpath/SortedNodeList.h"

namespace XsltPrivate {

void CVariableInstruction::Compile(CCompileContext& compile, EKind kind, TRefPtr<CVariableInstruction>& instruction) {
    instruction = new CVariableInstruction();
    instruction->Initialise(compile);
    instruction->m_nKind = kind;
    compile.GetQName(u"name", true, instruction->m_name);
    if (compile.GetExpression(u"select", false, instruction->m_pSelect)) {
        compile.RaiseIfNotEmpty();
        return;
    }
    compile.CompileSequence(instruction->m_content);
}

void CVariableInstruction::Execute(CExecutionContext& context) {
    TRefPtr<Xpath::CValue> value;
    if (m_nKind == Parameter) {
        CBoundParameters* passed = context.GetRuntime()->GetCurrentParameters();
        if (passed) value = passed->Find(m_name.sUri, m_name.sLocalName);
    }
    if (!value) ComputeValue(context, value);
    context.SetBinding(&m_name, value);
}

namespace {

// Collects a lazy node-set into a list once, so that each use of the variable reads the list
// instead of walking the document again. Node-sets are in document order either way.
void Collect(CExecutionContext& context, TRefPtr<Xpath::CValue>& value) {
    Xpath::CNodeSet* nodes = value->GetNodeSet();
    if (!nodes || dynamic_cast<Xpath::CNodeListNodeSet*>(nodes) || dynamic_cast<Xpath::CSingleNodeSet*>(nodes)) return;
    CRuntime* runtime = context.GetRuntime();
    TRefPtr<Xpath::CSortedNodeList> list;
    runtime->GetExtensionTypes()->GetListFactory()->Create(list, runtime->GetNodeOrder());
    TRefPtr<Xpath::CNodeIterator> iterator;
    context.CreateIterator(nodes, iterator);
    for (; iterator->Current(); context.Advance(iterator)) list->Insert(iterator->Current());
    value = new Xpath::CNodeSetValue(new Xpath::CNodeListNodeSet(list));
}

}  // namespace

void CVariableInstruction::ComputeValue(CExecutionContext& context, TRefPtr<Xpath::CValue>& value) const {
    if (m_pSelect) {
        context.Evaluate(m_pSelect, value);
        if (value->GetType() == Xpath::TypeNodeSet) Collect(context, value);
    } else if (!m_content.IsEmpty()) {
        MakeFragment(context, m_content, value);
    } else {
        value = new Xpath::CStringValue(DomString());
    }
}

void MakeFragment(CExecutionContext& context, const CContent& content, TRefPtr<Xpath::CValue>& value) {
    TRefPtr<CEventBuffer> buffer = new CEventBuffer();
    TRefPtr<CResultTree> tree = new CResultTree(buffer);
    CExecutionContext child(context, tree);
    tree->StartDocument();
    content.Execute(child);
    tree->EndDocument();
    child.Leave();
    value = new CFragmentValue(buffer);
}

}  // namespace XsltPrivate
