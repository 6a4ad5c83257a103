// The token scanner over the stream stack, in three modes (plain, in a declaration, in content),
// and the readers of what follows a token: character data, attribute values, comments, CDATA
// sections, processing instructions and literals. Text goes to the content handler in chunks of
// at most 1024 units, straight from the stream buffers.
#pragma once
#include <cstdint>
#include <memory>

#include "xmlparser/ContentHandler.h"
#include "xmlparser/private/Dtd.h"
#include "xmlparser/private/SourceReader.h"
#include "xmlparser/private/StreamStack.h"

namespace XmlParserPrivate {

enum ETokenType : int {
    TokenEnd = 0,
    TokenSpaces = 1,
    TokenName = 2,
    TokenNameToken = 3,
    TokenEntityRef = 4,
    TokenParameterRef = 5,
    TokenLiteral = 6,
    TokenEquals = 7,
    TokenXmlDecl = 8,
    TokenMarkupDecl = 9,
    TokenDeclClose = 10,
    TokenHashName = 11,
    TokenBar = 12,
    TokenComma = 13,
    TokenLoneReference = 14,
    TokenOpenParen = 15,
    TokenCloseParen = 16,
    TokenOpenBracket = 17,
    TokenCloseBracket = 18,
    TokenCloseOptional = 19,
    TokenCloseStar = 20,
    TokenClosePlus = 21,
    TokenNameOptional = 22,
    TokenNameStar = 23,
    TokenNamePlus = 24,
    TokenStartTag = 25,
    TokenEndTag = 26,
    TokenTagClose = 27,
    TokenEmptyTagClose = 28,
    TokenCharData = 29,
    TokenCData = 30,
    TokenComment = 31,
    TokenPi = 32
};

class CScanner : public CRefObject, private IFailure {
public:
    enum : int { ChunkSize = 1024, MaxEntityDepth = 256 };

    CScanner(Sxp::IContentHandler* handler, Sxp::IErrorHandler* errorHandler, DomString publicId,
             DomString systemId);
    ~CScanner() override;

    void Open(CSourceReader* reader);
    SEncodingState& GetEncodingState() { return m_encoding; }
    CDtd* GetDtd() const { return m_pDtd.get(); }
    void SetDtd(std::unique_ptr<CDtd> dtd) { m_pDtd = std::move(dtd); }

    // Tokens.
    int NextToken();
    int GetToken() const { return m_nToken; }
    // The name of a name, reference, markup-declaration, "#" or processing-instruction token.
    DomStringView GetTokenText() const { return m_vToken; }
    // Takes the name token if the top buffer holds exactly `name` there, as NextToken would have
    // read it; false, with nothing read, otherwise. Used where one name is expected, the name of
    // the open element at its end tag.
    bool ScanExpectedName(DomStringView name);
    void SetInContent(bool inContent) { m_bInContent = inContent; }
    // Lets the names of tags stand in the stream buffer rather than in a copy; their token
    // text is then valid only until the next character is read.
    void SetNamesInPlace(bool inPlace) { m_bNamesInPlace = inPlace; }
    void SetInDeclaration(bool inDeclaration) { m_bInDeclaration = inDeclaration; }

    // Characters.
    DomChar NextChar() { return m_pStack->NextChar(); }
    DomChar PeekChar() { return m_pStack->PeekChar(); }
    void PushBack(DomChar unit) { m_pStack->PushBack(unit); }

    // Character data up to "<"; returns true if it stopped at an entity reference that is
    // skipped, which is then the current token.
    bool ReadCharData();
    // The value of the literal just opened, to the handler or into `text`.
    void ReadAttributeValue();
    void ReadAttributeValue(DomString& text);
    // Each of these reads to the end of its markup and reports it to the handler.
    void ReadComment();
    void ReadCData();
    // The target is the current token; the data starts behind the spaces that follow it.
    void ReadProcessingInstruction();
    void ReadSystemLiteral(DomString& text);
    void ReadPublicLiteral(DomString& text);
    void ReadEntityValue(DomString& text);

