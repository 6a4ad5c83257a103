// Drives a writer into memory: an in-memory byte stream, the real encodings, and helpers
// that run a list of events and return the bytes or the writer's message.
#pragma once
#include <functional>
#include <string>

#include "core/EncodingTable.h"
#include "core/Stream.h"
#include "core/TextSink.h"
#include "xmlwriter/OutputProperties.h"
#include "xmlwriter/Writer.h"
#include "xmlwriter/WriterException.h"
#include "xmlwriter/WriterFactory.h"

namespace WriterTest {

class CByteStream : public Core::IStream {
public:
    int Read(void*, int) override { return 0; }
    void Write(const void* buffer, int count) override { m_sBytes.append(static_cast<const char*>(buffer), count); }
    void Seek(long, int) override {}
    long Tell() override { return static_cast<long>(m_sBytes.size()); }
    std::string m_sBytes;
};

class CStringSink : public Core::ITextSink {
public:
    void Write(const DomChar* units, int count) override { m_sText.append(units, count); }
    DomString m_sText;
};

using Events = std::function<void(XmlWriter::IWriter&)>;
using Settings = std::function<void(XmlWriter::COutputProperties&)>;

inline void Text(XmlWriter::IWriter& writer, DomStringView text) {
    writer.Characters(text.data(), static_cast<int>(text.size()));
}

// Makes the writer of `method` by the factory, with the settings applied, over `stream`.
inline TRefPtr<XmlWriter::IWriter> MakeWriter(int method, const Settings& settings, Core::IStream* stream) {
    TRefPtr<XmlWriter::COutputProperties> properties = new XmlWriter::COutputProperties;
    properties->SetMethodKind(method);
    if (settings) settings(*properties);
    TRefPtr<XmlWriter::IWriter> writer;
    XmlWriter::CreateWriter(properties, writer);
    TRefPtr<Core::CEncodingTable> table = new Core::CEncodingTable;
    writer->SetEncodingTable(table);
    writer->SetByteStream(stream);
    return writer;
}

// The bytes of a whole document: StartDocument, the events, EndDocument.
inline std::string Serialise(int method, const Settings& settings, const Events& events) {
    TRefPtr<CByteStream> stream = new CByteStream;
    TRefPtr<XmlWriter::IWriter> writer = MakeWriter(method, settings, stream);
    writer->StartDocument();
    events(*writer);
    writer->EndDocument();
    return stream->m_sBytes;
}

// The message of the writer error that the document raises, or "" if it raises none.
inline std::string SerialiseError(int method, const Settings& settings, const Events& events) {
    try {
        Serialise(method, settings, events);
    } catch (XmlWriter::CWriterException* error) {
        DomString text;
        error->GetMessage(text);
        delete error;
        return Core::ToUtf8(text);
    }
    return "";
}

inline void NoEvents(XmlWriter::IWriter&) {}

}  // namespace WriterTest
