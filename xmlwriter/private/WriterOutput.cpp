// The shared writer core: block encoding into the byte buffer, references and escaping.
#include "xmlwriter/private/WriterOutput.h"

#include "core/EncodingTable.h"
#include "core/Stream.h"
#include "core/TextSink.h"
#include "xmlwriter/WriterException.h"

namespace XmlWriterPrivate {

namespace {

constexpr SEscapes MakeEscapes(bool lineFeedAndQuote, bool lessThan, bool keepAmpersandBeforeBrace) {
    SEscapes escapes{};
    escapes.apReplacement[u'&'] = u"&amp;";
    escapes.apReplacement[u'>'] = u"&gt;";
    if (lessThan) escapes.apReplacement[u'<'] = u"&lt;";
    if (lineFeedAndQuote) {
        escapes.apReplacement[u'\n'] = u"&#10;";
        escapes.apReplacement[u'"'] = u"&quot;";
    }
    escapes.bKeepAmpersandBeforeBrace = keepAmpersandBeforeBrace;
    return escapes;
}

bool IsSurrogate(DomChar unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

// Whether the encoding writes every ASCII unit as the one byte of the same value.
bool EncodesAsciiAsBytes(Core::IEncoding* encoding) {
    DomChar units[0x80];
    unsigned char bytes[0x100];
    for (int i = 0; i < 0x80; ++i) units[i] = static_cast<DomChar>(i);
    int written = 0;
    bool failed = false;
    if (encoding->Encode(units, 0x80, bytes, sizeof(bytes), written, failed) != 0x80 || written != 0x80) return false;
    for (int i = 0; i < 0x80; ++i) {
        if (bytes[i] != i) return false;
    }
    return true;
}

}  // namespace

const SEscapes kTextEscapes = MakeEscapes(false, true, false);
const SEscapes kAttributeEscapes = MakeEscapes(true, true, false);
const SEscapes kHtmlAttributeEscapes = MakeEscapes(true, false, true);

CWriterOutput::CWriterOutput() = default;

CWriterOutput::~CWriterOutput() { delete[] m_pBuffer; }

void CWriterOutput::SetEncodingTable(Core::CEncodingTable* table) { m_pTable = table; }

void CWriterOutput::SetByteStream(Core::IStream* stream) {
    m_pStream = stream;
    m_pSink = nullptr;
}

void CWriterOutput::SetTextSink(Core::ITextSink* sink) {
    m_pSink = sink;
    m_pStream = nullptr;
}

void CWriterOutput::Open(const DomString& encodingName) {
    m_pEncoding = m_pTable ? m_pTable->Find(encodingName) : nullptr;
    if (!m_pEncoding) throw new XmlWriter::CWriterException(XmlWriter::CWriterException::UnsupportedEncoding, encodingName);
    // Without a stream the bytes still go through the buffer and are dropped at each flush.
    if (!m_pSink && !m_pBuffer) m_pBuffer = new unsigned char[BufferSize];
    m_nBuffered = 0;
    m_bAsciiAsBytes = !m_pSink && EncodesAsciiAsBytes(m_pEncoding);
    int markLength = 0;
    const DomChar* mark = m_pEncoding->GetByteOrderMark(markLength);
    if (mark) WriteRaw(mark, markLength);
}

void CWriterOutput::Flush() {
    if (m_pStream && m_nBuffered > 0) m_pStream->Write(m_pBuffer, m_nBuffered);
    m_nBuffered = 0;
}

int CWriterOutput::WriteRaw(const DomChar* units, int count) {
    if (m_pSink) {
        m_pSink->Write(units, count);
        return count;
    }
    if (!m_pEncoding) return count;  // nothing was opened: events before StartDocument go nowhere
    int done = m_bAsciiAsBytes ? CopyAscii(units, count) : 0;
    while (done < count) {
        int written = 0;
        bool failed = false;
        int consumed = m_pEncoding->Encode(units + done, count - done, m_pBuffer + m_nBuffered,
                                           BufferSize - m_nBuffered, written, failed);
        m_nBuffered += written;
        done += consumed;
        if (failed) break;
        if (done < count) {
            // The next character did not fit: an empty buffer that takes nothing would never do.
            if (m_nBuffered == 0) break;
            Flush();
        }
    }
    return done;
}

// Markup and most text are ASCII: copying its leading run spares a call into the encoder.
int CWriterOutput::CopyAscii(const DomChar* units, int count) {
    int done = 0;
    while (done < count) {
        if (m_nBuffered == BufferSize) Flush();
        int end = done + (BufferSize - m_nBuffered);
        if (end > count) end = count;
        unsigned char* out = m_pBuffer + m_nBuffered;
        int start = done;
        while (done < end && units[done] < 0x80) *out++ = static_cast<unsigned char>(units[done++]);
        m_nBuffered += done - start;
        if (done < end) break;
    }
    return done;
}

void CWriterOutput::WriteRawWithReferences(const DomChar* units, int count) {
    while (count > 0) {
        int done = WriteRaw(units, count);
        units += done;
        count -= done;
        if (count == 0) break;
        done = WriteUnencodableRun(units, count);
        units += done;
        count -= done;
    }
}

void CWriterOutput::WriteMarkup(const DomChar* units, int count) {
    int done = WriteRaw(units, count);
    if (done < count) {
        throw new XmlWriter::CWriterException(XmlWriter::CWriterException::UnsupportedCharacter,
                                              DomString(1, units[done]));
    }
}

// A surrogate pair becomes one reference of both units packed into 32 bits, high unit first,
// which is not the code point: this is what readers of our output have always received.
int CWriterOutput::WriteUnencodableRun(const DomChar* units, int count) {
    int length = m_pEncoding->GetUnencodableLength(units, count);
    if (length < 1) length = 1;
    if (length > count) length = count;
    int i = 0;
    while (i < length) {
        unsigned int value = units[i];
        if (IsSurrogate(units[i])) {
            if (i + 1 >= length) throw new XmlWriter::CWriterException(XmlWriter::CWriterException::InvalidSurrogatePair);
            value = (value << 16) | units[i + 1];
            ++i;
        }
        ++i;
        WriteReference(value);
    }
    return length;
}

void CWriterOutput::WriteReference(unsigned int value) {
    DomChar text[16];
    int end = sizeof(text) / sizeof(text[0]);
    int start = end;
    text[--start] = u';';
    do {
        text[--start] = static_cast<DomChar>(u'0' + value % 10);
        value /= 10;
    } while (value);
    text[--start] = u'#';
    text[--start] = u'&';
    WriteRaw(text + start, end - start);
}

void CWriterOutput::WriteEscaped(const DomChar* units, int count, const SEscapes& escapes) {
    int runStart = 0;
    for (int i = 0; i < count; ++i) {
        DomChar unit = units[i];
        if (unit >= 0x40 || !escapes.apReplacement[unit]) continue;
        if (unit == u'&' && escapes.bKeepAmpersandBeforeBrace && i + 1 < count && units[i + 1] == u'{') continue;
        WriteRawWithReferences(units + runStart, i - runStart);
        WriteRaw(escapes.apReplacement[unit]);
        runStart = i + 1;
    }
    WriteRawWithReferences(units + runStart, count - runStart);
}

void CWriterOutput::WriteSpaces(int count) {
    static constexpr DomChar kSpaces[] = u"                                ";
    constexpr int kBlock = sizeof(kSpaces) / sizeof(kSpaces[0]) - 1;
    for (; count > kBlock; count -= kBlock) WriteRaw(kSpaces, kBlock);
    if (count > 0) WriteRaw(kSpaces, count);
}

}  // namespace XmlWriterPrivate
