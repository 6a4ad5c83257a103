// The script number: an integer form (signed 32 bits) that keeps index loops free of floating
// point, and a double form. Every operation stays in integer form where its rules allow.
#pragma once
#include <cmath>
#include <cstdint>

#include "core/DomString.h"

namespace EcmaScript {

class CNumber {
public:
    CNumber() : m_bInteger(1), m_nInteger(0) {}

    static CNumber FromInteger(int32_t value) {
        CNumber number;
        number.m_nInteger = value;
        return number;
    }
    static CNumber FromDouble(double value) {
        CNumber number;
        number.m_bInteger = 0;
        number.m_dDouble = value;
        return number;
    }
    // Integer form when the value is whole and within the integer range of arithmetic results.
    static CNumber FromDoubleNormalised(double value);

    static CNumber NaN();
    static CNumber PositiveInfinity();
    static CNumber NegativeInfinity();
    static CNumber NegativeZero();
    static CNumber MaxValue();
    static CNumber MinValue();

    bool IsInteger() const { return m_bInteger != 0; }
    int32_t GetInteger() const { return m_nInteger; }
    double GetDouble() const { return m_bInteger ? static_cast<double>(m_nInteger) : m_dDouble; }
    // The stored bits of the integer form, or the double cast through the ToUint32 rule.
    uint32_t GetUint32() const;

    bool IsNaN() const { return !m_bInteger && std::isnan(m_dDouble); }
    bool IsZero() const;
    bool IsPositiveInfinity() const;
    bool IsNegativeInfinity() const;
    bool IsFinite() const { return !IsNaN() && !IsPositiveInfinity() && !IsNegativeInfinity(); }

    // The range of integer-form results of arithmetic; anything else goes to double form.
    static const int32_t kSmallestInteger = -2147483647;
    static const int32_t kLargestInteger = 2147483646;
    static CNumber FromWide(int64_t value) {
        if (value >= kSmallestInteger && value <= kLargestInteger) return FromInteger(static_cast<int32_t>(value));
        return FromDouble(static_cast<double>(value));
    }

    CNumber Add(const CNumber& other) const {
        if (m_bInteger && other.m_bInteger) return FromWide(static_cast<int64_t>(m_nInteger) + other.m_nInteger);
        return FromDouble(GetDouble() + other.GetDouble());
    }
    CNumber Subtract(const CNumber& other) const {
        if (m_bInteger && other.m_bInteger) return FromWide(static_cast<int64_t>(m_nInteger) - other.m_nInteger);
        return FromDouble(GetDouble() - other.GetDouble());
    }
    CNumber Multiply(const CNumber& other) const {
        if (m_bInteger && other.m_bInteger) return FromWide(static_cast<int64_t>(m_nInteger) * other.m_nInteger);
        return FromDouble(GetDouble() * other.GetDouble());
    }
    CNumber Divide(const CNumber& other) const;
    CNumber Modulo(const CNumber& other) const;
    CNumber ShiftLeft(const CNumber& other) const;
    CNumber ShiftRight(const CNumber& other) const;
    CNumber ShiftRightUnsigned(const CNumber& other) const;
    CNumber BitAnd(const CNumber& other) const;
    CNumber BitOr(const CNumber& other) const;
    CNumber BitXor(const CNumber& other) const;
    CNumber BitNot() const;
    CNumber Negate() const;

    CNumber ToInteger() const;
    CNumber ToInt32() const;
    CNumber ToUint32() const;
    CNumber ToUint16() const;

    bool Less(const CNumber& other) const {
        if (m_bInteger && other.m_bInteger) return m_nInteger < other.m_nInteger;
        return GetDouble() < other.GetDouble();
    }
    bool Greater(const CNumber& other) const {
        if (m_bInteger && other.m_bInteger) return m_nInteger > other.m_nInteger;
        return GetDouble() > other.GetDouble();
    }
    bool LessEqual(const CNumber& other) const {
        if (m_bInteger && other.m_bInteger) return m_nInteger <= other.m_nInteger;
        return GetDouble() <= other.GetDouble();
    }
    bool GreaterEqual(const CNumber& other) const {
        if (m_bInteger && other.m_bInteger) return m_nInteger >= other.m_nInteger;
        return GetDouble() >= other.GetDouble();
    }
    bool Equal(const CNumber& other) const {
        if (m_bInteger && other.m_bInteger) return m_nInteger == other.m_nInteger;
        return GetDouble() == other.GetDouble();
    }

    void ToString(DomString& text) const;
    DomString ToString() const {
        DomString text;
        ToString(text);
        return text;
    }

    // The reader of numeric literals: decimal, "0x" hexadecimal and leading-zero octal.
    static bool FromLiteralText(DomStringView text, CNumber& number);
    // The reader of ToNumber on strings: trimmed, signed decimal, "Infinity", "0x" hexadecimal.
    static bool FromStringText(DomStringView text, CNumber& number);
    // Reads digits of base 8 or 16 as the two readers do; also serves parseInt.
    static bool FromBaseText(DomStringView digits, int base, CNumber& number);

private:
    uint8_t m_bInteger;
    union {
        int32_t m_nInteger;
        double m_dDouble;
    };
};

}  // namespace EcmaScript
