// Expanded names (namespace URI and local name) and the lexical tests for names that the
// stylesheet compiler and the instructions apply to QName-valued attributes.
#pragma once
#include "core/DomString.h"

namespace XsltPrivate {

struct SQName {
    DomString sUri;
    DomString sLocalName;

    bool Equals(DomStringView uri, DomStringView localName) const { return sLocalName == localName && sUri == uri; }
    bool operator==(const SQName& other) const { return Equals(other.sUri, other.sLocalName); }
};

extern const DomChar kXsltNamespace[];
extern const DomChar kXmlNamespace[];

// An XML name without a colon. Units from U+0080 upwards count as letters, as in expressions.
bool IsNCName(DomStringView text);
// An NCName, or two NCNames joined by one colon.
bool IsQName(DomStringView text);
// The text before and after the first colon; without a colon the prefix is empty.
void SplitQName(DomStringView name, DomStringView& prefix, DomStringView& localName);

}  // namespace XsltPrivate
