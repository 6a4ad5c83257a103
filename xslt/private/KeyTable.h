// The run's keys: xsl:key declarations gathered by name, turned per document and on first use
// into an index of (value, node) entries sorted by value and then document order. The table is
// also the run's document order and its ID lookup, and answers the key() anchor of patterns.
//
// Use: the runtime makes one table, adds the key declarations of the stylesheet, and passes
// the table as the node order of every XPath context. key() calls KeyLookup; patterns call
// MatchKey through CRunPatternHost.
#pragma once
#include "core/Array.h"
#include "core/RefObject.h"
#include "dom/Node.h"
#include "xpath/Context.h"
#include "xpath/NodeSet.h"
#include "xslt/private/KeyDeclaration.h"
#include "xslt/private/PatternContext.h"

namespace XsltPrivate {

class CExecutionContext;

// What patterns ask of the run, answered through an execution context. While the host lives,
// that context is the run's active one, so that functions in predicates (key(), current())
// find it.
class CRunPatternHost : public IPatternHost {
public:
    explicit CRunPatternHost(CExecutionContext& context);
    ~CRunPatternHost() override;
    CRunPatternHost(const CRunPatternHost&) = delete;
    CRunPatternHost& operator=(const CRunPatternHost&) = delete;
    void MakeExpressionContext(TRefPtr<Xpath::CContext>& context) override;
    bool ResolvePrefix(const DomString& prefix, DomString& uri) override;
    bool GetElementId(const Dom::CNode* node, DomString& id) override;
    bool MatchKey(const Dom::CNode* node, const DomString& uri, const DomString& local,
                  const DomString& value) override;

private:
    CExecutionContext& m_context;
    CExecutionContext* m_pPreviousActive;
};

// The entries of one key in one document, sorted by value (code units), equal values in
// document order, without a node twice under one value.
class CKeyIndex : public CRefObject {
public:
    struct SEntry {
        DomString sValue;
        Dom::CNode* pNode;  // the document is kept alive by the table's record of it
        int nOrdinal;       // the order of adding
    };
    void Add(DomString value, Dom::CNode* node) { m_aEntries.Add(SEntry{std::move(value), node, m_aEntries.GetSize()}); }
    // With `addedInDocumentOrder` the order of adding stands for document order among equal values.
    void Sort(bool addedInDocumentOrder = false);
    // The range of entries equal to `value`, by two binary searches; false if there is none.
    bool Find(DomStringView value, int& first, int& count) const;
    int GetSize() const { return m_aEntries.GetSize(); }
    const SEntry& Get(int index) const { return m_aEntries[index]; }

private:
    TArray<SEntry> m_aEntries;
};

// A range of an index as a node-set.
class CKeyNodeSet : public Xpath::CNodeSet {
public:
    CKeyNodeSet(CKeyIndex* index, int first, int count) : m_pIndex(index), m_nFirst(first), m_nCount(count) {}
    int32_t GetLength() override { return m_nCount; }
    Dom::CNode* GetFirst() override { return m_pIndex->Get(m_nFirst).pNode; }
    void CreateIterator(TRefPtr<Xpath::CNodeIterator>& iterator) override;

private:
    TRefPtr<CKeyIndex> m_pIndex;
    int m_nFirst;
    int m_nCount;
};

// All declarations of one key name, in declaration order.
class CKeyDefinition : public CRefObject {
public:
    SQName m_name;
    TArray<TRefPtr<CKeyDeclaration>> m_aDeclarations;
};

// The values of nodes under one key: each declaration whose pattern matches the node
// contributes the string values of its use expression, evaluated at that node.
class CKeyEvaluator {
public:
    CKeyEvaluator(CExecutionContext& active, CKeyDefinition* definition) : m_active(active), m_pDefinition(definition) {}
    // Adds the entries of every node of the tree under `root` (attributes and namespace nodes too).
    void IndexTree(Dom::CNode* root, CKeyIndex& index);
    // True if one of the node's values equals `value`.
    bool HasValue(Dom::CNode* node, DomStringView value);

private:
    template <class FVisit>
    void ForEachValue(CKeyDeclaration* declaration, Dom::CNode* root, bool wholeTree, FVisit&& visit);

    CExecutionContext& m_active;
    CKeyDefinition* m_pDefinition;
};

class CKeyTable : public Xpath::INodeOrder {
public:
    CKeyTable();
    ~CKeyTable() override;

    // Declarations of one name add up to one definition.
    void AddKey(CKeyDeclaration* declaration);
    // Makes the record of a document, whose indexes are built on demand; known documents stay.
    void AddDocument(Dom::CNode* document);
    // Forgets a document and its indexes.
    void RemoveDocument(Dom::CNode* document);
    // Drops every definition and document at the end of a run. Instructions keep their last
    // expression context, which holds this table, so the declarations must not stay held here.
    void Clear();

    bool GetElementId(const Dom::CNode* node, DomString& id) override;
    Dom::CNode* GetElementById(const Dom::CNode* document, DomStringView id) override;
    // Document number, then order within the document.
    int Compare(const Dom::CNode* a, const Dom::CNode* b) override;

    bool MatchKey(CExecutionContext& active, const Dom::CNode* node, DomStringView uri, DomStringView local,
                  DomStringView value);
    // The nodes of `document` with `value` under the key; empty for an undeclared key.
    void KeyLookup(CExecutionContext& active, TRefPtr<Xpath::CNodeSet>& nodes, Dom::CNode* document,
                   DomStringView uri, DomStringView local, DomStringView value);

private:
    struct SDocumentKeys {
        Dom::TNodeRef document;
        TArray<TRefPtr<CKeyIndex>> aIndexes;  // one per definition, null until built
    };
    int FindDefinition(DomStringView uri, DomStringView local) const;
    SDocumentKeys& GetDocumentKeys(Dom::CNode* document);
    CKeyIndex* GetIndex(CExecutionContext& active, Dom::CNode* document, int definition);

    TArray<TRefPtr<CKeyDefinition>> m_aDefinitions;
    TArray<SDocumentKeys> m_aDocuments;
};

}  // namespace XsltPrivate
