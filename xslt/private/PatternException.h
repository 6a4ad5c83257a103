// The failure class of pattern parsing and matching, with its message table. Errors inside node
// tests, predicates and the brackets of id() and key() are XPath errors and come as
// Xpath::CXpathException instead.
#pragma once
#include "core/Exception.h"

namespace XsltPrivate {

class CPatternException : public Core::IException {
public:
    enum {
        InvalidPatternSyntax = 0,
        InvalidAxisName = 1,
        InvalidFunctionName = 2,
        MissingLeftParenthesis = 3,
        MissingRightParenthesis = 4,
        MissingRightBracket = 5,
        MissingComma = 6,
        MissingLiteral = 7,
        InvalidPrefix = 8,
    };

    explicit CPatternException(int number, DomString argument = DomString())
        : m_nNumber(number), m_sArgument(std::move(argument)) {}

    int GetNumber() const { return m_nNumber; }
    void GetMessage(DomString& text) const override;

private:
    int m_nNumber;
    DomString m_sArgument;
};

}  // namespace XsltPrivate
