// Documents, their owned data and the numbering factory.
#include "dom/Document.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

#include "dom/DomException.h"
#include "dom/private/DocumentData.h"
#include "dom/private/NodeOps.h"

namespace Dom {

// CDocumentData

CDocumentData::CDocumentData(CDocument* document, uint32_t documentNumber)
    : m_pScopes(nullptr),
      m_nNextOrder(1),
      m_nNodeChunkSize(NODE_CHUNK_SIZE),
      m_nTextChunkSize(TEXT_CHUNK_SIZE),
      m_bIdIndexBuilt(false) {
    static const struct {
        int nType;
        const CNodeOps* pOps;
    } kinds[CLASS_COUNT] = {
        {DOCUMENT_FRAGMENT_NODE, &g_oFragmentOps},
        {DOCUMENT_NODE, &g_oDocumentOps},
        {ATTRIBUTE_NODE, &g_oAttributeOps},
        {ELEMENT_NODE, &g_oElementOps},
        {TEXT_NODE, &g_oTextOps},
        {COMMENT_NODE, &g_oCommentOps},
        {PROCESSING_INSTRUCTION_NODE, &g_oProcessingInstructionOps},
        {NAMESPACE_NODE, &g_oNamespaceOps},
    };
    for (int i = 0; i < CLASS_COUNT; ++i) {
        m_aClasses[i] = CNodeClass{kinds[i].pOps->m_bCounted, kinds[i].nType, documentNumber, document, kinds[i].pOps};
    }
}

CDocumentData::~CDocumentData() {
    for (char* chunk : m_aNodeChunks) FreeChunk(chunk);
    for (DomChar* chunk : m_aTextChunks) FreeChunk(chunk);
    while (m_pScopes) {
        CNamespaceScope* previous = m_pScopes->GetPrevious();
        delete m_pScopes;
        m_pScopes = previous;
    }
}

namespace {
// Past this much chunk memory a document is large, and its chunks come from the arena.
const size_t kArenaThreshold = size_t(2) << 20;
}  // namespace

void* CDocumentData::NewChunk(size_t size) {
    m_nChunkBytes += size;
    if (m_nChunkBytes > kArenaThreshold) {
        if (void* chunk = m_oArena.Allocate(size)) return chunk;
    }
    void* chunk = std::malloc(size);
    if (!chunk) throw std::bad_alloc();
    return chunk;
}

// As realloc: the content moves with the chunk.
void* CDocumentData::ResizeChunk(void* chunk, size_t size) {
    if (!m_oArena.Owns(chunk)) {
        void* moved = std::realloc(chunk, size);
        if (!moved) throw std::bad_alloc();
        return moved;
    }
    if (m_oArena.TryExtend(chunk, size)) return chunk;
    void* moved = NewChunk(size);
    std::memcpy(moved, chunk, std::min(size, CChunkArena::SizeOf(chunk)));
    return moved;  // the old room stays with the arena until the document goes
}

void CDocumentData::FreeChunk(void* chunk) {
    if (!m_oArena.Owns(chunk)) std::free(chunk);
}

char* CDocumentData::AddNodeChunk(size_t size) {
    char* chunk = static_cast<char*>(NewChunk(size));
    m_aNodeChunks.Add(chunk);
    return chunk;
}

DomChar* CDocumentData::AddTextChunk(size_t size) {
    DomChar* chunk = static_cast<DomChar*>(NewChunk(size * sizeof(DomChar)));
    m_aTextChunks.Add(chunk);
    return chunk;
}

char* CDocumentData::ResizeLastNodeChunk(size_t size) {
    char* chunk = static_cast<char*>(ResizeChunk(m_aNodeChunks.Last(), size));
    m_aNodeChunks.Last() = chunk;
    return chunk;
}

DomChar* CDocumentData::ReplaceLastTextChunk(size_t size) {
    DomChar* chunk = static_cast<DomChar*>(ResizeChunk(m_aTextChunks.Last(), size * sizeof(DomChar)));
    m_aTextChunks.Last() = chunk;
    return chunk;
}

void CDocumentData::AddScope(CNamespaceScope* scope) { m_pScopes = scope; }

// CDocument

CElement* CDocument::GetDocumentElement() const {
    for (CNode* child = m_pFirstChild; child; child = child->GetNextSibling()) {
        if (child->GetNodeType() == ELEMENT_NODE) return static_cast<CElement*>(child);
    }
    return nullptr;
}

void CDocument::GetDoctype() const { CDomException::ThrowNotSupported(); }
void CDocument::GetImplementation() const { CDomException::ThrowNotSupported(); }
void CDocument::CreateElement(DomStringView, TNodeRef&) { CDomException::ThrowNotSupported(); }
void CDocument::CreateDocumentFragment(TNodeRef&) { CDomException::ThrowNotSupported(); }
void CDocument::CreateTextNode(DomStringView, TNodeRef&) { CDomException::ThrowNotSupported(); }
void CDocument::CreateComment(DomStringView, TNodeRef&) { CDomException::ThrowNotSupported(); }
void CDocument::CreateCDATASection(DomStringView, TNodeRef&) { CDomException::ThrowNotSupported(); }
void CDocument::CreateProcessingInstruction(DomStringView, DomStringView, TNodeRef&) {
    CDomException::ThrowNotSupported();
}
void CDocument::CreateAttribute(DomStringView, TNodeRef&) { CDomException::ThrowNotSupported(); }
void CDocument::CreateEntityReference(DomStringView, TNodeRef&) { CDomException::ThrowNotSupported(); }
void CDocument::GetElementsByTagName(DomStringView, TRefPtr<CNodeList>&) const {
    CDomException::ThrowNotSupported();
}
void CDocument::ImportNode(CNode*, bool, TNodeRef&) { CDomException::ThrowNotSupported(); }

const DomString& CDocument::GetDocumentUri() const { return m_pData->m_sUri; }

void CDocument::SetDocumentUri(DomStringView uri) { m_pData->m_sUri = uri; }

CAttr* CDocument::GetIdAttribute(const CNode* node) const {
    if (node->GetNodeType() != ELEMENT_NODE || m_pData->m_aIdDeclarations.IsEmpty()) return nullptr;
    const CElement* element = static_cast<const CElement*>(node);
    for (const CDocumentData::SIdDeclaration& declaration : m_pData->m_aIdDeclarations) {
        if (declaration.sElement != element->m_pName->m_sQualifiedName) continue;
        if (CAttr* attribute = element->GetAttributeNode(declaration.sAttribute)) return attribute;
    }
    return nullptr;
}

bool CDocument::GetElementId(const CNode* node, DomString& id) const {
    CAttr* attribute = GetIdAttribute(node);
    if (!attribute) return false;
    id = attribute->m_pValue;
    return true;
}

namespace {

bool IdEntryLess(const CDocumentData::SIdEntry& a, const CDocumentData::SIdEntry& b) {
    if (a.sValue != b.sValue) return a.sValue < b.sValue;
    return a.pElement->m_nOrder < b.pElement->m_nOrder;
}

// Every element of the document with a declared ID, as (value, element), sorted.
void BuildIdIndex(const CDocument* document, TArray<CDocumentData::SIdEntry>& index) {
    const CNode* node = document->m_pFirstChild;
    while (node) {
        if (CAttr* attribute = document->GetIdAttribute(node))
            index.Add({DomStringView(attribute->m_pValue), static_cast<CElement*>(const_cast<CNode*>(node))});
        if (const CNode* child = node->GetFirstChild()) {
            node = child;
            continue;
        }
        while (node && !node->GetNextSibling()) {
            node = node->GetParentNode();
            if (node == document) node = nullptr;
        }
        if (node) node = node->GetNextSibling();
    }
    std::sort(index.begin(), index.end(), IdEntryLess);
}

}  // namespace

CElement* CDocument::GetElementById(DomStringView id) const {
    if (m_pData->m_aIdDeclarations.IsEmpty()) return nullptr;
    if (!m_pData->m_bIdIndexBuilt) {
        BuildIdIndex(this, m_pData->m_aIdIndex);
        m_pData->m_bIdIndexBuilt = true;
    }
    const TArray<CDocumentData::SIdEntry>& index = m_pData->m_aIdIndex;
    const CDocumentData::SIdEntry* found = std::lower_bound(
        index.begin(), index.end(), id,
        [](const CDocumentData::SIdEntry& entry, DomStringView value) { return entry.sValue < value; });
    return found != index.end() && found->sValue == id ? found->pElement : nullptr;
}

bool CDocument::GetUnparsedEntity(DomStringView name, DomString& systemId, DomString& publicId) const {
    for (const CDocumentData::SUnparsedEntity& entity : m_pData->m_aUnparsedEntities) {
        if (entity.sName != name) continue;
        systemId = entity.sSystemId;
        publicId = entity.sPublicId;
        return true;
    }
    return false;
}

// CDocumentFactory

CDocumentFactory::CDocumentFactory(uint32_t factoryNumber)
    : m_nFactoryNumber(factoryNumber), m_nNextDocumentNumber(factoryNumber * 0x1000000u + 1) {}

void CDocumentFactory::CreateDocument(TNodeRef& document) {
    CDocument* record = new CDocument();
    uint32_t number = m_nNextDocumentNumber++;
    record->m_pData = new CDocumentData(record, number);
    record->m_pClass = record->m_pData->GetClass(CDocumentData::DOCUMENT_CLASS);
    record->m_nRefCount = 0;
    record->m_nDocumentNumber = number;
    record->m_nOrder = 0;
    record->m_pFirstChild = record->m_pLastChild = nullptr;
    document = record;
}

void CDocumentFactory::CreateFragment(TNodeRef& fragment) {
    TNodeRef document;
    CreateDocument(document);
    CDocument* owner = static_cast<CDocument*>(document.Get());
    CDocumentFragment* record = new CDocumentFragment();
    record->m_pClass = owner->m_pData->GetClass(CDocumentData::FRAGMENT_CLASS);
    record->m_nRefCount = 0;
    record->m_nOrder = 0;
    record->m_pFirstChild = record->m_pLastChild = nullptr;
    ++owner->m_nRefCount;  // given back when the fragment is released
    fragment = record;
}

}  // namespace Dom
