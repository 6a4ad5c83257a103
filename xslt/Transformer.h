// One configured transformation: a source document, a stylesheet and an output, each named by
// a URI or given as an object, plus parameters. Run compiles, opens the output, then
// transforms; it catches nothing.
#pragma once
#include "core/FileStream.h"
#include "dom/Node.h"
#include "xslt/DocumentSource.h"
#include "xslt/Environment.h"
#include "xslt/ParameterList.h"
#include "xslt/ResultHandler.h"
#include "xslt/Stylesheet.h"

namespace XsltPrivate {
class CStylesheetCompiler;
}

namespace Xslt {

class CTransformer : public CRefObject {
public:
    explicit CTransformer(CEnvironment* environment);
    ~CTransformer() override;

    void SetDocumentUri(DomString uri) { m_sDocumentUri = std::move(uri); }
    // With `useDirectly` the node is the source tree itself; otherwise it is rebuilt under the
    // stylesheet's space rules.
    void SetDocumentNode(Dom::CNode* node, bool useDirectly);
    void SetDocumentSource(IDocumentSource* source) { m_pDocumentSource = source; }
    void SetStylesheetUri(DomString uri) { m_sStylesheetUri = std::move(uri); }
    void SetStylesheetNode(Dom::CNode* node) { m_pStylesheetNode = node; }
    void SetStylesheetSource(IDocumentSource* source) { m_pStylesheetSource = source; }
    void SetStylesheet(CStylesheet* stylesheet) { m_pStylesheet = stylesheet; }
    void SetOutputUri(DomString uri) { m_sOutputUri = std::move(uri); }
    // The result goes to the caller's handler instead of a file.
    void SetOutputHandler(IResultHandler* handler) { m_pOutputHandler = handler; }
    // Copies the list into the transformer's own.
    void SetParameters(const CParameterList* parameters);

    // One transformation. The output file is opened, and so emptied, after the stylesheet has
    // compiled and before the document is read. Every failure is thrown to the caller.
    void Run();

private:
    void RunSteps();
    void ChooseDocument(TRefPtr<IDocumentSource>& source);
    void ChooseStylesheet(TRefPtr<CStylesheet>& stylesheet);
    void ChooseOutput(TRefPtr<IResultHandler>& handler);

    TRefPtr<CEnvironment> m_pEnvironment;
    TRefPtr<XsltPrivate::CStylesheetCompiler> m_pCompiler;
    DomString m_sDocumentUri;
    Dom::TNodeRef m_pDocumentNode;
    bool m_bUseNodeDirectly = false;
    TRefPtr<IDocumentSource> m_pDocumentSource;
    DomString m_sStylesheetUri;
    Dom::TNodeRef m_pStylesheetNode;
    TRefPtr<IDocumentSource> m_pStylesheetSource;
    TRefPtr<CStylesheet> m_pStylesheet;
    DomString m_sOutputUri;
    TRefPtr<IResultHandler> m_pOutputHandler;
    TRefPtr<CParameterList> m_pParameters;
};

}  // namespace Xslt
