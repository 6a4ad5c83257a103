// Name tests shared by compile time and run time.
#include "xslt/private/QName.h"

namespace XsltPrivate {

const DomChar kXsltNamespace[] = u"http://www.w3.org/1999/XSL/Transform";
const DomChar kXmlNamespace[] = u"http://www.w3.org/XML/1998/namespace";

namespace {

bool IsNameStart(DomChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_' || c >= 0x80;
}

bool IsNameUnit(DomChar c) {
    return IsNameStart(c) || (c >= u'0' && c <= u'9') || c == u'.' || c == u'-';
}

}  // namespace

bool IsNCName(DomStringView text) {
    if (text.empty() || !IsNameStart(text[0])) return false;
    for (DomChar c : text) {
        if (!IsNameUnit(c)) return false;
    }
    return true;
}

bool IsQName(DomStringView text) {
    DomStringView prefix;
    DomStringView localName;
    SplitQName(text, prefix, localName);
    if (text.size() != localName.size() && !IsNCName(prefix)) return false;
    return IsNCName(localName);
}

void SplitQName(DomStringView name, DomStringView& prefix, DomStringView& localName) {
    size_t colon = name.find(u':');
    if (colon == DomStringView::npos) {
        prefix = DomStringView();
        localName = name;
    } else {
        prefix = name.substr(0, colon);
        localName = name.substr(colon + 1);
    }
}

}  // namespace XsltPrivate