    // Weighs text that is produced without reading it against the expansion allowance.
    void ChargeExpansion(int64_t units);

    // Makes the exception with the current position, tells the error handler and throws.
    [[noreturn]] void Fail(int code);
    const DomString& GetPublicId() const { return m_sPublicId; }
    const DomString& GetSystemId() const { return m_sSystemId; }
    int GetLine() const { return m_pStack->GetLine(); }
    int GetColumn() const { return m_pStack->GetColumn(); }
    const Sxp::SPosition* const* GetPositionSlot() const { return m_pStack->GetPositionSlot(); }

private:
    [[noreturn]] void Raise(int code) override { Fail(code); }
    [[gnu::always_inline]] inline int ScanCommonToken();
    [[gnu::noinline]] int ScanToken();
    bool SkipSpacesInBuffer(CCharStream* top);
    bool ReadNameInBuffer(CCharStream* top);
    [[gnu::noinline]] void CopyToken(DomStringView name);
    int ScanMarkupOpen();
    bool ScanReferenceName();
    void ReadNameRest(DomString& name);
    void ReadTokenName(DomChar first, bool inPlace);
    void SetTokenCopy() { m_vToken = m_sToken; }
    void ReadEntityName(DomString& name);
    uint32_t ReadCharRefValue();
    bool ReadContentReference();
    void ReadAttributeReference();
    void ReadEntityValueReference(DomString& text);
    void SkipSpaceChars();
    void PushEntity(const CEntity* entity);
    bool IsLiteralEnd(DomChar unit);

    bool PassTextInPlace();
    bool PassValueInPlace();
    template <class Stops>
    void CopyRun();
    void Append(const DomChar* units, int count);
    void AppendUnit(DomChar unit) {
        m_aChunk[m_nChunk++] = unit;
        if (m_nChunk == ChunkSize) Flush();
    }
    void AppendCodePoint(uint32_t value);
    void Flush();

    // Not counted: the parser holds the handler while it parses, and a handler that keeps the
    // locator, which holds this scanner, must not be kept alive by it in turn.
    Sxp::IContentHandler* m_pHandler;
    TRefPtr<Sxp::IErrorHandler> m_pErrorHandler;
    DomString m_sPublicId;
    DomString m_sSystemId;
    std::unique_ptr<CStreamStack> m_pStack;
    TRefPtr<CSourceReader> m_pReader;
    SEncodingState m_encoding;
    std::unique_ptr<CDtd> m_pDtd;

    int m_nToken = TokenEnd;
    DomString m_sToken;
    DomStringView m_vToken;  // m_sToken, or a name in the stream buffer
    DomString m_sName;  // entity names met inside literals and text
    DomString m_sData;  // processing-instruction data
    DomChar m_nQuote = 0;
    int m_nLiteralDepth = 0;
    bool m_bInContent = false;
    bool m_bInDeclaration = false;
    bool m_bNamesInPlace = false;

    DomChar m_aChunk[ChunkSize];
    int m_nChunk = 0;
    DomString* m_pCollect = nullptr;  // where chunks go instead of the handler
    int64_t m_nExpanded = 0;
};

// The position of the top stream, for the content handler.
class CLocator : public Sxp::ILocator {
public:
    explicit CLocator(CScanner* scanner) : m_pScanner(scanner) {}
    DomString GetPublicId() const override { return m_pScanner->GetPublicId(); }
    DomString GetSystemId() const override { return m_pScanner->GetSystemId(); }
    int GetColumn() const override { return m_pScanner->GetColumn(); }
    int GetLine() const override { return m_pScanner->GetLine(); }
    const Sxp::SPosition* const* GetPositionSlot() const override { return m_pScanner->GetPositionSlot(); }

private:
    TRefPtr<CScanner> m_pScanner;
};

}  // namespace XmlParserPrivate
