// Number formatting with its six-digit limit, reading numbers from text, and rounding.
#include <cmath>
#include <limits>

#include "XpathTestSupport.h"

namespace {

using namespace XpathTest;
using Xpath::CNumber;

TEST(Number, FormatsInFixedNotationWithAtMostSixDecimals) {
    const double inf = std::numeric_limits<double>::infinity();
    struct {
        double value;
        const char* text;
    } rows[] = {
        {std::nan(""), "NaN"},  {0.0, "0"},          {-0.0, "0"},         {inf, "Infinity"},
        {-inf, "-Infinity"},    {2, "2"},            {2.5, "2.5"},        {-2.5, "-2.5"},
        {0.5, "0.5"},           {-0.5, "-0.5"},      {1.0 / 3, "0.333333"}, {0.1 + 0.2, "0.3"},
        {1e12, "1000000000000"}, {0.0000001, "0"},   {-0.0000001, "-0"},  {123456.0000004, "123456"},
        {1e21, "1000000000000000000000"}, {100, "100"}, {0.000001, "0.000001"}, {1.9999999, "2"},
    };
    for (auto& row : rows) EXPECT_EQ(A(CNumber(row.value).ToString()), row.text) << row.value;
    EXPECT_EQ(CNumber(1.7976931348623157e308).ToString().size(), 309u);
}

TEST(Number, ParsesOnlyPlainDecimalsWithOptionalMinusAndBlanks) {
    struct {
        const char* text;
        double value;  // NaN where the text is refused
    } rows[] = {
        {"1", 1},     {" 12 ", 12},   {"-.5", -0.5},  {"5.", 5},       {"\t\r\n3\n", 3}, {"-0", -0.0},
        {"", NAN},    {" ", NAN},     {"+1", NAN},    {"1e3", NAN},    {".", NAN},       {"-", NAN},
        {"1 2", NAN}, {"0x10", NAN},  {"1.2.3", NAN}, {"- 1", NAN},    {"Infinity", NAN}, {"\xA0" "1", NAN},
        // Short and long digit strings round to the nearest double alike.
        {"0.1", 0.1}, {"12345.678901", 12345.678901}, {"-999999999999999", -999999999999999.0},
        {"1234567890123456789", 1234567890123456789.0}, {"0.30000000000000004", 0.30000000000000004},
        {"00000000000000000000001.5", 1.5}, {"0.0000000000000000000000123", 1.23e-23},
    };
    for (auto& row : rows) {
        CNumber number = Xpath::CConverter::StringToNumber(U(row.text));
        if (std::isnan(row.value))
            EXPECT_TRUE(number.IsNaN()) << row.text;
        else
            EXPECT_EQ(number.GetValue(), row.value) << row.text;
    }
    EXPECT_TRUE(Xpath::CConverter::StringToNumber(u"-0").IsNegativeZero());
}

TEST(Number, RoundsHalfUpAndKeepsNegativeZero) {
    EXPECT_TRUE(CNumber(-0.2).Round().IsNegativeZero());
    EXPECT_TRUE(CNumber(-0.5).Round().IsNegativeZero());
    EXPECT_TRUE(CNumber(-0.0).Round().IsNegativeZero());
    EXPECT_TRUE(CNumber(std::nan("")).Round().IsNaN());
    EXPECT_TRUE(CNumber(-INFINITY).Round().IsNegativeInfinity());
    EXPECT_EQ(CNumber(2.5).Round().GetValue(), 3);
    EXPECT_EQ(CNumber(-2.5).Round().GetValue(), -2);
    EXPECT_EQ(CNumber(-2.6).Round().GetValue(), -3);
    EXPECT_EQ(CNumber(-0.51).Round().GetValue(), -1);
    EXPECT_EQ(CNumber(7).Round().GetValue(), 7);
}

TEST(Number, RemainderTakesTheSignOfTheDividend) {
    EXPECT_EQ((CNumber(5) % CNumber(-2)).GetValue(), 1);
    EXPECT_EQ((CNumber(-5) % CNumber(2)).GetValue(), -1);
    EXPECT_TRUE((CNumber(1) % CNumber(0)).IsNaN());
    EXPECT_TRUE((CNumber(std::nan("")) != CNumber(std::nan(""))));
    EXPECT_FALSE((CNumber(std::nan("")) == CNumber(std::nan(""))));
}

}  // namespace
