// A result handler for tests that writes every event into one line of text, so a test can
// compare the whole stream at once: "<name" (with " cdata", " preserve"), "xmlns:p=u",
// "name=value", text ("!" in front when escaping is disabled), "</name>", "<!--c-->", "<?t d?>".
#pragma once
#include <string>

#include "core/DomString.h"
#include "xslt/ResultHandler.h"

namespace XsltTest {

class CRecordingResultHandler : public Xslt::IResultHandler {
public:
    void SetEncodingTable(Core::CEncodingTable*) override {}
    void SetStream(Core::IStream*) override {}
    void SetTextSink(Core::ITextSink*) override {}
    void SetOutputProperties(XmlWriter::COutputProperties*) override {}
    void StartDocument() override { Add("[doc"); }
    void EndDocument() override { Add("doc]"); }
    void StartElement(const DomChar* name, bool cdataSection, bool preserveSpace) override {
        Add("<" + Text(name) + (cdataSection ? " cdata" : "") + (preserveSpace ? " preserve" : ""));
    }
    void EndElement(const DomChar* name) override { Add("</" + Text(name) + ">"); }
    void Namespace(const DomChar* prefix, const DomChar* uri) override {
        std::string p = Text(prefix);
        Add((p.empty() ? "xmlns" : "xmlns:" + p) + "=" + Text(uri));
    }
    void Attribute(const DomChar* name, const DomChar* value) override { Add(Text(name) + "=" + Text(value)); }
    void Characters(const DomChar* text, int length, bool disableEscaping) override {
        Add((disableEscaping ? "!" : "") + Core::ToUtf8(DomStringView(text, length)));
    }
    void Comment(const DomChar* text) override { Add("<!--" + Text(text) + "-->"); }
    void ProcessingInstruction(const DomChar* target, const DomChar* data) override {
        Add("<?" + Text(target) + " " + Text(data) + "?>");
    }

    const std::string& GetEvents() const { return m_sEvents; }

private:
    static std::string Text(const DomChar* text) { return Core::ToUtf8(text); }
    void Add(const std::string& event) {
        if (!m_sEvents.empty()) m_sEvents += '|';
        m_sEvents += event;
    }

    std::string m_sEvents;
};

}  // namespace XsltTest
