// Arithmetic, conversions and text forms of the script number.
#include "ecmascript/Number.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

namespace EcmaScript {

namespace {

const int64_t kSmallestInteger = CNumber::kSmallestInteger;
const int64_t kLargestInteger = CNumber::kLargestInteger;

// The ToUint32 rule on a double: 0 for NaN, infinities and zeros, else the floor of the
// magnitude modulo 2^32, negated for a negative input.
uint32_t DoubleToUint32(double value) {
    if (std::isnan(value) || std::isinf(value) || value == 0) return 0;
    double magnitude = std::fmod(std::floor(std::fabs(value)), 4294967296.0);
    uint32_t bits = static_cast<uint32_t>(magnitude);
    return value < 0 ? 0u - bits : bits;
}

bool IsSpace(DomChar unit) { return unit == 9 || unit == 10 || unit == 11 || unit == 12 || unit == 13 || unit == 32; }
bool IsDigit(DomChar unit) { return unit >= u'0' && unit <= u'9'; }

int DigitValue(DomChar unit) {
    if (unit >= u'0' && unit <= u'9') return unit - u'0';
    if (unit >= u'a' && unit <= u'z') return unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'Z') return unit - u'A' + 10;
    return 99;
}

// Narrows text known to be ASCII for the C library readers.
std::string Narrow(DomStringView text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (DomChar unit : text) bytes += unit < 128 ? static_cast<char>(unit) : '?';
    return bytes;
}

// Signed decimal: [sign] digits [. digits] [(e|E) [sign] digits], a digit before or after the
// point, matched to the end. Up to nine significant digits without point or exponent give the
// integer form.
bool ReadDecimal(DomStringView text, bool signAllowed, CNumber& number) {
    size_t i = 0;
    if (signAllowed && i < text.size() && (text[i] == u'+' || text[i] == u'-')) ++i;
    size_t digitsBefore = 0, significant = 0;
    bool nonZeroSeen = false;
    for (; i < text.size() && IsDigit(text[i]); ++i, ++digitsBefore) {
        if (text[i] != u'0') nonZeroSeen = true;
        if (nonZeroSeen) ++significant;
    }
    bool simple = true;
    size_t digitsAfter = 0;
    if (i < text.size() && text[i] == u'.') {
        simple = false;
        for (++i; i < text.size() && IsDigit(text[i]); ++i) ++digitsAfter;
    }
    if (digitsBefore + digitsAfter == 0) return false;
    if (i < text.size() && (text[i] == u'e' || text[i] == u'E')) {
        simple = false;
        ++i;
        if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) ++i;
        size_t exponentDigits = 0;
        for (; i < text.size() && IsDigit(text[i]); ++i) ++exponentDigits;
        if (exponentDigits == 0) return false;
    }
    if (i != text.size()) return false;
    std::string bytes = Narrow(text);
    if (simple && significant <= 9) {
        number = CNumber::FromInteger(std::atoi(bytes.c_str()));
    } else {
        number = CNumber::FromDouble(std::strtod(bytes.c_str(), nullptr));
    }
    return true;
}

}  // namespace

CNumber CNumber::FromDoubleNormalised(double value) {
    if (value >= static_cast<double>(kSmallestInteger) && value <= static_cast<double>(kLargestInteger) &&
        value == std::floor(value) && !(value == 0 && std::signbit(value))) {
        return FromInteger(static_cast<int32_t>(value));
    }
    return FromDouble(value);
}

CNumber CNumber::NaN() { return FromDouble(std::numeric_limits<double>::quiet_NaN()); }
CNumber CNumber::PositiveInfinity() { return FromDouble(std::numeric_limits<double>::infinity()); }
CNumber CNumber::NegativeInfinity() { return FromDouble(-std::numeric_limits<double>::infinity()); }
CNumber CNumber::NegativeZero() { return FromDouble(-0.0); }
CNumber CNumber::MaxValue() { return FromDouble(1.7976931348623157e308); }
CNumber CNumber::MinValue() { return FromDouble(5e-324); }

uint32_t CNumber::GetUint32() const {
    return m_bInteger ? static_cast<uint32_t>(m_nInteger) : DoubleToUint32(m_dDouble);
}

bool CNumber::IsZero() const { return m_bInteger ? m_nInteger == 0 : m_dDouble == 0; }
bool CNumber::IsPositiveInfinity() const { return !m_bInteger && std::isinf(m_dDouble) && m_dDouble > 0; }
bool CNumber::IsNegativeInfinity() const { return !m_bInteger && std::isinf(m_dDouble) && m_dDouble < 0; }

CNumber CNumber::Divide(const CNumber& other) const { return FromDouble(GetDouble() / other.GetDouble()); }

CNumber CNumber::Modulo(const CNumber& other) const {
    if (m_bInteger && other.m_bInteger) {
        if (other.m_nInteger == 0) return NaN();
        if (other.m_nInteger == -1) return FromInteger(0);  // avoids the overflow of the smallest integer
        return FromInteger(m_nInteger % other.m_nInteger);
    }
    double divisor = other.GetDouble();
    if (divisor == 0) return NaN();
    return FromDouble(std::fmod(GetDouble(), divisor));
}

CNumber CNumber::ShiftLeft(const CNumber& other) const {
    unsigned count = other.GetUint32() & 31;
    if (m_bInteger && other.m_bInteger) return FromInteger(static_cast<int32_t>(static_cast<uint32_t>(m_nInteger) << count));
    return FromDouble(static_cast<int32_t>(GetUint32() << count));
}

CNumber CNumber::ShiftRight(const CNumber& other) const {
    unsigned count = other.GetUint32() & 31;
    if (m_bInteger && other.m_bInteger) return FromInteger(m_nInteger >> count);
    return FromDouble(static_cast<int32_t>(GetUint32()) >> count);
}

