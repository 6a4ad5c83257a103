// The failure of a parse: a code from the parser's message table and the place where it arose.
#pragma once
#include "core/Exception.h"

namespace Sxp {

class CParseException : public Core::IException {
public:
    // Codes of the message table; the names follow the messages.
    enum ECode : int {
        CannotAccessDocument = 0,
        UnexpectedEndOfDocument = 1,
        UnexpectedEndOfLiteral = 2,
        MissingSpace = 3,
        MissingName = 4,
        MissingNameToken = 5,
        MissingEquals = 6,
        MissingDeclarationClose = 7,
        MissingStartTagOpen = 8,
        MissingEndTagOpen = 9,
        MissingTagClose = 10,
        IllegalCharacter = 11,
        BadToken = 12,
        BadReference = 13,
        BadCharacterReference = 14,
        BadEntityReference = 15,
        BadPublicIdentifier = 16,
        BadSystemIdentifier = 17,
        BadXmlDeclaration = 18,
        BadExternalIdentifier = 19,
        BadContentSpecification = 20,
        BadAttributeType = 21,
        BadAttributeValue = 22,
        BadDefaultDeclaration = 23,
        BadEntityValue = 24,
        BadEntityDeclaration = 25,
        BadMarkupDeclaration = 26,
        BadComment = 27,
        BadProcessingInstruction = 28,
        BadCData = 29,
        BadEpilog = 30,
        MisplacedCDataClose = 31,
        UndefinedGeneralEntity = 32,
        ExternalReferenceInAttributeValue = 33,
        UnparsedEntityReference = 34,
        MismatchedEndTag = 35,
        UnsupportedEncoding = 36,
        MismatchedEncodingName = 37,
        EntityNestingTooDeep = 38,
        EntityExpansionTooLarge = 39
    };

    CParseException(int code, DomString publicId, DomString systemId, int line, int column);

    // The message of the code, without the position.
    void GetMessage(DomString& text) const override;

    int GetCode() const { return m_nCode; }
    const DomString& GetPublicId() const { return m_sPublicId; }
    const DomString& GetSystemId() const { return m_sSystemId; }
    int GetLine() const { return m_nLine; }
    int GetColumn() const { return m_nColumn; }

private:
    int m_nCode;
    DomString m_sPublicId;
    DomString m_sSystemId;
    int m_nLine;
    int m_nColumn;
};

}  // namespace Sxp
