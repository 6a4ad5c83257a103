// The two document sources of the engine, and the building of a DOM document from a source
// under a set of space rules with the locator listening.
#pragma once
#include "dom/Node.h"
#include "dom/StripSpaceRules.h"
#include "xslt/DocumentSource.h"
#include "xslt/Environment.h"

namespace XsltPrivate {

class CLocator;

// Parses the document at a URI with a new parser of the environment.
class CUriSource : public Xslt::IDocumentSource {
public:
    explicit CUriSource(Xslt::CEnvironment* environment) : m_pEnvironment(environment) {}
    void SetUri(const DomString& uri) { m_sUri = uri; }
    DomString GetUri() override { return m_sUri; }
    void SetContentHandler(Sxp::IContentHandler* handler) override { m_pContentHandler = handler; }
    void SetDtdHandler(Sxp::IDtdHandler* handler) override { m_pDtdHandler = handler; }
    void Run() override;

private:
    TRefPtr<Xslt::CEnvironment> m_pEnvironment;
    DomString m_sUri;
    TRefPtr<Sxp::IContentHandler> m_pContentHandler;
    TRefPtr<Sxp::IDtdHandler> m_pDtdHandler;
};

// Walks a DOM node and emits the events a parser would: elements with their namespace
// declarations and attributes, text and CDATA as characters, comments and processing
// instructions; a document or fragment emits its children. The walk is iterative.
class CNodeSource : public Xslt::IDocumentSource {
public:
    CNodeSource(const DomString& uri, Dom::CNode* node) : m_sUri(uri), m_pNode(node) {}
    DomString GetUri() override { return m_sUri; }
    void SetContentHandler(Sxp::IContentHandler* handler) override { m_pContentHandler = handler; }
    void SetDtdHandler(Sxp::IDtdHandler*) override {}
    void Run() override;

private:
    void Open(Dom::CNode* node);
    void Close(Dom::CNode* node);

    DomString m_sUri;
    Dom::TNodeRef m_pNode;
    TRefPtr<Sxp::IContentHandler> m_pContentHandler;
};

// Builds a new document of the environment from `source`; failures of the source pass on.
void BuildDocument(Xslt::CEnvironment* environment, Xslt::IDocumentSource* source, Dom::CStripSpaceRules* rules,
                   CLocator* locator, Dom::TNodeRef& document);

}  // namespace XsltPrivate
