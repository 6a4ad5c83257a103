// The DTD handler of a builder: keeps the ID attribute declarations and unparsed entities that
// later lookups (id(), unparsed-entity-uri()) need; the first declaration of a name counts.
#pragma once
#include "dom/private/DocumentData.h"
#include "xmlparser/ContentHandler.h"

namespace Dom {

class CDtdRecorder : public Sxp::IDtdHandler {
public:
    explicit CDtdRecorder(CDocument* document) : m_pDocument(document), m_pData(document->m_pData) {}

    void AttributeDecl(DomStringView elementName, DomStringView attributeName, DomStringView type,
                       DomStringView defaultKind, DomStringView value) override;
    void UnparsedEntityDecl(DomStringView name, DomStringView publicId, DomStringView systemId,
                            DomStringView notation) override;
    void NotationDecl(DomStringView name, DomStringView publicId, DomStringView systemId) override;

private:
    TNodeRef m_pDocument;
    CDocumentData* m_pData;
};

}  // namespace Dom
