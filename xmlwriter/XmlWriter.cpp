// The xml output method: declaration, document type, tags, escaping, CDATA sections and
// indentation, all written through the shared writer core.
#include "xmlwriter/XmlWriter.h"

#include "xmlwriter/WriterException.h"
#include "xmlwriter/private/WriterOutput.h"

namespace XmlWriter {

using XmlWriterPrivate::kAttributeEscapes;
using XmlWriterPrivate::kTextEscapes;

namespace {

bool IsAsciiLetter(DomChar unit) { return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z'); }
bool IsAsciiDigit(DomChar unit) { return unit >= u'0' && unit <= u'9'; }

bool IsVersionSyntax(DomStringView version) {
    if (version.empty()) return false;
    for (DomChar unit : version) {
        if (!IsAsciiLetter(unit) && !IsAsciiDigit(unit) && unit != u'.' && unit != u':' && unit != u'-') return false;
    }
    return true;
}

bool IsEncodingNameSyntax(DomStringView name) {
    if (name.empty() || !IsAsciiLetter(name[0])) return false;
    for (DomChar unit : name.substr(1)) {
        if (!IsAsciiLetter(unit) && !IsAsciiDigit(unit) && unit != u'.' && unit != u'_' && unit != u'-') return false;
    }
    return true;
}

DomStringView View(const DomChar* text) { return text ? DomStringView(text) : DomStringView(); }

}  // namespace

CXmlWriter::CXmlWriter() : m_pOutput(new XmlWriterPrivate::CWriterOutput) { ResetRows(); }

CXmlWriter::~CXmlWriter() { delete m_pOutput; }

void CXmlWriter::SetEncodingTable(Core::CEncodingTable* table) { m_pOutput->SetEncodingTable(table); }
void CXmlWriter::SetByteStream(Core::IStream* stream) { m_pOutput->SetByteStream(stream); }
void CXmlWriter::SetTextSink(Core::ITextSink* sink) { m_pOutput->SetTextSink(sink); }
void CXmlWriter::SetOutputProperties(COutputProperties* properties) { m_pProperties = properties; }

DomStringView CXmlWriter::GetDefaultVersion() const { return u"1.0"; }
bool CXmlWriter::GetDefaultIndent() const { return false; }
DomStringView CXmlWriter::GetProcessingInstructionEnd() const { return u"?>"; }
void CXmlWriter::ClassifyElement(SElementRow&, DomStringView) {}

void CXmlWriter::ReadVersionAndEncoding() {
    if (!m_pProperties) m_pProperties = new COutputProperties;
    if (m_pProperties->GetVersion(m_sVersion)) {
        if (!IsVersionSyntax(m_sVersion)) throw new CWriterException(CWriterException::InvalidVersion, m_sVersion);
    } else {
        m_sVersion = GetDefaultVersion();
    }
    if (m_pProperties->GetEncoding(m_sEncoding)) {
        if (!IsEncodingNameSyntax(m_sEncoding)) {
            throw new CWriterException(CWriterException::InvalidEncodingName, m_sEncoding);
        }
    } else {
        m_sEncoding = u"UTF-8";
    }
}

void CXmlWriter::StartDocument() {
    ReadVersionAndEncoding();
    m_bIndent = GetDefaultIndent();
    m_pProperties->GetIndent(m_bIndent);
    m_pOutput->Open(m_sEncoding);
    m_bInStartTag = m_bInCData = false;
    m_bFirstElement = true;
    m_bCanIndent = false;
    m_nIndentColumn = 0;
    ResetRows();
    m_bStarted = true;
    WriteDeclaration();
}

void CXmlWriter::WriteDeclaration() {
    bool omit = false;
    if (m_pProperties->GetOmitXmlDeclaration(omit) && omit) return;
    m_pOutput->WriteMarkup(u"<?xml version=\"");
    m_pOutput->WriteMarkup(m_sVersion);
    m_pOutput->WriteMarkup(u"\" encoding=\"");
    m_pOutput->WriteMarkup(m_sEncoding);
    bool standalone = false;
    if (m_pProperties->GetStandalone(standalone)) {
        m_pOutput->WriteMarkup(standalone ? DomStringView(u"\" standalone=\"yes") : DomStringView(u"\" standalone=\"no"));
    }
    m_pOutput->WriteMarkup(u"\"?>");
    m_pOutput->WriteRaw(kNewline);
}

void CXmlWriter::EndDocument() {
    WriteIndent();
    m_pOutput->Flush();
}

void CXmlWriter::WriteIndent() {
    if (!m_bIndent || !m_bCanIndent || TopRow().bPreserveSpace) return;
    m_pOutput->WriteRaw(kNewline);
    m_pOutput->WriteSpaces(m_nIndentColumn);
}

void CXmlWriter::CloseStartTag() {
    if (!m_bInStartTag) return;
    m_pOutput->WriteRaw(u">");
    m_bInStartTag = false;
}

void CXmlWriter::CloseCData() {
    if (!m_bInCData) return;
    m_pOutput->WriteRaw(u"]]>");
    m_bInCData = false;
}

// The base row preserves space, so nothing is indented outside the root element.
void CXmlWriter::ResetRows() {
    while (!m_aRows.IsEmpty()) m_aRows.RemoveLast();
    m_aNames.RemoveAt(0, m_aNames.GetSize());
    m_aRows.Add(SElementRow{0, 0, true, false, true, false, false});
}

void CXmlWriter::PushRow(DomStringView name, bool preserveSpace, bool cdataSection) {
    SElementRow row{m_aNames.GetSize(), static_cast<int>(name.size()), preserveSpace, cdataSection, false, false, false};
    ClassifyElement(row, name);
    m_aNames.Append(name.data(), row.nNameLength);
    m_aRows.Add(row);
}

void CXmlWriter::PopRow() {
    m_aNames.RemoveAt(TopRow().nNameStart, m_aNames.GetSize() - TopRow().nNameStart);
    m_aRows.RemoveLast();
}

DomStringView CXmlWriter::RowName(const SElementRow& row) const {
    return DomStringView(m_aNames.GetData() + row.nNameStart, row.nNameLength);
}

void CXmlWriter::StartElement(const DomChar* name, bool preserveSpace, bool cdataSection) {
    CloseStartTag();
    CloseCData();
    WriteIndent();
    DomStringView nameText = View(name);
    PushRow(nameText, preserveSpace, cdataSection);
    m_bInStartTag = true;
    m_nIndentColumn += m_nIndentStep;
    m_bCanIndent = true;
    if (m_bFirstElement) {
        WriteDocumentType(nameText);
        m_bFirstElement = false;
    }
    m_pOutput->WriteRaw(u"<");
    m_pOutput->WriteMarkup(nameText);
}

void CXmlWriter::WriteDoctypeIdentifier(DomStringView keyword, const DomString& id) {
    m_pOutput->WriteMarkup(keyword);
    m_pOutput->WriteMarkup(id);
    m_pOutput->WriteRaw(u"\"");
}

void CXmlWriter::WriteDocumentType(DomStringView elementName) {
    DomString system;
    if (!m_pProperties->GetDoctypeSystem(system)) return;
    m_pOutput->WriteMarkup(u"<!DOCTYPE ");
    m_pOutput->WriteMarkup(elementName);
    DomString publicId;
    if (m_pProperties->GetDoctypePublic(publicId)) {
        WriteDoctypeIdentifier(u" PUBLIC \"", publicId);
        WriteDoctypeIdentifier(u" \"", system);
    } else {
        WriteDoctypeIdentifier(u" SYSTEM \"", system);
    }
    m_pOutput->WriteRaw(u">");
    m_pOutput->WriteRaw(kNewline);
}

void CXmlWriter::WriteEndTag(const SElementRow& row) {
    m_pOutput->WriteRaw(u"</");
    m_pOutput->WriteMarkup(RowName(row));
    m_pOutput->WriteRaw(u">");
}

void CXmlWriter::EndElement() {
    if (GetDepth() == 0) return;  // unbalanced: no element is open
    CloseCData();
    m_nIndentColumn -= m_nIndentStep;
    if (m_bInStartTag) {
        m_pOutput->WriteRaw(u"/>");
        m_bInStartTag = false;
    } else {
        WriteIndent();
        WriteEndTag(TopRow());
    }
    m_bCanIndent = true;
    PopRow();
}

void CXmlWriter::WriteNamespace(const DomChar* prefix, const DomChar* uri) {
    m_pOutput->WriteRaw(u" xmlns");
    DomStringView prefixText = View(prefix);
    if (!prefixText.empty()) {
        m_pOutput->WriteRaw(u":");
        m_pOutput->WriteMarkup(prefixText);
    }
    m_pOutput->WriteRaw(u"=\"");
    m_pOutput->WriteEscaped(uri, kAttributeEscapes);
    m_pOutput->WriteRaw(u"\"");
}

void CXmlWriter::WriteAttributeText(const DomChar* name, const DomChar* value) {
    m_pOutput->WriteRaw(u" ");
    m_pOutput->WriteMarkup(name);
    m_pOutput->WriteRaw(u"=\"");
    m_pOutput->WriteEscaped(value, kAttributeEscapes);
    m_pOutput->WriteRaw(u"\"");
}

void CXmlWriter::WriteAttribute(const DomChar* name, const DomChar* value) { WriteAttributeText(name, value); }

void CXmlWriter::Characters(const DomChar* units, int count) {
    CloseStartTag();
    if (count <= 0) return;
    m_bCanIndent = false;
    const SElementRow& row = TopRow();
    if (m_bInCData || row.bCDataSection) {
        WriteCDataText(units, count);
    } else if (row.bRawText) {
        m_pOutput->WriteRawWithReferences(units, count);
    } else {
        m_pOutput->WriteEscaped(units, count, kTextEscapes);
    }
}

// The text is not searched for "]]>". A reference interrupts the section; when references end
// the text, the section stays marked open although it is closed, and the next event closes it
// once more. Readers of existing output depend on both.
void CXmlWriter::WriteCDataText(const DomChar* units, int count) {
    if (!m_bInCData) {
        m_pOutput->WriteRaw(u"<![CDATA[");
        m_bInCData = true;
    }
    while (count > 0) {
        int done = m_pOutput->WriteRaw(units, count);
        units += done;
        count -= done;
        if (count == 0) break;
        m_pOutput->WriteRaw(u"]]>");
        done = m_pOutput->WriteUnencodableRun(units, count);
        units += done;
        count -= done;
        if (count > 0) m_pOutput->WriteRaw(u"<![CDATA[");
    }
}

void CXmlWriter::WriteComment(const DomChar* text) {
    CloseStartTag();
    CloseCData();
    WriteIndent();
    m_pOutput->WriteRaw(u"<!--");
    m_pOutput->WriteMarkup(View(text));
    m_pOutput->WriteRaw(u"-->");
    m_bCanIndent = true;
}

void CXmlWriter::WriteProcessingInstruction(const DomChar* target, const DomChar* data) {
    CloseStartTag();
    CloseCData();
    WriteIndent();
    m_pOutput->WriteRaw(u"<?");
    m_pOutput->WriteMarkup(View(target));
    DomStringView dataText = View(data);
    if (!dataText.empty()) {
        m_pOutput->WriteRaw(u" ");
        m_pOutput->WriteMarkup(dataText);
    }
    m_pOutput->WriteRaw(GetProcessingInstructionEnd());
    m_bCanIndent = true;
}

}  // namespace XmlWriter
