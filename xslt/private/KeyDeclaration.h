// The compiled xsl:key element: its name, the pattern of the nodes it indexes and the
// expression that gives their values. The run's key table gathers the declarations by name.
#pragma once
#include "xpath/Expression.h"
#include "xslt/private/Declarations.h"
#include "xslt/private/Pattern.h"

namespace XsltPrivate {

class CCompileContext;

class CKeyDeclaration : public CDeclaration {
public:
    // Reads name, match and use, all three required.
    static void Compile(CCompileContext& compile, TRefPtr<CKeyDeclaration>& declaration);

    SQName m_name;
    TRefPtr<CPattern> m_pMatch;
    TRefPtr<Xpath::CExpression> m_pUse;
};

}  // namespace XsltPrivate
