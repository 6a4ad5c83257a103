// A compiled stylesheet: the root of its module tree, the locator of its documents and the
// space rules its declarations made. One stylesheet can serve any number of runs.
#pragma once
#include "core/RefObject.h"
#include "dom/Node.h"
#include "dom/StripSpaceRules.h"
#include "xslt/DocumentSource.h"
#include "xslt/Environment.h"
#include "xslt/ParameterList.h"
#include "xslt/ResultHandler.h"

namespace XsltPrivate {
class CLocator;
class CStylesheetModule;
}  // namespace XsltPrivate

namespace Xslt {

class CStylesheet : public CRefObject {
public:
    CStylesheet(CEnvironment* environment, XsltPrivate::CStylesheetModule* module, XsltPrivate::CLocator* locator,
                Dom::CStripSpaceRules* spaceRules);
    ~CStylesheet() override;

    // One run: binds the parameters, builds the run's tables, reads the document from `source`
    // (or takes `node` as it is), evaluates the global variables and applies templates to the
    // root, writing to `handler`.
    virtual void Transform(const DomString& documentUri, IDocumentSource* source, Dom::CNode* node,
                           IResultHandler* handler, const CParameterList* parameters);

private:
    TRefPtr<CEnvironment> m_pEnvironment;
    TRefPtr<XsltPrivate::CStylesheetModule> m_pModule;
    TRefPtr<XsltPrivate::CLocator> m_pLocator;
    TRefPtr<Dom::CStripSpaceRules> m_pSpaceRules;
};

}  // namespace Xslt
