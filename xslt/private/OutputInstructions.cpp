// Instructions that write to the result, the copying of source nodes, and attribute sets.
#include "xslt/private/OutputInstructions.h"

#include "xpath/NodeSet.h"
#include "xslt/XsltException.h"
#include "xslt/private/CompileContext.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/FragmentValue.h"
#include "xslt/private/MessageSink.h"
#include "xslt/private/ResultTree.h"
#include "xslt/private/Runtime.h"

namespace XsltPrivate {

using Xslt::CXsltException;

namespace {

// How deeply attribute sets may use one another; a set that uses itself ends here.
const int kMaxAttributeSetNesting = 256;

void WriteText(CExecutionContext& context, DomStringView text) {
    context.Characters(text.data(), static_cast<int>(text.size()), false);
}

// Writes the namespace nodes in scope on a source element, except the xml binding.
void CopyNamespaces(CExecutionContext& context, const Dom::CNode* element) {
    constexpr DomStringView xmlPrefix = u"xml";
    int count = element->GetNamespaceCount();
    for (int i = 0; i < count; ++i) {
        const Dom::CNamespaceNode* binding = element->GetNamespaceAt(i);
        if (DomStringView(binding->GetName()) == xmlPrefix) continue;
        context.Namespace(binding->GetName(), binding->GetValue());
    }
}

void WriteElementStart(CExecutionContext& context, const Dom::CNode* element) {
    const Dom::CName* name = element->GetName();
    context.StartElement(name->GetQualifiedName(), name->GetNamespaceUri());
    CopyNamespaces(context, element);
}

// Writes a node that has no children to visit; false if it cannot be written here.
void WriteLeaf(CExecutionContext& context, Dom::CNode* node) {
    bool noNodes = context.HasFlag(CExecutionContext::NoNodes);
    switch (node->GetNodeType()) {
    case Dom::ATTRIBUTE_NODE: {
        if (noNodes) return context.RaiseRecoverable(CXsltException::MisplacedAttributeNode);
        const Dom::CName* name = node->GetName();
        context.Attribute(name->GetQualifiedName(), name->GetNamespaceUri(), node->GetTextView());
        break;
    }
    case Dom::TEXT_NODE:
    case Dom::CDATA_SECTION_NODE:
        WriteText(context, node->GetTextView());
        break;
    case Dom::COMMENT_NODE:
        if (noNodes) return context.RaiseRecoverable(CXsltException::MisplacedCommentNode);
        context.StartComment();
        WriteText(context, node->GetTextView());
        context.EndComment();
        break;
    case Dom::PROCESSING_INSTRUCTION_NODE:
        if (noNodes) return context.RaiseRecoverable(CXsltException::MisplacedProcessingInstructionNode);
        context.ProcessingInstruction(static_cast<Dom::CProcessingInstruction*>(node)->GetTargetView(),
                                      node->GetTextView());
        break;
    case Dom::NAMESPACE_NODE: {
        if (noNodes) return context.RaiseRecoverable(CXsltException::MisplacedNamespaceNode);
        auto* binding = static_cast<Dom::CNamespaceNode*>(node);
        context.Namespace(binding->GetName(), binding->GetValue());
        break;
    }
    default:
        break;
    }
}

// Opens an element or document for the deep copy; false if its subtree is to be skipped.
bool OpenContainer(CExecutionContext& context, Dom::CNode* node) {
    if (node->GetNodeType() != Dom::ELEMENT_NODE) return true;
    if (context.HasFlag(CExecutionContext::NoNodes)) {
        context.RaiseRecoverable(CXsltException::MisplacedElementNode);
        return false;
    }
    WriteElementStart(context, node);
    int count = node->GetAttributeCount();
    for (int i = 0; i < count; ++i) WriteLeaf(context, node->GetAttributeAt(i));
    return true;
}

void CloseContainer(CExecutionContext& context, Dom::CNode* node) {
    if (node->GetNodeType() == Dom::ELEMENT_NODE) context.EndElement();
}

bool IsContainer(Dom::CNode* node) {
    int type = node->GetNodeType();
    return type == Dom::ELEMENT_NODE || type == Dom::DOCUMENT_NODE || type == Dom::DOCUMENT_FRAGMENT_NODE;
}

}  // namespace

// The walk is iterative, so that a deep source tree cannot exhaust the machine stack.
void CopyNode(CExecutionContext& context, Dom::CNode* root, bool deep) {
    if (!IsContainer(root)) return WriteLeaf(context, root);
    Dom::CNode* node = root;
    for (;;) {
        if (!IsContainer(node)) {
            WriteLeaf(context, node);
        } else if (OpenContainer(context, node)) {
            Dom::CNode* child = deep ? node->GetFirstChild() : nullptr;
            if (child) {
                node = child;
                continue;
            }
            CloseContainer(context, node);
        }
        while (node != root && !node->GetNextSibling()) {
            node = node->GetParentNode();
            CloseContainer(context, node);
        }
        if (node == root) return;
        node = node->GetNextSibling();
    }
}

void CTextInstruction::CompileTextElement(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    bool disableEscaping = false;
    compile.GetYesNo(u"disable-output-escaping", false, disableEscaping);
    DomString text;
    for (Dom::CNode* child = compile.GetNode()->GetFirstChild(); child; child = child->GetNextSibling()) {
        int type = child->GetNodeType();
        if (type == Dom::TEXT_NODE || type == Dom::CDATA_SECTION_NODE) {
            text.append(child->GetTextView());
        } else if (type != Dom::COMMENT_NODE && type != Dom::PROCESSING_INSTRUCTION_NODE) {
            compile.Raise(CXsltException::InvalidContent);
        }
    }
    instruction = new CTextInstruction(std::move(text), disableEscaping);
    instruction->Initialise(compile);
}

void CTextInstruction::Execute(CExecutionContext& context) {
    context.Characters(m_sText.data(), static_cast<int>(m_sText.size()), m_bDisableEscaping);
}

void CValueOfInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CValueOfInstruction> self = new CValueOfInstruction();
    self->Initialise(compile);
    compile.GetExpression(u"select", true, self->m_pSelect);
    compile.GetYesNo(u"disable-output-escaping", false, self->m_bDisableEscaping);
    compile.RaiseIfNotEmpty();
    instruction = self.Get();
}

