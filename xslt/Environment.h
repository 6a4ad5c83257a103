// The container of the engine's services. Each service is made at its first request and kept;
// only the extension registry is made by the constructor. The message and diagnostic streams
// are to be set before the first service call: the sink and the reporter are built on whatever
// stream stands there at their first use.
#pragma once
#include "core/EncodingTable.h"
#include "core/Stream.h"
#include "dom/Document.h"
#include "dom/DocumentBuilder.h"
#include "xmlparser/Parser.h"
#include "xslt/ExtensionRegistry.h"
#include "xslt/ResultHandler.h"

namespace XsltPrivate {
class CDiagnosticReporter;
class CLocatorFactory;
class COutputHandlerFactory;
}  // namespace XsltPrivate

namespace Xslt {

class CEnvironment : public CRefObject {
public:
    CEnvironment();
    ~CEnvironment() override;

    virtual CExtensionRegistry* GetExtensionRegistry();
    // A new parser for each document read.
    virtual void CreateParser(TRefPtr<Sxp::IParser>& parser);
    virtual Dom::CDocumentFactory* GetDomImplementation();
    virtual void CreateBuilder(Dom::CNode* document, Dom::CStripSpaceRules* rules, Dom::IBuildListener* listener,
                               TRefPtr<Dom::CDocumentBuilder>& builder);
    // Passes the characters of xsl:message to the message stream.
    virtual IResultHandler* GetMessageSink();
    virtual XsltPrivate::CDiagnosticReporter* GetDiagnosticReporter();
    virtual Core::CEncodingTable* GetEncodingTable();
    virtual XsltPrivate::CLocatorFactory* GetLocatorFactory();
    virtual XsltPrivate::COutputHandlerFactory* GetOutputHandlerFactory();

    // Both are optional; without a stream, message text and diagnostics are dropped.
    void SetMessageStream(Core::IStream* stream) { m_pMessageStream = stream; }
    void SetDiagnosticStream(Core::IStream* stream) { m_pDiagnosticStream = stream; }
    Core::IStream* GetMessageStream() const { return m_pMessageStream; }
    Core::IStream* GetDiagnosticStream() const { return m_pDiagnosticStream; }

private:
    TRefPtr<CExtensionRegistry> m_pExtensionRegistry;
    TRefPtr<Dom::CDocumentFactory> m_pDomImplementation;
    TRefPtr<IResultHandler> m_pMessageSink;
    TRefPtr<XsltPrivate::CDiagnosticReporter> m_pDiagnosticReporter;
    TRefPtr<Core::CEncodingTable> m_pEncodingTable;
    TRefPtr<XsltPrivate::CLocatorFactory> m_pLocatorFactory;
    TRefPtr<XsltPrivate::COutputHandlerFactory> m_pOutputHandlerFactory;
    TRefPtr<Core::IStream> m_pMessageStream;
    TRefPtr<Core::IStream> m_pDiagnosticStream;
};

}  // namespace Xslt
