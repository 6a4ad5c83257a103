// Message rendering and the counted holder.
#include <gtest/gtest.h>

#include "core/Array.h"
#include "core/Exception.h"
#include "core/RefObject.h"

namespace {

DomString Format(const DomChar* format, const DomChar* a1 = nullptr, const DomChar* a2 = nullptr,
                 const DomChar* a3 = nullptr) {
    DomString text;
    Core::FormatMessage(text, format, a1, a2, a3);
    return text;
}

TEST(FormatMessage, FourthPlaceholderBecomesQuestionMark) {
    EXPECT_EQ(Format(u"%s %s %s %s", u"a", u"b", u"c"), u"a b c ?");
}

TEST(FormatMessage, PercentWithoutSIsCopied) {
    EXPECT_EQ(Format(u"100%"), u"100%");
    EXPECT_EQ(Format(u"%% %d '%'"), u"%% %d '%'");
}

TEST(FormatMessage, NullArgumentGivesQuestionMarkAndDoesNotAdvance) {
    EXPECT_EQ(Format(u"[%s][%s]", nullptr, u"b"), u"[?][?]");
    EXPECT_EQ(Format(u"[%s][%s]", u""), u"[][?]");
}

const Core::SMessage kTable[] = {
    {1, u"First: '%s'"},
    {2, u"Second: '%s', '%s'"},
    {-1, u"Unclassified test error"},
};

TEST(FormatTableMessage, UnknownCodeRendersUnclassifiedRow) {
    DomString text;
    Core::FormatTableMessage(text, kTable, 7, u"x", u"");
    EXPECT_EQ(text, u"Unclassified test error");
    Core::FormatTableMessage(text, kTable, 2, u"x", u"");
    EXPECT_EQ(text, u"Second: 'x', ''");
}

struct CCounted : CRefObject {
    explicit CCounted(int* deaths) : m_pDeaths(deaths) {}
    ~CCounted() override { ++*m_pDeaths; }
    int* m_pDeaths;
};

TEST(RefPtr, SelfAssignmentKeepsObjectAlive) {
    int deaths = 0;
    TRefPtr<CCounted> p(new CCounted(&deaths));
    p = p.Get();
    TRefPtr<CCounted>& same = p;  // through a reference, as self-assignment happens in real code
    p = same;
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(p->GetRefCount(), 1);
    p = nullptr;
    EXPECT_EQ(deaths, 1);
}

TEST(RefPtr, DroppedObjectIsDeletedOnce) {
    int deaths = 0;
    {
        TRefPtr<CCounted> a(new CCounted(&deaths));
        TRefPtr<CCounted> b = a;
        a = nullptr;
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(Array, GrowsByOneEighthClampedToFourAndTenTwentyFour) {
    TArray<int> small;
    for (int i = 0; i < 8; ++i) small.Add(i);
    small.Reserve(small.GetCapacity());
    int before = small.GetCapacity();
    while (small.GetSize() < before) small.Add(0);
    small.Add(1);
    EXPECT_EQ(small.GetCapacity() - before, std::max(4, before / 8));
    EXPECT_EQ(Core::GrowthStep(8, 1), 4);
    EXPECT_EQ(Core::GrowthStep(16000, 1), 1024);
    EXPECT_EQ(Core::GrowthStep(16000, 5000), 5000);
}

TEST(Array, HoldsStringsAcrossGrowth) {
    TArray<DomString> texts;
    for (int i = 0; i < 100; ++i) texts.Add(DomString(u"text number ") + DomChar(u'A' + i % 26));
    texts.RemoveAt(0);
    EXPECT_EQ(texts.GetSize(), 99);
    EXPECT_EQ(texts[0], u"text number B");
}

}  // namespace
