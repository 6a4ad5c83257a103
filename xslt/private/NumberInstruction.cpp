// Counting and formatting of xsl:number.
#include "xslt/private/NumberInstruction.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "xpath/Axis.h"
#include "xpath/Converter.h"
#include "xpath/Value.h"
#include "xslt/private/CompileContext.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/KeyTable.h"
#include "xslt/private/PatternNameFilter.h"

namespace XsltPrivate {

using Xslt::CXsltException;

namespace {

const CCompileContext::SEnumEntry s_aLevels[] = {
    {u"single", CNumberInstruction::Single},
    {u"multiple", CNumberInstruction::Multiple},
    {u"any", CNumberInstruction::Any},
    {nullptr, 0}};

bool SameName(const Dom::CName* a, const Dom::CName* b) {
    if (a == b) return true;
    if (!a || !b) return false;
    return a->GetLocalName() == b->GetLocalName() && a->GetNamespaceUri() == b->GetNamespaceUri();
}

}  // namespace

// The count and from tests at one current node, and the three ways of counting.
class CNumberInstruction::CCounter {
public:
    CCounter(CNumberInstruction& owner, CExecutionContext& context)
        : m_owner(owner),
          m_pCurrent(context.GetCurrentNode()),
          m_host(context),
          m_patternContext(m_host, m_pCurrent) {}

    void Count(TArray<int32_t>& numbers) {
        if (!m_pCurrent) return;
        if (m_owner.m_nLevel == Any) return numbers.Add(CountAny());
        Dom::CNode* boundary = nullptr;
        if (!FindBoundary(boundary)) return;
        int level = 0;
        for (Dom::CNode* node = m_pCurrent; node && node != boundary; node = node->GetParentNode()) {
            if (!Counts(node)) continue;
            numbers.Add(SiblingNumber(node, level++));
            if (m_owner.m_nLevel == Single) return;
        }
        std::reverse(numbers.begin(), numbers.end());
    }

private:
    bool Counts(Dom::CNode* node) {
        if (m_owner.m_pCount) return Passes(m_countFilter, m_owner.m_pCount, node);
        return node->GetNodeType() == m_pCurrent->GetNodeType() && SameName(node->GetName(), m_pCurrent->GetName());
    }

    bool IsFrom(Dom::CNode* node) { return Passes(m_fromFilter, m_owner.m_pFrom, node); }

    // The pattern's answer for nodes that pass its name filter, made on first use.
    bool Passes(std::optional<CPatternNameFilter>& filter, const CPattern* pattern, Dom::CNode* node) {
        if (!filter) filter.emplace(pattern);
        return filter->Admits(node) && pattern->Matches(&m_patternContext, node);
    }

    // The nearest ancestor-or-self matching `from`; null without a from pattern, false if none matches.
    bool FindBoundary(Dom::CNode*& boundary) {
        if (!m_owner.m_pFrom) return true;
        for (Dom::CNode* node = m_pCurrent; node; node = node->GetParentNode()) {
            if (IsFrom(node)) {
                boundary = node;
                return true;
            }
        }
        return false;
    }

    // A cache serves only the test it was made under: without a count pattern, the same kind of node.
    bool Fits(const SCountCache& cache) const {
        return cache.node.Get() && (m_owner.m_pCount || (cache.nType == m_pCurrent->GetNodeType() &&
                                                          SameName(cache.pName, m_pCurrent->GetName())));
    }

    void Store(SCountCache& cache, Dom::CNode* node, int32_t count, bool bounded) {
        cache.node = node;
        cache.pName = m_pCurrent->GetName();
        cache.nType = m_pCurrent->GetNodeType();
        cache.nCount = count;
        cache.bBounded = bounded;
    }

    // 1 plus the counted preceding siblings; continues from the node last numbered at this level.
    int32_t SiblingNumber(Dom::CNode* node, int level) {
        TArray<SCountCache>& caches = m_owner.m_aSiblingCaches;
        if (caches.GetSize() <= level) caches.SetSize(level + 1);
        SCountCache& cache = caches[level];
        const Dom::CNode* known = Fits(cache) ? cache.node.Get() : nullptr;
        int32_t number = 1;
        for (Dom::CNode* sibling = node->GetPreviousSibling(); sibling; sibling = sibling->GetPreviousSibling()) {
            if (sibling == known) {
                number += cache.nCount;
                break;
            }
            if (Counts(sibling)) ++number;
        }
        Store(cache, node, number, false);
        return number;
    }

    // Counted nodes among the current node, its ancestors and the nodes before it, back to a
    // node matching `from`; 0 if `from` is given and never matches.
    int32_t CountAny() {
        SCountCache& cache = m_owner.m_anyCache;
        const Dom::CNode* known = Fits(cache) ? cache.node.Get() : nullptr;
        int32_t count = 0;
        bool bounded = false;
        for (Dom::CNode* node = m_pCurrent; node; node = Xpath::Predecessor(node)) {
            if (node == known) {
                count += cache.nCount;
                bounded = cache.bBounded;
                break;
            }
            if (m_owner.m_pFrom && IsFrom(node)) {
                bounded = true;
                break;
            }
            if (Counts(node)) ++count;
        }
        Store(cache, m_pCurrent, count, bounded);
        return m_owner.m_pFrom && !bounded ? 0 : count;
    }

