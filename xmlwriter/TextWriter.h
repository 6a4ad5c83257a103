// The writer of the text output method: only character data is written, without escaping,
// and a character the encoding cannot hold is an error rather than a reference.
#pragma once
#include "xmlwriter/OutputProperties.h"
#include "xmlwriter/Writer.h"

namespace XmlWriterPrivate {
class CWriterOutput;
}

namespace XmlWriter {

class CTextWriter : public IWriter {
public:
    CTextWriter();
    ~CTextWriter() override;

    void SetEncodingTable(Core::CEncodingTable* table) override;
    void SetByteStream(Core::IStream* stream) override;
    void SetTextSink(Core::ITextSink* sink) override;
    void SetOutputProperties(COutputProperties* properties) override;
    // Only the encoding property counts, and its name is looked up without a syntax test.
    void StartDocument() override;
    void EndDocument() override;
    void StartElement(const DomChar* name, bool preserveSpace, bool cdataSection) override;
    void EndElement() override;
    void WriteNamespace(const DomChar* prefix, const DomChar* uri) override;
    void WriteAttribute(const DomChar* name, const DomChar* value) override;
    void Characters(const DomChar* units, int count) override;
    void WriteComment(const DomChar* text) override;
    void WriteProcessingInstruction(const DomChar* target, const DomChar* data) override;

private:
    TRefPtr<COutputProperties> m_pProperties;
    XmlWriterPrivate::CWriterOutput* m_pOutput;
    bool m_bStarted = false;
    DomString m_sEncoding;
    bool m_bInElement = false;
};

}  // namespace XmlWriter
