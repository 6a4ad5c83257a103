// document(), key() and the run's document table.
#include "xslt/private/FunctionLibrary.h"

#include "dom/Document.h"
#include "uri/Uri.h"
#include "xpath/Converter.h"
#include "xslt/XsltException.h"
#include "xslt/private/DocumentSources.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/FormatNumber.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/Locator.h"
#include "xslt/private/KeyTable.h"
#include "xslt/private/Runtime.h"

namespace XsltPrivate {

using Xslt::CXsltException;

CDocumentTable::CDocumentTable(Xslt::CEnvironment* environment, CLocator* locator)
    : m_pEnvironment(environment), m_pLocator(locator) {}

CDocumentTable::~CDocumentTable() = default;

void CDocumentTable::Add(const DomString& uri, Dom::CNode* document) { m_documents.emplace(uri, document); }

Dom::CNode* CDocumentTable::Load(const DomString& uri) {
    auto found = m_documents.find(uri);
    if (found != m_documents.end()) return found->second.Get();
    TRefPtr<CUriSource> source = new CUriSource(m_pEnvironment);
    source->SetUri(uri);
    Dom::TNodeRef document;
    BuildDocument(m_pEnvironment, source, m_pSpaceRules, m_pLocator, document);
    m_documents.emplace(uri, document);
    return document.Get();
}

void CLibraryFunction::Call(TRefPtr<Xpath::CValue>& result, Xpath::CContext* context, const FArguments& arguments) {
    CExecutionContext& active = *m_pRuntime->GetActiveContext();
    if (arguments.GetSize() < m_nMinimum || arguments.GetSize() > m_nMaximum) {
        active.RaiseFatal(CXsltException::InvalidNumberOfArguments, m_pName);
    }
    Run(result, active, context, arguments);
}

Xpath::CNodeSet* CLibraryFunction::NodeSetArgument(CExecutionContext& active, const FArguments& arguments,
                                                   int index) const {
    Xpath::CNodeSet* nodes = arguments[index]->GetNodeSet();
    if (arguments[index]->GetType() != Xpath::TypeNodeSet || !nodes) {
        active.RaiseFatal(CXsltException::InvalidArgumentType, m_pName, index == 0 ? u"1" : u"2");
    }
    return nodes;
}

DomString CLibraryFunction::StringArgument(Xpath::CContext* context, const FArguments& arguments, int index) {
    return Xpath::CConverter(context).ToString(arguments[index]);
}

void CLibraryFunction::ResolveQName(CExecutionContext& active, DomStringView text, SQName& name) {
    DomStringView prefix;
    DomStringView localName;
    SplitQName(text, prefix, localName);
    name.sLocalName.assign(localName);
    name.sUri.clear();
    if (prefix.empty()) return;
    CInstruction* instruction = active.GetInstruction();
    if (!instruction || !instruction->GetNamespaces()->Lookup(prefix, name.sUri)) {
        active.RaiseFatal(CXsltException::UndefinedPrefix, DomString(prefix));
    }
}

namespace {

// document(object, node-set?): the documents named by the first argument, each reference
// resolved against the base node when one is given, else against the node that holds it, or
// for a string against the stylesheet element of the expression.
class CDocumentFunction : public CLibraryFunction {
public:
    explicit CDocumentFunction(CRuntime* runtime) : CLibraryFunction(runtime, u"document", 1, 2) {}

protected:
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
             const FArguments& arguments) override {
        // An empty second set gives no base node, as if there were none.
        Dom::CNode* base = arguments.GetSize() == 2 ? NodeSetArgument(active, arguments, 1)->GetFirst() : nullptr;
        if (arguments[0]->GetType() != Xpath::TypeNodeSet || !arguments[0]->GetNodeSet()) {
            Dom::CNode* document = Load(active, base, StringArgument(context, arguments, 0));
            result = new Xpath::CNodeSetValue(new Xpath::CSingleNodeSet(document));
            return;
        }
        TRefPtr<CMergedNodeSet> merged = new CMergedNodeSet(context);
        TRefPtr<Xpath::CNodeIterator> nodes;
        active.CreateIterator(arguments[0]->GetNodeSet(), nodes);
        for (; nodes->Current(); active.Advance(nodes)) {
            Dom::CNode* node = nodes->Current();
            Dom::CNode* document = Load(active, base ? base : node, node->GetStringValue());
            if (document) merged->AddOperand(new Xpath::CSingleNodeSet(document));
        }
        result = new Xpath::CNodeSetValue(merged);
    }

private:
    // The document of `reference` against `base`, or with a null base against the running
    // stylesheet element; null after a recoverable report when it cannot be had.
    Dom::CNode* Load(CExecutionContext& active, Dom::CNode* base, const DomString& reference) {
        DomString uri = base ? base->GetOwnerDocument()->GetDocumentUri() : StylesheetBase(active);
        // An empty reference or a bare fragment names the document that holds the base itself.
        bool sameDocument = reference.empty() || reference[0] == u'#';
        if (sameDocument && base) return base->GetOwnerDocument();
        if (!sameDocument) {
            try {
                Uri::CUri parsed;
                parsed.Parse(uri);
                uri = parsed.Resolve(reference);
            } catch (Core::IException* failure) {
                ReportFailure(active, CXsltException::InvalidUriSyntax, reference, failure);
                return nullptr;
            }
        }
        // A fragment travels no further than here: the document is the whole resource.
        size_t hash = uri.find(u'#');
        if (hash != DomString::npos) uri.resize(hash);
        try {
            return m_pRuntime->GetDocumentTable()->Load(uri);
        } catch (CXsltException*) {
            throw;
        } catch (Core::IException* failure) {
            ReportFailure(active, CXsltException::DocumentRetrievalError, uri, failure);
            return nullptr;
        }
    }

