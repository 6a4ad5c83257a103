// The XPath number: a value type around one IEEE 754 double, with the rounding and the
// text conversions that XPath defines (and the six-digit fixed form this system prints).
#pragma once
#include "core/DomString.h"

namespace Xpath {

class CNumber {
public:
    CNumber() = default;
    CNumber(double value) : m_dValue(value) {}

    double GetValue() const { return m_dValue; }

    bool operator<(CNumber other) const { return m_dValue < other.m_dValue; }
    bool operator>(CNumber other) const { return m_dValue > other.m_dValue; }
    bool operator<=(CNumber other) const { return m_dValue <= other.m_dValue; }
    bool operator>=(CNumber other) const { return m_dValue >= other.m_dValue; }
    bool operator==(CNumber other) const { return m_dValue == other.m_dValue; }
    bool operator!=(CNumber other) const { return m_dValue != other.m_dValue; }

    CNumber operator+(CNumber other) const { return m_dValue + other.m_dValue; }
    CNumber operator-(CNumber other) const { return m_dValue - other.m_dValue; }
    CNumber operator*(CNumber other) const { return m_dValue * other.m_dValue; }
    CNumber operator/(CNumber other) const { return m_dValue / other.m_dValue; }
    // The remainder takes the sign of the dividend.
    CNumber operator%(CNumber other) const;
    CNumber operator-() const { return -m_dValue; }

    bool IsNaN() const;
    bool IsPositiveZero() const;
    bool IsNegativeZero() const;
    bool IsPositiveInfinity() const;
    bool IsNegativeInfinity() const;

    CNumber Floor() const;
    CNumber Ceiling() const;
    // NaN, infinities and zeros stay; -0.5 <= x < 0 gives -0; otherwise floor(x + 0.5).
    CNumber Round() const;

    // "NaN", "0", "Infinity", "-Infinity", or the "%lf" form with trailing zeros and a bare
    // point removed: never more than six fractional digits.
    DomString ToString() const;
    // Optional blanks, optional "-", digits with an optional fraction or "." and digits,
    // optional blanks. Fails on anything else; callers treat failure as NaN.
    static bool Parse(DomStringView text, CNumber& number);

    static const CNumber NaN;
    static const CNumber NegativeZero;

private:
    double m_dValue = 0;
};

}  // namespace Xpath
