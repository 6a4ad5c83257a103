// Sort keys as the sorter stores them: number texts read on the short path agree with the C
// library, and rank texts order as the rank comparison does.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

#include "xslt/private/SortKey.h"

namespace {

using XsltPrivate::CSortKeyInfo;

DomString Widen(const std::string& text) { return DomString(text.begin(), text.end()); }

TEST(SortKeyReading, PlainDecimalsReadAsTheCLibraryReadsThem) {
    std::mt19937 random(11);
    for (int i = 0; i < 20000; ++i) {
        std::string text = random() % 4 == 0 ? "-" : "";
        const int whole = 1 + static_cast<int>(random() % 12);
        for (int d = 0; d < whole; ++d) text += static_cast<char>('0' + random() % 10);
        if (random() % 2) {
            text += '.';
            for (int d = static_cast<int>(random() % 8); d >= 0; --d) text += static_cast<char>('0' + random() % 10);
        }
        EXPECT_EQ(XsltPrivate::ReadSortNumber(Widen(text)), std::strtod(text.c_str(), nullptr)) << text;
    }
}

TEST(SortKeyReading, TextsOutsideThePlainFormStillReadWhole) {
    const struct {
        const char* pText;
        double nValue;
    } cases[] = {{"1234567890123456789", 1234567890123456789.0}, {"0.1234567890123456", 0.1234567890123456},
                 {"+5", 5}, {".5", 0.5}, {"5.", 5}, {"-", 0}, {"1.2.3", 0}, {"1e3", 1000}, {" -7 ", -7}, {"--1", 0}};
    for (const auto& test : cases) EXPECT_EQ(XsltPrivate::ReadSortNumber(Widen(test.pText)), test.nValue) << test.pText;
    EXPECT_TRUE(std::signbit(XsltPrivate::ReadSortNumber(u"-0")));
}

TEST(SortKeyReading, RankTextsOrderAsTheirTextsCompare) {
    const DomString texts[] = {u"", u"a", u"A", u"b", u"B", u"ab", u"aB", u"Z[", u"z\u00ff", u"\u00e9", u"\u0100", u"a\u0100", u"1"};
    for (int caseOrder = CSortKeyInfo::NoCaseOrder; caseOrder <= CSortKeyInfo::LowerFirst; ++caseOrder) {
        const uint32_t* ranks = XsltPrivate::GetSortRanks(caseOrder);
        for (const DomString& a : texts) {
            for (const DomString& b : texts) {
                DomString rankedA = a, rankedB = b;
                XsltPrivate::RankSortText(rankedA, ranks);
                XsltPrivate::RankSortText(rankedB, ranks);
                const int expected = XsltPrivate::CompareSortText(a, b, ranks);
                const int actual = rankedA.compare(rankedB);
                EXPECT_EQ((expected > 0) - (expected < 0), (actual > 0) - (actual < 0));
            }
        }
    }
}

}  // namespace
