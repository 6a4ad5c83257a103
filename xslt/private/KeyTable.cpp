// Key definitions, their lazily built indexes, and the run's document order.
#include "xslt/private/KeyTable.h"

#include <algorithm>

#include "core/Hash.h"
#include "dom/Name.h"
#include "dom/Document.h"
#include "xpath/Axis.h"
#include "xpath/PathExpr.h"
#include "xpath/Value.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/PatternNameFilter.h"
#include "xslt/private/Runtime.h"

namespace XsltPrivate {

namespace {

// A node-set of one node that can be moved to another, so that a whole walk evaluates
// through one execution context and one XPath context.
class CCursorNodeSet : public Xpath::CNodeSet {
public:
    int32_t GetLength() override { return 1; }
    Dom::CNode* GetFirst() override { return m_pNode; }
    void CreateIterator(TRefPtr<Xpath::CNodeIterator>& iterator) override;
    Dom::CNode* m_pNode = nullptr;
};

class CCursorIterator : public Xpath::CNodeIterator {
public:
    explicit CCursorIterator(CCursorNodeSet* nodes) : CNodeIterator(nodes) {}
    void Next() override { MoveTo(nullptr); }
    void StandOn(Dom::CNode* node) {
        Rewind();
        MoveTo(node);
    }
};

void CCursorNodeSet::CreateIterator(TRefPtr<Xpath::CNodeIterator>& iterator) {
    TRefPtr<CCursorIterator> cursor = new CCursorIterator(this);
    cursor->StandOn(m_pNode);
    iterator = cursor.Get();
}

class CKeyRangeIterator : public Xpath::CNodeIterator {
public:
    CKeyRangeIterator(Xpath::CNodeSet* nodes, CKeyIndex* index, int first, int count)
        : CNodeIterator(nodes), m_pIndex(index), m_nNext(first), m_nEnd(first + count) {
        Next();
    }
    void Next() override { MoveTo(m_nNext < m_nEnd ? m_pIndex->Get(m_nNext++).pNode : nullptr); }

private:
    CKeyIndex* m_pIndex;  // kept by the node-set
    int m_nNext;
    int m_nEnd;
};

// Visits `root` and every node below it in document order, with its type. Only nodes of
// the types that can have children are asked for them.
template <class FVisit>
void WalkTree(Dom::CNode* root, FVisit&& visit) {
    Dom::CNode* node = root;
    while (node) {
        const int type = node->GetNodeType();
        visit(node, type);
        const bool leaf = type == Dom::TEXT_NODE || type == Dom::CDATA_SECTION_NODE || type == Dom::COMMENT_NODE ||
                          type == Dom::PROCESSING_INSTRUCTION_NODE;
        Dom::CNode* next = leaf ? nullptr : node->GetFirstChild();
        for (; !next && node != root; node = node->GetParentNode()) next = node->GetNextSibling();
        node = next;
    }
}

bool SameEntry(const CKeyIndex::SEntry& a, const CKeyIndex::SEntry& b) {
    return a.pNode == b.pNode && a.sValue == b.sValue;
}

}  // namespace

CRunPatternHost::CRunPatternHost(CExecutionContext& context)
    : m_context(context), m_pPreviousActive(context.GetRuntime()->SetActiveContext(&context)) {}

CRunPatternHost::~CRunPatternHost() { m_context.GetRuntime()->SetActiveContext(m_pPreviousActive); }

void CRunPatternHost::MakeExpressionContext(TRefPtr<Xpath::CContext>& context) { m_context.MakeXpathContext(context); }

bool CRunPatternHost::ResolvePrefix(const DomString& prefix, DomString& uri) {
    CInstruction* instruction = m_context.GetInstruction();
    if (instruction) return instruction->GetNamespaces()->Lookup(prefix, uri);
    return m_context.GetRuntime()->GetEmptyNamespaces()->ResolvePrefix(prefix, uri);
}

bool CRunPatternHost::GetElementId(const Dom::CNode* node, DomString& id) {
    return m_context.GetRuntime()->GetNodeOrder()->GetElementId(node, id);
}

bool CRunPatternHost::MatchKey(const Dom::CNode* node, const DomString& uri, const DomString& local,
                               const DomString& value) {
    return m_context.GetRuntime()->GetKeyTable()->MatchKey(m_context, node, uri, local, value);
}

void CKeyIndex::Sort(bool addedInDocumentOrder) {
    // The order is total but for a node with one value twice, whose copies are alike, so any
    // correct sort gives the one result.
    // Values such as IDs often come in document order already, which one pass finds.
    auto less = [addedInDocumentOrder](const SEntry& a, const SEntry& b) {
        int order = a.sValue.compare(b.sValue);
        if (order) return order < 0;
        if (addedInDocumentOrder) return a.nOrdinal < b.nOrdinal;
        return Dom::CompareDocumentOrder(a.pNode, b.pNode) < 0;
    };
    if (!std::is_sorted(m_aEntries.begin(), m_aEntries.end(), less)) std::sort(m_aEntries.begin(), m_aEntries.end(), less);
    // A node with one value twice is one node of the key.
    int kept = 0;
    for (int i = 0; i < m_aEntries.GetSize(); ++i) {
        if (kept > 0 && SameEntry(m_aEntries[kept - 1], m_aEntries[i])) continue;
        if (kept != i) m_aEntries[kept] = std::move(m_aEntries[i]);
        ++kept;
    }
    m_aEntries.SetSize(kept);
}

bool CKeyIndex::Find(DomStringView value, int& first, int& count) const {
    const SEntry* begin = m_aEntries.begin();
    const SEntry* end = m_aEntries.end();
    const SEntry* low = std::lower_bound(begin, end, value,
                                         [](const SEntry& entry, DomStringView key) { return entry.sValue < key; });
    const SEntry* high = std::upper_bound(low, end, value,
                                          [](DomStringView key, const SEntry& entry) { return key < entry.sValue; });
    first = static_cast<int>(low - begin);
    count = static_cast<int>(high - low);
    return count > 0;
}

void CKeyNodeSet::CreateIterator(TRefPtr<Xpath::CNodeIterator>& iterator) {
    iterator = new CKeyRangeIterator(this, m_pIndex, m_nFirst, m_nCount);
}

// Evaluates one declaration at `root`, or at every node of its tree in document order: the node,
// its namespace nodes, its attributes, then its children. `visit` receives each value and node.
template <class FVisit>
void CKeyEvaluator::ForEachValue(CKeyDeclaration* declaration, Dom::CNode* root, bool wholeTree, FVisit&& visit) {
    TRefPtr<CCursorNodeSet> cursorSet = new CCursorNodeSet();
    cursorSet->m_pNode = root;
    TRefPtr<Xpath::CNodeIterator> iterator;
    cursorSet->CreateIterator(iterator);
    auto* cursor = static_cast<CCursorIterator*>(iterator.Get());
    CExecutionContext at(m_active, declaration, true);
    CExecutionContext on(at, cursor);
    CRunPatternHost host(on);
    TRefPtr<Xpath::CValue> value;
    DomString text;
    CPatternNameFilter filter(declaration->m_pMatch);
    auto evaluate = [&](Dom::CNode* node) {
        if (!filter.Admits(node)) return;
        CPatternContext patternContext(host, node);
        if (!declaration->m_pMatch->Matches(&patternContext, node)) return;
        cursorSet->m_pNode = node;
        cursor->StandOn(node);
        on.Evaluate(declaration->m_pUse, value);
        Xpath::CNodeSet* nodes = value->GetType() == Xpath::TypeNodeSet ? value->GetNodeSet() : nullptr;
        if (!nodes) {
            on.ConvertToString(value, text);
            return visit(text, node);
        }
        TRefPtr<Xpath::CNodeIterator> members;
        on.CreateIterator(nodes, members);
        for (; members->Current(); on.Advance(members)) visit(members->Current()->GetStringValue(), node);
    };
    if (!wholeTree) {
        evaluate(root);
    } else {
        WalkTree(root, [&](Dom::CNode* node, int type) {
            if (filter.AdmitsType(type)) evaluate(node);
            if (type != Dom::ELEMENT_NODE) return;
            if (filter.AdmitsNamespaces()) {
                for (int i = 0, n = node->GetNamespaceCount(); i < n; ++i) evaluate(node->GetNamespaceAt(i));
            }
            if (filter.AdmitsAttributes()) {
                for (int i = 0, n = node->GetAttributeCount(); i < n; ++i) evaluate(node->GetAttributeAt(i));
            }
        });
    }
    on.Leave();
    at.Leave();
}

void CKeyEvaluator::IndexTree(Dom::CNode* root, CKeyIndex& index) {
    for (CKeyDeclaration* declaration : m_pDefinition->m_aDeclarations) {
        ForEachValue(declaration, root, true, [&](DomString value, Dom::CNode* node) { index.Add(std::move(value), node); });
    }
    // One walk adds in document order; the walks of several declarations do not.
    index.Sort(m_pDefinition->m_aDeclarations.GetSize() == 1);
}

bool CKeyEvaluator::HasValue(Dom::CNode* node, DomStringView value) {
    bool found = false;
    for (CKeyDeclaration* declaration : m_pDefinition->m_aDeclarations) {
        ForEachValue(declaration, node, false, [&](const DomString& text, Dom::CNode*) { found = found || text == value; });
        if (found) return true;
    }
    return false;
}

CKeyTable::CKeyTable() = default;
CKeyTable::~CKeyTable() = default;

void CKeyTable::AddKey(CKeyDeclaration* declaration) {
    int index = FindDefinition(declaration->m_name.sUri, declaration->m_name.sLocalName);
    if (index < 0) {
        TRefPtr<CKeyDefinition> definition = new CKeyDefinition();
        definition->m_name = declaration->m_name;
        index = m_aDefinitions.GetSize();
        m_aDefinitions.Add(definition);
    }
    m_aDefinitions[index]->m_aDeclarations.Add(declaration);
    for (SDocumentKeys& keys : m_aDocuments) keys.aIndexes.SetSize(m_aDefinitions.GetSize());
}

void CKeyTable::AddDocument(Dom::CNode* document) { GetDocumentKeys(document); }

void CKeyTable::Clear() {
    m_aDocuments.Clear();
    m_aDefinitions.Clear();
}

void CKeyTable::RemoveDocument(Dom::CNode* document) {
    for (int i = 0; i < m_aDocuments.GetSize(); ++i) {
        if (m_aDocuments[i].document.Get() == document) return m_aDocuments.RemoveAt(i);
    }
}

bool CKeyTable::GetElementId(const Dom::CNode* node, DomString& id) {
    return node->GetOwnerDocument()->GetElementId(node, id);
}

// The document keeps its own ID index, built at the first request by one walk.
Dom::CNode* CKeyTable::GetElementById(const Dom::CNode* document, DomStringView id) {
    return document->GetOwnerDocument()->GetElementById(id);
}

int CKeyTable::Compare(const Dom::CNode* a, const Dom::CNode* b) { return Dom::CompareDocumentOrder(a, b); }

bool CKeyTable::MatchKey(CExecutionContext& active, const Dom::CNode* node, DomStringView uri, DomStringView local,
                         DomStringView value) {
    int index = FindDefinition(uri, local);
    if (index < 0) return false;
    return CKeyEvaluator(active, m_aDefinitions[index]).HasValue(const_cast<Dom::CNode*>(node), value);
}

void CKeyTable::KeyLookup(CExecutionContext& active, TRefPtr<Xpath::CNodeSet>& nodes, Dom::CNode* document,
                          DomStringView uri, DomStringView local, DomStringView value) {
    int definition = FindDefinition(uri, local);
    CKeyIndex* index = definition >= 0 && document ? GetIndex(active, document, definition) : nullptr;
    int first;
    int count;
    if (index && index->Find(value, first, count)) {
        nodes = new CKeyNodeSet(index, first, count);
    } else {
        nodes = new Xpath::CSingleNodeSet(nullptr);
    }
}

int CKeyTable::FindDefinition(DomStringView uri, DomStringView local) const {
    for (int i = 0; i < m_aDefinitions.GetSize(); ++i) {
        if (m_aDefinitions[i]->m_name.Equals(uri, local)) return i;
    }
    return -1;
}

CKeyTable::SDocumentKeys& CKeyTable::GetDocumentKeys(Dom::CNode* document) {
    for (SDocumentKeys& keys : m_aDocuments) {
        if (keys.document.Get() == document) return keys;
    }
    m_aDocuments.Add(SDocumentKeys{document, {}});
    m_aDocuments.Last().aIndexes.SetSize(m_aDefinitions.GetSize());
    return m_aDocuments.Last();
}

CKeyIndex* CKeyTable::GetIndex(CExecutionContext& active, Dom::CNode* document, int definition) {
    TRefPtr<CKeyIndex>& slot = GetDocumentKeys(document).aIndexes[definition];
    if (slot) return slot;
    // While the index is built an empty one stands in, so that a key used in its own
    // definition finds nothing instead of building itself again without end.
    slot = new CKeyIndex();
    TRefPtr<CKeyIndex> index = new CKeyIndex();
    CKeyEvaluator(active, m_aDefinitions[definition]).IndexTree(document, *index);
    // The build may have added documents, so the slot is looked up again.
    TRefPtr<CKeyIndex>& entered = GetDocumentKeys(document).aIndexes[definition];
    entered = index;
    return entered;
}

}  // namespace XsltPrivate
