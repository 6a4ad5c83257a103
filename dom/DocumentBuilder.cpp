// The one-pass document builder: records go into the node chunks in document order, texts into
// the text chunks, and every start tag is completed (names resolved, whitespace mode set) by
// the first event that follows it.
#include "dom/DocumentBuilder.h"

#include <cstring>

#include "core/Hash.h"
#include "dom/DomException.h"
#include "dom/NamespaceScope.h"
#include "dom/private/DocumentData.h"
#include "dom/private/DtdRecorder.h"

namespace Dom {

namespace {

const DomChar XML_NAMESPACE[] = u"http://www.w3.org/XML/1998/namespace";
const DomChar EMPTY_TEXT[] = u"";

bool IsXmlSpace(const CName* name) {
    return name->m_sLocalName == u"space" && name->m_sNamespaceUri == XML_NAMESPACE;
}

intptr_t Distance(const void* from, const void* to) {
    return reinterpret_cast<intptr_t>(to) - reinterpret_cast<intptr_t>(from);
}

bool IsNear(const void* from, const void* to) {
    intptr_t distance = Distance(from, to);
    return distance == static_cast<int32_t>(distance);
}

void SetData(CCharacterData* node, const DomChar* data) {
    node->m_nDataOffset = static_cast<int32_t>(Distance(node, data));
}

// The slot of a short text or name in the builder's small caches, from its length and three of
// its units: a repeated value finds its slot without reading all of it, and the values that
// repeat (indentation, tag names, small numbers) rarely agree in all four.
unsigned int QuickSlot(const DomChar* text, size_t length) {
    if (length == 0) return 0;
    return static_cast<unsigned int>(length * 61 + text[0] * 7 + text[length / 2] * 3 + text[length - 1]);
}

uint64_t FourUnits(const DomChar* text) {
    uint64_t units;
    std::memcpy(&units, text, sizeof(units));
    return units;
}

// Compares four units at a time; the last four, which may overlap those before, close it.
[[gnu::always_inline]] inline bool SameUnits(const DomChar* a, const DomChar* b, size_t length) {
    if (length < 4) {
        for (size_t i = 0; i < length; ++i) {
            if (a[i] != b[i]) return false;
        }
        return true;
    }
    for (size_t i = 0; i + 4 < length; i += 4) {
        if (FourUnits(a + i) != FourUnits(b + i)) return false;
    }
    return FourUnits(a + length - 4) == FourUnits(b + length - 4);
}

bool SameText(DomStringView a, DomStringView b) {
    return a.size() == b.size() && SameUnits(a.data(), b.data(), a.size());
}

}  // namespace

void CDocumentBuilder::Create(CNode* document, CStripSpaceRules* rules, IBuildListener* listener,
                              TRefPtr<CDocumentBuilder>& builder) {
    if (!document || document->GetNodeType() != DOCUMENT_NODE) CDomException::ThrowNotSupported();
    builder = new CDocumentBuilder(document, rules, listener);
}

void CDocumentBuilder::CreateForFragment(CNode* fragment, CStripSpaceRules* rules, IBuildListener* listener,
                                         TRefPtr<CDocumentBuilder>& builder) {
    if (!fragment || fragment->GetNodeType() != DOCUMENT_FRAGMENT_NODE) CDomException::ThrowNotSupported();
    builder = new CDocumentBuilder(fragment, rules, listener);
}

CDocumentBuilder::CDocumentBuilder(CNode* target, CStripSpaceRules* rules, IBuildListener* listener)
    : m_pTarget(target),
      m_pDocument(target->GetOwnerDocument()),
      m_pRules(rules),
      m_pListener(listener),
      m_pLocator(nullptr),
      m_pData(m_pDocument->m_pData),
      m_pNodeNext(nullptr),
      m_pNodeEnd(nullptr),
      m_pTextChunk(nullptr),
      m_pTextNext(nullptr),
      m_pTextEnd(nullptr),
      m_pTextStart(nullptr),
      m_pParent(target),
      m_pFirst(nullptr),
      m_pLast(nullptr),
      m_pElement(nullptr),
      m_pAttribute(nullptr),
      m_pBinding(nullptr),
      m_pComment(nullptr),
      m_pScope(nullptr),
      m_pRootScope(nullptr),
      m_nNextOrder(m_pData->m_nNextOrder),
      m_bScopeOwned(false),
      m_bPrefixMissing(false),
      m_bInStartTag(false),
      m_bElementMoved(false),
      m_bTextPending(false),
      m_bMayStrip(false),
      m_bPreserve(true),
      m_bPreserveEffective(true),
      m_aSharedTexts(),
      m_aResolvedNames() {}

CDocumentBuilder::~CDocumentBuilder() = default;

void CDocumentBuilder::GetDtdHandler(TRefPtr<Sxp::IDtdHandler>& handler) const {
    handler = new CDtdRecorder(m_pDocument);
}

void CDocumentBuilder::SetLocator(Sxp::ILocator* locator) {
    m_pLocator = locator;
    if (m_pListener) m_pListener->SetLocator(locator);
}

void CDocumentBuilder::StartDocument() {
    m_pRootScope = new CNamespaceScope(m_pData->GetClass(CDocumentData::NAMESPACE_CLASS), m_pData->m_pScopes);
    m_pData->AddScope(m_pRootScope);
    m_pRootScope->Bind(DomStringView());
    m_pRootScope->Bind(u"xml")->m_sUri = XML_NAMESPACE;
    m_pRootScope->SetOwner(m_pTarget);
    m_pScope = m_pRootScope;
    if (m_pLocator && m_pData->m_sUri.empty()) m_pData->m_sUri = m_pLocator->GetSystemId();

    m_bMayStrip = m_pRules && m_pRules->GetAnyStrip();
    m_bPreserve = m_bPreserveEffective = !m_bMayStrip;
    m_bScopeOwned = m_bPrefixMissing = m_bInStartTag = m_bElementMoved = m_bTextPending = false;
    Notify(m_pTarget, m_pTarget->GetOrder());
}

void CDocumentBuilder::EndDocument() {
    FinishPrevious();
    TagLastChild();
    if (m_pTarget->GetNodeType() == DOCUMENT_NODE) {
        static_cast<CDocument*>(m_pTarget.Get())->m_pFirstChild = m_pFirst;
        static_cast<CDocument*>(m_pTarget.Get())->m_pLastChild = m_pLast;
    } else {
        static_cast<CDocumentFragment*>(m_pTarget.Get())->m_pFirstChild = m_pFirst;
        static_cast<CDocumentFragment*>(m_pTarget.Get())->m_pLastChild = m_pLast;
    }
    m_pData->m_nNextOrder = m_nNextOrder;
    // An ID lookup made while building saw only part of the tree.
    m_pData->m_aIdIndex.Clear();
    m_pData->m_bIdIndexBuilt = false;
}

// Runs the pending start-tag step and closes pending text: what every event that is not part
// of a start tag or of the current text does first.
void CDocumentBuilder::FinishPrevious() {
    if (m_bInStartTag) CompleteStartTag();
    if (m_bTextPending) CloseText();
}

// Most start tags need nothing but the mark that they are complete.
void CDocumentBuilder::CompleteStartTag() {
    if (m_bElementMoved | m_bScopeOwned | m_bPrefixMissing | m_bMayStrip) CompleteUnusualStartTag();
    m_bInStartTag = false;
}

// Repairs attribute owners after a move, resolves names again or fails on an unbound prefix,
// and sets the whitespace mode.
void CDocumentBuilder::CompleteUnusualStartTag() {
    if (m_bElementMoved) {
        CAttr* attributes = m_pElement->GetAttributeArray();
        for (int i = 0; i < m_pElement->m_nAttributeCount; ++i) attributes[i].m_pOwner = m_pElement;
    }
    if (m_bScopeOwned) {
        ResolveAgain();
    } else if (m_bPrefixMissing) {
        throw new CDomException(CDomException::NOT_FOUND_ERR);
    }
    if (m_bMayStrip) {
        m_bPreserveEffective = m_bPreserve;
        if (!m_bPreserveEffective) {
            const CName* name = m_pElement->m_pName;
            m_bPreserveEffective = m_pRules->ShouldPreserve(name->m_sNamespaceUri, name->m_sLocalName);
        }
    }
}

// The element declared namespaces, so its bindings are its own and every name of the start
// tag is looked up again, now failing on an unbound prefix.
void CDocumentBuilder::ResolveAgain() {
    m_pScope->SetOwner(m_pElement);
    m_pElement->m_pName = ResolveName(m_pElement->m_pName->m_sQualifiedName, true, true);
    CAttr* attributes = m_pElement->GetAttributeArray();
    for (int i = 0; i < m_pElement->m_nAttributeCount; ++i)
        attributes[i].m_pName = ResolveName(attributes[i].m_pName->m_sQualifiedName, false, true);
}

// A name met before in the same scope is taken from the recent names, except while the element
// declares namespaces, when its scope is still filling.
const CName* CDocumentBuilder::ResolveName(DomStringView qualifiedName, bool isElement, bool raise) {
    if (m_bScopeOwned) return LookUpName(qualifiedName, isElement, raise);
    SResolvedName* recent =
        m_aResolvedNames[isElement][QuickSlot(qualifiedName.data(), qualifiedName.size()) % RESOLVED_NAME_SLOTS];
    for (int way = 0; way < 2; ++way) {
        if (recent[way].pScope == m_pScope && SameText(recent[way].pName->m_sQualifiedName, qualifiedName))
            return recent[way].pName;
    }
    bool prefixMissing = m_bPrefixMissing;
    m_bPrefixMissing = false;
    const CName* name = LookUpName(qualifiedName, isElement, raise);
    if (!m_bPrefixMissing) {
        recent[1] = recent[0];
        recent[0] = SResolvedName{name, m_pScope};
    }
    m_bPrefixMissing |= prefixMissing;
    return name;
}

// Splits at the first ":"; an unprefixed element takes the default namespace, an unprefixed
// attribute none. An unbound prefix raises code 8 when `raise` is set and is noted otherwise.
const CName* CDocumentBuilder::LookUpName(DomStringView qualifiedName, bool isElement, bool raise) {
    DomStringView uri;
    size_t colon = qualifiedName.find(u':');
    if (colon != DomStringView::npos || isElement) {
        DomStringView prefix = colon == DomStringView::npos ? DomStringView() : qualifiedName.substr(0, colon);
        if (const CNamespaceNode* binding = m_pScope->Find(prefix)) {
            uri = binding->m_sUri;
        } else if (raise) {
            throw new CDomException(CDomException::NOT_FOUND_ERR);
        } else {
            m_bPrefixMissing = true;
        }
    }
    CNameTable& table = isElement ? m_pData->m_oElementNames : m_pData->m_oAttributeNames;
    return table.Intern(qualifiedName, uri, Core::HashText(qualifiedName));
}

void* CDocumentBuilder::AllocateNode(size_t size) {
    if (static_cast<size_t>(m_pNodeEnd - m_pNodeNext) < size) AddNodeChunk(size);
    void* record = m_pNodeNext;
    m_pNodeNext += size;
    return record;
}

void CDocumentBuilder::AddNodeChunk(size_t size) {
    size_t chunkSize = static_cast<size_t>(m_pData->m_nNodeChunkSize);
    if (chunkSize < size) chunkSize = size;
    m_pNodeNext = m_pData->AddNodeChunk(chunkSize);
    m_pNodeEnd = m_pNodeNext + chunkSize;
}

// Takes the next order number and links the record behind the current parent's last child.
void CDocumentBuilder::LinkChild(CChildNode* node, int classIndex) {
    node->m_pClass = m_pData->GetClass(static_cast<CDocumentData::EClass>(classIndex));
    node->m_nOrder = m_nNextOrder++;
    node->m_nAttributeCount = 0;
    node->m_pParent = m_pParent;
    node->m_pPrevious = m_pLast;
    node->m_pNext = nullptr;
    if (m_pLast)
        static_cast<CChildNode*>(m_pLast)->m_pNext = node;
    else
        m_pFirst = node;
    m_pLast = node;
}

void CDocumentBuilder::StartElement(DomStringView name) {
    if (!m_pScope) StartDocument();  // a caller that skipped it still gets the first scope
    FinishPrevious();
    CElement* element = static_cast<CElement*>(AllocateNode(sizeof(CElement)));
    LinkChild(element, CDocumentData::ELEMENT_CLASS);
    m_bScopeOwned = m_bPrefixMissing = m_bElementMoved = false;
    element->m_pName = ResolveName(name, true, false);
    // While the element is open its first child link holds the parent's, swapped back at the
    // end; the parent's last child is the element itself.
    element->m_pFirstChild = m_pFirst;
    element->m_pScope = m_pScope;
    m_pParent = m_pElement = element;
    m_pFirst = m_pLast = nullptr;
    if (m_bMayStrip) m_aPreserveStack.Add(static_cast<unsigned char>((m_bPreserve ? 2 : 0) | (m_bPreserveEffective ? 1 : 0)));
    m_bInStartTag = true;
    Notify(element, element->m_nOrder);
}

void CDocumentBuilder::EndElement() {
    FinishPrevious();
    if (m_pParent->GetNodeType() != ELEMENT_NODE) throw new CDomException(CDomException::HIERARCHY_REQUEST_ERR);
    CElement* element = static_cast<CElement*>(m_pParent);
    TagLastChild();
    CNode* parentFirst = element->m_pFirstChild;
    element->m_pFirstChild = m_pFirst;
    m_pParent = element->m_pParent;
    m_pFirst = parentFirst;
    m_pLast = element;
    m_pScope = m_pParent->GetNodeType() == ELEMENT_NODE ? static_cast<CElement*>(m_pParent)->m_pScope : m_pRootScope;
    if (m_bMayStrip && !m_aPreserveStack.IsEmpty()) {
        unsigned char flags = m_aPreserveStack.Last();
        m_aPreserveStack.RemoveLast();
        m_bPreserve = (flags & 2) != 0;
        m_bPreserveEffective = (flags & 1) != 0;
    }
}

// The children of the current parent are complete: the first keeps the last behind its tag.
void CDocumentBuilder::TagLastChild() {
    if (!m_pFirst) return;
    uintptr_t tagged = reinterpret_cast<uintptr_t>(m_pLast) | 1;
    static_cast<CChildNode*>(m_pFirst)->m_pPrevious = reinterpret_cast<CNode*>(tagged);
}

// "xmlns" alone declares the default namespace, "xmlns:p" the prefix p; null for anything else.
CNamespaceNode* CDocumentBuilder::DeclarationTarget(DomStringView name) {
    if (name.size() < 5 || name.substr(0, 5) != u"xmlns") return nullptr;
    if (name.size() > 5 && name[5] != u':') return nullptr;
    DomStringView prefix = name.size() > 5 ? name.substr(6) : DomStringView();
    if (!m_bScopeOwned) {
        m_pScope = new CNamespaceScope(*m_pScope, m_pData->m_pScopes);
        m_pData->AddScope(m_pScope);
        m_pElement->m_pScope = m_pScope;
        m_bScopeOwned = true;
    }
    return m_pScope->Bind(prefix);
}

void CDocumentBuilder::StartAttribute(DomStringView name) {
    if (!m_bInStartTag || m_pAttribute || m_pBinding) throw new CDomException(CDomException::HIERARCHY_REQUEST_ERR);
    BeginCollecting();
    if ((m_pBinding = DeclarationTarget(name))) return;
    if (static_cast<size_t>(m_pNodeEnd - m_pNodeNext) < sizeof(CAttr)) MoveElement();
    CAttr* attribute = reinterpret_cast<CAttr*>(m_pNodeNext);
    m_pNodeNext += sizeof(CAttr);
    attribute->m_pClass = m_pData->GetClass(CDocumentData::ATTRIBUTE_CLASS);
    attribute->m_nOrder = m_nNextOrder++;
    attribute->m_pOwner = m_pElement;
    attribute->m_pName = ResolveName(name, false, false);
    attribute->m_pValue = EMPTY_TEXT;
    ++m_pElement->m_nAttributeCount;
    m_pAttribute = attribute;
    Notify(attribute, attribute->m_nOrder);
}

// The attributes must lie directly behind their element, so an element whose next attribute
// does not fit moves with its attributes to a chunk of its own, with room to grow; once it has
// a chunk of its own, that chunk is resized. Nothing but the listener has seen the old address;
// the parent's links held here are repaired.
void CDocumentBuilder::MoveElement() {
    CElement* old = m_pElement;
    int count = old->m_nAttributeCount;
    size_t used = sizeof(CElement) + sizeof(CAttr) * static_cast<size_t>(count);
    size_t size = used + sizeof(CAttr) * static_cast<size_t>(Core::GrowthStep(count, 1));
    if (size < static_cast<size_t>(m_pData->m_nNodeChunkSize)) size = static_cast<size_t>(m_pData->m_nNodeChunkSize);
    char* chunk;
    if (reinterpret_cast<char*>(old) == m_pData->m_aNodeChunks.Last()) {
        chunk = m_pData->ResizeLastNodeChunk(size);
    } else {
        chunk = m_pData->AddNodeChunk(size);
        std::memcpy(chunk, static_cast<void*>(old), used);
    }
    m_pNodeNext = chunk + used;
    m_pNodeEnd = chunk + size;
    CElement* moved = reinterpret_cast<CElement*>(chunk);
    if (moved == old) return;
    if (moved->m_pFirstChild == old) moved->m_pFirstChild = moved;
    if (moved->m_pPrevious) static_cast<CChildNode*>(moved->m_pPrevious)->m_pNext = moved;
    m_pParent = m_pElement = moved;
    m_bElementMoved = true;
    if (m_pListener) ReportMove(old, moved, count);
}

// Tells the listener the old and new address of the element and of each attribute; the old
// addresses serve only as keys and may already be freed.
void CDocumentBuilder::ReportMove(CElement* old, CElement* moved, int count) {
    m_pListener->NodeMoved(old, moved);
    for (int i = 0; i < count; ++i) m_pListener->NodeMoved(old->GetAttributeArray() + i, moved->GetAttributeArray() + i);
}

void CDocumentBuilder::EndAttribute() {
    if (m_pAttribute) {
        const DomChar* value = ShareOrTerminateText();
        m_pAttribute->m_pValue = value;
        if (m_bMayStrip && IsXmlSpace(m_pAttribute->m_pName)) m_bPreserve = DomStringView(value) == u"preserve";
        m_pAttribute = nullptr;
    } else if (m_pBinding) {
        m_pBinding->m_sUri.assign(m_pTextStart, static_cast<size_t>(m_pTextNext - m_pTextStart));
        m_pTextNext = m_pTextStart;
        m_pBinding = nullptr;
    } else {
        throw new CDomException(CDomException::HIERARCHY_REQUEST_ERR);
    }
}

void CDocumentBuilder::Characters(const DomChar* units, int count) {
    if (!m_pAttribute && !m_pBinding && !m_pComment) {
        if (m_bInStartTag) CompleteStartTag();
        if (count <= 0) return;
        if (!m_bTextPending) {
            m_bTextPending = true;
            BeginCollecting();
        }
    }
    if (count <= 0) return;
    ReserveText(count);
    std::memcpy(m_pTextNext, units, sizeof(DomChar) * static_cast<size_t>(count));
    m_pTextNext += count;
}

void CDocumentBuilder::BeginCollecting() { m_pTextStart = m_pTextNext; }

// Makes the room for `count` more units and a terminator that ReserveText found missing. A text
// that outgrows its chunk moves whole to a new one, so that every text is contiguous; a chunk
// that holds nothing but that text is resized instead.
void CDocumentBuilder::MoveText(int count) {
    size_t collected = static_cast<size_t>(m_pTextNext - m_pTextStart);
    size_t needed = collected + static_cast<size_t>(count) + 1;
    size_t size = static_cast<size_t>(m_pData->m_nTextChunkSize);
    if (needed > size) size = needed + needed / 8;
    DomChar* chunk;
    if (m_pTextChunk && m_pTextStart == m_pTextChunk) {
        chunk = m_pData->ReplaceLastTextChunk(size);
    } else {
        chunk = m_pData->AddTextChunk(size);
        if (collected) std::memcpy(chunk, m_pTextStart, sizeof(DomChar) * collected);
    }
    m_pTextChunk = m_pTextStart = chunk;
    m_pTextNext = chunk + collected;
    m_pTextEnd = chunk + size;
}

const DomChar* CDocumentBuilder::TerminateText() {
    ReserveText(0);
    *m_pTextNext++ = 0;
    return m_pTextStart;
}

// Terminates the collected text, or, when it is short and the same units are stored already,
// gives its room back and returns the stored copy; the tree is never changed, so nodes may share.
const DomChar* CDocumentBuilder::ShareOrTerminateText() {
    size_t length = static_cast<size_t>(m_pTextNext - m_pTextStart);
    if (length > SHARED_TEXT_LIMIT) return TerminateText();
    SSharedText& slot = m_aSharedTexts[QuickSlot(m_pTextStart, length) % SHARED_TEXT_SLOTS];
    if (slot.pText && slot.nLength == length && SameUnits(slot.pText, m_pTextStart, length)) {
        m_pTextNext = m_pTextStart;
        return slot.pText;
    }
    slot = {TerminateText(), length};
    return slot.pText;
}

const DomChar* CDocumentBuilder::CopyText(DomStringView text) {
    BeginCollecting();
    ReserveText(static_cast<int>(text.size()));
    if (!text.empty()) std::memcpy(m_pTextNext, text.data(), sizeof(DomChar) * text.size());
    m_pTextNext += text.size();
    return TerminateText();
}

bool CDocumentBuilder::IsWhitespaceOnly() const {
    for (const DomChar* p = m_pTextStart; p != m_pTextNext; ++p) {
        if (*p != 0x20 && *p != 0x09 && *p != 0x0D && *p != 0x0A) return false;
    }
    return true;
}

// Whitespace-only text is dropped, and its room reclaimed, where it is not preserved; other
// text becomes one node, however many events it came in.
void CDocumentBuilder::CloseText() {
    m_bTextPending = false;
    if (!m_bPreserveEffective && IsWhitespaceOnly()) {
        m_pTextNext = m_pTextStart;
        return;
    }
    const DomChar* data = ShareOrTerminateText();
    CText* text = static_cast<CText*>(AllocateCharacterData(data));
    LinkChild(text, CDocumentData::TEXT_CLASS);
    SetData(text, data);
    Notify(text, text->m_nOrder);
}

// A text or comment record within reach of its data's offset. Data in the text chunks nearly
// always is; a far one (a long text in a block of its own) is copied behind the record, and
// `data` is set to the copy.
CCharacterData* CDocumentBuilder::AllocateCharacterData(const DomChar*& data) {
    void* record = AllocateNode(sizeof(CCharacterData));
    if (IsNear(record, data)) return static_cast<CCharacterData*>(record);
    m_pNodeNext -= sizeof(CCharacterData);
    return AllocateWithCopy(data);
}

// The rare far case, kept out of line so the common one saves no registers for it.
CCharacterData* CDocumentBuilder::AllocateWithCopy(const DomChar*& data) {
    size_t bytes = sizeof(DomChar) * (std::char_traits<DomChar>::length(data) + 1);
    void* record = AllocateNode(sizeof(CCharacterData) + (bytes + 7) / 8 * 8);
    DomChar* copy = reinterpret_cast<DomChar*>(static_cast<CCharacterData*>(record) + 1);
    std::memcpy(copy, data, bytes);
    if (data == m_pTextStart) {
        // The collected text's room is taken back; a shared-text slot that has just taken it
        // must follow the text to its copy.
        size_t length = bytes / sizeof(DomChar) - 1;
        if (length <= SHARED_TEXT_LIMIT) {
            SSharedText& slot = m_aSharedTexts[QuickSlot(data, length) % SHARED_TEXT_SLOTS];
            if (slot.pText == data) slot.pText = copy;
        }
        m_pTextNext = m_pTextStart;
    }
    data = copy;
    return static_cast<CCharacterData*>(record);
}

void CDocumentBuilder::StartComment() {
    FinishPrevious();
    CComment* comment = static_cast<CComment*>(AllocateNode(sizeof(CComment)));
    LinkChild(comment, CDocumentData::COMMENT_CLASS);
    // Empty until the comment ends: the data is the record's own null link.
    SetData(comment, reinterpret_cast<const DomChar*>(&comment->m_pNext));
    m_pComment = comment;
    BeginCollecting();
    Notify(comment, comment->m_nOrder);
}

void CDocumentBuilder::EndComment() {
    if (!m_pComment) throw new CDomException(CDomException::HIERARCHY_REQUEST_ERR);
    const DomChar* data = TerminateText();
    if (!IsNear(m_pComment, data)) MoveComment(data);
    SetData(m_pComment, data);
    m_pComment = nullptr;
}

// A comment too far from its data moves to where it is near it, or to a copy of it. The comment
// is its parent's last child so far, and only the listener has seen the old address.
void CDocumentBuilder::MoveComment(const DomChar*& data) {
    CComment* old = m_pComment;
    CComment* moved = static_cast<CComment*>(AllocateCharacterData(data));
    std::memcpy(static_cast<void*>(moved), static_cast<void*>(old), sizeof(CComment));
    if (moved->m_pPrevious)
        static_cast<CChildNode*>(moved->m_pPrevious)->m_pNext = moved;
    else
        m_pFirst = moved;
    m_pLast = m_pComment = moved;
    if (m_pListener) m_pListener->NodeMoved(old, moved);
}

void CDocumentBuilder::ProcessingInstruction(DomStringView target, DomStringView data) {
    FinishPrevious();
    CProcessingInstruction* instruction =
        static_cast<CProcessingInstruction*>(AllocateNode(sizeof(CProcessingInstruction)));
    LinkChild(instruction, CDocumentData::PROCESSING_INSTRUCTION_CLASS);
    instruction->m_pTarget = CopyText(target);
    instruction->m_pData = CopyText(data);
    Notify(instruction, instruction->m_nOrder);
}

void CDocumentBuilder::Notify(CNode* node, uint32_t order) {
    if (m_pListener) m_pListener->NodeCreated(node, order);
}

}  // namespace Dom
