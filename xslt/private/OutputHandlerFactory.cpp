// The output handler: settings first, the writer at StartDocument, every event passed on.
#include "xslt/private/OutputHandlerFactory.h"

#include "core/EncodingTable.h"
#include "core/Stream.h"
#include "core/TextSink.h"
#include "xmlwriter/OutputProperties.h"
#include "xmlwriter/WriterFactory.h"

namespace XsltPrivate {

namespace {

class COutputHandler : public Xslt::IResultHandler {
public:
    void SetEncodingTable(Core::CEncodingTable* table) override { m_pEncodingTable = table; }
    // A byte stream and a text sink exclude each other, as they do for the writer.
    void SetStream(Core::IStream* stream) override {
        m_pStream = stream;
        m_pTextSink = nullptr;
    }
    void SetTextSink(Core::ITextSink* sink) override {
        m_pTextSink = sink;
        m_pStream = nullptr;
    }
    void SetOutputProperties(XmlWriter::COutputProperties* properties) override { m_pProperties = properties; }

    void StartDocument() override {
        m_pWriter = nullptr;
        XmlWriter::CreateWriter(m_pProperties, m_pWriter);
        m_pWriter->SetEncodingTable(m_pEncodingTable);
        if (m_pTextSink) {
            m_pWriter->SetTextSink(m_pTextSink);
        } else {
            m_pWriter->SetByteStream(m_pStream);
        }
        m_pWriter->StartDocument();
    }
    // The writer is dropped at the end, which frees its buffer; the stream stays open.
    void EndDocument() override {
        if (!m_pWriter) return;
        m_pWriter->EndDocument();
        m_pWriter = nullptr;
    }
    void StartElement(const DomChar* name, bool cdataSection, bool preserveSpace) override {
        if (m_pWriter) m_pWriter->StartElement(name, preserveSpace, cdataSection);
    }
    void EndElement(const DomChar*) override {
        if (m_pWriter) m_pWriter->EndElement();
    }
    void Namespace(const DomChar* prefix, const DomChar* uri) override {
        if (m_pWriter) m_pWriter->WriteNamespace(prefix, uri);
    }
    void Attribute(const DomChar* name, const DomChar* value) override {
        if (m_pWriter) m_pWriter->WriteAttribute(name, value);
    }
    // The writers always escape: disabled output escaping is not carried further.
    void Characters(const DomChar* text, int length, bool) override {
        if (m_pWriter) m_pWriter->Characters(text, length);
    }
    void Comment(const DomChar* text) override {
        if (m_pWriter) m_pWriter->WriteComment(text);
    }
    void ProcessingInstruction(const DomChar* target, const DomChar* data) override {
        if (m_pWriter) m_pWriter->WriteProcessingInstruction(target, data);
    }

private:
    TRefPtr<Core::CEncodingTable> m_pEncodingTable;
    TRefPtr<Core::IStream> m_pStream;
    TRefPtr<Core::ITextSink> m_pTextSink;
    TRefPtr<XmlWriter::COutputProperties> m_pProperties;
    TRefPtr<XmlWriter::IWriter> m_pWriter;
};

}  // namespace

void COutputHandlerFactory::Create(TRefPtr<Xslt::IResultHandler>& handler) { handler = new COutputHandler; }

}  // namespace XsltPrivate
