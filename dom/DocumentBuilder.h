// Builds a document in one pass from parser events: lays nodes out in the document's chunks,
// resolves namespaces at the end of each start tag, and drops whitespace-only text that the
// strip rules and xml:space say to drop. It also keeps what the DTD declares that later
// lookups need: ID attributes and unparsed entities.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "dom/Document.h"
#include "dom/StripSpaceRules.h"
#include "xmlparser/ContentHandler.h"

namespace Dom {

class CDocumentData;

// Told about every node as soon as it exists, with the parser's locator at hand.
class IBuildListener : public CRefObject {
public:
    virtual void SetLocator(Sxp::ILocator* locator) = 0;
    // `order` is the node's order number, handed over so that no call is spent asking for it.
    virtual void NodeCreated(CNode* node, uint32_t order) = 0;
    // An element that outgrew its chunk was copied, with its attributes, to a new address
    // before anything else could refer to it, or a comment was, to lie near its text; called
    // once for each record copied. `from` is only a key: its memory may be gone.
    virtual void NodeMoved(CNode* from, CNode* to) {
        (void)from;
        (void)to;
    }
};

// The content handler is the builder itself (IContentHandler is its counted root); the DTD
// handler for the same parser comes from GetDtdHandler and records into the same document.
class CDocumentBuilder : public Sxp::IContentHandler {
public:
    // Code 9 if `document` is not a document node. Rules and listener may be null.
    static void Create(CNode* document, CStripSpaceRules* rules, IBuildListener* listener,
                       TRefPtr<CDocumentBuilder>& builder);
    // The same for a fragment from CDocumentFactory::CreateFragment: the top-level nodes become
    // the fragment's children. Code 9 if `fragment` is not a fragment.
    static void CreateForFragment(CNode* fragment, CStripSpaceRules* rules, IBuildListener* listener,
                                  TRefPtr<CDocumentBuilder>& builder);
    ~CDocumentBuilder() override;

    // A handler that stores ID attribute declarations and unparsed entities in the document.
    void GetDtdHandler(TRefPtr<Sxp::IDtdHandler>& handler) const;

    void SetLocator(Sxp::ILocator* locator) override;
    void StartDocument() override;
    void EndDocument() override;
    void StartElement(DomStringView name) override;
    void EndElement() override;
    void StartAttribute(DomStringView name) override;
    void EndAttribute() override;
    void Characters(const DomChar* units, int count) override;
    void StartComment() override;
    void EndComment() override;
    void StartCData() override {}
    void EndCData() override {}
    void SkippedEntity(DomStringView name) override { (void)name; }
    void ProcessingInstruction(DomStringView target, DomStringView data) override;

private:
    CDocumentBuilder(CNode* target, CStripSpaceRules* rules, IBuildListener* listener);

    void FinishPrevious();
    [[gnu::always_inline]] inline void CompleteStartTag();
    [[gnu::noinline]] void CompleteUnusualStartTag();
    void ResolveAgain();
    const CName* ResolveName(DomStringView qualifiedName, bool isElement, bool raise);
    const CName* LookUpName(DomStringView qualifiedName, bool isElement, bool raise);
    void* AllocateNode(size_t size);
    [[gnu::noinline]] void AddNodeChunk(size_t size);
    void LinkChild(CChildNode* node, int classIndex);
    void TagLastChild();
    CNamespaceNode* DeclarationTarget(DomStringView name);
    void MoveElement();
    void ReportMove(CElement* old, CElement* moved, int count);
    void BeginCollecting();
    void ReserveText(int count) {
        if (m_pTextEnd - m_pTextNext <= count) MoveText(count);
    }
    [[gnu::noinline]] void MoveText(int count);
    const DomChar* TerminateText();
    [[gnu::always_inline]] inline const DomChar* ShareOrTerminateText();
    const DomChar* CopyText(DomStringView text);
    bool IsWhitespaceOnly() const;
    void CloseText();
    [[gnu::always_inline]] inline CCharacterData* AllocateCharacterData(const DomChar*& data);
    [[gnu::noinline]] CCharacterData* AllocateWithCopy(const DomChar*& data);
    void MoveComment(const DomChar*& data);
    void Notify(CNode* node, uint32_t order);

    // The document or fragment built, and the document that owns its records.
    TNodeRef m_pTarget;
    CDocument* m_pDocument;
    TRefPtr<CStripSpaceRules> m_pRules;
    TRefPtr<IBuildListener> m_pListener;
    // Not counted: the locator refers back to the parser, which holds this builder, and a
    // count would keep both alive after a failed parse.
    Sxp::ILocator* m_pLocator;
    CDocumentData* m_pData;

    // The free room of the current node chunk and text chunk; m_pTextStart is where the text
    // being collected begins.
    char* m_pNodeNext;
    char* m_pNodeEnd;
    DomChar* m_pTextChunk;
    DomChar* m_pTextNext;
    DomChar* m_pTextEnd;
    DomChar* m_pTextStart;

    // The current parent and its children so far.
    CNode* m_pParent;
    CNode* m_pFirst;
    CNode* m_pLast;

    CElement* m_pElement;
    CAttr* m_pAttribute;
    CNamespaceNode* m_pBinding;
    CComment* m_pComment;
    CNamespaceScope* m_pScope;
    CNamespaceScope* m_pRootScope;
    uint32_t m_nNextOrder;

    bool m_bScopeOwned;
    bool m_bPrefixMissing;
    bool m_bInStartTag;
    bool m_bElementMoved;
    bool m_bTextPending;
    bool m_bMayStrip;
    bool m_bPreserve;
    bool m_bPreserveEffective;
    // Short texts already stored, by quick slot: repeated values and indentation are stored once.
    enum { SHARED_TEXT_LIMIT = 16, SHARED_TEXT_SLOTS = 256 };
    // The length is kept beside the text, so that a slot holding a shorter text is never read
    // beyond its end.
    struct SSharedText {
        const DomChar* pText;
        size_t nLength;
    };
    SSharedText m_aSharedTexts[SHARED_TEXT_SLOTS];
    // Names recently resolved, by kind (attribute, element) and quick slot, two to a slot (the
    // newer first), with the scope they were resolved in: a tag name repeats in the same scope far
    // more often than not, and two names often alternate (rows and cells).
    struct SResolvedName {
        const CName* pName;
        const CNamespaceScope* pScope;
    };
    enum { RESOLVED_NAME_SLOTS = 64 };
    SResolvedName m_aResolvedNames[2][RESOLVED_NAME_SLOTS][2];
    // Two bits per open element (preserve, effective), kept only when the rules may strip.
    TArray<unsigned char> m_aPreserveStack;
};

}  // namespace Dom
