// The result handler of a run's main output: it keeps the four settings and makes the writer
// of the output method only when the document starts, so the method of xsl:output decides.
//
// Use: Create, then SetStream (or SetTextSink), SetEncodingTable and SetOutputProperties in any
// order, then the events. Without a method in the properties StartDocument throws
// XmlWriter::CWriterException "Unsupported output method: '', ''".
#pragma once
#include "core/RefObject.h"
#include "xslt/ResultHandler.h"

namespace XsltPrivate {

class COutputHandlerFactory : public CRefObject {
public:
    virtual void Create(TRefPtr<Xslt::IResultHandler>& handler);
};

}  // namespace XsltPrivate
