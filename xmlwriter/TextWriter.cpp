// The text output method over the shared writer core.
#include "xmlwriter/TextWriter.h"

#include "xmlwriter/private/WriterOutput.h"

namespace XmlWriter {

CTextWriter::CTextWriter() : m_pOutput(new XmlWriterPrivate::CWriterOutput) {}

CTextWriter::~CTextWriter() { delete m_pOutput; }

void CTextWriter::SetEncodingTable(Core::CEncodingTable* table) { m_pOutput->SetEncodingTable(table); }
void CTextWriter::SetByteStream(Core::IStream* stream) { m_pOutput->SetByteStream(stream); }
void CTextWriter::SetTextSink(Core::ITextSink* sink) { m_pOutput->SetTextSink(sink); }
void CTextWriter::SetOutputProperties(COutputProperties* properties) { m_pProperties = properties; }

void CTextWriter::StartDocument() {
    if (!m_pProperties) m_pProperties = new COutputProperties;
    if (!m_pProperties->GetEncoding(m_sEncoding)) m_sEncoding = u"UTF-8";
    m_pOutput->Open(m_sEncoding);
    m_bInElement = false;
    m_bStarted = true;
}

void CTextWriter::EndDocument() { m_pOutput->Flush(); }

void CTextWriter::StartElement(const DomChar*, bool, bool) { m_bInElement = true; }
void CTextWriter::EndElement() { m_bInElement = false; }
void CTextWriter::WriteNamespace(const DomChar*, const DomChar*) {}
void CTextWriter::WriteAttribute(const DomChar*, const DomChar*) {}
void CTextWriter::WriteComment(const DomChar*) {}
void CTextWriter::WriteProcessingInstruction(const DomChar*, const DomChar*) {}

void CTextWriter::Characters(const DomChar* units, int count) {
    if (count > 0) m_pOutput->WriteMarkup(units, count);
}

}  // namespace XmlWriter
