// Tokens and the grammar: the operator-or-name decisions, names before "(" and "::", and
// every parse failure with its message.
#include <string>
#include <vector>

#include "XpathTestSupport.h"
#include "xpath/PathExpr.h"
#include "xpath/Scanner.h"

namespace {

using namespace XpathTest;

std::vector<int> Kinds(const std::string& expression) {
    Xpath::CScanner scanner;
    scanner.Reset(U(expression));
    std::vector<int> kinds;
    Xpath::CToken token;
    do {
        scanner.Next(token);
        kinds.push_back(token.m_nKind);
    } while (token.m_nKind != Xpath::TokenEnd);
    return kinds;
}

std::string ParseFailure(const std::string& expression) {
    Xpath::CParser parser;
    TRefPtr<Xpath::CExpression> tree;
    try {
        parser.Parse(tree, U(expression));
    } catch (Xpath::CXpathException* failure) {
        DomString message;
        failure->GetMessage(message);
        delete failure;
        return A(message);
    }
    return "";
}

TEST(Scanner, AsteriskIsANameTestWhereAnOperandIsExpected) {
    using namespace Xpath;
    EXPECT_EQ(Kinds("*"), (std::vector<int>{TokenNameTest, TokenEnd}));
    EXPECT_EQ(Kinds("(*"), (std::vector<int>{TokenLeftParenthesis, TokenNameTest, TokenEnd}));
    EXPECT_EQ(Kinds("a[*"), (std::vector<int>{TokenNameTest, TokenLeftBracket, TokenNameTest, TokenEnd}));
    EXPECT_EQ(Kinds("@*"), (std::vector<int>{TokenAt, TokenNameTest, TokenEnd}));
    EXPECT_EQ(Kinds("child::*"), (std::vector<int>{TokenAxisName, TokenDoubleColon, TokenNameTest, TokenEnd}));
    EXPECT_EQ(Kinds("1 + *"), (std::vector<int>{TokenNumber, TokenPlus, TokenNameTest, TokenEnd}));
    EXPECT_EQ(Kinds("//*"), (std::vector<int>{TokenDoubleSlash, TokenNameTest, TokenEnd}));
    EXPECT_EQ(Kinds("a/*"), (std::vector<int>{TokenNameTest, TokenSlash, TokenNameTest, TokenEnd}));
}

TEST(Scanner, AsteriskMultipliesAfterAnOperand) {
    using namespace Xpath;
    EXPECT_EQ(Kinds("a * b"), (std::vector<int>{TokenNameTest, TokenMultiply, TokenNameTest, TokenEnd}));
    EXPECT_EQ(Kinds("a[1]*2"), (std::vector<int>{TokenNameTest, TokenLeftBracket, TokenNumber, TokenRightBracket,
                                                 TokenMultiply, TokenNumber, TokenEnd}));
    EXPECT_EQ(Kinds("(1)*'x'*$v*.*..*"),
              (std::vector<int>{TokenLeftParenthesis, TokenNumber, TokenRightParenthesis, TokenMultiply, TokenLiteral,
                                TokenMultiply, TokenVariableReference, TokenMultiply, TokenCurrentNode, TokenMultiply,
                                TokenParentNode, TokenMultiply, TokenEnd}));
}

TEST(Scanner, OperatorWordsAreNamesWhereAnOperandIsExpected) {
    using namespace Xpath;
    EXPECT_EQ(Kinds("div div div"), (std::vector<int>{TokenNameTest, TokenOperatorName, TokenNameTest, TokenEnd}));
    EXPECT_EQ(Kinds("and or mod"), (std::vector<int>{TokenNameTest, TokenOperatorName, TokenNameTest, TokenEnd}));
}

TEST(Scanner, NamesBeforeParenthesisOrDoubleColon) {
    using namespace Xpath;
    EXPECT_EQ(Kinds("foo (1)"), (std::vector<int>{TokenFunctionName, TokenLeftParenthesis, TokenNumber,
                                                  TokenRightParenthesis, TokenEnd}));
    EXPECT_EQ(Kinds("text ()"), (std::vector<int>{TokenNodeType, TokenLeftParenthesis, TokenRightParenthesis, TokenEnd}));
    EXPECT_EQ(Kinds("a:text()"), (std::vector<int>{TokenFunctionName, TokenLeftParenthesis, TokenRightParenthesis,
                                                   TokenEnd}));
    EXPECT_EQ(Kinds("self :: node()"), (std::vector<int>{TokenAxisName, TokenDoubleColon, TokenNodeType,
                                                         TokenLeftParenthesis, TokenRightParenthesis, TokenEnd}));
    EXPECT_EQ(Kinds("a:b("), (std::vector<int>{TokenFunctionName, TokenLeftParenthesis, TokenEnd}));
}

TEST(Scanner, NumbersAndLiterals) {
    Xpath::CScanner scanner;
    Xpath::CToken token;
    const char* numbers[][2] = {{"1.", "1"}, {".5", "0.5"}, {"007.250", "7.25"}, {"1.5.2", "1.5"}};
    for (auto& row : numbers) {
        scanner.Reset(U(row[0]));
        scanner.Next(token);
        EXPECT_EQ(token.m_nKind, Xpath::TokenNumber) << row[0];
        EXPECT_EQ(A(token.m_number.ToString()), row[1]) << row[0];
    }
    scanner.Reset(u"'a\"b' \"c'd\"");
    scanner.Next(token);
    EXPECT_EQ(token.m_sText, u"a\"b");
    scanner.Next(token);
    EXPECT_EQ(token.m_sText, u"c'd");
}

TEST(Scanner, VariableNamesMayEndInAColonOrGoOnWithAnyNameUnits) {
    Xpath::CScanner scanner;
    Xpath::CToken token;
    const char* names[][2] = {{"$a", "a"}, {"$a:", "a:"}, {"$a:1", "a:1"}, {"$p:x-y.z", "p:x-y.z"}};
    for (auto& row : names) {
        scanner.Reset(U(row[0]));
        scanner.Next(token);
        EXPECT_EQ(token.m_nKind, Xpath::TokenVariableReference) << row[0];
        EXPECT_EQ(A(token.m_sText), row[1]) << row[0];
    }
}

TEST(Parser, AcceptsTheWholeGrammar) {
    const char* accepted[] = {
        "/", "//a", "a/b//c", "../a", "./a", "@*", "@p:*", "p:a", "*", "a | b | c", "a[1][@x]",
        "$v/a", "$v[1]//a", "(a)[1]", "f()", "f(1, 'x', $v)", "- - 1", "--1", "1 div 2 mod 3 * 4",
        "a = b != c < d > e <= f >= g", "1 or 2 and 3", "processing-instruction()",
        "processing-instruction('t')", "comment()", "text()", "node()", "ancestor-or-self::node()",
        "self :: node()", "$a:", "1.", ".5", "a/* div 2", "div div div", "(1 | 2)", "a:b(1)", "child::div",
    };
    for (const char* expression : accepted) EXPECT_EQ(ParseFailure(expression), "") << expression;
}

TEST(Parser, ReportsEachFailureWithItsMessage) {
    const char* rows[][2] = {
        {"", "Invalid primary expression"},
        {"foo mod", "Invalid primary expression"},
        {"a b", "Invalid operator name: 'b'"},
        {"a p:b", "Invalid operator name: 'p:b'"},
        {"a:*(1)", "Invalid function name: 'a:*'"},
        {"pre:fix::x", "Invalid axis name: 'pre:fix'"},
        {"foo::x", "Invalid axis name: 'foo'"},
        {"a:", "Illegal character in expression"},
        {"a : b", "Illegal character in expression"},
        {"!", "Illegal character in expression"},
        {"a ! b", "Illegal character in expression"},
        {"#", "Illegal character in expression"},
        {"'abc", "Non-terminated literal"},
        {"\"abc'", "Non-terminated literal"},
        {"$", "Invalid variable reference"},
        {"$ a", "Invalid variable reference"},
        {"$1", "Invalid variable reference"},
        {"1.5.2", "Invalid expression syntax"},
        {"a)", "Invalid expression syntax"},
        {"/a/", "Invalid node test"},
        {"//", "Invalid node test"},
        {"a//", "Invalid node test"},
        {"a/1", "Invalid node test"},
        {"processing-instruction(1)", "Invalid node test"},
        {"comment(1)", "Missing ')' character"},
        {"f(1", "Missing ')' character"},
        {"(1", "Missing ')' character"},
        {"f(1 2)", "Missing ')' character"},
        {"a[1", "Missing ']' character"},
        {"a[1)", "Missing ']' character"},
        {"child::", "Invalid node test"},
        {"@", "Invalid node test"},
        {"1 +", "Invalid primary expression"},
        {"-", "Invalid primary expression"},
        {"[1]", "Invalid primary expression"},
    };
    for (auto& row : rows) EXPECT_EQ(ParseFailure(row[0]), row[1]) << row[0];
}

std::string Repeat(const std::string& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i) result += text;
    return result;
}

