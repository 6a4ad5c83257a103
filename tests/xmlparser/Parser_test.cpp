// Documents in, recorded events or the error code with its position out.
#include <gtest/gtest.h>

#include "ParserTestSupport.h"

using namespace XmlParserTest;

namespace {

struct SEventCase {
    const char* pDocument;
    const char* pEvents;
};

const SEventCase s_aEventCases[] = {
    {"<a/>", "SD|SE a|EE|ED"},
    {"<?xml version=\"1.0\"?>\n<a b='1' c=\"x&amp;y\">t</a>", "SD|SE a|SA b|C 1|EA|SA c|C x&y|EA|C t|EE|ED"},
    {"<a b='1' b='2'/>", "SD|SE a|SA b|C 1|EA|SA b|C 2|EA|EE|ED"},
    {"<a b=''/>", "SD|SE a|SA b|EA|EE|ED"},
    {"<a><b>1</b>2<c/></a>", "SD|SE a|SE b|C 1|EE|C 2|SE c|EE|EE|ED"},
    {"<a>x\r\ny</a>", "SD|SE a|C x\r\ny|EE|ED"},
    {"<a b='x\r\ny&#10;z\t'/>", "SD|SE a|SA b|C x  y z |EA|EE|ED"},
    {"<!--c--><?pi  data ?><a><![CDATA[<x>&amp;]]]></a><!--d-->",
     "SD|SC|C c|EC|PI pi data |SE a|SCD|C <x>&amp;]|ECD|EE|SC|C d|EC|ED"},
    {"<?xml-stylesheet href='s.xsl'?><a/>", "SD|PI xml-stylesheet href='s.xsl'|SE a|EE|ED"},
    {"<a><?p?></a>", "SD|SE a|PI p |EE|ED"},
    {"<a>x&undefined;y</a>", "SD|SE a|C x|SK undefined|C y|EE|ED"},
    {"<a>&#65;&#x42;&#x0043;&#x10000;</a>", "SD|SE a|C ABC\xF0\x90\x80\x80|EE|ED"},
    {"<a>&#xD800;</a>", "SD|SE a|C \xED\xA0\x80|EE|ED"},
    {"<a>&lt;&gt;&amp;&apos;&quot;</a>", "SD|SE a|C <>&'\"|EE|ED"},
    {"<a>]]x]</a>", "SD|SE a|C ]]x]|EE|ED"},
    {"<a\n  b = '1'\n></a >", "SD|SE a|SA b|C 1|EA|EE|ED"},
    {"<a>--</a>", "SD|SE a|C --|EE|ED"},
    {"<!-- a - b --><a/>", "SD|SC|C  a - b |EC|SE a|EE|ED"},
    {"<x:a xmlns:x='u'/>", "SD|SE x:a|SA xmlns:x|C u|EA|EE|ED"},
    {"<a/>\n<!--after-->\n", "SD|SE a|EE|SC|C after|EC|ED"},
};

class EventSequence : public testing::TestWithParam<SEventCase> {};

TEST_P(EventSequence, ReportsDocumentAsEvents) {
    SOutcome outcome = ParseBytes(GetParam().pDocument);
    EXPECT_EQ(-1, outcome.nCode) << GetParam().pDocument;
    EXPECT_EQ(GetParam().pEvents, outcome.sLog) << GetParam().pDocument;
}

INSTANTIATE_TEST_SUITE_P(Documents, EventSequence, testing::ValuesIn(s_aEventCases));

struct SErrorCase {
    const char* pDocument;
    int nCode;
    int nLine;
    int nColumn;
};

const SErrorCase s_aErrorCases[] = {
    {"", 8, 1, 0},
    {"<!-- only a comment -->", 8, 1, 23},
    {"<a>", 1, 1, 3},
    {"<a>text", 1, 1, 7},
    {"<a b='1>", 1, 1, 8},
    {"<a b='1></a>", 22, 1, 9},
    {"<a/><b/>", 30, 1, 5},
    {"<a></b>", 35, 1, 7},
    {"<a>\n<b>\n</a>", 35, 3, 4},
    {"<?XML version='1.0'?><a/>", 12, 1, 5},
    {"<a/ >", 12, 1, 4},
    {"<a>&#0000041;</a>", 14, 1, 12},
    {"<a>&#x110000;</a>", 14, 1, 13},
    {"<a>&#1;</a>", 14, 1, 7},
    {"<a>&#;</a>", 14, 1, 6},
    {"<a b='&undefined;'/>", 32, 1, 17},
    {"<a>x]]>y</a>", 31, 1, 7},
    {"<!-- a -- b --><a/>", 27, 1, 10},
    {"<a b='<'/>", 22, 1, 7},
    {"<a b=1/>", 22, 1, 6},
    {"<a b'1'/>", 6, 1, 5},
    {"<a ='1'/>", 4, 1, 4},
    {"< a/>", 4, 1, 2},
    {"<a></a", 10, 1, 6},
    {"<a><!DOCTYPE a></a>", 9, 1, 12},
    {"<a>&amp</a>", 15, 1, 8},
    {"<a>& b</a>", 15, 1, 5},
    {"\x01<a/>", 11, 1, 1},
    {"<a/>\x01", 11, 1, 5},
    {"<a/>x", 30, 1, 5},
    {"<?xml version='1.0' encoding='EBCDIC'?><a/>", 36, 1, 39},
    {"<?xml encoding='UTF-8'?><a/>", 18, 1, 22},
    {"<?xml?><a/>", 18, 1, 7},
    {"<?xml version='1.0' standalone='maybe'?><a/>", 18, 1, 38},
    {"<?xml version='1.0'encoding='UTF-8'?><a/>", 18, 1, 20},
    {"<?xml version='1 0'?><a/>", 18, 1, 17},
    {"<?xml version='1.0' encoding='8bit'?><a/>", 18, 1, 35},
};

class ErrorReport : public testing::TestWithParam<SErrorCase> {};

TEST_P(ErrorReport, RaisesCodeAtPosition) {
    const SErrorCase& expected = GetParam();
    SOutcome outcome = ParseBytes(expected.pDocument);
    EXPECT_EQ(expected.nCode, outcome.nCode) << expected.pDocument;
    EXPECT_EQ(expected.nLine, outcome.nLine) << expected.pDocument;
    EXPECT_EQ(expected.nColumn, outcome.nColumn) << expected.pDocument;
}

INSTANTIATE_TEST_SUITE_P(Documents, ErrorReport, testing::ValuesIn(s_aErrorCases));

}  // namespace

