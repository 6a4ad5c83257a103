// The grammar of XPath 1.0, one method per level from the loosest, with one token of look-ahead.
#include "xpath/Parser.h"

#include "xpath/Axis.h"
#include "xpath/Expression.h"
#include "xpath/NodeTest.h"
#include "xpath/PathExpr.h"
#include "xpath/XpathException.h"

namespace Xpath {

namespace {

// Axis kinds in the order of the axis-name table.
const int kAxisOfName[] = {
    AxisAncestor,  AxisAncestorOrSelf,   AxisAttribute, AxisChild,  AxisDescendant,       AxisDescendantOrSelf,
    AxisFollowing, AxisFollowingSibling, AxisNamespace, AxisParent, AxisPreceding, AxisPrecedingSibling,
    AxisSelf,
};

TRefPtr<CStepExpr> MakeAnyNodeStep(int axisKind) {
    TRefPtr<CAxis> axis;
    CAxis::Create(axis, axisKind);
    return TRefPtr<CStepExpr>(new CStepExpr(axis, new CAnyNodeTest()));
}

}  // namespace

CParser::CDepthGuard::CDepthGuard(CParser& parser) : m_parser(parser) {
    if (++m_parser.m_nDepth > MaxDepth) throw new CXpathException(CXpathException::NestingTooDeep);
}

void CParser::Deepen() {
    if (++m_nDepth > MaxDepth) throw new CXpathException(CXpathException::NestingTooDeep);
}

void CParser::SplitQName(DomStringView name, DomString& prefix, DomString& local) {
    size_t colon = name.find(u':');
    if (colon == DomStringView::npos) {
        prefix.clear();
        local.assign(name);
    } else {
        prefix.assign(name.substr(0, colon));
        local.assign(name.substr(colon + 1));
    }
}

void CParser::Start(DomStringView text) {
    m_scanner.Reset(text);
    m_nDepth = 0;
    Advance();
}

void CParser::Parse(TRefPtr<CExpression>& expression, DomStringView text) {
    Start(text);
    TRefPtr<CExpression> result;
    ParseExpr(result);
    if (m_token.m_nKind != TokenEnd) throw new CXpathException(CXpathException::InvalidExpressionSyntax);
    expression = result;
}

bool CParser::Accept(int32_t kind) {
    if (m_token.m_nKind != kind) return false;
    Advance();
    return true;
}

bool CParser::AcceptText(int32_t kind, DomString& text) {
    if (m_token.m_nKind != kind) return false;
    text = std::move(m_token.m_sText);
    Advance();
    return true;
}

bool CParser::AcceptNumber(int32_t kind, CNumber& number) {
    if (m_token.m_nKind != kind) return false;
    number = m_token.m_number;
    Advance();
    return true;
}

bool CParser::AcceptSelector(int32_t kind, int32_t& selector) {
    if (m_token.m_nKind != kind) return false;
    selector = m_token.m_nSelector;
    Advance();
    return true;
}

bool CParser::AcceptOperatorName(int32_t selector) {
    if (m_token.m_nKind != TokenOperatorName || m_token.m_nSelector != selector) return false;
    Advance();
    return true;
}

void CParser::Expect(int32_t kind, int error) {
    if (!Accept(kind)) throw new CXpathException(error);
}

void CParser::ParseExpr(TRefPtr<CExpression>& expression) {
    CDepthGuard guard(*this);
    ParseOrExpr(expression);
}

// Each operator of a left-associative chain adds a level to the tree, so the chain counts
// towards the nesting depth as it grows.
void CParser::ParseOrExpr(TRefPtr<CExpression>& expression) {
    int depth = m_nDepth;
    ParseAndExpr(expression);
    while (AcceptOperatorName(OperatorOr)) {
        Deepen();
        TRefPtr<CExpression> right;
        ParseAndExpr(right);
        expression = new COrExpr(expression, right);
    }
    m_nDepth = depth;
}

void CParser::ParseAndExpr(TRefPtr<CExpression>& expression) {
    int depth = m_nDepth;
    ParseEqualityExpr(expression);
    while (AcceptOperatorName(OperatorAnd)) {
        Deepen();
        TRefPtr<CExpression> right;
        ParseEqualityExpr(right);
        expression = new CAndExpr(expression, right);
    }
    m_nDepth = depth;
}

void CParser::ParseEqualityExpr(TRefPtr<CExpression>& expression) {
    int depth = m_nDepth;
    ParseRelationalExpr(expression);
    for (;;) {
        int op;
        if (Accept(TokenEqual))
            op = 0;
        else if (Accept(TokenNotEqual))
            op = 1;
        else
            break;
        Deepen();
        TRefPtr<CExpression> right;
        ParseRelationalExpr(right);
        expression = new CEqualityExpr(op, expression, right);
    }
    m_nDepth = depth;
}

void CParser::ParseRelationalExpr(TRefPtr<CExpression>& expression) {
    int depth = m_nDepth;
    ParseAdditiveExpr(expression);
    for (;;) {
        int op;
        if (Accept(TokenLess))
            op = 0;
        else if (Accept(TokenGreater))
            op = 1;
        else if (Accept(TokenLessOrEqual))
            op = 2;
        else if (Accept(TokenGreaterOrEqual))
            op = 3;
        else
            break;
        Deepen();
        TRefPtr<CExpression> right;
        ParseAdditiveExpr(right);
        expression = new CRelationalExpr(op, expression, right);
    }
    m_nDepth = depth;
}

void CParser::ParseAdditiveExpr(TRefPtr<CExpression>& expression) {
    int depth = m_nDepth;
    ParseMultiplicativeExpr(expression);
    for (;;) {
        int op;
        if (Accept(TokenPlus))
            op = 0;
        else if (Accept(TokenMinus))
            op = 1;
        else
            break;
        Deepen();
        TRefPtr<CExpression> right;
        ParseMultiplicativeExpr(right);
        expression = new CAdditiveExpr(op, expression, right);
    }
    m_nDepth = depth;
}

void CParser::ParseMultiplicativeExpr(TRefPtr<CExpression>& expression) {
    int depth = m_nDepth;
    ParseUnaryExpr(expression);
    for (;;) {
        int op;
        if (Accept(TokenMultiply))
            op = 0;
        else if (AcceptOperatorName(OperatorDiv))
            op = 1;
        else if (AcceptOperatorName(OperatorMod))
            op = 2;
        else
            break;
        Deepen();
        TRefPtr<CExpression> right;
        ParseUnaryExpr(right);
        expression = new CMultiplicativeExpr(op, expression, right);
    }
    m_nDepth = depth;
}

void CParser::ParseUnaryExpr(TRefPtr<CExpression>& expression) {
    if (!Accept(TokenMinus)) return ParseUnionExpr(expression);
    CDepthGuard guard(*this);
    TRefPtr<CExpression> operand;
    ParseUnaryExpr(operand);
    expression = new CNegateExpr(operand);
}

void CParser::ParseUnionExpr(TRefPtr<CExpression>& expression) {
    ParsePathExpr(expression);
    if (m_token.m_nKind != TokenUnion) return;
    TRefPtr<CUnionExpr> unionExpr(new CUnionExpr());
    unionExpr->AddOperand(expression);
    while (Accept(TokenUnion)) {
        TRefPtr<CExpression> operand;
        ParsePathExpr(operand);
        unionExpr->AddOperand(operand);
    }
    expression = unionExpr.Get();
}

bool CParser::CanStartStep() const {
    switch (m_token.m_nKind) {
        case TokenCurrentNode:
        case TokenParentNode:
        case TokenAt:
        case TokenAxisName:
        case TokenNameTest:
        case TokenNodeType:
            return true;
        default:
            return false;
    }
}

bool CParser::CanStartLocationPath() const {
    return m_token.m_nKind == TokenSlash || m_token.m_nKind == TokenDoubleSlash || CanStartStep();
}

void CParser::ParsePathExpr(TRefPtr<CExpression>& expression) {
    if (CanStartLocationPath()) return ParseLocationPath(expression);
    ParseFilterExpr(expression);
    if (m_token.m_nKind != TokenSlash && m_token.m_nKind != TokenDoubleSlash) return;
    TRefPtr<CPathExpr> path(new CPathExpr(expression, false));
    ParsePathTail(path, true);
    expression = path.Get();
}

void CParser::ParseLocationPath(TRefPtr<CExpression>& expression) {
    TRefPtr<CPathExpr> path;
    if (m_token.m_nKind == TokenSlash || m_token.m_nKind == TokenDoubleSlash) {
        path = new CPathExpr(new CRootExpr(), true);
        ParsePathTail(path, false);
    } else {
        path = new CPathExpr(nullptr, false);
        TRefPtr<CStepExpr> step;
        ParseStep(step);
        path->AddStep(step);
        ParsePathTail(path, true);
    }
    expression = path.Get();
}

void CParser::ParsePathTail(CPathExpr* path, bool stepRequired) {
    for (;;) {
        if (Accept(TokenDoubleSlash)) {
            path->AddStep(MakeAnyNodeStep(AxisDescendantOrSelf));
        } else if (Accept(TokenSlash)) {
            if (!stepRequired && !CanStartStep()) return;
        } else {
            return;
        }
        TRefPtr<CStepExpr> step;
        ParseStep(step);
        path->AddStep(step);
        stepRequired = true;
    }
}

void CParser::ParseStep(TRefPtr<CStepExpr>& step) {
    if (Accept(TokenCurrentNode)) {
        step = MakeAnyNodeStep(AxisSelf);
        return;
    }
    if (Accept(TokenParentNode)) {
        step = MakeAnyNodeStep(AxisParent);
        return;
    }
    TRefPtr<CAxis> axis;
    ParseAxisSpecifier(axis);
    TRefPtr<CNodeTest> test;
    ParseNodeTest(test);
    step = new CStepExpr(axis, test);
    ParsePredicates(step->GetPredicates());
}

void CParser::ParseAxisSpecifier(TRefPtr<CAxis>& axis) {
    int32_t selector;
    if (AcceptSelector(TokenAxisName, selector)) {
        CAxis::Create(axis, kAxisOfName[selector]);
        Expect(TokenDoubleColon, CXpathException::MissingDoubleColon);
    } else if (Accept(TokenAt)) {
        CAxis::Create(axis, AxisAttribute);
    } else {
        CAxis::Create(axis, AxisChild);
    }
}

void CParser::ParseNodeTest(TRefPtr<CNodeTest>& test) {
    DomString name;
    if (AcceptText(TokenNameTest, name)) {
        DomString prefix, local;
        SplitQName(name, prefix, local);
        if (local != u"*")
            test = new CNameTest(prefix, local);
        else if (prefix.empty())
            test = new CAnyNameTest();
        else
            test = new CNamespaceTest(prefix);
        return;
    }
    int32_t type;
    if (!AcceptSelector(TokenNodeType, type)) throw new CXpathException(CXpathException::InvalidNodeTest);
    Expect(TokenLeftParenthesis, CXpathException::MissingLeftParenthesis);
    switch (type) {
        case NodeTypeComment: test = new CCommentTest(); break;
        case NodeTypeText: test = new CTextTest(); break;
        case NodeTypeNode: test = new CAnyNodeTest(); break;
        default: {
            if (m_token.m_nKind == TokenRightParenthesis) {
                test = new CProcessingInstructionTest();
                break;
            }
            DomString target;
            if (!AcceptText(TokenLiteral, target)) throw new CXpathException(CXpathException::InvalidNodeTest);
            test = new CProcessingInstructionTest(target);
        }
    }
    Expect(TokenRightParenthesis, CXpathException::MissingRightParenthesis);
}

void CParser::ParsePredicate(TRefPtr<CPredicate>& predicate) {
    Expect(TokenLeftBracket, CXpathException::MissingRightBracket);
    TRefPtr<CExpression> expression;
    ParseExpr(expression);
    Expect(TokenRightBracket, CXpathException::MissingRightBracket);
    predicate = new CPredicate(expression);
}

void CParser::ParsePredicates(TArray<TRefPtr<CPredicate>>& predicates) {
    while (m_token.m_nKind == TokenLeftBracket) {
        TRefPtr<CPredicate> predicate;
        ParsePredicate(predicate);
        predicates.Add(predicate);
    }
}

void CParser::ParseFilterExpr(TRefPtr<CExpression>& expression) {
    TRefPtr<CExpression> primary;
    ParsePrimaryExpr(primary);
    TRefPtr<CFilterExpr> filter(new CFilterExpr(primary));
    ParsePredicates(filter->GetPredicates());
    expression = filter.Get();
}

void CParser::ParsePrimaryExpr(TRefPtr<CExpression>& expression) {
    DomString text;
    CNumber number;
    if (AcceptText(TokenVariableReference, text)) {
        DomString prefix, local;
        SplitQName(text, prefix, local);
        expression = new CVariableExpr(prefix, local);
    } else if (Accept(TokenLeftParenthesis)) {
        ParseExpr(expression);
        Expect(TokenRightParenthesis, CXpathException::MissingRightParenthesis);
    } else if (AcceptText(TokenLiteral, text)) {
        expression = new CLiteralExpr(std::move(text));
    } else if (AcceptNumber(TokenNumber, number)) {
        expression = new CNumberExpr(number);
    } else if (m_token.m_nKind == TokenFunctionName) {
        ParseFunctionCall(expression);
    } else {
        throw new CXpathException(CXpathException::InvalidPrimaryExpression);
    }
}

void CParser::ParseFunctionCall(TRefPtr<CExpression>& expression) {
    DomString name, prefix, local;
    AcceptText(TokenFunctionName, name);
    SplitQName(name, prefix, local);
    TRefPtr<CFunctionCallExpr> call(new CFunctionCallExpr(prefix, local));
    Expect(TokenLeftParenthesis, CXpathException::MissingLeftParenthesis);
    if (!Accept(TokenRightParenthesis)) {
        do {
            TRefPtr<CExpression> argument;
            ParseExpr(argument);
            call->AddArgument(argument);
        } while (Accept(TokenComma));
        Expect(TokenRightParenthesis, CXpathException::MissingRightParenthesis);
    }
    expression = call.Get();
}

}  // namespace Xpath
