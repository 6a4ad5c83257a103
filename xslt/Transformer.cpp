// The order of a run: stylesheet, output, document. Steps whose machinery is not in place yet
// fail with "Unsupported feature" rather than pretend to have produced a result.
#include "xslt/Transformer.h"

#include "uri/UriConversions.h"
#include "xslt/XsltException.h"

namespace Xslt {

CTransformer::CTransformer(CEnvironment* environment)
    : m_pEnvironment(environment), m_pParameters(new CParameterList()) {}

void CTransformer::SetParameters(const CParameterList* parameters) {
    if (parameters) {
        m_pParameters->CopyFrom(*parameters);
    } else {
        m_pParameters = new CParameterList();
    }
}

void CTransformer::Run() {
    CompileStylesheet();
    TRefPtr<Core::CFileStream> stream;
    if (!m_pOutputHandler) OpenOutput(stream);
    throw new CXsltException(CXsltException::UnsupportedFeature, u"not implemented:", u"transformation");
}

// Until the stylesheet compiler is wired in, only the stylesheet's accessibility is settled here.
// The inner text is the parser's own for a source it cannot open (Sxp::CParseException code 0);
// it goes with this interim check when the compiler parses the stylesheet.
void CTransformer::CompileStylesheet() {
    DomString fileName;
    TRefPtr<Core::CFileStream> file = new Core::CFileStream();
    if (!Uri::UriToFileName(m_sStylesheetUri, fileName) || !file->Open(fileName, Core::CFileStream::ReadBinary)) {
        throw new CXsltException(CXsltException::StylesheetRetrievalError, m_sStylesheetUri,
                                 u"Cannot access document");
    }
    throw new CXsltException(CXsltException::UnsupportedFeature, u"not implemented:", u"stylesheet compilation");
}

void CTransformer::OpenOutput(TRefPtr<Core::CFileStream>& stream) {
    DomString fileName;
    stream = new Core::CFileStream();
    if (!Uri::UriToFileName(m_sOutputUri, fileName) || !stream->Open(fileName, Core::CFileStream::CreateBinary)) {
        stream = nullptr;
        throw new CXsltException(CXsltException::CannotCreateResultStream, m_sOutputUri);
    }
}

}  // namespace Xslt