    CNumberInstruction& m_owner;
    Dom::CNode* m_pCurrent;
    CRunPatternHost m_host;
    CPatternContext m_patternContext;
    std::optional<CPatternNameFilter> m_countFilter;
    std::optional<CPatternNameFilter> m_fromFilter;
};

void CNumberInstruction::Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction) {
    TRefPtr<CNumberInstruction> self = new CNumberInstruction();
    self->Initialise(compile);
    compile.GetEnum(u"level", false, s_aLevels, self->m_nLevel);
    compile.GetPattern(u"count", false, self->m_pCount);
    compile.GetPattern(u"from", false, self->m_pFrom);
    compile.GetExpression(u"value", false, self->m_pValue);
    if (!compile.GetAvt(u"format", false, self->m_pFormat)) CAvt::Compile(compile, u"1", self->m_pFormat);
    compile.GetAvt(u"lang", false, self->m_pLang);
    compile.GetAvt(u"letter-value", false, self->m_pLetterValue);
    compile.GetAvt(u"grouping-separator", false, self->m_pGroupingSeparator);
    compile.GetAvt(u"grouping-size", false, self->m_pGroupingSize);
    instruction = self.Get();
}

void CNumberInstruction::Execute(CExecutionContext& context) {
    TArray<int32_t> numbers;
    if (m_pValue) {
        numbers.Add(EvaluateValue(context));
    } else {
        CCounter(*this, context).Count(numbers);
    }
    SetUpFormatter(context);
    m_sText.clear();
    m_formatter.Format(numbers, m_sText);
    context.Characters(m_sText.data(), static_cast<int>(m_sText.size()), false);
}

int32_t CNumberInstruction::EvaluateValue(CExecutionContext& context) {
    TRefPtr<Xpath::CValue> value;
    context.Evaluate(m_pValue, value);
    Xpath::CNumber number;
    if (value->GetType() == Xpath::TypeNumber) {
        number = value->GetNumber();
    } else if (value->GetType() == Xpath::TypeBoolean) {
        number = value->GetBoolean() ? 1.0 : 0.0;
    } else {
        DomString text;
        context.ConvertToString(value, text);
        number = Xpath::CConverter::StringToNumber(text);
    }
    return ToInteger(number.Round().GetValue());
}

// Truncation to 32 bits, NaN as 0 and out-of-range values at the nearest limit, so that what
// cannot be counted still prints as a number with its sign.
int32_t CNumberInstruction::ToInteger(double value) {
    if (std::isnan(value)) return 0;
    if (value >= 2147483647.0) return INT32_MAX;
    if (value <= -2147483648.0) return INT32_MIN;
    return static_cast<int32_t>(value);
}

void CNumberInstruction::SetUpFormatter(CExecutionContext& context) {
    DomString text;
    context.EvaluateAvt(m_pFormat, text);
    // The other settings are made again below whenever their attributes exist, so an unchanged
    // format need not be read again.
    if (!m_bFormatRead || text != m_sFormat) {
        m_formatter.SetFormat(text);
        m_sFormat = text;
        m_bFormatRead = true;
    }
    if (m_pLang) context.EvaluateAvt(m_pLang, text);
    if (m_pLetterValue) {
        context.EvaluateAvt(m_pLetterValue, text);
        if (text == u"alphabetic") {
            m_formatter.SetLetterValue(CNumberFormatter::Alphabetic);
        } else if (text == u"traditional") {
            m_formatter.SetLetterValue(CNumberFormatter::Traditional);
        } else {
            context.RaiseFatal(CXsltException::InvalidComputedAttributeValue, u"letter-value", text);
        }
    }
    if (m_pGroupingSeparator) {
        context.EvaluateAvt(m_pGroupingSeparator, text);
        m_formatter.SetGroupingSeparator(text);
    }
    if (m_pGroupingSize) ReadGroupingSize(context);
}

// A whole number from 0 up; anything else is code 45.
void CNumberInstruction::ReadGroupingSize(CExecutionContext& context) {
    DomString text;
    context.EvaluateAvt(m_pGroupingSize, text);
    Xpath::CNumber size;
    if (!Xpath::CNumber::Parse(text, size) || size.GetValue() < 0 || size.GetValue() > INT32_MAX ||
        size.Floor() != size) {
        context.RaiseFatal(CXsltException::InvalidComputedAttributeValue, u"grouping-size", text);
    }
    m_formatter.SetGroupingSize(static_cast<int32_t>(size.GetValue()));
}

}  // namespace XsltPrivate
