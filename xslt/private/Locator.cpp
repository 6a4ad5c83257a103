// Locations of nodes: per document the places of its nodes in order of building, packed by line,
// so a lookup is a binary search over the lines and a short walk within one.
#include "xslt/private/Locator.h"

#include <cstring>

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
    m_pFastKey = nullptr;
    if (locator) return;
    m_pActiveLocator = nullptr;
    m_pActiveDocument = nullptr;
}

// The common node: of the document being read, on the line of the node before it, 1 to 127
// orders after it, at a column below 16384. Its bytes go to the stream without a call.
void CLocator::NodeCreated(Dom::CNode* node, uint32_t order) {
    bool isDocument = node->GetNodeType() == Dom::DOCUMENT_NODE;
    if (isDocument || DocumentKey(node) != m_pFastKey) return NodeCreatedSlow(node, order, isDocument);
    int line;
    int column;
    m_pActiveLocator->GetPosition(line, column);
    SDocument& document = *m_pActiveDocument;
    uint32_t step = order - document.nLastOrder;
    if (line != document.nRunLine || step - 1 >= 0x7F || static_cast<uint32_t>(column) >= 0x4000 ||
        !document.aSteps.TryPutShort(step, static_cast<uint32_t>(column))) {
        return AddRecord(document, order, line, column);
    }
    document.nLastOrder = order;
}

void CLocator::NodeCreatedSlow(Dom::CNode* node, uint32_t order, bool isDocument) {
    const void* key = DocumentKey(node);
    if (isDocument) BeginDocument(key);
    if (!m_pActiveDocument || m_pActiveDocument->pKey != key) return;
    int line = 0;
    int column = 0;
    m_pActiveLocator->GetPosition(line, column);
    AddRecord(*m_pActiveDocument, order, line, column);
}

// The document node takes over the parser's locator. The URI is taken once per document: the
// parser reads no external entities, so it does not change within one.
void CLocator::BeginDocument(const void* key) {
    m_pActiveLocator = m_pPendingLocator;
    m_pPendingLocator = nullptr;
    if (!m_pActiveLocator) {
        Remove(key);  // an older document at this address has nothing to say about this one
        m_pActiveDocument = nullptr;
        return;
    }
    m_pActiveDocument = StartDocument(key, m_pActiveLocator->GetSystemId(), m_pActiveLocator->GetPublicId());
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

namespace {

// Writes the number in seven-bit groups, lowest first, and returns the byte behind it.
uint8_t* PutNumber(uint8_t* at, uint32_t number) {
    while (number >= 0x80) {
        *at++ = static_cast<uint8_t>(number | 0x80);
        number >>= 7;
    }
    *at++ = static_cast<uint8_t>(number);
    return at;
}

template <class TBytes>
uint32_t TakeNumber(const TBytes& stream, int& at) {
    uint32_t number = 0;
    for (int shift = 0;; shift += 7) {
        uint8_t byte = stream[at++];
        number |= static_cast<uint32_t>(byte & 0x7F) << shift;
        if (!(byte & 0x80)) return number;
    }
}

}  // namespace

// Places come in ascending order from a builder; one out of order goes to the sorted table.
void CLocator::AddRecord(SDocument& document, uint32_t order, int line, int column) {
    bool inOrder = document.aRuns.IsEmpty() || order > document.nLastOrder;
    if (!inOrder || line < 0 || column < 0) return InsertRecord(document, SRecord{order, line, column});
    uint32_t step = order - document.nLastOrder;
    if (line != document.nRunLine) step = StartRun(document, order, line);
    uint8_t* at = document.aSteps.Room(10);
    document.aSteps.Commit(PutNumber(PutNumber(at, step), static_cast<uint32_t>(column)));
    document.nLastOrder = order;
}

// Opens a run at the node, whose step within it is then 0.
uint32_t CLocator::StartRun(SDocument& document, uint32_t order, int line) {
    TArray<SLineRun>& runs = document.aRuns;
    if (runs.GetSize() == runs.GetCapacity()) runs.Reserve(runs.GetSize() * 2 + 16);
    runs.Add(SLineRun{order, line, static_cast<uint32_t>(document.aSteps.GetSize())});
    document.nRunLine = line;
    return 0;
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
    line = records[low].nLine;
    column = records[low].nColumn;
    return true;
}

// The last run that starts at or before the order, then its nodes one by one.
bool CLocator::FindInRuns(const SDocument& document, uint32_t order, int& line, int& column) {
    const TArray<SLineRun>& runs = document.aRuns;
    int low = 0;
    int high = runs.GetSize();
    while (low < high) {
        int middle = low + (high - low) / 2;
        if (runs[middle].nFirstOrder <= order) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    if (low == 0) return false;
    const SLineRun& run = runs[low - 1];
    int end = low < runs.GetSize() ? static_cast<int>(runs[low].nOffset) : document.aSteps.GetSize();
    int at = static_cast<int>(run.nOffset);
    uint32_t current = run.nFirstOrder;
    while (at < end) {
        current += TakeNumber(document.aSteps, at);
        uint32_t nodeColumn = TakeNumber(document.aSteps, at);
        if (current == order) {
            line = run.nLine;
            column = static_cast<int>(nodeColumn);
            return true;
        }
        if (current > order) return false;
    }
    return false;
}

// Millions of nodes: the stream doubles rather than growing by the common step.
void CLocator::CPackedBytes::Grow(int count) {
    int size = GetSize();
    int capacity = static_cast<int>(m_pLimit - m_pBytes.get()) * 2 + 64;
    if (capacity < size + count) capacity = size + count;
    std::unique_ptr<uint8_t[]> bytes(new uint8_t[static_cast<size_t>(capacity)]);
    if (size > 0) std::memcpy(bytes.get(), m_pBytes.get(), static_cast<size_t>(size));
    m_pBytes = std::move(bytes);
    m_pEnd = m_pBytes.get() + size;
    m_pLimit = m_pBytes.get() + capacity;
}

void CLocatorFactory::Create(TRefPtr<CLocator>& locator) { locator = new CLocator; }

}  // namespace XsltPrivate
