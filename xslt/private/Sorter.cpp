// Rows of key strings sorted by an introspective quicksort over a permutation of row numbers.
#include "xslt/private/Sorter.h"

#include <algorithm>

namespace XsltPrivate {

namespace {

class CSortedIterator : public Xpath::CNodeIterator {
public:
    explicit CSortedIterator(CSortedNodeSet* nodeSet) : Xpath::CNodeIterator(nodeSet), m_pSorter(nodeSet->GetSorter()) {
        Step();
    }
    void Next() override { Step(); }

private:
    void Step() {
        if (m_nIndex < m_pSorter->GetCount())
            MoveTo(m_pSorter->GetNode(m_nIndex++));
        else
            Rewind();
    }

    CSorter* m_pSorter;  // kept alive by the node-set
    int32_t m_nIndex = 0;
};

}  // namespace

void CSorter::AddKey(const CSortKeyInfo& key) { m_aKeys.Add(key); }

void CSorter::Reserve(int32_t rows) {
    const int32_t cells = rows * m_aKeys.GetSize();
    m_aOrder.Reserve(rows);
    m_aNodes.Reserve(rows);
    m_aStrings.Reserve(cells);
    m_aNumbers.Reserve(cells);
}

void CSorter::AddNode(Dom::CNode* node, TArray<DomString>& keys) {
    const int count = m_aKeys.GetSize();
    m_aOrder.Add(m_aNodes.GetSize());
    m_aNodes.Add(node);
    for (int k = 0; k < count; ++k) {
        DomString text;
        if (k < keys.GetSize()) text = std::move(keys[k]);
        const CSortKeyInfo& key = m_aKeys[k];
        if (key.m_nDataType == CSortKeyInfo::Number) {
            m_aNumbers.Add(ReadSortNumber(text));
            text.clear();
        } else {
            m_aNumbers.Add(0.0);
            RankSortText(text, GetSortRanks(key.m_nCaseOrder));
        }
        m_aStrings.Add(std::move(text));
    }
    m_bSorted = false;
}

int CSorter::CompareRows(int32_t a, int32_t b) const {
    const int count = m_aKeys.GetSize();
    for (int k = 0; k < count; ++k) {
        const CSortKeyInfo& key = m_aKeys[k];
        const int ia = a * count + k, ib = b * count + k;
        int result;
        if (key.m_nDataType == CSortKeyInfo::Number) {
            double x = m_aNumbers[ia], y = m_aNumbers[ib];
            result = x < y ? -1 : (x > y ? 1 : 0);
        } else {
            const int order = m_aStrings[ia].compare(m_aStrings[ib]);
            result = (order > 0) - (order < 0);
        }
        if (result != 0) return key.m_nOrder == CSortKeyInfo::Descending ? -result : result;
    }
    return a < b ? -1 : (a > b ? 1 : 0);
}

void CSorter::Sort() {
    if (m_bSorted) return;
    m_bSorted = true;
    if (m_aKeys.IsEmpty()) return;
    // The order is total, so any correct sort gives the one result.
    std::sort(m_aOrder.begin(), m_aOrder.end(), [this](int32_t a, int32_t b) { return CompareRows(a, b) < 0; });
}

void CSorter::CreateCursor(TRefPtr<Xpath::CNodeIterator>& cursor) {
    TRefPtr<CSortedNodeSet> nodeSet(new CSortedNodeSet(this));
    nodeSet->CreateIterator(cursor);
}

CSortedNodeSet::CSortedNodeSet(CSorter* sorter) : m_pSorter(sorter) {}

CSortedNodeSet::~CSortedNodeSet() = default;

void CSortedNodeSet::CreateIterator(TRefPtr<Xpath::CNodeIterator>& iterator) {
    iterator = new CSortedIterator(this);
}

}  // namespace XsltPrivate
