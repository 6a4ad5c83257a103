// The script parser: the first-edition grammar with its semicolon rule and statement recovery.
#include "ecmascript/private/Parser.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

const Core::SMessage kMessages[] = {
    {0, u"Unexpected end of stream"},
    {1, u"Invalid assignment expression"},
    {2, u"Invalid primary expression"},
    {3, u"Left-hand-side expression required"},
    {4, u"Missing function name"},
    {5, u"Missing formal parameter name"},
    {6, u"Missing variable name"},
    {7, u"Missing property name"},
    {8, u"Missing comma"},
    {9, u"Missing colon"},
    {10, u"Missing left parenthesis"},
    {11, u"Missing right parenthesis"},
    {12, u"Missing left brace"},
    {13, u"Missing right bracket"},
    {14, u"Missing semicolon"},
    {15, u"Error limit exceeded"},
    {16, u"Program nested too deeply"},
    {-1, u"Unclassified parser exception"},
};

using FMakeBinary = CExpression* (*)(CExpression*, CExpression*);

template <class T>
CExpression* MakeBinary(CExpression* left, CExpression* right) {
    return new T(left, right);
}

struct SBinaryOperator {
    int nToken;
    FMakeBinary pMake;
};

// The binary levels from lowest to highest precedence, each left-associative.
const SBinaryOperator kLevelOr[] = {{TokenOr, MakeBinary<CLogicalOrExpression>}, {-1, nullptr}};
const SBinaryOperator kLevelAnd[] = {{TokenAnd, MakeBinary<CLogicalAndExpression>}, {-1, nullptr}};
const SBinaryOperator kLevelBitOr[] = {{TokenBitOr, MakeBinary<CBitOrExpression>}, {-1, nullptr}};
const SBinaryOperator kLevelBitXor[] = {{TokenBitXor, MakeBinary<CBitXorExpression>}, {-1, nullptr}};
const SBinaryOperator kLevelBitAnd[] = {{TokenBitAnd, MakeBinary<CBitAndExpression>}, {-1, nullptr}};
const SBinaryOperator kLevelEquality[] = {
    {TokenEqual, MakeBinary<CEqualExpression>}, {TokenNotEqual, MakeBinary<CNotEqualExpression>}, {-1, nullptr}};
const SBinaryOperator kLevelRelational[] = {{TokenLess, MakeBinary<CLessExpression>},
                                            {TokenGreater, MakeBinary<CGreaterExpression>},
                                            {TokenLessEqual, MakeBinary<CLessEqualExpression>},
                                            {TokenGreaterEqual, MakeBinary<CGreaterEqualExpression>},
                                            {-1, nullptr}};
const SBinaryOperator kLevelShift[] = {{TokenShiftLeft, MakeBinary<CShiftLeftExpression>},
                                       {TokenShiftRight, MakeBinary<CShiftRightExpression>},
                                       {TokenShiftRightUnsigned, MakeBinary<CShiftRightUnsignedExpression>},
                                       {-1, nullptr}};
const SBinaryOperator kLevelAdditive[] = {
    {TokenPlus, MakeBinary<CAddExpression>}, {TokenMinus, MakeBinary<CSubtractExpression>}, {-1, nullptr}};
const SBinaryOperator kLevelMultiplicative[] = {{TokenMultiply, MakeBinary<CMultiplyExpression>},
                                                {TokenDivide, MakeBinary<CDivideExpression>},
                                                {TokenModulo, MakeBinary<CModuloExpression>},
                                                {-1, nullptr}};
const SBinaryOperator* const kLevels[] = {kLevelOr,       kLevelAnd,        kLevelBitOr, kLevelBitXor,
                                          kLevelBitAnd,   kLevelEquality,   kLevelRelational,
                                          kLevelShift,    kLevelAdditive,   kLevelMultiplicative};
const int kLevelCount = sizeof kLevels / sizeof kLevels[0];

