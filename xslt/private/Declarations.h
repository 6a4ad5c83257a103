// The records of the top-level elements other than templates and variables. Each keeps the
// location and namespace bindings of its element (through CInstruction, whose Execute does
// nothing for them), so that the run-time merge can report against it.
#pragma once
#include "core/Array.h"
#include "xmlwriter/OutputProperties.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/QName.h"

namespace XsltPrivate {

class CDeclaration : public CInstruction {
public:
    void Execute(CExecutionContext&) override {}
};

class CAttributeSetDeclaration : public CDeclaration {
public:
    SQName m_name;
    TArray<SQName> m_aUsedSets;
    TArray<TRefPtr<CInstruction>> m_aAttributes;  // the xsl:attribute children in order
};

class CDecimalFormatDeclaration : public CDeclaration {
public:
    enum EProperty {
        DecimalSeparator, GroupingSeparator, Infinity, MinusSign, NotANumber, Percent, PerMille, ZeroDigit,
        Digit, PatternSeparator, PropertyCount
    };
    static const DomChar* const s_apAttributeNames[PropertyCount];
    static const DomChar* const s_apDefaults[PropertyCount];

    CDecimalFormatDeclaration();
    bool HasSameProperties(const CDecimalFormatDeclaration& other) const;

    bool m_bHasName = false;
    SQName m_name;
    DomString m_asProperties[PropertyCount];
};

class CNamespaceAliasDeclaration : public CDeclaration {
public:
    DomString m_sStylesheetUri;
    DomString m_sResultUri;
    DomString m_sResultPrefix;
};

// The attributes of one xsl:output, each with its present bit in the properties' mask.
class COutputDeclaration : public CDeclaration {
public:
    COutputDeclaration() : m_pProperties(new XmlWriter::COutputProperties()) {}
    TRefPtr<XmlWriter::COutputProperties> m_pProperties;
    TArray<SQName> m_aCDataSectionElements;
};

}  // namespace XsltPrivate