void CValueOfInstruction::Execute(CExecutionContext& context) {
    DomString text;
    context.EvaluateString(m_pSelect, text);
    context.Characters(text.data(), static_cast<int>(text.size()), m_bDisableEscaping);
}

void CLiteralElementInstruction::Compile(const CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CLiteralElementInstruction> self = new CLiteralElementInstruction();
    self->Initialise(compile);
    Dom::CNode* node = compile.GetNode();
    const Dom::CName* name = node->GetName();
    self->m_sElementName = name->GetQualifiedName();
    self->m_sUri = name->GetNamespaceUri();
    int count = node->GetNamespaceCount();
    for (int i = 0; i < count; ++i) {
        const Dom::CNamespaceNode* binding = node->GetNamespaceAt(i);
        const DomString& uri = binding->GetValue();
        if (binding->GetName() == u"xml" || uri == kXsltNamespace || compile.GetExcludedNamespaces()->Contains(uri) ||
            compile.GetExtensionNamespaces()->Contains(uri)) {
            continue;
        }
        self->m_aNamespaces.Add(SBinding{binding->GetName(), uri});
    }
    compile.GetQNameList(u"use-attribute-sets", self->m_aAttributeSets);
    count = node->GetAttributeCount();
    for (int i = 0; i < count; ++i) {
        const Dom::CAttr* attribute = node->GetAttributeAt(i);
        const Dom::CName* attributeName = attribute->m_pName;
        if (attributeName->GetNamespaceUri() == kXsltNamespace) continue;
        SAttribute entry{attributeName->GetQualifiedName(), attributeName->GetNamespaceUri(), nullptr};
        CAvt::Compile(compile, attribute->GetValueView(), entry.pValue);
        self->m_aAttributes.Add(entry);
    }
    compile.CompileSequence(self->m_content);
    instruction = self.Get();
}

