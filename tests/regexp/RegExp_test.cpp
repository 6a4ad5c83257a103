// Matching behaviour of CRegExp: table-driven cases of pattern, flags, text and the expected
// first match with its captures, written as "index:match|capture1|..." with "-" for unset.
#include <gtest/gtest.h>

#include "core/Exception.h"
#include "regexp/RegExp.h"

#include <string>

namespace {

using EcmaScript::CMatchResult;
using EcmaScript::CRegExp;

std::string Render(DomStringView text, const CMatchResult& result) {
    std::string out = std::to_string(result.GetStart(0)) + ":";
    for (int n = 0; n < result.GetCount(); ++n) {
        if (n) out += "|";
        out += result.IsSet(n) ? Core::ToUtf8(result.GetText(text, n)) : "-";
    }
    return out;
}

// The first match of `pattern` in `text` as rendered above, or "none".
std::string FirstMatch(const std::u16string& pattern, const char* flags, const std::u16string& text) {
    std::string f = flags;
    TRefPtr<CRegExp> regexp = new CRegExp(pattern, f.find('g') != std::string::npos,
                                          f.find('i') != std::string::npos, f.find('m') != std::string::npos);
    CMatchResult result;
    return regexp->Scan(text, 0, result) ? Render(text, result) : "none";
}

struct SMatchCase {
    const char16_t* pPattern;
    const char* pFlags;
    const char16_t* pText;
    const char* pExpected;
};

const SMatchCase kMatchCases[] = {
    // Atoms, runs and the unit a quantifier takes back from a run.
    {u"abc", "", u"xxabcxx", "2:abc"},
    {u"ab*", "", u"abbbc", "0:abbb"},
    {u"ab*", "", u"ac", "0:a"},
    {u"ab{2}c", "", u"abbc abc", "0:abbc"},
    {u"a\\.*b", "", u"a...b", "0:a...b"},
    {u"a.c", "", u"a\u2028c abc", "4:abc"},
    {u"\\x41\\u0042\\cJ\\t", "", u"AB\n\t", "0:AB\n\t"},
    // Greedy and lazy quantifiers, bounds.
    {u"a+", "", u"baaa", "1:aaa"},
    {u"a+?", "", u"baaa", "1:a"},
    {u"a{2,3}", "", u"aaaa", "0:aaa"},
    {u"a{2,3}?", "", u"aaaa", "0:aa"},
    {u"a{2,}", "", u"a aaaaa", "2:aaaaa"},
    {u"a{0}b", "", u"ab", "1:b"},
    {u"<.*>", "", u"<a><b>", "0:<a><b>"},
    {u"<.*?>", "", u"<a><b>", "0:<a>"},
    {u"a??b", "", u"ab", "0:ab"},
    // Empty iterations end a loop; a minimum is met by an empty iteration.
    {u"a*", "", u"", "0:"},
    {u"(a*)*", "", u"b", "0:|-"},
    {u"(a*)+", "", u"b", "0:|"},
    {u"(a|)*b", "", u"aab", "0:aab|a"},
    {u"(?:a|b)*?c", "", u"abbc", "0:abbc"},
    // Alternatives, captures and their reset on each optional iteration.
    {u"cat|dog|bird", "", u"a bird", "2:bird"},
    {u"a|ab", "", u"ab", "0:a"},
    {u"(a)|(b)", "", u"b", "0:b|-|b"},
    {u"((a)|b)+", "", u"ab", "0:ab|b|-"},
    {u"(a)(?:b)(c)", "", u"abc", "0:abc|a|c"},
    {u"(z)((a+)?(b+)?(c))*", "", u"zaacbbbcac", "0:zaacbbbcac|z|ac|a|-|c"},
    {u"(a+)+b", "", u"aaab", "0:aaab|aaa"},
    // Back references, also to a capture not yet set.
    {u"(a+)b\\1", "", u"aabaa", "0:aabaa|aa"},
    {u"(a)\\1", "i", u"aA", "0:aA|a"},
    {u"\\1(a)", "", u"a", "0:a|a"},
    {u"(a)|\\1b", "", u"b", "0:b|-"},
    {u"(a+)\\1", "", u"aaa", "0:aa|a"},
    // Assertions.
    {u"^b", "", u"a\nb", "none"},
    {u"^b", "m", u"a\nb", "2:b"},
    {u"a$", "", u"a\nb", "none"},
    {u"a$", "m", u"a\nb", "0:a"},
    {u"a$", "m", u"a\u2029", "0:a"},
    {u"\\bfoo\\b", "", u"afoo foo", "5:foo"},
    {u"\\Boo", "", u"oo foo", "4:oo"},
    {u"\\b", "", u"", "none"},
    {u"\\B", "", u"", "0:"},
    // Lookahead, negative lookahead and the captures they leave.
    {u"a(?=b)", "", u"ac ab", "3:a"},
    {u"(?=(a+))a*b\\1", "", u"baaabac", "3:aba|a"},
    {u"a(?!b)", "", u"ab ac", "3:a"},
    {u"(?!(a))b", "", u"b", "0:b|-"},
    {u"(?:(?!(a))x|a)", "", u"a", "0:a|-"},
    {u"(.*?)a(?!(a+)b\\2c)\\2(.*)", "", u"baaabaac", "0:baaabaac|ba|-|abaac"},
    // Classes: bitmaps, lists, negation, escapes and edge forms.
    {u"[a-c]+", "", u"xxbcaz", "2:bca"},
    {u"[^a-c]+", "", u"abxyc", "2:xy"},
    {u"[z-a]", "", u"az", "none"},
    {u"[^z-a]", "", u"\u2028", "0:\u2028"},
    {u"[\\d.]+", "", u"v1.25x", "1:1.25"},
    {u"[\\w-]+", "", u"  a-b_c!", "2:a-b_c"},
    {u"[-a]+", "", u"x-a-", "1:-a-"},
    {u"[\\b]", "", u"a\bb", "1:\b"},
    {u"[\\65]", "", u"xA", "1:A"},
    {u"[\\101]", "", u"Ae", "1:e"},
    {u"[^\\s]+", "", u"  ab ", "2:ab"},
    {u"[\\S\\s]", "", u"\u00e9", "0:\u00e9"},
    {u"[\\]x]+", "", u"]x]", "0:]x]"},
    // Character sets stop at 256; ignoreCase folds ASCII letters only.
    {u"\\w", "", u"\u00e9a", "1:a"},
    {u"\\W", "", u"a\u00e9", "1:\u00e9"},
    {u"\\s", "", u"a\u00a0", "1:\u00a0"},
    {u"\\s", "", u"\u2003", "none"},
    {u"\\d+", "", u"\u0663 42", "2:42"},
    {u"\\D", "", u"4\u0663", "1:\u0663"},
    {u"a", "i", u"A", "0:A"},
    {u"\u00e9", "i", u"\u00c9", "none"},
    {u"[A-Z]+", "i", u"aBc", "0:aBc"},
    {u"[a-z]+", "i", u"aBc", "0:aBc"},
    {u"[^a]", "i", u"Ab", "1:b"},
    {u"[\\da-c]+", "i", u"x1Cb", "1:1Cb"},
    {u"HeLLo", "i", u"say hello", "4:hello"},
    // Runs of one-unit atoms give back down to where the following unit stands; scans skip
    // positions where no match can begin.
    {u"\\w+B", "i", u"xxbyyb z", "0:xxbyyb"},
    {u"a{2,3}a", "", u"aaaa", "0:aaaa"},
    {u"[^a]+c", "", u"bbbcb", "0:bbbc"},
    {u"(\\d+)5", "", u"12345 55", "0:12345|1234"},
    {u"x*", "", u"ab", "0:"},
    {u"(?:ab)+c|\\d", "", u"xx ababc 5", "3:ababc"},
    {u"\u0100+x", "", u"a\u0100\u0100x", "1:\u0100\u0100x"},
    {u"[a\u0100-\u0200]y", "", u"by \u0150y", "3:\u0150y"},
    {u"(?=b)\\w|c", "", u"abc", "1:b"},
    {u"^$|b", "m", u"a\n\nb", "2:"},
    // Real-world shapes.
    {u"^[\\w.+-]+@[\\w-]+(\\.[\\w-]+)+$", "", u"john.doe+x@mail.example.org", "0:john.doe+x@mail.example.org|.org"},
    {u"^[\\w.+-]+@[\\w-]+(\\.[\\w-]+)+$", "", u"john@localhost", "none"},
    {u"(\\d{4})-(\\d{2})-(\\d{2})", "", u"on 2024-02-29.", "3:2024-02-29|2024|02|29"},
    {u"\"([^\"]*)\"|([^,]+)", "", u"\"a,b\",c", "0:\"a,b\"|a,b|-"},
};

TEST(RegExpMatch, FindsFirstMatchWithCaptures) {
    for (const SMatchCase& c : kMatchCases) {
        EXPECT_EQ(FirstMatch(c.pPattern, c.pFlags, c.pText), c.pExpected)
            << "pattern " << Core::ToUtf8(c.pPattern) << " flags " << c.pFlags;
    }
}

TEST(RegExpMatch, MatchesNulAndUnitsAboveTheBasicSets) {
    std::u16string text(u"a\0b", 3);
    EXPECT_EQ(FirstMatch(u"\\0b", "", text), std::string("1:\0b", 4));
    EXPECT_EQ(FirstMatch(u"[\\0]", "", text), std::string("1:\0", 3));
    EXPECT_EQ(FirstMatch(u"[\\u0100-\\uffff]+", "", u"a\u0100\uffffb"), "1:\u0100\uffff");
}

TEST(RegExpMatch, MatchAtIsAnchoredAndBounded) {
    TRefPtr<CRegExp> regexp = new CRegExp(u"b+", false, false, false);
    CMatchResult result;
    EXPECT_FALSE(regexp->MatchAt(u"abb", 0, result));
    EXPECT_TRUE(regexp->MatchAt(u"abb", 1, result));
    EXPECT_EQ(result.GetLength(0), 2);
    EXPECT_FALSE(regexp->MatchAt(u"abb", -1, result));
    EXPECT_FALSE(regexp->MatchAt(u"abb", 4, result));
    TRefPtr<CRegExp> empty = new CRegExp(u"", false, false, false);
    EXPECT_TRUE(empty->MatchAt(u"abb", 3, result));
}

TEST(RegExpMatch, SearchIgnoresLastIndexAndGlobal) {
    TRefPtr<CRegExp> regexp = new CRegExp(u"o", true, false, false);
    regexp->SetLastIndex(3);
    EXPECT_EQ(regexp->Search(u"foo"), 1);
    EXPECT_EQ(regexp->GetLastIndex(), 3);
    EXPECT_EQ(regexp->Search(u"bar"), -1);
}

TEST(RegExpMatch, NextStepsThroughGlobalMatchesAndResetsAtTheEnd) {
    TRefPtr<CRegExp> regexp = new CRegExp(u"\\d+", true, false, false);
    std::u16string text = u"a1b22c333";
    CMatchResult result;
    std::string seen;
    while (regexp->Next(text, result)) seen += Core::ToUtf8(result.GetText(text, 0)) + ";";
    EXPECT_EQ(seen, "1;22;333;");
    EXPECT_EQ(regexp->GetLastIndex(), 0);

    TRefPtr<CRegExp> once = new CRegExp(u"\\d+", false, false, false);
    once->SetLastIndex(5);
    ASSERT_TRUE(once->Next(text, result));
    EXPECT_EQ(result.GetStart(0), 1);
    EXPECT_EQ(once->GetLastIndex(), 5);
}

TEST(RegExpMatch, PathologicalPatternsEndWithoutCrashing) {
    // Deep backtracking state on a long text: one loop record per iteration.
    std::u16string text(200000, u'a');
    text += u'b';
    EXPECT_EQ(FirstMatch(u"(a*)*b", "", text).substr(0, 2), "0:");
    EXPECT_EQ(FirstMatch(u"(?:a|b)*c", "", text.substr(0, 3000)), "none");
    // Exponential in the length of a failing text, so kept short.
    EXPECT_EQ(FirstMatch(u"(a*)*b", "", std::u16string(18, u'a')), "none");
    // Zero-width iterations of a huge minimum meet it without consuming.
    EXPECT_EQ(FirstMatch(u"(?:){100000}x", "", u"x"), "0:x");
}

TEST(RegExpMatch, SharedProgramServesNestedLoopsRepeatedly) {
    TRefPtr<CRegExp> regexp = new CRegExp(u"((a+)b)+c", false, false, false);
    CMatchResult result;
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(regexp->Scan(u"xaabab abc aabaabc", 0, result));
        EXPECT_EQ(Render(u"xaabab abc aabaabc", result), "7:abc|ab|a");
    }
}

}  // namespace
