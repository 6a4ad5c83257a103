// Stylesheet compilation.
#include "xslt/private/StylesheetCompiler.h"

#include "xslt/XsltException.h"
#include "xslt/private/DocumentSources.h"
#include "xslt/private/Locator.h"
#include "xslt/private/QName.h"
#include "xslt/private/StylesheetModule.h"

namespace XsltPrivate {

CStylesheetCompiler::CStylesheetCompiler(Xslt::CEnvironment* environment)
    : m_pEnvironment(environment), m_pRules(new Dom::CStripSpaceRules()) {
    m_pRules->AddRule(nullptr, nullptr, 0, false);
    m_pRules->AddRule(kXsltNamespace, u"text", 1, true);
    m_pRules->SetAnyStrip(true);
}

void CStylesheetCompiler::CompileUri(const DomString& uri, TRefPtr<Xslt::CStylesheet>& stylesheet) {
    TRefPtr<CUriSource> source = new CUriSource(m_pEnvironment);
    source->SetUri(uri);
    CompileSource(uri, source, stylesheet);
}

void CStylesheetCompiler::CompileNode(const DomString& uri, Dom::CNode* node, TRefPtr<Xslt::CStylesheet>& stylesheet) {
    TRefPtr<CNodeSource> source = new CNodeSource(uri, node);
    CompileSource(uri, source, stylesheet);
}

void CStylesheetCompiler::CompileSource(const DomString& uri, Xslt::IDocumentSource* source,
                                        TRefPtr<Xslt::CStylesheet>& stylesheet) {
    TRefPtr<CLocator> locator;
    m_pEnvironment->GetLocatorFactory()->Create(locator);
    Dom::TNodeRef document;
    try {
        BuildDocument(m_pEnvironment, source, m_pRules, locator, document);
    } catch (Core::IException* failure) {
        DomString message;
        failure->GetMessage(message);
        delete failure;
        throw new Xslt::CXsltException(Xslt::CXsltException::StylesheetRetrievalError, uri, message);
    }
    SLoadSession session;
    session.pEnvironment = m_pEnvironment;
    session.pLocator = locator;
    session.pCompilerRules = m_pRules;
    session.pSpaceRules = new Dom::CStripSpaceRules();
    TRefPtr<CStylesheetModule> module = new CStylesheetModule();
    int precedence = 1;
    module->Load(session, static_cast<Dom::CDocument*>(document.Get()), precedence);
    stylesheet = new Xslt::CStylesheet(m_pEnvironment, module, locator, session.pSpaceRules);
}

}  // namespace XsltPrivate
