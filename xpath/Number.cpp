// Number arithmetic, rounding and the conversions between numbers and text.
#include "xpath/Number.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <string>

namespace Xpath {

const CNumber CNumber::NaN(std::numeric_limits<double>::quiet_NaN());
const CNumber CNumber::NegativeZero(-0.0);

namespace {

bool IsBlank(DomChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }
bool IsDigit(DomChar c) { return c >= u'0' && c <= u'9'; }

// Up to 15 decimal digits make an integer below 2^53, which a double holds exactly; divided
// by an exact power of ten, it rounds once, as the C library's correctly rounded conversion does.
constexpr size_t kExactDigits = 15;
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double ScaleExact(uint64_t mantissa, size_t fractionDigits, bool negative) {
    double value = static_cast<double>(mantissa) / kPowersOfTen[fractionDigits];
    return negative ? -value : value;
}

// Longer numbers go to the C library; the accepted text is plain ASCII.
double ConvertText(DomStringView text) {
    std::string ascii(text.size(), '\0');
    for (size_t i = 0; i < text.size(); ++i) ascii[i] = static_cast<char>(text[i]);
    return std::strtod(ascii.c_str(), nullptr);
}

}  // namespace

CNumber CNumber::operator%(CNumber other) const { return std::fmod(m_dValue, other.m_dValue); }

bool CNumber::IsNaN() const { return std::isnan(m_dValue); }
bool CNumber::IsPositiveZero() const { return m_dValue == 0 && !std::signbit(m_dValue); }
bool CNumber::IsNegativeZero() const { return m_dValue == 0 && std::signbit(m_dValue); }
bool CNumber::IsPositiveInfinity() const { return std::isinf(m_dValue) && m_dValue > 0; }
bool CNumber::IsNegativeInfinity() const { return std::isinf(m_dValue) && m_dValue < 0; }

CNumber CNumber::Floor() const { return std::floor(m_dValue); }
CNumber CNumber::Ceiling() const { return std::ceil(m_dValue); }

CNumber CNumber::Round() const {
    if (std::isnan(m_dValue) || std::isinf(m_dValue) || m_dValue == 0) return *this;
    if (m_dValue < 0 && m_dValue >= -0.5) return NegativeZero;
    return std::floor(m_dValue + 0.5);
}

DomString CNumber::ToString() const {
    if (IsNaN()) return u"NaN";
    if (m_dValue == 0) return u"0";
    if (IsPositiveInfinity()) return u"Infinity";
    if (IsNegativeInfinity()) return u"-Infinity";
    // The largest double has 309 integer digits; with sign, point and six decimals 320 suffice.
    // The fixed form with six decimals is what "%lf" prints, without the format parsing.
    char buffer[400];
    char* end = std::to_chars(buffer, buffer + sizeof buffer, m_dValue, std::chars_format::fixed, 6).ptr;
    char* point = std::find(buffer, end, '.');
    if (point != end) {
        while (end > point + 1 && end[-1] == '0') --end;
        if (end == point + 1) end = point;
    }
    return DomString(buffer, end);
}

bool CNumber::Parse(DomStringView text, CNumber& number) {
    size_t i = 0, n = text.size();
    while (i < n && IsBlank(text[i])) ++i;
    size_t start = i;
    bool negative = i < n && text[i] == u'-';
    if (negative) ++i;
    // The digits as an integer while it stays exact, and how many of them follow the point.
    uint64_t mantissa = 0;
    size_t digits = 0, fractionDigits = 0;
    for (; i < n && IsDigit(text[i]); ++i, ++digits) mantissa = mantissa * 10 + (text[i] - u'0');
    if (i < n && text[i] == u'.') {
        ++i;
        for (; i < n && IsDigit(text[i]); ++i, ++digits, ++fractionDigits) mantissa = mantissa * 10 + (text[i] - u'0');
    }
    if (digits == 0) return false;
    size_t stop = i;
    while (i < n && IsBlank(text[i])) ++i;
    if (i != n) return false;
    number = digits <= kExactDigits && fractionDigits < std::size(kPowersOfTen)
                 ? ScaleExact(mantissa, fractionDigits, negative)
                 : ConvertText(text.substr(start, stop - start));
    return true;
}

}  // namespace Xpath
