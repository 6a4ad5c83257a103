// The writer core shared by the XML, HTML and text writers: the encoding, the 0x6000-byte
// buffer in front of the byte stream (or the text sink instead of both), the character
// references for what the encoding cannot hold, and escaping by run.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"

namespace Core {
class CEncodingTable;
class IEncoding;
class IStream;
class ITextSink;
}  // namespace Core

namespace XmlWriterPrivate {

// What replaces each unit below 0x40 when escaped; null for a unit that stays as it is.
struct SEscapes {
    static constexpr int MaxEscaped = 5;

    const DomChar* apReplacement[0x40];
    // "&" directly before "{" stays as it is (HTML attribute values).
    bool bKeepAmpersandBeforeBrace;
    // Each unit that has a replacement eight times over, the rest of the rows 0x80, which ends
    // an ASCII run anyway: the run scanner compares eight units with each row at once.
    alignas(16) DomChar aaEscapedBlocks[MaxEscaped][8];

    bool IsEscaped(DomChar unit) const { return unit < 0x40 && apReplacement[unit]; }
};

// Nothing: markup and raw text.
extern const SEscapes kNoEscapes;
// Text content: "&", "<", ">".
extern const SEscapes kTextEscapes;
// Attribute values: line feed, the double quote, "&", "<", ">".
extern const SEscapes kAttributeEscapes;
// HTML attribute values of HTML elements: as above, but "<" and "&{" stay.
extern const SEscapes kHtmlAttributeEscapes;

class CWriterOutput {
public:
    static constexpr int BufferSize = 0x6000;

    CWriterOutput();
    ~CWriterOutput();
    CWriterOutput(const CWriterOutput&) = delete;
    CWriterOutput& operator=(const CWriterOutput&) = delete;

    void SetEncodingTable(Core::CEncodingTable* table);
    void SetByteStream(Core::IStream* stream);
    // Stops the copying of ASCII into the buffer until the next Open.
    void SetTextSink(Core::ITextSink* sink);

    // Finds the encoding by name (code 1 if there is none), empties the buffer and writes
    // the encoding's byte order mark.
    void Open(const DomString& encodingName);
    // Hands the buffered bytes to the stream.
    void Flush();

    // Encodes as far as the encoding allows; returns the units consumed. Short ASCII, the bulk
    // of markup, is copied here, in line.
    int WriteRaw(const DomChar* units, int count) {
        if (count > ShortRun || !m_bAsciiAsBytes || count > BufferSize - m_nBuffered) return WriteRun(units, count);
        int copied = CopyShortAscii(units, count);
        return copied == count ? count : copied + WriteRun(units + copied, count - copied);
    }
    int WriteRaw(DomStringView text) { return WriteRaw(text.data(), static_cast<int>(text.size())); }
    // Text: what cannot be encoded becomes character references.
    void WriteRawWithReferences(const DomChar* units, int count);
    // Names, comments, instructions: what cannot be encoded is code 5 with that unit.
    void WriteMarkup(const DomChar* units, int count) {
        int done = WriteRaw(units, count);
        if (done < count) RefuseCharacter(units[done]);
    }
    void WriteMarkup(DomStringView text) { WriteMarkup(text.data(), static_cast<int>(text.size())); }
    // A zero-terminated name or text, or null for none: its ASCII is copied while its end is sought.
    void WriteMarkup(const DomChar* text) {
        if (!text) return;
        if (m_bAsciiAsBytes) text += CopyTerminatedAscii(text, kNoEscapes);
        if (*text) WriteMarkup(DomStringView(text));
    }
    // Writes references for the leading units that cannot be encoded; returns how many.
    int WriteUnencodableRun(const DomChar* units, int count);
    // Copies runs of plain units in one go and writes the replacement for the others.
    void WriteEscaped(const DomChar* units, int count, const SEscapes& escapes);
    // The same for a zero-terminated text, or null for none.
    void WriteEscaped(const DomChar* text, const SEscapes& escapes) {
        if (!text) return;
        if (m_bAsciiAsBytes) text += CopyTerminatedAscii(text, escapes);
        if (!*text) return;
        DomStringView rest(text);
        WriteEscaped(rest.data(), static_cast<int>(rest.size()), escapes);
    }
    void WriteSpaces(int count);

private:
    // Longest text that WriteRaw copies in line.
    static constexpr int ShortRun = 16;

    int CopyShortAscii(const DomChar* units, int count) {
        unsigned char* out = m_pBuffer + m_nBuffered;
        int copied = 0;
        while (copied < count && units[copied] < 0x80) {
            out[copied] = static_cast<unsigned char>(units[copied]);
            ++copied;
        }
        m_nBuffered += copied;
        return copied;
    }
    // Copies ASCII that is not escaped up to the terminator, another unit or the end of the
    // buffer; returns how much.
    int CopyTerminatedAscii(const DomChar* text, const SEscapes& escapes) {
        unsigned char* out = m_pBuffer + m_nBuffered;
        int room = BufferSize - m_nBuffered;
        int copied = 0;
        while (copied < room && static_cast<unsigned int>(text[copied] - 1) < 0x7F && !escapes.IsEscaped(text[copied])) {
            out[copied] = static_cast<unsigned char>(text[copied]);
            ++copied;
        }
        m_nBuffered += copied;
        return copied;
    }
    int WriteRun(const DomChar* units, int count);
    [[noreturn]] static void RefuseCharacter(DomChar unit);
    void WriteReference(unsigned int value);
    // Hands the units to the encoder, flushing as the buffer fills; returns the units consumed.
    int Encode(const DomChar* units, int count);
    // Copies the leading units that need neither a replacement nor the encoder straight into
    // the buffer; returns how many. Only for an encoding that writes ASCII as bytes.
    int CopyPlain(const DomChar* units, int count, const SEscapes& escapes);

    TRefPtr<Core::CEncodingTable> m_pTable;
    TRefPtr<Core::IStream> m_pStream;
    TRefPtr<Core::ITextSink> m_pSink;
    TRefPtr<Core::IEncoding> m_pEncoding;
    unsigned char* m_pBuffer = nullptr;
    int m_nBuffered = 0;
    bool m_bAsciiAsBytes = false;
    bool m_bUtf8 = false;  // characters of the basic plane are encoded here, not by the encoding
};

}  // namespace XmlWriterPrivate
