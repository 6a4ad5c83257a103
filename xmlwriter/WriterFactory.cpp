// The choice of writer by output method.
#include "xmlwriter/WriterFactory.h"

#include "xmlwriter/HtmlWriter.h"
#include "xmlwriter/TextWriter.h"
#include "xmlwriter/WriterException.h"
#include "xmlwriter/XmlWriter.h"

namespace XmlWriter {

void CreateWriter(COutputProperties* properties, TRefPtr<IWriter>& writer) {
    int kind = -1;
    if (properties) properties->GetMethodKind(kind);
    switch (kind) {
        case COutputProperties::XmlMethod: writer = new CXmlWriter; break;
        case COutputProperties::HtmlMethod: writer = new CHtmlWriter; break;
        case COutputProperties::TextMethod: writer = new CTextWriter; break;
        default: {
            DomString uri, localName;
            if (properties) properties->GetMethodName(uri, localName);
            throw new CWriterException(CWriterException::UnsupportedOutputMethod, uri, localName);
        }
    }
    writer->SetOutputProperties(properties);
}

}  // namespace XmlWriter
