// Recursive-descent parser from expression text to a tree of CExpression objects. Names stay
// text in the tree; they are resolved at evaluation. The pattern parser derives from it and
// reuses the token helpers and the step productions.
#pragma once
#include "core/RefObject.h"
#include "core/Array.h"
#include "xpath/Scanner.h"

namespace Xpath {

class CExpression;
class CAxis;
class CNodeTest;
class CPredicate;
class CStepExpr;
class CPathExpr;

class CParser {
public:
    // Parses one whole expression; throws CXpathException, leaving no partial tree.
    void Parse(TRefPtr<CExpression>& expression, DomStringView text);

    // The text before and after the first colon; without a colon the prefix is empty.
    static void SplitQName(DomStringView name, DomString& prefix, DomString& local);

    // How deeply expressions may nest (parentheses, predicates, arguments, operator chains,
    // signs) before the parser refuses the text; keeps parsing, evaluation and release
    // within the stack on hostile input.
    static const int MaxDepth = 512;

protected:
    // Starts scanning `text` and fetches the first token.
    void Start(DomStringView text);
    bool Accept(int32_t kind);
    bool AcceptText(int32_t kind, DomString& text);
    bool AcceptNumber(int32_t kind, CNumber& number);
    bool AcceptSelector(int32_t kind, int32_t& selector);
    bool AcceptOperatorName(int32_t selector);
    void Expect(int32_t kind, int error);
    int32_t GetTokenKind() const { return m_token.m_nKind; }

    void ParseExpr(TRefPtr<CExpression>& expression);
    void ParseAxisSpecifier(TRefPtr<CAxis>& axis);
    void ParseNodeTest(TRefPtr<CNodeTest>& test);
    // `[` Expr `]`; call when the token is a left bracket.
    void ParsePredicate(TRefPtr<CPredicate>& predicate);
    // Predicates while a left bracket follows.
    void ParsePredicates(TArray<TRefPtr<CPredicate>>& predicates);

    // Counts one level of nesting for the lifetime of the guard.
    class CDepthGuard {
    public:
        explicit CDepthGuard(CParser& parser);
        ~CDepthGuard() { --m_parser.m_nDepth; }
        CDepthGuard(const CDepthGuard&) = delete;
        CDepthGuard& operator=(const CDepthGuard&) = delete;

    private:
        CParser& m_parser;
    };

    // Adds a level that lasts until the caller restores m_nDepth.
    void Deepen();

    CScanner m_scanner;
    CToken m_token;
    int m_nDepth = 0;

private:
    void Advance() { m_scanner.Next(m_token); }
    void ParseOrExpr(TRefPtr<CExpression>& expression);
    void ParseAndExpr(TRefPtr<CExpression>& expression);
    void ParseEqualityExpr(TRefPtr<CExpression>& expression);
    void ParseRelationalExpr(TRefPtr<CExpression>& expression);
    void ParseAdditiveExpr(TRefPtr<CExpression>& expression);
    void ParseMultiplicativeExpr(TRefPtr<CExpression>& expression);
    void ParseUnaryExpr(TRefPtr<CExpression>& expression);
    void ParseUnionExpr(TRefPtr<CExpression>& expression);
    void ParsePathExpr(TRefPtr<CExpression>& expression);
    void ParseLocationPath(TRefPtr<CExpression>& expression);
    void ParsePathTail(CPathExpr* path, bool stepRequired);
    void ParseStep(TRefPtr<CStepExpr>& step);
    void ParseFilterExpr(TRefPtr<CExpression>& expression);
    void ParsePrimaryExpr(TRefPtr<CExpression>& expression);
    void ParseFunctionCall(TRefPtr<CExpression>& expression);
    bool CanStartStep() const;
    bool CanStartLocationPath() const;
};

}  // namespace Xpath
