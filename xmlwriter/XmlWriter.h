// The writer of the xml output method. The HTML writer derives from it and changes only
// the steps that differ, through the protected operations below.
#pragma once
#include "core/Array.h"
#include "xmlwriter/OutputProperties.h"
#include "xmlwriter/Writer.h"

namespace XmlWriterPrivate {
class CWriterOutput;
}

namespace XmlWriter {

class CXmlWriter : public IWriter {
public:
    CXmlWriter();
    ~CXmlWriter() override;

    void SetEncodingTable(Core::CEncodingTable* table) override;
    void SetByteStream(Core::IStream* stream) override;
    void SetTextSink(Core::ITextSink* sink) override;
    void SetOutputProperties(COutputProperties* properties) override;
    void StartDocument() override;
    void EndDocument() override;
    void StartElement(const DomChar* name, bool preserveSpace, bool cdataSection) override;
    void EndElement() override;
    void WriteNamespace(const DomChar* prefix, const DomChar* uri) override;
    void WriteAttribute(const DomChar* name, const DomChar* value) override;
    void Characters(const DomChar* units, int count) override;
    void WriteComment(const DomChar* text) override;
    void WriteProcessingInstruction(const DomChar* target, const DomChar* data) override;

protected:
    // One open element; its name lies in m_aNames. Row 0 is the document's base row.
    struct SElementRow {
        int nNameStart;
        int nNameLength;
        bool bPreserveSpace;
        bool bCDataSection;
        bool bHtml;
        bool bEmpty;
        bool bRawText;
    };

    static constexpr DomStringView kNewline = u"\r\n";

    virtual DomStringView GetDefaultVersion() const;
    virtual bool GetDefaultIndent() const;
    virtual void WriteDeclaration();
    virtual void WriteDocumentType(DomStringView elementName);
    // Sets the flags of a new row from its name; the xml method has none to set.
    virtual void ClassifyElement(SElementRow& row, DomStringView name);
    // Ends an open start tag with ">", as every event after it does.
    virtual void CloseStartTag();
    virtual DomStringView GetProcessingInstructionEnd() const;

    void CloseCData();
    void WriteIndent();
    void WriteEndTag(const SElementRow& row);
    void WriteCDataText(const DomChar* units, int count);
    void WriteAttributeText(const DomChar* name, const DomChar* value);
    void WriteDoctypeIdentifier(DomStringView keyword, const DomString& id);
    void PopRow();
    SElementRow& TopRow() { return m_aRows.Last(); }
    DomStringView RowName(const SElementRow& row) const;
    int GetDepth() const { return m_aRows.GetSize() - 1; }

    TRefPtr<COutputProperties> m_pProperties;
    XmlWriterPrivate::CWriterOutput* m_pOutput;
    bool m_bStarted = false;
    DomString m_sVersion;
    DomString m_sEncoding;
    bool m_bIndent = false;
    bool m_bInStartTag = false;
    bool m_bInCData = false;
    bool m_bFirstElement = false;
    TArray<SElementRow> m_aRows;
    TArray<DomChar> m_aNames;
    int m_nIndentStep = 2;
    int m_nIndentColumn = 0;
    bool m_bCanIndent = false;

private:
    void ReadVersionAndEncoding();
    void ResetRows();
    void PushRow(DomStringView name, bool preserveSpace, bool cdataSection);
};

}  // namespace XmlWriter
