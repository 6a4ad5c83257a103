// The events by which a result is serialised; the XML, HTML and text writers implement them.
#pragma once
#include "core/DomString.h"
#include "core/RefObject.h"
#include "core/TextSink.h"

namespace Core {
class CEncodingTable;
class IStream;
}  // namespace Core

namespace XmlWriter {

class COutputProperties;

// Names and texts are zero-terminated. Namespaces and attributes come directly after
// StartElement; the caller has already fixed names and namespaces and removed duplicates.
class IWriter : public CRefObject {
public:
    virtual void SetEncodingTable(Core::CEncodingTable* table) = 0;
    // A byte stream and a text sink exclude each other: setting one clears the other.
    virtual void SetByteStream(Core::IStream* stream) = 0;
    virtual void SetTextSink(Core::ITextSink* sink) = 0;
    virtual void SetOutputProperties(COutputProperties* properties) = 0;
    virtual void StartDocument() = 0;
    virtual void EndDocument() = 0;
    virtual void StartElement(const DomChar* name, bool preserveSpace, bool cdataSection) = 0;
    virtual void EndElement() = 0;
    // An empty prefix declares the default namespace.
    virtual void WriteNamespace(const DomChar* prefix, const DomChar* uri) = 0;
    virtual void WriteAttribute(const DomChar* name, const DomChar* value) = 0;
    virtual void Characters(const DomChar* units, int count) = 0;
    virtual void WriteComment(const DomChar* text) = 0;
    virtual void WriteProcessingInstruction(const DomChar* target, const DomChar* data) = 0;
};

}  // namespace XmlWriter
