// The document record, which owns every node, name, scope and text of its tree, and the
// factory that numbers documents. A document is counted; TNodeRef keeps it alive.
#pragma once
#include "core/RefObject.h"
#include "dom/Node.h"

namespace Dom {

class CDocumentData;

class CDocument : public CCountedNode {
public:
    uint32_t m_nDocumentNumber;
    uint32_t m_nOrder;
    CNode* m_pFirstChild;
    CNode* m_pLastChild;
    CDocumentData* m_pData;

    void GetDoctype() const;
    void GetImplementation() const;
    // The first child that is an element, or null.
    CElement* GetDocumentElement() const;
    void CreateElement(DomStringView tagName, TNodeRef& node);
    void CreateDocumentFragment(TNodeRef& node);
    void CreateTextNode(DomStringView data, TNodeRef& node);
    void CreateComment(DomStringView data, TNodeRef& node);
    void CreateCDATASection(DomStringView data, TNodeRef& node);
    void CreateProcessingInstruction(DomStringView target, DomStringView data, TNodeRef& node);
    void CreateAttribute(DomStringView name, TNodeRef& node);
    void CreateEntityReference(DomStringView name, TNodeRef& node);
    void GetElementsByTagName(DomStringView name, TRefPtr<CNodeList>& list) const;
    void ImportNode(CNode* node, bool deep, TNodeRef& imported);

    // The URI the document was read from, as the parser's locator gave it; may be empty.
    const DomString& GetDocumentUri() const;
    void SetDocumentUri(DomStringView uri);

    // The attribute of `node` that the DTD declared of type ID, or null (also for non-elements).
    CAttr* GetIdAttribute(const CNode* node) const;
    // The value of that attribute; false if the node has none.
    bool GetElementId(const CNode* node, DomString& id) const;
    // The first element in document order whose ID value is `id`, or null. The index is built
    // at the first call.
    CElement* GetElementById(DomStringView id) const;
    // An unparsed entity declared in the DTD; false if there is none of that name.
    bool GetUnparsedEntity(DomStringView name, DomString& systemId, DomString& publicId) const;
};

// Hands out numbered, empty documents. Numbers run from factoryNumber * 0x1000000 + 1 upwards,
// so documents of one factory order by their creation.
class CDocumentFactory : public CRefObject {
public:
    explicit CDocumentFactory(uint32_t factoryNumber);
    void CreateDocument(TNodeRef& document);
    // An empty fragment in a new document of its own, numbered like documents. The fragment
    // keeps that document alive; build it with CDocumentBuilder::CreateForFragment.
    void CreateFragment(TNodeRef& fragment);
    uint32_t GetFactoryNumber() const { return m_nFactoryNumber; }

private:
    uint32_t m_nFactoryNumber;
    uint32_t m_nNextDocumentNumber;
};

}  // namespace Dom
