// The key index: entries sorted by value in code-unit order, equal values in document order
// whatever order they were added in, one entry per node and value, and ranges found by value.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/xpath/XpathTestSupport.h"
#include "xslt/private/KeyTable.h"

namespace {

using namespace XpathTest;
using XsltPrivate::CKeyIndex;
using XsltPrivate::CKeyNodeSet;

class KeyIndexTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string markup = "<r>";
        for (int i = 0; i < 6; ++i) markup += "<n/>";
        CMarkupReader::Build(m_document, markup + "</r>");
        for (Dom::CNode* n = m_document->GetFirstChild()->GetFirstChild(); n; n = n->GetNextSibling()) m_nodes.push_back(n);
        m_pIndex = new CKeyIndex();
    }

    // The positions of the nodes under `value`, in the order the index gives them.
    std::string Lookup(const char16_t* value) {
        int first;
        int count;
        if (!m_pIndex->Find(value, first, count)) return "-";
        TRefPtr<Xpath::CNodeSet> nodes = new CKeyNodeSet(m_pIndex, first, count);
        TRefPtr<Xpath::CNodeIterator> iterator;
        nodes->CreateIterator(iterator);
        std::string text;
        for (; iterator->Current(); iterator->Next()) {
            for (size_t i = 0; i < m_nodes.size(); ++i) {
                if (m_nodes[i] == iterator->Current()) text += static_cast<char>('0' + i);
            }
        }
        return text;
    }

    Dom::TNodeRef m_document;
    std::vector<Dom::CNode*> m_nodes;
    TRefPtr<CKeyIndex> m_pIndex;
};

TEST_F(KeyIndexTest, EqualValuesComeInDocumentOrderWithoutRepeats) {
    const int order[] = {5, 2, 4, 0, 3, 1};
    for (int i : order) m_pIndex->Add(i % 2 ? u"odd" : u"even", m_nodes[i]);
    m_pIndex->Add(u"odd", m_nodes[3]);
    m_pIndex->Add(u"even", m_nodes[0]);
    m_pIndex->Add(u"all", m_nodes[4]);
    m_pIndex->Add(u"all", m_nodes[1]);
    m_pIndex->Sort();
    EXPECT_EQ(Lookup(u"even"), "024");
    EXPECT_EQ(Lookup(u"odd"), "135");
    EXPECT_EQ(Lookup(u"all"), "14");
    EXPECT_EQ(m_pIndex->GetSize(), 8);
}

TEST_F(KeyIndexTest, ValuesCompareByCodeUnits) {
    const char16_t* values[] = {u"b", u"B", u"", u"ab", u"a", u"\u00e9", u"b "};
    for (int i = 0; i < 6; ++i) m_pIndex->Add(values[i], m_nodes[i]);
    m_pIndex->Sort();
    EXPECT_EQ(Lookup(u"b"), "0");
    EXPECT_EQ(Lookup(u"B"), "1");
    EXPECT_EQ(Lookup(u""), "2");
    EXPECT_EQ(Lookup(u"a"), "4");
    EXPECT_EQ(Lookup(u"\u00e9"), "5");
    EXPECT_EQ(Lookup(u"b "), "-");
    EXPECT_EQ(Lookup(u"c"), "-");
    for (int i = 1; i < m_pIndex->GetSize(); ++i) EXPECT_LE(m_pIndex->Get(i - 1).sValue, m_pIndex->Get(i).sValue);
}

TEST_F(KeyIndexTest, LargeIndexFindsEveryValueRange) {
    // Many entries over few values, added in a scrambled order, exercise the partitioning sort.
    for (int round = 0; round < 500; ++round) {
        for (int i = 0; i < 6; ++i) {
            int node = (i * 5 + round) % 6;
            m_pIndex->Add(Core::WidenLatin1(std::to_string((round * 7 + i) % 37)), m_nodes[node]);
        }
    }
    m_pIndex->Sort();
    int total = 0;
    for (int value = 0; value < 37; ++value) {
        std::string found = Lookup(Core::WidenLatin1(std::to_string(value)).c_str());
        ASSERT_NE(found, "-") << value;
        for (size_t i = 1; i < found.size(); ++i) EXPECT_LT(found[i - 1], found[i]) << value;
        total += static_cast<int>(found.size());
    }
    EXPECT_EQ(total, m_pIndex->GetSize());
}

}  // namespace
