// The node-sets of location paths. Element 0 is the base (or the first step), the others the
// steps. A streaming set nests one live iterator per element; a collecting set gathers each
// level into a sorted list on its first iterator, so it delivers document order always.
#pragma once
#include "core/Array.h"
#include "xpath/Expression.h"
#include "xpath/NodeSet.h"

namespace Xpath {

class CStreamingPathNodeSet : public CNodeSet {
public:
    explicit CStreamingPathNodeSet(CContext* context);
    ~CStreamingPathNodeSet() override;
    void AddElement(CExpression* element) { m_aElements.Add(element); }
    // The sizes of the last element's sets added up, each counted as that set can.
    int32_t GetLength() override;
    void CreateIterator(TRefPtr<CNodeIterator>& iterator) override;

    CContext* GetContext() const { return m_pContext; }
    const TArray<TRefPtr<CExpression>>& GetElements() const { return m_aElements; }

private:
    TRefPtr<CContext> m_pContext;
    TArray<TRefPtr<CExpression>> m_aElements;
};

class CCollectedPathNodeSet : public CNodeSet {
public:
    explicit CCollectedPathNodeSet(CContext* context);
    ~CCollectedPathNodeSet() override;
    void AddElement(CExpression* element) { m_aElements.Add(element); }
    void CreateIterator(TRefPtr<CNodeIterator>& iterator) override;
    int32_t GetLength() override;

private:
    void Collect();

    TRefPtr<CContext> m_pContext;
    TArray<TRefPtr<CExpression>> m_aElements;
    TRefPtr<CSortedNodeList> m_pResult;
};

}  // namespace Xpath