TEST(Parser, RefusesHostileNestingWithALimitMessage) {
    const std::string limit = "Expression nested too deeply";
    for (const char* open : {"(", "f(", "a[", "-", "not(", "1+"})
        EXPECT_EQ(ParseFailure(Repeat(open, 10000) + "1"), limit) << open;
    EXPECT_EQ(ParseFailure("1" + Repeat(" or 1", 100000)), limit);
    EXPECT_EQ(ParseFailure(Repeat("(", 100) + "1" + Repeat("+1)", 100)), "");
}

TEST(Parser, UnitU0080NeitherStartsNorContinuesAName) {
    Xpath::CParser parser;
    TRefPtr<Xpath::CExpression> tree;
    for (const DomChar* text : {u"\u0080", u"a\u0080"}) {
        try {
            parser.Parse(tree, text);
            ADD_FAILURE();
        } catch (Xpath::CXpathException* failure) {
            EXPECT_EQ(failure->GetNumber(), Xpath::CXpathException::IllegalCharacter);
            delete failure;
        }
    }
    EXPECT_NO_THROW(parser.Parse(tree, u"\u0081\u00e9-.1"));
}

TEST(Parser, LongPathsAndUnionsAreNotNesting) {
    std::string path = "a", alternatives = "a";
    for (int i = 0; i < 20000; ++i) {
        path += "/a";
        alternatives += "|a";
    }
    EXPECT_EQ(ParseFailure(path), "");
    EXPECT_EQ(ParseFailure(alternatives), "");
}

