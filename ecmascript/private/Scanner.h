// Turns script text into tokens of the first-edition language. Errors go to the handler and
// scanning goes on, so one pass reports many; only "Error limit exceeded" is thrown.
#pragma once
#include "core/Array.h"
#include "core/Exception.h"
#include "ecmascript/CharacterStream.h"
#include "ecmascript/Name.h"
#include "ecmascript/Number.h"
#include "ecmascript/ParseErrorHandler.h"

namespace EcmaScriptPrivate {

enum ETokenKind {
    TokenBreak = 0,
    TokenContinue,
    TokenDelete,
    TokenElse,
    TokenFor,
    TokenFunction,
    TokenIf,
    TokenIn,
    TokenNew,
    TokenReturn,
    TokenThis,
    TokenTypeof,
    TokenVar,
    TokenVoid,
    TokenWhile,
    TokenWith,
    TokenReserved = 16,
    TokenIdentifier = 17,
    TokenAssign = 18,
    TokenGreater,
    TokenLess,
    TokenEqual,
    TokenLessEqual,
    TokenGreaterEqual,
    TokenNotEqual,
    TokenComma = 25,
    TokenNot,
    TokenBitNot,
    TokenQuestion,
    TokenColon,
    TokenDot,
    TokenAnd = 31,
    TokenOr,
    TokenIncrement,
    TokenDecrement,
    TokenPlus = 35,
    TokenMinus,
    TokenMultiply,
    TokenDivide,
    TokenBitAnd,
    TokenBitOr,
    TokenBitXor,
    TokenModulo,
    TokenShiftLeft = 43,
    TokenShiftRight,
    TokenShiftRightUnsigned,
    TokenPlusAssign = 46,
    TokenMinusAssign,
    TokenMultiplyAssign,
    TokenDivideAssign,
    TokenBitAndAssign,
    TokenBitOrAssign,
    TokenBitXorAssign,
    TokenModuloAssign,
    TokenShiftLeftAssign,
    TokenShiftRightAssign,
    TokenShiftRightUnsignedAssign,
    TokenLeftParen = 57,
    TokenRightParen,
    TokenLeftBrace,
    TokenRightBrace,
    TokenLeftBracket,
    TokenRightBracket,
    TokenSemicolon,
    TokenNull = 64,
    TokenTrue,
    TokenFalse,
    TokenNumber = 67,
    TokenString = 68,
    TokenUnused = 69,
    TokenEnd = 70
};

struct CToken {
    int32_t kind = TokenEnd;
    CName name;
    EcmaScript::CNumber number;
    DomString text;
    uint8_t lineTerminatorBefore = 0;
};

class CScannerException : public Core::IException {
public:
    enum ECode {
        IllegalCharacter = 0,
        EndInComment,
        NestedComment,
        InvalidDecimal,
        InvalidHex,
        InvalidOctal,
        EndInString,
        LineTerminatorInString,
        InvalidEscape,
        ErrorLimit
    };
    CScannerException(int code, DomString argument = DomString()) : m_nCode(code), m_sArgument(std::move(argument)) {}
    void GetMessage(DomString& text) const override;
    int GetCode() const { return m_nCode; }

private:
    int m_nCode;
    DomString m_sArgument;
};

class CScanner {
public:
    CScanner();

    void Open(EcmaScript::ICharacterStream* stream);
    void SetErrorHandler(EcmaScript::IParseErrorHandler* handler) { m_errorHandler = handler; }
    void SetLine(int line) { m_line = line; }
    int GetLine() const { return m_line; }
    void NextToken(CToken& token);
    bool HasErrors() const { return m_hasErrors != 0; }

private:
    struct SKeyword {
        DomString sSpelling;
        int nKind;
    };

    DomChar ReadUnit() {
        if (m_position < m_limit) return m_aBuffer[m_position++];
        return Refill();
    }
    void PushBack(DomChar unit) { m_aBuffer[--m_position] = unit; }
    DomChar Refill();
    int ClassOf(DomChar unit) const { return unit < 128 ? m_aClasses[unit] : 0; }

    void FillTables();
    void CountLineTerminator(DomChar unit);
    void SkipLineComment();
    void SkipBlockComment();
    void ScanIdentifier(DomChar first, CToken& token);
    void ScanNumber(DomChar first, CToken& token);
    void ScanDecimal(DomString& text, CToken& token);
    void ScanDigitsInBase(DomString& text, int base, int errorCode, CToken& token);
    void ConvertLiteral(const DomString& text, int errorCode, CToken& token);
    void ScanString(DomChar quote, CToken& token);
    bool ScanEscape(DomString& text);
    int ScanPunctuation(DomChar first);
    void Report(int code, const DomString& argument = DomString());

    uint32_t m_aClasses[128];
    TArray<SKeyword> m_aKeywords;
    TRefPtr<EcmaScript::ICharacterStream> m_stream;
    TRefPtr<EcmaScript::IParseErrorHandler> m_errorHandler;
    uint8_t m_hasErrors = 0;
    int32_t m_line = 1;
    uint8_t m_lineTerminatorSeen = 0;
    static const int kPushBackRoom = 32;
    static const int kBlockSize = 1024;
    DomChar m_aBuffer[kPushBackRoom + kBlockSize];
    int32_t m_limit = kPushBackRoom;
    int32_t m_position = kPushBackRoom;
};

}  // namespace EcmaScriptPrivate
