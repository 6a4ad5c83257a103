// Helpers of the parser tests: a handler that records events as one line of text, a byte stream
// over memory, and a parse that reports the error code and position it ended with.
#pragma once
#include <cstring>
#include <string>

#include "core/DomString.h"
#include "core/StringStream.h"
#include "xmlparser/ParseException.h"
#include "xmlparser/Parser.h"

namespace XmlParserTest {

// Events as "SD|SE a|SA b|C 1|EA|EE|ED"; each Characters call is one "C" entry.
// Adds entries to a shared log line.
class CLog {
public:
    std::string m_sLog;

protected:
    void Add(const std::string& entry) {
        if (!m_sLog.empty()) m_sLog += '|';
        m_sLog += entry;
    }
};

class CRecorder : public Sxp::IContentHandler, public CLog {
public:
    int m_nLocatorCalls = 0;

    void SetLocator(Sxp::ILocator* locator) override { m_nLocatorCalls += locator ? 1 : 100; }
    void StartDocument() override { Add("SD"); }
    void EndDocument() override { Add("ED"); }
    void StartElement(DomStringView name) override { Add("SE " + Core::ToUtf8(name)); }
    void EndElement() override { Add("EE"); }
    void StartAttribute(DomStringView name) override { Add("SA " + Core::ToUtf8(name)); }
    void EndAttribute() override { Add("EA"); }
    void Characters(const DomChar* units, int count) override {
        Add("C " + Core::ToUtf8(DomStringView(units, static_cast<size_t>(count))));
    }
    void StartComment() override { Add("SC"); }
    void EndComment() override { Add("EC"); }
    void StartCData() override { Add("SCD"); }
    void EndCData() override { Add("ECD"); }
    void SkippedEntity(DomStringView name) override { Add("SK " + Core::ToUtf8(name)); }
    void ProcessingInstruction(DomStringView target, DomStringView data) override {
        Add("PI " + Core::ToUtf8(target) + " " + Core::ToUtf8(data));
    }
};

// Declarations go into the log of the content recorder, between its events.
class CDtdRecorder : public Sxp::IDtdHandler {
public:
    explicit CDtdRecorder(CRecorder* log) : m_pLog(log) {}
    void AttributeDecl(DomStringView element, DomStringView attribute, DomStringView type, DomStringView kind,
                       DomStringView value) override {
        Add("AD " + Core::ToUtf8(element) + " " + Core::ToUtf8(attribute) + " " + Core::ToUtf8(type) + " " +
            Core::ToUtf8(kind) + " " + Core::ToUtf8(value));
    }
    void UnparsedEntityDecl(DomStringView name, DomStringView publicId, DomStringView systemId,
                            DomStringView notation) override {
        Add("UE " + Core::ToUtf8(name) + " " + Core::ToUtf8(publicId) + " " + Core::ToUtf8(systemId) + " " +
            Core::ToUtf8(notation));
    }
    void NotationDecl(DomStringView name, DomStringView publicId, DomStringView systemId) override {
        Add("ND " + Core::ToUtf8(name) + " " + Core::ToUtf8(publicId) + " " + Core::ToUtf8(systemId));
    }

private:
    void Add(const std::string& entry) {
        if (!m_pLog->m_sLog.empty()) m_pLog->m_sLog += '|';
        m_pLog->m_sLog += entry;
    }
    CRecorder* m_pLog;
};

// A read-only byte stream over bytes in memory.
class CByteStream : public Core::IStream {
public:
    explicit CByteStream(std::string bytes) : m_sBytes(std::move(bytes)) {}
    int Read(void* buffer, int count) override {
        size_t n = std::min(static_cast<size_t>(count), m_sBytes.size() - m_nPos);
        std::memcpy(buffer, m_sBytes.data() + m_nPos, n);
        m_nPos += n;
        return static_cast<int>(n);
    }
    void Write(const void*, int) override {}
    void Seek(long, int) override {}
    long Tell() override { return static_cast<long>(m_nPos); }

private:
    std::string m_sBytes;
    size_t m_nPos = 0;
};

class CCountingErrorHandler : public Sxp::IErrorHandler {
public:
    int m_nCalls = 0;
    int m_nLastCode = -1;
    void FatalError(Core::IException* exception) override {
        ++m_nCalls;
        m_nLastCode = static_cast<Sxp::CParseException*>(exception)->GetCode();
    }
};

struct SOutcome {
    std::string sLog;
    int nCode = -1;  // -1: parsed to the end
    int nLine = 0;
    int nColumn = 0;
};

inline SOutcome ParseSource(Sxp::CInputSource* source) {
    TRefPtr<CRecorder> recorder = new CRecorder();
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    parser->SetContentHandler(recorder);
    parser->SetDtdHandler(new CDtdRecorder(recorder));
    SOutcome outcome;
    try {
        parser->Parse(source);
    } catch (Sxp::CParseException* exception) {
        outcome.nCode = exception->GetCode();
        outcome.nLine = exception->GetLine();
        outcome.nColumn = exception->GetColumn();
        delete exception;
    }
    outcome.sLog = recorder->m_sLog;
    return outcome;
}

// Parses bytes, with an encoding named by the source if one is given.
inline SOutcome ParseBytes(const std::string& bytes, const char* encoding = nullptr) {
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///memory.xml");
    source->SetByteStream(new CByteStream(bytes));
    if (encoding) source->SetEncoding(Core::Ascii(encoding));
    return ParseSource(source);
}

// Parses 16-bit text given as UTF-8 source code.
inline SOutcome ParseText(const std::u16string& text) {
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///memory.xml");
    source->SetTextStream(new Core::CStringStream(text));
    return ParseSource(source);
}

}  // namespace XmlParserTest
