// Number arithmetic, rounding and the conversions between numbers and text.
#include "xpath/Number.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace Xpath {

const CNumber CNumber::NaN(std::numeric_limits<double>::quiet_NaN());
const CNumber CNumber::NegativeZero(-0.0);

namespace {

bool IsBlank(DomChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }
bool IsDigit(DomChar c) { return c >= u'0' && c <= u'9'; }

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
    char buffer[400];
    int length = std::snprintf(buffer, sizeof buffer, "%lf", m_dValue);
    DomString text;
    text.reserve(length + 1);
    const char* p = buffer;
    if (*p == '-') {
        text += u'-';
        ++p;
    }
    if (*p == '.') text += u'0';
    for (; *p; ++p) text += static_cast<DomChar>(*p);
    size_t point = text.find(u'.');
    if (point != DomString::npos) {
        size_t end = text.size();
        while (end > point + 1 && text[end - 1] == u'0') --end;
        if (end == point + 1) end = point;
        text.resize(end);
    }
    return text;
}

bool CNumber::Parse(DomStringView text, CNumber& number) {
    size_t i = 0, n = text.size();
    while (i < n && IsBlank(text[i])) ++i;
    // The accepted text is plain ASCII, collected for the C library's conversion.
    std::string ascii;
    if (i < n && text[i] == u'-') {
        ascii += '-';
        ++i;
    }
    size_t digits = 0;
    for (; i < n && IsDigit(text[i]); ++i, ++digits) ascii += static_cast<char>(text[i]);
    if (i < n && text[i] == u'.') {
        ascii += '.';
        ++i;
        for (; i < n && IsDigit(text[i]); ++i, ++digits) ascii += static_cast<char>(text[i]);
    }
    if (digits == 0) return false;
    while (i < n && IsBlank(text[i])) ++i;
    if (i != n) return false;
    number = std::strtod(ascii.c_str(), nullptr);
    return true;
}

}  // namespace Xpath
