// The html output method: element and attribute tables, URI escaping, META and document types.
#include <gtest/gtest.h>

#include "WriterHarness.h"

namespace {

using namespace WriterTest;
using XmlWriter::COutputProperties;
using XmlWriter::IWriter;

const std::string kMeta = "<META http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\">\r\n";

void Flat(COutputProperties& p) { p.SetIndent(false); }
void FlatLatin1(COutputProperties& p) {
    p.SetIndent(false);
    p.SetEncoding(u"iso-8859-1");
}

void Element(IWriter& w, const DomChar* name) {
    w.StartElement(name, false, false);
    w.EndElement();
}

void ElementWithAttribute(IWriter& w, const DomChar* element, const DomChar* name, const DomChar* value) {
    w.StartElement(element, false, false);
    w.WriteAttribute(name, value);
    w.EndElement();
}

struct SCase {
    const char* pName;
    Settings settings;
    Events events;
    std::string sExpected;
};

void PrintTo(const SCase& c, std::ostream* os) { *os << c.pName; }

class HtmlOutput : public testing::TestWithParam<SCase> {};

TEST_P(HtmlOutput, WritesExpectedBytes) {
    const SCase& c = GetParam();
    EXPECT_EQ(Serialise(COutputProperties::HtmlMethod, c.settings, c.events), c.sExpected);
}

std::string CaseName(const testing::TestParamInfo<SCase>& info) { return info.param.pName; }

const SCase kElementCases[] = {
    {"EmptyElementHasNoEndTag", Flat, [](IWriter& w) { Element(w, u"br"); }, "<br>"},
    {"EmptyElementKeepsItsCase", Flat, [](IWriter& w) { Element(w, u"BR"); }, "<BR>"},
    {"OtherElementGetsEndTag", Flat, [](IWriter& w) { Element(w, u"p"); }, "<p></p>"},
    {"PrefixedElementIsNotHtml", Flat, [](IWriter& w) { Element(w, u"x:p"); }, "<x:p/>"},
    {"EmptyElementWithContentGetsEndTag", Flat,
     [](IWriter& w) { w.StartElement(u"img", false, false); Text(w, u"x"); w.EndElement(); }, "<img>x</img>"},
    {"TextEscapesMarkup", Flat, [](IWriter& w) { w.StartElement(u"p", false, false); Text(w, u"a<b&c>"); w.EndElement(); },
     "<p>a&lt;b&amp;c&gt;</p>"},
    {"ScriptAndStyleTextIsRaw", Flat,
     [](IWriter& w) {
         w.StartElement(u"SCRIPT", false, false);
         Text(w, u"if (a < b && c) x();");
         w.EndElement();
         w.StartElement(u"style", false, false);
         Text(w, u"a>b{}");
         w.EndElement();
     },
     "<SCRIPT>if (a < b && c) x();</SCRIPT><style>a>b{}</style>"},
    {"RawTextStillGetsReferencesForUnencodable", FlatLatin1,
     [](IWriter& w) { w.StartElement(u"script", false, false); Text(w, u"'\u20AC'<"); w.EndElement(); },
     "<script>'&#8364;'<</script>"},
    {"CDataSectionElementWinsOverRawText", Flat,
     [](IWriter& w) { w.StartElement(u"script", false, true); Text(w, u"a<b"); w.EndElement(); },
     "<script><![CDATA[a<b]]></script>"},
    {"InstructionEndsWithAngleBracket", Flat,
     [](IWriter& w) {
         w.WriteProcessingInstruction(u"php", u"echo 1");
         w.WriteProcessingInstruction(u"x", u"");
     },
     "<?php echo 1><?x>"},
    {"NoXmlDeclarationAndVersionIsOnlyChecked", [](COutputProperties& p) { p.SetVersion(u"4.01"); Flat(p); },
     [](IWriter& w) { w.WriteComment(u"c"); }, "<!--c-->"},
};
INSTANTIATE_TEST_SUITE_P(Elements, HtmlOutput, testing::ValuesIn(kElementCases), CaseName);

const SCase kAttributeCases[] = {
    {"BooleanAttributeIsWrittenByNameAlone", Flat,
     [](IWriter& w) {
         w.StartElement(u"option", false, false);
         w.WriteAttribute(u"SELECTED", u"no");
         w.WriteAttribute(u"value", u"1");
         w.EndElement();
     },
     "<option SELECTED value=\"1\"></option>"},
    {"LessThanStaysAndAmpersandBeforeBraceStays", Flat,
     [](IWriter& w) { ElementWithAttribute(w, u"td", u"title", u"a<b &{x} & \"q\"\n>"); },
     "<td title=\"a<b &{x} &amp; &quot;q&quot;&#10;&gt;\"></td>"},
    {"AttributeOfPrefixedElementIsEscapedAsXml", Flat,
     [](IWriter& w) { ElementWithAttribute(w, u"x:td", u"selected", u"a<b &{x}"); },
     "<x:td selected=\"a&lt;b &amp;{x}\"/>"},
    {"UriAttributeKeepsSpacesAndLatin1", Flat, [](IWriter& w) { ElementWithAttribute(w, u"a", u"HREF", u"a b\u00E9?x=1&y"); },
     "<a HREF=\"a b\xC3\xA9?x=1&amp;y\"></a>"},
    // The second unit of each escape is the byte plus 0x37: E2 82 AC gives %E U+0119, %8 U+00B9, %A U+00E3.
    {"UriAttributeEscapesUtf8BytesWithOffsetSecondUnit", Flat,
     [](IWriter& w) { ElementWithAttribute(w, u"img", u"src", u"\u20AC"); },
     "<img src=\"%E\xC4\x99%8\xC2\xB9%A\xC3\xA3\">"},
    {"UriEscapeOfSurrogatePairUsesFourBytes", Flat,
     [](IWriter& w) { ElementWithAttribute(w, u"img", u"src", u"\xD83D\xDE00"); },
     "<img src=\"%F\xC4\xA7%9\xC3\x96%9\xC3\x8F%8\xC2\xB7\">"},
    {"UriEscapeOfTwoByteCharacter", FlatLatin1,
     [](IWriter& w) { ElementWithAttribute(w, u"form", u"action", u"\u07FF"); },
     "<form action=\"%D&#278;%B\xF6\"></form>"},
    {"OtherAttributesAreNotUriEscaped", FlatLatin1,
     [](IWriter& w) { ElementWithAttribute(w, u"p", u"title", u"\u20AC"); }, "<p title=\"&#8364;\"></p>"},
};
INSTANTIATE_TEST_SUITE_P(Attributes, HtmlOutput, testing::ValuesIn(kAttributeCases), CaseName);

void HeadWithTitle(IWriter& w) {
    w.StartElement(u"html", false, false);
    w.StartElement(u"head", false, false);
    w.StartElement(u"title", false, false);
    Text(w, u"T");
    w.EndElement();
    w.EndElement();
    w.StartElement(u"body", false, false);
    w.EndElement();
    w.EndElement();
}

void EmptyHead(IWriter& w) {
    w.StartElement(u"html", false, false);
    Element(w, u"HEAD");
    Element(w, u"body");
    w.EndElement();
}

const SCase kDocumentCases[] = {
    {"MetaFollowsHeadStartTagAtChildIndentation", nullptr, HeadWithTitle,
     "<html>\r\n  <head>\r\n    " + kMeta + "\r\n    <title>T</title>\r\n  </head>\r\n  <body></body>\r\n</html>"},
    {"MetaFollowsEmptyHead", nullptr, EmptyHead,
     "<html>\r\n  <HEAD></HEAD>\r\n  " + kMeta + "\r\n  <body></body>\r\n</html>"},
    {"MetaNamesMediaTypeAndEncodingAsGiven",
     [](COutputProperties& p) {
         FlatLatin1(p);
         p.SetMediaType(u"text/xhtml");
     },
     EmptyHead,
     "<html><HEAD></HEAD><META http-equiv=\"Content-Type\" content=\"text/xhtml; charset=iso-8859-1\">\r\n"
     "<body></body></html>"},
    {"PrefixedHeadGetsNoMeta", Flat, [](IWriter& w) { Element(w, u"x:head"); }, "<x:head/>"},
    {"DocumentTypeWithBothIdentifiers",
     [](COutputProperties& p) {
         p.SetDoctypePublic(u"-//W3C//DTD HTML 4.0//EN");
         p.SetDoctypeSystem(u"s.dtd");
     },
     [](IWriter& w) { Element(w, u"x"); }, "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.0//EN\" \"s.dtd\">\r\n<x></x>"},
    {"DocumentTypeWithPublicIdentifierAlone", [](COutputProperties& p) { p.SetDoctypePublic(u"-//P//EN"); },
     [](IWriter& w) { Element(w, u"html"); }, "<!DOCTYPE HTML PUBLIC \"-//P//EN\">\r\n<html></html>"},
    {"DocumentTypeWithSystemIdentifierAlone", [](COutputProperties& p) { p.SetDoctypeSystem(u"s.dtd"); },
     [](IWriter& w) { Element(w, u"html"); }, "<!DOCTYPE HTML SYSTEM \"s.dtd\">\r\n<html></html>"},
    {"Utf16WritesByteOrderMarkButNoDeclaration", [](COutputProperties& p) { p.SetEncoding(u"UTF-16"); },
     [](IWriter& w) { Element(w, u"br"); }, std::string("\xFE\xFF\0<\0b\0r\0>", 10)},
};
INSTANTIATE_TEST_SUITE_P(Documents, HtmlOutput, testing::ValuesIn(kDocumentCases), CaseName);

TEST(HtmlWriterErrors, RaisesOwnCodes) {
    EXPECT_EQ(SerialiseError(COutputProperties::HtmlMethod, [](COutputProperties& p) { p.SetVersion(u"4 0"); }, NoEvents),
              "Invalid version number syntax: '4 0'");
    EXPECT_EQ(SerialiseError(COutputProperties::HtmlMethod, [](COutputProperties& p) { p.SetEncoding(u"8859"); }, NoEvents),
              "Invalid encoding name syntax: '8859'");
    EXPECT_EQ(SerialiseError(COutputProperties::HtmlMethod, Flat,
                             [](IWriter& w) { ElementWithAttribute(w, u"a", u"href", u"x\xDE00\xD83D"); }),
              "Invalid surrogate pair");
    EXPECT_EQ(SerialiseError(COutputProperties::HtmlMethod, Flat,
                             [](IWriter& w) { ElementWithAttribute(w, u"a", u"href", u"x\xD83D"); }),
              "Invalid surrogate pair");
    EXPECT_EQ(SerialiseError(COutputProperties::HtmlMethod, FlatLatin1,
                             [](IWriter& w) { ElementWithAttribute(w, u"p", u"\u20AC", u""); }),
              "Unsupported character: '\xE2\x82\xAC'");
}

}  // namespace
