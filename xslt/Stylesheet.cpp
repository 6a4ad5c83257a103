// The steps of one run, in their order.
#include "xslt/Stylesheet.h"

#include "xpath/NodeSet.h"
#include "xslt/XsltException.h"
#include "xslt/private/DocumentSources.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/Locator.h"
#include "xslt/private/OutputException.h"
#include "xslt/private/ResultTree.h"
#include "xslt/private/Runtime.h"
#include "xslt/private/StylesheetModule.h"
#include "xslt/private/TemplateInstructions.h"

namespace Xslt {

CStylesheet::CStylesheet(CEnvironment* environment, XsltPrivate::CStylesheetModule* module,
                         XsltPrivate::CLocator* locator, Dom::CStripSpaceRules* spaceRules)
    : m_pEnvironment(environment), m_pModule(module), m_pLocator(locator), m_pSpaceRules(spaceRules) {}

CStylesheet::~CStylesheet() = default;

void CStylesheet::Transform(const DomString& documentUri, IDocumentSource* source, Dom::CNode* node,
                            IResultHandler* handler, const CParameterList* parameters) {
    using namespace XsltPrivate;
    TRefPtr<CRuntime> runtime = new CRuntime(m_pModule, m_pEnvironment, m_pLocator);
    TRefPtr<CResultTree> result = new CResultTree(handler);
    CExecutionContext outermost(runtime, result);
    runtime->BindParameters(outermost, parameters);
    runtime->BuildTables(outermost);
    result->SetOutputProperties(runtime->GetOutputProperties());

    Dom::TNodeRef document = node;
    if (!document) {
        try {
            BuildDocument(m_pEnvironment, source, m_pSpaceRules, m_pLocator, document);
        } catch (CXsltException*) {
            throw;
        } catch (Core::IException* failure) {
            DomString message;
            failure->GetMessage(message);
            delete failure;
            outermost.RaiseFatal(CXsltException::DocumentRetrievalError, documentUri, message);
        }
    }
    runtime->GetDocumentTable()->SetSpaceRules(m_pSpaceRules);
    runtime->GetDocumentTable()->Add(documentUri, document);
    TRefPtr<Xpath::CNodeIterator> root;
    TRefPtr<Xpath::CNodeSet> rootSet = new Xpath::CSingleNodeSet(document);
    rootSet->CreateIterator(root);
    CExecutionContext top(outermost, root.Get());
    runtime->EvaluateGlobals(top);

    top.StartDocumentOutput();
    ApplyTemplates(top, nullptr, nullptr);
    top.EndDocumentOutput();
    top.Leave();
    outermost.Leave();
}

}  // namespace Xslt
