// Throughput of the writers: a generated document of many small elements with attributes and
// mixed text, serialised into a stream that only counts bytes. Build by hand against the
// libraries of a build directory, e.g.
//   g++ -O2 -std=c++20 -I. bench/xmlwrite/XmlWriteBench.cpp build/libkst_xmlwriter.a build/libkst_core.a
#include <chrono>
#include <cstdio>

#include "core/EncodingTable.h"
#include "core/Stream.h"
#include "xmlwriter/OutputProperties.h"
#include "xmlwriter/WriterException.h"
#include "xmlwriter/WriterFactory.h"

namespace {

class CCountingStream : public Core::IStream {
public:
    int Read(void*, int) override { return 0; }
    void Write(const void*, int count) override { m_nBytes += count; }
    void Seek(long, int) override {}
    long Tell() override { return m_nBytes; }
    long m_nBytes = 0;
};

double Run(int method, const DomChar* encoding, long& bytes) {
    TRefPtr<XmlWriter::COutputProperties> properties = new XmlWriter::COutputProperties;
    properties->SetMethodKind(method);
    properties->SetEncoding(encoding);
    properties->SetIndent(true);
    TRefPtr<XmlWriter::IWriter> writer;
    XmlWriter::CreateWriter(properties, writer);
    TRefPtr<Core::CEncodingTable> table = new Core::CEncodingTable;
    TRefPtr<CCountingStream> stream = new CCountingStream;
    writer->SetEncodingTable(table);
    writer->SetByteStream(stream);
    const DomString text = u"Some plain text of a paragraph, with an & and a < now and then \u00E9\u20AC.";
    auto start = std::chrono::steady_clock::now();
    writer->StartDocument();
    writer->StartElement(u"html", false, false);
    for (int i = 0; i < 400000; ++i) {
        writer->StartElement(u"p", false, false);
        writer->WriteAttribute(u"class", u"item \"quoted\"");
        writer->WriteAttribute(u"href", u"a/b c.html");
        writer->Characters(text.data(), static_cast<int>(text.size()));
        writer->StartElement(u"br", false, false);
        writer->EndElement();
        writer->EndElement();
    }
    writer->EndElement();
    writer->EndDocument();
    bytes = stream->m_nBytes;
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

}  // namespace

int main() {
    const char* names[] = {"xml", "html", "text"};
    const DomChar* encodings[] = {u"UTF-8", u"ISO-8859-1", u"UTF-16"};
    for (int method = 0; method < 3; ++method) {
        for (const DomChar* encoding : encodings) {
            long bytes = 0;
            double seconds = 0;
            try {
                seconds = Run(method, encoding, bytes);
            } catch (XmlWriter::CWriterException* error) {
                // The text method refuses the euro sign in ISO-8859-1, as it must.
                delete error;
                continue;
            }
            std::printf("%-4s %-10s %7.1f MB in %.3f s: %6.1f MB/s\n", names[method], Core::ToUtf8(encoding).c_str(),
                        bytes / 1e6, seconds, bytes / 1e6 / seconds);
        }
    }
    return 0;
}
