// Reading sources: encoding detection and declaration, sources that name an encoding, files,
// positions, chunking of text, and the character classes of names.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>

#include "ParserTestSupport.h"
#include "uri/UriConversions.h"

using namespace XmlParserTest;

namespace {

std::string Utf16(const std::u16string& text, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (char16_t unit : text) {
        char high = static_cast<char>(unit >> 8), low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

struct SEncodingCase {
    const char* pTitle;
    std::string sBytes;
    const char* pSourceEncoding;
    int nCode;
    const char* pEvents;  // checked when the parse succeeds
};

const SEncodingCase s_aEncodingCases[] = {
    {"little-endian UTF-16 with a mark", Utf16(u"<a>\u00e9\u4e2d</a>", false), nullptr, -1,
     "SD|SE a|C \xC3\xA9\xE4\xB8\xAD|EE|ED"},
    {"big-endian UTF-16 declared", Utf16(u"<?xml version='1.0' encoding='UTF-16'?><a>\u4e2d</a>", true), nullptr, -1,
     "SD|SE a|C \xE4\xB8\xAD|EE|ED"},
    {"little-endian mark but UTF-16 declared reads on big-endian",
     Utf16(u"<?xml version='1.0' encoding='UTF-16'?><a/>", false), nullptr, 12, ""},
    {"Latin-1 declared, in any case", "<?xml version='1.0' encoding='iso-8859-1'?><a b='\xE9'>\xE9\xFF</a>", nullptr,
     -1, "SD|SE a|SA b|C \xC3\xA9|EA|C \xC3\xA9\xC3\xBF|EE|ED"},
    {"UTF-8 byte order mark is a bad token", "\xEF\xBB\xBF<a/>", nullptr, 12, ""},
    {"UTF-8 by default", "<a>\xE4\xB8\xAD</a>", nullptr, -1, "SD|SE a|C \xE4\xB8\xAD|EE|ED"},
    {"source names Latin-1", "<a>\xE9</a>", "ISO-8859-1", -1, "SD|SE a|C \xC3\xA9|EE|ED"},
    {"source encoding skips detection: the mark is a name", "\xFF\xFE<a/>", "ISO-8859-1", 8, ""},
    {"source and declaration agree without regard to case", "<?xml version='1.0' encoding='UTF-8'?><a/>", "utf-8",
     -1, "SD|SE a|EE|ED"},
    {"source and declaration disagree", "<?xml version='1.0' encoding='ISO-8859-1'?><a/>", "UTF-8", 37, ""},
    {"unknown source encoding", "<a/>", "EBCDIC", 36, ""},
    {"unknown declared encoding", "<?xml version='1.0' encoding='US-ASCII'?><a/>", nullptr, 36, ""},
    {"truncated UTF-8 sequence at the end is dropped", "<a/>\xE4\xB8", nullptr, -1, "SD|SE a|EE|ED"},
    {"odd byte of UTF-16 at the end is dropped", Utf16(u"<a/>", true) + "\x00", nullptr, -1, "SD|SE a|EE|ED"},
};

class Encoding : public testing::TestWithParam<SEncodingCase> {};

TEST_P(Encoding, DecodesDocument) {
    const SEncodingCase& expected = GetParam();
    SOutcome outcome = ParseBytes(expected.sBytes, expected.pSourceEncoding);
    EXPECT_EQ(expected.nCode, outcome.nCode) << expected.pTitle;
    if (expected.nCode < 0) {
        EXPECT_EQ(expected.pEvents, outcome.sLog) << expected.pTitle;
    }
}

INSTANTIATE_TEST_SUITE_P(Sources, Encoding, testing::ValuesIn(s_aEncodingCases));

TEST(InputSource, NameEndsAtSecondCodeOfNameRange) {
    EXPECT_EQ("SD|SE a\xC4\x80" "b|EE|ED", ParseText(u"<a\u0100b/>").sLog);
    EXPECT_EQ(12, ParseText(u"<a\u0101b/>").nCode);
    EXPECT_EQ("SD|SE \xE4\xB8\x80|EE|ED", ParseText(u"<\u4e00/>").sLog);
    EXPECT_EQ(12, ParseText(u"<\u4e01/>").nCode);
    EXPECT_EQ("SD|SE a|C \xEF\xBF\xBF|EE|ED", ParseText(u"<a>\uffff</a>").sLog);
    EXPECT_EQ(11, ParseText(u"<\uffff/>").nCode);
}

TEST(InputSource, ReadsFileNamedByUri) {
    std::string path = testing::TempDir() + "kst_parser_input.xml";
    std::ofstream(path, std::ios::binary) << "<doc>file</doc>";
    DomString uri;
    ASSERT_TRUE(Uri::FileNameToUri(Core::WidenLatin1(path), uri));
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(uri);
    EXPECT_EQ("SD|SE doc|C file|EE|ED", ParseSource(source).sLog);
    std::remove(path.c_str());
    source = new Sxp::CInputSource(uri);
    EXPECT_EQ(0, ParseSource(source).nCode);
    source = new Sxp::CInputSource(u"http://example.org/a.xml");
    EXPECT_EQ(0, ParseSource(source).nCode);
}

// Records the locator's position at each start tag.
class CPositionRecorder : public CRecorder {
public:
    TRefPtr<Sxp::ILocator> m_pLocator;
    std::string m_sPositions;
    void SetLocator(Sxp::ILocator* locator) override { m_pLocator = locator; }
    void StartElement(DomStringView name) override {
        m_sPositions += Core::ToUtf8(name) + "@" + std::to_string(m_pLocator->GetLine()) + ":" +
                        std::to_string(m_pLocator->GetColumn()) + " ";
    }
};

TEST(InputSource, CountsLinesAndColumnsWithoutNormalisingLineEnds) {
    TRefPtr<CPositionRecorder> recorder = new CPositionRecorder();
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    parser->SetContentHandler(recorder);
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///memory.xml");
    source->SetByteStream(new CByteStream(
        "<!DOCTYPE a [<!ENTITY e '\n <d/>'>]>\n<a>\n <b/>\r\n<c/>&e;</a>"));
    parser->Parse(source);
    EXPECT_EQ("a@3:2 b@4:3 c@5:2 d@2:3 ", recorder->m_sPositions);
    EXPECT_EQ(nullptr, recorder->m_pLocator.Get());
}

// Names, values and texts of every length end up across the borders of the decoding buffer;
// each must arrive whole, and the positions behind multi-line texts must count their lines.
TEST(InputSource, KeepsNamesValuesAndTextsWholeAcrossBufferBorders) {
    std::string document = "<r>";
    std::string expected = "SD|SE r";
    for (int i = 0; i < 400; ++i) {
        std::string name = "e" + std::string(static_cast<size_t>(i % 13), 'n');
        std::string value(static_cast<size_t>(i % 7), 'v');
        std::string text =
            std::string(static_cast<size_t>(i % 11), 't') + "\n" + std::string(static_cast<size_t>(i % 5), ' ');
        document += "<" + name + " a='" + value + "'>" + text + "</" + name + ">";
        expected += "|SE " + name + "|SA a" + (value.empty() ? "" : "|C " + value) + "|EA|C " + text + "|EE";
    }
    document += "</r>";
    EXPECT_EQ(expected + "|EE|ED", ParseBytes(document).sLog);

    TRefPtr<CPositionRecorder> recorder = new CPositionRecorder();
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    parser->SetContentHandler(recorder);
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///memory.xml");
    source->SetByteStream(new CByteStream("<a>x\n\n  yy<b c='1'/>\n<d/>z\n<e/></a>"));
    parser->Parse(source);
    EXPECT_EQ("a@1:2 b@3:6 d@4:2 e@5:2 ", recorder->m_sPositions);
}

TEST(InputSource, PassesTextInChunksOfAtMost1024Units) {
    class CChunkSizes : public CRecorder {
    public:
        std::string m_sSizes;
        void Characters(const DomChar*, int count) override { m_sSizes += std::to_string(count) + " "; }
    };
    std::string text(3000, 'x');
    text[1500] = '\n';
    TRefPtr<CChunkSizes> recorder = new CChunkSizes();
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    parser->SetContentHandler(recorder);
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///memory.xml");
    source->SetByteStream(new CByteStream("<a b='" + text + "'>" + text + "&#x10000;" + text + "</a>"));
    parser->Parse(source);
    EXPECT_EQ("1024 1024 952 1024 1024 1024 1024 1024 882 ", recorder->m_sSizes);
}

}  // namespace

namespace {

// A handler that keeps the locator, as a document builder does; it must die with its last holder
// even when the parse fails and the locator is never taken back.
class CLocatorKeeper : public CRecorder {
public:
    explicit CLocatorKeeper(bool* destroyed) : m_pDestroyed(destroyed) {}
    ~CLocatorKeeper() override { *m_pDestroyed = true; }
    void SetLocator(Sxp::ILocator* locator) override { m_pLocator = locator; }
    TRefPtr<Sxp::ILocator> m_pLocator;

private:
    bool* m_pDestroyed;
};

TEST(InputSource, HandlerKeepingTheLocatorIsReleasedAfterFailedParse) {
    bool destroyed = false;
    {
        TRefPtr<CLocatorKeeper> keeper = new CLocatorKeeper(&destroyed);
        TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
        parser->SetContentHandler(keeper);
        TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///memory.xml");
        source->SetByteStream(new CByteStream("<a>\n<b>"));
        try {
            parser->Parse(source);
        } catch (Sxp::CParseException* exception) {
            delete exception;
        }
        EXPECT_EQ(2, keeper->m_pLocator->GetLine());
    }
    EXPECT_TRUE(destroyed);
}

}  // namespace
