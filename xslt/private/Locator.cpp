// Locations of nodes: per document the places of its nodes in order of building, packed by line,
// so a lookup is a binary search over the lines and a short walk within one.
#include "xslt/private/Locator.h"

#include <algorithm>
#include <new>

#include "dom/Document.h"
#include "dom/Node.h"

namespace XsltPrivate {

namespace {

// A node's document as the key of its records; a document is its own key.
const void* DocumentKey(const Dom::CNode* node) {
    if (node->GetNodeType() == Dom::DOCUMENT_NODE) return node;
    return static_cast<const Dom::CNode*>(node->GetOwnerDocument());
}

// Writes the column in 15-bit groups, lowest first, and returns the unit behind it.
uint16_t* PutColumn(uint16_t* at, uint32_t column) {
    while (column >= 0x8000) {
        *at++ = static_cast<uint16_t>(column | 0x8000);
        column >>= 15;
    }
    *at++ = static_cast<uint16_t>(column);
    return at;
}

template <class TUnits>
uint32_t TakeColumn(const TUnits& stream, int& at) {
    uint32_t column = 0;
    for (int shift = 0;; shift += 15) {
        uint16_t unit = stream[at++];
        column |= static_cast<uint32_t>(unit & 0x7FFF) << shift;
        if (!(unit & 0x8000)) return column;
    }
}

}  // namespace

CLocator::~CLocator() {
    for (SDocument* document : m_aDocuments) delete document;
}

void CLocator::SetLocator(Sxp::ILocator* locator) {
    m_pPendingLocator = locator;
    m_pFastKey = nullptr;
    if (locator) return;
    m_pPositionSlot = nullptr;
    m_pActiveDocument = nullptr;
}

// The common node: of the document being read, on the line of the node before it, one order
// after it, at a column below 32768. Its unit goes to the stream without a call, so that the
// function needs no frame.
void CLocator::NodeCreated(Dom::CNode* node, uint32_t order) {
    bool isDocument = node->GetNodeType() == Dom::DOCUMENT_NODE;
    if (isDocument || DocumentKey(node) != m_pFastKey) return NodeCreatedSlow(node, order, isDocument);
    const Sxp::SPosition* position = *m_pPositionSlot;
    int line = position->nLine;
    int column = position->nColumn;
    SDocument& document = *m_pActiveDocument;
    if (line != document.nRunLine || order != document.nLastOrder + 1 || static_cast<uint32_t>(column) >= 0x8000 ||
        document.aColumns.IsFull()) {
        return AddRecord(document, order, line, column);
    }
    uint16_t* at = document.aColumns.End();
    *at = static_cast<uint16_t>(column);
    document.aColumns.Commit(at + 1);
    document.nLastOrder = order;
}

void CLocator::NodeCreatedSlow(Dom::CNode* node, uint32_t order, bool isDocument) {
    const void* key = DocumentKey(node);
    if (isDocument) BeginDocument(key);
    if (!m_pActiveDocument || m_pActiveDocument->pKey != key) return;
    const Sxp::SPosition* position = *m_pPositionSlot;
    AddRecord(*m_pActiveDocument, order, position->nLine, position->nColumn);
}

// The document node takes over the parser's locator. The URI is taken once per document: the
// parser reads no external entities, so it does not change within one.
void CLocator::BeginDocument(const void* key) {
    Sxp::ILocator* locator = m_pPendingLocator;
    m_pPendingLocator = nullptr;
    m_pFastKey = nullptr;
    if (!locator) {
        m_pPositionSlot = nullptr;
        Remove(key);  // an older document at this address has nothing to say about this one
        m_pActiveDocument = nullptr;
        return;
    }
    m_pPositionSlot = locator->GetPositionSlot();
    m_pActiveDocument = StartDocument(key, locator->GetSystemId(), locator->GetPublicId());
    m_pFastKey = key;
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
    if (!FindRecord(*document, order, line, column) && !FindInRuns(*document, order, line, column)) return false;
    uri = document->sUri;
    publicId = document->sPublicId;
    return true;
}

void CLocator::Remove(const void* key) {
    for (int i = 0; i < m_aDocuments.GetSize(); ++i) {
        if (m_aDocuments[i]->pKey != key) continue;
        if (m_pLastDocument == m_aDocuments[i]) m_pLastDocument = nullptr;
        if (m_pActiveDocument == m_aDocuments[i]) {
            m_pActiveDocument = nullptr;
            m_pFastKey = nullptr;
        }
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


// Places come in ascending order from a builder; one out of order goes to the sorted table.
// A node that does not follow the one before on its line opens a run.
void CLocator::AddRecord(SDocument& document, uint32_t order, int line, int column) {
    bool inOrder = document.aRuns.GetSize() == 0 || order > document.nLastOrder;
    if (!inOrder || line < 0 || column < 0) return InsertRecord(document, SRecord{order, line, column});
    bool opensRun = line != document.nRunLine || order != document.nLastOrder + 1;
    if (!document.aColumns.HasRoom(3) || (opensRun && document.aRuns.IsFull()))
        return GrowAndAdd(document, order, line, column);
    if (opensRun) {
        SLineRun* run = document.aRuns.End();
        *run = SLineRun{order, line, static_cast<uint32_t>(document.aColumns.GetSize())};
        document.aRuns.Commit(run + 1);
        document.nRunLine = line;
    }
    document.aColumns.Commit(PutColumn(document.aColumns.End(), static_cast<uint32_t>(column)));
    document.nLastOrder = order;
}

void CLocator::GrowAndAdd(SDocument& document, uint32_t order, int line, int column) {
    if (!document.aColumns.HasRoom(3)) document.aColumns.Grow(3);
    if (document.aRuns.IsFull()) document.aRuns.Grow(1);
    AddRecord(document, order, line, column);
}

void CLocator::InsertRecord(SDocument& document, const SRecord& record) {
    TArray<SRecord>& records = document.aRecords;
    int index = records.GetSize();
    while (index > 0 && records[index - 1].nOrder > record.nOrder) --index;
    if (index > 0 && records[index - 1].nOrder == record.nOrder) {
        records[index - 1] = record;
    } else {
        records.Insert(index, record);
    }
}

bool CLocator::FindRecord(const SDocument& document, uint32_t order, int& line, int& column) {
    const TArray<SRecord>& records = document.aRecords;
    auto found = std::lower_bound(records.begin(), records.end(), order,
                                  [](const SRecord& record, uint32_t wanted) { return record.nOrder < wanted; });
    if (found == records.end() || found->nOrder != order) return false;
    line = found->nLine;
    column = found->nColumn;
    return true;
}

// The last run that starts at or before the order, then its nodes one by one.
bool CLocator::FindInRuns(const SDocument& document, uint32_t order, int& line, int& column) {
    const TGrowing<SLineRun>& runs = document.aRuns;
    auto after = std::upper_bound(runs.begin(), runs.end(), order,
                                  [](uint32_t wanted, const SLineRun& run) { return wanted < run.nFirstOrder; });
    int low = static_cast<int>(after - runs.begin());
    if (low == 0) return false;
    const SLineRun& run = runs[low - 1];
    int end = low < runs.GetSize() ? static_cast<int>(runs[low].nOffset) : document.aColumns.GetSize();
    int at = static_cast<int>(run.nOffset);
    for (uint32_t skip = order - run.nFirstOrder; at < end; --skip) {
        uint32_t nodeColumn = TakeColumn(document.aColumns, at);
        if (skip == 0) {
            line = run.nLine;
            column = static_cast<int>(nodeColumn);
            return true;
        }
    }
    return false;
}

// Millions of nodes: the block doubles rather than growing by the common step.
template <class T>
void CLocator::TGrowing<T>::Grow(int count) {
    int size = GetSize();
    int capacity = static_cast<int>(m_pLimit - m_pBegin) * 2 + 64;
    if (capacity < size + count) capacity = size + count;
    void* block = std::realloc(static_cast<void*>(m_pBegin), sizeof(T) * static_cast<size_t>(capacity));
    if (!block) throw std::bad_alloc();
    m_pBegin = static_cast<T*>(block);
    m_pEnd = m_pBegin + size;
    m_pLimit = m_pBegin + capacity;
}

void CLocatorFactory::Create(TRefPtr<CLocator>& locator) { locator = new CLocator; }

}  // namespace XsltPrivate
