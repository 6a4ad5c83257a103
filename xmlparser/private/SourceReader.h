// The reader of one input source: opens it, finds its encoding (a UTF-16 byte order mark, else
// UTF-8), decodes one unit at a time until the prolog is settled so that the XML declaration can
// change the encoding in mid-stream, then decodes in blocks.
#pragma once
#include <cstdint>

#include "core/Encoding.h"
#include "core/Stream.h"
#include "xmlparser/InputSource.h"
#include "xmlparser/private/CharStream.h"

namespace XmlParserPrivate {

// What the parser has settled about the encoding; the reader looks at it on each read.
struct SEncodingState {
    TRefPtr<Core::IEncoding> m_pEncoding;  // in force, null while undecided
    bool m_bPrologDone = false;
};

class CSourceReader : public IUnitSource {
public:
    enum : int { ByteBufferSize = 4096 };

    // Throws CInputSourceException when the source cannot be opened.
    CSourceReader(const SEncodingState* state, Sxp::CInputSource* source);

    int Read(DomChar* units, int count) override;
    // Units delivered so far, the measure against which entity expansion is weighed.
    int64_t GetUnitsRead() const { return m_nUnitsRead; }

private:
    int Detect(DomChar* units);
    int Decode(const Core::IEncoding* encoding, DomChar* units, int count);
    bool FillBytes();

    const SEncodingState* m_pState;
    TRefPtr<Sxp::CInputSource> m_pSource;
    TRefPtr<Core::IStream> m_pByteStream;
    TRefPtr<Core::IStream> m_pTextStream;
    TRefPtr<Core::IStream> m_pOwnFile;
    TRefPtr<Core::IEncoding> m_pEncoding;
    TRefPtr<Core::IEncoding> m_pDetected;
    unsigned char m_aBytes[ByteBufferSize];
    int m_nBytes = 0;
    int m_nBytePos = 0;
    int64_t m_nUnitsRead = 0;
};

}  // namespace XmlParserPrivate
