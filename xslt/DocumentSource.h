// A document that can be replayed as parser events: from a URI through the parser, or from a
// DOM node by walking it. The engine builds its trees from sources so that its own space
// rules and locator apply.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"
#include "xmlparser/ContentHandler.h"

namespace Xslt {

class IDocumentSource : public CRefObject {
public:
    virtual DomString GetUri() = 0;
    virtual void SetContentHandler(Sxp::IContentHandler* handler) = 0;
    virtual void SetDtdHandler(Sxp::IDtdHandler* handler) = 0;
    // Emits the whole document; failures are thrown as they arise.
    virtual void Run() = 0;
};

}  // namespace Xslt
