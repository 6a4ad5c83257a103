// Ties stylesheet and source nodes to the place in their file where they were read. The locator
// listens to each document builder; a node's location is the pair (its document, its order
// number), which is what instructions and exceptions carry, and GetLocation turns it back into
// the URI, line and column for the diagnostic report.
//
// Use: make one with CLocatorFactory per top-level compilation and give it to every builder of
// the stylesheet's documents and of the documents of its runs; take a node's pair with
// GetNodeLocation. Nodes built without a parser (fragments, rebuilt trees) have none.
#pragma once
#include <cstdint>
#include <cstdlib>

#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "dom/DocumentBuilder.h"
#include "xmlparser/ContentHandler.h"
#include "xslt/XsltException.h"

namespace XsltPrivate {

class CLocator : public Dom::IBuildListener {
public:
    CLocator() = default;
    CLocator(const CLocator&) = delete;
    CLocator& operator=(const CLocator&) = delete;
    ~CLocator() override;

    // Builder notifications: the parser's locator (null when parsing ends), then every node as it
    // is made, the document first. A new document under a known key starts afresh.
    void SetLocator(Sxp::ILocator* locator) override;
    void NodeCreated(Dom::CNode* node, uint32_t order) override;

    // Records where the node at `location` was read.
    void AddLocation(const Xslt::SLocation& location, DomStringView uri, DomStringView publicId, int line,
                     int column);
    // What AddLocation took for `location`; false if nothing is known.
    bool GetLocation(const Xslt::SLocation& location, DomString& uri, DomString& publicId, int& line,
                     int& column) const;
    // Forgets a document's records, for a document that is gone.
    void Remove(const void* key);

    // The pair by which a node is located; null for a node of a document that was not read
    // through this locator (a result tree fragment, a rebuilt tree), so that no line is shown.
    Xslt::SLocation GetNodeLocation(const Dom::CNode* node) const;

private:
    struct SRecord {
        uint32_t nOrder;
        int nLine;
        int nColumn;
    };
    // Nodes read in a row on one line with orders one apart: the first one's order, the line,
    // and where their columns begin in the packed stream.
    struct SLineRun {
        uint32_t nFirstOrder;
        int nLine;
        uint32_t nOffset;
    };
    // Items written at the end after one test of room. The block doubles by realloc, so that a
    // large one is remapped rather than copied.
    template <class T>
    class TGrowing {
    public:
        TGrowing() = default;
        TGrowing(const TGrowing&) = delete;
        TGrowing& operator=(const TGrowing&) = delete;
        ~TGrowing() { std::free(m_pBegin); }
        int GetSize() const { return static_cast<int>(m_pEnd - m_pBegin); }
        const T& operator[](int i) const { return m_pBegin[i]; }
        const T* begin() const { return m_pBegin; }
        const T* end() const { return m_pEnd; }
        bool HasRoom(int count) const { return m_pLimit - m_pEnd >= count; }
        bool IsFull() const { return m_pEnd == m_pLimit; }
        // Writing goes to End() and Commit sets the new end.
        T* End() const { return m_pEnd; }
        void Commit(T* end) { m_pEnd = end; }
        [[gnu::noinline]] void Grow(int count);

    private:
        T* m_pBegin = nullptr;
        T* m_pEnd = nullptr;
        T* m_pLimit = nullptr;
    };
    // A source document has millions of nodes, so their places are packed: per line a run, per
    // node its column in one 16-bit unit, or more for a column past 32767. Places given out of
    // building order stand in a small sorted table that takes precedence.
    struct SDocument {
        const void* pKey;
        DomString sUri;
        DomString sPublicId;
        TGrowing<SLineRun> aRuns;
        TGrowing<uint16_t> aColumns;
        uint32_t nLastOrder = 0;
        int nRunLine = -1;  // the last run's line; runs hold no negative line
        TArray<SRecord> aRecords;  // ascending by order
    };

    [[gnu::noinline]] void NodeCreatedSlow(Dom::CNode* node, uint32_t order, bool isDocument);
    void BeginDocument(const void* key);
    SDocument* FindDocument(const void* key) const;
    SDocument* StartDocument(const void* key, DomStringView uri, DomStringView publicId);
    [[gnu::noinline]] static void AddRecord(SDocument& document, uint32_t order, int line, int column);
    [[gnu::noinline]] static void GrowAndAdd(SDocument& document, uint32_t order, int line, int column);
    [[gnu::noinline]] static void InsertRecord(SDocument& document, const SRecord& record);
    static bool FindInRuns(const SDocument& document, uint32_t order, int& line, int& column);
    static bool FindRecord(const SDocument& document, uint32_t order, int& line, int& column);

    // The parser's locator is not counted: it lives for one parse, and holding it would tie the
    // parser's scanner and the builder to this locator in a cycle after a failed parse. It is
    // taken over by the document node that follows it and dropped when the parse ends.
    Sxp::ILocator* m_pPendingLocator = nullptr;
    const Sxp::SPosition* const* m_pPositionSlot = nullptr;  // the parser's, while it reads
    SDocument* m_pActiveDocument = nullptr;  // the document being read through it
    // Its key while no other parse is pending, so that a node of it needs one test to be
    // recorded; null otherwise.
    const void* m_pFastKey = nullptr;
    TArray<SDocument*> m_aDocuments;
    mutable SDocument* m_pLastDocument = nullptr;  // the one most recently used
};

// One locator per top-level compilation; imported and included documents share it.
class CLocatorFactory : public CRefObject {
public:
    virtual void Create(TRefPtr<CLocator>& locator);
};

}  // namespace XsltPrivate
