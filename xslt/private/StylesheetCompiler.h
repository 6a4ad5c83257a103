// Compiles stylesheets: builds the stylesheet document under the compiler's space rules (strip
// all whitespace-only text except inside xsl:text) and loads it into a module tree.
#pragma once
#include "dom/Node.h"
#include "dom/StripSpaceRules.h"
#include "xslt/DocumentSource.h"
#include "xslt/Environment.h"
#include "xslt/Stylesheet.h"

namespace XsltPrivate {

class CStylesheetCompiler : public CRefObject {
public:
    explicit CStylesheetCompiler(Xslt::CEnvironment* environment);

    void CompileUri(const DomString& uri, TRefPtr<Xslt::CStylesheet>& stylesheet);
    void CompileNode(const DomString& uri, Dom::CNode* node, TRefPtr<Xslt::CStylesheet>& stylesheet);
    // A source that cannot be read or is not well formed is code 2, thrown without a report.
    void CompileSource(const DomString& uri, Xslt::IDocumentSource* source, TRefPtr<Xslt::CStylesheet>& stylesheet);

private:
    TRefPtr<Xslt::CEnvironment> m_pEnvironment;
    TRefPtr<Dom::CStripSpaceRules> m_pRules;
};

}  // namespace XsltPrivate
