// One configured transformation: a source document, a stylesheet and an output, each named by
// a URI, plus parameters. Run compiles, opens the output, then transforms; it catches nothing.
#pragma once
#include "core/FileStream.h"
#include "xslt/Environment.h"
#include "xslt/ParameterList.h"
#include "xslt/ResultHandler.h"

namespace Xslt {

class CTransformer : public CRefObject {
public:
    explicit CTransformer(CEnvironment* environment);

    void SetDocumentUri(DomString uri) { m_sDocumentUri = std::move(uri); }
    void SetStylesheetUri(DomString uri) { m_sStylesheetUri = std::move(uri); }
    void SetOutputUri(DomString uri) { m_sOutputUri = std::move(uri); }
    // The result goes to the caller's handler instead of a file.
    void SetOutputHandler(IResultHandler* handler) { m_pOutputHandler = handler; }
    // Copies the list into the transformer's own.
    void SetParameters(const CParameterList* parameters);

    // One transformation. The output file is opened, and so emptied, after the stylesheet has
    // compiled and before the document is read. Every failure is thrown to the caller.
    void Run();

private:
    void CompileStylesheet();
    void OpenOutput(TRefPtr<Core::CFileStream>& stream);

    TRefPtr<CEnvironment> m_pEnvironment;
    DomString m_sDocumentUri;
    DomString m_sStylesheetUri;
    DomString m_sOutputUri;
    TRefPtr<IResultHandler> m_pOutputHandler;
    TRefPtr<CParameterList> m_pParameters;
};

}  // namespace Xslt
