// The event interfaces of the parser: content, DTD declarations, locator and fatal errors.
// Names and text arrive as views into the parser's buffers; a handler copies what it keeps.
#pragma once
#include "core/DomString.h"
#include "core/Exception.h"
#include "core/RefObject.h"

namespace Sxp {

// A line and column as the parser counts them.
struct SPosition {
    int nLine;
    int nColumn;
};

class ILocator : public CRefObject {
public:
    virtual DomString GetPublicId() const = 0;
    virtual DomString GetSystemId() const = 0;
    virtual int GetColumn() const = 0;
    virtual int GetLine() const = 0;
    // For a handler that reads the position at every node without a call: the address of the
    // parser's pointer to the current line and column, valid as long as the locator.
    virtual const SPosition* const* GetPositionSlot() const = 0;
};

// Attributes follow StartElement and come before anything else of the element, each as
// StartAttribute, Characters any number of times, EndAttribute. Comments and CDATA sections
// carry their text through Characters as well.
class IContentHandler : public CRefObject {
public:
    // Called with the locator before StartDocument, and with null after EndDocument.
    virtual void SetLocator(ILocator* locator) = 0;
    virtual void StartDocument() = 0;
    virtual void EndDocument() = 0;
    virtual void StartElement(DomStringView name) = 0;
    virtual void EndElement() = 0;
    virtual void StartAttribute(DomStringView name) = 0;
    virtual void EndAttribute() = 0;
    virtual void Characters(const DomChar* units, int count) = 0;
    virtual void StartComment() = 0;
    virtual void EndComment() = 0;
    virtual void StartCData() = 0;
    virtual void EndCData() = 0;
    virtual void SkippedEntity(DomStringView name) = 0;
    virtual void ProcessingInstruction(DomStringView target, DomStringView data) = 0;
};

class IDtdHandler : public CRefObject {
public:
    virtual void AttributeDecl(DomStringView elementName, DomStringView attributeName, DomStringView type,
                               DomStringView defaultKind, DomStringView value) = 0;
    virtual void UnparsedEntityDecl(DomStringView name, DomStringView publicId, DomStringView systemId,
                                    DomStringView notation) = 0;
    virtual void NotationDecl(DomStringView name, DomStringView publicId, DomStringView systemId) = 0;
};

class IErrorHandler : public CRefObject {
public:
    // Never called by the parser; kept for handlers that want warnings.
    virtual void Warning(Core::IException* exception) { (void)exception; }
    // Called just before the parser throws `exception`.
    virtual void FatalError(Core::IException* exception) = 0;
};

}  // namespace Sxp
