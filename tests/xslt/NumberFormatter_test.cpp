// The number formatter: format strings read into prefix, tokens, separators and suffix, and
// numbers in decimal, alphabetic and roman tokens with the fallbacks to plain decimal.
#include <gtest/gtest.h>

#include <initializer_list>

#include "xslt/private/NumberFormatter.h"

namespace {

using XsltPrivate::CNumberFormatter;

struct SCase {
    const char16_t* pFormat;
    std::initializer_list<int32_t> numbers;
    const char16_t* pExpected;
};

DomString Format(const CNumberFormatter& formatter, std::initializer_list<int32_t> numbers) {
    TArray<int32_t> list;
    for (int32_t number : numbers) list.Add(number);
    DomString text;
    formatter.Format(list, text);
    return text;
}

DomString Format(const char16_t* format, std::initializer_list<int32_t> numbers) {
    CNumberFormatter formatter;
    formatter.SetFormat(format);
    return Format(formatter, numbers);
}

TEST(NumberFormatter, FormatsTokensPrefixesSeparatorsAndSuffixes) {
    const SCase cases[] = {
        {u"1", {3}, u"3"},
        {u"1.", {3}, u"3."},
        {u"(1)", {3}, u"(3)"},
        {u"1.1", {1, 2, 3}, u"1.2.3"},
        {u"1-a", {1, 2, 3}, u"1-b-c"},
        {u"(1", {1, 2, 3}, u"(1(2(3"},
        {u"A.1.i", {2, 3, 4}, u"B.3.iv"},
        {u"[1] ", {7}, u"[7] "},
        {u"", {1, 2, 3}, u"1.2.3"},
        {u"--", {1, 2}, u"--1--2"},
        {u"1", {}, u""},
        {u"<1>", {}, u"<>"},
        {u" 001", {5}, u" 005"},
    };
    for (const SCase& c : cases) {
        EXPECT_EQ(Format(c.pFormat, c.numbers), c.pExpected) << Core::ToUtf8(c.pFormat);
    }
}

TEST(NumberFormatter, FormatsDecimalAlphabeticAndRomanTokens) {
    const SCase cases[] = {
        {u"01", {3}, u"03"},
        {u"001", {1234}, u"1234"},
        {u"1", {0}, u"0"},
        {u"001", {0}, u"000"},
        {u"1", {-42}, u"-42"},
        {u"a", {1}, u"a"},
        {u"a", {28}, u"ab"},
        {u"A", {26}, u"Z"},
        {u"A", {27}, u"AA"},
        {u"A", {702}, u"ZZ"},
        {u"A", {703}, u"AAA"},
        {u"A", {0}, u"0"},
        {u"i", {4}, u"iv"},
        {u"I", {1994}, u"MCMXCIV"},
        {u"I", {3999}, u"MMMCMXCIX"},
        {u"i", {88}, u"lxxxviii"},
        {u"I", {4000}, u"4000"},
        {u"i", {0}, u"0"},
    };
    for (const SCase& c : cases) {
        EXPECT_EQ(Format(c.pFormat, c.numbers), c.pExpected) << Core::ToUtf8(c.pFormat) << " " << *c.numbers.begin();
    }
}

TEST(NumberFormatter, UnknownTokensAndFormatsBeyondLatin1FallBackToOne) {
    const SCase cases[] = {
        {u"x", {5}, u"5"},
        {u"Z", {5}, u"5"},
        {u"21", {5}, u"5"},
        {u"ii", {5}, u"5"},
        {u"(\u4e00)", {5}, u"5"},
        {u"\u00e9 1", {5}, u"\u00e9 5"},  // a Latin-1 letter is punctuation
    };
    for (const SCase& c : cases) {
        EXPECT_EQ(Format(c.pFormat, c.numbers), c.pExpected) << Core::ToUtf8(c.pFormat);
    }
}

TEST(NumberFormatter, GroupsDigitsWithoutCountingSeparatorsTowardsWidth) {
    CNumberFormatter formatter;
    formatter.SetFormat(u"1");
    formatter.SetGroupingSeparator(u",");
    formatter.SetGroupingSize(3);
    EXPECT_EQ(Format(formatter, {1234567}), u"1,234,567");
    EXPECT_EQ(Format(formatter, {123}), u"123");
    formatter.SetFormat(u"00001");
    formatter.SetGroupingSeparator(u"<>");
    formatter.SetGroupingSize(2);
    EXPECT_EQ(Format(formatter, {7}), u"0<>00<>07");
}

TEST(NumberFormatter, NewFormatClearsGrouping) {
    CNumberFormatter formatter;
    formatter.SetFormat(u"1");
    formatter.SetGroupingSeparator(u" ");
    formatter.SetGroupingSize(1);
    formatter.SetFormat(u"1");
    EXPECT_EQ(Format(formatter, {1000}), u"1000");
}

}  // namespace
