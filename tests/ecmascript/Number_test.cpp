// Script numbers: the two text readers, the arithmetic that keeps integer form, and the text form.
#include <gtest/gtest.h>

#include <cmath>

#include "ecmascript/Number.h"

namespace {

using EcmaScript::CNumber;

struct SRead {
    const char16_t* pText;
    bool bAccepted;
    bool bInteger;
    double dValue;
};

void ExpectReads(bool (*read)(DomStringView, CNumber&), const SRead& c) {
    CNumber number = CNumber::FromInteger(-99);
    bool accepted = read(c.pText, number);
    EXPECT_EQ(accepted, c.bAccepted) << Core::ToUtf8(c.pText);
    if (!accepted || !c.bAccepted) return;
    EXPECT_EQ(number.IsInteger(), c.bInteger) << Core::ToUtf8(c.pText);
    if (std::isnan(c.dValue)) {
        EXPECT_TRUE(number.IsNaN()) << Core::ToUtf8(c.pText);
    } else {
        EXPECT_EQ(number.GetDouble(), c.dValue) << Core::ToUtf8(c.pText);
    }
}

TEST(ScriptNumber, ReadsLiteralText) {
    const SRead cases[] = {
        {u"", false, false, 0},
        {u"7", true, true, 7},
        {u"0", true, true, 0},
        {u"010", true, true, 8},
        {u"0x10", true, true, 16},
        {u"0X7fffffff", true, true, 2147483647},
        {u"0xFFFFFFFF", true, false, 4294967295.0},
        {u"0x123456789abcdef01", true, false, 20988295479420645121.0},
        {u"0.5", true, false, 0.5},
        {u"0e5", false, false, 0},
        {u"999999999", true, true, 999999999},
        {u"1000000000", true, false, 1000000000},
        {u"0019", true, false, 1},
        {u"1e400", true, false, INFINITY},
        {u"1.", true, false, 1},
    };
    for (const SRead& c : cases) ExpectReads(CNumber::FromLiteralText, c);
}

TEST(ScriptNumber, ReadsStringText) {
    const SRead cases[] = {
        {u"", true, true, 0},
        {u" \t\n\r\v\f", true, true, 0},
        {u"  12  ", true, true, 12},
        {u"010", true, true, 10},
        {u"-5", true, true, -5},
        {u"+5", true, true, 5},
        {u"0x1A", true, true, 26},
        {u"0x", false, false, 0},
        {u"0x1g", true, false, 1},
        {u"Infinity", true, false, INFINITY},
        {u"+Infinity", true, false, INFINITY},
        {u"-Infinity", true, false, -INFINITY},
        {u"infinity", false, false, 0},
        {u".5", true, false, 0.5},
        {u"5.", true, false, 5},
        {u".", false, false, 0},
        {u"1e", false, false, 0},
        {u"1e-2", true, false, 0.01},
        {u"12abc", false, false, 0},
        {u"- 1", false, false, 0},
        {u"0000000000123", true, true, 123},
    };
    for (const SRead& c : cases) ExpectReads(CNumber::FromStringText, c);
}

TEST(ScriptNumber, PrintsIntegerFormUnsignedAndDoubleFormTidied) {
    struct {
        CNumber number;
        const char16_t* pText;
    } cases[] = {
        {CNumber::FromInteger(-1), u"4294967295"},
        {CNumber::FromInteger(0), u"0"},
        {CNumber::FromInteger(123), u"123"},
        {CNumber::FromDouble(-1), u"-1"},
        {CNumber::FromDouble(-1.5), u"-1.5"},
        {CNumber::FromDouble(0.5), u"0.5"},
        {CNumber::FromDouble(-0.25), u"-0.25"},
        {CNumber::FromDouble(2.5e-5), u"2.5e-05"},
        {CNumber::FromDouble(1e21), u"1e+21"},
        {CNumber::FromDouble(100), u"100"},
        {CNumber::FromDouble(0.1 + 0.2), u"0.3"},
        {CNumber::NegativeZero(), u"0"},
        {CNumber::NaN(), u"NaN"},
        {CNumber::PositiveInfinity(), u"Infinity"},
        {CNumber::NegativeInfinity(), u"-Infinity"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.number.ToString(), c.pText);
}

TEST(ScriptNumber, KeepsIntegerFormWithinItsRange) {
    CNumber largest = CNumber::FromInteger(2147483646);
    CNumber one = CNumber::FromInteger(1);
    EXPECT_TRUE(largest.Subtract(one).IsInteger());
    EXPECT_FALSE(largest.Add(one).IsInteger());
    EXPECT_EQ(largest.Add(one).GetDouble(), 2147483647.0);
    EXPECT_FALSE(CNumber::FromInteger(-2147483647).Subtract(one).IsInteger());
    CNumber million = CNumber::FromInteger(1000000);
    EXPECT_EQ(million.Multiply(million).GetDouble(), 1e12);
    EXPECT_FALSE(CNumber::FromInteger(6).Divide(CNumber::FromInteger(3)).IsInteger());
    EXPECT_TRUE(CNumber::FromInteger(1).Add(CNumber::FromDouble(1)).GetDouble() == 2);
}

TEST(ScriptNumber, FollowsTheRemainderAndShiftRules) {
    CNumber seven = CNumber::FromInteger(-7), three = CNumber::FromInteger(3), zero = CNumber::FromInteger(0);
    EXPECT_EQ(seven.Modulo(three).GetInteger(), -1);
    EXPECT_TRUE(seven.Modulo(zero).IsNaN());
    EXPECT_TRUE(CNumber::FromDouble(5).Modulo(CNumber::FromDouble(0)).IsNaN());
    EXPECT_EQ(CNumber::FromDouble(5.5).Modulo(CNumber::FromInteger(2)).GetDouble(), 1.5);
    EXPECT_EQ(CNumber::FromInteger(INT32_MIN).Modulo(CNumber::FromInteger(-1)).GetDouble(), 0);

    CNumber minusOne = CNumber::FromInteger(-1);
    CNumber shifted = minusOne.ShiftRightUnsigned(zero);
    EXPECT_TRUE(shifted.IsInteger());
    EXPECT_EQ(shifted.ToString(), u"4294967295");
    EXPECT_EQ(CNumber::FromDouble(-1).ShiftRightUnsigned(zero).GetDouble(), 4294967295.0);
    EXPECT_EQ(CNumber::FromInteger(1).ShiftLeft(CNumber::FromInteger(33)).GetInteger(), 2);
    EXPECT_EQ(CNumber::FromInteger(1).ShiftLeft(CNumber::FromInteger(-1)).GetInteger(), INT32_MIN);
    EXPECT_EQ(CNumber::FromDouble(4294967297.0).BitOr(zero).GetDouble(), 1);
    EXPECT_EQ(CNumber::FromInteger(INT32_MIN).Negate().GetInteger(), INT32_MIN);
    EXPECT_EQ(CNumber::FromDouble(-2.5).ToInt32().GetDouble(), -2);
    EXPECT_EQ(CNumber::FromDouble(-1).ToUint32().GetDouble(), 4294967295.0);
    EXPECT_EQ(CNumber::FromDouble(65537).ToUint16().GetDouble(), 1);
    EXPECT_EQ(CNumber::NaN().ToInteger().GetDouble(), 0);
    EXPECT_EQ(CNumber::FromDouble(-2.5).ToInteger().GetDouble(), -2);
}

}  // namespace
