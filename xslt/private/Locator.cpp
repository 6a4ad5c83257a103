// Locations of nodes: per document a table of (order, line, column), filled in order of
// building, so a lookup is a binary search.
#include "xslt/private/Locator.h"

#include "dom/Document.h"
#include "dom/Node.h"

namespace XsltPrivate {

namespace {

// A node's document as the key of its records; a document is its own key.
const void* DocumentKey(const Dom::CNode* node) {
    if (node->GetNodeType() == Dom::DOCUMENT_NODE) return node;
    return static_cast<const Dom::CNode*>(node->GetOwnerDocument());
}

}  // namespace

CLocator::~CLocator() {
    for (SDocument* document : m_aDocuments) delete document;
}

void CLocator::SetLocator(Sxp::ILocator* locator) {
    m_pPendingLocator = locator;
    if (locator) return;
    m_pActiveLocator = nullptr;
    m_pActiveDocument = nullptr;
}

// The URI is taken once per document: the parser reads no external entities, so it does not
// change within one.
void CLocator::NodeCreated(Dom::CNode* node) {
    const void* key = DocumentKey(node);
    if (node->GetNodeType() == Dom::DOCUMENT_NODE) {
        m_pActiveLocator = m_pPendingLocator;
        m_pPendingLocator = nullptr;
        if (!m_pActiveLocator) {
            Remove(key);  // an older document at this address has nothing to say about this one
            m_pActiveDocument = nullptr;
            return;
        }
        m_pActiveDocument = StartDocument(key, m_pActiveLocator->GetSystemId(), m_pActiveLocator->GetPublicId());
    }
    if (!m_pActiveDocument || m_pActiveDocument->pKey != key) return;
    AddRecord(*m_pActiveDocument, node->GetOrder(), m_pActiveLocator->GetLine(), m_pActiveLocator->GetColumn());
}

void CLocator::AddLocation(const Xslt::SLocation& location, DomStringView uri, DomStringView publicId, int line,
                           int column) {
    if (location.IsNull()) return;
    SDocument* document = FindDocument(location.pKey);
    if (!document) document = StartDocument(location.pKey, uri, publicId);
    AddRecord(*document, static_cast<uint32_t>(location.nPosition), line, column);
}

bool CLocator::GetLocation(const Xslt::SLocation& location, DomString& uri, DomString& publicId, int& line,
                           int& column) const {
    if (location.IsNull()) return false;
    const SDocument* document = FindDocument(location.pKey);
    if (!document) return false;
    uint32_t order = static_cast<uint32_t>(location.nPosition);
    const TArray<SRecord>& records = document->aRecords;
    int low = 0;
    int high = records.GetSize();
    while (low < high) {
        int middle = low + (high - low) / 2;
        if (records[middle].nOrder < order) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    if (low == records.GetSize() || records[low].nOrder != order) return false;
    uri = document->sUri;
    publicId = document->sPublicId;
    line = records[low].nLine;
    column = records[low].nColumn;
    return true;
}

void CLocator::Remove(const void* key) {
    for (int i = 0; i < m_aDocuments.GetSize(); ++i) {
        if (m_aDocuments[i]->pKey != key) continue;
        if (m_pLastDocument == m_aDocuments[i]) m_pLastDocument = nullptr;
        if (m_pActiveDocument == m_aDocuments[i]) m_pActiveDocument = nullptr;
        delete m_aDocuments[i];
        m_aDocuments.RemoveAt(i);
        return;
    }
}

Xslt::SLocation CLocator::GetNodeLocation(const Dom::CNode* node) const {
    Xslt::SLocation location;
    if (!node || !FindDocument(DocumentKey(node))) return location;
    location.pKey = DocumentKey(node);
    location.nPosition = static_cast<int>(node->GetOrder());
    return location;
}

CLocator::SDocument* CLocator::FindDocument(const void* key) const {
    if (m_pLastDocument && m_pLastDocument->pKey == key) return m_pLastDocument;
    for (SDocument* document : m_aDocuments) {
        if (document->pKey == key) return m_pLastDocument = document;
    }
    return nullptr;
}

// A document built again at the address of one that is gone replaces its records.
CLocator::SDocument* CLocator::StartDocument(const void* key, DomStringView uri, DomStringView publicId) {
    Remove(key);
    SDocument* document = new SDocument;
    document->pKey = key;
    document->sUri.assign(uri);
    document->sPublicId.assign(publicId);
    m_aDocuments.Add(document);
    m_pLastDocument = document;
    return document;
}

// Records come in ascending order from a builder; a record out of order is put in its place.
void CLocator::AddRecord(SDocument& document, uint32_t order, int line, int column) {
    TArray<SRecord>& records = document.aRecords;
    SRecord record = {order, line, column};
    if (records.IsEmpty() || records.Last().nOrder < order) {
        // A document has a record per node: growing by the common step (at most 1024 items)
        // would copy the whole array a thousand times for a million nodes, so it doubles.
        if (records.GetSize() == records.GetCapacity()) records.Reserve(records.GetSize() * 2);
        records.Add(record);
        return;
    }
    int index = records.GetSize();
    while (index > 0 && records[index - 1].nOrder > order) --index;
    if (index > 0 && records[index - 1].nOrder == order) {
        records[index - 1] = record;
    } else {
        records.Insert(index, record);
    }
}

void CLocatorFactory::Create(TRefPtr<CLocator>& locator) { locator = new CLocator; }

}  // namespace XsltPrivate