// Compound assignment tokens in token order, mapped to the operator codes of the tree.
const int kCompoundOperators[] = {
    CCompoundAssignExpression::Add,        CCompoundAssignExpression::Subtract,
    CCompoundAssignExpression::Multiply,   CCompoundAssignExpression::Divide,
    CCompoundAssignExpression::BitAnd,     CCompoundAssignExpression::BitOr,
    CCompoundAssignExpression::BitXor,     CCompoundAssignExpression::Modulo,
    CCompoundAssignExpression::ShiftLeft,  CCompoundAssignExpression::ShiftRight,
    CCompoundAssignExpression::ShiftRightUnsigned};

}  // namespace

void CParserException::GetMessage(DomString& text) const {
    Core::FormatTableMessage(text, kMessages, m_nCode, DomString(), DomString());
}

void CParser::Begin(ICharacterStream* stream) {
    m_scanner.Open(stream);
    m_scanner.SetErrorHandler(m_errorHandler);
    m_scanner.SetLine(m_nFirstLine);
    m_hasErrors = 0;
    m_nDepth = 0;
}

void CParser::End() {
    m_scanner.SetErrorHandler(nullptr);
    m_errorHandler = nullptr;
    m_pFunction = nullptr;
    m_parsingFunctionText = 0;
}

void CParser::Raise(int code) {
    m_hasErrors = 1;
    CParserException* error = new CParserException(code);
    if (m_errorHandler) {
        DomString text;
        error->GetMessage(text);
        if (!m_errorHandler->Report(m_scanner.GetLine(), text)) {
            delete error;
            throw new CParserException(CParserException::ErrorLimit);
        }
    }
    throw error;
}

void CParser::Expect(int kind, int code) {
    if (!Is(kind)) Raise(code);
    Next();
}

// The semicolon rule: a ";" is consumed; a line break before the token, a "}" or the end
// also end the statement.
void CParser::EndStatement() {
    if (Is(TokenSemicolon)) {
        Next();
    } else if (!m_token.lineTerminatorBefore && !Is(TokenRightBrace) && !Is(TokenEnd)) {
        Raise(CParserException::MissingSemicolon);
    }
}

void CParser::SkipToStatementEnd() {
    while (!Is(TokenEnd)) {
        bool last = Is(TokenSemicolon) || Is(TokenRightBrace);
        Next();
        if (last) return;
    }
}

void CParser::DeclareVariable(const CName& name) {
    if (m_pFunction) {
        m_pFunction->m_aVariables.Add(name);
    } else {
        m_pProgram->m_aVariables.Add(name);
    }
}

void CParser::CheckDepth(const CExpression* expression) {
    if (expression->GetDepth() > kMaxNesting) Raise(CParserException::NestingTooDeep);
}

TRefPtr<CProgram> CParser::ParseProgram(ICharacterStream* stream) {
    m_pProgram = new CProgram;
    m_pProgram->m_sName = m_sProgramName;
    Begin(stream);
    try {
        Next();
        if (Is(TokenEnd)) Raise(CParserException::UnexpectedEnd);
        while (!Is(TokenEnd)) {
            if (Is(TokenFunction)) {
                ParseFunctionDeclaration();
            } else {
                m_pProgram->m_aElements.Add(ParseStatement());
            }
        }
    } catch (CParserException* error) {
        bool limit = error->GetCode() == CParserException::ErrorLimit;
        if (limit) {
            End();
            throw;
        }
        delete error;  // an error outside any statement ends the parse; it has been reported
    } catch (CScannerException*) {
        End();
        throw;
    }
    End();
    TRefPtr<CProgram> program = m_pProgram;
    m_pProgram = nullptr;
    return program;
}

TRefPtr<CProgram> CParser::ParseProgramText(const DomString& text) {
    TRefPtr<ICharacterStream> stream = new CStringCharacterStream(text);
    return ParseProgram(stream);
}

