// Services of the engine, made on first use.
#include "xslt/Environment.h"

#include "xslt/private/DiagnosticReporter.h"
#include "xslt/private/Locator.h"
#include "xslt/private/MessageSink.h"
#include "xslt/private/OutputHandlerFactory.h"

namespace Xslt {

namespace {
// Documents of the engine are numbered from this factory number upwards.
const uint32_t kDocumentFactoryNumber = 1;
}  // namespace

CEnvironment::CEnvironment() : m_pExtensionRegistry(new CExtensionRegistry()) {}

CEnvironment::~CEnvironment() = default;

CExtensionRegistry* CEnvironment::GetExtensionRegistry() { return m_pExtensionRegistry; }

void CEnvironment::CreateParser(TRefPtr<Sxp::IParser>& parser) { parser = new Sxp::CParser(); }

Dom::CDocumentFactory* CEnvironment::GetDomImplementation() {
    if (!m_pDomImplementation) m_pDomImplementation = new Dom::CDocumentFactory(kDocumentFactoryNumber);
    return m_pDomImplementation;
}

void CEnvironment::CreateBuilder(Dom::CNode* document, Dom::CStripSpaceRules* rules, Dom::IBuildListener* listener,
                                 TRefPtr<Dom::CDocumentBuilder>& builder) {
    Dom::CDocumentBuilder::Create(document, rules, listener, builder);
}

IResultHandler* CEnvironment::GetMessageSink() {
    if (!m_pMessageSink) m_pMessageSink = new XsltPrivate::CMessageSink(m_pMessageStream);
    return m_pMessageSink;
}

XsltPrivate::CDiagnosticReporter* CEnvironment::GetDiagnosticReporter() {
    if (!m_pDiagnosticReporter) m_pDiagnosticReporter = new XsltPrivate::CDiagnosticReporter(m_pDiagnosticStream);
    return m_pDiagnosticReporter;
}

Core::CEncodingTable* CEnvironment::GetEncodingTable() {
    if (!m_pEncodingTable) m_pEncodingTable = new Core::CEncodingTable();
    return m_pEncodingTable;
}

XsltPrivate::CLocatorFactory* CEnvironment::GetLocatorFactory() {
    if (!m_pLocatorFactory) m_pLocatorFactory = new XsltPrivate::CLocatorFactory();
    return m_pLocatorFactory;
}

XsltPrivate::COutputHandlerFactory* CEnvironment::GetOutputHandlerFactory() {
    if (!m_pOutputHandlerFactory) m_pOutputHandlerFactory = new XsltPrivate::COutputHandlerFactory();
    return m_pOutputHandlerFactory;
}

}  // namespace Xslt