namespace {

TEST(ParseException, CarriesMessageOfItsCodeThroughTheExceptionRoot) {
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///doc.xml");
    source->SetPublicId(u"-//DOC//EN");
    source->SetByteStream(new CByteStream("<a>\n</b>"));
    try {
        parser->Parse(source);
        ADD_FAILURE() << "parsed a mismatched end tag";
    } catch (Core::IException* exception) {
        auto* parseException = dynamic_cast<Sxp::CParseException*>(exception);
        ASSERT_NE(nullptr, parseException);
        DomString text;
        exception->GetMessage(text);
        EXPECT_EQ(u"Mismatched end tag", text);
        EXPECT_EQ(u"file:///doc.xml", parseException->GetSystemId());
        EXPECT_EQ(u"-//DOC//EN", parseException->GetPublicId());
        delete exception;
    }
    DomString text;
    Sxp::CParseException(36, u"", u"", 0, 0).GetMessage(text);
    EXPECT_EQ(u"Unsupported encoding", text);
    Sxp::CParseException(99, u"", u"", 0, 0).GetMessage(text);
    EXPECT_EQ(u"Unclassified XML parser exception", text);
}

TEST(Parser, ParsesWithoutAnyHandler) {
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///memory.xml");
    source->SetByteStream(new CByteStream("<!DOCTYPE a [<!ATTLIST a b CDATA 'x'><!ENTITY u SYSTEM 'u' NDATA n>]><a>t</a>"));
    EXPECT_NO_THROW(parser->Parse(source));
}

}  // namespace
