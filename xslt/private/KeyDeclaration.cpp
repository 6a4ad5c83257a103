// Compiling xsl:key.
#include "xslt/private/KeyDeclaration.h"

#include "xslt/private/CompileContext.h"

namespace XsltPrivate {

void CKeyDeclaration::Compile(CCompileContext& compile, TRefPtr<CKeyDeclaration>& declaration) {
    TRefPtr<CKeyDeclaration> self = new CKeyDeclaration();
    self->Initialise(compile);
    compile.GetQName(u"name", true, self->m_name);
    compile.GetPattern(u"match", true, self->m_pMatch);
    compile.GetExpression(u"use", true, self->m_pUse);
    declaration = self;
}

}  // namespace XsltPrivate
