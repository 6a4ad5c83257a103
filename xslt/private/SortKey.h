// One sort key of xsl:sort as the sorter uses it, and the comparison of two key strings: text
// by the system's own rank tables (no locale, `lang` kept but never consulted), or numbers.
#pragma once
#include <cstdint>

#include "core/DomString.h"

namespace XsltPrivate {

class CSortKeyInfo {
public:
    enum { Text = 0, Number = 1 };
    enum { Ascending = 0, Descending = 1 };
    enum { NoCaseOrder = 0, UpperFirst = 1, LowerFirst = 2 };

    // Fills the key from the evaluated attribute texts, null for an absent attribute. For a
    // value outside its keywords returns false with the attribute's name ("data-type",
    // "order", "case-order") and the value: the caller raises code 45 with the two.
    bool Read(const DomString* lang, const DomString* dataType, const DomString* order, const DomString* caseOrder,
              DomString& failedAttribute, DomString& failedValue);

    DomString m_sLang = u"en";
    int32_t m_nDataType = Text;
    int32_t m_nOrder = Ascending;
    int32_t m_nCaseOrder = NoCaseOrder;
};

// The rank table of a case order: 256 entries for the units below U+0100.
const uint32_t* GetSortRanks(int32_t caseOrder);

// Negative, zero or positive. Units below U+0100 compare by rank, others by code; a prefix
// sorts first.
int CompareSortText(DomStringView a, DomStringView b, const uint32_t* ranks);

// Replaces each unit below U+0100 by its rank. Every rank is below U+0100 too, so rank texts
// compare by code units exactly as CompareSortText compares the texts they came from.
void RankSortText(DomString& text, const uint32_t* ranks);

// The number a key string sorts as: the trimmed text read whole by the C library, exponents
// included; anything that does not read, NaN included, counts as 0.
double ReadSortNumber(DomStringView text);

}  // namespace XsltPrivate
