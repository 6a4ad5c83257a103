// Reading of number formats and formatting of number lists.
#include "xslt/private/NumberFormatter.h"

#include <algorithm>

namespace XsltPrivate {

void CNumberFormatter::SetGroupingSeparator(DomStringView separator) { m_sGroupingSeparator.assign(separator); }

namespace {

bool IsAlphanumeric(DomChar c) {
    return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

const DomChar kDefaultToken[] = u"1";

}  // namespace

void CNumberFormatter::SetFormat(DomStringView format) {
    m_asTokens.Clear();
    m_asSeparators.Clear();
    m_sPrefix.clear();
    m_sSuffix.clear();
    m_nLetterValue = Alphabetic;
    m_sGroupingSeparator.clear();
    m_nGroupingSize = 0;
    // Beyond Latin-1 nothing is understood: the whole format becomes "1".
    if (std::any_of(format.begin(), format.end(), [](DomChar c) { return c > 0xFF; })) format = kDefaultToken;
    bool seenToken = false;
    size_t start = 0;
    while (start < format.size()) {
        bool alphanumeric = IsAlphanumeric(format[start]);
        size_t end = start + 1;
        while (end < format.size() && IsAlphanumeric(format[end]) == alphanumeric) ++end;
        AddRun(format.substr(start, end - start), alphanumeric, seenToken);
        start = end;
    }
    if (!seenToken) {
        if (m_asSeparators.GetSize() == 0) m_asSeparators.Add(u".");
        m_asTokens.Add(kDefaultToken);
    } else if (m_asSeparators.GetSize() > m_asTokens.GetSize()) {
        m_sSuffix = std::move(m_asSeparators.Last());
        m_asSeparators.RemoveLast();
    }
}

void CNumberFormatter::AddRun(DomStringView run, bool alphanumeric, bool& seenToken) {
    if (!alphanumeric) {
        if (!seenToken) m_sPrefix.assign(run);
        m_asSeparators.Add(DomString(run));
        return;
    }
    if (m_asSeparators.GetSize() == 0) m_asSeparators.Add(u".");
    m_asTokens.Add(DomString(run));
    seenToken = true;
}

void CNumberFormatter::Format(const TArray<int32_t>& numbers, DomString& text) const {
    text += m_sPrefix;
    const int last = m_asTokens.GetSize() - 1;
    for (int i = 0; i < numbers.GetSize(); ++i) {
        int t = std::min(i, last);
        if (i > 0) text += m_asSeparators[t];
        FormatNumber(numbers[i], m_asTokens[t], text);
    }
    text += m_sSuffix;
}

void CNumberFormatter::FormatNumber(int32_t number, const DomString& token, DomString& text) const {
    DomChar c = token.back();
    if (c == u'1') {
        bool zeros = std::all_of(token.begin(), token.end() - 1, [](DomChar unit) { return unit == u'0'; });
        return FormatDecimal(number, zeros ? token.size() : 1, text);
    }
    if (token.size() == 1 && (c == u'A' || c == u'a')) return FormatAlphabetic(number, c, text);
    if (token.size() == 1 && (c == u'I' || c == u'i')) return FormatRoman(number, c == u'i', text);
    FormatDecimal(number, 1, text);
}

// Digits from the right, a group separator before every further group, then reversed in
// place; the separator is reversed beforehand so that it reads rightly at the end.
void CNumberFormatter::FormatDecimal(int32_t number, size_t width, DomString& text) const {
    if (number < 0) text += u'-';
    int64_t rest = number < 0 ? -static_cast<int64_t>(number) : number;
    DomString separator(m_sGroupingSeparator.rbegin(), m_sGroupingSeparator.rend());
    const size_t start = text.size();
    size_t digits = 0;
    do {
        if (m_nGroupingSize > 0 && digits > 0 && digits % static_cast<size_t>(m_nGroupingSize) == 0) text += separator;
        text += static_cast<DomChar>(u'0' + rest % 10);
        rest /= 10;
        ++digits;
    } while (rest > 0 || digits < width);
    std::reverse(text.begin() + static_cast<ptrdiff_t>(start), text.end());
}

void CNumberFormatter::FormatAlphabetic(int32_t number, DomChar first, DomString& text) const {
    if (number < 1) {
        FormatDecimal(number, 1, text);
        return;
    }
    const size_t start = text.size();
    while (number > 0) {
        --number;
        text += static_cast<DomChar>(first + number % 26);
        number /= 26;
    }
    std::reverse(text.begin() + static_cast<ptrdiff_t>(start), text.end());
}

void CNumberFormatter::FormatRoman(int32_t number, bool lower, DomString& text) const {
    if (number < 1 || number > 3999) {
        FormatDecimal(number, 1, text);
        return;
    }
    const char* digits = lower ? "mdclxvi" : "MDCLXVI";
    text.append(static_cast<size_t>(number / 1000), static_cast<DomChar>(digits[0]));
    // (ten, five, one) for hundreds, tens and units; a digit's pattern picks from them.
    static const char* const s_apPatterns[] = {"", "o", "oo", "ooo", "of", "f", "fo", "foo", "fooo", "ot"};
    int scale = 100;
    for (int place = 0; place < 3; ++place, scale /= 10) {
        const char* triple = digits + 2 * place;  // ten, five, one
        for (const char* p = s_apPatterns[number / scale % 10]; *p; ++p) {
            text += static_cast<DomChar>(*p == 't' ? triple[0] : *p == 'f' ? triple[1] : triple[2]);
        }
    }
}

}  // namespace XsltPrivate