// On two integers this is an arithmetic shift, so a negative left operand behaves as with ">>".
CNumber CNumber::ShiftRightUnsigned(const CNumber& other) const {
    unsigned count = other.GetUint32() & 31;
    if (m_bInteger && other.m_bInteger) return FromInteger(m_nInteger >> count);
    return FromDouble(GetUint32() >> count);
}

CNumber CNumber::BitAnd(const CNumber& other) const {
    if (m_bInteger && other.m_bInteger) return FromInteger(m_nInteger & other.m_nInteger);
    return FromDouble(static_cast<int32_t>(GetUint32() & other.GetUint32()));
}

CNumber CNumber::BitOr(const CNumber& other) const {
    if (m_bInteger && other.m_bInteger) return FromInteger(m_nInteger | other.m_nInteger);
    return FromDouble(static_cast<int32_t>(GetUint32() | other.GetUint32()));
}

CNumber CNumber::BitXor(const CNumber& other) const {
    if (m_bInteger && other.m_bInteger) return FromInteger(m_nInteger ^ other.m_nInteger);
    return FromDouble(static_cast<int32_t>(GetUint32() ^ other.GetUint32()));
}

CNumber CNumber::BitNot() const {
    if (m_bInteger) return FromInteger(~m_nInteger);
    return FromDouble(~static_cast<int32_t>(GetUint32()));
}

CNumber CNumber::Negate() const {
    if (m_bInteger) return FromInteger(static_cast<int32_t>(0u - static_cast<uint32_t>(m_nInteger)));
    return FromDouble(-m_dDouble);
}

CNumber CNumber::ToInteger() const {
    if (m_bInteger) return *this;
    if (std::isnan(m_dDouble)) return FromInteger(0);
    if (std::isinf(m_dDouble) || m_dDouble == 0) return *this;
    double magnitude = std::floor(std::fabs(m_dDouble));
    return FromDouble(m_dDouble < 0 ? -magnitude : magnitude);
}

CNumber CNumber::ToInt32() const {
    if (m_bInteger) return *this;
    return FromDouble(static_cast<int32_t>(DoubleToUint32(m_dDouble)));
}

CNumber CNumber::ToUint32() const {
    if (m_bInteger) return *this;
    return FromDouble(DoubleToUint32(m_dDouble));
}

CNumber CNumber::ToUint16() const {
    if (m_bInteger) return FromInteger(static_cast<uint16_t>(m_nInteger));
    return FromDouble(static_cast<uint16_t>(DoubleToUint32(m_dDouble)));
}

// The integer form prints as an unsigned number ("%lu"), so -1 reads 4294967295; the double
// form goes through "%.16lg" with the leading "." and trailing zeros tidied.
void CNumber::ToString(DomString& text) const {
    char buffer[64];
    if (m_bInteger) {
        std::snprintf(buffer, sizeof buffer, "%lu", static_cast<unsigned long>(static_cast<uint32_t>(m_nInteger)));
        text = Core::WidenLatin1(buffer);
        return;
    }
    if (std::isnan(m_dDouble)) {
        text = u"NaN";
    } else if (m_dDouble == 0) {
        text = u"0";
    } else if (std::isinf(m_dDouble)) {
        text = m_dDouble > 0 ? u"Infinity" : u"-Infinity";
    } else {
        std::snprintf(buffer, sizeof buffer, "%.16lg", m_dDouble);
        std::string printed = buffer;
        if (printed.find_first_of("eE") == std::string::npos) {
            if (printed[0] == '.') printed.insert(0, "0");
            if (printed.compare(0, 2, "-.") == 0) printed.insert(1, "0");
            if (printed.find('.') != std::string::npos) {
                while (printed.back() == '0') printed.pop_back();
                if (printed.back() == '.') printed.pop_back();
            }
        }
        text = Core::WidenLatin1(printed);
    }
}

bool CNumber::FromBaseText(DomStringView digits, int base, CNumber& number) {
    if (!digits.empty() && DigitValue(digits[0]) < base) {
        std::string bytes = Narrow(digits);
        char* end = nullptr;
        errno = 0;
        unsigned long value = std::strtoul(bytes.c_str(), &end, base);
        if (*end == 0 && errno != ERANGE) {
            number = value <= 0x7FFFFFFFul ? FromInteger(static_cast<int32_t>(value))
                                           : FromDouble(static_cast<double>(value));
            return true;
        }
    }
    double sum = 0;
    size_t i = 0;
    for (; i < digits.size() && DigitValue(digits[i]) < base; ++i) sum = sum * base + DigitValue(digits[i]);
    if (i == 0) return false;
    number = FromDouble(sum);
    return true;
}

bool CNumber::FromLiteralText(DomStringView text, CNumber& number) {
    if (text.empty()) return false;
    if (text.size() == 1 || text[0] != u'0') return ReadDecimal(text, false, number);
    if (text[1] == u'x' || text[1] == u'X') return FromBaseText(text.substr(2), 16, number);
    if (text[1] == u'.') return ReadDecimal(text, false, number);
    return FromBaseText(text.substr(1), 8, number);
}

bool CNumber::FromStringText(DomStringView text, CNumber& number) {
    while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
    if (text.empty()) {
        number = FromInteger(0);
        return true;
    }
    if (text == u"Infinity" || text == u"+Infinity") {
        number = PositiveInfinity();
        return true;
    }
    if (text == u"-Infinity") {
        number = NegativeInfinity();
        return true;
    }
    if (text.size() >= 3 && text[0] == u'0' && (text[1] == u'x' || text[1] == u'X')) {
        return FromBaseText(text.substr(2), 16, number);
    }
    return ReadDecimal(text, true, number);
}

}  // namespace EcmaScript
