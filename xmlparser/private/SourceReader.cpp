// Opening a source, detecting its encoding and decoding it.
#include "xmlparser/private/SourceReader.h"

#include <cstring>

#include "core/FileStream.h"
#include "core/Utf16Encoding.h"
#include "core/Utf8Encoding.h"
#include "uri/UriConversions.h"
#include "xmlparser/private/XmlException.h"

namespace XmlParserPrivate {

CSourceReader::CSourceReader(const SEncodingState* state, Sxp::CInputSource* source)
    : m_pState(state), m_pSource(source) {
    m_pTextStream = source->GetTextStream();
    if (!m_pTextStream) m_pByteStream = source->GetByteStream();
    if (m_pTextStream || m_pByteStream) return;
    DomString fileName;
    if (!Uri::UriToFileName(source->GetSystemId(), fileName)) throw new CInputSourceException();
    TRefPtr<Core::CFileStream> file = new Core::CFileStream();
    if (!file->Open(fileName, Core::CFileStream::ReadBinary)) throw new CInputSourceException();
    m_pOwnFile = file.Get();
    m_pByteStream = file.Get();
}

int CSourceReader::Read(DomChar* units, int count) {
    int delivered;
    if (m_pTextStream) {
        delivered = m_pTextStream->Read(units, count);
    } else {
        if (!m_pEncoding) m_pEncoding = m_pState->m_pEncoding;
        if (!m_pEncoding && !m_pState->m_bPrologDone) {
            delivered = Detect(units);
        } else {
            if (!m_pEncoding) m_pEncoding = m_pDetected;
            delivered = Decode(m_pEncoding, units, count);
        }
    }
    if (delivered > 0) m_nUnitsRead += delivered;
    return delivered > 0 ? delivered : 0;
}

// While the prolog is unsettled: the first call looks at the first bytes, and every call
// decodes exactly one unit, so that nothing is decoded ahead of the XML declaration.
int CSourceReader::Detect(DomChar* units) {
    if (!m_pDetected) {
        m_pDetected = new Core::CUtf8Encoding();
        if (!FillBytes()) return 0;
        if (m_nBytes >= 2 && m_aBytes[0] == 0xFE && m_aBytes[1] == 0xFF) {
            m_pDetected = new Core::CUtf16Encoding(true);
            m_nBytePos = 2;
        } else if (m_nBytes >= 2 && m_aBytes[0] == 0xFF && m_aBytes[1] == 0xFE) {
            m_pDetected = new Core::CUtf16Encoding(false);
            m_nBytePos = 2;
        }
    }
    return Decode(m_pDetected, units, 1);
}

// Reads up to a buffer of bytes behind what is left unused; false if nothing came.
bool CSourceReader::FillBytes() {
    int kept = m_nBytes - m_nBytePos;
    if (kept > 0 && m_nBytePos > 0) std::memmove(m_aBytes, m_aBytes + m_nBytePos, static_cast<size_t>(kept));
    m_nBytes = kept > 0 ? kept : 0;
    m_nBytePos = 0;
    int got = m_pByteStream->Read(m_aBytes + m_nBytes, ByteBufferSize - m_nBytes);
    if (got <= 0) return false;
    m_nBytes += got;
    return true;
}

// Decodes up to `count` units; an unfinished sequence at the end of input is dropped.
int CSourceReader::Decode(const Core::IEncoding* encoding, DomChar* units, int count) {
    int done = 0;
    while (done < count) {
        if (m_nBytePos >= m_nBytes && !FillBytes()) break;
        int consumed = 0;
        bool incomplete = false;
        int got = encoding->Decode(m_aBytes + m_nBytePos, m_nBytes - m_nBytePos, consumed, units + done,
                                   count - done, incomplete);
        if (got == 0 && !incomplete) break;
        done += got;
        m_nBytePos += consumed;
        if (incomplete && !FillBytes()) break;
    }
    return done;
}

}  // namespace XmlParserPrivate
