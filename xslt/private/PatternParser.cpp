// Parsing of patterns into anchors and steps.
#include "xslt/private/PatternParser.h"

#include "xpath/Axis.h"
#include "xpath/PathExpr.h"
#include "xpath/XpathException.h"
#include "xslt/private/PatternAnchor.h"
#include "xslt/private/PatternException.h"
#include "xslt/private/PatternStep.h"

namespace XsltPrivate {

using namespace Xpath;

void CPatternParser::Parse(TRefPtr<CPattern>& pattern, DomStringView text) {
    Start(text);
    TRefPtr<CPattern> result(new CPattern());
    do {
        ParsePathPattern(result);
    } while (Accept(TokenUnion));
    if (GetTokenKind() != TokenEnd) throw new CPatternException(CPatternException::InvalidPatternSyntax);
    pattern = result;
}

void CPatternParser::ParsePathPattern(CPattern* pattern) {
    const bool startsWithSlash = GetTokenKind() == TokenSlash;
    TRefPtr<CPatternAnchor> anchor;
    const bool stepRequired = ParseAnchor(anchor);
    TRefPtr<CPathPattern> path(new CPathPattern(anchor));
    TRefPtr<CPatternStep> step;
    if (stepRequired) {
        ParseStep(step);
        path->AddStep(step);
    }
    for (;;) {
        if (Accept(TokenSlash)) {
            // A lone "/" is the whole pattern; what follows it must start a step.
            int32_t kind = GetTokenKind();
            if (startsWithSlash && path->GetStepCount() == 0 && kind != TokenAt && kind != TokenNameTest &&
                kind != TokenNodeType)
                break;
        } else if (Accept(TokenDoubleSlash)) {
            path->AddStep(new CGapPatternStep());
        } else {
            break;
        }
        ParseStep(step);
        path->AddStep(step);
    }
    pattern->AddPath(path);
}

bool CPatternParser::ParseAnchor(TRefPtr<CPatternAnchor>& anchor) {
    int32_t kind = GetTokenKind();
    if (kind == TokenSlash || kind == TokenDoubleSlash) {
        anchor = new CRootAnchor();
        return false;
    }
    DomString name;
    if (AcceptText(TokenFunctionName, name)) {
        ParseFunctionAnchor(anchor, name);
        return false;
    }
    anchor = new CRelativeAnchor();
    return true;
}

void CPatternParser::ParseFunctionAnchor(TRefPtr<CPatternAnchor>& anchor, const DomString& name) {
    const bool isKey = name == u"key";
    if (!isKey && name != u"id") throw new CPatternException(CPatternException::InvalidFunctionName, name);
    ExpectPunctuation(TokenLeftParenthesis, CPatternException::MissingLeftParenthesis);
    DomString first;
    ExpectLiteral(first);
    if (isKey) {
        ExpectPunctuation(TokenComma, CPatternException::MissingComma);
        DomString value, prefix, local;
        ExpectLiteral(value);
        SplitQName(first, prefix, local);
        anchor = new CKeyAnchor(std::move(prefix), std::move(local), std::move(value));
    } else {
        anchor = new CIdAnchor(std::move(first));
    }
    ExpectPunctuation(TokenRightParenthesis, CPatternException::MissingRightParenthesis);
}

void CPatternParser::ParseStep(TRefPtr<CPatternStep>& step) {
    int32_t kind = GetTokenKind();
    if (kind == TokenCurrentNode || kind == TokenParentNode)
        throw new CPatternException(CPatternException::InvalidPatternSyntax);
    TRefPtr<CAxis> axis;
    ParseAxisSpecifier(axis);
    const int32_t axisKind = axis->GetKind();
    if (axisKind != AxisChild && axisKind != AxisAttribute)
        throw new CPatternException(CPatternException::InvalidAxisName);
    TRefPtr<CNodeTest> test;
    ParseNodeTest(test);
    TRefPtr<CStepExpr> expression(new CStepExpr(axis, test));
    ParsePredicates(expression->GetPredicates());
    if (axisKind == AxisChild)
        step = new CChildPatternStep(expression);
    else
        step = new CAttributePatternStep(expression);
}

void CPatternParser::ExpectLiteral(DomString& literal) {
    if (!AcceptText(TokenLiteral, literal)) throw new CPatternException(CPatternException::MissingLiteral);
}

void CPatternParser::ExpectPunctuation(int32_t kind, int number) {
    if (!Accept(kind)) throw new CXpathException(number, DomString());
}

}  // namespace XsltPrivate
