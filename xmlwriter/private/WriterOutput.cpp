// The shared writer core: block encoding into the byte buffer, references and escaping.
#include "xmlwriter/private/WriterOutput.h"

#include <bit>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "core/EncodingTable.h"
#include "core/Stream.h"
#include "core/TextSink.h"
#include "xmlwriter/WriterException.h"

namespace XmlWriterPrivate {

namespace {

constexpr void ListEscapedUnits(SEscapes& escapes) {
    int row = 0;
    auto fill = [&](DomChar unit) {
        for (DomChar& cell : escapes.aaEscapedBlocks[row]) cell = unit;
        ++row;
    };
    for (int unit = 0; unit < 0x40; ++unit) {
        if (escapes.apReplacement[unit]) fill(static_cast<DomChar>(unit));
    }
    while (row < SEscapes::MaxEscaped) fill(0x80);
}

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
    ListEscapedUnits(escapes);
    return escapes;
}

constexpr SEscapes MakeNoEscapes() {
    SEscapes escapes{};
    ListEscapedUnits(escapes);
    return escapes;
}


bool IsSurrogate(DomChar unit) { return unit >= 0xD800 && unit <= 0xDFFF; }

bool IsReplacedAt(const DomChar* units, int index, int count, const SEscapes& escapes) {
    DomChar unit = units[index];
    if (!escapes.IsEscaped(unit)) return false;
    return !(unit == u'&' && escapes.bKeepAmpersandBeforeBrace && index + 1 < count && units[index + 1] == u'{');
}

// The end of the run of non-ASCII units from `start`. No character pairs across an ASCII unit,
// so the encoder may take such runs one by one.
int NonAsciiRunEnd(const DomChar* units, int start, int count) {
    while (start < count && units[start] >= 0x80) ++start;
    return start;
}

#if defined(__SSE2__)
// Stores eight units as bytes at `out` and returns how many of them lead the first one that is
// not ASCII or is escaped: 8 when there is none. The bytes from there on are of no use. Adding
// 0x7F80 with saturation sets the top bit of exactly the lanes at or above 0x80.
int CopyAsciiBlock(const DomChar* units, const SEscapes& escapes, unsigned char* out) {
    static_assert(SEscapes::MaxEscaped == 5, "one comparison per row below");
    const __m128i* rows = reinterpret_cast<const __m128i*>(escapes.aaEscapedBlocks);
    __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
    __m128i stops = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi16(block, rows[0]), _mm_cmpeq_epi16(block, rows[1])),
                                 _mm_or_si128(_mm_cmpeq_epi16(block, rows[2]), _mm_cmpeq_epi16(block, rows[3])));
    stops = _mm_or_si128(stops, _mm_cmpeq_epi16(block, rows[4]));
    stops = _mm_or_si128(stops, _mm_adds_epu16(block, _mm_set1_epi16(0x7F80)));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_packus_epi16(block, block));
    unsigned int mask = static_cast<unsigned int>(_mm_movemask_epi8(stops)) & 0xAAAA;
    return mask ? std::countr_zero(mask) / 2 : 8;
}
#endif

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

const SEscapes kNoEscapes = MakeNoEscapes();
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
    m_bAsciiAsBytes = m_bUtf8 = false;
}

void CWriterOutput::Open(const DomString& encodingName) {
    m_pEncoding = m_pTable ? m_pTable->Find(encodingName) : nullptr;
    if (!m_pEncoding) throw new XmlWriter::CWriterException(XmlWriter::CWriterException::UnsupportedEncoding, encodingName);
    // Without a stream the bytes still go through the buffer and are dropped at each flush.
    if (!m_pSink && !m_pBuffer) m_pBuffer = new unsigned char[BufferSize];
    m_nBuffered = 0;
    m_bAsciiAsBytes = !m_pSink && EncodesAsciiAsBytes(m_pEncoding);
    m_bUtf8 = m_bAsciiAsBytes && m_pEncoding->GetName() == u"UTF-8";
    int markLength = 0;
    const DomChar* mark = m_pEncoding->GetByteOrderMark(markLength);
    if (mark) WriteRaw(mark, markLength);
}

void CWriterOutput::Flush() {
    if (m_pStream && m_nBuffered > 0) m_pStream->Write(m_pBuffer, m_nBuffered);
    m_nBuffered = 0;
}

