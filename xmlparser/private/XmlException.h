// The parser's own exception classes: the one it throws, and the one that stands for a source
// that cannot be opened and never leaves the parser.
#pragma once
#include "xmlparser/ParseException.h"

namespace XmlParserPrivate {

class CXmlException : public Sxp::CParseException {
public:
    using Sxp::CParseException::CParseException;
};

class CInputSourceException : public Core::IException {};

}  // namespace XmlParserPrivate