bool Streams(const std::string& expression) {
    Xpath::CParser parser;
    TRefPtr<Xpath::CExpression> tree;
    parser.Parse(tree, U(expression));
    auto* path = dynamic_cast<Xpath::CPathExpr*>(tree.Get());
    EXPECT_NE(path, nullptr) << expression;
    return path && path->CanStream();
}

TEST(Parser, PathsStreamOnlyWithInPlaceStepsBeforeTheLast) {
    for (const char* text : {"a/b", "/a/b", "a//b", "./a/descendant::b", "a/@*", "a/namespace::*", "a/b//c"})
        EXPECT_TRUE(Streams(text)) << text;
    for (const char* text : {"a//b/c", ".//a[1]", "@*/a", "a/..", "a/descendant::b/c", "$x/a", "(a)/b", "a/ancestor::b"})
        EXPECT_FALSE(Streams(text)) << text;
    std::string path = "a";
    for (int i = 0; i < 20000; ++i) path += "/a";
    EXPECT_TRUE(Streams(path + "//b"));
    EXPECT_FALSE(Streams(path + "/../a"));
}

TEST(XpathException, RendersUpToThreeArgumentsAndAnUnclassifiedRow) {
    DomString text;
    Xpath::CXpathException(14, u"p", u"v", u"urn:p").GetMessage(text);
    EXPECT_EQ(text, u"Variable 'p:v' (namespace urn:p) not bound in expression context");
    Xpath::CXpathException(17, u"count", u"1").GetMessage(text);
    EXPECT_EQ(text, u"Invalid 'count' argument type (position 1)");
    Xpath::CXpathException(3).GetMessage(text);
    EXPECT_EQ(text, u"Invalid operator name: '?'");
    Xpath::CXpathException(99).GetMessage(text);
    EXPECT_EQ(text, u"Unclassified XPath exception");
}

}  // namespace