// With an encoding that writes ASCII as bytes, ASCII runs are copied and only the runs between
// them go to the encoder, so a rare accented letter does not send the rest of a text there.
int CWriterOutput::WriteRun(const DomChar* units, int count) {
    if (m_pSink) {
        m_pSink->Write(units, count);
        return count;
    }
    if (!m_pEncoding) return count;  // nothing was opened: events before StartDocument go nowhere
    if (!m_bAsciiAsBytes) return Encode(units, count);
    int done = 0;
    while (done < count) {
        done += CopyPlain(units + done, count - done, kNoEscapes);
        if (done == count) break;
        int end = NonAsciiRunEnd(units, done + 1, count);
        int encoded = Encode(units + done, end - done);
        done += encoded;
        if (done < end) break;
    }
    return done;
}

int CWriterOutput::Encode(const DomChar* units, int count) {
    int done = 0;
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

// Markup and most text are ASCII: copying it spares a call into the encoder. The buffer goes to
// the stream when it is full, or when the next character's bytes do not fit, as the encoder's.
int CWriterOutput::CopyPlain(const DomChar* units, int count, const SEscapes& escapes) {
    unsigned char* out = m_pBuffer + m_nBuffered;
    unsigned char* const end = m_pBuffer + BufferSize;
    int done = 0;
    while (done < count) {
#if defined(__SSE2__)
        if (count - done >= 8 && end - out >= 8) {
            int plain = CopyAsciiBlock(units + done, escapes, out);
            done += plain;
            out += plain;
            if (plain == 8) continue;
        }
#endif
        unsigned int unit = units[done];
        int length = unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
        if (length == 1 ? escapes.IsEscaped(static_cast<DomChar>(unit))
                        : !m_bUtf8 || IsSurrogate(static_cast<DomChar>(unit))) {
            break;
        }
        if (end - out < length) {
            m_nBuffered = static_cast<int>(out - m_pBuffer);
            Flush();
            out = m_pBuffer;
        }
        if (length == 1) {
            *out++ = static_cast<unsigned char>(unit);
        } else if (length == 2) {
            out[0] = static_cast<unsigned char>(0xC0 | (unit >> 6));
            out[1] = static_cast<unsigned char>(0x80 | (unit & 0x3F));
            out += 2;
        } else {
            out[0] = static_cast<unsigned char>(0xE0 | (unit >> 12));
            out[1] = static_cast<unsigned char>(0x80 | ((unit >> 6) & 0x3F));
            out[2] = static_cast<unsigned char>(0x80 | (unit & 0x3F));
            out += 3;
        }
        ++done;
    }
    m_nBuffered = static_cast<int>(out - m_pBuffer);
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

void CWriterOutput::RefuseCharacter(DomChar unit) {
    throw new XmlWriter::CWriterException(XmlWriter::CWriterException::UnsupportedCharacter, DomString(1, unit));
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

// Plain ASCII is copied while it is scanned; other units go through the encoder in runs that
// end before the next replaced unit (or, when the rest is copied, before the next ASCII unit).
void CWriterOutput::WriteEscaped(const DomChar* units, int count, const SEscapes& escapes) {
    int i = 0;
    while (i < count) {
        if (m_bAsciiAsBytes) {
            i += CopyPlain(units + i, count - i, escapes);
            if (i == count) break;
        }
        if (IsReplacedAt(units, i, count, escapes)) {
            WriteRaw(escapes.apReplacement[units[i]]);
            ++i;
            continue;
        }
        int end = i + 1;
        if (m_bAsciiAsBytes) {
            end = NonAsciiRunEnd(units, end, count);
        } else {
            while (end < count && !IsReplacedAt(units, end, count, escapes)) ++end;
        }
        WriteRawWithReferences(units + i, end - i);
        i = end;
    }
}

// Indentation: with room in the buffer, the spaces are set there at once.
void CWriterOutput::WriteSpaces(int count) {
    if (count <= 0) return;
    if (m_bAsciiAsBytes && count <= BufferSize - m_nBuffered) {
        std::memset(m_pBuffer + m_nBuffered, ' ', count);
        m_nBuffered += count;
        return;
    }
    static constexpr DomChar kSpaces[] = u"                                ";
    constexpr int kBlock = sizeof(kSpaces) / sizeof(kSpaces[0]) - 1;
    for (; count > kBlock; count -= kBlock) WriteRaw(kSpaces, kBlock);
    if (count > 0) WriteRaw(kSpaces, count);
}

}  // namespace XmlWriterPrivate