void CParser::ParseFormalParameters(const DomString& text, CFunctionBody* function) {
    TRefPtr<ICharacterStream> stream = new CStringCharacterStream(text);
    Begin(stream);
    m_parsingFunctionText = 1;
    struct SEnd {
        CParser& parser;
        ~SEnd() { parser.End(); }
    } end{*this};
    Next();
    while (!Is(TokenEnd)) {
        if (!Is(TokenIdentifier)) Raise(CParserException::MissingParameterName);
        function->m_aParameters.Add(m_token.name);
        Next();
        if (Is(TokenEnd)) break;
        Expect(TokenComma, CParserException::MissingComma);
        if (Is(TokenEnd)) Raise(CParserException::MissingParameterName);
    }
}

void CParser::ParseFunctionBody(const DomString& text, CFunctionBody* function) {
    TRefPtr<ICharacterStream> stream = new CStringCharacterStream(text);
    m_pProgram = new CProgram;
    Begin(stream);
    m_parsingFunctionText = 1;
    m_pFunction = function;
    struct SEnd {
        CParser& parser;
        ~SEnd() {
            parser.End();
            parser.m_pProgram = nullptr;
        }
    } end{*this};
    Next();
    while (!Is(TokenEnd)) function->m_aStatements.Add(ParseStatement());
}

void CParser::ParseFunctionDeclaration() {
    int line = m_scanner.GetLine();
    Next();
    if (!Is(TokenIdentifier)) Raise(CParserException::MissingFunctionName);
    TRefPtr<CFunctionBody> function = new CFunctionBody;
    function->m_name = m_token.name;
    function->m_sProgramName = m_sProgramName;
    if (!m_parsingFunctionText) function->m_nLine = line;
    m_pFunction = function;
    Next();
    Expect(TokenLeftParen, CParserException::MissingLeftParenthesis);
    while (!Is(TokenRightParen)) {
        if (!Is(TokenIdentifier)) Raise(CParserException::MissingParameterName);
        function->m_aParameters.Add(m_token.name);
        Next();
        if (Is(TokenComma)) {
            Next();
        } else if (Is(TokenIdentifier)) {
            Raise(CParserException::MissingComma);
        } else if (!Is(TokenRightParen)) {
            Raise(CParserException::MissingRightParenthesis);
        }
    }
    Next();
    Expect(TokenLeftBrace, CParserException::MissingLeftBrace);
    ParseStatementsUntilBrace(function->m_aStatements);
    m_pFunction = nullptr;
    m_pProgram->m_aFunctions.Add(function);
    m_pProgram->m_aElements.Add(TStatementPtr(new CFunctionDeclaration(function)));
}

// Statements up to the closing "}", which is consumed. At the end of the stream each round
// reports an error, so only the handler's limit ends the loop; without a handler the loop
// ends after the first such error.
void CParser::ParseStatementsUntilBrace(CStatementList& statements) {
    while (!Is(TokenRightBrace)) {
        bool atEnd = Is(TokenEnd);
        statements.Add(ParseStatement());
        if (atEnd && !m_errorHandler) return;
    }
    Next();
}

TStatementPtr CParser::ParseStatement() {
    int line = m_scanner.GetLine();
    TStatementPtr statement;
    try {
        CDepthGuard guard(*this);
        statement = ParseStatementBody();
    } catch (CParserException* error) {
        if (error->GetCode() == CParserException::ErrorLimit) throw;
        delete error;
        SkipToStatementEnd();
        statement = new CEmptyStatement;
    } catch (CScannerException* error) {
        if (error->GetCode() == CScannerException::ErrorLimit) throw;
        delete error;
        SkipToStatementEnd();
        statement = new CEmptyStatement;
    }
    if (!m_parsingFunctionText) statement->m_nLine = line;
    return statement;
}

