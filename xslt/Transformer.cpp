// The order of a run: document source, stylesheet, output, transformation.
#include "xslt/Transformer.h"

#include "uri/UriConversions.h"
#include "xslt/XsltException.h"
#include "xslt/private/DocumentSources.h"
#include "xslt/private/LargeStack.h"
#include "xslt/private/OutputHandlerFactory.h"
#include "xslt/private/StylesheetCompiler.h"

namespace Xslt {

CTransformer::CTransformer(CEnvironment* environment)
    : m_pEnvironment(environment), m_pParameters(new CParameterList()) {}

CTransformer::~CTransformer() = default;

void CTransformer::SetDocumentNode(Dom::CNode* node, bool useDirectly) {
    m_pDocumentNode = node;
    m_bUseNodeDirectly = useDirectly;
}

void CTransformer::SetParameters(const CParameterList* parameters) {
    if (parameters) {
        m_pParameters->CopyFrom(*parameters);
    } else {
        m_pParameters = new CParameterList();
    }
}

void CTransformer::Run() {
    XsltPrivate::RunOnLargeStack([this] { RunSteps(); });
}

void CTransformer::RunSteps() {
    TRefPtr<IDocumentSource> source;
    ChooseDocument(source);
    TRefPtr<CStylesheet> stylesheet;
    ChooseStylesheet(stylesheet);
    TRefPtr<IResultHandler> handler;
    ChooseOutput(handler);
    Dom::CNode* node = source ? nullptr : m_pDocumentNode.Get();
    stylesheet->Transform(m_sDocumentUri, source, node, handler, m_pParameters);
}

void CTransformer::ChooseDocument(TRefPtr<IDocumentSource>& source) {
    if (m_pDocumentSource) {
        source = m_pDocumentSource;
    } else if (!m_pDocumentNode) {
        TRefPtr<XsltPrivate::CUriSource> uriSource = new XsltPrivate::CUriSource(m_pEnvironment);
        uriSource->SetUri(m_sDocumentUri);
        source = uriSource.Get();
    } else if (!m_bUseNodeDirectly) {
        source = new XsltPrivate::CNodeSource(m_sDocumentUri, m_pDocumentNode);
    }
}

void CTransformer::ChooseStylesheet(TRefPtr<CStylesheet>& stylesheet) {
    if (m_pStylesheet) {
        stylesheet = m_pStylesheet;
        return;
    }
    if (!m_pCompiler) m_pCompiler = new XsltPrivate::CStylesheetCompiler(m_pEnvironment);
    if (m_pStylesheetSource) {
        m_pCompiler->CompileSource(m_sStylesheetUri, m_pStylesheetSource, stylesheet);
    } else if (m_pStylesheetNode) {
        m_pCompiler->CompileNode(m_sStylesheetUri, m_pStylesheetNode, stylesheet);
    } else {
        m_pCompiler->CompileUri(m_sStylesheetUri, stylesheet);
    }
}

// A result into a DOM node is not offered: the driver writes files, and a caller with other
// needs gives its own handler.
void CTransformer::ChooseOutput(TRefPtr<IResultHandler>& handler) {
    if (m_pOutputHandler) {
        handler = m_pOutputHandler;
        return;
    }
    DomString fileName;
    TRefPtr<Core::CFileStream> stream = new Core::CFileStream();
    if (!Uri::UriToFileName(m_sOutputUri, fileName) || !stream->Open(fileName, Core::CFileStream::CreateBinary)) {
        throw new CXsltException(CXsltException::CannotCreateResultStream, m_sOutputUri);
    }
    m_pEnvironment->GetOutputHandlerFactory()->Create(handler);
    handler->SetStream(stream);
    handler->SetEncodingTable(m_pEnvironment->GetEncodingTable());
}

}  // namespace Xslt
