// The node model: every node is a plain record in a chunk of its document. The record starts
// with a pointer to its kind's CNodeClass, and all behaviour goes through the class's table of
// operations; no node has a virtual table, a destructor or a count of its own except documents
// and fragments. Reading a tree allocates nothing: links are pointers, names interned records,
// and texts zero-terminated 16-bit runs inside the document's text chunks.
#pragma once
#include <cstdint>
#include <string>

#include "core/DomString.h"
#include "core/RefObject.h"
#include "dom/Name.h"

namespace Dom {

class CNode;
class CNodeList;
class CNamespaceScope;
class CNamespaceNode;
class CAttr;
class CElement;
class CDocument;
class TNodeRef;

// DOM type codes, and 13 for the XPath namespace node.
enum ENodeType : int {
    ELEMENT_NODE = 1,
    ATTRIBUTE_NODE = 2,
    TEXT_NODE = 3,
    CDATA_SECTION_NODE = 4,
    PROCESSING_INSTRUCTION_NODE = 7,
    COMMENT_NODE = 8,
    DOCUMENT_NODE = 9,
    DOCUMENT_FRAGMENT_NODE = 11,
    NAMESPACE_NODE = 13
};

// The operations shared by all kinds, one static table per kind. Texts are handed out through
// out-parameters; AppendStringValue appends so that a walk can gather into one buffer.
struct CNodeOps {
    bool m_bCounted;
    void (*Release)(CNode* node);
    void (*GetNodeName)(const CNode* node, DomString& name);
    void (*GetNodeValue)(const CNode* node, DomString& value);
    void (*SetNodeValue)(CNode* node, DomStringView value);
    CNode* (*GetParentNode)(const CNode* node);
    void (*GetChildNodes)(const CNode* node, TRefPtr<CNodeList>& list);
    CNode* (*GetFirstChild)(const CNode* node);
    CNode* (*GetLastChild)(const CNode* node);
    CNode* (*GetPreviousSibling)(const CNode* node);
    CNode* (*GetNextSibling)(const CNode* node);
    void (*GetAttributes)(const CNode* node, TRefPtr<CNodeList>& list);
    void (*GetNamespaces)(const CNode* node, TRefPtr<CNodeList>& list);
    void (*InsertBefore)(CNode* node, CNode* newChild, CNode* refChild);
    void (*ReplaceChild)(CNode* node, CNode* newChild, CNode* oldChild);
    void (*RemoveChild)(CNode* node, CNode* oldChild);
    void (*AppendChild)(CNode* node, CNode* newChild);
    bool (*HasChildNodes)(const CNode* node);
    void (*CloneNode)(const CNode* node, bool deep, TNodeRef& clone);
    void (*GetNamespaceUri)(const CNode* node, DomString& uri);
    void (*GetLocalName)(const CNode* node, DomString& localName);
    uint32_t (*GetOrder)(const CNode* node);
    void (*AppendStringValue)(const CNode* node, DomString& value);
    // The interned name of an element or attribute, null for the other kinds.
    const CName* (*GetName)(const CNode* node);
};

// The descriptor of one kind in one document.
class CNodeClass {
public:
    bool m_bCounted;
    int32_t m_nType;
    uint32_t m_nDocumentNumber;
    CDocument* m_pDocument;
    const CNodeOps* m_pOps;
};

class CNode {
public:
    const CNodeClass* m_pClass;

    int GetNodeType() const { return m_pClass->m_nType; }
    uint32_t GetDocumentNumber() const { return m_pClass->m_nDocumentNumber; }
    // The document that owns the record (for a fragment's nodes, the fragment's document).
    CDocument* GetOwnerDocument() const { return m_pClass->m_pDocument; }

