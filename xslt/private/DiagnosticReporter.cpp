// The diagnostic report: the message, then one line for each node location it has.
#include "xslt/private/DiagnosticReporter.h"

#include "xslt/private/Locator.h"

namespace XsltPrivate {

namespace {

void AppendDecimal(DomString& text, int value) {
    DomChar digits[12];
    int count = 0;
    unsigned int rest = value < 0 ? 0u - static_cast<unsigned int>(value) : static_cast<unsigned int>(value);
    do {
        digits[count++] = static_cast<DomChar>(u'0' + rest % 10);
        rest /= 10;
    } while (rest > 0);
    if (value < 0) text += u'-';
    while (count > 0) text += digits[--count];
}

}  // namespace

void CDiagnosticReporter::Report(int, const Xslt::CXsltException* exception, const CLocator* locator) {
    if (!m_pStream || !exception) return;
    DomString text;
    exception->GetMessage(text);
    text += u'\n';
    AppendNodeLine(text, u"    Stylesheet node '", exception->GetStylesheetLocation(),
                   exception->GetStylesheetNodeName(), locator);
    AppendNodeLine(text, u"    Document node '", exception->GetDocumentLocation(), exception->GetDocumentNodeName(),
                   locator);
    m_pStream->Write(text.data(), static_cast<int>(text.size()));
}

void CDiagnosticReporter::AppendNodeLine(DomString& text, const char16_t* lead, const Xslt::SLocation& location,
                                         const DomString& nodeName, const CLocator* locator) const {
    if (location.IsNull()) return;
    text += lead;
    text += nodeName;
    text += u'\'';
    DomString uri;
    DomString publicId;
    int line = 0;
    int column = 0;
    if (locator && locator->GetLocation(location, uri, publicId, line, column)) {
        text += u" at line ";
        AppendDecimal(text, line);
        text += u"\n        (";
        text += uri;
        text += u')';
    }
    text += u'\n';
}

}  // namespace XsltPrivate