TStatementPtr CParser::ParseStatementBody() {
    switch (m_token.kind) {
        case TokenLeftBrace:
            return ParseBlock();
        case TokenVar:
            return ParseVariableStatement();
        case TokenSemicolon:
            Next();
            return new CEmptyStatement;
        case TokenIf:
            return ParseIf();
        case TokenWhile:
            return ParseWhile();
        case TokenFor:
            return ParseFor();
        case TokenContinue:
            Next();
            EndStatement();
            return new CContinueStatement;
        case TokenBreak:
            Next();
            EndStatement();
            return new CBreakStatement;
        case TokenReturn:
            return ParseReturn();
        case TokenWith:
            return ParseWith();
        default: {
            TExpressionPtr expression = ParseExpression();
            EndStatement();
            return new CExpressionStatement(expression);
        }
    }
}

TStatementPtr CParser::ParseBlock() {
    Next();
    TRefPtr<CBlockStatement> block = new CBlockStatement;
    ParseStatementsUntilBrace(block->m_aStatements);
    return block.Get();
}

TRefPtr<CVariableDeclaration> CParser::ParseDeclaration() {
    if (!Is(TokenIdentifier)) Raise(CParserException::MissingVariableName);
    CName name = m_token.name;
    Next();
    TExpressionPtr initialiser;
    if (Is(TokenAssign)) {
        Next();
        initialiser = ParseAssignment();
    }
    DeclareVariable(name);
    return new CVariableDeclaration(name, initialiser);
}

TStatementPtr CParser::ParseVariableStatement() {
    Next();
    TRefPtr<CVariableStatement> statement = new CVariableStatement;
    statement->m_aDeclarations.Add(ParseDeclaration());
    while (Is(TokenComma)) {
        Next();
        statement->m_aDeclarations.Add(ParseDeclaration());
    }
    EndStatement();
    return statement.Get();
}

TStatementPtr CParser::ParseIf() {
    Next();
    Expect(TokenLeftParen, CParserException::MissingLeftParenthesis);
    TExpressionPtr condition = ParseExpression();
    Expect(TokenRightParen, CParserException::MissingRightParenthesis);
    TStatementPtr thenStatement = ParseStatement();
    TStatementPtr elseStatement;
    if (Is(TokenElse)) {
        Next();
        elseStatement = ParseStatement();
    }
    return new CIfStatement(condition, thenStatement, elseStatement);
}

TStatementPtr CParser::ParseWhile() {
    Next();
    Expect(TokenLeftParen, CParserException::MissingLeftParenthesis);
    TExpressionPtr condition = ParseExpression();
    Expect(TokenRightParen, CParserException::MissingRightParenthesis);
    TStatementPtr body = ParseStatement();
    return new CWhileStatement(condition, body);
}

TStatementPtr CParser::ParseFor() {
    Next();
    Expect(TokenLeftParen, CParserException::MissingLeftParenthesis);
    TRefPtr<CForStatement> loop = new CForStatement;
    if (Is(TokenVar)) {
        Next();
        TRefPtr<CVariableDeclaration> declaration = ParseDeclaration();
        if (Is(TokenIn)) return ParseForIn(declaration, nullptr);
        loop->m_bHasDeclarations = true;
        loop->m_aDeclarations.Add(declaration);
        while (Is(TokenComma)) {
            Next();
            loop->m_aDeclarations.Add(ParseDeclaration());
        }
        Expect(TokenSemicolon, CParserException::MissingSemicolon);
    } else if (!Is(TokenSemicolon)) {
        TExpressionPtr initial = ParseExpression();
        if (Is(TokenIn)) return ParseForIn(nullptr, initial);
        loop->m_pInitial = initial;
        Expect(TokenSemicolon, CParserException::MissingSemicolon);
    } else {
        Next();
    }
    if (!Is(TokenSemicolon)) loop->m_pCondition = ParseExpression();
    Expect(TokenSemicolon, CParserException::MissingSemicolon);
    if (!Is(TokenRightParen)) loop->m_pUpdate = ParseExpression();
    Expect(TokenRightParen, CParserException::MissingRightParenthesis);
    loop->m_pBody = ParseStatement();
    return loop.Get();
}

