// What is to be parsed: a byte stream, a stream of 16-bit units, or a system identifier that is
// opened as a local file, with an optional encoding that overrides detection.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"
#include "core/Stream.h"

namespace Sxp {

class CInputSource : public CRefObject {
public:
    CInputSource() = default;
    explicit CInputSource(DomString systemId) : m_sSystemId(std::move(systemId)) {}

    Core::IStream* GetByteStream() const { return m_pByteStream; }
    void SetByteStream(Core::IStream* stream) { m_pByteStream = stream; }
    // A stream whose Read counts 16-bit units; it wins over the byte stream.
    Core::IStream* GetTextStream() const { return m_pTextStream; }
    void SetTextStream(Core::IStream* stream) { m_pTextStream = stream; }
    const DomString& GetPublicId() const { return m_sPublicId; }
    void SetPublicId(DomString publicId) { m_sPublicId = std::move(publicId); }
    const DomString& GetSystemId() const { return m_sSystemId; }
    void SetSystemId(DomString systemId) { m_sSystemId = std::move(systemId); }
    const DomString& GetEncoding() const { return m_sEncoding; }
    void SetEncoding(DomString encoding) { m_sEncoding = std::move(encoding); }

private:
    TRefPtr<Core::IStream> m_pByteStream;
    TRefPtr<Core::IStream> m_pTextStream;
    DomString m_sPublicId;
    DomString m_sSystemId;
    DomString m_sEncoding;
};

}  // namespace Sxp
