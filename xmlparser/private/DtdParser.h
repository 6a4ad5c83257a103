// The document type declaration and its internal subset: element declarations (checked for
// syntax only), attribute lists, entities and notations, with parameter entities expanded by
// the scanner. The declarations go into a new CDtd that the scanner keeps for the document.
#pragma once
#include "xmlparser/ContentHandler.h"
#include "xmlparser/private/Scanner.h"

namespace XmlParserPrivate {

class CDtdParser {
public:
    CDtdParser(CScanner* scanner, Sxp::IDtdHandler* dtdHandler) : m_pScanner(scanner), m_pDtdHandler(dtdHandler) {}

    // At the "<!DOCTYPE" token; leaves the token behind the declaration current.
    void ParseDocumentType();

private:
    void ParseSubset();
    void ParseElementDecl();
    void ParseContentSpec();
    void ParseMixedContent();
    void ParseChildren();
    void ParseAttlistDecl();
    void ParseAttributeType(CAttributeDecl& attribute);
    void ParseEnumeration(CAttributeDecl& attribute, bool namesOnly);
    void ParseDefault(CAttributeDecl& attribute);
    void ReportAttribute(const DomString& element, const CAttributeDecl& attribute);
    void ParseEntityDecl();
    void ParseNotationDecl();
    void ReadExternalId(DomString& publicId, bool& hasPublicId, DomString& systemId, bool& hasSystemId,
                        bool systemOptional);

    int Next() { return m_pScanner->NextToken(); }
    int Token() const { return m_pScanner->GetToken(); }
    void RequireSpace();
    void SkipSpace();
    void RequireName(DomString& name, int code);
    void RequireClose();

    CScanner* m_pScanner;
    Sxp::IDtdHandler* m_pDtdHandler;
    CDtd* m_pDtd = nullptr;
};

}  // namespace XmlParserPrivate
