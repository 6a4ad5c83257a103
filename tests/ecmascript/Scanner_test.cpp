// The script scanner: tokens, line terminators, comments, literals and its error reports.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ecmascript/private/Scanner.h"

namespace {

using namespace EcmaScriptPrivate;

class CRecordingHandler : public EcmaScript::IParseErrorHandler {
public:
    explicit CRecordingHandler(int limit = 1000) : m_nLimit(limit) {}
    bool Report(int line, const DomString& message) override {
        m_aReports.push_back(std::to_string(line) + ": " + Core::ToUtf8(message));
        return static_cast<int>(m_aReports.size()) < m_nLimit;
    }
    std::vector<std::string> m_aReports;
    int m_nLimit;
};

struct SScan {
    std::vector<CToken> aTokens;
    std::vector<std::string> aReports;
    int nLastLine = 0;
};

SScan Scan(const DomString& text) {
    CScanner scanner;
    scanner.Open(new EcmaScript::CStringCharacterStream(text));
    TRefPtr<CRecordingHandler> handler = new CRecordingHandler;
    scanner.SetErrorHandler(handler);
    SScan result;
    for (;;) {
        CToken token;
        scanner.NextToken(token);
        result.aTokens.push_back(token);
        if (token.kind == TokenEnd) break;
    }
    result.aReports = handler->m_aReports;
    result.nLastLine = scanner.GetLine();
    return result;
}

std::vector<int> Kinds(const DomString& text) {
    std::vector<int> kinds;
    for (const CToken& token : Scan(text).aTokens) kinds.push_back(token.kind);
    return kinds;
}

TEST(ScriptScanner, GivesTheLongestOperator) {
    struct {
        const char16_t* pText;
        std::vector<int> aKinds;
    } cases[] = {
        {u"a===b", {TokenIdentifier, TokenEqual, TokenAssign, TokenIdentifier, TokenEnd}},
        {u">>>= >>= >> > >= >>>", {TokenShiftRightUnsignedAssign, TokenShiftRightAssign, TokenShiftRight, TokenGreater,
                                   TokenGreaterEqual, TokenShiftRightUnsigned, TokenEnd}},
        {u"<<= << <= < != ! && & &= || | |= ++ + += -- - -=",
         {TokenShiftLeftAssign, TokenShiftLeft, TokenLessEqual, TokenLess, TokenNotEqual, TokenNot, TokenAnd, TokenBitAnd,
          TokenBitAndAssign, TokenOr, TokenBitOr, TokenBitOrAssign, TokenIncrement, TokenPlus, TokenPlusAssign,
          TokenDecrement, TokenMinus, TokenMinusAssign, TokenEnd}},
        {u"*= * %= % ^= ^ /= / ~ ? : . , ; ( ) { } [ ]",
         {TokenMultiplyAssign, TokenMultiply, TokenModuloAssign, TokenModulo, TokenBitXorAssign, TokenBitXor,
          TokenDivideAssign, TokenDivide, TokenBitNot, TokenQuestion, TokenColon, TokenDot, TokenComma, TokenSemicolon,
          TokenLeftParen, TokenRightParen, TokenLeftBrace, TokenRightBrace, TokenLeftBracket, TokenRightBracket,
          TokenEnd}},
    };
    for (const auto& c : cases) EXPECT_EQ(Kinds(c.pText), c.aKinds) << Core::ToUtf8(c.pText);
}

TEST(ScriptScanner, KnowsKeywordsReservedWordsAndLiteralsByExactSpelling) {
    EXPECT_EQ(Kinds(u"break with typeof in"), (std::vector<int>{TokenBreak, TokenWith, TokenTypeof, TokenIn, TokenEnd}));
    EXPECT_EQ(Kinds(u"do switch try volatile abstract"),
              (std::vector<int>{TokenReserved, TokenReserved, TokenReserved, TokenReserved, TokenReserved, TokenEnd}));
    EXPECT_EQ(Kinds(u"null true false"), (std::vector<int>{TokenNull, TokenTrue, TokenFalse, TokenEnd}));
    EXPECT_EQ(Kinds(u"Break NULL $x _1 undefined"),
              (std::vector<int>{TokenIdentifier, TokenIdentifier, TokenIdentifier, TokenIdentifier, TokenIdentifier,
                                TokenEnd}));
    SScan scan = Scan(u"someName");
    EXPECT_EQ(scan.aTokens[0].name.GetText(), u"someName");
    EXPECT_EQ(scan.aTokens[0].name.GetHash(), static_cast<int32_t>(Core::HashText(u"someName")));
}

TEST(ScriptScanner, EndOfStreamIsStable) {
    CScanner scanner;
    scanner.Open(new EcmaScript::CStringCharacterStream(DomString()));
    for (int i = 0; i < 3; ++i) {
        CToken token;
        scanner.NextToken(token);
        EXPECT_EQ(token.kind, TokenEnd);
    }
}

TEST(ScriptScanner, NulEndsTheTokensAndBreaksAString) {
    EXPECT_EQ(Kinds(DomString(u"a\0b", 3)), (std::vector<int>{TokenIdentifier, TokenEnd}));
    SScan scan = Scan(DomString(u"'ab\0cd'", 7));
    EXPECT_EQ(scan.aTokens[0].kind, TokenString);
    EXPECT_EQ(scan.aTokens[0].text, u"");
    EXPECT_EQ(scan.aReports, std::vector<std::string>{"1: Unexpected end of stream in string literal"});
}

TEST(ScriptScanner, MarksTokensAfterLineTerminators) {
    SScan sameLine = Scan(u"a/*x*/b");
    EXPECT_FALSE(sameLine.aTokens[1].lineTerminatorBefore);
    SScan spanning = Scan(u"a/*x\ny*/b\n// note\nc");
    EXPECT_TRUE(spanning.aTokens[1].lineTerminatorBefore);
    EXPECT_TRUE(spanning.aTokens[2].lineTerminatorBefore);
    EXPECT_EQ(spanning.nLastLine, 4);
    EXPECT_EQ(Scan(u"a\r\nb").nLastLine, 2);
    EXPECT_EQ(Scan(u"a\n\rb").nLastLine, 3);
    EXPECT_EQ(Scan(u"a\rb").nLastLine, 2);
}

TEST(ScriptScanner, ReportsNestedCommentOnceAndEndsAtFirstClose) {
    SScan scan = Scan(u"/* a /* b */ c");
    ASSERT_EQ(scan.aTokens.size(), 2u);
    EXPECT_EQ(scan.aTokens[0].name.GetText(), u"c");
    EXPECT_EQ(scan.aReports, std::vector<std::string>{"1: Nested multi-line comments"});
    EXPECT_EQ(Scan(u"/* x /*/ y").aTokens[0].name.GetText(), u"y");
    EXPECT_EQ(Scan(u"/* open").aReports, std::vector<std::string>{"1: Unexpected end of stream in multi-line comment"});
}

TEST(ScriptScanner, ReadsNumericLiterals) {
    struct {
        const char16_t* pText;
        bool bInteger;
        double dValue;
    } cases[] = {
        {u"0", true, 0},          {u"42", true, 42},         {u"017", true, 15},       {u"0x1f", true, 31},
        {u"0XFF", true, 255},     {u"1.5", false, 1.5},      {u".25", false, 0.25},    {u"0.5", false, 0.5},
        {u"1e3", false, 1000},    {u"2E-2", false, 0.02},    {u"123456789", true, 123456789},
        {u"1234567890", false, 1234567890.0},                {u"0x80000000", false, 2147483648.0},
    };
    for (const auto& c : cases) {
        SScan scan = Scan(c.pText);
        ASSERT_EQ(scan.aTokens[0].kind, TokenNumber) << Core::ToUtf8(c.pText);
        EXPECT_EQ(scan.aTokens[0].number.IsInteger(), c.bInteger) << Core::ToUtf8(c.pText);
        EXPECT_EQ(scan.aTokens[0].number.GetDouble(), c.dValue) << Core::ToUtf8(c.pText);
        EXPECT_TRUE(scan.aReports.empty()) << Core::ToUtf8(c.pText);
    }
    SScan twoTokens = Scan(u"08");
    ASSERT_EQ(twoTokens.aTokens.size(), 3u);
    EXPECT_EQ(twoTokens.aTokens[0].number.GetDouble(), 0);
    EXPECT_EQ(twoTokens.aTokens[1].number.GetDouble(), 8);
}

TEST(ScriptScanner, ReportsMalformedLiteralsAndGoesOn) {
    struct {
        const char16_t* pText;
        const char* pReport;
    } cases[] = {
        {u"1e;", "1: Invalid decimal literal: 1e;..."},
        {u"1e+x", "1: Invalid decimal literal: 1e+x..."},
        {u"0e5", "1: Invalid decimal literal: 0e5..."},
        {u"0x;", "1: Invalid hex integer literal: 0x;..."},
        {u"\u00a0", "1: Illegal character: hex code 00a0"},
        {u"\u2028", "1: Illegal character: hex code 2028"},
        {u"\u00e9", "1: Illegal character: hex code 00e9"},
        {u"@", "1: Illegal character: hex code 0040"},
        {u"'a\n", "1: Line terminator in string literal"},
        {u"'\\400'", "1: Invalid escape sequence: \\400..."},
    };
    for (const auto& c : cases) {
        SScan scan = Scan(c.pText);
        EXPECT_EQ(scan.aReports, std::vector<std::string>{c.pReport}) << Core::ToUtf8(c.pText);
    }
    SScan afterError = Scan(u"1e; x");
    EXPECT_EQ(afterError.aTokens[0].kind, TokenNumber);
    EXPECT_EQ(afterError.aTokens[1].kind, TokenSemicolon);
    EXPECT_EQ(afterError.aTokens[2].kind, TokenIdentifier);
}

TEST(ScriptScanner, ReadsStringEscapes) {
    struct {
        const char16_t* pText;
        DomString sValue;
    } cases[] = {
        {u"'\\b\\f\\n\\r\\t\\v'", DomString(u"\b\f\n\r\t\v")},
        {u"\"it's\"", u"it's"},
        {u"'say \"hi\"'", u"say \"hi\""},
        {u"'\\'\\\"\\\\'", u"'\"\\"},
        {u"'\\101\\7\\0'", DomString(u"A\7\0", 3)},
        {u"'\\400'", DomString(1, DomChar(256))},
        {u"'\\u0041\\x42'", u"AB"},
        {u"'\\u12'", u"u12"},
        {u"'\\x4g'", u"x4g"},
        {u"'\\q'", u"q"},
        {u"'\u00e9\u2028'", u"\u00e9\u2028"},
    };
    for (const auto& c : cases) {
        SScan scan = Scan(c.pText);
        ASSERT_EQ(scan.aTokens[0].kind, TokenString) << Core::ToUtf8(c.pText);
        EXPECT_EQ(scan.aTokens[0].text, c.sValue) << Core::ToUtf8(c.pText);
    }
}

TEST(ScriptScanner, HandlerSetBeforeOpenIsDropped) {
    CScanner scanner;
    TRefPtr<CRecordingHandler> handler = new CRecordingHandler;
    scanner.SetErrorHandler(handler);
    scanner.Open(new EcmaScript::CStringCharacterStream(u"@"));
    CToken token;
    scanner.NextToken(token);
    EXPECT_TRUE(handler->m_aReports.empty());
    EXPECT_TRUE(scanner.HasErrors());
}

TEST(ScriptScanner, ThrowsErrorLimitWhenHandlerStops) {
    CScanner scanner;
    scanner.Open(new EcmaScript::CStringCharacterStream(u"@ @ @"));
    TRefPtr<CRecordingHandler> handler = new CRecordingHandler(2);
    scanner.SetErrorHandler(handler);
    CToken token;
    try {
        scanner.NextToken(token);
        FAIL() << "no exception";
    } catch (CScannerException* error) {
        DomString text;
        error->GetMessage(text);
        EXPECT_EQ(text, u"Error limit exceeded");
        delete error;
    }
    EXPECT_EQ(handler->m_aReports.size(), 2u);
}

TEST(ScriptScanner, ReadsAcrossBlockBoundaries) {
    DomString text;
    for (int i = 0; i < 1000; ++i) text += u"name" + Core::WidenLatin1(std::to_string(i)) + u" '\\u0041' ";
    SScan scan = Scan(text);
    ASSERT_EQ(scan.aTokens.size(), 2001u);
    EXPECT_EQ(scan.aTokens[1998].name.GetText(), u"name999");
    EXPECT_EQ(scan.aTokens[1999].text, u"A");
    EXPECT_TRUE(scan.aReports.empty());
}

}  // namespace