    static DomString StylesheetBase(CExecutionContext& active) {
        CInstruction* instruction = active.GetInstruction();
        return instruction ? instruction->GetBaseUri() : DomString();
    }

    static void ReportFailure(CExecutionContext& active, int code, const DomString& argument, Core::IException* failure) {
        DomString message;
        failure->GetMessage(message);
        delete failure;
        active.RaiseRecoverable(code, argument, message);
    }
};

// key(name, value): the nodes of the context node's document with the value under the key;
// with a node-set of values, the union of the lookups of their string values.
class CKeyFunction : public CLibraryFunction {
public:
    explicit CKeyFunction(CRuntime* runtime) : CLibraryFunction(runtime, u"key", 2, 2) {}

protected:
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
             const FArguments& arguments) override {
        SQName name;
        ResolveQName(active, StringArgument(context, arguments, 0), name);
        Dom::CNode* node = context->GetNode();
        Dom::CNode* document = node ? node->GetOwnerDocument() : nullptr;
        CKeyTable* keys = m_pRuntime->GetKeyTable();
        TRefPtr<Xpath::CNodeSet> found;
        if (arguments[1]->GetType() != Xpath::TypeNodeSet || !arguments[1]->GetNodeSet()) {
            keys->KeyLookup(active, found, document, name.sUri, name.sLocalName, StringArgument(context, arguments, 1));
            result = new Xpath::CNodeSetValue(found);
            return;
        }
        // One value that finds nodes needs no merging: its range is already in document order.
        TRefPtr<CMergedNodeSet> merged;
        TRefPtr<Xpath::CNodeSet> single;
        TRefPtr<Xpath::CNodeIterator> values;
        active.CreateIterator(arguments[1]->GetNodeSet(), values);
        for (; values->Current(); active.Advance(values)) {
            keys->KeyLookup(active, found, document, name.sUri, name.sLocalName, values->Current()->GetStringValue());
            if (found->GetLength() == 0) continue;
            if (!single) {
                single = found;
                continue;
            }
            if (!merged) {
                merged = new CMergedNodeSet(context);
                merged->AddOperand(single);
            }
            merged->AddOperand(found);
        }
        if (merged) {
            result = new Xpath::CNodeSetValue(merged);
        } else {
            result = new Xpath::CNodeSetValue(single ? single.Get() : new Xpath::CSingleNodeSet(nullptr));
        }
    }
};

}  // namespace

void AddDocumentFunctions(Xpath::CCoreFunctionLibrary* library, CRuntime* runtime) {
    library->AddFunction(u"document", new CDocumentFunction(runtime));
    library->AddFunction(u"key", new CKeyFunction(runtime));
    library->AddFunction(u"format-number", new CFormatNumberFunction(runtime));
}

}  // namespace XsltPrivate
