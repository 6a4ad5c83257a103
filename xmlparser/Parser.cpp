// The document grammar: XML declaration, misc, document type, and the element tree, which is
// walked with an explicit stack of open elements so that nesting depth costs no recursion.
#include "xmlparser/Parser.h"

#include <cstring>

#include "xmlparser/private/CharClass.h"
#include "xmlparser/private/DtdParser.h"
#include "xmlparser/private/Scanner.h"
#include "xmlparser/private/XmlException.h"

using namespace XmlParserPrivate;

namespace Sxp {

namespace {

using Code = CParseException;

// Stands in for a missing content handler, so that the grammar need not test for one.
class CIgnoringHandler : public IContentHandler {
public:
    void SetLocator(ILocator*) override {}
    void StartDocument() override {}
    void EndDocument() override {}
    void StartElement(DomStringView) override {}
    void EndElement() override {}
    void StartAttribute(DomStringView) override {}
    void EndAttribute() override {}
    void Characters(const DomChar*, int) override {}
    void StartComment() override {}
    void EndComment() override {}
    void StartCData() override {}
    void EndCData() override {}
    void SkippedEntity(DomStringView) override {}
    void ProcessingInstruction(DomStringView, DomStringView) override {}
};

bool IsPseudoValueChar(DomChar unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || (unit >= u'0' && unit <= u'9') ||
           unit == u'_' || unit == u'.' || unit == u':' || unit == u'-';
}

bool IsEncodingName(const DomString& value) {
    if (value.empty()) return false;
    DomChar first = value[0];
    if (!((first >= u'a' && first <= u'z') || (first >= u'A' && first <= u'Z'))) return false;
    return value.find(u':') == DomString::npos;
}

}  // namespace

// The parser's own encodings: UTF-8, UTF-16 with the most significant byte first, ISO-8859-1.
CParser::CParser() : m_pEncodings(new Core::CEncodingTable()) {}

CParser::~CParser() = default;

void CParser::ParseUri(const DomString& systemId) {
    TRefPtr<CInputSource> source = new CInputSource(systemId);
    Parse(source);
}

void CParser::Parse(CInputSource* source) {
    TRefPtr<CInputSource> holder = source;
    TRefPtr<IContentHandler> ignoring;
    if (!m_pContentHandler) ignoring = new CIgnoringHandler();
    m_pHandler = m_pContentHandler ? m_pContentHandler.Get() : ignoring.Get();
    Start(source);
    CScanner& scanner = *m_pScanner;
    TRefPtr<ILocator> locator = new CLocator(m_pScanner);
    m_pHandler->SetLocator(locator);
    m_pHandler->StartDocument();
    ParseXmlDeclaration();
    ParseMisc();
    if (scanner.GetToken() == TokenMarkupDecl && scanner.GetTokenText() == u"DOCTYPE") {
        CDtdParser(&scanner, m_pDtdHandler).ParseDocumentType();
    }
    ParseMisc();
    ParseRootElement();
    scanner.SetNamesInPlace(false);
    ParseMisc();
    m_pHandler->EndDocument();
    m_pHandler->SetLocator(nullptr);
    if (scanner.GetToken() != TokenEnd) scanner.Fail(Code::BadEpilog);
    m_pHandler = nullptr;
}

// Resets the state of a parse, opens the source and reads the first token.
void CParser::Start(CInputSource* source) {
    const DomString& systemId = source->GetSystemId().empty() ? m_sBaseUri : source->GetSystemId();
    m_pScanner = new CScanner(m_pHandler, m_pErrorHandler, source->GetPublicId(), systemId);
    m_sOpenNames.clear();
    m_aOpenStarts.Clear();
    SEncodingState& state = m_pScanner->GetEncodingState();
    if (!source->GetEncoding().empty()) {
        state.m_pEncoding = m_pEncodings->Find(source->GetEncoding());
        if (!state.m_pEncoding) m_pScanner->Fail(Code::UnsupportedEncoding);
    }
    TRefPtr<CSourceReader> reader;
    try {
        reader = new CSourceReader(&state, source);
    } catch (CInputSourceException* exception) {
        delete exception;
        m_pScanner->Fail(Code::CannotAccessDocument);
    }
    m_pScanner->Open(reader);
    m_pScanner->NextToken();
}

// ---- prolog ----

void CParser::ParseXmlDeclaration() {
    CScanner& scanner = *m_pScanner;
    if (scanner.GetToken() == TokenXmlDecl) {
        DomString name, value, encoding;
        enum { VersionNext, EncodingNext, StandaloneNext, NothingNext } stage = VersionNext;
        while (ReadPseudoAttribute(name, value)) {
            if (stage == VersionNext && name == u"version" && !value.empty()) {
                stage = EncodingNext;
            } else if (stage == EncodingNext && name == u"encoding" && IsEncodingName(value)) {
                encoding = value;
                stage = StandaloneNext;
            } else if ((stage == EncodingNext || stage == StandaloneNext) && name == u"standalone" &&
                       (value == u"yes" || value == u"no")) {
                stage = NothingNext;
            } else {
                scanner.Fail(Code::BadXmlDeclaration);
            }
        }
        if (stage == VersionNext) scanner.Fail(Code::BadXmlDeclaration);
        if (!encoding.empty()) SettleEncoding(encoding);
    }
    // From here on the source is decoded in blocks.
    scanner.GetEncodingState().m_bPrologDone = true;
    if (scanner.GetToken() == TokenXmlDecl) scanner.NextToken();
}

// Reads one pseudo-attribute of the XML declaration, which must stand behind spaces. Returns
// false when it meets the closing "?>" instead.
bool CParser::ReadPseudoAttribute(DomString& name, DomString& value) {
    CScanner& scanner = *m_pScanner;
    DomChar unit = scanner.NextChar();
    bool spaced = false;
    for (; IsSpaceChar(unit); unit = scanner.NextChar()) spaced = true;
    if (unit == u'?') {
        if (scanner.NextChar() != u'>') scanner.Fail(Code::BadXmlDeclaration);
        return false;
    }
    if (!spaced || !IsNameStartChar(unit)) scanner.Fail(Code::BadXmlDeclaration);
    name.assign(1, unit);
    for (unit = scanner.NextChar(); IsNameChar(unit); unit = scanner.NextChar()) name += unit;
    while (IsSpaceChar(unit)) unit = scanner.NextChar();
    if (unit != u'=') scanner.Fail(Code::BadXmlDeclaration);
    do {
        unit = scanner.NextChar();
    } while (IsSpaceChar(unit));
    if (unit != u'"' && unit != u'\'') scanner.Fail(Code::BadXmlDeclaration);
    DomChar quote = unit;
    value.clear();
    while ((unit = scanner.NextChar()) != quote) {
        if (!IsPseudoValueChar(unit)) scanner.Fail(Code::BadXmlDeclaration);
        value += unit;
    }
    return true;
}

// The declared encoding takes over, unless the source named one, which it must then agree with.
// What detection found is overruled without a word.
void CParser::SettleEncoding(const DomString& name) {
    Core::IEncoding* declared = m_pEncodings->Find(name);
    if (!declared) m_pScanner->Fail(Code::UnsupportedEncoding);
    SEncodingState& state = m_pScanner->GetEncodingState();
    if (!state.m_pEncoding) {
        state.m_pEncoding = declared;
    } else if (!EqualsIgnoringAsciiCase(state.m_pEncoding->GetName(), name)) {
        m_pScanner->Fail(Code::MismatchedEncodingName);
    }
}

// Spaces, comments and processing instructions.
void CParser::ParseMisc() {
    CScanner& scanner = *m_pScanner;
    for (;;) {
        switch (scanner.GetToken()) {
        case TokenSpaces:
            break;
        case TokenComment:
            scanner.ReadComment();
            break;
        case TokenPi:
            scanner.ReadProcessingInstruction();
            break;
        default:
            return;
        }
        scanner.NextToken();
    }
}

// ---- elements ----

// The root element and everything in it; the token behind it is read in plain mode.
void CParser::ParseRootElement() {
    CScanner& scanner = *m_pScanner;
    scanner.SetInContent(false);
    scanner.SetNamesInPlace(true);  // every tag name is used before the next read
    if (scanner.GetToken() != TokenStartTag) scanner.Fail(Code::MissingStartTagOpen);
    bool open = !ParseStartTag();
    scanner.SetInContent(open);
    scanner.NextToken();
    while (!m_aOpenStarts.IsEmpty()) ParseContentItem();
}

// One item of content: text, an element's start tag, a reference, a section, or the end tag
// that closes the innermost open element.
void CParser::ParseContentItem() {
    CScanner& scanner = *m_pScanner;
    switch (scanner.GetToken()) {
    case TokenCharData:
        if (scanner.ReadCharData()) return;  // stopped at a skipped entity, now the token
        break;
    case TokenStartTag:
        scanner.SetInContent(false);
        ParseStartTag();
        scanner.SetInContent(true);
        break;
    case TokenEntityRef:
        m_pHandler->SkippedEntity(scanner.GetTokenText());
        break;
    case TokenCData:
        scanner.ReadCData();
        break;
    case TokenComment:
        scanner.ReadComment();
        break;
    case TokenPi:
        scanner.ReadProcessingInstruction();
        break;
    default:
        ParseEndTag();
        scanner.SetInContent(!m_aOpenStarts.IsEmpty());
        break;
    }
    scanner.NextToken();
}

// From "<" to ">" or "/>". Returns true for an empty element, which is then already ended.
bool CParser::ParseStartTag() {
    CScanner& scanner = *m_pScanner;
    if (scanner.NextToken() != TokenName) scanner.Fail(Code::MissingName);
    DomStringView name = scanner.GetTokenText();
    m_aOpenStarts.Add(static_cast<int>(m_sOpenNames.size()));
    m_sOpenNames.append(name);
    m_sAttributeNames.clear();
    m_aAttributeStarts.Clear();
    m_pHandler->StartElement(name);
    if (scanner.NextToken() == TokenSpaces) scanner.NextToken();
    while (scanner.GetToken() != TokenTagClose && scanner.GetToken() != TokenEmptyTagClose) {
        ParseAttribute();
        if (scanner.GetToken() == TokenSpaces) scanner.NextToken();
    }
    AddDefaultAttributes();
    if (scanner.GetToken() == TokenTagClose) return false;
    m_pHandler->EndElement();
    m_sOpenNames.resize(static_cast<size_t>(m_aOpenStarts.Last()));
    m_aOpenStarts.RemoveLast();
    return true;
}

// Duplicates are not detected: an attribute named twice is reported twice.
void CParser::ParseAttribute() {
    CScanner& scanner = *m_pScanner;
    if (scanner.GetToken() != TokenName) scanner.Fail(Code::MissingName);
    DomStringView name = scanner.GetTokenText();
    m_aAttributeStarts.Add(static_cast<int>(m_sAttributeNames.size()));
    m_sAttributeNames.append(name);
    m_pHandler->StartAttribute(name);
    if (scanner.NextToken() == TokenSpaces) scanner.NextToken();
    if (scanner.GetToken() != TokenEquals) scanner.Fail(Code::MissingEquals);
    if (scanner.NextToken() == TokenSpaces) scanner.NextToken();
    if (scanner.GetToken() != TokenLiteral) scanner.Fail(Code::BadAttributeValue);
    scanner.ReadAttributeValue();
    scanner.NextToken();
    m_pHandler->EndAttribute();
}

// Fixed and plain defaults of the element's first attribute list, for attributes not given.
void CParser::AddDefaultAttributes() {
    const CDtd* dtd = m_pScanner->GetDtd();
    if (!dtd || !m_pContentHandler) return;
    DomStringView element = DomStringView(m_sOpenNames).substr(static_cast<size_t>(m_aOpenStarts.Last()));
    const CElementDecl* decl = dtd->FindElementDecl(element);
    if (!decl) return;
    for (const CAttributeDecl& attribute : decl->m_aAttributes) {
        bool hasDefault = attribute.m_nDefaultKind == CAttributeDecl::DefaultFixed ||
                          attribute.m_nDefaultKind == CAttributeDecl::DefaultPlain;
        if (!hasDefault || IsGivenAttribute(attribute.m_sName)) continue;
        const DomString& value = attribute.m_sDefault;
        m_pHandler->StartAttribute(attribute.m_sName);
        if (!value.empty()) {
            m_pScanner->ChargeExpansion(static_cast<int64_t>(value.size()));
            m_pHandler->Characters(value.data(), static_cast<int>(value.size()));
        }
        m_pHandler->EndAttribute();
    }
}

// Whether the current start tag gave an attribute of this qualified name.
bool CParser::IsGivenAttribute(DomStringView name) const {
    DomStringView given = m_sAttributeNames;
    int count = m_aAttributeStarts.GetSize();
    for (int i = 0; i < count; ++i) {
        size_t start = static_cast<size_t>(m_aAttributeStarts[i]);
        size_t end = i + 1 < count ? static_cast<size_t>(m_aAttributeStarts[i + 1]) : given.size();
        if (given.substr(start, end - start) == name) return true;
    }
    return false;
}

// At the token where "</" is required. A mismatched name is reported after EndElement, with
// the position behind the end tag.
void CParser::ParseEndTag() {
    CScanner& scanner = *m_pScanner;
    scanner.SetInContent(false);
    if (scanner.GetToken() == TokenEnd) scanner.Fail(Code::UnexpectedEndOfDocument);
    if (scanner.GetToken() != TokenEndTag) scanner.Fail(Code::MissingEndTagOpen);
    size_t start = static_cast<size_t>(m_aOpenStarts.Last());
    DomStringView openName = DomStringView(m_sOpenNames).substr(start);
    bool matches = scanner.ScanExpectedName(openName);
    if (!matches) {
        if (scanner.NextToken() != TokenName) scanner.Fail(Code::MissingName);
        matches = scanner.GetTokenText() == openName;
    }
    m_pHandler->EndElement();
    m_sOpenNames.erase(start);
    m_aOpenStarts.RemoveLast();
    if (scanner.NextToken() == TokenSpaces) scanner.NextToken();
    if (scanner.GetToken() != TokenTagClose) scanner.Fail(Code::MissingTagClose);
    if (!matches) scanner.Fail(Code::MismatchedEndTag);
}

}  // namespace Sxp
