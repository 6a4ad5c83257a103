// The non-validating XML parser: bytes of a document in, events of Sxp::IContentHandler out.
// It reads the internal DTD subset for entities and attribute defaults and fetches nothing
// external. Parse runs to the end or throws a Sxp::CParseException.
#pragma once
#include "core/Array.h"
#include "core/EncodingTable.h"
#include "xmlparser/ContentHandler.h"
#include "xmlparser/InputSource.h"

namespace XmlParserPrivate {
class CScanner;
}

namespace Sxp {

// Kept for callers that set one; external entities are never read, so it is never called.
class IEntityResolver : public CRefObject {
public:
    virtual bool ResolveEntity(DomStringView publicId, DomStringView systemId, TRefPtr<CInputSource>& source) = 0;
};

class IParser : public CRefObject {
public:
    // Parses the document named by a URI.
    virtual void ParseUri(const DomString& systemId) = 0;
    virtual void Parse(CInputSource* source) = 0;
    // All handlers are counted and may be null.
    virtual void SetContentHandler(IContentHandler* handler) = 0;
    virtual void SetDtdHandler(IDtdHandler* handler) = 0;
    virtual void SetEntityResolver(IEntityResolver* resolver) = 0;
    virtual void SetErrorHandler(IErrorHandler* handler) = 0;
    virtual void SetBaseUri(const DomString& text) = 0;
};

class CParser : public IParser {
public:
    CParser();
    ~CParser() override;

    void ParseUri(const DomString& systemId) override;
    void Parse(CInputSource* source) override;
    void SetContentHandler(IContentHandler* handler) override { m_pContentHandler = handler; }
    void SetDtdHandler(IDtdHandler* handler) override { m_pDtdHandler = handler; }
    void SetEntityResolver(IEntityResolver* resolver) override { m_pEntityResolver = resolver; }
    void SetErrorHandler(IErrorHandler* handler) override { m_pErrorHandler = handler; }
    // Kept; it names the document in the locator when the source has no system identifier.
    void SetBaseUri(const DomString& text) override { m_sBaseUri = text; }

private:
    void Start(CInputSource* source);
    void ParseXmlDeclaration();
    bool ReadPseudoAttribute(DomString& name, DomString& value);
    void SettleEncoding(const DomString& name);
    void ParseMisc();
    void ParseRootElement();
    bool ParseStartTag();
    void ParseAttribute();
    void AddDefaultAttributes();
    bool IsGivenAttribute(DomStringView name) const;
    void ParseEndTag();
    void ParseContentItem();

    TRefPtr<IContentHandler> m_pContentHandler;
    TRefPtr<IDtdHandler> m_pDtdHandler;
    TRefPtr<IEntityResolver> m_pEntityResolver;
    TRefPtr<IErrorHandler> m_pErrorHandler;
    DomString m_sBaseUri;
    TRefPtr<Core::CEncodingTable> m_pEncodings;  // the encodings a document or source can name

    // The state of one parse.
    TRefPtr<XmlParserPrivate::CScanner> m_pScanner;
    IContentHandler* m_pHandler = nullptr;  // the content handler, or one that ignores everything
    DomString m_sOpenNames;                 // names of the open elements, one after the other
    TArray<int> m_aOpenStarts;              // where each open element's name begins
    DomString m_sAttributeNames;            // names given in the current start tag
    TArray<int> m_aAttributeStarts;
};

}  // namespace Sxp