    DomString GetNodeName() const;
    DomString GetNodeValue() const;
    void SetNodeValue(DomStringView value) { m_pClass->m_pOps->SetNodeValue(this, value); }
    CNode* GetParentNode() const { return m_pClass->m_pOps->GetParentNode(this); }
    void GetChildNodes(TRefPtr<CNodeList>& list) const { m_pClass->m_pOps->GetChildNodes(this, list); }
    CNode* GetFirstChild() const { return m_pClass->m_pOps->GetFirstChild(this); }
    CNode* GetLastChild() const { return m_pClass->m_pOps->GetLastChild(this); }
    CNode* GetPreviousSibling() const { return m_pClass->m_pOps->GetPreviousSibling(this); }
    CNode* GetNextSibling() const { return m_pClass->m_pOps->GetNextSibling(this); }
    // A new list on the attributes (namespace bindings) of an element; null for other kinds.
    void GetAttributes(TRefPtr<CNodeList>& list) const { m_pClass->m_pOps->GetAttributes(this, list); }
    void GetNamespaces(TRefPtr<CNodeList>& list) const { m_pClass->m_pOps->GetNamespaces(this, list); }
    void InsertBefore(CNode* newChild, CNode* refChild) { m_pClass->m_pOps->InsertBefore(this, newChild, refChild); }
    void ReplaceChild(CNode* newChild, CNode* oldChild) { m_pClass->m_pOps->ReplaceChild(this, newChild, oldChild); }
    void RemoveChild(CNode* oldChild) { m_pClass->m_pOps->RemoveChild(this, oldChild); }
    void AppendChild(CNode* newChild) { m_pClass->m_pOps->AppendChild(this, newChild); }
    bool HasChildNodes() const { return m_pClass->m_pOps->HasChildNodes(this); }
    void CloneNode(bool deep, TNodeRef& clone) const { m_pClass->m_pOps->CloneNode(this, deep, clone); }
    DomString GetNamespaceUri() const;
    DomString GetLocalName() const;
    uint32_t GetOrder() const { return m_pClass->m_pOps->GetOrder(this); }
    // The XPath string-value: the text of a leaf, or all text, comment and processing
    // instruction data below a container, in document order.
    DomString GetStringValue() const;
    void AppendStringValue(DomString& value) const { m_pClass->m_pOps->AppendStringValue(this, value); }

    // Allocation-free access for the engine. Only elements and attributes have a name record;
    // a namespace node's local name is its prefix (CNamespaceNode::m_sPrefix), and a processing
    // instruction's name is its target with an empty local name.
    const CName* GetName() const { return m_pClass->m_pOps->GetName(this); }
    // Attributes and namespace nodes of an element by index; 0 and null for other kinds.
    int GetAttributeCount() const;
    CAttr* GetAttributeAt(int index) const;
    int GetNamespaceCount() const;
    CNamespaceNode* GetNamespaceAt(int index) const;
    // The text, data or value of a leaf kind as a view into the document (empty for the
    // other kinds); a namespace node gives its URI.
    DomStringView GetTextView() const;
};

// Order of two nodes: by document number, then order number. A namespace node sorts right after
// the element that owns it, before that element's attributes, and among its peers by ordinal.
int CompareDocumentOrder(const CNode* a, const CNode* b);

// The handle held by the rest of the system. It counts only documents and fragments; a handle
// to any other node costs nothing and is valid only while its document lives.
class TNodeRef {
public:
    TNodeRef() = default;
    TNodeRef(CNode* node) : m_pNode(node) { AddRef(); }
    TNodeRef(const TNodeRef& other) : m_pNode(other.m_pNode) { AddRef(); }
    TNodeRef(TNodeRef&& other) noexcept : m_pNode(other.m_pNode) { other.m_pNode = nullptr; }
    ~TNodeRef() { Drop(); }
    inline TNodeRef& operator=(CNode* node);
    TNodeRef& operator=(const TNodeRef& other) { return *this = other.m_pNode; }
    inline TNodeRef& operator=(TNodeRef&& other) noexcept;

    CNode* Get() const { return m_pNode; }
    CNode* operator->() const { return m_pNode; }
    operator CNode*() const { return m_pNode; }
    explicit operator bool() const { return m_pNode != nullptr; }

private:
    inline void AddRef();
    inline void Drop();
    // Gives back one count of a counted node, releasing it at the last.
    static void ReleaseCounted(CNode* node);

    CNode* m_pNode = nullptr;
};

// Common head of documents and fragments, the only records with a count.
class CCountedNode : public CNode {
public:
    int32_t m_nRefCount;
};

// Handles are made and dropped per node on every walk; most point at uncounted nodes, so the
// counting stays inline and costs one test for them.
inline void TNodeRef::AddRef() {
    if (m_pNode && m_pNode->m_pClass->m_bCounted) ++static_cast<CCountedNode*>(m_pNode)->m_nRefCount;
}

inline void TNodeRef::Drop() {
    if (m_pNode && m_pNode->m_pClass->m_bCounted) ReleaseCounted(m_pNode);
}

inline TNodeRef& TNodeRef::operator=(CNode* node) {
    CNode* old = m_pNode;
    m_pNode = node;
    AddRef();
    if (old && old->m_pClass->m_bCounted) ReleaseCounted(old);
    return *this;
}

inline TNodeRef& TNodeRef::operator=(TNodeRef&& other) noexcept {
    if (this != &other) {
        Drop();
        m_pNode = other.m_pNode;
        other.m_pNode = nullptr;
    }
    return *this;
}

// Common head of the kinds that live among siblings. The 32 bits beside the order number are
// the attribute count of an element and the distance to the data of a text or comment; the
// other kinds leave them 0.
class CChildNode : public CNode {
public:
    uint32_t m_nOrder;
    union {
        int32_t m_nAttributeCount;
        int32_t m_nDataOffset;
    };
    CNode* m_pParent;
    // For a first child, its parent's last child tagged with the low bit, which saves every
    // element a pointer; read it through GetPreviousSibling.
    CNode* m_pPrevious;
    CNode* m_pNext;
};

// An element; its attribute records follow it directly in the chunk. Its last child is found
// through the first (see CChildNode::m_pPrevious).
class CElement : public CChildNode {
public:
    CNode* m_pFirstChild;
    const CName* m_pName;
    CNamespaceScope* m_pScope;

