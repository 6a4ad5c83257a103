// Result handlers that keep only the text of a result: the message sink, which passes the
// text of xsl:message to the message stream, and the string sink, which collects the data of
// xsl:processing-instruction. Markup given to them disappears.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"
#include "core/Stream.h"
#include "xslt/ResultHandler.h"

namespace XsltPrivate {

// Every event except Characters does nothing.
class CCharactersHandler : public Xslt::IResultHandler {
public:
    void SetEncodingTable(Core::CEncodingTable*) override {}
    void SetStream(Core::IStream*) override {}
    void SetTextSink(Core::ITextSink*) override {}
    void SetOutputProperties(XmlWriter::COutputProperties*) override {}
    void StartDocument() override {}
    void EndDocument() override {}
    void StartElement(const DomChar*, bool, bool) override {}
    void EndElement(const DomChar*) override {}
    void Namespace(const DomChar*, const DomChar*) override {}
    void Attribute(const DomChar*, const DomChar*) override {}
    void Comment(const DomChar*) override {}
    void ProcessingInstruction(const DomChar*, const DomChar*) override {}
};

// Writes the code units of the text to the stream, which takes units (the console stream).
// With a null stream the text is dropped.
class CMessageSink : public CCharactersHandler {
public:
    explicit CMessageSink(Core::IStream* stream) : m_pStream(stream) {}
    void Characters(const DomChar* text, int length, bool disableEscaping) override;

private:
    TRefPtr<Core::IStream> m_pStream;
};

// Collects the text; StartDocument empties it.
class CStringSink : public CCharactersHandler {
public:
    void StartDocument() override { m_sText.clear(); }
    void Characters(const DomChar* text, int length, bool disableEscaping) override;
    const DomString& GetText() const { return m_sText; }

private:
    DomString m_sText;
};

}  // namespace XsltPrivate
