// Messages of the XPath engine: parsing (0-12), evaluation (13-18) and the engine's own limits.
#include "xpath/XpathException.h"

namespace Xpath {

namespace {

const Core::SMessage kMessages[] = {
    {CXpathException::IllegalCharacter, u"Illegal character in expression"},
    {CXpathException::NonTerminatedLiteral, u"Non-terminated literal"},
    {CXpathException::InvalidVariableReference, u"Invalid variable reference"},
    {CXpathException::InvalidOperatorName, u"Invalid operator name: '%s'"},
    {CXpathException::InvalidFunctionName, u"Invalid function name: '%s'"},
    {CXpathException::InvalidAxisName, u"Invalid axis name: '%s'"},
    {CXpathException::InvalidExpressionSyntax, u"Invalid expression syntax"},
    {CXpathException::MissingDoubleColon, u"Missing '::' character"},
    {CXpathException::MissingLeftParenthesis, u"Missing '(' character"},
    {CXpathException::MissingRightParenthesis, u"Missing ')' character"},
    {CXpathException::MissingRightBracket, u"Missing ']' character"},
    {CXpathException::InvalidNodeTest, u"Invalid node test"},
    {CXpathException::InvalidPrimaryExpression, u"Invalid primary expression"},
    {CXpathException::PrefixNotFound, u"Prefix '%s' not found in expression context"},
    {CXpathException::VariableNotBound, u"Variable '%s:%s' (namespace %s) not bound in expression context"},
    {CXpathException::FunctionNotFound, u"Function '%s:%s' (namespace %s) not found in expression context"},
    {CXpathException::InvalidArgumentCount, u"Invalid number of '%s' arguments"},
    {CXpathException::InvalidArgumentType, u"Invalid '%s' argument type (position %s)"},
    {CXpathException::ExtensionComparison, u"Comparison not supported for extension data type"},
    {CXpathException::NotANodeSet, u"Expression does not evaluate to a node-set"},
    {CXpathException::NestingTooDeep, u"Expression nested too deeply"},
    {-1, u"Unclassified XPath exception"},
};

}  // namespace

CXpathException::CXpathException(int number, const DomString& argument1)
    : m_nNumber(number), m_nArgumentCount(1), m_asArguments{argument1} {}

CXpathException::CXpathException(int number, const DomString& argument1, const DomString& argument2)
    : m_nNumber(number), m_nArgumentCount(2), m_asArguments{argument1, argument2} {}

CXpathException::CXpathException(int number, const DomString& argument1, const DomString& argument2,
                                 const DomString& argument3)
    : m_nNumber(number), m_nArgumentCount(3), m_asArguments{argument1, argument2, argument3} {}

void CXpathException::GetMessage(DomString& text) const {
    const DomChar* arguments[3] = {nullptr, nullptr, nullptr};
    for (int i = 0; i < m_nArgumentCount; ++i) arguments[i] = m_asArguments[i].c_str();
    Core::FormatMessage(text, Core::FindMessageFormat(kMessages, m_nNumber), arguments[0], arguments[1],
                        arguments[2]);
}

}  // namespace Xpath
