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
    const DomChar* apReplacement[0x40];
    // "&" directly before "{" stays as it is (HTML attribute values).
    bool bKeepAmpersandBeforeBrace;
};

class CWriterOutput {
public:
    static constexpr int BufferSize = 0x6000;

    CWriterOutput();
    ~CWriterOutput();
    CWriterOutput(const CWriterOutput&) = delete;
    CWriterOutput& operator=(const CWriterOutput&) = delete;

    void SetEncodingTable(Core::CEncodingTable* table);
    void SetByteStream(Core::IStream* stream);
    void SetTextSink(Core::ITextSink* sink);

    // Finds the encoding by name (code 1 if there is none), empties the buffer and writes
    // the encoding's byte order mark.
    void Open(const DomString& encodingName);
    // Hands the buffered bytes to the stream.
    void Flush();

    // Encodes as far as the encoding allows; returns the units consumed.
    int WriteRaw(const DomChar* units, int count);
    int WriteRaw(DomStringView text) { return WriteRaw(text.data(), static_cast<int>(text.size())); }
    // Text: what cannot be encoded becomes character references.
    void WriteRawWithReferences(const DomChar* units, int count);
    // Names, comments, instructions: what cannot be encoded is code 5 with that unit.
    void WriteMarkup(const DomChar* units, int count);
    void WriteMarkup(DomStringView text) { WriteMarkup(text.data(), static_cast<int>(text.size())); }
    // Writes references for the leading units that cannot be encoded; returns how many.
    int WriteUnencodableRun(const DomChar* units, int count);
    // Copies runs of plain units in one go and writes the replacement for the others.
    void WriteEscaped(const DomChar* units, int count, const SEscapes& escapes);
    void WriteSpaces(int count);

private:
    void WriteReference(unsigned int value);
    int CopyAscii(const DomChar* units, int count);

    TRefPtr<Core::CEncodingTable> m_pTable;
    TRefPtr<Core::IStream> m_pStream;
    TRefPtr<Core::ITextSink> m_pSink;
    TRefPtr<Core::IEncoding> m_pEncoding;
    unsigned char* m_pBuffer = nullptr;
    int m_nBuffered = 0;
    bool m_bAsciiAsBytes = false;
};

// Text content: "&", "<", ">".
extern const SEscapes kTextEscapes;
// Attribute values: line feed, the double quote, "&", "<", ">".
extern const SEscapes kAttributeEscapes;
// HTML attribute values of HTML elements: as above, but "<" and "&{" stay.
extern const SEscapes kHtmlAttributeEscapes;

}  // namespace XmlWriterPrivate
