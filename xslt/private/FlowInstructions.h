// Conditional and control instructions: xsl:if, xsl:choose, xsl:message, and the fallback
// instruction that stands for an unknown element in forwards-compatible processing.
#pragma once
#include "core/Array.h"
#include "xpath/Expression.h"
#include "xslt/private/Instruction.h"

namespace XsltPrivate {

class CIfInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;
    // The test alone, for xsl:when.
    bool Test(CExecutionContext& context) const;

private:
    friend class CChooseInstruction;
    TRefPtr<Xpath::CExpression> m_pTest;
    CContent m_content;
};

class CChooseInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    TArray<TRefPtr<CIfInstruction>> m_aWhens;
    TRefPtr<CIfInstruction> m_pOtherwise;  // its test is null
};

class CMessageInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    bool m_bTerminate = false;
    CContent m_content;
};

// Stands for an element that cannot be run (an unknown instruction in forwards-compatible
// processing, an unknown extension element): runs its xsl:fallback children in order, each as
// a sequence of its own, and does nothing without them.
class CFallbackInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    CContent m_content;
};

}  // namespace XsltPrivate
