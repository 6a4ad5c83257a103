// The text of xsl:number: a format string read into tokens and separators, and a list of
// numbers formatted through them as decimal (with minimum width and grouping), alphabetic or
// roman. Only the Latin-1 range of a format is understood; anything else formats as "1".
#pragma once
#include <cstdint>

#include "core/Array.h"
#include "core/DomString.h"

namespace XsltPrivate {

class CNumberFormatter {
public:
    enum ELetterValue { Alphabetic, Traditional };

    // Reads the format; resets the letter value and the grouping, so call it first.
    void SetFormat(DomStringView format);
    void SetLetterValue(ELetterValue value) { m_nLetterValue = value; }
    void SetGroupingSeparator(DomStringView separator);
    // 0 for no grouping.
    void SetGroupingSize(int32_t size) { m_nGroupingSize = size; }

    // Appends the formatted list to `text`.
    void Format(const TArray<int32_t>& numbers, DomString& text) const;

private:
    void AddRun(DomStringView run, bool alphanumeric, bool& seenToken);
    void FormatNumber(int32_t number, const DomString& token, DomString& text) const;
    void FormatDecimal(int32_t number, size_t width, DomString& text) const;
    void FormatAlphabetic(int32_t number, DomChar first, DomString& text) const;
    void FormatRoman(int32_t number, bool lower, DomString& text) const;

    TArray<DomString> m_asTokens;
    TArray<DomString> m_asSeparators;
    DomString m_sPrefix;
    DomString m_sSuffix;
    ELetterValue m_nLetterValue = Alphabetic;
    DomString m_sGroupingSeparator;
    int32_t m_nGroupingSize = 0;
};

}  // namespace XsltPrivate
