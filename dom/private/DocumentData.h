// Everything a document owns: the node classes of its kinds, the name tables, the chain of
// namespace scopes, the node and text chunks, and what its DTD declared.
#pragma once
#include <cstdint>

#include "core/Array.h"
#include "dom/private/ChunkArena.h"
#include "dom/Document.h"
#include "dom/Name.h"
#include "dom/NamespaceScope.h"

namespace Dom {

class CDocumentData {
public:
    enum { NODE_CHUNK_SIZE = 16000, TEXT_CHUNK_SIZE = 16000 };
    enum EClass {
        FRAGMENT_CLASS,
        DOCUMENT_CLASS,
        ATTRIBUTE_CLASS,
        ELEMENT_CLASS,
        TEXT_CLASS,
        COMMENT_CLASS,
        PROCESSING_INSTRUCTION_CLASS,
        NAMESPACE_CLASS,
        CLASS_COUNT
    };

    struct SIdDeclaration {
        DomString sElement;
        DomString sAttribute;
    };
    struct SUnparsedEntity {
        DomString sName;
        DomString sSystemId;
        DomString sPublicId;
    };
    struct SIdEntry {
        DomStringView sValue;
        CElement* pElement;
    };

    CDocumentData(CDocument* document, uint32_t documentNumber);
    ~CDocumentData();
    CDocumentData(const CDocumentData&) = delete;
    CDocumentData& operator=(const CDocumentData&) = delete;

    const CNodeClass* GetClass(EClass kind) const { return &m_aClasses[kind]; }
    // A new chunk of at least `size` bytes (units), owned by the document.
    char* AddNodeChunk(size_t size);
    DomChar* AddTextChunk(size_t size);
    // Resizes the last node chunk, which may move; what it holds moves with it.
    char* ResizeLastNodeChunk(size_t size);
    // Swaps the last text chunk for one of `size` units; the old one is freed.
    DomChar* ReplaceLastTextChunk(size_t size);
    void AddScope(CNamespaceScope* scope);

    CNodeClass m_aClasses[CLASS_COUNT];
    CNameTable m_oElementNames;
    CNameTable m_oAttributeNames;
    CNamespaceScope* m_pScopes;
    uint32_t m_nNextOrder;
    TArray<char*> m_aNodeChunks;
    int m_nNodeChunkSize;
    TArray<DomChar*> m_aTextChunks;
    int m_nTextChunkSize;
    // Chunks come from the general allocator until the document has taken a few megabytes.
    size_t m_nChunkBytes = 0;
    CChunkArena m_oArena;

    DomString m_sUri;
    TArray<SIdDeclaration> m_aIdDeclarations;
    TArray<SUnparsedEntity> m_aUnparsedEntities;
    // Sorted by value, then document order; built at the first ID lookup.
    TArray<SIdEntry> m_aIdIndex;
    bool m_bIdIndexBuilt;

private:
    void* NewChunk(size_t size);
    void* ResizeChunk(void* chunk, size_t size);
    void FreeChunk(void* chunk);
};

}  // namespace Dom
