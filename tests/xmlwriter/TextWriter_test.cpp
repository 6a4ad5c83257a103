// The text output method: characters only, unescaped, and an error for what the encoding lacks.
#include <gtest/gtest.h>

#include "WriterHarness.h"

namespace {

using namespace WriterTest;
using XmlWriter::COutputProperties;
using XmlWriter::IWriter;

void Markup(IWriter& w) {
    w.WriteComment(u"c");
    w.StartElement(u"a", false, true);
    w.WriteNamespace(u"p", u"u");
    w.WriteAttribute(u"x", u"1");
    w.WriteProcessingInstruction(u"t", u"d");
    w.EndElement();
}

void Encoding(COutputProperties& p, const DomChar* name) { p.SetEncoding(name); }

TEST(TextWriter, WritesOnlyCharactersUnescaped) {
    std::string bytes = Serialise(COutputProperties::TextMethod, nullptr, [](IWriter& w) {
        Markup(w);
        w.StartElement(u"a", false, true);
        Text(w, u"a < b && \"c\"\r\n");
        Text(w, u"]]>\u20AC");
        w.EndElement();
    });
    EXPECT_EQ(bytes, "a < b && \"c\"\r\n]]>\xE2\x82\xAC");
}

TEST(TextWriter, DocumentOfElementsOnlyIsEmptyOrByteOrderMark) {
    EXPECT_EQ(Serialise(COutputProperties::TextMethod, nullptr, Markup), "");
    EXPECT_EQ(Serialise(COutputProperties::TextMethod, [](COutputProperties& p) { Encoding(p, u"utf-16"); }, Markup),
              "\xFE\xFF");
}

TEST(TextWriter, IgnoresPropertiesOtherThanEncoding) {
    auto settings = [](COutputProperties& p) {
        p.SetVersion(u"not a version");
        p.SetIndent(true);
        p.SetDoctypeSystem(u"s");
        p.SetEncoding(u"ISO-8859-1");
    };
    EXPECT_EQ(Serialise(COutputProperties::TextMethod, settings, [](IWriter& w) { Text(w, u"\u00E9"); }), "\xE9");
}

TEST(TextWriter, RaisesForUnencodableCharacterAndUnknownEncoding) {
    auto latin1 = [](COutputProperties& p) { Encoding(p, u"ISO-8859-1"); };
    EXPECT_EQ(SerialiseError(COutputProperties::TextMethod, latin1, [](IWriter& w) { Text(w, u"ok \u20AC"); }),
              "Unsupported character: '\xE2\x82\xAC'");
    // No syntax test here: a name the xml method calls malformed is simply unknown.
    EXPECT_EQ(SerialiseError(COutputProperties::TextMethod, [](COutputProperties& p) { Encoding(p, u"8859"); }, NoEvents),
              "Unsupported encoding: '8859'");
}

TEST(TextWriter, TextSinkReceivesUnitsAsTheyAre) {
    TRefPtr<CStringSink> sink = new CStringSink;
    TRefPtr<IWriter> writer =
        MakeWriter(COutputProperties::TextMethod, [](COutputProperties& p) { Encoding(p, u"ISO-8859-1"); }, nullptr);
    writer->SetTextSink(sink);
    writer->StartDocument();
    Markup(*writer);
    Text(*writer, u"<\u20AC\xD83D");
    writer->EndDocument();
    EXPECT_EQ(sink->m_sText, u"<\u20AC\xD83D");
}

}  // namespace
