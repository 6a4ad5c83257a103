// The result events between the engine and what takes the result: the output handler that
// drives a writer, a DOM under construction, the message stream, or a caller's own handler.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"

namespace Core {
class CEncodingTable;
class IStream;
class ITextSink;
}  // namespace Core

namespace XmlWriter {
class COutputProperties;
}

namespace Xslt {

// The result tree (XsltPrivate::CResultTree) calls these in the order a writer needs them:
// names are final and zero-terminated, namespaces and attributes follow their StartElement
// directly, namespace declarations before attributes. The four setters come before
// StartDocument; a handler that has no use for one ignores it.
class IResultHandler : public CRefObject {
public:
    virtual void SetEncodingTable(Core::CEncodingTable* table) = 0;
    virtual void SetStream(Core::IStream* stream) = 0;
    virtual void SetTextSink(Core::ITextSink* sink) = 0;
    virtual void SetOutputProperties(XmlWriter::COutputProperties* properties) = 0;
    virtual void StartDocument() = 0;
    virtual void EndDocument() = 0;
    // `cdataSection`: the element is listed in cdata-section-elements. `preserveSpace`: the
    // element's text is to be kept as it is (xml:space="preserve" in force, or xsl:text), so
    // a writer does not indent inside it.
    virtual void StartElement(const DomChar* name, bool cdataSection, bool preserveSpace) = 0;
    // `name` is the one given to the matching StartElement.
    virtual void EndElement(const DomChar* name) = 0;
    // An empty prefix declares the default namespace.
    virtual void Namespace(const DomChar* prefix, const DomChar* uri) = 0;
    virtual void Attribute(const DomChar* name, const DomChar* value) = 0;
    virtual void Characters(const DomChar* text, int length, bool disableEscaping) = 0;
    virtual void Comment(const DomChar* text) = 0;
    virtual void ProcessingInstruction(const DomChar* target, const DomChar* data) = 0;
};

}  // namespace Xslt
