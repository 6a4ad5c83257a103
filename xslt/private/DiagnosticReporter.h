// Prints an engine exception with the stylesheet node and the source node at which it arose.
//
// Use: one per environment, on the diagnostic stream (which takes 16-bit units, as the console
// stream does). Recoverable errors are reported and deleted; fatal ones are reported once,
// where they are raised, and then thrown.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"
#include "core/Stream.h"
#include "xslt/XsltException.h"

namespace XsltPrivate {

class CLocator;

class CDiagnosticReporter : public CRefObject {
public:
    enum ESeverity { Recoverable = 1, Fatal = 2 };

    // With a null stream every report is dropped.
    explicit CDiagnosticReporter(Core::IStream* stream) : m_pStream(stream) {}

    // Writes the message and a line feed, then a "    Stylesheet node '...'" line and a
    // "    Document node '...'" line for each location the exception has, with line number and
    // URI where `locator` (may be null) knows them. The severity does not change the text.
    void Report(int severity, const Xslt::CXsltException* exception, const CLocator* locator);

private:
    void AppendNodeLine(DomString& text, const char16_t* lead, const Xslt::SLocation& location,
                        const DomString& nodeName, const CLocator* locator) const;

    TRefPtr<Core::IStream> m_pStream;
};

}  // namespace XsltPrivate