TStatementPtr CParser::ParseForIn(CVariableDeclaration* declaration, CExpression* target) {
    Next();
    TRefPtr<CForInStatement> loop = new CForInStatement;
    loop->m_pDeclaration = declaration;
    loop->m_pTarget = target;
    loop->m_pObject = ParseExpression();
    Expect(TokenRightParen, CParserException::MissingRightParenthesis);
    loop->m_pBody = ParseStatement();
    return loop.Get();
}

// "return" takes no expression when a line break or ";" follows it; before "}" on the same
// line it tries one, and fails.
TStatementPtr CParser::ParseReturn() {
    Next();
    if (m_token.lineTerminatorBefore) return new CReturnStatement(nullptr);
    if (Is(TokenSemicolon)) {
        Next();
        return new CReturnStatement(nullptr);
    }
    TExpressionPtr expression = ParseExpression();
    EndStatement();
    return new CReturnStatement(expression);
}

TStatementPtr CParser::ParseWith() {
    Next();
    Expect(TokenLeftParen, CParserException::MissingLeftParenthesis);
    TExpressionPtr object = ParseExpression();
    Expect(TokenRightParen, CParserException::MissingRightParenthesis);
    TStatementPtr body = ParseStatement();
    return new CWithStatement(object, body);
}

TExpressionPtr CParser::ParseExpression() {
    TExpressionPtr left = ParseAssignment();
    while (Is(TokenComma)) {
        Next();
        TExpressionPtr right = ParseAssignment();
        left = new CCommaExpression(left, right);
        CheckDepth(left);
    }
    return left;
}

TExpressionPtr CParser::ParseAssignment() {
    CDepthGuard guard(*this);
    TExpressionPtr left = ParseBinary(0);
    if (Is(TokenQuestion)) {
        Next();
        TExpressionPtr thenValue = ParseAssignment();
        Expect(TokenColon, CParserException::MissingColon);
        TExpressionPtr elseValue = ParseAssignment();
        TExpressionPtr conditional = new CConditionalExpression(left, thenValue, elseValue);
        CheckDepth(conditional);
        return conditional;
    }
    bool simple = Is(TokenAssign);
    bool compound = m_token.kind >= TokenPlusAssign && m_token.kind <= TokenShiftRightUnsignedAssign;
    if (!simple && !compound) return left;
    if (!left->IsLeftHandSide()) Raise(CParserException::LeftHandSideRequired);
    int op = compound ? kCompoundOperators[m_token.kind - TokenPlusAssign] : -1;
    Next();
    TExpressionPtr value = ParseAssignment();
    TExpressionPtr assignment;
    if (simple) {
        assignment = new CAssignExpression(left, value);
    } else {
        assignment = new CCompoundAssignExpression(op, left, value);
    }
    CheckDepth(assignment);
    return assignment;
}

TExpressionPtr CParser::ParseBinary(int level) {
    if (level == kLevelCount) return ParseUnary();
    TExpressionPtr left = ParseBinary(level + 1);
    for (;;) {
        const SBinaryOperator* match = kLevels[level];
        while (match->nToken >= 0 && match->nToken != m_token.kind) ++match;
        if (match->nToken < 0) return left;
        Next();
        TExpressionPtr right = ParseBinary(level + 1);
        left = match->pMake(left, right);
        CheckDepth(left);
    }
}

TExpressionPtr CParser::ParseUnary() {
    CExpression* (*make)(CExpression*) = nullptr;
    switch (m_token.kind) {
        case TokenDelete: make = [](CExpression* e) -> CExpression* { return new CDeleteExpression(e); }; break;
        case TokenVoid: make = [](CExpression* e) -> CExpression* { return new CVoidExpression(e); }; break;
        case TokenTypeof: make = [](CExpression* e) -> CExpression* { return new CTypeofExpression(e); }; break;
        case TokenIncrement: make = [](CExpression* e) -> CExpression* { return new CPreIncrementExpression(e); }; break;
        case TokenDecrement: make = [](CExpression* e) -> CExpression* { return new CPreDecrementExpression(e); }; break;
        case TokenPlus: make = [](CExpression* e) -> CExpression* { return new CUnaryPlusExpression(e); }; break;
        case TokenMinus: make = [](CExpression* e) -> CExpression* { return new CUnaryMinusExpression(e); }; break;
        case TokenBitNot: make = [](CExpression* e) -> CExpression* { return new CBitNotExpression(e); }; break;
        case TokenNot: make = [](CExpression* e) -> CExpression* { return new CLogicalNotExpression(e); }; break;
        default: return ParsePostfix();
    }
    CDepthGuard guard(*this);
    Next();
    TExpressionPtr operand = ParseUnary();
    return make(operand);
}

