// The sorter behind xsl:sort: keys are added first, then one row per node with its key
// strings; Sort orders the rows by the keys in turn, and by insertion order among equals, so
// the sort is stable and the order total.
//
// Use: for each xsl:sort, CSortKeyInfo::Read the evaluated attributes (code 45 on refusal),
// AddKey; for each selected node, evaluate every select to a string and AddNode; then Sort and
// wrap the sorter in a CSortedNodeSet, or walk GetNode.
#pragma once
#include <cstdint>

#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "dom/Node.h"
#include "xpath/NodeSet.h"
#include "xslt/private/SortKey.h"

namespace XsltPrivate {

class CSorter : public CRefObject {
public:
    virtual void AddKey(const CSortKeyInfo& key);
    // One row: `keys` holds one string per key, in key order; the strings are moved out, so
    // the caller may reuse the array for the next node.
    // Makes room for `rows` nodes with their keys at once, after the keys are added, so that a
    // large selection does not move its key texts at every step of growth.
    void Reserve(int32_t rows);
    virtual void AddNode(Dom::CNode* node, TArray<DomString>& keys);
    virtual void Sort();
    virtual int32_t GetCount() const { return m_aNodes.GetSize(); }
    // The node at a place of the sorted order (insertion order before Sort).
    virtual Dom::CNode* GetNode(int32_t index) const { return m_aNodes[m_aOrder[index]].Get(); }
    // An iterator over the nodes in sorted order, with position and size.
    virtual void CreateCursor(TRefPtr<Xpath::CNodeIterator>& cursor);

    // Negative or positive as row `a` sorts before or after row `b` (rows by insertion number).
    int CompareRows(int32_t a, int32_t b) const;

private:
    TArray<CSortKeyInfo> m_aKeys;
    TArray<Dom::TNodeRef> m_aNodes;
    // Key cells row by row: text keys as their rank texts (see RankSortText), and for number
    // keys the numbers they read as, their strings then left empty.
    TArray<DomString> m_aStrings;
    TArray<double> m_aNumbers;
    // Row numbers in sorted order; a row's insertion number is its index in m_aNodes.
    TArray<int32_t> m_aOrder;
    bool m_bSorted = false;
};

// A sorted sorter as a node-set: length, first node and iteration in sorted order.
class CSortedNodeSet : public Xpath::CNodeSet {
public:
    explicit CSortedNodeSet(CSorter* sorter);
    ~CSortedNodeSet() override;
    bool IsDocumentOrder() const override { return false; }
    int32_t GetLength() override { return m_pSorter->GetCount(); }
    Dom::CNode* GetFirst() override { return m_pSorter->GetCount() ? m_pSorter->GetNode(0) : nullptr; }
    void CreateIterator(TRefPtr<Xpath::CNodeIterator>& iterator) override;
    CSorter* GetSorter() const { return m_pSorter; }

private:
    TRefPtr<CSorter> m_pSorter;
};

}  // namespace XsltPrivate
