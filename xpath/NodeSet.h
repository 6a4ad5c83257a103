// Lazy node-sets and their iterators. A node-set produces iterators; an iterator stands on
// its first node as soon as it exists (position 1), or on null (position 0) for an empty set,
// and Next moves on until the current node is null again.
#pragma once
#include <cstdint>

#include "core/Array.h"
#include "core/RefObject.h"
#include "dom/Node.h"

namespace Xpath {

class CNodeIterator;
class CContext;
class CNodeTest;
class CPredicate;
class CSortedNodeList;
class CTestFilterNodeSet;

class CNodeSet : public CRefObject {
public:
    virtual bool IsDocumentOrder() const { return true; }
    virtual bool IsReverseDocumentOrder() const { return false; }
    // Counts through an iterator on first use and keeps the count.
    virtual int32_t GetLength();
    // The first node in iteration order, or null.
    virtual Dom::CNode* GetFirst();
    virtual void CreateIterator(TRefPtr<CNodeIterator>& iterator) = 0;

    // Makes the set start from another node, so that a streaming path can reuse a step's
    // chain of sets and iterators for the next context node; false if the set cannot.
    virtual bool Retarget(Dom::CNode* origin);

    // For a set that can walk with a test folded in: an iterator for `filter`, whose inner set
    // this is, stepping over the nodes its test turns away; false to leave that to the filter.
    virtual bool CreateTestedIterator(TRefPtr<CNodeIterator>& iterator, CTestFilterNodeSet* filter);
    // How many nodes of the set `test` accepts.
    virtual int32_t CountAccepted(CContext* context, const CNodeTest* test);

protected:
    int32_t m_nLength = -1;
};

class CNodeIterator : public CRefObject {
public:
    explicit CNodeIterator(CNodeSet* nodeSet);
    ~CNodeIterator() override;

    virtual CNodeSet* GetNodeSet() const { return m_pNodeSet; }
    virtual void GetCurrent(Dom::TNodeRef& node) const { node = m_current; }
    virtual int32_t GetPosition() const { return m_nPosition; }
    virtual void Next() = 0;
    // After Retarget of its set: starts over and stands on the first node, as a fresh iterator
    // would; false if this iterator cannot.
    virtual bool Restart();

    // The current node without touching counts.
    Dom::CNode* Current() const { return m_current.Get(); }

protected:
    // Stands on `node` with the next position, or on null with position 0.
    void MoveTo(Dom::CNode* node) {
        m_current = node;
        m_nPosition = node ? m_nPosition + 1 : 0;
    }
    void Rewind() {
        m_current = nullptr;
        m_nPosition = 0;
    }

    TRefPtr<CNodeSet> m_pNodeSet;
    Dom::TNodeRef m_current;
    int32_t m_nPosition = 0;
};

// One node or none.
class CSingleNodeSet : public CNodeSet {
public:
    explicit CSingleNodeSet(Dom::CNode* node) : m_node(node) {}
    int32_t GetLength() override { return m_node ? 1 : 0; }
    Dom::CNode* GetFirst() override { return m_node; }
    void CreateIterator(TRefPtr<CNodeIterator>& iterator) override;

private:
    Dom::TNodeRef m_node;
};

// The nodes of a sorted list, in its order.
class CNodeListNodeSet : public CNodeSet {
public:
    explicit CNodeListNodeSet(CSortedNodeList* list);
    ~CNodeListNodeSet() override;
    int32_t GetLength() override;
    void CreateIterator(TRefPtr<CNodeIterator>& iterator) override;

private:
    TRefPtr<CSortedNodeList> m_pList;
};

// A list that keeps its first two items in place; most unions have two operands.
template <class T>
class TPairFirstList {
public:
    int GetSize() const { return m_nSize; }
    void Add(const T& item) {
        if (m_nSize < 2)
            m_aPair[m_nSize] = item;
        else
            m_aRest.Add(item);
        ++m_nSize;
    }
    T& operator[](int i) { return i < 2 ? m_aPair[i] : m_aRest[i - 2]; }
    const T& operator[](int i) const { return i < 2 ? m_aPair[i] : m_aRest[i - 2]; }

private:
    T m_aPair[2];
    TArray<T> m_aRest;
    int m_nSize = 0;
};

// Merges operand sets that are each in document order, dropping duplicates. When the caller
// knows that every node of operand `first` stands before every node of the other, and there
// are two, the set is the one followed by the other and nothing is compared.
class CUnionNodeSet : public CNodeSet {
public:
    // `first` is -1 when the operands must be merged.
    explicit CUnionNodeSet(CContext* context, int first = -1);
    ~CUnionNodeSet() override;
    void AddOperand(CNodeSet* operand) { m_aOperands.Add(operand); }
    void CreateIterator(TRefPtr<CNodeIterator>& iterator) override;

    CContext* GetContext() const { return m_pContext; }
    const TPairFirstList<TRefPtr<CNodeSet>>& GetOperands() const { return m_aOperands; }

private:
    TRefPtr<CContext> m_pContext;
    TPairFirstList<TRefPtr<CNodeSet>> m_aOperands;
    int m_nFirst;
};

// The nodes of an inner set that a node test accepts.
class CTestFilterNodeSet : public CNodeSet {
public:
    CTestFilterNodeSet(CContext* context, CNodeSet* inner, CNodeTest* test);
    ~CTestFilterNodeSet() override;
    bool IsDocumentOrder() const override;
    bool IsReverseDocumentOrder() const override;
    int32_t GetLength() override;
    void CreateIterator(TRefPtr<CNodeIterator>& iterator) override;
    bool Retarget(Dom::CNode* origin) override;

    CContext* GetContext() const { return m_pContext; }
    CNodeSet* GetInner() const { return m_pInner; }
    CNodeTest* GetTest() const { return m_pTest; }

private:
    TRefPtr<CContext> m_pContext;
    TRefPtr<CNodeSet> m_pInner;
    TRefPtr<CNodeTest> m_pTest;
};

// The nodes of an inner set for which a predicate holds; inside the predicate, position and
// size are those of the inner iteration.
class CPredicateFilterNodeSet : public CNodeSet {
public:
    CPredicateFilterNodeSet(CContext* context, CNodeSet* inner, CPredicate* predicate);
    ~CPredicateFilterNodeSet() override;
    bool IsDocumentOrder() const override;
    bool IsReverseDocumentOrder() const override;
    void CreateIterator(TRefPtr<CNodeIterator>& iterator) override;
    bool Retarget(Dom::CNode* origin) override;

    CContext* GetContext() const { return m_pContext; }
    CNodeSet* GetInner() const { return m_pInner; }
    CPredicate* GetPredicate() const { return m_pPredicate; }

private:
    TRefPtr<CContext> m_pContext;
    TRefPtr<CNodeSet> m_pInner;
    TRefPtr<CPredicate> m_pPredicate;
};

}  // namespace Xpath
