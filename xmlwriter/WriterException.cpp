// Messages of the output writers.
#include "xmlwriter/WriterException.h"

#include <utility>

namespace XmlWriter {

namespace {

const Core::SMessage kMessages[] = {
    {CWriterException::UnsupportedOutputMethod, u"Unsupported output method: '%s', '%s'"},
    {CWriterException::UnsupportedEncoding, u"Unsupported encoding: '%s'"},
    {CWriterException::InvalidVersion, u"Invalid version number syntax: '%s'"},
    {CWriterException::InvalidEncodingName, u"Invalid encoding name syntax: '%s'"},
    {CWriterException::InvalidSurrogatePair, u"Invalid surrogate pair"},
    {CWriterException::UnsupportedCharacter, u"Unsupported character: '%s'"},
    {-1, u"Unclassified output exception"},
};

}  // namespace

CWriterException::CWriterException(int code, DomString argument1, DomString argument2)
    : m_nCode(code), m_sArgument1(std::move(argument1)), m_sArgument2(std::move(argument2)) {}

void CWriterException::GetMessage(DomString& text) const {
    Core::FormatTableMessage(text, kMessages, m_nCode, m_sArgument1, m_sArgument2);
}

}  // namespace XmlWriter