namespace {

// The qualified name under which `name` goes out when its namespace has an alias.
void ApplyAlias(const DomString& resultPrefix, const DomString& name, DomString& aliased) {
    size_t colon = name.find(u':');
    DomStringView localName = colon == DomString::npos ? DomStringView(name) : DomStringView(name).substr(colon + 1);
    aliased.clear();
    if (!resultPrefix.empty() && resultPrefix != u"#default") {
        aliased = resultPrefix;
        aliased += u':';
    }
    aliased.append(localName);
}

}  // namespace

void CLiteralElementInstruction::Execute(CExecutionContext& context) {
    if (context.HasFlag(CExecutionContext::NoNodes)) return context.RaiseRecoverable(CXsltException::MisplacedElementNode);
    CRuntime* runtime = context.GetRuntime();
    const DomString* resultUri;
    const DomString* resultPrefix;
    if (runtime->FindAlias(m_sUri, resultUri, resultPrefix)) {
        DomString name;
        ApplyAlias(*resultPrefix, m_sElementName, name);
        context.StartElement(name, *resultUri);
    } else {
        context.StartElement(m_sElementName, m_sUri);
    }
    WriteNamespaces(context);
    if (m_aAttributeSets.GetSize() != 0) RunAttributeSets(context, m_aAttributeSets);
    WriteAttributes(context);
    m_content.Execute(context);
    context.EndElement();
}

void CLiteralElementInstruction::WriteNamespaces(CExecutionContext& context) const {
    CRuntime* runtime = context.GetRuntime();
    for (const SBinding& binding : m_aNamespaces) {
        const DomString* resultUri;
        const DomString* resultPrefix;
        if (runtime->FindAlias(binding.sUri, resultUri, resultPrefix)) {
            context.Namespace(*resultPrefix == u"#default" ? DomString() : *resultPrefix, *resultUri);
        } else {
            context.Namespace(binding.sPrefix, binding.sUri);
        }
    }
}

void CLiteralElementInstruction::WriteAttributes(CExecutionContext& context) {
    CRuntime* runtime = context.GetRuntime();
    for (const SAttribute& attribute : m_aAttributes) {
        context.EvaluateAvt(attribute.pValue, m_sValue);
        const DomString* resultUri;
        const DomString* resultPrefix;
        if (!attribute.sUri.empty() && runtime->FindAlias(attribute.sUri, resultUri, resultPrefix)) {
            DomString name;
            ApplyAlias(*resultPrefix, attribute.sName, name);
            context.Attribute(name, *resultUri, m_sValue);
        } else {
            context.Attribute(attribute.sName, attribute.sUri, m_sValue);
        }
    }
}

void CElementInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CElementInstruction> self = new CElementInstruction();
    self->Initialise(compile);
    compile.GetAvt(u"name", true, self->m_pName);
    compile.GetAvt(u"namespace", false, self->m_pNamespace);
    compile.GetQNameList(u"use-attribute-sets", self->m_aAttributeSets);
    compile.CompileSequence(self->m_content);
    instruction = self.Get();
}

void CElementInstruction::Execute(CExecutionContext& context) {
    if (context.HasFlag(CExecutionContext::NoNodes)) return context.RaiseRecoverable(CXsltException::MisplacedElementNode);
    DomString name;
    DomString uri;
    context.EvaluateAvt(m_pName, name);
    if (m_pNamespace) {
        context.EvaluateAvt(m_pNamespace, uri);
    } else {
        DomStringView prefix;
        DomStringView localName;
        SplitQName(name, prefix, localName);
        if (!GetNamespaces()->Lookup(prefix, uri)) context.RaiseFatal(CXsltException::UndefinedPrefix, DomString(prefix));
    }
    context.StartElement(name, uri);
    if (m_aAttributeSets.GetSize() != 0) RunAttributeSets(context, m_aAttributeSets);
    m_content.Execute(context);
    context.EndElement();
}

void CAttributeInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CAttributeInstruction> self = new CAttributeInstruction();
    self->Initialise(compile);
    compile.GetAvt(u"name", true, self->m_pName);
    compile.GetAvt(u"namespace", false, self->m_pNamespace);
    compile.CompileSequence(self->m_content);
    instruction = self.Get();
}

bool CAttributeInstruction::ComputeName(CExecutionContext& context, DomString& name, DomString& uri) const {
    context.EvaluateAvt(m_pName, name);
    if (name == u"xmlns" || !IsQName(name)) {
        context.RaiseRecoverable(CXsltException::InvalidAttributeName, name);
        return false;
    }
    if (m_pNamespace) {
        context.EvaluateAvt(m_pNamespace, uri);
        return true;
    }
    DomStringView prefix;
    DomStringView localName;
    SplitQName(name, prefix, localName);
    uri.clear();
    if (!prefix.empty() && !GetNamespaces()->Lookup(prefix, uri)) {
        context.RaiseFatal(CXsltException::UndefinedPrefix, DomString(prefix));
    }
    return true;
}

void CAttributeInstruction::Write(CExecutionContext& context, const DomString& name, const DomString& uri) const {
    context.StartAttribute(name, uri);
    m_content.Execute(context);
    context.EndAttribute();
}

void CAttributeInstruction::Execute(CExecutionContext& context) {
    if (context.HasFlag(CExecutionContext::NoNodes)) return context.RaiseRecoverable(CXsltException::MisplacedAttributeNode);
    context.SetFlag(CExecutionContext::NoNodes);
    DomString name;
    DomString uri;
    if (ComputeName(context, name, uri)) Write(context, name, uri);
}

namespace {

struct SWrittenAttribute {
    DomString sUri;
    DomString sLocalName;
    int nOrdinal;
};

void RunMergedSet(CExecutionContext& context, CMergedAttributeSet* set, int nesting);

void RunNamedSets(CExecutionContext& context, const TArray<SQName>& names, int nesting) {
    if (nesting > kMaxAttributeSetNesting) {
        context.RaiseFatal(CXsltException::UnsupportedFeature, u"nesting of attribute sets deeper than", u"256");
    }
    for (const SQName& name : names) {
        CMergedAttributeSet* set = context.GetRuntime()->FindAttributeSet(name.sUri, name.sLocalName);
        if (!set) context.RaiseFatal(CXsltException::AttributeSetNotFound, name.sUri, name.sLocalName);
        RunMergedSet(context, set, nesting);
    }
}

// Whether the attribute may be written: a name already written by this set is written again
// only from a declaration of lower ordinal; otherwise code 29.
bool MayWrite(CExecutionContext& context, TArray<SWrittenAttribute>& written, const DomString& name,
              const DomString& uri, int ordinal) {
    DomStringView prefix;
    DomStringView localName;
    SplitQName(name, prefix, localName);
    for (SWrittenAttribute& entry : written) {
        if (entry.sLocalName != localName || entry.sUri != uri) continue;
        if (ordinal < entry.nOrdinal) {
            entry.nOrdinal = ordinal;
            return true;
        }
        context.RaiseRecoverable(CXsltException::DuplicateAttributeName, uri, DomString(localName));
        return false;
    }
    written.Add(SWrittenAttribute{uri, DomString(localName), ordinal});
    return true;
}

void RunMergedSet(CExecutionContext& context, CMergedAttributeSet* set, int nesting) {
    if (context.HasFlag(CExecutionContext::NoNodes)) return context.RaiseRecoverable(CXsltException::MisplacedAttributeNode);
    RunNamedSets(context, set->m_aUsedSets, nesting + 1);
    TArray<SWrittenAttribute> written;
    for (const CMergedAttributeSet::SAttribute& entry : set->m_aAttributes) {
        auto* attribute = static_cast<CAttributeInstruction*>(entry.pInstruction.Get());
        CExecutionContext child(context, attribute, true);
        child.SetFlag(CExecutionContext::NoNodes);
        DomString name;
        DomString uri;
        if (attribute->ComputeName(child, name, uri) && MayWrite(child, written, name, uri, entry.nOrdinal)) {
            attribute->Write(child, name, uri);
        }
        child.Leave();
    }
}

}  // namespace

