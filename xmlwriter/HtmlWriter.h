// The writer of the html output method: the xml writer with HTML's empty elements, raw-text
// elements, boolean and URI attributes, the META element after head, and HTML document types.
// An element is HTML exactly when its qualified name has no ":".
#pragma once
#include "xmlwriter/XmlWriter.h"

namespace XmlWriterPrivate {
class CHtmlNameTable;
}

namespace XmlWriter {

class CHtmlWriter : public CXmlWriter {
public:
    CHtmlWriter();
    ~CHtmlWriter() override;

    void EndElement() override;
    void WriteAttribute(const DomChar* name, const DomChar* value) override;

protected:
    DomStringView GetDefaultVersion() const override;
    bool GetDefaultIndent() const override;
    void WriteDeclaration() override;
    void WriteDocumentType(DomStringView elementName) override;
    void ClassifyElement(SElementRow& row, DomStringView name) override;
    void CloseStartTag() override;
    DomStringView GetProcessingInstructionEnd() const override;

private:
    bool IsHead(const SElementRow& row) const;
    void WriteMeta();
    DomStringView EscapeUri(DomStringView value);

    XmlWriterPrivate::CHtmlNameTable* m_pElements;
    XmlWriterPrivate::CHtmlNameTable* m_pAttributes;
    // The URI-escaped attribute value, reused from one attribute to the next.
    DomString m_sEscapedUri;
};

}  // namespace XmlWriter
