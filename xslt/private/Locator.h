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
#include <memory>

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
    // Nodes read in a row on one line: the first one's order, the line, and where their order
    // steps and columns begin in the packed stream.
    struct SLineRun {
        uint32_t nFirstOrder;
        int nLine;
        uint32_t nOffset;
    };
    // The packed stream: it doubles as it grows and takes a node's bytes with one test of room.
    class CPackedBytes {
    public:
        int GetSize() const { return static_cast<int>(m_pEnd - m_pBytes.get()); }
        uint8_t operator[](int i) const { return m_pBytes[i]; }
        // Room for `count` more bytes at the returned address; Commit sets the new end.
        uint8_t* Room(int count) {
            if (m_pLimit - m_pEnd < count) Grow(count);
            return m_pEnd;
        }
        void Commit(uint8_t* end) { m_pEnd = end; }
        // A step below 128 and a column below 16384 in two or three bytes, if there is room
        // for three without growing.
        bool TryPutShort(uint32_t step, uint32_t column) {
            if (m_pLimit - m_pEnd < 3) return false;
            uint32_t high = column >> 7;
            m_pEnd[0] = static_cast<uint8_t>(step);
            m_pEnd[1] = static_cast<uint8_t>(column | static_cast<uint32_t>(high != 0) << 7);
            m_pEnd[2] = static_cast<uint8_t>(high);
            m_pEnd += 2 + (high != 0);
            return true;
        }

    private:
        [[gnu::noinline]] void Grow(int count);
        std::unique_ptr<uint8_t[]> m_pBytes;
        uint8_t* m_pEnd = nullptr;
        uint8_t* m_pLimit = nullptr;
    };
    // A source document has millions of nodes, so their places are packed: per line a run, per
    // node two variable-length numbers (the step from the previous order, the column). Places
    // given out of building order stand in a small sorted table that takes precedence.
    struct SDocument {
        const void* pKey;
        DomString sUri;
        DomString sPublicId;
        TArray<SLineRun> aRuns;
        CPackedBytes aSteps;
        uint32_t nLastOrder = 0;
        int nRunLine = -1;  // the last run's line; runs hold no negative line
        TArray<SRecord> aRecords;  // ascending by order
    };

    [[gnu::noinline]] void NodeCreatedSlow(Dom::CNode* node, uint32_t order, bool isDocument);
    void BeginDocument(const void* key);
    SDocument* FindDocument(const void* key) const;
    SDocument* StartDocument(const void* key, DomStringView uri, DomStringView publicId);
    [[gnu::noinline]] static void AddRecord(SDocument& document, uint32_t order, int line, int column);
    static uint32_t StartRun(SDocument& document, uint32_t order, int line);
    static void InsertRecord(SDocument& document, const SRecord& record);
    static bool FindInRuns(const SDocument& document, uint32_t order, int& line, int& column);
    static bool FindRecord(const SDocument& document, uint32_t order, int& line, int& column);

    // The parser's locator is not counted: it lives for one parse, and holding it would tie the
    // parser's scanner and the builder to this locator in a cycle after a failed parse. It is
    // taken over by the document node that follows it and dropped when the parse ends.
    Sxp::ILocator* m_pPendingLocator = nullptr;
    Sxp::ILocator* m_pActiveLocator = nullptr;
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
