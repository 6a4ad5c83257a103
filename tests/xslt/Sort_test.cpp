// The sorter: rank order of text, case orders, number keys, descending stability, several keys,
// the attribute checks, and a large sort against a stable reference.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

#include "tests/xpath/XpathTestSupport.h"
#include "xslt/XsltException.h"
#include "xslt/private/Sorter.h"

namespace {

using namespace XpathTest;
using XsltPrivate::CSortKeyInfo;
using XsltPrivate::CSorter;

CSortKeyInfo Key(int dataType = CSortKeyInfo::Text, int order = CSortKeyInfo::Ascending,
                 int caseOrder = CSortKeyInfo::NoCaseOrder) {
    CSortKeyInfo key;
    key.m_nDataType = dataType;
    key.m_nOrder = order;
    key.m_nCaseOrder = caseOrder;
    return key;
}

// Rows of a document's elements; the result names each row by its input index.
class CSortRun {
public:
    explicit CSortRun(int rows) {
        std::string markup = "<r>";
        for (int i = 0; i < rows; ++i) markup += "<i/>";
        CMarkupReader::Build(m_document, markup + "</r>");
        for (Dom::CNode* node = m_document->GetFirstChild()->GetFirstChild(); node; node = node->GetNextSibling())
            m_aNodes.push_back(node);
        m_pSorter = new CSorter();
    }
    // Sorts rows of one key each and lists the row indexes in sorted order.
    std::vector<int> Sort(const CSortKeyInfo& key, const std::vector<DomString>& texts) {
        m_pSorter->AddKey(key);
        for (size_t i = 0; i < texts.size(); ++i) {
            TArray<DomString> keys;
            keys.Add(texts[i]);
            m_pSorter->AddNode(m_aNodes[i], keys);
        }
        return Result();
    }
    std::vector<int> Result() {
        m_pSorter->Sort();
        std::vector<int> order;
        for (int i = 0; i < m_pSorter->GetCount(); ++i) order.push_back(IndexOf(m_pSorter->GetNode(i)));
        return order;
    }
    int IndexOf(const Dom::CNode* node) const {
        return static_cast<int>(std::find(m_aNodes.begin(), m_aNodes.end(), node) - m_aNodes.begin());
    }

