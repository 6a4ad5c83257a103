// The internal subset: defaults, entities, notations and declarations reported to the DTD
// handler, and the errors of its grammar.
#include <gtest/gtest.h>

#include "ParserTestSupport.h"

using namespace XmlParserTest;

namespace {

struct SDtdCase {
    const char* pTitle;
    const char* pDocument;
    const char* pEvents;
};

const SDtdCase s_aDtdCases[] = {
    {"defaults follow the given attributes in order of declaration",
     "<!DOCTYPE a [<!ATTLIST a x CDATA '1' y CDATA #FIXED '2' z CDATA #IMPLIED w CDATA #REQUIRED>]>"
     "<a y='3'><a/></a>",
     "SD|AD a x CDATA  1|AD a y CDATA #FIXED 2|AD a z CDATA #IMPLIED |AD a w CDATA #REQUIRED |"
     "SE a|SA y|C 3|EA|SA x|C 1|EA|SE a|SA x|C 1|EA|SA y|C 2|EA|EE|EE|ED"},
    {"a later attribute list of the same element gives no defaults",
     "<!DOCTYPE a [<!ATTLIST a x CDATA '1'><!ATTLIST a y CDATA '2'>]><a/>",
     "SD|AD a x CDATA  1|AD a y CDATA  2|SE a|SA x|C 1|EA|EE|ED"},
    {"types of attributes, ID among them",
     "<!DOCTYPE a [<!ATTLIST a id ID #IMPLIED e (x|y|1) 'x' n NOTATION (gif|png) #IMPLIED r IDREFS #IMPLIED>]>"
     "<a id='i'/>",
     "SD|AD a id ID #IMPLIED |AD a e (x|y|1)  x|AD a n NOTATION (gif|png) #IMPLIED |AD a r IDREFS #IMPLIED |"
     "SE a|SA id|C i|EA|SA e|C x|EA|EE|ED"},
    {"defaults expand general entities and normalise white space",
     "<!DOCTYPE a [<!ENTITY e 'E&#10;'><!ATTLIST a x CDATA '&e;&lt;\t'>]><a/>",
     "SD|AD a x CDATA  E < |SE a|SA x|C E < |EA|EE|ED"},
    {"internal entity text is read on in place, markup included",
     "<!DOCTYPE a [<!ENTITY e '<b>x</b>y'>]><a>[&e;]</a>", "SD|SE a|C [|SE b|C x|EE|C y]|EE|ED"},
    {"character references in entity values are resolved when declared",
     "<!DOCTYPE a [<!ENTITY e 'v&#38;#38;w'>]><a>&e;</a>", "SD|SE a|C v&w|EE|ED"},
    {"predefined entities cannot be declared again", "<!DOCTYPE a [<!ENTITY lt 'x'>]><a>&lt;</a>",
     "SD|SE a|C <|EE|ED"},
    {"the first declaration of an entity counts", "<!DOCTYPE a [<!ENTITY e '1'><!ENTITY e '2'>]><a b='&e;'/>",
     "SD|SE a|SA b|C 1|EA|EE|ED"},
    {"parameter entities in the subset, in declarations and in values",
     "<!DOCTYPE a [<!ENTITY % d \"<!ENTITY e 'pe'>\"> %d; <!ENTITY % t 'CDATA'><!ATTLIST a b %t; '&e;'>"
     "<!ENTITY % p 'x'><!ENTITY f '[%p;%q;]'>]><a>&f;</a>",
     "SD|AD a b CDATA  pe|SE a|SA b|C pe|EA|C [x%q;]|EE|ED"},
    {"external and unparsed entities are skipped in content",
     "<!DOCTYPE a SYSTEM 'a.dtd' [<!NOTATION gif PUBLIC '-//GIF//EN'><!ENTITY ext SYSTEM 'x.xml'>"
     "<!ENTITY pic PUBLIC ' -//P \r\n P// ' 'p.gif' NDATA gif><!ENTITY pic SYSTEM 'other.gif' NDATA gif>]>"
     "<a>&ext;&pic;</a>",
     "SD|ND gif -//GIF//EN |UE pic -//P P// p.gif gif|SE a|SK ext|SK pic|EE|ED"},
    {"content models are checked and dropped",
     "<!DOCTYPE a [<!ELEMENT a (#PCDATA|b|c)*><!ELEMENT b (c,(d|e)*,f?)+><!ELEMENT c EMPTY>"
     "<!ELEMENT d ANY><!ELEMENT e (#PCDATA)><!ELEMENT f ( x | y+ )><!ELEMENT a ANY>]><a/>",
     "SD|SE a|EE|ED"},
    {"comments and processing instructions of the subset are reported",
     "<!DOCTYPE a [<!--c--><?p d?>]><a/>", "SD|SC|C c|EC|PI p d|SE a|EE|ED"},
    {"a document type without identifiers or subset", "<!DOCTYPE a><a/>", "SD|SE a|EE|ED"},
};

class DtdEvents : public testing::TestWithParam<SDtdCase> {};

TEST_P(DtdEvents, ReportsDeclarationsAndTheirEffects) {
    SOutcome outcome = ParseBytes(GetParam().pDocument);
    EXPECT_EQ(-1, outcome.nCode) << GetParam().pTitle;
    EXPECT_EQ(GetParam().pEvents, outcome.sLog) << GetParam().pTitle;
}

INSTANTIATE_TEST_SUITE_P(Subsets, DtdEvents, testing::ValuesIn(s_aDtdCases));

struct SDtdErrorCase {
    const char* pDocument;
    int nCode;
    int nColumn;
};

const SDtdErrorCase s_aDtdErrorCases[] = {
    {"<!DOCTYPE a PUBLIC \"x\"><a/>", 19, 23},
    {"<!DOCTYPE a FOO 'x'><a/>", 19, 15},
    {"<!DOCTYPE 'a'><a/>", 4, 11},
    {"<!DOCTYPE a [<!ELEMENT a(b)>]><a/>", 3, 25},
    {"<!DOCTYPE a [<!FOO a>]><a/>", 26, 18},
    {"<!DOCTYPE a [<!ELEMENT a (b,c|d)>]><a/>", 20, 30},
    {"<!DOCTYPE a [<!ELEMENT a (#PCDATA|b)>]><a/>", 20, 36},
    {"<!DOCTYPE a [<!ELEMENT a EVERYTHING>]><a/>", 20, 35},
    {"<!DOCTYPE a [<!ELEMENT a ANY]><a/>", 7, 29},
    {"<!DOCTYPE a [<!ELEMENT a ANY>]<a/>", 7, 31},
    {"<!DOCTYPE a [<!ATTLIST a b FOO #IMPLIED>]><a/>", 21, 30},
    {"<!DOCTYPE a [<!ATTLIST a b (x|y)* #IMPLIED>]><a/>", 21, 33},
    {"<!DOCTYPE a [<!ATTLIST a b CDATA #DEFAULT>]><a/>", 23, 41},
    {"<!DOCTYPE a [<!ATTLIST a b CDATA #FIXED>]><a/>", 3, 40},
    {"<!DOCTYPE a [<!ATTLIST a b CDATA '&u;'>]><a/>", 32, 37},
    {"<!DOCTYPE a [<!ENTITY e SYSTEM 'x' FOO n>]><a/>", 25, 38},
    {"<!DOCTYPE a [<!ENTITY e SYSTEM 'x'>]><a b='&e;'/>", 33, 46},
    {"<!DOCTYPE a [<!NOTATION n SYSTEM 'n'><!ENTITY u SYSTEM 'x' NDATA n><!ENTITY e '&u;'>]><a/>", 34, 82},
    {"<!DOCTYPE a PUBLIC 'a\tb' 'x'><a/>", 16, 22},
    {"<!DOCTYPE a [<!ENTITY % p '\"x'><!ENTITY e %p;\">]><a/>", 2, 46},
    {"<!DOCTYPE a [<!ENTITY e '&e;'>]><a>&e;</a>", 38, 3},
    {"<!DOCTYPE a [<!ENTITY % p '%p;'> %p;]><a/>", 38, 3},
};

class DtdError : public testing::TestWithParam<SDtdErrorCase> {};

TEST_P(DtdError, RaisesCodeAtPosition) {
    SOutcome outcome = ParseBytes(GetParam().pDocument);
    EXPECT_EQ(GetParam().nCode, outcome.nCode) << GetParam().pDocument;
    EXPECT_EQ(GetParam().nColumn, outcome.nColumn) << GetParam().pDocument;
}

INSTANTIATE_TEST_SUITE_P(Subsets, DtdError, testing::ValuesIn(s_aDtdErrorCases));

TEST(Dtd, NextParseForgetsTheLastDocumentType) {
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource(u"file:///memory.xml");
    source->SetByteStream(new CByteStream("<!DOCTYPE a [<!ENTITY e 'x'>]><a b='&e;'/>"));
    parser->Parse(source);
    source = new Sxp::CInputSource(u"file:///memory.xml");
    source->SetByteStream(new CByteStream("<a b='&e;'/>"));
    TRefPtr<CCountingErrorHandler> errors = new CCountingErrorHandler();
    parser->SetErrorHandler(errors);
    try {
        parser->Parse(source);
        ADD_FAILURE() << "the entity of the first document was still known";
    } catch (Sxp::CParseException* exception) {
        EXPECT_EQ(32, exception->GetCode());
        delete exception;
    }
    EXPECT_EQ(1, errors->m_nCalls);
    EXPECT_EQ(32, errors->m_nLastCode);
}

}  // namespace
