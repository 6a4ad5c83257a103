// The instructions that write to the result: text, xsl:text, xsl:value-of, literal result
// elements, xsl:element, xsl:attribute, xsl:comment, xsl:processing-instruction, xsl:copy and
// xsl:copy-of, and the running of attribute sets.
#pragma once
#include "core/Array.h"
#include "xpath/Expression.h"
#include "xslt/private/Avt.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/QName.h"

namespace XsltPrivate {

// Text of the stylesheet, and the content of xsl:text.
class CTextInstruction : public CInstruction {
public:
    CTextInstruction(DomString text, bool disableEscaping) : m_sText(std::move(text)), m_bDisableEscaping(disableEscaping) {}
    static void CompileTextElement(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    DomString m_sText;
    bool m_bDisableEscaping;
};

class CValueOfInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    TRefPtr<Xpath::CExpression> m_pSelect;
    bool m_bDisableEscaping = false;
    DomString m_sBuffer;  // reused for the value's text
};

// Runs the named attribute sets: code 28 for an unknown name.
void RunAttributeSets(CExecutionContext& context, const TArray<SQName>& names);

class CLiteralElementInstruction : public CInstruction {
public:
    static void Compile(const CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    struct SAttribute {
        DomString sName;  // qualified, as in the stylesheet
        DomString sUri;
        TRefPtr<CAvt> pValue;
    };
    struct SBinding {
        DomString sPrefix;
        DomString sUri;
    };
    void WriteNamespaces(CExecutionContext& context) const;
    void WriteAttributes(CExecutionContext& context);

    DomString m_sElementName;
    DomString m_sUri;
    TArray<SBinding> m_aNamespaces;
    TArray<SQName> m_aAttributeSets;
    TArray<SAttribute> m_aAttributes;
    CContent m_content;
    DomString m_sValue;  // reused for attribute values
};

class CElementInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    TRefPtr<CAvt> m_pName;
    TRefPtr<CAvt> m_pNamespace;
    TArray<SQName> m_aAttributeSets;
    CContent m_content;
};

class CAttributeInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;
    // The expanded name this instruction writes in the present context; false after code 41.
    bool ComputeName(CExecutionContext& context, DomString& name, DomString& uri) const;
    // Writes the attribute under a name already computed.
    void Write(CExecutionContext& context, const DomString& name, const DomString& uri) const;

private:
    TRefPtr<CAvt> m_pName;
    TRefPtr<CAvt> m_pNamespace;
    CContent m_content;
};

class CCommentInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    CContent m_content;
};

class CProcessingInstructionInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    TRefPtr<CAvt> m_pName;
    CContent m_content;
};

class CCopyInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    TArray<SQName> m_aAttributeSets;
    CContent m_content;
};

class CCopyOfInstruction : public CInstruction {
public:
    static void Compile(CCompileContext& compile, TRefPtr<CInstruction>& instruction);
    void Execute(CExecutionContext& context) override;

private:
    TRefPtr<Xpath::CExpression> m_pSelect;
};

// Writes a copy of `node` and, with `deep`, of everything below it; in a no-node construct the
// recoverable codes of xsl:copy are raised for what cannot go there.
void CopyNode(CExecutionContext& context, Dom::CNode* node, bool deep);

}  // namespace XsltPrivate
