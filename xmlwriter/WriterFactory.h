// Makes the writer of an output method; the result handler calls it when the document starts.
#pragma once
#include "xmlwriter/OutputProperties.h"
#include "xmlwriter/Writer.h"

namespace XmlWriter {

// Kind 0 gives the XML writer, 1 the HTML writer, 2 the text writer. Without a method kind
// (none set, or only one given by name) it raises "Unsupported output method" with the
// method's namespace URI and local name, empty when no method was set. The writer gets
// `properties`; table, stream or sink are the caller's to set.
void CreateWriter(COutputProperties* properties, TRefPtr<IWriter>& writer);

}  // namespace XmlWriter