    CAttr* GetAttributeArray() const;
    const DomString& GetTagName() const { return m_pName->m_sQualifiedName; }
    DomString GetAttribute(DomStringView name) const;
    void SetAttribute(DomStringView name, DomStringView value);
    void RemoveAttribute(DomStringView name);
    CAttr* GetAttributeNode(DomStringView name) const;
    // The attribute of the given namespace URI and local name, or null.
    CAttr* GetAttributeNodeNs(DomStringView namespaceUri, DomStringView localName) const;
    void SetAttributeNode(CAttr* attribute);
    void RemoveAttributeNode(CAttr* attribute);
    void GetElementsByTagName(DomStringView name, TRefPtr<CNodeList>& list) const;
    DomString GetNamespace(DomStringView prefix) const;
    void SetNamespace(DomStringView prefix, DomStringView uri);
    void RemoveNamespace(DomStringView prefix);
    CNamespaceNode* GetNamespaceNode(DomStringView prefix) const;
    void SetNamespaceNode(CNamespaceNode* binding);
    void RemoveNamespaceNode(CNamespaceNode* binding);
};

class CAttr : public CNode {
public:
    uint32_t m_nOrder;
    CElement* m_pOwner;
    const CName* m_pName;
    const DomChar* m_pValue;

    const DomString& GetName() const { return m_pName->m_sQualifiedName; }
    void GetSpecified() const;
    DomString GetValue() const { return DomString(m_pValue); }
    DomStringView GetValueView() const { return DomStringView(m_pValue); }
    void SetValue(DomStringView value);
};

// Text and comment share their layout and their data operations. The data is a zero-terminated
// run m_nDataOffset bytes from the record; the builder keeps it that near, which saves a pointer
// on the most numerous kind.
class CCharacterData : public CChildNode {
public:
    const DomChar* GetDataPointer() const {
        uintptr_t data = reinterpret_cast<uintptr_t>(this) + static_cast<uintptr_t>(intptr_t{m_nDataOffset});
        return reinterpret_cast<const DomChar*>(data);
    }
    DomString GetData() const { return DomString(GetDataPointer()); }
    DomStringView GetDataView() const { return DomStringView(GetDataPointer()); }
    void SetData(DomStringView data);
    int GetLength() const;
    // Code 1 if the offset is negative or past the length or the count negative; a count
    // past the end stops at the end.
    DomString SubstringData(int offset, int count) const;
    void AppendData(DomStringView data);
    void InsertData(int offset, DomStringView data);
    void DeleteData(int offset, int count);
    void ReplaceData(int offset, int count, DomStringView data);
};

class CText : public CCharacterData {
public:
    void SplitText(int offset);
};

class CComment : public CCharacterData {};

class CProcessingInstruction : public CChildNode {
public:
    const DomChar* m_pTarget;
    const DomChar* m_pData;

    DomString GetTarget() const { return DomString(m_pTarget); }
    DomStringView GetTargetView() const { return DomStringView(m_pTarget); }
    DomString GetData() const { return DomString(m_pData); }
    DomStringView GetDataView() const { return DomStringView(m_pData); }
    void SetData(DomStringView data);
};

// A binding in a namespace scope. It lives in the scope's table; m_nOrder is its ordinal in
// the scope from 1, and 0 marks a free slot.
class CNamespaceNode : public CNode {
public:
    uint32_t m_nOrder;
    CNode* m_pOwner;
    DomString m_sPrefix;
    DomString m_sUri;
    unsigned int m_nHash;

    const DomString& GetName() const { return m_sPrefix; }
    const DomString& GetValue() const { return m_sUri; }
    void SetValue(DomStringView value);
};

class CDocumentFragment : public CCountedNode {
public:
    uint32_t m_nOrder;
    CNode* m_pFirstChild;
    CNode* m_pLastChild;
};

// A counted view on the attributes or the namespace bindings of an element.
class CNodeList : public CRefObject {
public:
    virtual int GetLength() const = 0;
    virtual CNode* GetNamedItem(DomStringView name) const = 0;
    virtual void SetNamedItem(CNode* node);
    virtual void RemoveNamedItem(DomStringView name);
    // No bounds check: callers stay below GetLength.
    virtual CNode* Item(int index) const = 0;
};

}  // namespace Dom
