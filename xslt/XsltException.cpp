// The engine's message table. A "\n" in a message is one line feed.
#include "xslt/XsltException.h"

namespace Xslt {

namespace {

const Core::SMessage s_aMessages[] = {
    {0, u"Invalid stylesheet"},
    {1, u"Invalid stylesheet content"},
    {2, u"Stylesheet retrieval error: '%s' \n%s"},
    {3, u"Misplaced 'import' element"},
    {4, u"Invalid top-level element"},
    {5, u"Missing attribute: '%s'"},
    {6, u"Invalid attribute value: '%s' \n'%s'"},
    {7, u"Invalid expression syntax: '%s' \n%s"},
    {8, u"Invalid attribute value template syntax: '%s'"},
    {9, u"Undefined prefix: '%s'"},
    {10, u"Content must be empty"},
    {11, u"Invalid content"},
    {12, u"Invalid PCDATA"},
    {13, u"Invalid instruction"},
    {14, u"Invalid element"},
    {15, u"Missing element: '%s'"},
    {16, u"Misplaced element"},
    {17, u"Invalid URI syntax: '%s' \n'%s'"},
    {18, u"Cannot resolve relative URI: '%s'"},
    {19, u"XSLT extension static error"},
    {20, u"Processing terminated"},
    {21, u"Cannot create result stream, URI: '%s'"},
    {22, u"Multiple matching space rules for '%s', '%s'"},
    {23, u"Multiple matching template rules"},
    {24, u"Current template rule is null"},
    {25, u"Named template rule not found: '%s', '%s'"},
    {26, u"Duplicate template rule name: '%s', '%s'"},
    {27, u"Duplicate namespace alias: '%s'"},
    {28, u"Attribute set not found: '%s', '%s'"},
    {29, u"Duplicate attribute name: '%s', '%s'"},
    {30, u"Duplicate decimal format name: '%s', '%s'"},
    {31, u"Default decimal format not found"},
    {32, u"Decimal format not found: '%s', '%s'"},
    {33, u"Duplicate output attribute: '%s'"},
    {34, u"Duplicate variable name: '%s', '%s'"},
    {35, u"Circular variable definitions: '%s', '%s'"},
    {36, u"Misplaced attribute node"},
    {37, u"Misplaced comment node"},
    {38, u"Misplaced element node"},
    {39, u"Misplaced processing instruction node"},
    {40, u"Misplaced namespace node"},
    {41, u"Invalid attribute name: '%s'"},
    {42, u"Attribute value template evaluation error: %s"},
    {43, u"Expression evaluation error: %s"},
    {44, u"Value conversion error: %s"},
    {45, u"Invalid computed attribute value: '%s' \n'%s'"},
    {46, u"Invalid selection result type"},
    {47, u"Invalid number of arguments: '%s'"},
    {48, u"Invalid argument type: '%s' (%s)"},
    {49, u"Document retrieval error: '%s' \n%s"},
    {50, u"Output error: \n%s"},
    {51, u"Writer error: \n%s"},
    {52, u"Unsupported feature: %s '%s'"},
    {53, u"XSLT extension run-time warning"},
    {54, u"XSLT extension run-time error"},
    {55, u"%s"},
    {-1, u"Unclassified XSLT exception"},
};

}  // namespace

CXsltException::CXsltException(int code, DomString argument1, DomString argument2)
    : m_nCode(code), m_sArgument1(std::move(argument1)), m_sArgument2(std::move(argument2)) {}

CXsltException::CXsltException(int code, SLocation stylesheet, DomString stylesheetNode, DomString argument1,
                               DomString argument2)
    : m_nCode(code),
      m_rStylesheetLocation(stylesheet),
      m_sStylesheetNode(std::move(stylesheetNode)),
      m_sArgument1(std::move(argument1)),
      m_sArgument2(std::move(argument2)) {}

CXsltException::CXsltException(int code, SLocation stylesheet, DomString stylesheetNode, SLocation document,
                               DomString documentNode, DomString argument1, DomString argument2)
    : m_nCode(code),
      m_rStylesheetLocation(stylesheet),
      m_sStylesheetNode(std::move(stylesheetNode)),
      m_rDocumentLocation(document),
      m_sDocumentNode(std::move(documentNode)),
      m_sArgument1(std::move(argument1)),
      m_sArgument2(std::move(argument2)) {}

void CXsltException::GetMessage(DomString& text) const {
    Core::FormatTableMessage(text, s_aMessages, m_nCode, m_sArgument1, m_sArgument2);
}

}  // namespace Xslt
