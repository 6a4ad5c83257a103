// Message table of the result tree's failures.
#include "xslt/private/OutputException.h"

namespace XsltPrivate {

namespace {

const Core::SMessage g_aMessages[] = {
    {COutputException::MisplacedAttribute, u"Misplaced attribute: '%s', '%s'"},
    {COutputException::MisplacedComment, u"Misplaced commnent"},
    {COutputException::MisplacedProcessingInstruction, u"Misplaced processing instruction: '%s'"},
    {COutputException::DefaultNamespaceNotAllowed, u"Default namespace not allowed"},
    {-1, u"Unclassified output exception"},
};

}  // namespace

void COutputException::GetMessage(DomString& text) const {
    Core::FormatTableMessage(text, g_aMessages, m_nCode, m_sArgument1, m_sArgument2);
}

}  // namespace XsltPrivate