TExpressionPtr CParser::ParsePostfix() {
    TExpressionPtr expression = ParseLeftHandSide();
    if ((Is(TokenIncrement) || Is(TokenDecrement)) && !m_token.lineTerminatorBefore) {
        if (Is(TokenIncrement)) {
            expression = new CPostIncrementExpression(expression);
        } else {
            expression = new CPostDecrementExpression(expression);
        }
        Next();
    }
    return expression;
}

TExpressionPtr CParser::ParseLeftHandSide() {
    int pendingNew = 0;
    while (Is(TokenNew)) {
        ++pendingNew;
        Next();
    }
    if (pendingNew > kMaxNesting) Raise(CParserException::NestingTooDeep);
    TExpressionPtr expression = ParsePrimary();
    for (bool calls = false;;) {
        if (Is(TokenLeftBracket)) {
            Next();
            TExpressionPtr index = ParseExpression();
            Expect(TokenRightBracket, CParserException::MissingRightBracket);
            expression = new CMemberExpression(expression, index);
        } else if (Is(TokenDot)) {
            Next();
            if (!Is(TokenIdentifier)) Raise(CParserException::MissingPropertyName);
            expression = new CMemberExpression(expression, m_token.name);
            Next();
        } else if (Is(TokenLeftParen) && (pendingNew > 0 || calls)) {
            TRefPtr<CArgumentList> arguments = ParseArguments();
            if (pendingNew > 0) {
                expression = new CNewExpression(expression, arguments);
                --pendingNew;
            } else {
                expression = new CCallExpression(expression, arguments);
            }
        } else if (!calls) {
            for (; pendingNew > 0; --pendingNew) expression = new CNewExpression(expression, new CArgumentList);
            calls = true;
            continue;
        } else {
            break;
        }
        CheckDepth(expression);
    }
    return expression;
}

TExpressionPtr CParser::ParsePrimary() {
    TExpressionPtr expression;
    switch (m_token.kind) {
        case TokenThis: expression = new CThisExpression; break;
        case TokenIdentifier: expression = new CIdentifierExpression(m_token.name, m_pFunction); break;
        case TokenNull: expression = new CNullLiteral; break;
        case TokenTrue: expression = new CBooleanLiteral(true); break;
        case TokenFalse: expression = new CBooleanLiteral(false); break;
        case TokenNumber: expression = new CNumericLiteral(m_token.number); break;
        case TokenString: expression = new CStringLiteral(m_token.text); break;
        case TokenLeftParen: {
            Next();
            TExpressionPtr inner = ParseExpression();
            if (!Is(TokenRightParen)) Raise(CParserException::MissingRightParenthesis);
            expression = new CParenExpression(inner);
            break;
        }
        default: Raise(CParserException::InvalidPrimary);
    }
    Next();
    return expression;
}

TRefPtr<CArgumentList> CParser::ParseArguments() {
    Next();
    TRefPtr<CArgumentList> arguments = new CArgumentList;
    if (Is(TokenRightParen)) {
        Next();
        return arguments;
    }
    for (;;) {
        arguments->m_aArguments.Add(ParseAssignment());
        if (!Is(TokenComma)) break;
        Next();
    }
    Expect(TokenRightParen, CParserException::MissingRightParenthesis);
    arguments->UpdateDepth();
    return arguments;
}

}  // namespace EcmaScriptPrivate
