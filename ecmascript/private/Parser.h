// Recursive descent over the tokens of CScanner, building the syntax tree of a program or of
// the parts of a `new Function`. Statement-level recovery lets one pass report many errors.
#pragma once
#include "core/Exception.h"
#include "ecmascript/Program.h"
#include "ecmascript/private/Scanner.h"
#include "ecmascript/private/Statement.h"

namespace EcmaScriptPrivate {

class CParserException : public Core::IException {
public:
    enum ECode {
        UnexpectedEnd = 0,
        InvalidAssignment,
        InvalidPrimary,
        LeftHandSideRequired,
        MissingFunctionName,
        MissingParameterName,
        MissingVariableName,
        MissingPropertyName,
        MissingComma,
        MissingColon,
        MissingLeftParenthesis,
        MissingRightParenthesis,
        MissingLeftBrace,
        MissingRightBracket,
        MissingSemicolon,
        ErrorLimit,
        NestingTooDeep
    };
    explicit CParserException(int code) : m_nCode(code) {}
    void GetMessage(DomString& text) const override;
    int GetCode() const { return m_nCode; }

private:
    int m_nCode;
};

// The handler of texts parsed at run time (eval, new Function): the first error stops the parse.
class CFirstErrorHandler : public EcmaScript::IParseErrorHandler {
public:
    bool Report(int, const DomString&) override { return false; }
};

class CParser {
public:
    // Statements and expressions nest at most this deep, so that neither the parse nor the
    // later walks over the tree can exhaust the stack.
    static const int kMaxNesting = 400;

    void SetErrorHandler(EcmaScript::IParseErrorHandler* handler) { m_errorHandler = handler; }
    void SetProgramName(const DomString& name) { m_sProgramName = name; }
    void SetFirstLine(int line) { m_nFirstLine = line; }

    // Parse errors other than the error limit are reported and leave HasErrors set; the limit
    // is thrown.
    TRefPtr<EcmaScript::CProgram> ParseProgram(EcmaScript::ICharacterStream* stream);
    TRefPtr<EcmaScript::CProgram> ParseProgramText(const DomString& text);
    // The parts of `new Function`: these throw their first error.
    void ParseFormalParameters(const DomString& text, EcmaScript::CFunctionBody* function);
    void ParseFunctionBody(const DomString& text, EcmaScript::CFunctionBody* function);
    bool HasErrors() const { return m_hasErrors || m_scanner.HasErrors(); }

private:
    void Begin(EcmaScript::ICharacterStream* stream);
    void End();
    void Next() { m_scanner.NextToken(m_token); }
    bool Is(int kind) const { return m_token.kind == kind; }
    void Expect(int kind, int code);
    [[noreturn]] void Raise(int code);
    void EndStatement();
    void SkipToStatementEnd();
    void DeclareVariable(const CName& name);
    void CheckDepth(const CExpression* expression);

    void ParseFunctionDeclaration();
    TStatementPtr ParseStatement();
    TStatementPtr ParseStatementBody();
    TStatementPtr ParseBlock();
    TStatementPtr ParseVariableStatement();
    TRefPtr<CVariableDeclaration> ParseDeclaration();
    TStatementPtr ParseIf();
    TStatementPtr ParseWhile();
    TStatementPtr ParseFor();
    TStatementPtr ParseForIn(CVariableDeclaration* declaration, CExpression* target);
    TStatementPtr ParseReturn();
    TStatementPtr ParseWith();
    void ParseStatementsUntilBrace(CStatementList& statements);

    TExpressionPtr ParseExpression();
    TExpressionPtr ParseAssignment();
    TExpressionPtr ParseBinary(int level);
    TExpressionPtr ParseUnary();
    TExpressionPtr ParsePostfix();
    TExpressionPtr ParseLeftHandSide();
    TExpressionPtr ParsePrimary();
    TRefPtr<CArgumentList> ParseArguments();

    // Counts the nesting of the recursive rules.
    class CDepthGuard {
    public:
        explicit CDepthGuard(CParser& parser) : m_parser(parser) {
            if (m_parser.m_nDepth >= kMaxNesting) m_parser.Raise(CParserException::NestingTooDeep);
            ++m_parser.m_nDepth;
        }
        ~CDepthGuard() { --m_parser.m_nDepth; }
        CDepthGuard(const CDepthGuard&) = delete;
        CDepthGuard& operator=(const CDepthGuard&) = delete;

    private:
        CParser& m_parser;
    };

    uint8_t m_parsingFunctionText = 0;
    TRefPtr<EcmaScript::IParseErrorHandler> m_errorHandler;
    DomString m_sProgramName;
    uint8_t m_hasErrors = 0;
    CScanner m_scanner;
    CToken m_token;
    TRefPtr<EcmaScript::CProgram> m_pProgram;
    TRefPtr<EcmaScript::CFunctionBody> m_pFunction;
    int m_nFirstLine = 1;
    int m_nDepth = 0;
};

}  // namespace EcmaScriptPrivate
