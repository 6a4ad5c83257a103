// Sort keys: reading the attributes, the rank tables, text and number comparison.
#include "xslt/private/SortKey.h"

#include <cmath>
#include <cstdlib>
#include <string>

namespace XsltPrivate {

namespace {

struct SKeyword {
    const DomChar* pText;
    int32_t nValue;
};

const SKeyword kDataTypes[] = {{u"text", CSortKeyInfo::Text}, {u"number", CSortKeyInfo::Number}, {nullptr, 0}};
const SKeyword kOrders[] = {
    {u"ascending", CSortKeyInfo::Ascending}, {u"descending", CSortKeyInfo::Descending}, {nullptr, 0}};
const SKeyword kCaseOrders[] = {
    {u"upper-first", CSortKeyInfo::UpperFirst}, {u"lower-first", CSortKeyInfo::LowerFirst}, {nullptr, 0}};

// An absent attribute leaves the default; a present one must be a keyword of the table.
bool ReadKeyword(const DomString* text, const SKeyword* table, int32_t& value) {
    if (!text) return true;
    for (; table->pText; ++table) {
        if (*text == table->pText) {
            value = table->nValue;
            return true;
        }
    }
    return false;
}

// Three tables: letters take the place of their upper-case code, the cases equal (0), upper
// first (1) or lower first (2); every other unit keeps its code order.
struct SRankTables {
    uint32_t aRanks[3][256];

    SRankTables() {
        uint32_t r = 0, s = 1;
        for (int u = 0; u < 256; ++u) {
            if (u >= 'a' && u <= 'z') continue;
            if (u >= 'A' && u <= 'Z') {
                int l = u + ('a' - 'A');
                aRanks[0][u] = aRanks[0][l] = r;
                aRanks[1][u] = r;
                aRanks[1][l] = s;
                aRanks[2][u] = s;
                aRanks[2][l] = r;
                r += 2;
                s += 2;
            } else {
                aRanks[0][u] = aRanks[1][u] = aRanks[2][u] = r;
                r += 1;
                s += 1;
            }
        }
    }
};

const SRankTables kRankTables;

bool IsBlank(DomChar c) { return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n'; }

bool IsDigit(DomChar c) { return c >= u'0' && c <= u'9'; }

// The common key texts, an optional minus, digits and an optional fraction with digits on
// both sides, 15 digits at most, read without the C library. Digits and power of ten are then
// exact doubles, so their one quotient is the correctly rounded value that strtod gives.
bool ReadPlainDecimal(DomStringView text, double& value) {
    static const double s_aPowers[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool negative = !text.empty() && text[0] == u'-';
    if (negative) text.remove_prefix(1);
    int64_t digits = 0;
    int count = 0;
    int fraction = -1;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'.' && fraction < 0 && i > 0 && i + 1 < text.size()) {
            fraction = 0;
            continue;
        }
        if (!IsDigit(text[i]) || ++count > 15) return false;
        digits = digits * 10 + (text[i] - u'0');
        if (fraction >= 0) ++fraction;
    }
    if (count == 0) return false;
    value = static_cast<double>(digits);
    if (fraction > 0) value /= s_aPowers[fraction];
    if (negative) value = -value;
    return true;
}

}  // namespace

bool CSortKeyInfo::Read(const DomString* lang, const DomString* dataType, const DomString* order,
                        const DomString* caseOrder, DomString& failedAttribute, DomString& failedValue) {
    m_sLang = lang ? *lang : DomString(u"en");
    struct SAttribute {
        const DomChar* pName;
        const DomString* pText;
        const SKeyword* pTable;
        int32_t* pValue;
    };
    const SAttribute attributes[] = {{u"data-type", dataType, kDataTypes, &m_nDataType},
                                     {u"order", order, kOrders, &m_nOrder},
                                     {u"case-order", caseOrder, kCaseOrders, &m_nCaseOrder}};
    for (const SAttribute& attribute : attributes) {
        if (ReadKeyword(attribute.pText, attribute.pTable, *attribute.pValue)) continue;
        failedAttribute = attribute.pName;
        failedValue = *attribute.pText;
        return false;
    }
    return true;
}

const uint32_t* GetSortRanks(int32_t caseOrder) {
    return kRankTables.aRanks[caseOrder >= 0 && caseOrder < 3 ? caseOrder : 0];
}

int CompareSortText(DomStringView a, DomStringView b, const uint32_t* ranks) {
    const size_t length = a.size();
    for (size_t i = 0; i < length; ++i) {
        if (i >= b.size()) return 1;
        const DomChar ua = a[i], ub = b[i];
        if (ua < 0x100 && ub < 0x100) {
            if (ranks[ua] != ranks[ub]) return ranks[ua] < ranks[ub] ? -1 : 1;
        } else if (ua != ub) {
            return ua < ub ? -1 : 1;
        }
    }
    return b.size() == length ? 0 : -1;
}

void RankSortText(DomString& text, const uint32_t* ranks) {
    for (DomChar& unit : text) {
        if (unit < 0x100) unit = static_cast<DomChar>(ranks[unit]);
    }
}

double ReadSortNumber(DomStringView text) {
    while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
    if (text.empty()) return 0;
    double value;
    if (ReadPlainDecimal(text, value)) return value;
    // Short texts are narrowed on the stack.
    char buffer[64];
    std::string longText;
    char* ascii = buffer;
    if (text.size() >= sizeof buffer) {
        longText.resize(text.size());
        ascii = longText.data();
    }
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] == 0 || text[i] > 0x7F) return 0;
        ascii[i] = static_cast<char>(text[i]);
    }
    ascii[text.size()] = '\0';
    char* end = nullptr;
    value = std::strtod(ascii, &end);
    if (end != ascii + text.size() || std::isnan(value)) return 0;
    return value;
}

}  // namespace XsltPrivate
