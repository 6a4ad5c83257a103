// Messages of pattern parsing and matching.
#include "xslt/private/PatternException.h"

namespace XsltPrivate {

namespace {

const Core::SMessage kMessages[] = {
    {CPatternException::InvalidPatternSyntax, u"Invalid pattern syntax"},
    {CPatternException::InvalidAxisName, u"Invalid axis name"},
    {CPatternException::InvalidFunctionName, u"Invalid function name '%s'"},
    {CPatternException::MissingLeftParenthesis, u"Missing '('"},
    {CPatternException::MissingRightParenthesis, u"Missing ')'"},
    {CPatternException::MissingRightBracket, u"Missing ']'"},
    {CPatternException::MissingComma, u"Missing ','"},
    {CPatternException::MissingLiteral, u"Missing literal"},
    {CPatternException::InvalidPrefix, u"Invalid prefix '%s'"},
    {-1, u"Unclassified pattern exception"},
};

}  // namespace

void CPatternException::GetMessage(DomString& text) const {
    Core::FormatTableMessage(text, kMessages, m_nNumber, m_sArgument, DomString());
}

}  // namespace XsltPrivate
