// What the pattern compiler accepts and the messages with which it refuses the rest.
#include <gtest/gtest.h>

#include "core/Exception.h"
#include "regexp/RegExp.h"

#include <string>

namespace {

// "ok" if the pattern compiles, else the message of the exception.
std::string Outcome(const std::u16string& pattern) {
    try {
        TRefPtr<EcmaScript::CRegExp> regexp = new EcmaScript::CRegExp(pattern, false, false, false);
        return "ok";
    } catch (Core::IException* e) {
        DomString text;
        e->GetMessage(text);
        delete e;
        return Core::ToUtf8(text);
    }
}

struct SCompileCase {
    const char16_t* pPattern;
    const char* pExpected;
};

const SCompileCase kCompileCases[] = {
    {u"", "ok"},
    {u"a|", "ok"},
    {u"|", "ok"},
    {u"()", "ok"},
    {u"(?:a)", "ok"},
    {u"\\1(a)", "ok"},
    {u"[z-a]", "ok"},
    {u"[]", "ok"},
    {u"[^]", "ok"},
    {u"[\\w-]", "ok"},
    {u"\\.\\/\\-\\ ", "ok"},
    {u"a{2}{3}", "Invalid atom"},
    {u"a{2,1}", "Invalid quantifier prefix"},
    {u"a{x}", "Invalid quantifier prefix"},
    {u"a{", "Invalid quantifier prefix"},
    {u"a{1,x}", "Invalid quantifier prefix"},
    {u"a{1", "Missing token, '}' expected"},
    {u"a{1,2", "Missing token, '}' expected"},
    {u")", "Invalid atom"},
    {u"a)", "Invalid atom"},
    {u"*a", "Invalid atom"},
    {u"a**", "Invalid atom"},
    {u"^*", "Invalid atom"},
    {u"]", "Invalid atom"},
    {u"}", "Invalid atom"},
    {u"{1}", "Invalid atom"},
    {u"\\", "Invalid atom escape"},
    {u"ab\\", "Invalid atom escape"},
    {u"\\x4", "Invalid atom escape"},
    {u"\\x4g", "Invalid atom escape"},
    {u"\\u12", "Invalid atom escape"},
    {u"\\c1", "Invalid atom escape"},
    {u"\\c", "Invalid atom escape"},
    {u"(a)\\2", "Invalid decimal escape"},
    {u"\\65536", "Invalid decimal escape"},
    {u"[\\70000]", "Invalid decimal escape"},
    {u"\\_", "Invalid character escape"},
    {u"\\a", "Invalid character escape"},
    {u"\\$", "Invalid character escape"},
    {u"[\\q]", "Invalid character escape"},
    {u"[a", "Invalid character class"},
    {u"[a-", "Invalid character class"},
    {u"[\\", "Invalid character class"},
    {u"[\\d-x]", "Invalid character class"},
    {u"[a-\\d]", "Invalid character class"},
    {u"(a", "Missing token, ')' expected"},
    {u"(?=a", "Missing token, ')' expected"},
    {u"(?a)", "Invalid atom"},
};

TEST(RegExpCompiler, AcceptsOrRefusesWithItsMessage) {
    for (const SCompileCase& c : kCompileCases)
        EXPECT_EQ(Outcome(c.pPattern), c.pExpected) << "pattern " << Core::ToUtf8(c.pPattern);
}

TEST(RegExpCompiler, CountsCapturesInOpeningOrderAndSkipsNonCapturingGroups) {
    TRefPtr<EcmaScript::CRegExp> regexp = new EcmaScript::CRegExp(u"((a)(?:b)(?=(c)))(?!(d))", false, false, false);
    EXPECT_EQ(regexp->GetCaptureCount(), 4);
    EcmaScript::CMatchResult result;
    ASSERT_TRUE(regexp->MatchAt(u"abc", 0, result));
    EXPECT_EQ(result.GetStart(1), 0);
    EXPECT_EQ(result.GetLength(1), 2);
    EXPECT_EQ(result.GetStart(3), 2);
    EXPECT_FALSE(result.IsSet(4));
}

TEST(RegExpCompiler, DeepNestingIsRefusedAndLongPatternsCompile) {
    EXPECT_EQ(Outcome(std::u16string(5000, u'(') + std::u16string(5000, u')')), "Invalid atom");
    EXPECT_EQ(Outcome(std::u16string(500, u'(') + std::u16string(500, u')')), "ok");
    std::u16string alternatives;
    for (int i = 0; i < 50000; ++i) alternatives += u"ab*|";
    EXPECT_EQ(Outcome(alternatives + u"c"), "ok");
}

TEST(RegExpCompiler, ManyWideClassesStaySmallAndMatch) {
    std::u16string pattern;
    for (int i = 0; i < 20000; ++i) pattern += u"[\\u0000-\\uffff]";
    TRefPtr<EcmaScript::CRegExp> wide = new EcmaScript::CRegExp(pattern, false, false, false);
    EcmaScript::CMatchResult result;
    EXPECT_FALSE(wide->MatchAt(std::u16string(19999, u'\uabcd'), 0, result));
    EXPECT_TRUE(wide->MatchAt(u"x" + std::u16string(20000, u'\uabcd'), 0, result));
    TRefPtr<EcmaScript::CRegExp> ranges = new EcmaScript::CRegExp(u"[a\\u4e00-\\u9fff]+", false, false, false);
    EXPECT_EQ(ranges->Search(u"b\u4e2d\u6587"), 1);
    EXPECT_EQ(ranges->Search(u"\u3042"), -1);
}

TEST(RegExpCompiler, EveryShortPatternCompilesOrFailsWithAMessage) {
    const char16_t alphabet[] = u"a()[]{}|*+?^$\\-,.:=!1bdw0xu";
    const int size = static_cast<int>(sizeof(alphabet) / sizeof(alphabet[0])) - 1;
    for (int a = 0; a < size; ++a)
        for (int b = 0; b < size; ++b)
            for (int c = 0; c < size; ++c) {
                std::u16string pattern{alphabet[a], alphabet[b], alphabet[c]};
                std::string outcome = Outcome(pattern);
                ASSERT_FALSE(outcome.empty());
                ASSERT_EQ(outcome.find("Unclassified"), std::string::npos) << Core::ToUtf8(pattern);
                if (outcome == "ok") {
                    TRefPtr<EcmaScript::CRegExp> regexp = new EcmaScript::CRegExp(pattern, false, true, true);
                    regexp->Search(u"ab(a)\n[x]{1,2}");
                }
            }
}

}  // namespace
