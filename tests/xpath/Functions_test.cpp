// The core function library: results, argument checks, and the decisions of its own
// (substring rounding and NaN, lang, id through DTD-declared IDs, names of unnamed kinds).
#include "XpathTestSupport.h"

namespace {

using namespace XpathTest;

const char* kDoc =
    "<r xmlns:p=\"urn:p\" xml:lang=\"en-US\"><e id=\"a\" k=\"b\">x<!--c--><?t d?></e>"
    "<e id=\"b\" k=\"a b\" xml:lang=\"EN\"> 1 </e><f id=\"a b\"><g xml:lang=\"english\">2</g></f>"
    "<p:h p:at=\"v\">3.5</p:h></r>";

TEST(CoreFunctions, StringFunctions) {
    CEvaluator evaluator(kDoc);
    const char* rows[][2] = {
        {"concat('a', 1, true())", "a1true"},
        {"starts-with('abc', 'ab')", "true"},     {"starts-with('abc', '')", "true"},
        {"starts-with('ab', 'abc')", "false"},    {"contains('abc', 'bc')", "true"},
        {"contains('abc', 'x')", "false"},        {"substring-before('a/b/c', '/')", "a"},
        {"substring-before('abc', 'x')", ""},     {"substring-after('a/b/c', '/')", "b/c"},
        {"substring-after('abc', '')", "abc"},    {"substring-after('abc', 'x')", ""},
        {"substring('12345', 2, 3)", "234"},      {"substring('12345', 1.5, 2.6)", "234"},
        {"substring('12345', 0, 3)", "12"},       {"substring('12345', -42, 1 div 0)", "12345"},
        {"substring('12345', 0 div 0, 3)", ""},   {"substring('12345', 1, 0 div 0)", ""},
        {"substring('12345', -1 div 0, 1 div 0)", ""}, {"substring('12345', 2)", "2345"},
        {"substring('12345', 9)", ""},            {"substring('12345', 5, -1)", ""},
        {"substring('12345', -1)", "12345"},      {"substring('12345', 1 div 0)", ""},
        {"string-length('abc')", "3"},            {"string-length('')", "0"},
        {"normalize-space('  a \t b\n\nc  ')", "a b c"}, {"normalize-space('   ')", ""},
        {"translate('bar', 'abc', 'ABC')", "BAr"}, {"translate('--aaa--', 'abc-', 'ABC')", "AAA"},
        {"translate('aba', 'aa', 'xy')", "xbx"},  {"string(12.50)", "12.5"},
        {"string()", "xcd 1 23.5"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
}

TEST(CoreFunctions, AbsentArgumentsTakeTheContextNode) {
    CEvaluator evaluator(kDoc);
    evaluator.MoveTo("/r/e[2]");
    const char* rows[][2] = {
        {"string()", " 1 "},    {"normalize-space()", "1"}, {"string-length()", "3"}, {"number()", "1"},
        {"name()", "e"},        {"local-name()", "e"},      {"namespace-uri()", ""},  {"position()", "1"},
        {"last()", "1"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
}

// string-length of a node measures its texts without building the string-value, so it must
// agree with the string-value for every kind of node, nested containers and empty sets.
TEST(CoreFunctions, StringLengthOfNodesAgreesWithTheirStringValue) {
    CEvaluator evaluator(kDoc);
    for (const char* nodes : {"/", "/r", "//e[1]", "//e[2]", "//f", "//g", "//p:h", "//e[1]/@k", "//e[1]/text()",
                              "//comment()", "//processing-instruction()", "//g/namespace::p", "//nothing"}) {
        std::string length = std::string("string-length(") + nodes + ")";
        std::string measured = std::string("string-length(string(") + nodes + "))";
        EXPECT_EQ(evaluator.String(length), evaluator.String(measured)) << nodes;
    }
    EXPECT_EQ(evaluator.String("string-length(/r)"), "10");  // "xcd 1 23.5"
    evaluator.MoveTo("/r/f");
    EXPECT_EQ(evaluator.String("string-length()"), "1");
}

TEST(CoreFunctions, NumberAndBooleanFunctions) {
    CEvaluator evaluator(kDoc);
    const char* rows[][2] = {
        {"sum(//e/@k[. = 'b'] | //p:h)", "NaN"}, {"sum(//p:h)", "3.5"},  {"sum(//nothing)", "0"},
        {"sum(//e)", "NaN"},                     {"sum(//g | //p:h)", "5.5"},
        {"floor(-1.5)", "-2"},   {"ceiling(-1.5)", "-1"},  {"round(-1.5)", "-1"}, {"round(2.5)", "3"},
        {"1 div round(-0.2)", "-Infinity"},      {"round(0 div 0)", "NaN"},      {"number('x')", "NaN"},
        {"boolean(//e)", "true"},                {"not(//e)", "false"},          {"true()", "true"},
        {"false()", "false"},                    {"count(//e)", "2"},            {"count(//nothing)", "0"},
        {"count(//node())", "12"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
}

TEST(CoreFunctions, NamesOfEveryKind) {
    CEvaluator evaluator(kDoc);
    const char* rows[][2] = {
        {"name(//p:h)", "p:h"},              {"local-name(//p:h)", "h"},      {"namespace-uri(//p:h)", "urn:p"},
        {"name(//p:h/@p:at)", "p:at"},       {"namespace-uri(//@p:at)", "urn:p"},
        {"name(//e/text())", "#text"},       {"local-name(//e/text())", ""},
        {"name(//comment())", "#comment"},   {"name(/)", "#document"},       {"local-name(/)", ""},
        {"name(//processing-instruction())", "t"}, {"local-name(//processing-instruction())", ""},
        {"name(/r/namespace::p)", "p"},      {"local-name(/r/namespace::p)", "p"},
        {"namespace-uri(/r/namespace::p)", ""}, {"name(//nothing)", ""},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.String(row[0]), row[1]) << row[0];
}

TEST(CoreFunctions, LangLooksForTheNearestXmlLang) {
    CEvaluator evaluator(kDoc);
    const char* rows[][3] = {
        {"/r/e[1]", "en", "true"},    {"/r/e[1]", "EN-us", "true"},  {"/r/e[1]", "en-", "false"},
        {"/r/e[2]", "en", "true"},    {"/r/f/g", "en", "false"},     {"/r/f/g", "english", "true"},
        {"/r/e[1]/@k", "en", "true"}, {"/", "en", "false"},
    };
    for (auto& row : rows) {
        evaluator.MoveTo(row[0]);
        EXPECT_EQ(evaluator.String(std::string("lang('") + row[1] + "')"), row[2]) << row[0] << " " << row[1];
    }
}

TEST(CoreFunctions, IdUsesDeclaredIdAttributesOnly) {
    CEvaluator evaluator(kDoc, {"e/id", "f/id"});
    const char* rows[][2] = {
        {"id('a b')", "e e"},        {"id(' b  a ')", "e e"},       {"id('a')/@k", "@k"},
        {"id(//e/@k)", "e f"},         {"id(//f/@id)", "f"},          {"id('zz')", ""},
        {"id(//e[2]/@k)", "f"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.Nodes(row[0]), row[1]) << row[0];
    CEvaluator undeclared(kDoc);
    EXPECT_EQ(undeclared.Nodes("id('a')"), "");
}

TEST(CoreFunctions, ArgumentChecks) {
    CEvaluator evaluator(kDoc);
    const char* rows[][2] = {
        {"concat('a')", "Invalid number of 'concat' arguments"},
        {"last(1)", "Invalid number of 'last' arguments"},
        {"substring('a')", "Invalid number of 'substring' arguments"},
        {"substring('a', 1, 2, 3)", "Invalid number of 'substring' arguments"},
        {"translate('a', 'b')", "Invalid number of 'translate' arguments"},
        {"true(1)", "Invalid number of 'true' arguments"},
        {"count()", "Invalid number of 'count' arguments"},
        {"name(1, 2)", "Invalid number of 'name' arguments"},
        {"count(1)", "Invalid 'count' argument type (position 1)"},
        {"sum('1')", "Invalid 'sum' argument type (position 1)"},
        {"local-name(true())", "Invalid 'local-name' argument type (position 1)"},
        {"namespace-uri(1)", "Invalid 'namespace-uri' argument type (position 1)"},
        {"name('r')", "Invalid 'name' argument type (position 1)"},
        {"id()", "Invalid number of 'id' arguments"},
    };
    for (auto& row : rows) EXPECT_EQ(evaluator.Failure(row[0]), row[1]) << row[0];
}

TEST(CoreFunctions, LibraryAnswersOnlyForTheEmptyNamespace) {
    TRefPtr<Xpath::CCoreFunctionLibrary> library(new Xpath::CCoreFunctionLibrary());
    const char* names[] = {"last", "position", "count", "id", "local-name", "namespace-uri", "name", "string",
                           "concat", "starts-with", "contains", "substring-before", "substring-after", "substring",
                           "string-length", "normalize-space", "translate", "boolean", "not", "true", "false",
                           "lang", "number", "sum", "floor", "ceiling", "round"};
    for (const char* name : names) EXPECT_TRUE(library->IsFunctionAvailable(u"", U(name))) << name;
    EXPECT_FALSE(library->IsFunctionAvailable(u"urn:p", u"count"));
    EXPECT_FALSE(library->IsFunctionAvailable(u"", u"Count"));
    EXPECT_FALSE(library->IsFunctionAvailable(u"", u"key"));
}

}  // namespace
