// Hostile and damaged input: every document either parses or fails with a parse exception,
// within bounded memory and stack.
#include <gtest/gtest.h>

#include "ParserTestSupport.h"

using namespace XmlParserTest;

namespace {

// Counts events without keeping them, for documents too big to record.
class CCounter : public CRecorder {
public:
    long m_nElements = 0;
    long m_nAttributes = 0;
    long m_nUnits = 0;
    size_t m_nLongestName = 0;
    void StartElement(DomStringView name) override {
        ++m_nElements;
        m_nLongestName = std::max(m_nLongestName, name.size());
    }
    void EndElement() override {}
    void StartAttribute(DomStringView) override { ++m_nAttributes; }
    void EndAttribute() override {}
    void Characters(const DomChar*, int count) override { m_nUnits += count; }
};

int ParseCounting(const std::string& document, CCounter* counter) {
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    parser->SetContentHandler(counter);
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///memory.xml");
    source->SetByteStream(new CByteStream(document));
    try {
        parser->Parse(source);
    } catch (Sxp::CParseException* exception) {
        int code = exception->GetCode();
        delete exception;
        return code;
    }
    return -1;
}

std::string Repeat(const std::string& text, int count) {
    std::string result;
    result.reserve(text.size() * static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

TEST(Hostile, NestsAMillionElementsWithoutRecursion) {
    const int depth = 1000000;
    TRefPtr<CCounter> counter = new CCounter();
    EXPECT_EQ(-1, ParseCounting(Repeat("<e>", depth) + Repeat("</e>", depth), counter));
    EXPECT_EQ(depth, counter->m_nElements);
    EXPECT_EQ(1, ParseCounting(Repeat("<e>", depth), counter));
}

TEST(Hostile, NestsContentModelGroupsWithoutRecursion) {
    const int depth = 200000;
    std::string model = Repeat("(", depth) + "a" + Repeat(")", depth);
    TRefPtr<CCounter> counter = new CCounter();
    EXPECT_EQ(-1, ParseCounting("<!DOCTYPE a [<!ELEMENT a " + model + ">]><a/>", counter));
}

TEST(Hostile, StopsEntityExpansionThatGrowsWithoutEnd) {
    std::string laughs = "<!DOCTYPE a [<!ENTITY l0 'haha'>";
    for (int i = 1; i < 10; ++i) {
        laughs += "<!ENTITY l" + std::to_string(i) + " '" + Repeat("&l" + std::to_string(i - 1) + ";", 10) + "'>";
    }
    TRefPtr<CCounter> counter = new CCounter();
    EXPECT_EQ(39, ParseCounting(laughs + "]><a>&l9;</a>", counter));
    EXPECT_EQ(39, ParseCounting(laughs + "]><a b='&l9;'/>", counter));
    EXPECT_EQ(39, ParseCounting(laughs + "<!ATTLIST a b CDATA '&l9;'>]><a/>", counter));
    EXPECT_EQ(39, ParseCounting(laughs + "<!ATTLIST a b CDATA '&l5;'>]><r>" + Repeat("<a/>", 200) + "</r>", counter));
}

TEST(Hostile, KeepsManyExpansionsOfASmallDocument) {
    std::string document = "<!DOCTYPE a [<!ENTITY e 'entity text'>]><a>" + Repeat("&e;&lt;", 100000) + "</a>";
    TRefPtr<CCounter> counter = new CCounter();
    EXPECT_EQ(-1, ParseCounting(document, counter));
    EXPECT_EQ(1200000, counter->m_nUnits);
}

TEST(Hostile, AcceptsHugeAttributeCountsAndNames) {
    TRefPtr<CCounter> counter = new CCounter();
    std::string attributes;
    for (int i = 0; i < 100000; ++i) attributes += " a" + std::to_string(i) + "='v'";
    EXPECT_EQ(-1, ParseCounting("<e" + attributes + "/>", counter));
    EXPECT_EQ(100000, counter->m_nAttributes);
    std::string name(1 << 20, 'n');
    EXPECT_EQ(-1, ParseCounting("<" + name + ">x</" + name + ">", counter));
    EXPECT_EQ(size_t(1) << 20, counter->m_nLongestName);
}

const char s_szRichDocument[] =
    "<?xml version='1.0' encoding='UTF-8' standalone='yes'?>\n"
    "<!DOCTYPE r PUBLIC '-//R//EN' 'r.dtd' [\n"
    "  <!ELEMENT r (#PCDATA|e)*> <!ATTLIST e id ID #IMPLIED k (x|y) 'x'>\n"
    "  <!ENTITY % p 'CDATA'> <!ATTLIST r v %p; #FIXED 'f'>\n"
    "  <!ENTITY t 'T&#38;#38;<e/>'> <!NOTATION n SYSTEM 'n'> <!ENTITY u SYSTEM 'u' NDATA n>\n"
    "]>\n"
    "<r><!-- c --><?pi data?><e id='a' k=\"y\">&t;&#x4e2d;&amp;</e><![CDATA[<&]]]>\r\n"
    "\xE4\xB8\xAD<e/>&u;</r>\n";

TEST(Hostile, TruncatedDocumentsFailCleanly) {
    std::string document = s_szRichDocument;
    TRefPtr<CCounter> counter = new CCounter();
    ASSERT_EQ(-1, ParseCounting(document, counter));
    for (size_t length = 0; length + 1 < document.size(); ++length) {
        int code = ParseCounting(document.substr(0, length), counter);
        EXPECT_NE(-1, code) << length;
    }
}

TEST(Hostile, DamagedBytesFailCleanly) {
    std::string document = s_szRichDocument;
    TRefPtr<CCounter> counter = new CCounter();
    unsigned int seed = 12345;
    auto next = [&seed]() { return (seed = seed * 1103515245u + 12345u) >> 16; };
    const char replacements[] = "<>&;%'\"[]()!?-#/=\x00\xFF\xC3";
    for (int round = 0; round < 3000; ++round) {
        std::string damaged = document;
        for (int hits = 1 + static_cast<int>(next() % 3); hits > 0; --hits) {
            damaged[next() % damaged.size()] = replacements[next() % (sizeof replacements - 1)];
        }
        int code = ParseCounting(damaged, counter);
        EXPECT_GE(code, -1);
        EXPECT_LE(code, 39);
    }
}

}  // namespace
