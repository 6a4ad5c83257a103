// Contexts, the document-kept node order, and the default treatment of extension types.
#include "xpath/Context.h"

#include "dom/Document.h"
#include "xpath/NodeSet.h"
#include "xpath/SortedNodeList.h"
#include "xpath/Value.h"
#include "xpath/XpathException.h"

namespace Xpath {

namespace {

class CDefaultExtensionConverter : public IExtensionConverter {
public:
    bool ToBoolean(CContext*, CValue* value) override { return value->GetBoolean(); }
    void ToNumber(CNumber& number, CContext*, CValue* value) override { number = value->GetNumber(); }
    void ToString(DomString& text, CContext*, CValue* value) override { text = value->GetString(); }
};

class CDefaultExtensionComparer : public IExtensionComparer {
public:
    bool CompareLeft(int, CValue*, CValue*) override {
        throw new CXpathException(CXpathException::ExtensionComparison);
    }
    bool CompareRight(int, CValue*, CValue*) override {
        throw new CXpathException(CXpathException::ExtensionComparison);
    }
};

}  // namespace

bool CDocumentNodeOrder::GetElementId(const Dom::CNode* node, DomString& id) {
    return node->GetOwnerDocument()->GetElementId(node, id);
}

Dom::CNode* CDocumentNodeOrder::GetElementById(const Dom::CNode* document, DomStringView id) {
    return document->GetOwnerDocument()->GetElementById(id);
}

int CDocumentNodeOrder::Compare(const Dom::CNode* a, const Dom::CNode* b) { return Dom::CompareDocumentOrder(a, b); }

CDefaultExtensionTypes::CDefaultExtensionTypes()
    : m_pListFactory(new CSortedNodeListFactory()),
      m_pConverter(new CDefaultExtensionConverter()),
      m_pComparer(new CDefaultExtensionComparer()) {}

CDefaultExtensionTypes::~CDefaultExtensionTypes() = default;

CSortedNodeListFactory* CDefaultExtensionTypes::GetListFactory() { return m_pListFactory; }

CContext::CContext(CNodeIterator* iterator, IVariableBindings* variables, IFunctionLibrary* functions,
                   INamespaceResolver* namespaces, INodeOrder* nodeOrder, IExtensionTypes* extensionTypes)
    : m_pIterator(iterator),
      m_pVariables(variables),
      m_pFunctions(functions),
      m_pNamespaces(namespaces),
      m_pNodeOrder(nodeOrder),
      m_pExtensionTypes(extensionTypes) {
    // Paths and unions need an order and a list factory; a host that gives none gets the
    // documents' own order and the plain extension treatment.
    if (!m_pNodeOrder) m_pNodeOrder = new CDocumentNodeOrder();
    if (!m_pExtensionTypes) m_pExtensionTypes = new CDefaultExtensionTypes();
}

CContext::CContext(const CContext* base, CNodeIterator* iterator)
    : m_pIterator(iterator),
      m_pVariables(base->m_pVariables),
      m_pFunctions(base->m_pFunctions),
      m_pNamespaces(base->m_pNamespaces),
      m_pNodeOrder(base->m_pNodeOrder),
      m_pExtensionTypes(base->m_pExtensionTypes) {}

CContext::~CContext() = default;

void CContext::CreateForNode(TRefPtr<CContext>& context, const CContext* base, Dom::CNode* node) {
    TRefPtr<CNodeSet> set(new CSingleNodeSet(node));
    TRefPtr<CNodeIterator> iterator;
    set->CreateIterator(iterator);
    context = new CContext(base, iterator);
}

Dom::CNode* CContext::GetNode() const { return m_pIterator ? m_pIterator->Current() : nullptr; }

int32_t CContext::GetPosition() const { return m_pIterator ? m_pIterator->GetPosition() : 0; }

int32_t CContext::GetSize() const { return m_pIterator ? m_pIterator->GetNodeSet()->GetLength() : 0; }

}  // namespace Xpath
