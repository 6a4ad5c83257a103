// What the builder keeps of a DTD.
#include "dom/private/DtdRecorder.h"

namespace Dom {

void CDtdRecorder::AttributeDecl(DomStringView elementName, DomStringView attributeName, DomStringView type,
                                 DomStringView, DomStringView) {
    if (type != u"ID") return;
    for (const CDocumentData::SIdDeclaration& declaration : m_pData->m_aIdDeclarations) {
        if (declaration.sElement == elementName && declaration.sAttribute == attributeName) return;
    }
    m_pData->m_aIdDeclarations.Add({DomString(elementName), DomString(attributeName)});
}

void CDtdRecorder::UnparsedEntityDecl(DomStringView name, DomStringView publicId, DomStringView systemId,
                                      DomStringView) {
    for (const CDocumentData::SUnparsedEntity& entity : m_pData->m_aUnparsedEntities) {
        if (entity.sName == name) return;
    }
    m_pData->m_aUnparsedEntities.Add({DomString(name), DomString(systemId), DomString(publicId)});
}

void CDtdRecorder::NotationDecl(DomStringView, DomStringView, DomStringView) {}

}  // namespace Dom