void RunAttributeSets(CExecutionContext& context, const TArray<SQName>& names) { RunNamedSets(context, names, 0); }

void CCommentInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CCommentInstruction> self = new CCommentInstruction();
    self->Initialise(compile);
    compile.CompileSequence(self->m_content);
    instruction = self.Get();
}

void CCommentInstruction::Execute(CExecutionContext& context) {
    if (context.HasFlag(CExecutionContext::NoNodes)) return context.RaiseRecoverable(CXsltException::MisplacedCommentNode);
    context.SetFlag(CExecutionContext::NoNodes);
    context.StartComment();
    m_content.Execute(context);
    context.EndComment();
}

void CProcessingInstructionInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CProcessingInstructionInstruction> self = new CProcessingInstructionInstruction();
    self->Initialise(compile);
    compile.GetAvt(u"name", true, self->m_pName);
    compile.CompileSequence(self->m_content);
    instruction = self.Get();
}

void CProcessingInstructionInstruction::Execute(CExecutionContext& context) {
    if (context.HasFlag(CExecutionContext::NoNodes)) {
        return context.RaiseRecoverable(CXsltException::MisplacedProcessingInstructionNode);
    }
    context.SetFlag(CExecutionContext::NoNodes);
    DomString target;
    context.EvaluateAvt(m_pName, target);
    TRefPtr<CStringSink> sink = new CStringSink();
    TRefPtr<CResultTree> tree = new CResultTree(sink);
    CExecutionContext child(context, tree);
    child.SetFlag(CExecutionContext::NoNodes);
    tree->StartDocument();
    m_content.Execute(child);
    tree->EndDocument();
    child.Leave();
    context.ProcessingInstruction(target, sink->GetText());
}

void CCopyInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CCopyInstruction> self = new CCopyInstruction();
    self->Initialise(compile);
    compile.GetQNameList(u"use-attribute-sets", self->m_aAttributeSets);
    compile.CompileSequence(self->m_content);
    instruction = self.Get();
}

void CCopyInstruction::Execute(CExecutionContext& context) {
    Dom::CNode* node = context.GetCurrentNode();
    switch (node->GetNodeType()) {
    case Dom::ELEMENT_NODE:
        if (context.HasFlag(CExecutionContext::NoNodes)) {
            return context.RaiseRecoverable(CXsltException::MisplacedElementNode);
        }
        WriteElementStart(context, node);
        if (m_aAttributeSets.GetSize() != 0) RunAttributeSets(context, m_aAttributeSets);
        m_content.Execute(context);
        context.EndElement();
        break;
    case Dom::DOCUMENT_NODE:
    case Dom::DOCUMENT_FRAGMENT_NODE:
        m_content.Execute(context);
        break;
    default:
        WriteLeaf(context, node);
        break;
    }
}

void CCopyOfInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CCopyOfInstruction> self = new CCopyOfInstruction();
    self->Initialise(compile);
    compile.GetExpression(u"select", true, self->m_pSelect);
    compile.RaiseIfNotEmpty();
    instruction = self.Get();
}

void CCopyOfInstruction::Execute(CExecutionContext& context) {
    TRefPtr<Xpath::CValue> value;
    context.Evaluate(m_pSelect, value);
    int type = value->GetType();
    if (type == Xpath::TypeNodeSet && value->GetNodeSet()) {
        TRefPtr<Xpath::CNodeIterator> iterator;
        context.CreateIterator(value->GetNodeSet(), iterator);
        for (; iterator->Current(); context.Advance(iterator)) CopyNode(context, iterator->Current(), true);
    } else if (type == CFragmentValue::TypeResultTreeFragment) {
        context.ReplayFragment(static_cast<CFragmentValue*>(value.Get())->GetBuffer());
    } else {
        DomString text;
        context.ConvertToString(value, text);
        WriteText(context, text);
    }
}

}  // namespace XsltPrivate
