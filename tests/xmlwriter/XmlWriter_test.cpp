// The xml output method, driven by events and compared byte for byte.
#include <gtest/gtest.h>

#include "WriterHarness.h"

namespace {

using namespace WriterTest;
using XmlWriter::COutputProperties;
using XmlWriter::IWriter;

const std::string kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n";

void OmitDeclaration(COutputProperties& p) { p.SetOmitXmlDeclaration(true); }
void Latin1(COutputProperties& p) {
    p.SetOmitXmlDeclaration(true);
    p.SetEncoding(u"ISO-8859-1");
}
void Indented(COutputProperties& p) {
    p.SetOmitXmlDeclaration(true);
    p.SetIndent(true);
}

struct SCase {
    const char* pName;
    Settings settings;
    Events events;
    std::string sExpected;
};

void PrintTo(const SCase& c, std::ostream* os) { *os << c.pName; }

class XmlOutput : public testing::TestWithParam<SCase> {};

TEST_P(XmlOutput, WritesExpectedBytes) {
    const SCase& c = GetParam();
    EXPECT_EQ(Serialise(COutputProperties::XmlMethod, c.settings, c.events), c.sExpected);
}

const SCase kMarkupCases[] = {
    {"EmptyElementSelfCloses", OmitDeclaration, [](IWriter& w) { w.StartElement(u"a", false, false); w.EndElement(); },
     "<a/>"},
    {"ZeroLengthTextClosesStartTag", OmitDeclaration,
     [](IWriter& w) { w.StartElement(u"a", false, false); w.Characters(u"", 0); w.EndElement(); }, "<a></a>"},
    {"TextEscapesAmpersandAndAngleBracketsOnly", OmitDeclaration,
     [](IWriter& w) { w.StartElement(u"a", false, false); Text(w, u"x&y<z>\"'\r\t"); w.EndElement(); },
     "<a>x&amp;y&lt;z&gt;\"'\r\t</a>"},
    {"AttributeEscapesLineFeedQuoteAndMarkupButNotCarriageReturnOrTab", OmitDeclaration,
     [](IWriter& w) { w.StartElement(u"a", false, false); w.WriteAttribute(u"v", u"1\n\"&<>\r\t'"); w.EndElement(); },
     "<a v=\"1&#10;&quot;&amp;&lt;&gt;\r\t'\"/>"},
    {"NamespacesBeforeAttributes", OmitDeclaration,
     [](IWriter& w) {
         w.StartElement(u"p:a", false, false);
         w.WriteNamespace(u"", u"u?a=1&b=2");
         w.WriteNamespace(u"p", u"v");
         w.WriteAttribute(u"p:x", u"1");
         w.EndElement();
     },
     "<p:a xmlns=\"u?a=1&amp;b=2\" xmlns:p=\"v\" p:x=\"1\"/>"},
    {"CommentAndInstructionsAreWrittenRaw", OmitDeclaration,
     [](IWriter& w) {
         w.StartElement(u"a", false, false);
         w.WriteComment(u" a -- b & c ");
         w.WriteProcessingInstruction(u"t", u"x <y>");
         w.WriteProcessingInstruction(u"e", u"");
         w.EndElement();
     },
     "<a><!-- a -- b & c --><?t x <y>?><?e?></a>"},
    {"CDataSectionSpansConsecutiveTextAndIsNotSplitAtItsTerminator", OmitDeclaration,
     [](IWriter& w) {
         w.StartElement(u"a", false, true);
         Text(w, u"x<]]>");
         Text(w, u"&y");
         w.StartElement(u"b", false, false);
         Text(w, u"<");
         w.EndElement();
         w.EndElement();
     },
     "<a><![CDATA[x<]]>&y]]><b>&lt;</b></a>"},
    {"CDataSectionClosesBeforeComment", OmitDeclaration,
     [](IWriter& w) { w.StartElement(u"a", false, true); Text(w, u"x"); w.WriteComment(u"c"); w.EndElement(); },
     "<a><![CDATA[x]]><!--c--></a>"},
    {"DeclarationWithDefaults", nullptr, [](IWriter& w) { w.StartElement(u"a", false, false); w.EndElement(); },
     kDeclaration + "<a/>"},
    {"DeclarationKeepsVersionAndEncodingAsWritten",
     [](COutputProperties& p) {
         p.SetVersion(u"1.1");
         p.SetEncoding(u"utf-8");
         p.SetStandalone(true);
     },
     NoEvents, "<?xml version=\"1.1\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n"},
    {"DeclarationWithStandaloneNo", [](COutputProperties& p) { p.SetStandalone(false); }, NoEvents,
     "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\r\n"},
    {"Utf16BeginsWithByteOrderMarkMostSignificantByteFirst",
     [](COutputProperties& p) {
         p.SetEncoding(u"UTF-16");
         p.SetOmitXmlDeclaration(true);
     },
     [](IWriter& w) { w.StartElement(u"a", false, false); Text(w, u"\u20AC"); w.EndElement(); },
     std::string("\xFE\xFF\0<\0a\0>\x20\xAC\0<\0/\0a\0>", 18)},
    {"DocumentTypeWithSystemIdentifier",
     [](COutputProperties& p) {
         OmitDeclaration(p);
         p.SetDoctypeSystem(u"a.dtd");
     },
     [](IWriter& w) { w.StartElement(u"root", false, false); w.EndElement(); },
     "<!DOCTYPE root SYSTEM \"a.dtd\">\r\n<root/>"},
    {"DocumentTypeWithPublicAndSystemIdentifiers",
     [](COutputProperties& p) {
         p.SetDoctypeSystem(u"a.dtd");
         p.SetDoctypePublic(u"-//A//EN");
     },
     [](IWriter& w) {
         w.StartElement(u"root", false, false);
         w.StartElement(u"x", false, false);
         w.EndElement();
         w.EndElement();
     },
     kDeclaration + "<!DOCTYPE root PUBLIC \"-//A//EN\" \"a.dtd\">\r\n<root><x/></root>"},
    {"PublicIdentifierAloneGivesNoDocumentType",
     [](COutputProperties& p) {
         OmitDeclaration(p);
         p.SetDoctypePublic(u"-//A//EN");
     },
     [](IWriter& w) { w.StartElement(u"root", false, false); w.EndElement(); }, "<root/>"},
};
INSTANTIATE_TEST_SUITE_P(Markup, XmlOutput, testing::ValuesIn(kMarkupCases),
                         [](const testing::TestParamInfo<SCase>& info) { return std::string(info.param.pName); });

void NestedWithText(IWriter& w) {
    w.StartElement(u"a", false, false);
    w.StartElement(u"b", false, false);
    w.EndElement();
    w.StartElement(u"c", false, false);
    Text(w, u"t");
    w.StartElement(u"d", false, false);
    w.EndElement();
    w.EndElement();
    w.WriteComment(u"x");
    w.WriteProcessingInstruction(u"p", u"");
    w.EndElement();
}

const SCase kIndentCases[] = {
    {"IndentsChildrenByTwoWithCarriageReturnLineFeed", Indented,
     [](IWriter& w) {
         w.StartElement(u"a", false, false);
         w.StartElement(u"b", false, false);
         w.StartElement(u"c", false, false);
         w.EndElement();
         w.EndElement();
         w.EndElement();
     },
     "<a>\r\n  <b>\r\n    <c/>\r\n  </b>\r\n</a>"},
    {"TextStopsIndentationUntilTheNextTag", Indented, NestedWithText,
     "<a>\r\n  <b/>\r\n  <c>t<d/>\r\n  </c>\r\n  <!--x-->\r\n  <?p?>\r\n</a>"},
    {"PreservedElementIsNotIndentedInside", Indented,
     [](IWriter& w) {
         w.StartElement(u"a", false, false);
         w.StartElement(u"pre", true, false);
         w.StartElement(u"b", false, false);
         w.StartElement(u"c", false, false);
         w.EndElement();
         w.EndElement();
         w.EndElement();
         w.EndElement();
     },
     "<a>\r\n  <pre><b>\r\n      <c/>\r\n    </b></pre>\r\n</a>"},
    {"NothingIsIndentedAroundTheRoot",
     [](COutputProperties& p) { p.SetIndent(true); },
     [](IWriter& w) {
         w.WriteComment(u"c");
         w.StartElement(u"a", false, false);
         w.EndElement();
         w.WriteComment(u"d");
     },
     kDeclaration + "<!--c--><a/><!--d-->"},
    {"IndentOffByDefault", OmitDeclaration, NestedWithText, "<a><b/><c>t<d/></c><!--x--><?p?></a>"},
};
INSTANTIATE_TEST_SUITE_P(Indentation, XmlOutput, testing::ValuesIn(kIndentCases),
                         [](const testing::TestParamInfo<SCase>& info) { return std::string(info.param.pName); });

const SCase kReferenceCases[] = {
    {"UnencodableTextBecomesDecimalReference", Latin1,
     [](IWriter& w) { w.StartElement(u"a", false, false); Text(w, u"1\u20AC2\u00E9<"); w.EndElement(); },
     "<a>1&#8364;2\xE9&lt;</a>"},
    {"SurrogatePairBecomesOneReferenceOfBothUnitsPacked", Latin1,
     [](IWriter& w) { w.StartElement(u"a", false, false); Text(w, u"\xD83D\xDE00!"); w.EndElement(); },
     "<a>&#3627933184;!</a>"},
    {"UnencodableAttributeValueBecomesReferences", Latin1,
     [](IWriter& w) { w.StartElement(u"a", false, false); w.WriteAttribute(u"v", u"\u0100\u20AC\""); w.EndElement(); },
     "<a v=\"&#256;&#8364;&quot;\"/>"},
    {"CDataSectionIsInterruptedByReferences", Latin1,
     [](IWriter& w) { w.StartElement(u"a", false, true); Text(w, u"x\u20AC\u20ACy"); w.EndElement(); },
     "<a><![CDATA[x]]>&#8364;&#8364;<![CDATA[y]]></a>"},
    {"CDataSectionEndingInReferenceIsClosedTwice", Latin1,
     [](IWriter& w) { w.StartElement(u"a", false, true); Text(w, u"x\u20AC"); w.EndElement(); },
     "<a><![CDATA[x]]>&#8364;]]></a>"},
    {"Utf8EncodesEverything", OmitDeclaration,
     [](IWriter& w) { w.StartElement(u"\u00E9", false, false); Text(w, u"\u20AC\xD83D\xDE00"); w.EndElement(); },
     "<\xC3\xA9>\xE2\x82\xAC\xF0\x9F\x98\x80</\xC3\xA9>"},
};
INSTANTIATE_TEST_SUITE_P(References, XmlOutput, testing::ValuesIn(kReferenceCases),
                         [](const testing::TestParamInfo<SCase>& info) { return std::string(info.param.pName); });

struct SErrorCase {
    const char* pName;
    Settings settings;
    Events events;
    const char* pMessage;
};

void PrintTo(const SErrorCase& c, std::ostream* os) { *os << c.pName; }

class XmlWriterError : public testing::TestWithParam<SErrorCase> {};

TEST_P(XmlWriterError, RaisesMessage) {
    const SErrorCase& c = GetParam();
    EXPECT_EQ(SerialiseError(COutputProperties::XmlMethod, c.settings, c.events), c.pMessage);
}

const SErrorCase kErrorCases[] = {
    {"UnknownEncoding", [](COutputProperties& p) { p.SetEncoding(u"EBCDIC-US"); }, NoEvents,
     "Unsupported encoding: 'EBCDIC-US'"},
    {"VersionWithSpace", [](COutputProperties& p) { p.SetVersion(u"1 0"); }, NoEvents,
     "Invalid version number syntax: '1 0'"},
    {"EmptyVersion", [](COutputProperties& p) { p.SetVersion(u""); }, NoEvents, "Invalid version number syntax: ''"},
    {"EncodingStartingWithDigit", [](COutputProperties& p) { p.SetEncoding(u"8859"); }, NoEvents,
     "Invalid encoding name syntax: '8859'"},
    {"LoneSurrogateAtEndOfText", Latin1,
     [](IWriter& w) { w.StartElement(u"a", false, false); Text(w, u"x\xD83D"); },
     "Invalid surrogate pair"},
    {"UnencodableCharacterInComment", Latin1, [](IWriter& w) { w.WriteComment(u"a\u20AC"); },
     "Unsupported character: '\xE2\x82\xAC'"},
    {"UnencodableCharacterInElementName", Latin1, [](IWriter& w) { w.StartElement(u"\u0100", false, false); },
     "Unsupported character: '\xC4\x80'"},
};
INSTANTIATE_TEST_SUITE_P(Codes, XmlWriterError, testing::ValuesIn(kErrorCases),
                         [](const testing::TestParamInfo<SErrorCase>& info) { return std::string(info.param.pName); });

TEST(XmlWriterBuffer, LargeOutputCrossesBufferBordersIntact) {
    // Three-byte characters and escapes land on every position of the 0x6000-byte buffer.
    DomString text;
    std::string expected = "<a>";
    for (int i = 0; i < 40000; ++i) {
        text += (i % 3 == 0) ? u"\u20AC&" : u"ab";
        expected += (i % 3 == 0) ? "\xE2\x82\xAC&amp;" : "ab";
    }
    expected += "</a>";
    std::string bytes = Serialise(COutputProperties::XmlMethod, OmitDeclaration, [&](IWriter& w) {
        w.StartElement(u"a", false, false);
        Text(w, text);
        w.EndElement();
    });
    EXPECT_EQ(bytes, expected);
}

TEST(XmlWriterBuffer, NothingReachesTheStreamBeforeTheBufferFills) {
    TRefPtr<CByteStream> stream = new CByteStream;
    TRefPtr<IWriter> writer = MakeWriter(COutputProperties::XmlMethod, nullptr, stream);
    writer->StartDocument();
    writer->StartElement(u"a", false, false);
    Text(*writer, DomString(0x5000, u'x'));
    EXPECT_EQ(stream->m_sBytes.size(), 0u);
    Text(*writer, DomString(0x2000, u'x'));
    EXPECT_EQ(stream->m_sBytes.size(), 0x6000u);
    // A run that fails never reaches EndDocument: what is still buffered is lost.
    writer = nullptr;
    EXPECT_EQ(stream->m_sBytes.size(), 0x6000u);
}

TEST(XmlWriterBuffer, CharacterThatDoesNotFitGoesOutWithTheNextBuffer) {
    TRefPtr<CByteStream> stream = new CByteStream;
    TRefPtr<IWriter> writer = MakeWriter(COutputProperties::XmlMethod, OmitDeclaration, stream);
    writer->StartDocument();
    writer->StartElement(u"a", false, false);
    // "<a>" and the x's leave two bytes of room, too few for the euro sign's three.
    Text(*writer, DomString(0x6000 - 5, u'x') + u"\u20AC");
    EXPECT_EQ(stream->m_sBytes.size(), 0x6000u - 2);
}

// Each special unit at each position of a block of eight, in text and in an attribute value.
TEST(XmlWriterRuns, EscapesAndEncodesWhereverTheUnitFalls) {
    struct SUnit {
        DomStringView text;
        const char* pInText;
        const char* pInAttribute;
    };
    const SUnit units[] = {{u"&", "&amp;", "&amp;"},
                           {u"<", "&lt;", "&lt;"},
                           {u">", "&gt;", "&gt;"},
                           {u"\"", "\"", "&quot;"},
                           {u"\n", "\n", "&#10;"},
                           {u"\u00E9", "\xC3\xA9", "\xC3\xA9"},
                           {u"\u20AC", "\xE2\x82\xAC", "\xE2\x82\xAC"},
                           {u"\U0001F600", "\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"}};
    for (const SUnit& unit : units) {
        for (int before = 0; before < 10; ++before) {
            DomString text = DomString(before, u'a') + DomString(unit.text) + u"bcdefghijk";
            std::string lead(before, 'a');
            std::string expected = "<e v=\"" + lead + unit.pInAttribute + "bcdefghijk\">" + lead + unit.pInText +
                                   "bcdefghijk</e>";
            std::string bytes = Serialise(COutputProperties::XmlMethod, OmitDeclaration, [&](IWriter& w) {
                w.StartElement(u"e", false, false);
                w.WriteAttribute(u"v", text.c_str());
                Text(w, text);
                w.EndElement();
            });
            EXPECT_EQ(bytes, expected) << "unit " << unit.pInText << " after " << before;
        }
    }
}

TEST(XmlWriterBuffer, DeepNestingAndStrayEndElement) {
    const int depth = 100000;
    std::string expected;
    for (int i = 1; i < depth; ++i) expected += "<e>";
    expected += "<e/>";
    for (int i = 1; i < depth; ++i) expected += "</e>";
    std::string bytes = Serialise(COutputProperties::XmlMethod, OmitDeclaration, [&](IWriter& w) {
        for (int i = 0; i < depth; ++i) w.StartElement(u"e", false, false);
        for (int i = 0; i <= depth; ++i) w.EndElement();
    });
    EXPECT_EQ(bytes, expected);
}

TEST(XmlWriterSink, TextSinkReceivesUnitsUnencodedWithoutReferences) {
    TRefPtr<CStringSink> sink = new CStringSink;
    TRefPtr<IWriter> writer = MakeWriter(COutputProperties::XmlMethod, Latin1, nullptr);
    writer->SetTextSink(sink);
    writer->StartDocument();
    writer->StartElement(u"a", false, false);
    Text(*writer, u"\u20AC<");
    writer->EndElement();
    writer->EndDocument();
    EXPECT_EQ(sink->m_sText, u"<a>\u20AC&lt;</a>");
}

TEST(WriterFactory, RefusesMissingOrNamedMethod) {
    TRefPtr<COutputProperties> properties = new COutputProperties;
    TRefPtr<IWriter> writer;
    auto message = [&]() -> std::string {
        try {
            XmlWriter::CreateWriter(properties, writer);
        } catch (XmlWriter::CWriterException* error) {
            DomString text;
            error->GetMessage(text);
            delete error;
            return Core::ToUtf8(text);
        }
        return "";
    };
    EXPECT_EQ(message(), "Unsupported output method: '', ''");
    properties->SetMethodName(u"urn:x", u"fancy");
    EXPECT_EQ(message(), "Unsupported output method: 'urn:x', 'fancy'");
    EXPECT_EQ(writer.Get(), nullptr);
}

TEST(WriterException, UnknownCodeIsUnclassified) {
    DomString text;
    XmlWriter::CWriterException(17, u"a").GetMessage(text);
    EXPECT_EQ(text, u"Unclassified output exception");
}

TEST(OutputProperties, CDataSectionElementsMatchByExpandedName) {
    COutputProperties properties;
    EXPECT_FALSE(properties.IsCDataSectionElement(u"", u"a"));
    properties.AddCDataSectionElement(u"urn:x", u"a");
    properties.AddCDataSectionElement(u"", u"b");
    EXPECT_TRUE(properties.IsCDataSectionElement(u"urn:x", u"a"));
    EXPECT_TRUE(properties.IsCDataSectionElement(u"", u"b"));
    EXPECT_FALSE(properties.IsCDataSectionElement(u"", u"a"));
    EXPECT_FALSE(properties.IsCDataSectionElement(u"urn:x", u"b"));
}

}  // namespace
