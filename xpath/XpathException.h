// The one failure class of the XPath engine: a message number and up to three text arguments,
// rendered through the table in XpathException.cpp.
#pragma once
#include "core/Exception.h"

namespace Xpath {

class CXpathException : public Core::IException {
public:
    // The numbers of the message table, in table order.
    enum {
        IllegalCharacter = 0,
        NonTerminatedLiteral = 1,
        InvalidVariableReference = 2,
        InvalidOperatorName = 3,
        InvalidFunctionName = 4,
        InvalidAxisName = 5,
        InvalidExpressionSyntax = 6,
        MissingDoubleColon = 7,
        MissingLeftParenthesis = 8,
        MissingRightParenthesis = 9,
        MissingRightBracket = 10,
        InvalidNodeTest = 11,
        InvalidPrimaryExpression = 12,
        PrefixNotFound = 13,
        VariableNotBound = 14,
        FunctionNotFound = 15,
        InvalidArgumentCount = 16,
        InvalidArgumentType = 17,
        ExtensionComparison = 18,
        NotANodeSet = 100,
        NestingTooDeep = 101,
    };

    explicit CXpathException(int number) : m_nNumber(number) {}
    CXpathException(int number, const DomString& argument1);
    CXpathException(int number, const DomString& argument1, const DomString& argument2);
    CXpathException(int number, const DomString& argument1, const DomString& argument2,
                    const DomString& argument3);

    int GetNumber() const { return m_nNumber; }
    void GetMessage(DomString& text) const override;

private:
    int m_nNumber;
    int m_nArgumentCount = 0;
    DomString m_asArguments[3];
};

}  // namespace Xpath
