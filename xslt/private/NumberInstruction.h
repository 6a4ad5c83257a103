// xsl:number: the list of numbers, counted in the tree at one of three levels or taken from
// `value`, then formatted by CNumberFormatter. Counting with level="any" and the sibling
// numbers of the innermost level carry on from the node numbered last by this instruction
// when the new node follows it, so numbering a document in order costs one pass over it.
#pragma once
#include <cstdint>

#include "core/Array.h"
#include "dom/Node.h"
#include "xpath/Expression.h"
#include "xslt/private/Avt.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/NumberFormatter.h"
#include "xslt/private/Pattern.h"

namespace XsltPrivate {

class CCompileContext;
class IPatternContext;

class CNumberInstruction : public CInstruction {
public:
    enum ELevel { Single = 0, Multiple = 1, Any = 2 };

    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    // The last count made, valid for the next node of the same kind under the same test.
    struct SCountCache {
        Dom::TNodeRef node;
        const Dom::CName* pName = nullptr;
        int nType = 0;
        int32_t nCount = 0;
        bool bBounded = false;  // level="any": the from pattern matched on the walk
    };
    class CCounter;

    int32_t EvaluateValue(CExecutionContext& context);
    void SetUpFormatter(CExecutionContext& context);
    void ReadGroupingSize(CExecutionContext& context);
    static int32_t ToInteger(double value);

    int m_nLevel = Single;
    TRefPtr<CPattern> m_pCount;
    TRefPtr<CPattern> m_pFrom;
    TRefPtr<Xpath::CExpression> m_pValue;
    TRefPtr<CAvt> m_pFormat;
    TRefPtr<CAvt> m_pLang;
    TRefPtr<CAvt> m_pLetterValue;
    TRefPtr<CAvt> m_pGroupingSeparator;
    TRefPtr<CAvt> m_pGroupingSize;

    CNumberFormatter m_formatter;
    DomString m_sFormat;  // the format the formatter holds
    bool m_bFormatRead = false;
    TArray<int32_t> m_aNumbers;
    DomString m_sText;
    TArray<SCountCache> m_aSiblingCaches;  // by level, the innermost first
    SCountCache m_anyCache;
};

}  // namespace XsltPrivate
