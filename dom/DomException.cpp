// Messages of the tree's exception.
#include "dom/DomException.h"

namespace Dom {

namespace {

const Core::SMessage g_aMessages[] = {
    {1, u"Index or size is negative, or greater than the allowed value"},
    {2, u"Specified range of text does not fit into a DomString"},
    {3, u"Node is inserted somewhere it does not belong"},
    {4, u"Node is used in a different document than the one that created it"},
    {5, u"Invalid character is specified"},
    {6, u"Data is specified for a node that does not support data"},
    {7, u"Attempt to modify an object where modifications are not allowed"},
    {8, u"Attempt to reference a node in a context where it does not exist"},
    {9, u"Implementation does not support the type of object requested"},
    {10, u"Attempt to add an attribute that is already in use elsewhere"},
    {-1, u"Unclassified DOM exception"},
};

}  // namespace

void CDomException::GetMessage(DomString& text) const {
    Core::FormatMessage(text, Core::FindMessageFormat(g_aMessages, m_nCode));
}

void CDomException::ThrowReadOnly() { throw new CDomException(NO_MODIFICATION_ALLOWED_ERR); }

void CDomException::ThrowNotSupported() { throw new CDomException(NOT_SUPPORTED_ERR); }

}  // namespace Dom