    Dom::TNodeRef m_document;
    std::vector<Dom::CNode*> m_aNodes;
    TRefPtr<CSorter> m_pSorter;
};

std::vector<int> SortTexts(const std::vector<DomString>& texts, const CSortKeyInfo& key) {
    CSortRun run(static_cast<int>(texts.size()));
    return run.Sort(key, texts);
}

TEST(Sorter, CaseOrdersPlaceLettersAtTheirUpperCaseCode) {
    std::vector<DomString> texts = {u"a", u"B", u"A", u"b"};
    EXPECT_EQ(SortTexts(texts, Key()), (std::vector<int>{0, 2, 1, 3}));
    EXPECT_EQ(SortTexts(texts, Key(0, 0, CSortKeyInfo::UpperFirst)), (std::vector<int>{2, 0, 1, 3}));
    EXPECT_EQ(SortTexts(texts, Key(0, 0, CSortKeyInfo::LowerFirst)), (std::vector<int>{0, 2, 3, 1}));
}

TEST(Sorter, TextOrderByRankThenByCode) {
    // Digits before letters; non-letters below U+0100 by code; U+0100 and above last, by code;
    // a prefix and the empty string first.
    std::vector<DomString> texts = {u"b", u"\u0101", u"1", u"\u00e9", u"abcd", u"\u0100", u"abc", u"", u"[", u"Z"};
    EXPECT_EQ(SortTexts(texts, Key()), (std::vector<int>{7, 2, 6, 4, 0, 9, 8, 3, 5, 1}));
}

TEST(Sorter, NumberKeysReadWholeTextsAndCountTheRestAsZero) {
    std::vector<DomString> texts = {u"1", u"x", u"-1", u" 2e1 ", u"0.5", u"NaN", u"10", u"3 4", u"-Infinity"};
    EXPECT_EQ(SortTexts(texts, Key(CSortKeyInfo::Number)), (std::vector<int>{8, 2, 1, 5, 7, 4, 0, 6, 3}));
    EXPECT_EQ(XsltPrivate::ReadSortNumber(u"\u0661"), 0);
    EXPECT_EQ(XsltPrivate::ReadSortNumber(u"\t-.5\n"), -0.5);
}

TEST(Sorter, DescendingKeepsInputOrderAmongEquals) {
    std::vector<DomString> texts = {u"b", u"a", u"B", u"c", u"a"};
    EXPECT_EQ(SortTexts(texts, Key(0, CSortKeyInfo::Descending)), (std::vector<int>{3, 0, 2, 1, 4}));
    std::vector<DomString> numbers = {u"1", u"2", u"x", u"1", u"0"};
    EXPECT_EQ(SortTexts(numbers, Key(CSortKeyInfo::Number, CSortKeyInfo::Descending)),
              (std::vector<int>{1, 0, 3, 2, 4}));
}

TEST(Sorter, LaterKeysBreakTiesOfEarlierOnes) {
    CSortRun run(4);
    run.m_pSorter->AddKey(Key());
    run.m_pSorter->AddKey(Key(CSortKeyInfo::Number, CSortKeyInfo::Descending));
    const char16_t* rows[][2] = {{u"a", u"1"}, {u"b", u"5"}, {u"a", u"3"}, {u"A", u"2"}};
    for (int i = 0; i < 4; ++i) {
        TArray<DomString> keys;
        keys.Add(rows[i][0]);
        keys.Add(rows[i][1]);
        run.m_pSorter->AddNode(run.m_aNodes[i], keys);
        EXPECT_TRUE(keys[0].empty());
    }
    EXPECT_EQ(run.Result(), (std::vector<int>{2, 3, 0, 1}));
}

TEST(Sorter, WithoutKeysTheInputOrderStands) {
    CSortRun run(3);
    TArray<DomString> none;
    for (int i = 2; i >= 0; --i) run.m_pSorter->AddNode(run.m_aNodes[i], none);
    EXPECT_EQ(run.Result(), (std::vector<int>{2, 1, 0}));
}

TEST(Sorter, SortedNodeSetIteratesInSortedOrder) {
    CSortRun run(3);
    run.Sort(Key(), {u"c", u"a", u"b"});
    TRefPtr<Xpath::CNodeSet> set(new XsltPrivate::CSortedNodeSet(run.m_pSorter));
    EXPECT_EQ(set->GetLength(), 3);
    EXPECT_EQ(run.IndexOf(set->GetFirst()), 1);
    TRefPtr<Xpath::CNodeIterator> iterator;
    run.m_pSorter->CreateCursor(iterator);
    std::vector<int> seen;
    for (; iterator->Current(); iterator->Next()) seen.push_back(run.IndexOf(iterator->Current()) * 10 + iterator->GetPosition());
    EXPECT_EQ(seen, (std::vector<int>{11, 22, 3}));
    EXPECT_EQ(iterator->GetPosition(), 0);
}

TEST(Sorter, LargeSortAgreesWithAStableReference) {
    const int count = 3000;
    std::mt19937 random(7);
    std::vector<DomString> texts;
    for (int i = 0; i < count; ++i) {
        DomString text;
        for (int n = static_cast<int>(random() % 3); n >= 0; --n) text += static_cast<DomChar>(u"aAbB1\u0100"[random() % 6]);
        texts.push_back(text);
    }
    const uint32_t* ranks = XsltPrivate::GetSortRanks(CSortKeyInfo::UpperFirst);
    std::vector<int> expected(count);
    for (int i = 0; i < count; ++i) expected[i] = i;
    std::stable_sort(expected.begin(), expected.end(), [&](int a, int b) {
        return XsltPrivate::CompareSortText(texts[b], texts[a], ranks) < 0;
    });
    EXPECT_EQ(SortTexts(texts, Key(0, CSortKeyInfo::Descending, CSortKeyInfo::UpperFirst)), expected);
}

// The attribute checks, and the text of code 45 that the caller raises with what they name.
TEST(SortKeyAttributes, KeywordsAreCheckedAndLangIsKept) {
    const DomString up = u"up", de = u"de", number = u"number", descending = u"descending", lower = u"lower-first",
                    upper = u"Upper-first", date = u"date";
    const struct {
        const DomString* lang;
        const DomString* dataType;
        const DomString* order;
        const DomString* caseOrder;
        const char* failure;
    } cases[] = {
        {nullptr, nullptr, nullptr, nullptr, ""},
        {&de, &number, &descending, &lower, ""},
        {nullptr, nullptr, &up, nullptr, "Invalid computed attribute value: 'order' \n'up'"},
        {nullptr, &date, nullptr, nullptr, "Invalid computed attribute value: 'data-type' \n'date'"},
        {nullptr, nullptr, nullptr, &upper, "Invalid computed attribute value: 'case-order' \n'Upper-first'"},
    };
    for (const auto& c : cases) {
        CSortKeyInfo key;
        DomString attribute, value, message;
        if (!key.Read(c.lang, c.dataType, c.order, c.caseOrder, attribute, value))
            Xslt::CXsltException(Xslt::CXsltException::InvalidComputedAttributeValue, attribute, value).GetMessage(message);
        EXPECT_EQ(A(message), c.failure);
    }
    CSortKeyInfo key;
    DomString attribute, value;
    ASSERT_TRUE(key.Read(&de, &number, &descending, &lower, attribute, value));
    EXPECT_EQ(key.m_sLang, u"de");
    EXPECT_EQ(key.m_nDataType, CSortKeyInfo::Number);
    EXPECT_EQ(key.m_nOrder, CSortKeyInfo::Descending);
    EXPECT_EQ(key.m_nCaseOrder, CSortKeyInfo::LowerFirst);
    ASSERT_TRUE(key.Read(nullptr, nullptr, nullptr, nullptr, attribute, value));
    EXPECT_EQ(key.m_sLang, u"en");
}

}  // namespace
