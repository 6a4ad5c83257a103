// The container of the engine's services. Each service is made at its first request and kept;
// only the extension registry is made by the constructor. The message and diagnostic streams
// are to be set before the first service call.
#pragma once
#include "core/EncodingTable.h"
#include "core/Stream.h"
#include "xslt/ExtensionRegistry.h"

namespace Xslt {

class CEnvironment : public CRefObject {
public:
    CEnvironment();

    // Further services (expression, sort, key, parser, DOM, builder, message sink, diagnostic
    // reporter, locator and output-handler factories) take their slots here as their parts land.
    virtual CExtensionRegistry* GetExtensionRegistry();
    virtual Core::CEncodingTable* GetEncodingTable();

    // Both are optional; without a stream, message text and diagnostics are dropped.
    void SetMessageStream(Core::IStream* stream) { m_pMessageStream = stream; }
    void SetDiagnosticStream(Core::IStream* stream) { m_pDiagnosticStream = stream; }
    Core::IStream* GetMessageStream() const { return m_pMessageStream; }
    Core::IStream* GetDiagnosticStream() const { return m_pDiagnosticStream; }

private:
    TRefPtr<CExtensionRegistry> m_pExtensionRegistry;
    TRefPtr<Core::CEncodingTable> m_pEncodingTable;
    TRefPtr<Core::IStream> m_pMessageStream;
    TRefPtr<Core::IStream> m_pDiagnosticStream;
};

}  // namespace Xslt
