// The operation tables of the node kinds, the handle's counting and the read-only refusals.
#include "dom/Node.h"

#include "dom/Document.h"
#include "dom/DomException.h"
#include "dom/NamespaceScope.h"
#include "dom/private/DocumentData.h"
#include "dom/private/NodeLists.h"
#include "dom/private/NodeOps.h"

namespace Dom {

namespace {

// Operations every kind shares: refusals and absent links.

void ReleaseNothing(CNode*) {}
void RefuseSetValue(CNode*, DomStringView) { CDomException::ThrowReadOnly(); }
void RefuseChildNodes(const CNode*, TRefPtr<CNodeList>&) { CDomException::ThrowNotSupported(); }
void RefuseInsert(CNode*, CNode*, CNode*) { CDomException::ThrowReadOnly(); }
void RefuseRemove(CNode*, CNode*) { CDomException::ThrowReadOnly(); }
void RefuseClone(const CNode*, bool, TNodeRef&) { CDomException::ThrowNotSupported(); }
CNode* NoNode(const CNode*) { return nullptr; }
void NoList(const CNode*, TRefPtr<CNodeList>& list) { list = nullptr; }
bool NoChildren(const CNode*) { return false; }
void EmptyText(const CNode*, DomString& text) { text.clear(); }
const CName* NoName(const CNode*) { return nullptr; }

const CName* NameOf(const CNode* node) { return node->m_pClass->m_pOps->GetName(node); }

void NameUri(const CNode* node, DomString& uri) { uri = NameOf(node)->m_sNamespaceUri; }
void NameLocal(const CNode* node, DomString& local) { local = NameOf(node)->m_sLocalName; }
void NameQualified(const CNode* node, DomString& name) { name = NameOf(node)->m_sQualifiedName; }

// Sibling kinds.

const CChildNode* AsChild(const CNode* node) { return static_cast<const CChildNode*>(node); }
CNode* ChildParent(const CNode* node) { return AsChild(node)->m_pParent; }
// A first child's link back is tagged: it holds the last child instead.
CNode* ChildPrevious(const CNode* node) {
    uintptr_t previous = reinterpret_cast<uintptr_t>(AsChild(node)->m_pPrevious);
    return previous & 1 ? nullptr : reinterpret_cast<CNode*>(previous);
}
CNode* LastBehindFirst(const CNode* first) {
    if (!first) return nullptr;
    return reinterpret_cast<CNode*>(reinterpret_cast<uintptr_t>(AsChild(first)->m_pPrevious) & ~uintptr_t(1));
}
CNode* ChildNext(const CNode* node) { return AsChild(node)->m_pNext; }
uint32_t ChildOrder(const CNode* node) { return AsChild(node)->m_nOrder; }

// Text of containers: every text, comment and processing instruction below, in order. The walk
// is iterative so that deep trees cannot exhaust the stack.
void AppendSubtree(const CNode* root, DomString& value) {
    const CNode* node = root->GetFirstChild();
    while (node) {
        const CNode* child = node->GetFirstChild();
        if (child) {
            node = child;
            continue;
        }
        if (node->GetNodeType() != ELEMENT_NODE) node->AppendStringValue(value);
        while (node != root) {
            const CNode* next = node->GetNextSibling();
            if (next) {
                node = next;
                break;
            }
            node = node->GetParentNode();
        }
        if (node == root) break;
    }
}

// Element.

const CElement* AsElement(const CNode* node) { return static_cast<const CElement*>(node); }
CNode* ElementFirst(const CNode* node) { return AsElement(node)->m_pFirstChild; }
CNode* ElementLast(const CNode* node) { return LastBehindFirst(AsElement(node)->m_pFirstChild); }
bool ElementHasChildren(const CNode* node) { return AsElement(node)->m_pFirstChild != nullptr; }
const CName* ElementName(const CNode* node) { return AsElement(node)->m_pName; }
void ElementAttributes(const CNode* node, TRefPtr<CNodeList>& list) {
    list = new CAttributeList(AsElement(node));
}
void ElementNamespaces(const CNode* node, TRefPtr<CNodeList>& list) {
    list = new CNamespaceList(AsElement(node)->m_pScope);
}

// Attribute.

const CAttr* AsAttr(const CNode* node) { return static_cast<const CAttr*>(node); }
void AttrValue(const CNode* node, DomString& value) { value = AsAttr(node)->m_pValue; }
CNode* AttrOwner(const CNode* node) { return AsAttr(node)->m_pOwner; }
uint32_t AttrOrder(const CNode* node) { return AsAttr(node)->m_nOrder; }
void AttrAppend(const CNode* node, DomString& value) { value += AsAttr(node)->m_pValue; }
const CName* AttrName(const CNode* node) { return AsAttr(node)->m_pName; }

// Text and comment.

const CCharacterData* AsData(const CNode* node) { return static_cast<const CCharacterData*>(node); }
void DataValue(const CNode* node, DomString& value) { value = AsData(node)->GetDataPointer(); }
void DataAppend(const CNode* node, DomString& value) { value += AsData(node)->GetDataPointer(); }
void TextName(const CNode*, DomString& name) { name = u"#text"; }
void CommentName(const CNode*, DomString& name) { name = u"#comment"; }

// Processing instruction.

const CProcessingInstruction* AsPi(const CNode* node) { return static_cast<const CProcessingInstruction*>(node); }
void PiName(const CNode* node, DomString& name) { name = AsPi(node)->m_pTarget; }
void PiValue(const CNode* node, DomString& value) { value = AsPi(node)->m_pData; }
void PiAppend(const CNode* node, DomString& value) { value += AsPi(node)->m_pData; }

// Namespace node.

const CNamespaceNode* AsBinding(const CNode* node) { return static_cast<const CNamespaceNode*>(node); }
void BindingName(const CNode* node, DomString& name) { name = AsBinding(node)->m_sPrefix; }
void BindingValue(const CNode* node, DomString& value) { value = AsBinding(node)->m_sUri; }
// A namespace node has no name record; its local name is its prefix, so that name tests such
// as namespace::xml work.
CNode* BindingOwner(const CNode* node) { return AsBinding(node)->m_pOwner; }
uint32_t BindingOrder(const CNode* node) { return AsBinding(node)->m_nOrder; }
void BindingAppend(const CNode* node, DomString& value) { value += AsBinding(node)->m_sUri; }

// Document and fragment.

const CDocument* AsDocument(const CNode* node) { return static_cast<const CDocument*>(node); }
void ReleaseDocument(CNode* node) {
    CDocument* document = static_cast<CDocument*>(node);
    delete document->m_pData;
    delete document;
}
void DocumentName(const CNode*, DomString& name) { name = u"#document"; }
CNode* DocumentFirst(const CNode* node) { return AsDocument(node)->m_pFirstChild; }
CNode* DocumentLast(const CNode* node) { return AsDocument(node)->m_pLastChild; }
bool DocumentHasChildren(const CNode* node) { return AsDocument(node)->m_pFirstChild != nullptr; }
uint32_t DocumentOrder(const CNode* node) { return AsDocument(node)->m_nOrder; }

const CDocumentFragment* AsFragment(const CNode* node) { return static_cast<const CDocumentFragment*>(node); }
// A fragment holds one count on the document that owns its records.
void ReleaseFragment(CNode* node) {
    CDocument* owner = node->GetOwnerDocument();
    delete static_cast<CDocumentFragment*>(node);
    if (--owner->m_nRefCount < 1) ReleaseDocument(owner);
}
void FragmentName(const CNode*, DomString& name) { name = u"#document-fragment"; }
CNode* FragmentFirst(const CNode* node) { return AsFragment(node)->m_pFirstChild; }
CNode* FragmentLast(const CNode* node) { return AsFragment(node)->m_pLastChild; }
bool FragmentHasChildren(const CNode* node) { return AsFragment(node)->m_pFirstChild != nullptr; }
uint32_t FragmentOrder(const CNode* node) { return AsFragment(node)->m_nOrder; }

}  // namespace

// Field order: counted, Release, GetNodeName, GetNodeValue, SetNodeValue, GetParentNode,
// GetChildNodes, GetFirstChild, GetLastChild, GetPreviousSibling, GetNextSibling,
// GetAttributes, GetNamespaces, InsertBefore, ReplaceChild, RemoveChild, AppendChild,
// HasChildNodes, CloneNode, GetNamespaceUri, GetLocalName, GetOrder, AppendStringValue, GetName.
extern const CNodeOps g_oElementOps = {
    false,          ReleaseNothing, NameQualified,      EmptyText,        RefuseSetValue, ChildParent,
    RefuseChildNodes, ElementFirst, ElementLast,        ChildPrevious,    ChildNext,      ElementAttributes,
    ElementNamespaces, RefuseInsert, RefuseInsert,      RefuseRemove,     RefuseRemove,   ElementHasChildren,
    RefuseClone,    NameUri,        NameLocal,          ChildOrder,       AppendSubtree,  ElementName,
};
extern const CNodeOps g_oAttributeOps = {
    false,         ReleaseNothing, NameQualified, AttrValue,    RefuseSetValue, AttrOwner,  RefuseChildNodes,
    NoNode,        NoNode,         NoNode,        NoNode,       NoList,         NoList,     RefuseInsert,
    RefuseInsert,  RefuseRemove,   RefuseRemove,  NoChildren,   RefuseClone,    NameUri,    NameLocal,
    AttrOrder,     AttrAppend,     AttrName,
};
extern const CNodeOps g_oTextOps = {
    false,        ReleaseNothing, TextName,      DataValue,     RefuseSetValue, ChildParent,  RefuseChildNodes,
    NoNode,       NoNode,         ChildPrevious, ChildNext,     NoList,         NoList,       RefuseInsert,
    RefuseInsert, RefuseRemove,   RefuseRemove,  NoChildren,    RefuseClone,    EmptyText,    EmptyText,
    ChildOrder,   DataAppend,     NoName,
};
extern const CNodeOps g_oCommentOps = {
    false,        ReleaseNothing, CommentName,   DataValue,     RefuseSetValue, ChildParent,  RefuseChildNodes,
    NoNode,       NoNode,         ChildPrevious, ChildNext,     NoList,         NoList,       RefuseInsert,
    RefuseInsert, RefuseRemove,   RefuseRemove,  NoChildren,    RefuseClone,    EmptyText,    EmptyText,
    ChildOrder,   DataAppend,     NoName,
};
extern const CNodeOps g_oProcessingInstructionOps = {
    false,        ReleaseNothing, PiName,        PiValue,       RefuseSetValue, ChildParent,  RefuseChildNodes,
    NoNode,       NoNode,         ChildPrevious, ChildNext,     NoList,         NoList,       RefuseInsert,
    RefuseInsert, RefuseRemove,   RefuseRemove,  NoChildren,    RefuseClone,    EmptyText,    EmptyText,
    ChildOrder,   PiAppend,       NoName,
};
extern const CNodeOps g_oNamespaceOps = {
    false,        ReleaseNothing, BindingName,   BindingValue,  RefuseSetValue, BindingOwner, RefuseChildNodes,
    NoNode,       NoNode,         NoNode,        NoNode,        NoList,         NoList,       RefuseInsert,
    RefuseInsert, RefuseRemove,   RefuseRemove,  NoChildren,    RefuseClone,    EmptyText,    BindingName,
    BindingOrder, BindingAppend,  NoName,
};
extern const CNodeOps g_oDocumentOps = {
    true,          ReleaseDocument, DocumentName,  EmptyText,     RefuseSetValue, NoNode,
    RefuseChildNodes, DocumentFirst, DocumentLast, NoNode,        NoNode,         NoList,
    NoList,        RefuseInsert,    RefuseInsert,  RefuseRemove,  RefuseRemove,   DocumentHasChildren,
    RefuseClone,   EmptyText,       EmptyText,     DocumentOrder, AppendSubtree,  NoName,
};
extern const CNodeOps g_oFragmentOps = {
    true,          ReleaseFragment, FragmentName,  EmptyText,     RefuseSetValue, NoNode,
    RefuseChildNodes, FragmentFirst, FragmentLast, NoNode,        NoNode,         NoList,
    NoList,        RefuseInsert,    RefuseInsert,  RefuseRemove,  RefuseRemove,   FragmentHasChildren,
    RefuseClone,   EmptyText,       EmptyText,     FragmentOrder, AppendSubtree,  NoName,
};

// CNode

DomString CNode::GetNodeName() const {
    DomString name;
    m_pClass->m_pOps->GetNodeName(this, name);
    return name;
}

DomString CNode::GetNodeValue() const {
    DomString value;
    m_pClass->m_pOps->GetNodeValue(this, value);
    return value;
}

DomString CNode::GetNamespaceUri() const {
    DomString uri;
    m_pClass->m_pOps->GetNamespaceUri(this, uri);
    return uri;
}

DomString CNode::GetLocalName() const {
    DomString local;
    m_pClass->m_pOps->GetLocalName(this, local);
    return local;
}

DomString CNode::GetStringValue() const {
    DomString value;
    m_pClass->m_pOps->AppendStringValue(this, value);
    return value;
}

int CNode::GetAttributeCount() const {
    return GetNodeType() == ELEMENT_NODE ? static_cast<const CElement*>(this)->m_nAttributeCount : 0;
}

CAttr* CNode::GetAttributeAt(int index) const {
    if (index < 0 || index >= GetAttributeCount()) return nullptr;
    return static_cast<const CElement*>(this)->GetAttributeArray() + index;
}

int CNode::GetNamespaceCount() const {
    return GetNodeType() == ELEMENT_NODE ? static_cast<const CElement*>(this)->m_pScope->GetCount() : 0;
}

CNamespaceNode* CNode::GetNamespaceAt(int index) const {
    if (index < 0 || index >= GetNamespaceCount()) return nullptr;
    return static_cast<const CElement*>(this)->m_pScope->GetAt(index);
}

DomStringView CNode::GetTextView() const {
    switch (GetNodeType()) {
    case ATTRIBUTE_NODE:
        return AsAttr(this)->GetValueView();
    case TEXT_NODE:
    case COMMENT_NODE:
        return AsData(this)->GetDataView();
    case PROCESSING_INSTRUCTION_NODE:
        return AsPi(this)->GetDataView();
    case NAMESPACE_NODE:
        return AsBinding(this)->m_sUri;
    default:
        return DomStringView();
    }
}

// Order

namespace {

// The order key of a node: its own order number, or for a namespace node the order number of
// its owner with the ordinal as a second key. Attributes of the owner come after it.
struct SOrderKey {
    uint32_t nOrder;
    uint32_t nOrdinal;  // 0 for the node itself, the ordinal for a namespace node
};

SOrderKey OrderKey(const CNode* node) {
    if (node->GetNodeType() != NAMESPACE_NODE) return {node->GetOrder(), 0};
    const CNamespaceNode* binding = AsBinding(node);
    return {binding->m_pOwner ? binding->m_pOwner->GetOrder() : 0, binding->m_nOrder};
}

}  // namespace

int CompareDocumentOrder(const CNode* a, const CNode* b) {
    if (a == b) return 0;
    uint32_t documentA = a->GetDocumentNumber();
    uint32_t documentB = b->GetDocumentNumber();
    if (documentA != documentB) return documentA < documentB ? -1 : 1;
    SOrderKey keyA = OrderKey(a);
    SOrderKey keyB = OrderKey(b);
    if (keyA.nOrder != keyB.nOrder) {
        // A namespace node precedes whatever follows its owner, the owner's attributes too.
        if (keyA.nOrdinal && keyB.nOrder > keyA.nOrder) return -1;
        if (keyB.nOrdinal && keyA.nOrder > keyB.nOrder) return 1;
        return keyA.nOrder < keyB.nOrder ? -1 : 1;
    }
    if (keyA.nOrdinal != keyB.nOrdinal) return keyA.nOrdinal < keyB.nOrdinal ? -1 : 1;
    return 0;
}

// TNodeRef

void TNodeRef::ReleaseCounted(CNode* node) {
    CCountedNode* counted = static_cast<CCountedNode*>(node);
    if (--counted->m_nRefCount < 1) counted->m_pClass->m_pOps->Release(counted);
}

// CElement

CAttr* CElement::GetAttributeArray() const {
    return reinterpret_cast<CAttr*>(const_cast<CElement*>(this) + 1);
}

CAttr* CElement::GetAttributeNode(DomStringView name) const {
    CAttr* attributes = GetAttributeArray();
    for (int i = 0; i < m_nAttributeCount; ++i) {
        if (attributes[i].m_pName->m_sQualifiedName == name) return attributes + i;
    }
    return nullptr;
}

CAttr* CElement::GetAttributeNodeNs(DomStringView namespaceUri, DomStringView localName) const {
    CAttr* attributes = GetAttributeArray();
    for (int i = 0; i < m_nAttributeCount; ++i) {
        const CName* name = attributes[i].m_pName;
        if (name->m_sLocalName == localName && name->m_sNamespaceUri == namespaceUri) return attributes + i;
    }
    return nullptr;
}

DomString CElement::GetAttribute(DomStringView name) const {
    CAttr* attribute = GetAttributeNode(name);
    return attribute ? DomString(attribute->m_pValue) : DomString();
}

DomString CElement::GetNamespace(DomStringView prefix) const {
    CNamespaceNode* binding = m_pScope->Find(prefix);
    return binding ? binding->m_sUri : DomString();
}

CNamespaceNode* CElement::GetNamespaceNode(DomStringView prefix) const { return m_pScope->Find(prefix); }

void CElement::SetAttribute(DomStringView, DomStringView) { CDomException::ThrowReadOnly(); }
void CElement::RemoveAttribute(DomStringView) { CDomException::ThrowReadOnly(); }
void CElement::SetAttributeNode(CAttr*) { CDomException::ThrowReadOnly(); }
void CElement::RemoveAttributeNode(CAttr*) { CDomException::ThrowReadOnly(); }
void CElement::GetElementsByTagName(DomStringView, TRefPtr<CNodeList>&) const {
    CDomException::ThrowNotSupported();
}
void CElement::SetNamespace(DomStringView, DomStringView) { CDomException::ThrowReadOnly(); }
void CElement::RemoveNamespace(DomStringView) { CDomException::ThrowReadOnly(); }
void CElement::SetNamespaceNode(CNamespaceNode*) { CDomException::ThrowReadOnly(); }
void CElement::RemoveNamespaceNode(CNamespaceNode*) { CDomException::ThrowReadOnly(); }

// CAttr, CNamespaceNode

void CAttr::GetSpecified() const { CDomException::ThrowNotSupported(); }
void CAttr::SetValue(DomStringView) { CDomException::ThrowReadOnly(); }
void CNamespaceNode::SetValue(DomStringView) { CDomException::ThrowReadOnly(); }

// CCharacterData, CText, CProcessingInstruction

int CCharacterData::GetLength() const {
    return static_cast<int>(std::char_traits<DomChar>::length(GetDataPointer()));
}

DomString CCharacterData::SubstringData(int offset, int count) const {
    int length = GetLength();
    if (offset < 0 || offset > length || count < 0) throw new CDomException(CDomException::INDEX_SIZE_ERR);
    if (count > length - offset) count = length - offset;
    return DomString(GetDataPointer() + offset, static_cast<size_t>(count));
}

void CCharacterData::SetData(DomStringView) { CDomException::ThrowReadOnly(); }
void CCharacterData::AppendData(DomStringView) { CDomException::ThrowReadOnly(); }
void CCharacterData::InsertData(int, DomStringView) { CDomException::ThrowReadOnly(); }
void CCharacterData::DeleteData(int, int) { CDomException::ThrowReadOnly(); }
void CCharacterData::ReplaceData(int, int, DomStringView) { CDomException::ThrowReadOnly(); }
void CText::SplitText(int) { CDomException::ThrowReadOnly(); }
void CProcessingInstruction::SetData(DomStringView) { CDomException::ThrowReadOnly(); }

// CNodeList

void CNodeList::SetNamedItem(CNode*) { CDomException::ThrowReadOnly(); }
void CNodeList::RemoveNamedItem(DomStringView) { CDomException::ThrowReadOnly(); }

}  // namespace Dom
