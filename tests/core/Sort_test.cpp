// The shared quicksort over an ISortable.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "core/Sort.h"

namespace {

class CVectorSortable : public Core::ISortable {
public:
    explicit CVectorSortable(std::vector<int> items) : m_aItems(std::move(items)) {}
    int GetSize() override { return static_cast<int>(m_aItems.size()); }
    int Compare(int i, int j) override {
        ++m_nCompares;
        return m_aItems[i] < m_aItems[j] ? -1 : (m_aItems[i] > m_aItems[j] ? 1 : 0);
    }
    void Swap(int i, int j) override { std::swap(m_aItems[i], m_aItems[j]); }
    std::vector<int> m_aItems;
    long m_nCompares = 0;
};

TEST(Sort, OrdersInputsOfEveryShape) {
    std::vector<std::vector<int>> inputs = {{}, {1}, {2, 1}, {3, 1, 2, 3, 1}, {9, 8, 7, 6, 5, 4, 3, 2, 1}};
    std::vector<int> shaped;
    for (int i = 0; i < 5000; ++i) shaped.push_back((i * 7919) % 1013);
    inputs.push_back(shaped);
    std::vector<int> ascending(3000), equal(3000, 4), descending(3000);
    for (int i = 0; i < 3000; ++i) ascending[i] = i, descending[i] = 3000 - i;
    inputs.push_back(ascending);
    inputs.push_back(equal);
    inputs.push_back(descending);
    for (const std::vector<int>& input : inputs) {
        CVectorSortable sortable(input);
        Core::Sort(sortable);
        std::vector<int> expected = input;
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(sortable.m_aItems, expected);
    }
}

TEST(Sort, SortedInputCostsNoMoreThanNLogN) {
    std::vector<int> ascending(100000);
    for (int i = 0; i < 100000; ++i) ascending[i] = i;
    CVectorSortable sortable(ascending);
    Core::Sort(sortable);
    EXPECT_LT(sortable.m_nCompares, 100000L * 40);
}

}  // namespace
