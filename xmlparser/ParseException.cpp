// The parser's message table.
#include "xmlparser/ParseException.h"

namespace Sxp {

namespace {

const Core::SMessage s_aMessages[] = {
    {0, u"Cannot access document"},
    {1, u"Unexpected end of document"},
    {2, u"Unexpected end of literal"},
    {3, u"Missing space"},
    {4, u"Missing name"},
    {5, u"Missing name token"},
    {6, u"Missing ="},
    {7, u"Missing declaration close"},
    {8, u"Missing start tag open"},
    {9, u"Missing end tag open"},
    {10, u"Missing tag close"},
    {11, u"Illegal character"},
    {12, u"Bad token"},
    {13, u"Bad reference"},
    {14, u"Bad character reference"},
    {15, u"Bad entity reference"},
    {16, u"Bad public identifier"},
    {17, u"Bad system identifier"},
    {18, u"Bad XML declaration"},
    {19, u"Bad external identifier"},
    {20, u"Bad content specification"},
    {21, u"Bad attribute type"},
    {22, u"Bad attribute value"},
    {23, u"Bad default declaration"},
    {24, u"Bad entity value"},
    {25, u"Bad entity declaration"},
    {26, u"Bad markup declaration"},
    {27, u"Bad comment"},
    {28, u"Bad processing instruction"},
    {29, u"Bad CDATA"},
    {30, u"Bad epilog"},
    {31, u"Misplaced CDATA close"},
    {32, u"Undefined general entity"},
    {33, u"External reference in attribute value"},
    {34, u"Unparsed entity reference"},
    {35, u"Mismatched end tag"},
    {36, u"Unsupported encoding"},
    {37, u"Mismatched encoding name"},
    {38, u"Entity references nested too deeply"},
    {39, u"Entity expansion too large"},
    {-1, u"Unclassified XML parser exception"}};

}  // namespace

CParseException::CParseException(int code, DomString publicId, DomString systemId, int line, int column)
    : m_nCode(code),
      m_sPublicId(std::move(publicId)),
      m_sSystemId(std::move(systemId)),
      m_nLine(line),
      m_nColumn(column) {}

void CParseException::GetMessage(DomString& text) const {
    Core::FormatTableMessage(text, s_aMessages, m_nCode, DomString(), DomString());
}

}  // namespace Sxp
